// What the host marks in the diagram: the operating point and two flow limits.
#include "base/gwgdi.h"
#include "base/held.h"
#include "base/selected.h"
#include "diagram/curves.h"
#include "diagram/flowdiagram.h"

namespace tavd {

// Circles around the point, or a line at its flow if the pressure is off the chart.
void draw_operating_point(tavd_hdc hdc) {
  const DiagramRanges r = dg_ranges();
  const bool qv_inside = dg.qv > r.xmin && dg.qv < r.xmax;
  const bool dp_inside = dg.dp > r.ymin && dg.dp < r.ymax;
  if (!qv_inside) {
    return;
  }
  const Selected pen(hdc, dg.pen_point);
  if (!dp_inside) {
    dg_line(hdc, dg.qv, r.ymin, dg.qv, r.ymax);
  } else if (dg_has_place(dg.qv, dg.dp)) {
    draw_point_mark(hdc, dg_x_pixel(dg.qv), dg_y_pixel(dg.dp), dg.width / 50);
  }
}

namespace {

// A bracket on the lower edge of the plot whose foot points to the side. Logical units, not scaled.
void draw_flow_limit(tavd_hdc hdc, float qv, int foot) {
  if (qv > dg.flowdata.qvmin && qv < dg.flowdata.qvmax && dg_has_place(qv, dg.flowdata.dpmin)) {
    const int x = dg_x_pixel(qv);
    const int y = dg_y_pixel(dg.flowdata.dpmin);
    gwline(hdc, x, moved(y, -5), x, moved(y, 10));
    gwline(hdc, x, moved(y, 10), moved(x, foot), moved(y, 10));
  }
}

}  // namespace

void draw_flow_limits(tavd_hdc hdc) {
  if (dg.qvlimit1 > 0.0F) {
    const Selected pen(hdc, dg.pen_limit);
    draw_flow_limit(hdc, dg.qvlimit1, 5);
    draw_flow_limit(hdc, dg.qvlimit2, -5);
  }
}

}  // namespace tavd
