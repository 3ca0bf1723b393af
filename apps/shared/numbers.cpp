#include "shared/numbers.h"

#include <charconv>
#include <cmath>
#include <cstddef>

namespace hosts {
namespace {

constexpr std::size_t kNumberChars = 80;  // more than any float takes, written in full

}  // namespace

std::string fixed(float value, int decimals) {
  if (!std::isfinite(value)) return "-";
  char text[kNumberChars];
  const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
  const std::string number(text, result.ptr);
  // A value that rounds to nothing has no sign.
  return number.find_first_not_of("-0.") == std::string::npos && number[0] == '-' ? number.substr(1) : number;
}

std::string brief(float value) {
  const float size = std::abs(value);
  std::string text = fixed(value, size >= 100 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : 3);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string expected_whole(int lowest, int highest) {
  return "a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest);
}

}  // namespace hosts
