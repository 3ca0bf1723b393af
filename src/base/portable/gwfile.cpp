// Whether a file exists, without Win32.
#include "base/gwfile.h"

#include <unistd.h>

#include <cstddef>

#include "codepage/codepage.h"

namespace tavd {

bool gwfile_exists(const char* path) {
  return path != nullptr && access(path, F_OK) == 0;
}

// Paths outside Windows are UTF-8.
bool gwfile_existsw(const tavd_wchar* path) {
  if (path == nullptr) return false;
  constexpr std::size_t kLongestPath = 4096;  // units; the system takes no longer one
  const std::size_t length = codepage::length(path, kLongestPath);
  if (length == kLongestPath) return false;
  constexpr std::size_t kBytesPerUnit = 3;
  char text[kLongestPath * kBytesPerUnit];
  text[codepage::narrow(codepage::kUtf8, path, length, text, sizeof text - 1)] = 0;
  return gwfile_exists(text);
}

}  // namespace tavd
