// Quick steps beside the exact ones. A quick number comes with a distance: the number that the single
// function forms before it rounds to float lies no further from it. Where all doubles within the distance
// round to one float, that float is the single function's result, whatever the way to it; where they do not,
// the caller takes the single function itself. So speed depends on how small a distance is, and no result
// does.
#pragma once

#include <cmath>
#include <limits>

#include "calc/numeric.h"

namespace tavd {

// Both ends of what a double in [x - distance, x + distance] can round to; a distance of 0 says that x is
// exact. Any other is above 1e-40, or far below x, so that the two are never zeros of either sign.
// Not-a-number in either argument is never certain.
struct Rounded {
  Rounded(double x, double distance) : low(narrow(x - distance)), high(narrow(x + distance)) {}
  bool certain() const { return low == high; }
  float low;
  float high;
};

// Whether the logarithm of x needs no care: neither 0 nor negative, subnormal, infinite or not a number.
inline bool is_ordinary(float x) {
  return x >= std::numeric_limits<float>::min() && x <= std::numeric_limits<float>::max();
}

}  // namespace tavd
