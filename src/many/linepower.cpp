#include "many/linepower.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "calc/numeric.h"

namespace tavd {
namespace {

// What the series leaves out, as the header tells.
double left_out(double exponent, double binomial, int terms) {
  constexpr double kLargestRest = 0.0304;
  const double next = binomial * (exponent - terms) / (terms + 1);
  const double ratio = kLargestRest * std::max(1.0, (std::fabs(exponent) + terms + 1) / (terms + 2));
  return std::fabs(next) * std::pow(kLargestRest, terms + 1) / (1.0 - ratio);
}

}  // namespace

LinePower::LinePower(float coefficient, float exponent)
    : coefficient_(wide(coefficient)), exponent_(wide(exponent)) {
  const double n = exponent_;
  for (int i = 0; i < kPlaces; ++i) {
    inverse_[i] = wide(narrow(1.0 / (1.0 + (i + 0.5) / kPlaces)));
    places_[i] = coefficient_ * std::pow(inverse_[i], -n);
    low_[i] = std::exp2(n * i);
    // The exponent e of a float, with the bias of a double, is 16*(56 + i) + l for i from 0 to 15.
    constexpr int kFirst = 56;
    constexpr int kBias = 1023;
    const int high = kFirst + i;
    high_[high % kPlaces] = std::exp2(n * (kPlaces * high - kBias));
  }
  double binomial = 1.0;
  for (int k = 0; k < kTerms; ++k) {
    binomial *= (n - k) / (k + 1);
    series_[k] = binomial;
  }
  constexpr double kRoundings = 20 * std::numeric_limits<double>::epsilon();
  distance_ = left_out(n, binomial, kTerms) + kRoundings;
}

}  // namespace tavd
