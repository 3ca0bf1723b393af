#include "base/numbers.h"

#include <charconv>
#include <cmath>

#include "base/errors.h"
#include "base/text.h"

namespace tavdhost {
namespace {

constexpr std::size_t kNumberChars = 32;  // more than the shortest digits of any float or int take

template <typename Number>
void append_number(std::string& out, Number value) {
  char text[kNumberChars];
  const auto result = std::to_chars(text, text + sizeof text, value);
  out.append(text, result.ptr);
}

}  // namespace

float positive_number(std::string_view option, std::string_view text) {
  float value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) || value <= 0) {
    throw UserError(std::string(option) + " is " + in_quotes(text) + ", expected " +
                    hosts::kExpectedAboveZero);
  }
  return value;
}

int whole_number(std::string_view option, std::string_view text, int lowest, int highest) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < lowest || value > highest) {
    throw UserError(std::string(option) + " is " + in_quotes(text) + ", expected " +
                    hosts::expected_whole(lowest, highest));
  }
  return value;
}

std::string shortest(float value) {
  std::string text;
  append_shortest(text, value);
  return text;
}

void append_shortest(std::string& out, float value) {
  append_number(out, value);
}

void append_whole(std::string& out, int value) {
  append_number(out, value);
}

}  // namespace tavdhost
