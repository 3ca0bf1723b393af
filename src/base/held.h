// Conversions to integers that hold a value which does not fit at the integer's end.
#pragma once

#include <cstdint>
#include <limits>

namespace tavd {

// Truncates toward zero; not-a-number gives 0.
template <typename Int>
Int held(double value) {
  constexpr double kLowest = std::numeric_limits<Int>::min();
  constexpr double kHighest = std::numeric_limits<Int>::max();
  if (value >= kHighest) return std::numeric_limits<Int>::max();
  if (value <= kLowest) return std::numeric_limits<Int>::min();
  return value == value ? static_cast<Int>(value) : Int{0};  // NOLINT(misc-redundant-expression)
}

template <typename Int>
Int held(std::int64_t value) {
  if (value > std::numeric_limits<Int>::max()) return std::numeric_limits<Int>::max();
  if (value < std::numeric_limits<Int>::min()) return std::numeric_limits<Int>::min();
  return static_cast<Int>(value);
}

// The sum of two coordinates.
inline int moved(int coordinate, int by) {
  return held<int>(std::int64_t{coordinate} + by);
}

}  // namespace tavd
