// A quick power of ten.
//
// 10^y = 2^(n + j/64) * 2^s with s the rest, below 2^-7 in size. 2^(j/64) stands in a table, and
//
//   2^s = 1 + z + z^2/2 + z^3/6 + z^4/24 + z^5/120 + ..., z = s*ln 2, |z| < 0.00542
//
// How far from 10^y, relative, for |y| up to 40:
// - what is left out of the series: z^6/720 * 1.001 < 3.6e-17.
// - y*lb 10 is below 133 and is rounded to 2^-46 with the constant's own error: 1.5e-14 + 1.5e-14, times ln
// 2: 2.1e-14.
// - the table is right to an unit in its last place, and a few more roundings: 8*2.3e-16.
// Together less than 2.4e-14.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace tavd {

constexpr double kPowerDistance = 2.5e-14;  // relative
constexpr double kLargestPower = 40.0;      // of the exponent, either sign

constexpr int kPowerPlaceBits = 6;
constexpr int kPowerPlaces = 1 << kPowerPlaceBits;

// Filled when the library is loaded, and never changed.
struct PowerTable {
  PowerTable();
  double places[kPowerPlaces];  // 2^(j/64)
};
extern const PowerTable kPowerTable;

// `y` is a number of at most kLargestPower.
inline double quick_power_of_ten(double y) {
  constexpr double kLb10 = 3.32192809488736234787;
  constexpr double kLn2 = 0.69314718055994530942;
  constexpr int kMantissaBits = 52;
  // The nearest whole number by its sum with a number whose last place is worth 1, and stands in its lowest
  // bits.
  constexpr double kWhole = 6755399441055744.0;  // 1.5*2^52
  constexpr std::uint64_t kPlaceMask = kPowerPlaces - 1;
  const double places = y * (kLb10 * kPowerPlaces);
  const double shifted = places + kWhole;
  const double z = (places - (shifted - kWhole)) * (kLn2 / kPowerPlaces);
  const auto whole = std::bit_cast<std::uint64_t>(shifted);
  const double power = kPowerTable.places[whole & kPlaceMask];
  const std::uint64_t exponent = (whole & ~kPlaceMask) << (kMantissaBits - kPowerPlaceBits);
  const auto scaled = std::bit_cast<double>(std::bit_cast<std::uint64_t>(power) + exponent);
  const double z2 = z * z;
  return scaled + scaled * (z + z2 * ((0.5 + z * (1.0 / 6)) + z2 * (1.0 / 24 + z * (1.0 / 120))));
}

}  // namespace tavd
