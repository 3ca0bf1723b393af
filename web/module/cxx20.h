// What Debian's emscripten, whose C++ library is that of LLVM 13, lacks of C++20's as our sources use it.
// Read in front of every source (cmake/web.cmake), with the meaning that the standard gives each name. A
// later library has all of it, and this file then goes.
#pragma once

#include <version>

#if defined(_LIBCPP_VERSION) && _LIBCPP_VERSION < 14000

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <compare>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

namespace std {

template <typename To, typename From>
constexpr To bit_cast(const From& from) noexcept {
  static_assert(sizeof(To) == sizeof(From));
  return __builtin_bit_cast(To, from);
}

template <typename Char, typename Traits, typename Allocator>
strong_ordering operator<=>(const basic_string<Char, Traits, Allocator>& a,
                            const basic_string<Char, Traits, Allocator>& b) noexcept {
  return a.compare(b) <=> 0;
}

// ---- Numbers as text ------------------------------------------------------

namespace tavd_chars {

constexpr size_t kRoom = 400;  // more than any double takes, written in full

template <typename Float>
Float read(const char* text, char** end) {
  if constexpr (is_same_v<Float, float>) return strtof(text, end);
  return static_cast<Float>(strtod(text, end));
}

// Of the characters, as many as may belong to a decimal number: strtod would also take blanks, a plus and
// hexadecimals.
inline size_t plausible(const char* first, const char* last) {
  const string_view text(first, static_cast<size_t>(last - first));
  const size_t digits = text.substr(0, 1) == "-" ? 1 : 0;
  const string_view rest = text.substr(digits);
  if (rest.empty()) return 0;
  if ((rest[0] < '0' || rest[0] > '9') && rest[0] != '.' && (rest[0] | 0x20) != 'i' &&
      (rest[0] | 0x20) != 'n')
    return 0;
  if (rest.size() > 1 && rest[0] == '0' && (rest[1] | 0x20) == 'x') return digits + 1;
  return text.size();
}

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kExactPower = 22;  // the last power of ten that a double holds

// Plain decimals of few digits, the usual ones: two exact numbers are divided, and that is rounded once.
// Length of the number, 0 if it is not so plain. What strtod does takes long here, where long double is done
// in software.
template <typename Float>
size_t plain(string_view text, Float& value) {
  constexpr long long kMostDigits = is_same_v<Float, float> ? 1LL << 24 : 1LL << 53;
  constexpr int kMostDecimals = is_same_v<Float, float> ? 10 : kExactPower;
  long long number = 0;
  int decimals = 0;
  bool has_point = false;
  size_t at = text[0] == '-' ? 1 : 0;
  const size_t start = at;
  for (; at < text.size(); ++at) {
    if (text[at] == '.' && !has_point) {
      has_point = true;
    } else if (text[at] >= '0' && text[at] <= '9') {
      number = number * 10 + (text[at] - '0');
      decimals += has_point ? 1 : 0;
      if (number > kMostDigits || decimals > kMostDecimals) return 0;
    } else {
      break;
    }
  }
  if (at == start + (has_point ? 1 : 0)) return 0;
  if (at < text.size() && (text[at] | 0x20) == 'e') return 0;
  value = static_cast<Float>(number) / static_cast<Float>(kPowersOfTen[decimals]);
  if (start == 1) value = -value;
  return at;
}

template <typename Float>
from_chars_result from(const char* first, const char* last, Float& value) {
  const string text(first, plausible(first, last));
  if (text.empty()) return {first, errc::invalid_argument};
  if (const size_t length = plain(text, value); length != 0) return {first + length, errc()};
  char* end = nullptr;
  errno = 0;
  const Float read_value = read<Float>(text.c_str(), &end);
  const auto length = end - text.c_str();
  if (length == 0) return {first, errc::invalid_argument};
  // Beyond the largest number, or below the smallest: nothing is given.
  if (errno == ERANGE && (std::isinf(read_value) || read_value == 0))
    return {first + length, errc::result_out_of_range};
  value = read_value;
  return {first + length, errc()};
}

inline to_chars_result put(char* first, char* last, const char* text, int length) {
  if (length < 0 || length > last - first) return {last, errc::value_too_large};
  memcpy(first, text, static_cast<size_t>(length));
  return {first + length, errc()};
}

// The digits of the shortest number in scientific form that reads back as the same one.
template <typename Float>
int shortest(char (&text)[kRoom], Float value) {
  constexpr int kMost = is_same_v<Float, float> ? 8 : 16;
  int length = 0;
  for (int decimals = 0; decimals <= kMost; ++decimals) {
    length = snprintf(text, sizeof text, "%.*e", decimals, static_cast<double>(value));
    if (read<Float>(text, nullptr) == value) break;
  }
  return length;
}

// The same number in the fixed form: as many decimals as its digits reach behind the point.
template <typename Float>
int fixed_of(char (&text)[kRoom], const char* scientific, Float value) {
  const string_view number(scientific);
  const size_t exponent_at = number.find('e');
  const int exponent = atoi(scientific + exponent_at + 1);
  const size_t point = number.find('.');
  const int decimals = point == string_view::npos ? 0 : static_cast<int>(exponent_at - point - 1);
  const int wanted = decimals > exponent ? decimals - exponent : 0;
  return snprintf(text, sizeof text, "%.*f", wanted, static_cast<double>(value));
}

// The shortest digits of a number above 0, the last of them in the place 10^-decimals.
struct Digits {
  long long number;
  int decimals;
};

// Of numbers of 15 digits and less, with factors that a double holds: false for others.
template <typename Float>
bool few_digits(Float value, Digits& digits) {
  constexpr int kMost = is_same_v<Float, float> ? 9 : 15;
  const auto wide = static_cast<double>(value);
  const int exponent = static_cast<int>(std::floor(std::log10(wide)));
  for (int count = 1; count <= kMost + 1; ++count) {
    const int decimals = count - 1 - exponent;
    if (decimals > kExactPower || decimals < -kExactPower) return false;
    const double power = kPowersOfTen[decimals < 0 ? -decimals : decimals];
    const double number = std::nearbyint(decimals < 0 ? wide / power : wide * power);
    if (number > 9e15) return false;
    if (static_cast<Float>(decimals < 0 ? number * power : number / power) != value) continue;
    digits = {static_cast<long long>(number), decimals};
    while (digits.number % 10 == 0) {
      digits.number /= 10;
      --digits.decimals;
    }
    return true;
  }
  return false;
}

inline string fixed_text(const string& digits, int decimals) {
  if (decimals <= 0) return digits + string(static_cast<size_t>(-decimals), '0');
  const auto behind = static_cast<size_t>(decimals);
  if (digits.size() > behind)
    return digits.substr(0, digits.size() - behind) + "." + digits.substr(digits.size() - behind);
  return "0." + string(behind - digits.size(), '0') + digits;
}

inline string scientific_text(const string& digits, int decimals) {
  const int exponent = static_cast<int>(digits.size()) - 1 - decimals;
  const int size = exponent < 0 ? -exponent : exponent;
  return digits.substr(0, 1) + (digits.size() > 1 ? "." + digits.substr(1) : "") +
         (exponent < 0 ? "e-" : "e+") + (size < 10 ? "0" : "") + to_string(size);
}

// The usual numbers without printf, which counts in long double; empty for others.
template <typename Float>
string quick_text(Float value, bool fixed_alone) {
  if (value == 0) return std::signbit(value) ? "-0" : "0";
  Digits digits{};
  const Float size = value < 0 ? -value : value;
  constexpr Float kLargest = 1e15F;
  // Of a larger whole number the digits that are not its shortest are told too, as they are.
  if (!(size < kLargest) || !few_digits(size, digits) || digits.decimals < 0) return {};
  const string number = to_string(digits.number);
  const string fixed = fixed_text(number, digits.decimals);
  const string scientific = scientific_text(number, digits.decimals);
  return (value < 0 ? "-" : "") + (fixed_alone || fixed.size() <= scientific.size() ? fixed : scientific);
}

template <typename Float>
to_chars_result to_shortest(char* first, char* last, Float value, bool fixed_alone) {
  if (!std::isfinite(value)) {
    const char* const text = std::isnan(value) ? (std::signbit(value) ? "-nan" : "nan")
                             : value < 0       ? "-inf"
                                               : "inf";
    return put(first, last, text, static_cast<int>(strlen(text)));
  }
  if (const string text = quick_text(value, fixed_alone); !text.empty()) {
    return put(first, last, text.data(), static_cast<int>(text.size()));
  }
  char scientific[kRoom];
  char fixed[kRoom];
  const int scientific_length = shortest(scientific, value);
  const int fixed_length = fixed_of(fixed, scientific, value);
  // The shorter one, the fixed form where both are as short.
  if (fixed_alone || fixed_length <= scientific_length) return put(first, last, fixed, fixed_length);
  return put(first, last, scientific, scientific_length);
}

}  // namespace tavd_chars

inline from_chars_result from_chars(const char* first, const char* last, float& value) {
  return tavd_chars::from(first, last, value);
}
inline from_chars_result from_chars(const char* first, const char* last, double& value) {
  return tavd_chars::from(first, last, value);
}

inline to_chars_result to_chars(char* first, char* last, float value) {
  return tavd_chars::to_shortest(first, last, value, false);
}
inline to_chars_result to_chars(char* first, char* last, double value) {
  return tavd_chars::to_shortest(first, last, value, false);
}
inline to_chars_result to_chars(char* first, char* last, double value, chars_format) {
  return tavd_chars::to_shortest(first, last, value, true);
}
inline to_chars_result to_chars(char* first, char* last, double value, chars_format, int precision) {
  char text[tavd_chars::kRoom];
  return tavd_chars::put(first, last, text, snprintf(text, sizeof text, "%.*f", precision, value));
}

// ---- Algorithms -----------------------------------------------------------

namespace ranges {

template <typename Range, typename Value, typename Projection = identity>
constexpr auto find(Range&& range, const Value& value, Projection projection = {}) {
  return std::find_if(std::begin(range), std::end(range),
                      [&](const auto& item) { return std::invoke(projection, item) == value; });
}

template <typename Range, typename Predicate, typename Projection = identity>
constexpr auto find_if(Range&& range, Predicate predicate, Projection projection = {}) {
  return std::find_if(std::begin(range), std::end(range), [&](const auto& item) {
    return std::invoke(predicate, std::invoke(projection, item));
  });
}

template <typename Range, typename Predicate, typename Projection = identity>
constexpr bool any_of(Range&& range, Predicate predicate, Projection projection = {}) {
  return find_if(range, predicate, projection) != std::end(range);
}

template <typename Range, typename Predicate, typename Projection = identity>
constexpr bool all_of(Range&& range, Predicate predicate, Projection projection = {}) {
  return std::all_of(std::begin(range), std::end(range),
                     [&](const auto& item) { return std::invoke(predicate, std::invoke(projection, item)); });
}

template <typename Range, typename Value, typename Projection = identity>
constexpr auto count(Range&& range, const Value& value, Projection projection = {}) {
  return std::count_if(std::begin(range), std::end(range),
                       [&](const auto& item) { return std::invoke(projection, item) == value; });
}

template <typename First, typename Second, typename Same = std::equal_to<>, typename OfFirst = identity,
          typename OfSecond = identity>
constexpr bool equal(First&& first, Second&& second, Same same = {}, OfFirst of_first = {},
                     OfSecond of_second = {}) {
  return std::equal(std::begin(first), std::end(first), std::begin(second), std::end(second),
                    [&](const auto& a, const auto& b) {
                      return std::invoke(same, std::invoke(of_first, a), std::invoke(of_second, b));
                    });
}

template <typename Range, typename Output>
constexpr auto copy(Range&& range, Output output) {
  return std::copy(std::begin(range), std::end(range), output);
}

template <typename Range>
constexpr auto max_element(Range&& range) {
  return std::max_element(std::begin(range), std::end(range));
}

template <typename Range, typename Old, typename New>
constexpr void replace(Range&& range, const Old& old, const New& with) {
  std::replace(std::begin(range), std::end(range), old, with);
}

template <typename Range, typename Compare = std::less<>, typename Projection = identity>
void stable_sort(Range&& range, Compare compare = {}, Projection projection = {}) {
  const auto before = [&](const auto& a, const auto& b) {
    return std::invoke(compare, std::invoke(projection, a), std::invoke(projection, b));
  };
  std::stable_sort(std::begin(range), std::end(range), before);
}

}  // namespace ranges
}  // namespace std

#endif
