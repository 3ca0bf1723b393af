#include "support/pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <new>

namespace tavdtest {

Pages::Pages(std::size_t bytes) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t usable = (bytes + page - 1) / page * page;
  length_ = usable + page;
  void* const block = mmap(nullptr, length_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (block == MAP_FAILED) throw std::bad_alloc();
  block_ = static_cast<unsigned char*>(block);
  end_ = block_ + usable;
  if (mprotect(end_, page, PROT_NONE) != 0) throw std::bad_alloc();
}

Pages::~Pages() {
  munmap(block_, length_);
}

}  // namespace tavdtest
