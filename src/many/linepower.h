// Many powers of one exponent, eight side by side: a*x^n for one a and one n.
//
// x = m*2^e with m from 1 to 2. Of 16 places in that range the nearest, 1/c, is known with c rounded to 24
// bits: m has 24 too, so that m*c and r = m*c - 1 are exact in double. Then
//
//   a*x^n = [a*(1/c)^n] * 2^(n*e) * (1 + r)^n
//
// The first factor stands in a table of 16. So does the second, in two: e is 16*h + l, and 2^(n*16*h) and
// 2^(n*l) have 16 values each. A table of 16 is a choice among two registers, which no memory is asked for.
// The third is its binomial series up to r^7.
//
// How far from a*pow(x, n), relative, for |n| up to kLargestExponent and any ordinary x:
// - |r| < R = 0.0304: the places lie 1/16 apart, so that m is within 1/32 of one, which is 33/32 at least.
// - what is left out of the series begins with |C(n, 8)|*R^8, and each term is below R*max(1, (|n| + 8)/9)
//   times the one before, since |C(n, k+1)/C(n, k)| = |n - k|/(k + 1) does not rise with k where it is above
//   1. For n of 1 and below in size that is less than 1e-12.
// - c^-n, 2^(n*16*h) and 2^(n*l) are right to an unit in their last place, n*e being exact; four products,
//   the sums of the series, which is between 0.88 and 1.14, in whatever order and whether or not a product is
//   rounded before it is added, and pow and its product: below 20*2^-52 together.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavd {

class LinePower {
 public:
  static constexpr float kLargestExponent = 4.0F;
  static constexpr std::size_t kBlock = 64;

  // `exponent` of at most kLargestExponent in size.
  LinePower(float coefficient, float exponent);

  // factor times a*x^n, with a*x^n rounded to float, for kBlock numbers x. A bit for each of them, from the
  // lowest: 1 where it is not certain that the exact power is rounded to the same, or where x is not
  // ordinary. For machines with AVX-512 (many/paths.h); elsewhere it takes the plain steps.
  std::uint64_t block(const float* x, float factor, float* results) const;

 private:
  static constexpr int kPlaces = 16;
  static constexpr int kTerms = 7;

  double coefficient_;       // a
  double exponent_;          // n
  double inverse_[kPlaces];  // c
  double places_[kPlaces];   // a*(1/c)^n
  double low_[kPlaces];      // 2^(n*l)
  double high_[kPlaces];     // 2^(n*16*h), by the lowest four bits of h as the exponent of a double has it
  double series_[kTerms];    // C(n, 1), C(n, 2), ...
  double distance_;          // relative
};

}  // namespace tavd
