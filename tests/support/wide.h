// Wide literals and strings of the interface's own character: char16_t, or wchar_t on Windows.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "tavd/types.h"

namespace tavdtest {

using Wide = std::basic_string<tavd_wchar>;
using WideView = std::basic_string_view<tavd_wchar>;

// Of the two spellings of a literal or a character the one that the interface takes.
template <typename Char16, typename WideChar>
constexpr auto spelled(Char16 utf16, WideChar wide) {
  if constexpr (std::is_same_v<tavd_wchar, char16_t>) {
    return utf16;
  } else {
    return wide;
  }
}

}  // namespace tavdtest

#define WIDE(literal) (tavdtest::spelled(u##literal, L##literal))
