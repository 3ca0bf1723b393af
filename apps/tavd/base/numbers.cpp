#include "base/numbers.h"

#include <charconv>
#include <cmath>

#include "base/errors.h"
#include "base/text.h"

namespace tavdhost {
namespace {

constexpr std::size_t kNumberChars = 80;  // more than any float takes, written in full

}  // namespace

float positive_number(std::string_view option, std::string_view text) {
  float value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) || value <= 0) {
    throw UserError(std::string(option) + " is " + in_quotes(text) +
                    ", expected a number above 0 such as 50 or 12.5");
  }
  return value;
}

int whole_number(std::string_view option, std::string_view text, int lowest, int highest) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < lowest || value > highest) {
    throw UserError(std::string(option) + " is " + in_quotes(text) + ", expected a whole number from " +
                    std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return value;
}

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

std::string shortest(float value) {
  char text[kNumberChars];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return {text, result.ptr};
}

}  // namespace tavdhost
