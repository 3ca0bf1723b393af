// Pressure of a damper from its position, and its position from a demanded pressure. Rows of the damper table
// stand from the most throttled one, with the highest resistance, to the most open one.
#include <algorithm>
#include <cmath>
#include <limits>

#include "calc/dampertable.h"
#include "calc/kinds.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavca.h"

namespace tavd {

using namespace damper;

namespace {

constexpr double kSmallestForward = 1e-7;  // l/s, rows in the forward direction

// Lower row of the pair around `pos` in a table of two rows or more; `pos` lies inside the table.
int find_bracket(const FlowData& fd, float pos, bool falling) {
  const int n = rows_of(fd);
  int i = 0;
  while (i < n - 1) {
    const float next = fd.damper[i + 1].pos;
    if (falling ? pos > next : next > pos) break;
    ++i;
  }
  return std::min(i, n - 2);
}

float hold(float x, float low, float high) {
  if (x < low) return low;
  return x > high ? high : x;
}

// Pressure at a position between two rows; 0 if one of them can't be used.
float interpolated_dp(const FlowData& fd, float qv, float pos) {
  const float first = fd.damper[0].pos;
  const float last = fd.damper[rows_of(fd) - 1].pos;
  const bool falling = first > last;
  pos = falling ? hold(pos, last, first) : hold(pos, first, last);
  const int i = find_bracket(fd, pos, falling);
  const DamperPoint& upper = fd.damper[i];
  const DamperPoint& lower = fd.damper[i + 1];
  if (wide(upper.qv) < kSmallestForward || wide(lower.qv) < kSmallestForward) return 0.0F;
  float dp = tavca_linlog_interp(upper.pos, lower.pos, pos, pressure_of(upper, qv), pressure_of(lower, qv));
  param_add_dp(&fd, qv, &dp);
  return dp;
}

// Position between two rows, linear over the logarithm of the pressure. Also reaches a little beyond the
// upper one.
float position_between(const DamperPoint& upper, const DamperPoint& lower, float qv, float dp) {
  const float dpa = pressure_of(upper, qv);
  const float dpb = pressure_of(lower, qv);
  if (std::fabs(wide(dpa - dpb)) < kSamePressure) return lower.pos;
  const double lgb = lg(dpb);
  const double t = (lg(dp) - lgb) / (lg(dpa) - lgb);
  return narrow(wide(lower.pos) + t * (wide(upper.pos) - wide(lower.pos)));
}

int solve_stepless(const FlowData& fd, float qv, float dp, float* pos) {
  const DamperPoint* rows = fd.damper;
  param_remove_dp(&fd, qv, &dp);
  const float k = resistance(qv, dp);
  if (wide(k) > kMargin * wide(resistance_of(rows[0]))) {
    *pos = rows[0].pos;
    return TAVCA_POS_ABOVE_TABLE;
  }
  const int last = rows_of(fd) - 1;
  if (too_small(rows[last].qv)) return TAVCA_POS_BAD_ROW;
  if (wide(resistance_of(rows[last])) / kMargin > wide(k)) {
    *pos = rows[last].pos;
    return TAVCA_POS_BELOW_TABLE;
  }
  for (int i = 1; i <= last; ++i) {
    if (too_small(rows[i].qv)) return TAVCA_POS_BAD_ROW;
    if (!(k > resistance_of(rows[i]))) continue;
    *pos = position_between(rows[i - 1], rows[i], qv, dp);
    return TAVCA_OK;
  }
  *pos = rows[last].pos;
  return TAVCA_OK;
}

int solve_stepped(const FlowData& fd, float qv, float dp, float* pos) {
  const DamperPoint* rows = fd.damper;
  param_remove_dp(&fd, qv, &dp);
  const float k = resistance(qv, dp);
  if (!(k < resistance_of(rows[0]))) {
    *pos = rows[0].pos;
    return TAVCA_POS_ABOVE_TABLE;
  }
  const int last = rows_of(fd) - 1;
  if (too_small(rows[last].qv)) return TAVCA_POS_BAD_ROW;
  if (!(resistance_of(rows[last]) < k)) {
    *pos = rows[last].pos;
    return TAVCA_POS_BELOW_TABLE;
  }
  // The nearest setting is the nearest by pressure ratio; on a tie the more throttled one stays.
  const double lgdp = lg(dp);
  double dplg_diff_min = std::numeric_limits<double>::infinity();
  int nearest = 0;
  for (int i = 0; i <= last; ++i) {
    if (too_small(rows[i].qv) || too_small(rows[i].dp)) return TAVCA_POS_BAD_ROW;
    const double d = std::fabs(lg(resistance_of(rows[i]) * qv * qv) - lgdp);
    if (d < dplg_diff_min) {
      dplg_diff_min = d;
      nearest = i;
    }
  }
  *pos = rows[nearest].pos;
  return TAVCA_OK;
}

using Solver = int (*)(const FlowData&, float, float, float*);

int solve(Solver solver, const FlowData* fd, float qv, float dp, float* pos) {
  float position = 0.0F;
  int result = check_point(qv, dp);
  if (result == TAVCA_OK) result = check_table(fd);
  if (result == TAVCA_OK) result = solver(*fd, qv, dp, &position);
  if (pos != nullptr) *pos = position;
  return result;
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

float tavca_dptot_damperpos(const FlowData* fd, float qv, float pos) {
  if (fd == nullptr || fd->nhdd == 0) return TAVCA_DPTOT_NO_DATA;
  if (!is_damper(fd->kind) && fd->kind != TAVD_KIND_LIMITS) return tavca_dptotmin(fd, qv);
  const int n = rows_of(*fd);
  if (n == 0 || wide(fd->damper[0].qv) < kSmallestForward) return 0.0F;
  if (n > 1) return interpolated_dp(*fd, qv, pos);
  float dp = pressure_of(fd->damper[0], qv);
  param_add_dp(fd, qv, &dp);
  return dp;
}

int tavca_damper_pos(const FlowData* fd, float qv, float dp, float* pos) {
  return solve(solve_stepless, fd, qv, dp, pos);
}

int tavca_damper_pos_fixed(const FlowData* fd, float qv, float dp, float* pos) {
  const bool stepped = fd != nullptr && rows_of(*fd) >= kSmallestSteppedTable;
  return solve(stepped ? solve_stepped : solve_stepless, fd, qv, dp, pos);
}
