#include "base/gwmem.h"

#include <algorithm>
#include <cstdio>

#include "base/gwblock.h"

namespace tavd {
namespace {

constexpr std::int32_t kOutOfMemoryCode = -2;

gwerrorhook error_hook = nullptr;

// Nobody is asked for 0 bytes: that may give null, which is a failure here, and frees a block that
// is resized.
std::size_t asked(std::int32_t size) {
  return static_cast<std::size_t>(std::max(size, 1));
}

void report(const char* function, std::int32_t tag) {
  char text[64];
  std::snprintf(text, sizeof text, "%s() out of memory (%d)", function, static_cast<int>(tag));
  gwError(kOutOfMemoryCode, text);
}

}  // namespace

void* gwGmalloc(std::int32_t size, std::int32_t tag) {
  void* block = size >= 0 ? gwblock_take(asked(size)) : nullptr;
  if (block == nullptr) report("gwGmalloc", tag);
  return block;
}

void* gwGrealloc(void* ptr, std::int32_t size, std::int32_t tag) {
  if (ptr == nullptr) return gwGmalloc(size, tag);
  if (!gwblock_known(ptr)) return nullptr;
  void* block = size >= 0 ? gwblock_resize(ptr, asked(size)) : nullptr;
  if (block == nullptr) report("gwGrealloc", tag);
  return block;
}

int gwGfree(void* ptr) {
  gwblock_free(ptr);
  return 0;
}

void gwSetErrorHook(gwerrorhook hook) {
  error_hook = hook;
}

std::int32_t gwError(std::int32_t code, const char* text) {
  if (error_hook != nullptr) error_hook(code, text);
  return code;
}

}  // namespace tavd
