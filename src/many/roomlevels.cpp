#include "many/roomlevels.h"

#include <algorithm>
#include <iterator>

#include "calc/calculations.h"
#include "calc/weighting.h"
#include "many/energysum.h"
#include "many/paths.h"

namespace tavd {
namespace {

// So many rows side by side that a loop over them fills the widest vectors, and few enough for the stack.
constexpr std::size_t kRows = 32;

// Adds up the rows band by band; those that are not certain are marked.
inline void add_bands(const float* lw, float roomdamp, float* sums, int* uncertain) {
  float levels[TAVD_BANDS][kRows];
  for (std::size_t row = 0; row < kRows; ++row) {
    for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
      levels[band][row] = (lw[row * TAVD_BANDS + band] + kAWeighting[band]) - roomdamp;
    }
  }
  for (std::size_t row = 0; row < kRows; ++row) {
    sums[row] = levels[0][row];
    uncertain[row] = 0;
  }
  for (std::size_t band = 1; band < TAVD_BANDS; ++band) {
    const float* const level = levels[band];
    for (std::size_t row = 0; row < kRows; ++row) {
      const bool certain = add_level(&sums[row], level[row]);
      uncertain[row] |= static_cast<int>(!certain);
    }
  }
}

[[gnu::noinline]] float exact_level(const float* lw, float roomdamp) {
  return room_level(lw, roomdamp);
}

struct Kernel {
  static std::size_t run(std::size_t n, const float* lw, float roomdamp, float* lpa) {
    std::size_t exact = 0;
    float sums[kRows];
    int uncertain[kRows];
    float last_rows[kRows * TAVD_BANDS];
    for (std::size_t first = 0; first < n; first += kRows) {
      const std::size_t rows = std::min(kRows, n - first);
      const float* block = lw + first * TAVD_BANDS;
      if (rows < kRows) {
        std::fill(std::copy_n(block, rows * TAVD_BANDS, last_rows), std::end(last_rows), 0.0F);
        block = last_rows;
      }
      add_bands(block, roomdamp, sums, uncertain);
      for (std::size_t row = 0; row < rows; ++row) {
        lpa[first + row] = sums[row];
        if (uncertain[row] == 0) continue;
        lpa[first + row] = exact_level(block + row * TAVD_BANDS, roomdamp);
        ++exact;
      }
    }
    return exact;
  }
};

}  // namespace

std::size_t room_levels_by(std::size_t path, std::size_t n, const float* lw, float roomdamp, float* lpa) {
  return Paths<Kernel>::path(path)(n, lw, roomdamp, lpa);
}

std::size_t room_levels(std::size_t n, const float* lw, float roomdamp, float* lpa) {
  if (n > kFewPoints) return room_levels_by(kMachinePaths - 1, n, lw, roomdamp, lpa);
  for (std::size_t i = 0; i < n; ++i) lpa[i] = exact_level(lw + i * TAVD_BANDS, roomdamp);
  return n;
}

}  // namespace tavd
