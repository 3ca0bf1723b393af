// Eight bands at a time. The compiler makes of these types what the instructions at hand allow, one wide
// vector or several narrow ones, and each lane is rounded as a number alone would be.
#pragma once

#include <cstdint>
#include <cstring>

#include "tavd/flowdata.h"

namespace tavd {

using FloatBands [[gnu::vector_size(TAVD_BANDS * sizeof(float))]] = float;
using DoubleBands [[gnu::vector_size(TAVD_BANDS * sizeof(double))]] = double;
using IntBands [[gnu::vector_size(TAVD_BANDS * sizeof(std::int32_t))]] = std::int32_t;

[[gnu::always_inline]] inline void load(const float (&bands)[TAVD_BANDS], FloatBands& vector) {
  std::memcpy(&vector, bands, sizeof vector);
}

[[gnu::always_inline]] inline void load(const double (&bands)[TAVD_BANDS], DoubleBands& vector) {
  std::memcpy(&vector, bands, sizeof vector);
}

[[gnu::always_inline]] inline void load_wide(const float (&bands)[TAVD_BANDS], DoubleBands& vector) {
  FloatBands narrow;
  load(bands, narrow);
  vector = __builtin_convertvector(narrow, DoubleBands);
}

[[gnu::always_inline]] inline void store(const FloatBands& vector, float (&bands)[TAVD_BANDS]) {
  std::memcpy(bands, &vector, sizeof vector);
}

// Rounds x - distance to float, and tells whether x + distance is rounded to the same in every band
// (many/nearly.h).
[[gnu::always_inline]] inline bool round_nearly(const DoubleBands& x, const DoubleBands& distance,
                                                float (&bands)[TAVD_BANDS]) {
  const FloatBands low = __builtin_convertvector(x - distance, FloatBands);
  const FloatBands high = __builtin_convertvector(x + distance, FloatBands);
  store(low, bands);
  const IntBands differ = low != high;
  std::uint64_t words[sizeof differ / sizeof(std::uint64_t)];
  std::memcpy(words, &differ, sizeof differ);
  std::uint64_t any = 0;
  for (const std::uint64_t word : words) any |= word;
  return any == 0;
}

}  // namespace tavd
