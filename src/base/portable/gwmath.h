// The mathematical functions whose last bit differs from one system's C library to the next: those of the
// C library.
#pragma once

#include <cmath>

namespace tavd {

inline double gwlog10(double x) {
  return std::log10(x);
}

inline double gwtan(double x) {
  return std::tan(x);
}

inline double gwatan(double x) {
  return std::atan(x);
}

}  // namespace tavd
