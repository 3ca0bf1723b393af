#include "many/paths.h"

#include "gwvectors.h"

namespace tavd {
namespace {

std::size_t paths_of_machine() {
  if (!kWideVectors) return 1;
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2") == 0) return 1;
  const bool has_avx512 = __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0 &&
                          __builtin_cpu_supports("avx512vl") != 0;
  return has_avx512 ? 3 : 2;
}

}  // namespace

const std::size_t kMachinePaths = paths_of_machine();

}  // namespace tavd
