// A quick logarithm to base 10 of a float.
//
// x = m*2^e with m from 1 to 2. Of 128 places in that range the nearest, 1/c, has its logarithm in a table,
// with c rounded to 24 bits: m has 24 too, so that m*c and r = m*c - 1 are exact in double. Then
//
//   lg x = e*lg 2 - lg c + lg e * (r - r^2/2 + r^3/3 - r^4/4 + r^5/5 - ...)
//
// How far from what gwlog10 gives, for any ordinary x:
// - |r| < 2^-8: the places lie 2^-7 apart, so that m is within 2^-8 of one, and 1/c is 1 at least. What is
// left
//   out of the series is below r^6/6/(1 - |r|) * lg e < 2.6e-16.
// - lg c, below 0.302 in size, is gwlog10's, right to 2 units in its last place: 1.2e-16.
// - lg 2, rounded to double, is within 2.8e-17, times 127 at most: 3.6e-15.
// - the product and two sums are below 64 in size and are rounded to 2^-48 each way at most: 3*3.6e-15. The
//   series itself is below 2^-8; its roundings stay below 1e-17.
// - gwlog10 is right to 2 units in the last place of a number below 64: 1.5e-14.
// Together less than 3.1e-14.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "calc/numeric.h"

namespace tavd {

constexpr double kLogDistance = 4e-14;

constexpr int kLogPlaceBits = 7;
constexpr int kLogPlaces = 1 << kLogPlaceBits;

// Filled when the library is loaded, and never changed.
struct LogTable {
  LogTable();
  double inverse[kLogPlaces];  // c, 24 bits
  double lg[kLogPlaces];       // -lg c
};
extern const LogTable kLogTable;

// `x` is ordinary.
inline double quick_lg(float x) {
  constexpr int kMantissaBits = 23;
  constexpr std::int32_t kMantissa = (1 << kMantissaBits) - 1;
  constexpr std::int32_t kBias = 127;
  constexpr double kLg2 = 0.30102999566398119521;
  constexpr double kLgE = 0.43429448190325182765;
  const auto bits = std::bit_cast<std::int32_t>(x);
  const std::int32_t exponent = (bits >> kMantissaBits) - kBias;
  const auto m = std::bit_cast<float>((bits & kMantissa) | (kBias << kMantissaBits));
  const auto place = static_cast<std::size_t>((bits & kMantissa) >> (kMantissaBits - kLogPlaceBits));
  const double r = wide(m) * kLogTable.inverse[place] - 1.0;
  const double r2 = r * r;
  const double series = (kLgE * r) + r2 * ((-kLgE / 2 + r * (kLgE / 3)) + r2 * (-kLgE / 4 + r * (kLgE / 5)));
  return static_cast<double>(exponent) * kLg2 + (kLogTable.lg[place] + series);
}

}  // namespace tavd
