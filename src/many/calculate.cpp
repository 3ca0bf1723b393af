// All answers of a product at many points. Each answer is a loop of its own, so that a caller pays for those
// that it asks for.
#include <algorithm>

#include "calc/calculations.h"
#include "many/arrays.h"
#include "many/product.h"
#include "many/roomlevels.h"
#include "many/throws.h"
#include "tavd/tavca.h"
#include "tavd/tavdn.h"

namespace tavd {
namespace {

constexpr Warning kNobody = nullptr;  // no message is shown

// The points of a call.
struct Points {
  std::size_t n;
  const float* qv;  // l/s or m/s
  const float* dp;  // Pa; null: 0 for all
  float dp_at(std::size_t i) const { return dp != nullptr ? dp[i] : 0.0F; }
};

// An array of the caller's, or none.
template <typename Number>
void put(Number* array, std::size_t i, Number value) {
  if (array != nullptr) array[i] = value;
}

template <typename... Arrays>
bool any(const Arrays*... arrays) {
  return ((arrays != nullptr) || ...);
}

void ranges(const tavdn_product& product, const Points& at, const tavdn_results& out) {
  if (!any(out.range_code, out.dp_min, out.dp_max)) return;
  const Limits& limits = product.limits;
  for (std::size_t i = 0; i < at.n; ++i) {
    float lowest;
    float highest;
    int code = limits.code();
    if (limits.known()) {
      lowest = limits.lowest(at.qv[i]);
      highest = limits.highest(at.qv[i]);
    } else {
      code = minmaxdptot(&product.fd, at.qv[i], kNobody, &lowest, &highest);
    }
    put(out.range_code, i, code);
    put(out.dp_min, i, lowest);
    put(out.dp_max, i, highest);
  }
}

// Points that are worked on at once, where an array of the caller's is not there to take what is found.
constexpr std::size_t kBlock = 64;
constexpr float kNoPressures[kBlock] = {};

using Solver = decltype(&Positions::stepless);

void positions(const tavdn_product& product, const Points& at, Solver solve, int32_t* codes,
               float* positions) {
  if (!any(codes, positions)) return;
  float block_positions[kBlock];
  int32_t block_codes[kBlock];
  for (std::size_t first = 0; first < at.n; first += kBlock) {
    const std::size_t count = std::min(kBlock, at.n - first);
    const float* const dp = at.dp != nullptr ? at.dp + first : kNoPressures;
    (product.positions.*solve)(product.fd, product.limits, count, at.qv + first, dp,
                               positions != nullptr ? positions + first : block_positions,
                               codes != nullptr ? codes + first : block_codes);
  }
}

void fans(const FlowData& fd, const Points& at, const tavdn_results& out) {
  if (!any(out.fan_code, out.fan_total, out.fan_static, out.fan_dynamic)) return;
  for (std::size_t i = 0; i < at.n; ++i) {
    float total;
    float fan_static;
    float dynamic;
    put(out.fan_code, i, tavca_fan_dp(&fd, at.qv[i], &total, &fan_static, &dynamic));
    put(out.fan_total, i, total);
    put(out.fan_static, i, fan_static);
    put(out.fan_dynamic, i, dynamic);
  }
}

void fan_checks(const FlowData& fd, const Points& at, int32_t* codes) {
  if (codes == nullptr) return;
  for (std::size_t i = 0; i < at.n; ++i) codes[i] = tavca_fan_op_check(&fd, at.qv[i], at.dp_at(i));
}

// In blocks, so that levels in the room need no array of the caller's for the bands.
void levels(const tavdn_product& product, const Points& at, float roomdamp, const tavdn_results& out) {
  if (!any(out.lw_code, out.lw, out.lpa)) return;
  float block[kBlock * TAVD_BANDS];
  int32_t block_codes[kBlock];
  const LevelSource source = {product.levels, product.limits, product.fd, product.duct()};
  for (std::size_t first = 0; first < at.n; first += kBlock) {
    const std::size_t count = std::min(kBlock, at.n - first);
    float* const bands = out.lw != nullptr ? out.lw + first * TAVD_BANDS : block;
    int32_t* const codes = out.lw_code != nullptr ? out.lw_code + first : block_codes;
    const float* const dp = at.dp != nullptr ? at.dp + first : kNoPressures;
    levels_at(source, count, at.qv + first, dp, bands, codes);
    if (out.lpa == nullptr) continue;
    room_levels(count, bands, roomdamp, out.lpa + first);
    for (std::size_t i = 0; i < count; ++i) {
      if (codes[i] != TAVCA_OK) out.lpa[first + i] = 0.0F;
    }
  }
}

void attenuations(const FlowData& fd, const Points& at, const tavdn_results& out) {
  if (out.dlw_code != nullptr) std::fill_n(out.dlw_code, at.n, TAVCA_OK);
  if (out.dlw == nullptr) return;
  for (std::size_t i = 0; i < at.n; ++i) {
    tavca_dlw(&fd, at.qv[i], at.dp_at(i), out.dlw + i * TAVD_BANDS);
  }
}

void throws(const tavdn_product& product, const Points& at, const tavdn_results& out) {
  if (out.throw_code != nullptr) {
    std::fill_n(out.throw_code, at.n, product.has_throw_line ? TAVDN_THROW_GIVEN : TAVDN_THROW_NONE);
  }
  if (out.throw_length == nullptr) return;
  if (!product.has_throw_line) {
    std::fill_n(out.throw_length, at.n, 0.0F);
    return;
  }
  throw_lengths(product.throw_line, at.n, at.qv, out.throw_length);
}

// The record of a caller that knows fewer members than this library, or asks for more than it knows, is
// refused. A newer one that leaves the members it has beyond ours null is not.
bool is_readable(const tavdn_results* results) {
  if (results == nullptr || results->size < sizeof *results) return false;
  const auto* const bytes = reinterpret_cast<const unsigned char*>(results);
  return std::all_of(bytes + sizeof *results, bytes + results->size,
                     [](unsigned char byte) { return byte == 0; });
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavdn_calculate(const tavdn_product* product, std::size_t n, const float* qv, const float* dp,
                    float roomdamp, const tavdn_results* results) {
  if (product == nullptr || !is_readable(results) || !fits_memory(n)) return TAVDN_BAD_ARGUMENT;
  if (n == 0) return TAVDN_OK;
  if (qv == nullptr) return TAVDN_BAD_ARGUMENT;
  const Points at = {n, qv, dp};
  const FlowData& fd = product->fd;
  ranges(*product, at, *results);
  positions(*product, at, &Positions::stepless, results->position_code, results->position);
  positions(*product, at, &Positions::stepped, results->setting_code, results->setting);
  fans(fd, at, *results);
  fan_checks(fd, at, results->fan_check);
  levels(*product, at, roomdamp, *results);
  attenuations(fd, at, *results);
  throws(*product, at, *results);
  return TAVDN_OK;
}
