// Total pressure that a product takes at a flow.
#include <cmath>

#include "calc/calculations.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

struct PressureRange {
  float min = 0.0F;
  float max = 0.0F;
};

void warn(Warning warning, const char* text) {
  if (warning != nullptr) warning(text);
}

bool is_bad(const QvDpPoint& point) {
  return point.qv <= 0.0F || point.dp <= 0.0F;
}

float beyond_end(const QvDpPoint& end, float qv) {
  return resistance(end.qv, end.dp) * qv * qv;
}

// On the straight line through both points in log-log co-ordinates.
float between(const QvDpPoint& below, const QvDpPoint& above, float qv) {
  const double exponent = (lg(above.dp) - lg(below.dp)) / (lg(above.qv) - lg(below.qv));
  const double coefficient = wide(above.dp) / std::pow(wide(above.qv), exponent);
  return narrow(coefficient * std::pow(wide(qv), exponent));
}

// The measured curve without parameters; false where it has no answer. Only the last point and those up to
// the bracket are looked at. The test for the bracket is strict: exactly the flow of the last point has none.
bool curve_dp(const FlowData& fd, float qv, Warning warning, float* dp) {
  const int n = row_count(fd.nqvdp, TAVD_QVDP_ROWS);
  if (n == 0) return false;
  const QvDpPoint* points = fd.qvdppoints;
  const QvDpPoint& last = points[n - 1];
  if (is_bad(points[0])) {
    warn(warning, "Invalid value in qvdppoints attribute");
    return false;
  }
  if (qv < points[0].qv) {
    *dp = beyond_end(points[0], qv);
    return true;
  }
  if (is_bad(last)) {
    warn(warning, "Invalid value in qvdppoints attribute");
    return false;
  }
  if (qv > last.qv) {
    *dp = beyond_end(last, qv);
    return true;
  }
  for (int i = 1; i < n; ++i) {
    if (is_bad(points[i])) {
      // One point, hence the singular: hosts know both texts.
      warn(warning, "Invalid value in qvdppoint attribute");
      return false;
    }
    if (points[i].qv > qv) {
      *dp = between(points[i - 1], points[i], qv);
      return true;
    }
  }
  return false;
}

int reference_point_range(const FlowData& fd, float qv, PressureRange* range) {
  const float qvref = fd.qvref;
  if (fd.nref == 0 || qvref <= 0.0F) return TAVCA_DPTOT_BAD_POINT;
  range->min = range->max = square_law(qvref, fd.dpref, qv);
  return TAVCA_OK;
}

// From the most open setting, the last row, to the most throttled one, the first.
int damper_range(const FlowData& fd, float qv, PressureRange* range) {
  const int n = row_count(fd.ndamper, TAVD_DAMPER_ROWS);
  if (n == 0) return TAVCA_DPTOT_BAD_DAMPER;
  const DamperPoint& first = fd.damper[0];
  const DamperPoint& last = fd.damper[n - 1];
  if (first.qv <= 0.0F || last.qv <= 0.0F) return TAVCA_DPTOT_BAD_DAMPER;
  range->max = square_law(first.qv, first.dp, qv);
  range->min = square_law(last.qv, last.dp, qv);
  return TAVCA_OK;
}

int base_range(const FlowData& fd, float qv, Warning warning, PressureRange* range) {
  switch (fd.kind) {
    case TAVD_KIND_RESISTANCE:
    case TAVD_KIND_RESISTANCE_VELOCITY:
      return reference_point_range(fd, qv, range);
    case TAVD_KIND_RESISTANCE_POINTS:
      // Carries the parameter term already; the caller adds it once more, as hosts have come to expect.
      range->min = range->max = floating_dp(&fd, qv, warning);
      return TAVCA_OK;
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      return damper_range(fd, qv, range);
    case TAVD_KIND_LIMITS:
    case TAVD_KIND_RANGE:
    case TAVD_KIND_FAN:
      range->min = fd.dpmin;
      range->max = fd.dpmax;
      return TAVCA_OK;
    default:
      return TAVCA_DPTOT_OTHER_KIND;
  }
}

int pressure_range(const FlowData* fd, float qv, Warning warning, PressureRange* range) {
  if (fd == nullptr || fd->nhdd == 0) return TAVCA_DPTOT_NO_DATA;
  const int result = base_range(*fd, qv, warning, range);
  if (result != TAVCA_OK) return result;
  const PressureTerm term(*fd, qv);
  range->min = term.added_to(range->min);
  range->max = term.added_to(range->max);
  return TAVCA_OK;
}

}  // namespace

float floating_dp(const FlowData* fd, float qv, Warning warning) {
  float dp = 0.0F;
  if (fd == nullptr || !curve_dp(*fd, qv, warning, &dp)) return 0.0F;
  param_add_dp(fd, qv, &dp);
  return dp;
}

int minmaxdptot(const FlowData* fd, float qv, Warning warning, float* mindp, float* maxdp) {
  PressureRange range;
  const int result = pressure_range(fd, qv, warning, &range);
  if (maxdp != nullptr) *maxdp = range.max;
  if (mindp != nullptr) *mindp = range.min;
  return result;
}

float dptotmin(const FlowData* fd, float qv, Warning warning) {
  PressureRange range;
  pressure_range(fd, qv, warning, &range);
  return range.min;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

float tavca_floating_dp(const FlowData* fd, float qv) {
  return floating_dp(fd, qv, tavca_msg);
}

int tavca_minmaxdptot(const FlowData* fd, float qv, float* mindp, float* maxdp) {
  return minmaxdptot(fd, qv, tavca_msg, mindp, maxdp);
}

float tavca_dptotmin(const FlowData* fd, float qv) {
  return dptotmin(fd, qv, tavca_msg);
}

float tavca_dptotmax(const FlowData* fd, float qv) {
  PressureRange range;
  pressure_range(fd, qv, tavca_msg, &range);
  return range.max;
}
