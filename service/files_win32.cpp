// A file that is open without leave to delete it is owned: nobody else can remove it.
#include <windows.h>

#include <string>
#include <system_error>

#include "files.h"

namespace tavdsrv {

const std::size_t kLongestName = 255;
const std::size_t kLongestPath = MAX_PATH - 1;

namespace {

namespace fs = std::filesystem;

void close(void* handle) {
  if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
}

}  // namespace

Place::Place(const fs::path& file) : folder_(file.parent_path()), name_(file.filename()) {}

std::shared_ptr<void> make_owned(const fs::path& file) {
  const HANDLE made = CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (made != INVALID_HANDLE_VALUE) return {made, close};
  const DWORD code = GetLastError();
  if (code == ERROR_FILE_EXISTS) return nullptr;
  throw std::system_error(static_cast<int>(code), std::system_category());
}

void remove_unowned(const fs::path& file) noexcept try {
  const HANDLE found = CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
  if (found == INVALID_HANDLE_VALUE) return;
  DeleteFileW((file.native() + fs::path(kJournal).native()).c_str());
  DeleteFileW(file.c_str());  // goes when it is closed
  CloseHandle(found);
} catch (...) {
  // Without memory for a name it stays.
}

}  // namespace tavdsrv
