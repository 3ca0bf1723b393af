// Interpolation between two points; the forms on a logarithmic axis are exported too (tavd/tavca.h).
#pragma once

#include <cmath>

#include "calc/numeric.h"

namespace tavd {

// Whether the abscissae are too close to divide by their distance. Relative to x1 and its sign: an x1 of 0 or
// below never counts as equal to anything.
inline bool same_abscissa(float x1, float x2) {
  constexpr double kResolution = 99999999.9;
  return wide(x1) / kResolution > std::fabs(wide(x1) - wide(x2));
}

// y at `x` on the line through (x1, y1) and (x2, y2), beyond them too, all in float.
inline float lin_interp(float x1, float x2, float x, float y1, float y2) {
  if (same_abscissa(x1, x2)) return y1;
  return y1 + ((y2 - y1) / (x2 - x1)) * (x - x1);
}

// A number on a logarithmic axis. Made by name, so that no plain number is taken for its logarithm.
struct LogValue {
  explicit LogValue(float x) : lg(tavd::lg(x)) {}
  double lg;
};

// A place `x` between two abscissae on a logarithmic axis, beyond them too. Logarithms are the costly part of
// the interpolation and the same for all ordinates over one pair of abscissae: the eight bands of two
// measured points share one place.
class LogPlace {
 public:
  LogPlace(float x1, float x2, LogValue x) : same_(same_abscissa(x1, x2)) {
    if (same_) return;
    const double lg1 = lg(x1);
    span_ = lg(x2) - lg1;
    way_ = x.lg - lg1;
  }

  // y on the line through (x1, y1) and (x2, y2).
  float between(float y1, float y2) const {
    if (same_) return y1;
    const double slope = wide(y2 - y1) / span_;
    return narrow(wide(y1) + slope * way_);
  }

 private:
  bool same_;          // the abscissae count as equal: y1 everywhere
  double span_ = 1.0;  // lg x2 - lg x1
  double way_ = 0.0;   // lg x - lg x1
};

}  // namespace tavd
