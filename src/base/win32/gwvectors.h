// How many of the instruction sets for vectors this machine has and can be trusted with (many/paths.h).
#pragma once

#include <cstddef>

namespace tavd {

// The compiler lays vectors of 32 bytes onto the stack and reads them as aligned, while Windows's calling
// convention aligns the stack to 16.
inline std::size_t vector_paths() {
  return 1;
}

}  // namespace tavd
