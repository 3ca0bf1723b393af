// The C allocator keeps an address for the life of a block and resizes and frees from the address alone;
// nothing more is asked of it.
#include "base/gwblock.h"

#include <cstdlib>

namespace tavd {

void* gwblock_take(std::size_t size) {
  return std::malloc(size);
}

bool gwblock_known(const void* /*block*/) {
  return true;
}

void* gwblock_resize(void* block, std::size_t size) {
  return std::realloc(block, size);
}

void gwblock_free(void* block) {
  std::free(block);
}

}  // namespace tavd
