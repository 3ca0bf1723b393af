#include "diagram/curves.h"

#include "calc/classes.h"

namespace tavd {
namespace {

constexpr double kSmallestDuct = 1e-09;  // m2
constexpr float kHalfAirDensity = 0.6F;  // kg/m3
constexpr float kLitresPerM3 = 1000.0F;

}  // namespace

// The dynamic pressure comes off for supply air and on top for extract air; other classes show the total
// pressure under either title.
void show_static(const FlowDiagram& dg, float qv, float* dp) {
  if (dg.dptype == TAVDG_DP_TOTAL) return;
  const int sign = -static_to_total_sign(dg.flowdata);
  if (sign == 0) return;
  float v = qv;
  if (dg.flowdata.isvelocity == 0) {
    const float area = dg.flowdata.ductarea;
    if (area < kSmallestDuct) return;
    v = (qv / kLitresPerM3) / area;
  }
  *dp += static_cast<float>(sign) * kHalfAirDensity * v * v;
}

bool draw_smoothed(const FlowDiagram& dg, tavd_hdc hdc, int n, const CurvePoint* points, bool log) {
  Smoother curve(points, n, log, log, dg.resolution);
  CurvePoint from{};
  if (!curve.first(&from.x, &from.y)) return false;
  CurvePoint to{};
  while (curve.next(&to.x, &to.y)) {
    draw_line(dg, hdc, from.x, from.y, to.x, to.y);
    from = to;
  }
  return true;
}

}  // namespace tavd
