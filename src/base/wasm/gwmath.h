// The mathematical functions whose last bit differs from one system's C library to the next. WebAssembly's C
// library has a logarithm to base 10, a tangent and an arc tangent of its own making, as mingw's has: the
// same steps are taken in their place. The long double of the two others, twice as long as a double, is done
// in software here: it is asked only where it could make another float, which is what the library takes.
#pragma once

#include <cmath>

// In a namespace of its own: here it has functions of the same names.
namespace extended {
#include "../win32/gwmath.h"
}

namespace tavd {

inline double gwlog10(double x) {
  return extended::tavd::gwlog10(x);
}

// The C library's double lies within one unit of its last place of the true number. `quick` if all doubles
// within two, 2^-51 of it, are one float; never for what is not a number.
inline bool makes_one_float(double quick) {
  constexpr double kTwoUnits = 0x1p-51;
  const double distance = std::fabs(quick) * kTwoUnits;
  return static_cast<float>(quick - distance) == static_cast<float>(quick + distance);
}

// The nearest double to these, or one of the same float.
inline double gwtan(double x) {
  const double quick = std::tan(x);
  return makes_one_float(quick) ? quick : extended::tavd::gwtan(x);
}

inline double gwatan(double x) {
  const double quick = std::atan(x);
  return makes_one_float(quick) ? quick : extended::tavd::gwatan(x);
}

}  // namespace tavd
