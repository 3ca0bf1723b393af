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
constexpr std::size_t kLanes = sizeof(__m512d) / sizeof(double);

}  // namespace

[[gnu::target("avx512f,avx512dq,avx512vl")]] std::uint64_t LinePower::block(const float* x, float factor,
                                                                            float* results) const {
  __m512d inverse[2];
  __m512d places[2];
  __m512d low_exponent[2];
  __m512d high_exponent[2];
  __m512d terms[kTerms];
  std::memcpy(inverse, inverse_, sizeof inverse);
  std::memcpy(places, places_, sizeof places);
  std::memcpy(low_exponent, low_, sizeof low_exponent);
  std::memcpy(high_exponent, high_, sizeof high_exponent);
  for (int k = 0; k < kTerms; ++k) terms[k] = _mm512_set1_pd(series_[k]);
  constexpr long long kMantissa = (1LL << kMantissaBits) - 1;
  constexpr long long kOne = static_cast<long long>(kBias) << kMantissaBits;
  const __m512d one = _mm512_set1_pd(1.0);
  const double least = 1.0 - distance_;
  const double most = 1.0 + distance_;
  std::uint64_t uncertain = 0;
  for (std::size_t first = 0; first < kBlock; first += kLanes) {
    Floats flow;
    std::memcpy(&flow, x + first, sizeof flow);
    const __m512d wide_flow = __builtin_convertvector(flow, __m512d);
    const __m512i bits = _mm512_castpd_si512(wide_flow);
    const __m512d m = _mm512_castsi512_pd((bits & kMantissa) | kOne);
    // Only the lowest four bits of a place count in a choice.
    const __m512i place = bits >> (kMantissaBits - kPlaceBits);
    const __m512i low_place = bits >> kMantissaBits;
    const __m512i high_place = bits >> (kMantissaBits + kPlaceBits);
    const __m512d r = _mm512_fmsub_pd(m, _mm512_permutex2var_pd(inverse[0], place, inverse[1]), one);
    // Pairs of terms don't wait for each other.
    static_assert(kTerms == 7);
    const __m512d square = r * r;
    __m512d series = _mm512_fmadd_pd(terms[6], square, _mm512_fmadd_pd(terms[5], r, terms[4]));
    series = _mm512_fmadd_pd(series, square, _mm512_fmadd_pd(terms[3], r, terms[2]));
    series = _mm512_fmadd_pd(series, square, _mm512_fmadd_pd(terms[1], r, terms[0]));
    const __m512d power = _mm512_permutex2var_pd(low_exponent[0], low_place, low_exponent[1]) *
                          _mm512_permutex2var_pd(high_exponent[0], high_place, high_exponent[1]);
    const __m512d scaled = _mm512_permutex2var_pd(places[0], place, places[1]) * power;
    const __m512d length = _mm512_fmadd_pd(scaled * r, series, scaled);
    const Floats low = __builtin_convertvector(length * least, Floats);
    const Floats high = __builtin_convertvector(length * most, Floats);
    const Floats result = low * factor;
    std::memcpy(results + first, &result, sizeof result);
    __mmask8 certain =
        _mm256_cmp_ps_mask(flow, _mm256_set1_ps(std::numeric_limits<float>::min()), _CMP_GE_OQ);
    certain =
        _mm256_mask_cmp_ps_mask(certain, flow, _mm256_set1_ps(std::numeric_limits<float>::max()), _CMP_LE_OQ);
    certain = _mm256_mask_cmp_ps_mask(certain, low, high, _CMP_EQ_OQ);
    uncertain |= static_cast<std::uint64_t>(certain ^ 0xFFU) << first;
  }
  return uncertain;
}

}  // namespace tavd
