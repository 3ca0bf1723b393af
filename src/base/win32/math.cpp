// Mathematical functions that the library draws with. These alone would come from the system's
// C library, whose last bit differs from one system to the next; all others are linked in. Taken in extended
// precision and rounded once more, they give nearly always the nearest double.
#include <cmath>

extern "C" double tan(double x) {
  return static_cast<double>(std::tan(static_cast<long double>(x)));
}

extern "C" double atan(double x) {
  return static_cast<double>(std::atan(static_cast<long double>(x)));
}
