// Moveable global memory, locked for the whole life of a block. The handle is found from the address.
#include "base/gwblock.h"

#include <windows.h>

namespace tavd {

void* gwblock_take(std::size_t size) {
  HGLOBAL handle = GlobalAlloc(GMEM_MOVEABLE, size);
  if (handle == nullptr) return nullptr;
  void* block = GlobalLock(handle);
  if (block == nullptr) GlobalFree(handle);
  return block;
}

bool gwblock_known(const void* block) {
  return GlobalHandle(block) != nullptr;
}

// Where the platform cannot resize it, the old block stays, unlocked.
void* gwblock_resize(void* block, std::size_t size) {
  HGLOBAL handle = GlobalHandle(block);
  GlobalUnlock(handle);
  HGLOBAL resized = GlobalReAlloc(handle, size, GMEM_MOVEABLE);
  return resized != nullptr ? GlobalLock(resized) : nullptr;
}

void gwblock_free(void* block) {
  HGLOBAL handle = block != nullptr ? GlobalHandle(block) : nullptr;
  if (handle == nullptr) return;
  GlobalUnlock(handle);
  GlobalFree(handle);
}

}  // namespace tavd
