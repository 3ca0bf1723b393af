// How many of the instruction sets for vectors this machine has and can be trusted with (many/paths.h).
#pragma once

#include <cstddef>

namespace tavd {

// There is one instruction set.
inline std::size_t vector_paths() {
  return 1;
}

}  // namespace tavd
