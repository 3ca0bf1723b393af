// The curve of a fan and the field of operating points that it can serve.
#include "base/gwgdi.h"
#include "base/selected.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "diagram/curves.h"
#include "diagram/flowdiagram.h"

namespace tavd {
namespace {

constexpr double kSmallestFlow = 1e-06;      // l/s, of a point that counts
constexpr double kSmallestPressure = 1e-06;  // Pa, the same
constexpr int kParabolaSpans = 10;

struct Parabola {
  CurvePoint points[kParabolaSpans + 1];
};

// A point of the fan curve with the parameter term in its pressure.
CurvePoint fan_point(int row) {
  const FanPoint fan = dg.flowdata.fancurve[row];
  float dp = fan.dp;
  param_add_dp(&dg.flowdata, fan.qv, &dp);
  return {fan.qv, dp};
}

// The square law from the origin through a point of the fan curve, false if that has no flow or pressure.
bool limit_parabola(int row, Parabola* parabola) {
  const CurvePoint end = fan_point(row);
  if (!(end.x >= kSmallestFlow && end.y >= kSmallestPressure)) {
    return false;
  }
  const double qv = wide(end.x);
  const double k = wide(end.y) / (qv * qv);
  for (int i = 0; i <= kParabolaSpans; ++i) {
    const double q = qv * (i / static_cast<double>(kParabolaSpans));
    parabola->points[i] = {narrow(q), narrow(k * q * q)};
  }
  return true;
}

int fan_rows() {
  return row_count(dg.flowdata.nfan, TAVD_FAN_ROWS);
}

}  // namespace

void draw_fan_curve(tavd_hdc hdc) {
  const int rows = fan_rows();
  CurvePoint points[TAVD_FAN_ROWS];
  for (int i = 0; i < rows; ++i) {
    CurvePoint p = fan_point(i);
    if (p.x < kSmallestFlow || p.y < kSmallestPressure) {
      return;
    }
    dg_static_dp(p.x, &p.y);
    points[i] = p;
  }
  const Selected pen(hdc, dg.pen_curve);
  const Selected font(hdc, dg.font_label);
  draw_smoothed(hdc, rows, points, false);
}

void draw_fan_limits(tavd_hdc hdc) {
  const int rows = fan_rows();
  Parabola left;
  Parabola right;
  if (rows == 0 || !limit_parabola(0, &left) || !limit_parabola(rows - 1, &right)) {
    return;
  }
  const Selected pen(hdc, dg.pen_curve);
  const Selected font(hdc, dg.font_label);
  for (const Parabola* parabola : {&left, &right}) {
    if (!draw_smoothed(hdc, kParabolaSpans + 1, parabola->points, false)) {
      return;
    }
  }
}

}  // namespace tavd
