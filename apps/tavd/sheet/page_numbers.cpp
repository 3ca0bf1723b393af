#include "sheet/page_numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace tavdhost {

std::string page_number(double mm) {
  const double rounded = std::round(mm * 100) / 100 + 0.0;  // + 0.0: no negative zero
  std::array<char, 400> text;                               // more than any number takes in full
  const auto end = std::to_chars(text.data(), text.data() + text.size(), rounded, std::chars_format::fixed);
  return {text.data(), end.ptr};
}

std::string page_colour(std::uint32_t colour) {
  std::array<char, 8> text;
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour & 0xFF, colour >> 8 & 0xFF,
                colour >> 16 & 0xFF);
  return text.data();
}

}  // namespace tavdhost
