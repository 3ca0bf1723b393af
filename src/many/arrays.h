// What is asked of the arrays of a caller.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tavd/flowdata.h"

namespace tavd {

// Whether n rows of eight bands can lie in memory at all: an n beyond it is a negative number or a size in
// bytes gone wrong, and would run over the end of the address space.
constexpr bool fits_memory(std::size_t n) {
  return n <= PTRDIFF_MAX / (TAVD_BANDS * sizeof(float));
}

}  // namespace tavd
