// Product classes whose pressures and sound are read in a way of their own.
#pragma once

#include <cstring>

#include "tavd/flowdata.h"

namespace tavd {

// Sign of the dynamic pressure in "total = static + sign*dynamic": 1 for supply terminals and chilled beams,
// -1 for extract terminals, 0 for every other class. Only the first three characters of a class count.
inline int static_to_total_sign(const FlowData& fd) {
  constexpr struct {
    char key[4];
    int sign;
  } kClasses[] = {{"ASD", 1}, {"AOD", 1}, {"CCB", 1}, {"AEX", -1}, {"AED", -1}};
  for (const auto& known : kClasses) {
    if (std::memcmp(fd.szclass, known.key, 3) == 0) return known.sign;
  }
  return 0;
}

}  // namespace tavd
