// The level of two sources together, f(d) = 10*lg(1 + 10^d) above the greater one, as a table of polynomials.
//
// d, a tenth of the difference, runs from -16 to 0 in spans of 1/16. On each a polynomial of degree 5 meets f
// at six Chebyshev nodes. How far it is from f: h^6*|f^(6)|/6!/2^5 with h = 1/32. f is analytic where 10^z is
// not -1, within 1.36 of the real line. Round a d of 0 or less with radius 1, 10^z is below 10 in size and at
// most 2.31 from the positive line, so that |1 + 10^z| lies between 0.73 and 11 and |f| < 4.35*sqrt(2.4^2
// + 2.31^2) < 14.6; by Cauchy's estimate |f^(6)|/6! < 14.6. Together less than 14.6*2^-35 = 4.3e-10 dB. The
// table and the polynomial are rounded by less than 1e-14.
#pragma once

#include <cmath>
#include <cstddef>

#include "calc/numeric.h"
#include "tavd/flowdata.h"

namespace tavd {

constexpr int kSumSpans = 256;
constexpr int kSumSpansOfOne = 16;  // spans in a d of 1
constexpr int kSumCoefficients = 6;
constexpr float kLastPlace = 255.99F;  // in the last span; what lies behind it is left to the exact step
static_assert(kLastPlace < kSumSpans);

// Filled when the library is loaded, and never changed.
struct SumTable {
  SumTable();
  // By rising power of u, from -1 to 1 across the span. All spans of one power together: so are they loaded.
  double coefficients[kSumCoefficients][kSumSpans];
};
extern const SumTable kSumTable;

// The exact sum of two levels is hi + 10*log10(1 + pow(10, d)) rounded to float. pow and log10 are right to a
// few units in their last places, 1e-14 dB for a d of 0 or less; hi and the sum are rounded by less than
// 2^-52 of them, and so is what is formed here.
constexpr double kSumDistance = 5e-10;  // dB
constexpr double kSumRoundings = 4e-16 * 4;

[[gnu::always_inline]] inline double sum_polynomial(int span, double u) {
  const auto& c = kSumTable.coefficients;
  const auto at = static_cast<std::size_t>(span);
  return c[0][at] + u * (c[1][at] + u * (c[2][at] + u * (c[3][at] + u * (c[4][at] + u * c[5][at]))));
}

// The sum of `sum` and `level`, and whether it is certain that it is the one of the single function.
[[gnu::always_inline]] inline bool add_level(float* sum, float level) {
  const float before = *sum;
  const float hi = before > level ? before : level;
  const float lo = before > level ? level : before;
  const float d = -(hi - lo) / 10.0F;
  const float scaled = d * -static_cast<float>(kSumSpansOfOne);  // 0 or more, or not a number
  const float place = scaled < kLastPlace ? scaled : kLastPlace;
  const int span = static_cast<int>(place);
  const double u = 2.0 * (wide(place) - static_cast<double>(span)) - 1.0;
  const double more = sum_polynomial(span, u);
  const double exact = wide(hi) + more;
  const double distance = kSumDistance + std::fabs(wide(hi)) * kSumRoundings;
  const float low = narrow(exact - distance);
  *sum = low;
  return both(scaled < kLastPlace, low == narrow(exact + distance));
}

}  // namespace tavd
