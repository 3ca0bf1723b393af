#include "diagram/throwdiagram_draw.h"

#include "base/gwgdi.h"
#include "base/gwtext.h"
#include "base/held.h"
#include "base/selected.h"
#include "calc/parameter.h"
#include "diagram/proportions.h"

namespace tavd {
namespace {

constexpr char kLabelFace[] = "Arial";

// The throw at a flow with the factors of the chosen parameter values, m.
float throw_at(const ThrowDiagram& dg, const ChartThrowLine& line, float qv) {
  float L2 = line.at(qv);
  param_apply_factor(&dg.flowdata, &L2);
  return L2;
}

// The text stands where the line ends, also when that is outside the plot.
void draw_label(const ThrowDiagram& dg, tavd_hdc hdc, const char* label, float qv, float L2) {
  if (label[0] != 0 && has_place(dg, qv, L2)) {
    gwtextalign(hdc, kAlignLeftBottom);
    gwtextout(hdc, moved(x_pixel(dg, qv), dg.width / kLabelAsidePart),
              moved(y_pixel(dg, L2), dg.height / kLabelBelowPart), "%s", label);
  }
}

// A power law is a straight line on logarithmic axes: one segment from end to end. Font and pens stay
// selected; without them the line is drawn with what is selected.
void draw_throw_line(ThrowDiagram& dg, tavd_hdc hdc, const ChartThrowLine& line, const char* label) {
  const Selected brush(hdc, gwstockobject(kLightGreyBrush));
  gwselect(hdc, dg.font_label);
  gwselect(hdc, dg.pen_black);
  gwselect(hdc, dg.pen_line);
  dg.L2 = throw_at(dg, line, dg.qv);
  const DiagramRanges r = base_ranges(dg);
  const float y2 = throw_at(dg, line, r.xmax);
  draw_line(dg, hdc, r.xmin, throw_at(dg, line, r.xmin), r.xmax, y2);
  draw_label(dg, hdc, label, r.xmax, y2);
}

// Circles around the point, or a line at its flow if the throw is off the chart.
void mark_operating_point(const ThrowDiagram& dg, tavd_hdc hdc) {
  const float qv = dg.qv;
  const float L2 = dg.L2;
  if (!(qv >= dg.flowdata.qvmin && qv <= dg.flowdata.qvmax)) return;
  const DiagramRanges r = base_ranges(dg);
  const Selected pen(hdc, dg.pen_point);
  if (!(L2 >= r.ymin && L2 <= r.ymax)) {
    draw_line(dg, hdc, qv, r.ymin, qv, r.ymax);
  } else if (has_place(dg, qv, L2)) {
    draw_point_mark(hdc, x_pixel(dg, qv), y_pixel(dg, L2), dg.width / kPointMarkPart);
  }
}

}  // namespace

void create_tools(ThrowDiagram& dg) {
  destroy_tools(dg);
  const auto [wide, narrow, label] = tool_sizes(dg);
  dg.pen_line = gwcreatepen(kPenSolid, wide, kRed);
  dg.pen_black = gwcreatepen(kPenSolid, narrow, kBlack);
  dg.pen_point = gwcreatepen(kPenSolid, narrow, kBlue);
  dg.font_label = gwcreatefont(label, kWeightNormal, 0, 0, kLabelFace);
}

void destroy_tools(ThrowDiagram& dg) {
  gwdiscard({&dg.pen_line, &dg.pen_black, &dg.pen_point, &dg.font_label});
}

void draw(ThrowDiagram& dg, const ThrowChoices& choices, tavd_hdc hdc) {
  if (dg.chart == nullptr) return;
  chart_draw(dg.chart, hdc, true, true);
  QvL2Point points[TAVD_QVL2_ROWS];
  const int n = throw_points(dg.flowdata, choices.parL2value, points);
  if (n < 1) return;
  char label[TAVD_PARAMETER_CHARS + 1] = "";  // a line for all values has none
  if (has_throw_by_value(dg.flowdata)) gwstrtrimcpy(label, choices.parL2value, TAVD_PARAMETER_CHARS);
  ChartThrowLine line;
  if (fit_power(points, n, &line.nL2, &line.kL2)) draw_throw_line(dg, hdc, line, label);
  mark_operating_point(dg, hdc);
}

}  // namespace tavd
