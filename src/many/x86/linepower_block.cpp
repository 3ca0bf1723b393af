// Eight powers side by side, in vectors of 64 bytes.
#include <immintrin.h>

#include <cstring>
#include <limits>

#include "many/linepower.h"

namespace tavd {
namespace {

constexpr int kPlaceBits = 4;
constexpr int kMantissaBits = 52;
constexpr int kBias = 1023;

// What works with vectors of 64 bytes is one function with the instructions that it needs: anywhere else the
// compiler takes them to pieces.
using Floats [[gnu::vector_size(32)]] = float;
using Ints [[gnu::vector_size(32)]] = std::int32_t;
constexpr std::size_t kLanes = sizeof(__m512d) / sizeof(double);

}  // namespace

[[gnu::target("avx512f,avx512dq,avx512vl")]] bool LinePower::block(const float* x, float factor,
                                                                   float* results,
                                                                   std::int32_t* uncertain) const {
  __m512d inverse[2];
  __m512d places[2];
  __m512d low_exponent[2];
  __m512d high_exponent[2];
  std::memcpy(inverse, inverse_, sizeof inverse);
  std::memcpy(places, places_, sizeof places);
  std::memcpy(low_exponent, low_, sizeof low_exponent);
  std::memcpy(high_exponent, high_, sizeof high_exponent);
  constexpr long long kMantissa = (1LL << kMantissaBits) - 1;
  constexpr long long kOne = static_cast<long long>(kBias) << kMantissaBits;
  const double least = 1.0 - distance_;
  const double most = 1.0 + distance_;
  Ints any{};
  for (std::size_t first = 0; first < kBlock; first += kLanes) {
    Floats flow;
    std::memcpy(&flow, x + first, sizeof flow);
    const Ints ordinary =
        (flow >= std::numeric_limits<float>::min()) & (flow <= std::numeric_limits<float>::max());
    const __m512d wide_flow = __builtin_convertvector(flow, __m512d);
    const __m512i bits = _mm512_castpd_si512(wide_flow);
    const __m512d m = _mm512_castsi512_pd((bits & kMantissa) | kOne);
    // Only the lowest four bits of a place count in a choice.
    const __m512i place = bits >> (kMantissaBits - kPlaceBits);
    const __m512i low_place = bits >> kMantissaBits;
    const __m512i high_place = bits >> (kMantissaBits + kPlaceBits);
    const __m512d r = m * _mm512_permutex2var_pd(inverse[0], place, inverse[1]) - 1.0;
    __m512d series = r * series_[kTerms - 1];
    for (int k = kTerms - 2; k >= 0; --k) series = r * (series + series_[k]);
    const __m512d power = _mm512_permutex2var_pd(low_exponent[0], low_place, low_exponent[1]) *
                          _mm512_permutex2var_pd(high_exponent[0], high_place, high_exponent[1]);
    const __m512d scaled = _mm512_permutex2var_pd(places[0], place, places[1]) * power;
    const __m512d length = scaled + scaled * series;
    const Floats low = __builtin_convertvector(length * least, Floats);
    const Floats high = __builtin_convertvector(length * most, Floats);
    const Floats result = low * factor;
    const Ints differ = ~(ordinary & (low == high));
    std::memcpy(results + first, &result, sizeof result);
    std::memcpy(uncertain + first, &differ, sizeof differ);
    any |= differ;
  }
  std::int32_t lanes[kLanes];
  std::memcpy(lanes, &any, sizeof lanes);
  std::int32_t found = 0;
  for (const std::int32_t lane : lanes) found |= lane;
  return found != 0;
}

}  // namespace tavd
