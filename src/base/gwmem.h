// The allocator. Addresses do not change while a block lives; a block is resized and freed from its address
// alone. `tag` is a free number that appears in the out-of-memory report.
#pragma once

#include <cstdint>

namespace tavd {

void* gwGmalloc(std::int32_t size, std::int32_t tag);              // not cleared; null on failure
void* gwGrealloc(void* ptr, std::int32_t size, std::int32_t tag);  // null on failure: the old block is lost
int gwGfree(void* ptr);                                            // null allowed; always 0

// Out-of-memory reports. Nothing sets a hook by default.
using gwerrorhook = void (*)(std::int32_t code, const char* text);
void gwSetErrorHook(gwerrorhook hook);
std::int32_t gwError(std::int32_t code, const char* text);  // `code`

}  // namespace tavd
