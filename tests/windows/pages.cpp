#include "support/pages.h"

#include <windows.h>

#include <new>

namespace tavdtest {

Pages::Pages(std::size_t bytes) {
  SYSTEM_INFO system{};
  GetSystemInfo(&system);
  const std::size_t page = system.dwPageSize;
  const std::size_t usable = (bytes + page - 1) / page * page;
  length_ = usable + page;
  block_ =
      static_cast<unsigned char*>(VirtualAlloc(nullptr, length_, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
  if (block_ == nullptr) throw std::bad_alloc();
  end_ = block_ + usable;
  DWORD before = 0;
  if (VirtualProtect(end_, page, PAGE_NOACCESS, &before) == 0) throw std::bad_alloc();
}

Pages::~Pages() {
  VirtualFree(block_, 0, MEM_RELEASE);
}

}  // namespace tavdtest
