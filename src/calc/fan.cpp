// The pressure that a fan delivers, and the field of operating points that it can serve.
#include "calc/interpolation.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

// Whether the curve is a static pressure: a load marks every record as total, a host may take the mark off.
bool holds_static_pressure(const FlowData& fd) {
  return fd.kind100 < TAVD_KIND_TOTAL_PRESSURE;
}

int curve_points(const FlowData& fd) {
  return row_count(fd.nfan, TAVD_FAN_ROWS);
}

// Upper point of the curve's first bracket that holds the flow; 0 if none holds it. A flow on a point takes
// the bracket below it.
int find_bracket(const FlowData& fd, float qv) {
  const int n = curve_points(fd);
  for (int i = 1; i < n; ++i) {
    if (fd.fancurve[i].qv >= qv && fd.fancurve[i - 1].qv <= qv) return i;
  }
  return 0;
}

// The curve's pressure between point `upper` and the one before it, without parameters.
float curve_dp(const FlowData& fd, float qv, int upper) {
  const FanPoint& below = fd.fancurve[upper - 1];
  const FanPoint& above = fd.fancurve[upper];
  return lin_interp(below.qv, above.qv, qv, below.dp, above.dp);
}

// The coefficient of the system line through a point of the curve. The parameter term belongs to the
// operating flow and is scaled with the line.
float system_line(const FanPoint& point, const PressureTerm& term) {
  return resistance(point.qv, term.added_to(point.dp));
}

struct FanPressure {
  int code = TAVCA_OK;
  float total = 0.0F;
  float fan_static = 0.0F;
  float dynamic = 0.0F;
};

FanPressure fan_pressure(const FlowData& fd, float qv) {
  const int n = curve_points(fd);
  const bool below = n > 0 && fd.fancurve[0].qv > qv;
  if (!below && (n == 0 || qv > fd.fancurve[n - 1].qv)) return {TAVCA_FAN_ABOVE_CURVE};
  const PressureTerm term(fd, qv);
  float dpref = 0.0F;
  if (below) {
    dpref = system_line(fd.fancurve[0], term) * qv * qv;
  } else if (const int upper = find_bracket(fd, qv); upper != 0) {
    dpref = term.added_to(curve_dp(fd, qv, upper));
  }
  FanPressure result;
  if (below) result.code = TAVCA_FAN_BELOW_CURVE;
  result.dynamic = tavca_pdyn(qv, fd.ductarea, 0);
  const bool is_static = holds_static_pressure(fd);
  result.fan_static = is_static ? dpref : dpref - result.dynamic;
  result.total = is_static ? dpref + result.dynamic : dpref;
  return result;
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavca_fan_dp(const FlowData* fd, float qv, float* dptot, float* dpst, float* pd) {
  FanPressure result;
  result.code = TAVCA_FAN_NO_RECORD;
  if (fd != nullptr) result = fan_pressure(*fd, qv);
  if (dptot != nullptr) *dptot = result.total;
  if (dpst != nullptr) *dpst = result.fan_static;
  if (pd != nullptr) *pd = result.dynamic;
  return result.code;
}

int tavca_fan_op_check(const FlowData* fd, float qv, float dp) {
  if (fd == nullptr) return TAVCA_FAN_NO_RECORD;
  const int n = curve_points(*fd);
  if (n == 0 || qv > fd->fancurve[n - 1].qv) return TAVCA_FAN_ABOVE_CURVE;
  const PressureTerm term(*fd, qv);
  const float k1 = system_line(fd->fancurve[0], term);
  const float k2 = system_line(fd->fancurve[n - 1], term);
  if (dp > k1 * qv * qv) return TAVCA_FAN_BELOW_CURVE;
  if (k2 * qv * qv > dp) return TAVCA_FAN_ABOVE_CURVE;
  const int upper = find_bracket(*fd, qv);
  if (upper == 0) return TAVCA_OK;
  float dpref = term.added_to(curve_dp(*fd, qv, upper));
  if (holds_static_pressure(*fd)) dpref += tavca_pdyn(qv, fd->ductarea, 0);
  if (dp > dpref) return TAVCA_FAN_OVER_CURVE;
  return TAVCA_OK;
}
