// The logarithm to base 10: that of the C library.
#pragma once

#include <cmath>

namespace tavd {

inline double gwlog10(double x) {
  return std::log10(x);
}

}  // namespace tavd
