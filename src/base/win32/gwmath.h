// The mathematical functions whose last bit differs from one system's C library to the next.
#pragma once

#include <cmath>

namespace tavd {

// The logarithm to base 10, in the steps that the C library takes on Linux. mingw's own rounds the last bit
// otherwise for one number in sixteen: with it a point on the edge of a plot may land a unit away, and a
// sound level may round to the other side.
inline double gwlog10(double x) {
  // lg 2 in two parts, the upper one short enough that its multiples are exact, and lg e.
  constexpr double kLg2Upper = 3.01029995663611771306e-01;
  constexpr double kLg2Lower = 3.69423907715893078616e-13;
  constexpr double kLgE = 4.34294481903251816668e-01;
  if (!(x > 0.0) || std::isinf(x)) return std::log10(x);
  int exponent = 0;
  double part = std::frexp(x, &exponent);  // 0.5 to 1; above 1 the steps count from 1 to 2
  if (exponent > 0) {
    part *= 2.0;
    --exponent;
  }
  const double power = exponent;
  const double lower = power * kLg2Lower + kLgE * std::log(part);
  return lower + power * kLg2Upper;
}

// mingw takes these in double from the Windows that the library runs on, but has them in extended precision
// itself: rounded once more, they give nearly always the nearest double.
inline double gwtan(double x) {
  return static_cast<double>(std::tan(static_cast<long double>(x)));
}

inline double gwatan(double x) {
  return static_cast<double>(std::atan(static_cast<long double>(x)));
}

}  // namespace tavd
