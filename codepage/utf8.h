// UTF-8, the same on every platform: what codepage.h says of it.
#pragma once

#include <cstddef>

#include "tavd/types.h"

namespace codepage {

std::size_t widen_utf8(const char* text, std::size_t length, tavd_wchar* wide, std::size_t capacity);
// Sets `lost` when a lone surrogate is met, and leaves it alone otherwise.
std::size_t narrow_utf8(const tavd_wchar* wide, std::size_t length, char* text, std::size_t capacity,
                        bool* lost);

}  // namespace codepage
