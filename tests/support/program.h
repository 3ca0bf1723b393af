// Starts the command line host as a user does.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace clitest {

struct Outcome {
  int exit_code;  // -1: ended by a signal
  std::string out;
  std::string err;
};

// Runs the program with these arguments and waits for its end.
Outcome run_program(const std::vector<std::string>& arguments);

// The same, with standard output going to a file of that name, which is not read back.
Outcome run_program_into(const std::string& out_path, const std::vector<std::string>& arguments);

// The same, where no file may grow past so many bytes.
Outcome run_program_within(unsigned long file_bytes, const std::vector<std::string>& arguments);

struct Terminal {
  int exit_code;  // -1: ended by a signal
  std::string shown;
};

// Runs the program on a terminal of its own, on which somebody types. Standard output goes to a file of that
// name if there is one.
Terminal run_on_terminal(const std::vector<std::string>& arguments, const std::string& typed,
                         const std::string& out_path = "");

// Starts the program, quietly, and does not wait for it. Returns its process.
int start_program(const std::vector<std::string>& arguments);
// Kills a process as nothing can resist, and waits for its end.
void kill_program(int process);
// Waits for the end of a process and tells its exit code; -1: ended by a signal.
int end_of_program(int process);

// Exit code 2, nothing on standard output, and one line on standard error that begins "tavd: ". Returns that
// line.
std::string expect_user_error(const std::vector<std::string>& arguments);

// A folder of its own for one test, removed at the end.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string file(const std::string& name) const { return (path_ / name).string(); }
  // Names of what it holds, in order.
  std::vector<std::string> names() const;

 private:
  std::filesystem::path path_;
};

// The bytes of a file; empty if it cannot be read.
std::string read_file(const std::string& path);

std::vector<std::string> lines_of(const std::string& text);

}  // namespace clitest
