// Blocks of the platform's memory, for gwmem.cpp.
#pragma once

#include <cstddef>

namespace tavd {

void* gwblock_take(std::size_t size);  // not cleared; null on failure
// Whether `block` is one that the platform can resize and free. Asked before each resizing.
bool gwblock_known(const void* block);
// The block's new address. Null on failure: the old one is lost then.
void* gwblock_resize(void* block, std::size_t size);
void gwblock_free(void* block);  // null allowed

}  // namespace tavd
