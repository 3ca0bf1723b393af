// The curve of a fan and the field of operating points that it can serve.
#include "base/gwgdi.h"
#include "base/selected.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "diagram/curves.h"
#include "diagram/flowdiagram.h"

namespace tavd {
namespace {

constexpr double kSmallestFlowOfPoint = 1e-06;  // l/s, of a point that counts
constexpr double kSmallestPressure = 1e-06;     // Pa, the same
constexpr int kParabolaSpans = 10;

struct Parabola {
  CurvePoint points[kParabolaSpans + 1];
};

// A point of the fan curve with the parameter term in its pressure.
CurvePoint fan_point(const FlowDiagram& dg, int row) {
  const FanPoint fan = dg.flowdata.fancurve[row];
  float dp = fan.dp;
  param_add_dp(&dg.flowdata, fan.qv, &dp);
  return {fan.qv, dp};
}

// The square law from the origin through a point of the fan curve, false if that has no flow or pressure.
bool limit_parabola(const FlowDiagram& dg, int row, Parabola* parabola) {
  const CurvePoint end = fan_point(dg, row);
  if (!(end.x >= kSmallestFlowOfPoint && end.y >= kSmallestPressure)) return false;
  const double qv = wide(end.x);
  const double k = wide(end.y) / (qv * qv);
  for (int i = 0; i <= kParabolaSpans; ++i) {
    const double q = qv * (i / static_cast<double>(kParabolaSpans));
    parabola->points[i] = {narrow(q), narrow(k * q * q)};
  }
  return true;
}

int fan_rows(const FlowDiagram& dg) {
  return row_count(dg.flowdata.nfan, TAVD_FAN_ROWS);
}

}  // namespace

void draw_fan_curve(const FlowDiagram& dg, tavd_hdc hdc) {
  const int rows = fan_rows(dg);
  CurvePoint points[TAVD_FAN_ROWS];
  for (int i = 0; i < rows; ++i) {
    CurvePoint p = fan_point(dg, i);
    if (p.x < kSmallestFlowOfPoint || p.y < kSmallestPressure) return;
    show_static(dg, p.x, &p.y);
    points[i] = p;
  }
  const Selected pen(hdc, dg.pen_curve);
  const Selected font(hdc, dg.font_label);
  draw_smoothed(dg, hdc, rows, points, false);
}

void draw_fan_limits(const FlowDiagram& dg, tavd_hdc hdc) {
  const int rows = fan_rows(dg);
  Parabola left;
  Parabola right;
  if (rows == 0 || !limit_parabola(dg, 0, &left) || !limit_parabola(dg, rows - 1, &right)) return;
  const Selected pen(hdc, dg.pen_curve);
  const Selected font(hdc, dg.font_label);
  for (const Parabola* parabola : {&left, &right}) {
    if (!draw_smoothed(dg, hdc, kParabolaSpans + 1, parabola->points, false)) return;
  }
}

}  // namespace tavd
