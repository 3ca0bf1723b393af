// The second transcription of the calculations takes the logarithm that the library takes, as it does
// elsewhere, where both take the C library's.
#include <cmath>

#include "base/win32/gwmath.h"

// What has no logarithm is the same for every base, and gwlog10 would come back here for it.
extern "C" double log10(double x) {
  return x > 0.0 && !std::isinf(x) ? tavd::gwlog10(x) : std::log(x);
}
