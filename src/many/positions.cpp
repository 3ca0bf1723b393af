#include "many/positions.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "calc/dampertable.h"
#include "many/logarithm.h"
#include "many/nearly.h"
#include "many/paths.h"
#include "tavd/tavca.h"

namespace tavd {

using namespace damper;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
// Two quick logarithms and the rounding of their difference, below 90 in size.
constexpr double kWayDistance = 2 * kLogDistance + 2e-14;
constexpr double kShortestSpan = 1e-6;
constexpr double kRoundings = 8 * std::numeric_limits<double>::epsilon();
// Off the exact distance of a row on the logarithm of pressure: lg(k*qv*qv) is taken as lg k + 2*lg qv, while
// the exact one is that of a product rounded to float twice, by less than 2^-24 each, 2*2^-24*lg e = 5.2e-8
// together.
constexpr double kRowDistance = 1e-7;

}  // namespace

Positions::Positions(const FlowData& fd) : request_code_(check_table(&fd)) {
  if (request_code_ != TAVCA_OK) return;
  rows_ = rows_of(fd);
  any_bad_flow_ = false;
  any_bad_row_ = false;
  numbers_ = true;
  std::fill(std::begin(steps_), std::end(steps_), -kInfinity);
  float lowest = kInfinity;
  for (int i = 0; i < rows_; ++i) {
    const DamperPoint row = fd.damper[i];
    k_[i] = resistance_of(row);
    pos_[i] = row.pos;
    dp_[i] = row.dp;
    qv_squared_[i] = row.qv * row.qv;
    any_bad_flow_ = any_bad_flow_ || too_small(row.qv);
    any_bad_row_ = any_bad_row_ || too_small(row.qv) || too_small(row.dp);
    numbers_ = numbers_ && is_ordinary(k_[i]) && is_ordinary(row.qv) && is_ordinary(row.dp);
    // The sign of a result of 0 is not told by how it is rounded.
    numbers_ = numbers_ && !(row.pos == 0.0F && std::signbit(row.pos));
    lg_k_[i] = lg(k_[i]);
    if (i == 0) continue;
    lowest = std::min(lowest, k_[i]);
    steps_[i - 1] = lowest;
  }
}

// Points side by side.
template <std::size_t N>
struct Positions::Block {
  float qv[N];
  float dp[N];  // as it was asked, then without the pressure term
  float k[N];
  float position[N];
  std::int32_t row[N];  // the lower one of the two around the point
  std::int32_t code[N];
  std::int32_t refused[N];
};

// Between two rows: the first one from the second on whose resistance is below k, and the one before it. As
// many are passed as neither they nor any before them are below it.
//
// The position is p + T*D rounded to float, D the difference of the two positions and T = W/S a quotient of
// ways between logarithms of gwlog10. Here it is p + t*D with t = w/s, where both are within e =
// kWayDistance: as in levels.cpp, |T - t| < 2*e*(1 + |t|)/|s|, and the roundings are below 8 times 2^-52 of
// |T*D| and |p|.
template <std::size_t N>
void Positions::solve(const Limits& limits, Block<N>& block) const {
  const std::int32_t last = rows_ - 1;
  const double above_k = kMargin * wide(k_[0]);
  const double below_k = wide(k_[last]) / kMargin;
  const float first_pos = pos_[0];
  const float last_pos = pos_[last];
  for (std::size_t i = 0; i < N; ++i) {
    const float qv = block.qv[i];
    const float dp = limits.without_term(qv, block.dp[i]);
    const bool ordinary = both(is_ordinary(qv), is_ordinary(dp));
    block.refused[i] = ordinary ? 0 : 1;
    block.qv[i] = ordinary ? qv : 1.0F;
    block.dp[i] = ordinary ? dp : 1.0F;
    block.k[i] = resistance(block.qv[i], block.dp[i]);
    block.row[i] = 1;
  }
  for (const float step : steps_) {
    for (std::size_t i = 0; i < N; ++i) block.row[i] += static_cast<std::int32_t>(step >= block.k[i]);
  }
  for (std::size_t i = 0; i < N; ++i) {
    const float qv = block.qv[i];
    const double k = wide(block.k[i]);
    const std::int32_t row = block.row[i] < last ? block.row[i] : last;
    const std::int32_t before = row > 0 ? row - 1 : 0;
    const float dpa = dp_[before] * qv * qv / qv_squared_[before];
    const float dpb = dp_[row] * qv * qv / qv_squared_[row];
    const bool ordinary = both(is_ordinary(dpa), is_ordinary(dpb));
    const double lgb = quick_lg(ordinary ? dpb : 1.0F);
    const double span = quick_lg(ordinary ? dpa : 1.0F) - lgb;
    const double t = (quick_lg(block.dp[i]) - lgb) / span;
    const double difference = wide(pos_[before]) - wide(pos_[row]);
    const double reach = (1.0 + std::fabs(t)) * (2 * kWayDistance / std::fabs(span) + kRoundings);
    const Rounded between(wide(pos_[row]) + t * difference,
                          std::fabs(difference) * reach + std::fabs(wide(pos_[row])) * kRoundings);
    const bool is_above = k > above_k;
    const bool is_below = below_k > k;
    const bool is_last = block.row[i] > last;
    const bool is_one = std::fabs(wide(dpa - dpb)) < kSamePressure;
    const bool certain = either(either(either(is_above, is_below), either(is_last, is_one)),
                                both(both(ordinary, std::fabs(span) > kShortestSpan), between.certain()));
    block.refused[i] = certain ? block.refused[i] : 1;
    float position = is_one ? pos_[row] : between.low;
    position = either(is_last, is_below) ? last_pos : position;
    block.position[i] = is_above ? first_pos : position;
    const std::int32_t code = is_below ? TAVCA_POS_BELOW_TABLE : std::int32_t{0};
    block.code[i] = is_above ? TAVCA_POS_ABOVE_TABLE : code;
  }
}

bool Positions::stepped_between(float qv, float dp, float* position, std::int32_t* code) const {
  const float k = resistance(qv, dp);
  if (!(k < k_[0])) {
    *position = pos_[0];
    *code = TAVCA_POS_ABOVE_TABLE;
    return true;
  }
  const int last = rows_ - 1;
  if (!(k_[last] < k)) {
    *position = pos_[last];
    *code = TAVCA_POS_BELOW_TABLE;
    return true;
  }
  const double lg_point = quick_lg(dp) - 2 * quick_lg(qv);
  double distances[TAVD_DAMPER_ROWS];
  double least = std::numeric_limits<double>::infinity();
  for (int i = 0; i <= last; ++i) {
    const float pressure = k_[i] * qv;
    if (!is_ordinary(pressure) || !is_ordinary(pressure * qv)) return false;
    distances[i] = std::fabs(lg_k_[i] - lg_point);
    least = std::min(least, distances[i]);
  }
  *position = pos_[nearest(qv, dp, distances, least + 2 * kRowDistance)];
  return true;
}

// Of the rows that may be the nearest the exact distances decide, if there is more than one.
int Positions::nearest(float qv, float dp, const double* distances, double farthest) const {
  int count = 0;
  int candidate = 0;
  for (int i = rows_ - 1; i >= 0; --i) {
    if (distances[i] > farthest) continue;
    ++count;
    candidate = i;
  }
  if (count == 1) return candidate;
  const double lgdp = lg(dp);
  double dplg_diff_min = std::numeric_limits<double>::infinity();
  for (int i = candidate; i < rows_; ++i) {
    if (distances[i] > farthest) continue;
    const double d = std::fabs(lg(k_[i] * qv * qv) - lgdp);
    if (d < dplg_diff_min) {
      dplg_diff_min = d;
      candidate = i;
    }
  }
  return candidate;
}

bool Positions::quick_stepped(float qv, float dp, const Limits& limits, float* position,
                              std::int32_t* code) const {
  *position = 0.0F;
  *code = check_point(qv, dp);
  if (*code != TAVCA_OK) return true;
  if (!numbers_ || any_bad_row_) return false;
  dp = limits.without_term(qv, dp);
  if (!is_ordinary(qv) || !is_ordinary(dp)) return false;
  return stepped_between(qv, dp, position, code);
}

struct Positions::SteplessKernel {
  static std::size_t run(const Positions& positions, const FlowData& fd, const Limits& limits, std::size_t n,
                         const float* qv, const float* dp, float* found, std::int32_t* codes) {
    constexpr std::size_t kPoints = 32;  // side by side
    std::size_t exact = 0;
    Block<kPoints> block;
    for (std::size_t first = 0; first < n; first += kPoints) {
      const std::size_t count = std::min(kPoints, n - first);
      std::fill(std::copy_n(qv + first, count, block.qv), std::end(block.qv), 1.0F);
      std::fill(std::copy_n(dp + first, count, block.dp), std::end(block.dp), 1.0F);
      positions.solve(limits, block);
      for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = first + i;
        found[point] = block.position[i];
        codes[point] = block.code[i];
        if (too_small(qv[point]) || too_small(dp[point])) {
          found[point] = 0.0F;
          codes[point] = TAVCA_POS_BAD_POINT;
        } else if (block.refused[i] != 0) {
          codes[point] = tavca_damper_pos(&fd, qv[point], dp[point], &found[point]);
          ++exact;
        }
      }
    }
    return exact;
  }
};

std::size_t Positions::stepless_by(std::size_t path, const FlowData& fd, const Limits& limits, std::size_t n,
                                   const float* qv, const float* dp, float* positions,
                                   std::int32_t* codes) const {
  if (request_code_ == TAVCA_OK && numbers_ && !any_bad_flow_) {
    return Paths<SteplessKernel>::path(path)(*this, fd, limits, n, qv, dp, positions, codes);
  }
  for (std::size_t i = 0; i < n; ++i) codes[i] = tavca_damper_pos(&fd, qv[i], dp[i], &positions[i]);
  return n;
}

std::size_t Positions::stepless(const FlowData& fd, const Limits& limits, std::size_t n, const float* qv,
                                const float* dp, float* positions, std::int32_t* codes) const {
  if (n > kFewPoints) return stepless_by(kMachinePaths - 1, fd, limits, n, qv, dp, positions, codes);
  for (std::size_t i = 0; i < n; ++i) codes[i] = tavca_damper_pos(&fd, qv[i], dp[i], &positions[i]);
  return n;
}

std::size_t Positions::stepped(const FlowData& fd, const Limits& limits, std::size_t n, const float* qv,
                               const float* dp, float* positions, std::int32_t* codes) const {
  if (rows_ < kSmallestSteppedTable) return stepless(fd, limits, n, qv, dp, positions, codes);
  std::size_t exact = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (quick_stepped(qv[i], dp[i], limits, &positions[i], &codes[i])) continue;
    codes[i] = tavca_damper_pos_fixed(&fd, qv[i], dp[i], &positions[i]);
    ++exact;
  }
  return exact;
}

}  // namespace tavd
