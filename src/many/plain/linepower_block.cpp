// Powers one by one, where there are no wide vectors.
#include <cmath>
#include <limits>

#include "calc/numeric.h"
#include "many/linepower.h"
#include "many/nearly.h"

namespace tavd {

std::uint64_t LinePower::block(const float* x, float factor, float* results) const {
  std::uint64_t uncertain = 0;
  for (std::size_t i = 0; i < kBlock; ++i) {
    uncertain |= static_cast<std::uint64_t>(!is_ordinary(x[i])) << i;
    results[i] = factor * narrow(coefficient_ * std::pow(wide(x[i]), exponent_));
  }
  return uncertain;
}

}  // namespace tavd
