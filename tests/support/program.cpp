#include "program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <sstream>
#include <system_error>

namespace clitest {
namespace {

// How a file is opened that takes what the program writes.
constexpr int kToWrite = O_WRONLY | O_CREAT | O_TRUNC;
constexpr mode_t kOwnersAlone = 0600;

void redirect(int descriptor, const std::string& path) {
  const int file = open(path.c_str(), kToWrite, kOwnersAlone);
  if (file < 0 || dup2(file, descriptor) < 0) _exit(127);
  close(file);
}

std::vector<char*> argv_of(const std::vector<std::string>& arguments) {
  std::vector<char*> argv{const_cast<char*>(TAVD_PROGRAM)};
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  return argv;
}

void set_environment() {
  setenv("LSAN_OPTIONS", "print_suppressions=0:suppressions=" TAVD_SOURCE_DIR "/tests/support/leaks.supp", 1);
}

[[noreturn]] void become_program(const std::vector<std::string>& arguments) {
  set_environment();
  execv(TAVD_PROGRAM, argv_of(arguments).data());
  _exit(127);
}

// Starts the program; standard output and errors go where the paths say. Not with fork: under the sanitizers
// a copy of this process takes longer than the program does.
pid_t spawn_program(const std::vector<std::string>& arguments, const std::string& out_path,
                    const std::string& err_path) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out_path.c_str(), kToWrite, kOwnersAlone);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err_path.c_str(), kToWrite, kOwnersAlone);
  static std::once_flag environment;
  std::call_once(environment, set_environment);
  pid_t process = -1;
  const int problem =
      posix_spawn(&process, TAVD_PROGRAM, &actions, nullptr, argv_of(arguments).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (problem != 0) throw std::system_error(problem, std::generic_category(), TAVD_PROGRAM);
  return process;
}

// Until the other side is closed.
std::string read_all(int descriptor) {
  std::string text;
  std::array<char, 4096> chunk;
  for (ssize_t got = 0; (got = read(descriptor, chunk.data(), chunk.size())) > 0;) {
    text.append(chunk.data(), static_cast<std::size_t>(got));
  }
  return text;
}

int wait_for(pid_t process) {
  int status = 0;
  if (waitpid(process, &status, 0) != process || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

}  // namespace

Outcome run_program_into(const std::string& out_path, const std::vector<std::string>& arguments) {
  const Folder folder;
  const std::string err_path = folder.file("err");
  const int exit_code = wait_for(spawn_program(arguments, out_path, err_path));
  // What went to standard output is not read back: of a device it may have no end.
  return {exit_code, "", read_file(err_path)};
}

Outcome run_program(const std::vector<std::string>& arguments) {
  const Folder folder;
  Outcome outcome = run_program_into(folder.file("out"), arguments);
  outcome.out = read_file(folder.file("out"));
  return outcome;
}

Outcome run_program_within(unsigned long file_bytes, const std::vector<std::string>& arguments) {
  const Folder folder;
  const pid_t process = fork();
  if (process == 0) {
    const rlimit limit{file_bytes, file_bytes};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(127);
    redirect(STDOUT_FILENO, folder.file("out"));
    redirect(STDERR_FILENO, folder.file("err"));
    become_program(arguments);
  }
  const int exit_code = wait_for(process);
  return {exit_code, read_file(folder.file("out")), read_file(folder.file("err"))};
}

Terminal run_on_terminal(const std::vector<std::string>& arguments, const std::string& typed,
                         const std::string& out_path) {
  int terminal = -1;
  const pid_t process = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (process == 0) {
    if (!out_path.empty()) redirect(STDOUT_FILENO, out_path);
    become_program(arguments);
  }
  EXPECT_EQ(write(terminal, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
  Terminal result{-1, read_all(terminal)};
  close(terminal);
  result.exit_code = wait_for(process);
  return result;
}

int start_program(const std::vector<std::string>& arguments) {
  return spawn_program(arguments, "/dev/null", "/dev/null");
}

void kill_program(int process) {
  kill(process, SIGKILL);
  wait_for(process);
}

int end_of_program(int process) {
  return wait_for(process);
}

std::string expect_user_error(const std::vector<std::string>& arguments) {
  const Outcome outcome = run_program(arguments);
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err.rfind("tavd: ", 0), 0u) << outcome.err;
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  return outcome.err;
}

Folder::Folder() {
  std::string name = (std::filesystem::temp_directory_path() / "tavd-cli-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder could be made");
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::vector<std::string> Folder::names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_))
    names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace clitest
