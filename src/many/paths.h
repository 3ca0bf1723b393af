// One source for several sets of instructions, of which the machine takes the widest that it has. No set
// changes a result: none fuses a product with a sum or reorders, so that each step is rounded as the source
// says.
#pragma once

#include <cstddef>

namespace tavd {

// So few points are done sooner one by one, by the exact steps, than side by side in a block that they do not
// fill.
inline constexpr std::size_t kFewPoints = 3;

// How many sets this machine has of plain, AVX2, AVX-512; each comes with those before it.
extern const std::size_t kMachinePaths;
constexpr const char* kPathNames[] = {"plain", "avx2", "avx512"};
constexpr std::size_t kWidestPath = 2;

// The paths of Kernel::run, a static function: what it calls is compiled into it, for each set anew.
template <typename Kernel, typename Function = decltype(&Kernel::run)>
struct Paths;

template <typename Kernel, typename Result, typename... Arguments>
struct Paths<Kernel, Result (*)(Arguments...)> {
  using Function = Result (*)(Arguments...);

  [[gnu::flatten]] static Result plain(Arguments... arguments) { return Kernel::run(arguments...); }
  [[gnu::flatten, gnu::target("avx2")]] static Result avx2(Arguments... arguments) {
    return Kernel::run(arguments...);
  }
  [[gnu::flatten, gnu::target("avx512f,avx512dq,avx512vl")]] static Result avx512(Arguments... arguments) {
    return Kernel::run(arguments...);
  }

  static Function path(std::size_t number) {
    constexpr Function kPaths[] = {plain, avx2, avx512};
    return kPaths[number];
  }
  static Function best() { return path(kMachinePaths - 1); }
};

}  // namespace tavd
