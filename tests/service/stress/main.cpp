// stress TASK [--full] TAVD: one of the tasks of stress.h. TAVD is the command line host.
#include <stdlib.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <system_error>

#include "stress.h"

namespace {

struct Task {
  const char* name;
  void (*run)(const stress::Scale&);
};

constexpr std::array kTasks = std::to_array<Task>({
    {"two_processes", stress::two_processes},
    {"kills", stress::kills},
    {"full_disk", stress::full_disk},
    {"large_group", stress::large_group},
    {"size", stress::size},
});

int run(const Task& task, bool full, const std::string& tavd) {
  std::string name = (std::filesystem::temp_directory_path() / "tavd-stress-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    std::perror("no temporary folder");
    return 2;
  }
  int code = 0;
  try {
    task.run({full, std::filesystem::absolute(tavd), name});
  } catch (const std::exception& problem) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s failed: %s\n", task.name, problem.what());
    code = 1;
  }
  std::error_code ignored;
  std::filesystem::remove_all(name, ignored);
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  const bool full = argc == 4 && std::strcmp(argv[2], "--full") == 0;
  if (argc == 3 || full) {
    for (const Task& task : kTasks) {
      if (std::strcmp(argv[1], task.name) == 0) return run(task, full, argv[argc - 1]);
    }
  }
  std::fprintf(stderr, "usage: stress two_processes|kills|full_disk|large_group|size [--full] TAVD\n");
  return 2;
}
