// The platform by POSIX, with the module of libtavdgui.
#include "base/platform.h"

#include <unistd.h>

#include <csignal>

#include "tavd/tavdf.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {

void set_up_streams() {
  std::signal(SIGXFSZ, SIG_IGN);
}

std::vector<std::string> arguments(int argc, char** argv) {
  return {argv, argv + argc};
}

bool is_terminal(Stream stream) {
  switch (stream) {
    case Stream::kInput:
      return isatty(STDIN_FILENO) != 0;
    case Stream::kOutput:
      return isatty(STDOUT_FILENO) != 0;
    default:
      return isatty(STDERR_FILENO) != 0;
  }
}

bool can_wipe_lines(Stream stream) {
  return is_terminal(stream);
}

bool names_standard_output(const std::string& path) {
  return path == "/dev/stdout" || path == "/dev/fd/1" || path == "/proc/self/fd/1";
}

std::int16_t open_database_file(const std::string& path, std::int32_t mode) {
  return tavdf_open_database(path.c_str(), mode);
}

tavd_hmodule program_module() {
  return tgui_main_module();
}

}  // namespace tavdhost
