// Sound power level and attenuation at an operating point, from the measured points around it.
#include <algorithm>
#include <cmath>

#include "calc/calculations.h"
#include "calc/interpolation.h"
#include "calc/kinds.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "calc/soundtable.h"
#include "tavd/ewads.h"
#include "tavd/tavca.h"

namespace tavd {

using namespace sound;

namespace {

constexpr double kSmallestAreaOfCorrection = 1e-7;  // m2
constexpr double kSmallestSizeCoef = 0.1;
constexpr Warning kNoWarning = nullptr;  // of kinds other than 12, which have none

// The rows of the two sets that `in_set(row, set)` names. Most rows of a table lie outside both in a
// pattern that no branch predictor guesses, so none is branched on.
template <typename InSet>
void sort_out(const Table& table, InSet in_set, Rows (&sets)[2]) {
  for (int row = 0; row < table.count(); ++row) {
    for (int set = 0; set < 2; ++set) {
      sets[set].row[sets[set].count] = row;
      sets[set].count += static_cast<int>(in_set(row, set));
    }
  }
}

// The levels of two rows at a place between them.
void interpolate(const Table& table, Pair pair, const LogPlace& place, Bands& lw) {
  for (int band = 0; band < TAVD_BANDS; ++band) {
    lw[band] = place.between(table.lw(pair.lo, band), table.lw(pair.hi, band));
  }
}

LogPlace place_on_dp(const Table& table, Pair pair, LogValue dp) {
  return {table.dp(pair.lo), table.dp(pair.hi), dp};
}

LogPlace place_on_qv(const Table& table, Pair pair, LogValue qv) {
  return {table.qv(pair.lo), table.qv(pair.hi), qv};
}

// Kinds 10, 11, 12: rows are points of the one curve that the product has.
int fixed_curve(const FlowData& fd, float qv, Warning warning, Bands& lw) {
  float dp = dptotmin(&fd, qv, warning);
  param_remove_dp(&fd, qv, &dp);
  if (wide(dp) <= kSmallestCurvePressure) return TAVCA_LW_NO_PRESSURE;
  const Table table(fd);
  const Pair pair = choose_pair(
      all_rows(table), [&](int row) { return table.qv(row); }, qv);
  if (!pair.complete()) return TAVCA_LW_NO_PAIR;
  interpolate(table, pair,
              fd.kind == TAVD_KIND_RESISTANCE_POINTS ? place_on_qv(table, pair, LogValue(qv))
                                                     : place_on_dp(table, pair, LogValue(dp)),
              lw);
  for (float& level : lw) level = limit(level);
  return TAVCA_OK;
}

// Kinds 13, 20, 22: rows are points of curves of constant resistance, one per setting. First along each of
// the two curves around the point on pressure, then across them on flow.
int resistance_curves(const FlowData& fd, float qv, float dp, Bands& lw) {
  float mindp;
  float maxdp;
  minmaxdptot(&fd, qv, kNoWarning, &mindp, &maxdp);
  dp = std::max(std::min(dp, maxdp), mindp);
  param_remove_dp(&fd, qv, &dp);
  const float k = resistance(qv, dp);

  const Table table(fd);
  const Resistances row_k(table);
  const auto resistance = [&](int row) { return row_k.values[row]; };
  Distinct kpxx;
  const int failure =
      collect(table, resistance, same_curve, TAVCA_LW_MANY_CURVES, TAVCA_LW_BAD_CURVE_ROW, &kpxx);
  if (failure != TAVCA_OK) return failure;
  if (kpxx.count < 2) return TAVCA_LW_FEW_CURVES;
  int idx = 0;
  for (int i = 1; i <= kpxx.count - 2; ++i) {
    if (kpxx.values[i] > k) idx = i;
  }
  const float kv[2] = {kpxx.values[idx], kpxx.values[idx + 1]};
  if (!(kv[1] < kv[0])) return TAVCA_LW_RISING_CURVES;

  float curve_qv[2];
  const LogValue log_dp(dp);
  Bands lww[2];
  const auto on_curve = [&](int row, int c) { return is_on_curve(row_k.values[row], kv[c]); };
  Rows curve[2];
  sort_out(table, on_curve, curve);
  for (int c = 0; c < 2; ++c) {
    curve_qv[c] = narrow(std::sqrt(wide(dp / kv[c])));
    const Pair pair = choose_pair(
        curve[c], [&](int row) { return table.qv(row); }, curve_qv[c]);
    if (!pair.complete()) return TAVCA_LW_SHORT_CURVE;
    interpolate(table, pair, place_on_dp(table, pair, log_dp), lww[c]);
  }
  const LogPlace across(curve_qv[0], curve_qv[1], LogValue(qv));
  for (int band = 0; band < TAVD_BANDS; ++band) lw[band] = limit(across.between(lww[0][band], lww[1][band]));
  return TAVCA_OK;
}

// Brings `x` into low..high; returns what the level gains by the way from there to `x`, dB.
float bring_inside(float* x, float low, float high) {
  const float outside = *x;
  if (low > outside) {
    *x = low;
  } else if (outside > high) {
    *x = high;
  } else {
    return 0.0F;
  }
  return narrow(kDbPerDecade * (lg(outside) - lg(*x)));
}

// Kinds 30, 40: rows are points measured at a few flows. First on pressure at each of the two flows around
// the point, then across them on flow.
int flow_groups(const FlowData& fd, float qv, float dp, Bands& lw) {
  float mindp;
  float maxdp;
  minmaxdptot(&fd, qv, kNoWarning, &mindp, &maxdp);
  float extra = bring_inside(&dp, mindp, maxdp);
  extra += bring_inside(&qv, fd.qvmin, fd.qvmax);
  param_remove_dp(&fd, qv, &dp);

  const Table table(fd);
  const auto flow = [&](int row) { return table.qv(row); };
  Distinct qvxx;
  const int failure = collect(table, flow, same_flow, TAVCA_LW_MANY_FLOWS, TAVCA_LW_BAD_FLOW_ROW, &qvxx);
  if (failure != TAVCA_OK) return failure;
  if (qvxx.count < 2) return TAVCA_LW_FEW_FLOWS;
  int idx = qvxx.count - 1;
  for (int i = qvxx.count - 1; i >= 1; --i) {
    if (qvxx.values[i] > qv) idx = i;
  }
  const float group_qv[2] = {qvxx.values[idx - 1], qvxx.values[idx]};

  const LogValue log_dp(dp);
  Bands lww[2];
  const auto in_group = [&](int row, int c) { return same_flow(table.qv(row), group_qv[c]); };
  Rows group[2];
  sort_out(table, in_group, group);
  for (int c = 0; c < 2; ++c) {
    const Pair pair = choose_pair(
        group[c], [&](int row) { return table.dp(row); }, dp);
    if (!pair.complete()) return TAVCA_LW_SHORT_FLOW;
    interpolate(table, pair, place_on_dp(table, pair, log_dp), lww[c]);
    for (float& level : lww[c]) {
      if (level > kHighestLevel) level = kHighestLevel;
    }
  }
  const LogPlace across(group_qv[0], group_qv[1], LogValue(qv));
  for (int band = 0; band < TAVD_BANDS; ++band) {
    lw[band] = limit(extra + across.between(lww[0][band], lww[1][band]));
  }
  return TAVCA_OK;
}

int table_level(const FlowData& fd, float qv, float dp, Warning warning, Bands& lw) {
  switch (fd.kind) {
    case TAVD_KIND_RESISTANCE:
    case TAVD_KIND_RESISTANCE_VELOCITY:
    case TAVD_KIND_RESISTANCE_POINTS:
      return fixed_curve(fd, qv, warning, lw);
    case TAVD_KIND_LIMITS:
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      return resistance_curves(fd, qv, dp, lw);
    case TAVD_KIND_RANGE:
    case TAVD_KIND_FAN:
      return flow_groups(fd, qv, dp, lw);
    default:
      return TAVCA_LW_OTHER_KIND;
  }
}

int bands_at(const FlowData* fd, float qv, float dp, const DuctSize* duct, Warning warning, Bands& lw) {
  if (wide(qv) < kSmallestFlow) return TAVCA_LW_NO_FLOW;
  if (fd == nullptr || fd->nhdd == 0) return TAVCA_LW_NO_DATA;
  if (fd->nlw < 2) return TAVCA_LW_FEW_ROWS;
  const int result = table_level(*fd, qv, dp, warning, lw);
  if (result == TAVCA_OK) corrections_of(*fd, duct).add_to(lw);
  return result;
}

// Place of the operating point on the line through the first two rows of dlwpoints, 0 at the first and 1 at
// the second, not limited.
float place_on_dlw_line(const FlowData& fd, float qv, float dp) {
  const float first = fd.dlwpoints[0].pos;
  const float second = fd.dlwpoints[1].pos;
  float place = qv;
  if (!is_measured_by_flow(fd.kind)) {
    if (tavca_damper_pos(&fd, qv, dp, &place) < TAVCA_POS_BELOW_TABLE) return 0.0F;
  }
  return (place - first) / (second - first);
}

// False if the record holds no attenuation for the operating point.
bool attenuation(const FlowData& fd, float qv, float dp, float* dlw) {
  const int rows = row_count(fd.ndlwpoints, TAVD_DLW_ROWS);
  const DlwPoint& first = fd.dlwpoints[0];
  const DlwPoint& second = fd.dlwpoints[1];
  if (fd.ndlw != 0) {
    std::copy_n(fd.dlw, TAVD_BANDS, dlw);
  } else if (rows == 1) {
    std::copy_n(first.dlw, TAVD_BANDS, dlw);
  } else if (fd.kind < TAVD_KIND_DAMPER || rows == 0 || !(second.pos > first.pos)) {
    return false;
  } else {
    const float t = place_on_dlw_line(fd, qv, dp);
    for (int band = 0; band < TAVD_BANDS; ++band) {
      dlw[band] =
          static_cast<float>(first.dlw[band]) + t * static_cast<float>(second.dlw[band] - first.dlw[band]);
    }
  }
  return true;
}

}  // namespace

// A duct without area, where its size matters, leaves the level as the table gives it.
Corrections sound::corrections_of(const FlowData& fd, const DuctSize* duct) {
  Corrections corrections;
  const float lwsizecoef = fd.lwsizecoef;
  if (std::fabs(wide(lwsizecoef)) > kSmallestSizeCoef) {
    const float area = duct != nullptr ? ewads_m2(duct) : 0.0F;
    if (wide(area) < kSmallestAreaOfCorrection) return corrections;
    corrections.any_size = true;
    corrections.size = narrow((wide(lwsizecoef) / 3.0 * 10.0) * lg(area));
  }
  corrections.any_parameter = fd.npar >= 1;
  if (corrections.any_parameter) corrections.parameter = param_lw_term(&fd);
  return corrections;
}

int sound_power(const FlowData* fd, float qv, float dp, const DuctSize* duct, Warning warning, float* lw) {
  Bands levels = {};
  const int result = bands_at(fd, qv, dp, duct, warning, levels);
  if (result != TAVCA_OK) std::fill_n(levels, TAVD_BANDS, 0.0F);
  std::copy_n(levels, TAVD_BANDS, lw);
  return result;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavca_lw(const FlowData* fd, float qv, float dp, float* lw, const DuctSize* duct) {
  if (lw == nullptr) return TAVCA_LW_NO_DATA;
  return sound_power(fd, qv, dp, duct, tavca_msg, lw);
}

int tavca_dlw(const FlowData* fd, float qv, float dp, float* dlw) {
  if (dlw == nullptr) return TAVCA_OK;
  std::fill_n(dlw, TAVD_BANDS, 0.0F);
  if (fd == nullptr || fd->nhdd == 0) return TAVCA_OK;
  if (attenuation(*fd, qv, dp, dlw)) param_add_dlw(fd, dlw);
  return TAVCA_OK;
}
