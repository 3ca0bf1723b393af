#include "many/linepower.h"

#include <immintrin.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "calc/numeric.h"

namespace tavd {
namespace {

constexpr int kPlaceBits = 4;
constexpr int kMantissaBits = 52;
constexpr int kBias = 1023;

// What the series leaves out, as the header tells.
double left_out(double exponent, double binomial, int terms) {
  constexpr double kLargestRest = 0.0304;
  const double next = binomial * (exponent - terms) / (terms + 1);
  const double ratio = kLargestRest * std::max(1.0, (std::fabs(exponent) + terms + 1) / (terms + 2));
  return std::fabs(next) * std::pow(kLargestRest, terms + 1) / (1.0 - ratio);
}

}  // namespace

LinePower::LinePower(float coefficient, float exponent) {
  const double n = wide(exponent);
  for (int i = 0; i < kPlaces; ++i) {
    inverse_[i] = wide(narrow(1.0 / (1.0 + (i + 0.5) / kPlaces)));
    places_[i] = wide(coefficient) * std::pow(inverse_[i], -n);
    low_[i] = std::exp2(n * i);
    // The exponent e of a float, with the bias of a double, is 16*(56 + i) + l for i from 0 to 15.
    constexpr int kFirst = 56;
    const int high = kFirst + i;
    high_[high % kPlaces] = std::exp2(n * (kPlaces * high - kBias));
  }
  double binomial = 1.0;
  for (int k = 0; k < kTerms; ++k) {
    binomial *= (n - k) / (k + 1);
    series_[k] = binomial;
  }
  constexpr double kRoundings = 20 * std::numeric_limits<double>::epsilon();
  distance_ = left_out(n, binomial, kTerms) + kRoundings;
}

namespace {

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
