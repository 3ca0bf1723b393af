// The flow diagram: flow on x, pressure on y. One per process; its state is one static record.
#pragma once

#include <cstdint>

#include "base/gwgdi.h"
#include "diagram/chart.h"
#include "diagram/productdiagram.h"
#include "diagram/savedparameters.h"
#include "tavd/types.h"

namespace tavd {

inline constexpr int kLabelSize = 150;  // characters of a label, terminator included
inline constexpr int kMostALabels = 200;
inline constexpr std::int16_t kFanKind = 40;

// A text for one damper position.
struct ALabel {
  float value;  // the position
  char text[kLabelSize];
};

struct DiagramState : ProductDiagram {
  gwobject pen_sound;  // the drawing tools live for the time of one paint
  gwobject pen_limit;
  gwobject pen_curve;
  gwobject pen_minor;
  gwobject pen_point;
  gwobject font_label;
  float qvlimit1, qvlimit2;  // flow limits to mark, l/s; 0 for none
  bool ready;                // chart and data are complete
  tavd_wchar titlew[kChartTitleSize];
  tavd_wchar usertitlew[kChartTitleSize];  // nothing sets it: a wide chart always shows the product code
  char LpA_label[kLabelSize];              // behind the first sound level mark
  char damperpos_label[kLabelSize];        // before the first damper position
  float dp;                                // pressure of the operating point, Pa
  int dptype;                              // 1: static pressure is shown, 0: total
  std::int16_t nalabels;                   // rows used of alabels
  ALabel alabels[kMostALabels];
  float lpmin, lpmax, lpstep;  // overrides of the sound level lines, dB(A); 0: not set
};

extern DiagramState dg;
extern SavedParameters dg_savedpar;  // outlives the state: the choices hold for the next product too

// What the curves reach the chart through; all in base units.
inline int dg_x_pixel(float qv) {
  return x_pixel(dg, qv);
}
inline int dg_y_pixel(float dp) {
  return y_pixel(dg, dp);
}
inline bool dg_has_place(float qv, float dp) {
  return has_place(dg, qv, dp);
}
inline void dg_line(tavd_hdc hdc, float x1, float y1, float x2, float y2) {
  draw_line(dg, hdc, x1, y1, x2, y2);
}
inline DiagramRanges dg_ranges() {
  return base_ranges(dg);
}

// Turns a total pressure at flow `qv` into a static one, where that is what the diagram shows.
void dg_static_dp(float qv, float* dp);

// Display unit of an index; any other index counts as 0.
float dg_xunit_factor(int unit);
float dg_yunit_factor(int unit);

// Registers the window class for a module, once for each: 0, or -1 if the platform refuses.
int dg_register_class(tavd_hmodule module);

}  // namespace tavd
