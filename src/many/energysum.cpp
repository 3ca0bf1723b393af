#include "many/energysum.h"

namespace tavd {
namespace {

constexpr double kPi = 3.14159265358979323846;

double energy_sum_above(double d) {
  return 10.0 / std::log(10.0) * std::log1p(std::pow(10.0, d));
}

// The polynomial over u that meets f at six Chebyshev nodes, by rising power: Newton's form, multiplied out.
void fit(double middle, double half_width, double (&coefficients)[kSumCoefficients]) {
  double u[kSumCoefficients];
  double newton[kSumCoefficients];
  for (int i = 0; i < kSumCoefficients; ++i) {
    u[i] = std::cos(kPi * (i + 0.5) / kSumCoefficients);
    newton[i] = energy_sum_above(middle + half_width * u[i]);
  }
  for (int order = 1; order < kSumCoefficients; ++order) {
    for (int i = kSumCoefficients - 1; i >= order; --i) {
      newton[i] = (newton[i] - newton[i - 1]) / (u[i] - u[i - order]);
    }
  }
  double* const c = coefficients;
  for (int i = 0; i < kSumCoefficients; ++i) c[i] = 0.0;
  for (int i = kSumCoefficients - 1; i >= 0; --i) {
    for (int power = kSumCoefficients - 1; power >= 1; --power) c[power] = c[power - 1] - u[i] * c[power];
    c[0] = newton[i] - u[i] * c[0];
  }
}

}  // namespace

SumTable::SumTable() {
  constexpr double kHalf = 0.5 / kSumSpansOfOne;
  // Place 0 is a d of 0, and u rises as d falls.
  for (int span = 0; span < kSumSpans; ++span) {
    double fitted[kSumCoefficients];
    fit(-kHalf * (2 * span + 1), -kHalf, fitted);
    for (int power = 0; power < kSumCoefficients; ++power) coefficients[power][span] = fitted[power];
  }
}

const SumTable kSumTable;

}  // namespace tavd
