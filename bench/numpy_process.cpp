#include "numpy_process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace bench {
namespace {

[[noreturn]] void give_up(const char* what) {
  std::fprintf(stderr, "bench_many: %s\n", what);
  std::exit(2);
}

}  // namespace

NumpyProcess::NumpyProcess(const std::string& script) {
  int tasks[2];
  int answers[2];
  if (pipe(tasks) != 0 || pipe(answers) != 0) give_up("no pipe to Python");
  child_ = fork();
  if (child_ < 0) give_up("no process for Python");
  if (child_ == 0) {
    dup2(tasks[0], STDIN_FILENO);
    dup2(answers[1], STDOUT_FILENO);
    for (const int end : {tasks[0], tasks[1], answers[0], answers[1]}) close(end);
    execl("/usr/bin/python3", "python3", script.c_str(), nullptr);
    _exit(127);
  }
  close(tasks[0]);
  close(answers[1]);
  tasks_ = fdopen(tasks[1], "w");
  answers_ = fdopen(answers[0], "r");
}

NumpyProcess::~NumpyProcess() {
  std::fclose(tasks_);  // which ends Python
  std::fclose(answers_);
  waitpid(child_, nullptr, 0);
}

void NumpyProcess::run(const char* task) {
  std::fprintf(tasks_, "%s\n", task);
  std::fflush(tasks_);
  char answer[16];
  if (std::fgets(answer, sizeof answer, answers_) == nullptr || std::strcmp(answer, "done\n") != 0) {
    give_up("Python does not answer; is python3-numpy there?");
  }
}

}  // namespace bench
