#include "calc/interpolation.h"

#include <cmath>

#include "calc/numeric.h"
#include "tavd/tavca.h"

using namespace tavd;  // the border below stands outside

float tavca_linlog_interp(float x1, float x2, float x, float y1, float y2) {
  if (same_abscissa(x1, x2)) return y1;
  const double lg1 = lg(y1);
  const double slope = (lg(y2) - lg1) / wide(x2 - x1);
  return narrow(std::pow(10.0, lg1 + slope * wide(x - x1)));
}

float tavca_loglin_interp(float x1, float x2, float x, float y1, float y2) {
  return LogPlace(x1, x2, LogValue(x)).between(y1, y2);
}
