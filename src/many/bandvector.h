// Eight bands at a time. The compiler makes of these types what the instructions at hand allow, one wide
// vector or several narrow ones, and each lane is rounded as a number alone would be. A vector that is kept
// in an array between two steps costs more than the steps: what is stored in pieces and read as a whole has
// to wait.
#pragma once

#include <cstdint>
#include <cstring>

#include "tavd/flowdata.h"

namespace tavd {

using FloatBands [[gnu::vector_size(TAVD_BANDS * sizeof(float))]] = float;
using DoubleBands [[gnu::vector_size(TAVD_BANDS * sizeof(double))]] = double;
using IntBands [[gnu::vector_size(TAVD_BANDS * sizeof(std::int32_t))]] = std::int32_t;
using LongBands [[gnu::vector_size(TAVD_BANDS * sizeof(std::int64_t))]] = std::int64_t;

[[gnu::always_inline]] inline void load(const double (&bands)[TAVD_BANDS], DoubleBands& vector) {
  std::memcpy(&vector, bands, sizeof vector);
}

[[gnu::always_inline]] inline void load_wide(const float (&bands)[TAVD_BANDS], DoubleBands& vector) {
  FloatBands narrow;
  std::memcpy(&narrow, bands, sizeof narrow);
  vector = __builtin_convertvector(narrow, DoubleBands);
}

[[gnu::always_inline]] inline void take_size(DoubleBands& x) {
  constexpr std::int64_t kAllButSign = INT64_MAX;
  LongBands bits;
  std::memcpy(&bits, &x, sizeof bits);
  bits &= kAllButSign;
  std::memcpy(&x, &bits, sizeof x);
}

// As Rounded in many/nearly.h: `low`, and where the other end is rounded otherwise.
struct RoundedBands {
  RoundedBands() = default;
  [[gnu::always_inline]] RoundedBands(const DoubleBands& x, const DoubleBands& distance)
      : low(__builtin_convertvector(x - distance, FloatBands)),
        differ(low != __builtin_convertvector(x + distance, FloatBands)) {}
  [[gnu::always_inline]] bool certain() const {
    std::uint64_t words[sizeof differ / sizeof(std::uint64_t)];
    std::memcpy(words, &differ, sizeof differ);
    std::uint64_t any = 0;
    for (const std::uint64_t word : words) any |= word;
    return any == 0;
  }
  FloatBands low{};
  IntBands differ{};
};

}  // namespace tavd
