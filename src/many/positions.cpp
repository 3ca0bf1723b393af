#include "many/positions.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "calc/dampertable.h"
#include "many/logarithm.h"
#include "many/nearly.h"

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
  first_bad_flow_ = rows_;
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
    if (too_small(row.qv)) first_bad_flow_ = std::min(first_bad_flow_, i);
    if (too_small(row.qv) || too_small(row.dp)) any_bad_row_ = true;
    numbers_ = numbers_ && is_ordinary(k_[i]) && is_ordinary(row.qv) && is_ordinary(row.dp);
    // The sign of a result of 0 is not told by how it is rounded.
    numbers_ = numbers_ && !(row.pos == 0.0F && std::signbit(row.pos));
    lg_k_[i] = lg(k_[i]);
    if (i == 0) continue;
    lowest = std::min(lowest, k_[i]);
    steps_[i - 1] = lowest;
  }
}

// The first row from the second on whose resistance is below k: as many are passed as neither they nor any
// before them are below it.
//
// The position is p + T*D rounded to float, D the difference of the two positions and T = W/S a quotient of
// ways between logarithms of gwlog10. Here it is p + t*D with t = w/s, where both are within e =
// kWayDistance: as in levels.cpp, |T - t| < 2*e*(1 + |t|)/|s|, and the roundings are below 8 times 2^-52 of
// |T*D| and |p|.
bool Positions::stepless(float qv, float dp, float* position, int* code) const {
  const float k = resistance(qv, dp);
  if (wide(k) > kMargin * wide(k_[0])) {
    *position = pos_[0];
    *code = TAVCA_POS_ABOVE_TABLE;
    return true;
  }
  const int last = rows_ - 1;
  if (wide(k_[last]) / kMargin > wide(k)) {
    *position = pos_[last];
    *code = TAVCA_POS_BELOW_TABLE;
    return true;
  }
  int row = 1;
  for (const float step : steps_) row += static_cast<int>(step >= k);
  if (row > last) {
    *position = pos_[last];
    return true;
  }
  const float dpa = dp_[row - 1] * qv * qv / qv_squared_[row - 1];
  const float dpb = dp_[row] * qv * qv / qv_squared_[row];
  if (std::fabs(wide(dpa - dpb)) < kSamePressure) {
    *position = pos_[row];
    return true;
  }
  if (!is_ordinary(dpa) || !is_ordinary(dpb)) return false;
  const double lgb = quick_lg(dpb);
  const double span = quick_lg(dpa) - lgb;
  if (!(std::fabs(span) > kShortestSpan)) return false;
  const double t = (quick_lg(dp) - lgb) / span;
  const double difference = wide(pos_[row - 1]) - wide(pos_[row]);
  const double reach = (1.0 + std::fabs(t)) * (2 * kWayDistance / std::fabs(span) + kRoundings);
  const Rounded rounded(wide(pos_[row]) + t * difference,
                        std::fabs(difference) * reach + std::fabs(wide(pos_[row])) * kRoundings);
  *position = rounded.low;
  return rounded.certain();
}

bool Positions::stepped(float qv, float dp, float* position, int* code) const {
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

bool Positions::quick_stepless(float qv, float dp, const Limits& limits, float* position, int* code) const {
  *position = 0.0F;
  *code = check_point(qv, dp);
  if (*code != TAVCA_OK) return true;
  *code = request_code_;
  if (*code != TAVCA_OK) return true;
  if (!numbers_ || first_bad_flow_ < rows_) return false;
  dp = limits.without_term(qv, dp);
  if (!is_ordinary(qv) || !is_ordinary(dp)) return false;
  return stepless(qv, dp, position, code);
}

bool Positions::quick_stepped(float qv, float dp, const Limits& limits, float* position, int* code) const {
  if (rows_ < kSmallestSteppedTable) return quick_stepless(qv, dp, limits, position, code);
  *position = 0.0F;
  *code = check_point(qv, dp);
  if (*code != TAVCA_OK) return true;
  if (!numbers_ || any_bad_row_) return false;
  dp = limits.without_term(qv, dp);
  if (!is_ordinary(qv) || !is_ordinary(dp)) return false;
  return stepped(qv, dp, position, code);
}

}  // namespace tavd
