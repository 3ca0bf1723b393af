// Interpolation between two points; the forms on a logarithmic axis are exported too (tavd/tavca.h).
#pragma once

#include <cmath>

namespace tavd {

// y at `x` on the line through (x1, y1) and (x2, y2), beyond them too, all in float.
float tavca_lin_interp(float x1, float x2, float x, float y1, float y2);

// A number on a logarithmic axis. Made by name, so that no plain number is taken for its logarithm.
struct LogValue {
  explicit LogValue(float x) : lg(std::log10(static_cast<double>(x))) {}
  double lg;
};

// A place `x` between two abscissae on a logarithmic axis, beyond them too. Logarithms are the costly part of
// the interpolation and the same for all ordinates over one pair of abscissae: the eight bands of two
// measured points share one place.
class LogPlace {
 public:
  LogPlace(float x1, float x2, LogValue x);

  // y on the line through (x1, y1) and (x2, y2).
  float between(float y1, float y2) const {
    if (same_) return y1;
    const double slope = static_cast<double>(y2 - y1) / span_;
    return static_cast<float>(static_cast<double>(y1) + slope * way_);
  }

 private:
  bool same_;          // the abscissae count as equal: y1 everywhere
  double span_ = 1.0;  // lg x2 - lg x1
  double way_ = 0.0;   // lg x - lg x1
};

}  // namespace tavd
