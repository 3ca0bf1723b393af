// What the host marks in the diagram: the operating point and two flow limits.
#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "diagram/curves.h"
#include "diagram/flowdiagram.h"
#include "diagram/proportions.h"

namespace tavd {

// Circles around the point, or a line at its flow if the pressure is off the chart.
void draw_operating_point(const FlowDiagram& dg, tavd_hdc hdc) {
  const DiagramRanges r = base_ranges(dg);
  const bool qv_inside = dg.qv > r.xmin && dg.qv < r.xmax;
  const bool dp_inside = dg.dp > r.ymin && dg.dp < r.ymax;
  if (!qv_inside) return;
  const Selected pen(hdc, dg.pen_point);
  if (!dp_inside) {
    draw_line(dg, hdc, dg.qv, r.ymin, dg.qv, r.ymax);
  } else if (has_place(dg, dg.qv, dg.dp)) {
    draw_point_mark(hdc, x_pixel(dg, dg.qv), y_pixel(dg, dg.dp), dg.width / kPointMarkPart);
  }
}

namespace {

// A flow limit is a bracket across the lower edge of the plot. Logical units, whatever the drawing's size.
constexpr int kLimitAbove = 5;
constexpr int kLimitBelow = 10;
constexpr int kLimitFoot = 5;

// `foot` points to the side on which flows are allowed.
void draw_flow_limit(const FlowDiagram& dg, tavd_hdc hdc, float qv, int foot) {
  if (qv > dg.flowdata.qvmin && qv < dg.flowdata.qvmax && has_place(dg, qv, dg.flowdata.dpmin)) {
    const int x = x_pixel(dg, qv);
    const int y = y_pixel(dg, dg.flowdata.dpmin);
    gwline(hdc, x, moved(y, -kLimitAbove), x, moved(y, kLimitBelow));
    gwline(hdc, x, moved(y, kLimitBelow), moved(x, foot), moved(y, kLimitBelow));
  }
}

}  // namespace

void draw_flow_limits(const FlowDiagram& dg, tavd_hdc hdc) {
  if (dg.qvlimit1 > 0.0F) {
    const Selected pen(hdc, dg.pen_limit);
    draw_flow_limit(dg, hdc, dg.qvlimit1, kLimitFoot);
    draw_flow_limit(dg, hdc, dg.qvlimit2, -kLimitFoot);
  }
}

}  // namespace tavd
