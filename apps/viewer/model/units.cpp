#include "model/units.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "model/database.h"

namespace viewer {
namespace {

constexpr int kPlainDigits = 5;
constexpr double kLargest = 1e9;  // of a number that can be typed

std::wstring widened(const char* begin, const char* end) {
  return {begin, end};
}

}  // namespace

std::span<const Unit> flow_units() {
  return hosts::axis_units(hosts::Quantity::kFlow);
}

std::span<const Unit> pressure_units() {
  return hosts::axis_units(hosts::Quantity::kPressure);
}

const Unit& velocity_unit() {
  return hosts::base_unit(hosts::Quantity::kVelocity);
}

std::wstring sign_of(const Unit& unit) {
  return wide(unit.sign);
}

std::wstring fixed(double number, int decimals) {
  char text[400];
  const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, decimals);
  return end.ec == std::errc() ? widened(text, end.ptr) : L"?";
}

std::wstring plain(double number) {
  if (!std::isfinite(number)) return {};
  const int before_point = number < 1.0 ? 1 : static_cast<int>(std::floor(std::log10(number))) + 1;
  std::wstring text = fixed(number, std::max(0, kPlainDigits - before_point));
  if (text.find(L'.') == std::wstring::npos) return text;
  text.erase(text.find_last_not_of(L'0') + 1);
  if (text.back() == L'.') text.pop_back();
  return text;
}

std::wstring with_unit(double base, const Unit& unit) {
  return fixed(hosts::from_base(base, unit), unit.decimals) + L' ' + sign_of(unit);
}

std::optional<double> parsed(std::wstring_view text) {
  const std::size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring_view::npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(L" \t") + 1 - first);
  std::string narrow;
  for (const wchar_t c : text) {
    if (c > L'~') return std::nullopt;
    narrow += c == L',' ? '.' : static_cast<char>(c);
  }
  double number = 0;
  const char* end = narrow.data() + narrow.size();
  const auto read = std::from_chars(narrow.data(), end, number, std::chars_format::fixed);
  const bool good = read.ec == std::errc() && read.ptr == end && number >= 0 && number <= kLargest;
  return good ? std::optional(number) : std::nullopt;
}

}  // namespace viewer
