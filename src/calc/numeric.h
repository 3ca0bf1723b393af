// Steps that the calculations share. Results are specified to the last bit, so each step says the precision
// it runs in: what is plain here runs in float, what goes through wide() or lg() in double.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "gwmath.h"

namespace tavd {

// A float on its way into a step in double, above all a comparison with a decimal constant.
constexpr double wide(float x) {
  return static_cast<double>(x);
}

// The end of a step in double.
constexpr float narrow(double x) {
  return static_cast<float>(x);
}

// Conditions of loops that become vectors: without a branch between the two, which && and || may take.
constexpr bool both(bool a, bool b) {
  return (static_cast<int>(a) & static_cast<int>(b)) != 0;
}

constexpr bool either(bool a, bool b) {
  return (static_cast<int>(a) | static_cast<int>(b)) != 0;
}

inline double lg(float x) {
  return gwlog10(wide(x));
}

// Whether `first` is the first float above `bound`. A float then lies below the one where it lies below the
// other, and a comparison that is specified in double may be made in float.
constexpr bool is_first_above(float first, double bound) {
  const float before = std::bit_cast<float>(std::bit_cast<std::uint32_t>(first) - 1);
  return wide(first) > bound && wide(before) < bound;
}

// Resistance of a measured point, the constant of the square law dp = k*qv^2, Pa/(l/s)^2.
constexpr float resistance(float qv, float dp) {
  return dp / (qv * qv);
}

// Pressure at flow `qv` on the square law through the point (row_qv, row_dp), Pa.
constexpr float square_law(float row_qv, float row_dp, float qv) {
  return (row_dp * qv * qv) / (row_qv * row_qv);
}

// Rows that can be read of a table of `capacity` rows that claims to hold `count`.
constexpr int row_count(std::int16_t count, int capacity) {
  return std::clamp(static_cast<int>(count), 0, capacity);
}

}  // namespace tavd
