#include "base/gwgdi.h"
#include "base/gwtext.h"
#include "base/gwwindow.h"
#include "base/held.h"
#include "base/selected.h"
#include "calc/parameter.h"
#include "diagram/throwdiagram.h"
#include "tavd/L2dg.h"

namespace tavd {
namespace {

constexpr char kClassName[] = "TAVDDGRL02";
constexpr unsigned kClassRecordSize = 0x48;
constexpr char kLabelFace[] = "Arial";

bool registered;  // the class was tried; outside the state, since a class outlives it

void draw_throw_line(tavd_hdc hdc, const ThrowLine& line, const char* label);
void mark_operating_point(tavd_hdc hdc);

}  // namespace

int L2dg_register_class(tavd_hmodule module) {
  if (registered) {
    return 0;
  }
  registered = true;
  return gwregisterclass(module, kClassName, L2dg_diagram_proc, kClassRecordSize) ? 0 : -1;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

void L2dg_create_drawing_tools(void) {
  L2dg_destroy_drawing_tools();
  const auto [wide, narrow, label] = tool_sizes(L2dg);
  L2dg.pen_line = gwcreatepen(kPenSolid, wide, kRed);
  L2dg.pen_black = gwcreatepen(kPenSolid, narrow, kBlack);
  L2dg.pen_point = gwcreatepen(kPenSolid, narrow, kBlue);
  L2dg.font_label = gwcreatefont(label, kWeightNormal, 0, 0, kLabelFace);
}

void L2dg_destroy_drawing_tools(void) {
  gwdiscard({&L2dg.pen_line, &L2dg.pen_black, &L2dg.pen_point, &L2dg.font_label});
}

void L2dg_draw_diagram(tavd_hdc hdc) {
  if (L2dg.chart == nullptr) {
    return;
  }
  chart_draw(L2dg.chart, hdc, true, true);
  QvL2Point points[TAVD_QVL2_ROWS];
  const int n = throw_points(L2dg.flowdata, L2dg_choices.parL2value, points);
  if (n < 1) {
    return;
  }
  char label[TAVD_PARAMETER_CHARS + 1] = "";  // a line for all values has none
  if (has_throw_by_value(L2dg.flowdata)) {
    gwstrtrimcpy(label, L2dg_choices.parL2value, TAVD_PARAMETER_CHARS);
  }
  ThrowLine line;
  if (fit_power(points, n, &line.nL2, &line.kL2) == 0) {
    draw_throw_line(hdc, line, label);
  }
  mark_operating_point(hdc);
}

intptr_t L2dg_diagram_proc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam) {
  static constexpr Painter kPainter{L2dg_create_drawing_tools, L2dg_draw_diagram, L2dg_destroy_drawing_tools};
  return diagram_proc(L2dg, kPainter, hwnd, msg, wparam, lparam);
}

namespace tavd {
namespace {

// The throw at a flow with the factors of the chosen parameter values, m.
float throw_at(const ThrowLine& line, float qv) {
  float L2 = line.at(qv);
  param_apply_factor(&L2dg.flowdata, &L2);
  return L2;
}

// The text stands where the line ends, also when that is outside the plot.
void draw_label(tavd_hdc hdc, const char* label, float qv, float L2) {
  if (label[0] != 0 && has_place(L2dg, qv, L2)) {
    gwtextalign(hdc, kAlignLeftBottom);
    gwtextout(hdc, moved(x_pixel(L2dg, qv), L2dg.width / 200), moved(y_pixel(L2dg, L2), L2dg.height / 50),
              "%s", label);
  }
}

// A power law is a straight line on logarithmic axes: one segment from end to end. Font and pens stay
// selected; without them the line is drawn with what is selected.
void draw_throw_line(tavd_hdc hdc, const ThrowLine& line, const char* label) {
  const Selected brush(hdc, gwstockobject(kLightGreyBrush));
  gwselect(hdc, L2dg.font_label);
  gwselect(hdc, L2dg.pen_black);
  gwselect(hdc, L2dg.pen_line);
  L2dg.L2 = throw_at(line, L2dg.qv);
  const DiagramRanges r = base_ranges(L2dg);
  const float y2 = throw_at(line, r.xmax);
  draw_line(L2dg, hdc, r.xmin, throw_at(line, r.xmin), r.xmax, y2);
  draw_label(hdc, label, r.xmax, y2);
}

// Circles around the point, or a line at its flow if the throw is off the chart.
void mark_operating_point(tavd_hdc hdc) {
  const float qv = L2dg.qv;
  const float L2 = L2dg.L2;
  if (!(qv >= L2dg.flowdata.qvmin && qv <= L2dg.flowdata.qvmax)) {
    return;
  }
  const DiagramRanges r = base_ranges(L2dg);
  const Selected pen(hdc, L2dg.pen_point);
  if (!(L2 >= r.ymin && L2 <= r.ymax)) {
    draw_line(L2dg, hdc, qv, r.ymin, qv, r.ymax);
  } else if (has_place(L2dg, qv, L2)) {
    draw_point_mark(hdc, x_pixel(L2dg, qv), y_pixel(L2dg, L2), L2dg.width / 50);
  }
}

}  // namespace
}  // namespace tavd
