// The two halves of a character beyond U+FFFF in UTF-16.
#pragma once

#include <cstddef>

#include "tavd/types.h"

namespace codepage {

inline bool is_high_surrogate(char16_t unit) {
  return (unit & 0xFC00U) == 0xD800U;
}

inline bool is_low_surrogate(char16_t unit) {
  return (unit & 0xFC00U) == 0xDC00U;
}

// Whether a surrogate pair stands at `index`.
inline bool pair_at(const tavd_wchar* wide, std::size_t length, std::size_t index) {
  return is_high_surrogate(wide[index]) && index + 1 < length && is_low_surrogate(wide[index + 1]);
}

}  // namespace codepage
