// Powers one by one, where there are no wide vectors.
#include <cmath>
#include <limits>

#include "calc/numeric.h"
#include "many/linepower.h"
#include "many/nearly.h"

namespace tavd {

bool LinePower::block(const float* x, float factor, float* results, std::int32_t* uncertain) const {
  bool any = false;
  for (std::size_t i = 0; i < kBlock; ++i) {
    uncertain[i] = static_cast<std::int32_t>(!is_ordinary(x[i]));
    any = any || uncertain[i] != 0;
    results[i] = factor * narrow(coefficient_ * std::pow(wide(x[i]), exponent_));
  }
  return any;
}

}  // namespace tavd
