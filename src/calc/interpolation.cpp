#include "calc/interpolation.h"

#include <cmath>

#include "calc/numeric.h"
#include "tavd/tavca.h"

namespace {

using tavd::lg;
using tavd::narrow;
using tavd::wide;

// Whether the abscissae are too close to divide by their distance. Relative to x1 and its sign: an x1 of 0 or
// below never counts as equal to anything.
bool same_abscissa(float x1, float x2) {
  constexpr double kResolution = 99999999.9;
  return wide(x1) / kResolution > std::fabs(wide(x1) - wide(x2));
}

}  // namespace

namespace tavd {

float tavca_lin_interp(float x1, float x2, float x, float y1, float y2) {
  if (same_abscissa(x1, x2)) return y1;
  return y1 + ((y2 - y1) / (x2 - x1)) * (x - x1);
}

LogPlace::LogPlace(float x1, float x2, LogValue x) : same_(same_abscissa(x1, x2)) {
  if (same_) return;
  const double lg1 = lg(x1);
  span_ = lg(x2) - lg1;
  way_ = x.lg - lg1;
}

}  // namespace tavd

float tavca_linlog_interp(float x1, float x2, float x, float y1, float y2) {
  if (same_abscissa(x1, x2)) return y1;
  const double lg1 = lg(y1);
  const double slope = (lg(y2) - lg1) / wide(x2 - x1);
  return narrow(std::pow(10.0, lg1 + slope * wide(x - x1)));
}

float tavca_loglin_interp(float x1, float x2, float x, float y1, float y2) {
  return tavd::LogPlace(x1, x2, tavd::LogValue(x)).between(y1, y2);
}
