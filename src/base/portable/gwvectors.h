// How many of the instruction sets for vectors this machine has and can be trusted with (many/paths.h).
#pragma once

#include <cstddef>

namespace tavd {

inline std::size_t vector_paths() {
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2") == 0) return 1;
  const bool has_avx512 = __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0 &&
                          __builtin_cpu_supports("avx512vl") != 0;
  return has_avx512 ? 3 : 2;
}

}  // namespace tavd
