// Whether a file exists, by Win32.
#include "base/gwfile.h"

#include <windows.h>

namespace tavd {

bool gwfile_exists(const char* path) {
  return path != nullptr && GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
}

bool gwfile_existsw(const tavd_wchar* path) {
  return path != nullptr && GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace tavd
