// Curves of fixed resistances: one reference point, or a table of measured points.
#include "base/gwgdi.h"
#include "base/selected.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "diagram/curves.h"
#include "diagram/flowdiagram.h"

namespace tavd {
namespace {

constexpr double kSmallestReferenceFlow = 1e-05;  // l/s or m/s
constexpr double kSmallestMeasured = 1e-05;       // l/s and Pa, of a measured point

// One measured point with the parameter term in its pressure.
struct MeasuredPoint {
  MeasuredPoint(const FlowDiagram& dg, int row)
      : qv(dg.flowdata.qvdppoints[row].qv), dp(dg.flowdata.qvdppoints[row].dp) {
    param_add_dp(&dg.flowdata, qv, &dp);
  }
  float qv, dp;  // l/s, Pa
};

// The square law through a point, from flow `qv` to the point. Static pressure is shown at the far end
// alone: the curve has a corner where the measured part begins.
void draw_extension(const FlowDiagram& dg, tavd_hdc hdc, const MeasuredPoint& point, float qv) {
  const float k = resistance(point.qv, point.dp);
  float dp = k * qv * qv;
  show_static(dg, qv, &dp);
  if (qv < point.qv) {
    draw_line(dg, hdc, qv, dp, point.qv, point.dp);
  } else {
    draw_line(dg, hdc, point.qv, point.dp, qv, dp);
  }
}

bool has_bad_point(const FlowDiagram& dg, int rows) {
  for (int i = 0; i < rows; ++i) {
    const QvDpPoint row = dg.flowdata.qvdppoints[i];
    if (row.qv < kSmallestMeasured || row.dp < kSmallestMeasured) return true;
  }
  return false;
}

}  // namespace

// The square law is a straight line on logarithmic axes: one segment from end to end.
void draw_ref_curve(const FlowDiagram& dg, tavd_hdc hdc) {
  const float qvref = dg.flowdata.qvref;
  float dpref = dg.flowdata.dpref;
  if (!(qvref > kSmallestReferenceFlow)) return;
  param_add_dp(&dg.flowdata, qvref, &dpref);
  const float k = resistance(qvref, dpref);
  const DiagramRanges r = base_ranges(dg);
  float y1 = k * r.xmin * r.xmin;
  float y2 = k * r.xmax * r.xmax;
  if (y1 <= r.ymax && y2 >= r.ymin) {
    const Selected pen(hdc, dg.pen_curve);
    show_static(dg, r.xmin, &y1);
    show_static(dg, r.xmax, &y2);
    draw_line(dg, hdc, r.xmin, y1, r.xmax, y2);
  }
}

void draw_qvdp_curve(const FlowDiagram& dg, tavd_hdc hdc) {
  const int rows = row_count(dg.flowdata.nqvdp, TAVD_QVDP_ROWS);
  if (rows == 0 || has_bad_point(dg, rows)) return;
  const DiagramRanges r = base_ranges(dg);
  const Selected pen(hdc, dg.pen_curve);
  const MeasuredPoint first(dg, 0);
  if (r.xmin < first.qv) draw_extension(dg, hdc, first, r.xmin);
  for (int i = 1; i < rows; ++i) {
    MeasuredPoint from(dg, i - 1);
    MeasuredPoint to(dg, i);
    show_static(dg, from.qv, &from.dp);
    show_static(dg, to.qv, &to.dp);
    draw_line(dg, hdc, from.qv, from.dp, to.qv, to.dp);
  }
  const MeasuredPoint last(dg, rows - 1);
  if (last.qv < r.xmax) draw_extension(dg, hdc, last, r.xmax);
}

}  // namespace tavd
