// The system's code page where there is no Win32.
#include "codepage/system.h"

namespace codepage {

std::filesystem::path path_of(const char* name) {
  return name;
}

std::string utf8_of(const std::string& text) {
  return text;
}

}  // namespace codepage
