// The flow diagram: flow on x, pressure on y. One per process; its state is one static record.
#pragma once

#include <cstdint>

#include "base/gwgdi.h"
#include "diagram/chart.h"
#include "diagram/savedparameters.h"
#include "tavd/flowdata.h"
#include "tavd/tavfm.h"
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

struct DiagramState {
  FamilyList familylist;
  tavb_rec rec;        // the product given to tavdg_init; the host's
  gwobject pen_sound;  // the drawing tools live for the time of one paint
  gwobject pen_limit;
  gwobject pen_curve;
  gwobject pen_minor;
  gwobject pen_point;
  gwobject font_label;
  Chart* chart;  // null before the first build that succeeds
  std::int16_t db;
  FlowData flowdata;         // base units: l/s or m/s, Pa
  float qvlimit1, qvlimit2;  // flow limits to mark, l/s; 0 for none
  bool ready;                // chart and data are complete
  char classID[8];           // of the product given to tavdg_init
  char title[kChartTitleSize];
  tavd_wchar titlew[kChartTitleSize];
  char usertitle[kChartTitleSize];
  tavd_wchar usertitlew[kChartTitleSize];  // nothing sets it: a wide chart always shows the product code
  char LpA_label[kLabelSize];              // behind the first sound level mark
  char damperpos_label[kLabelSize];        // before the first damper position
  std::int16_t listid;                     // control id of the family list box, 0 for none
  std::int16_t error;                      // 0, or -1 after a failed build
  float qv, dp;                            // operating point, l/s or m/s, and Pa
  int width, height;                       // logical size of the drawing
  int resolution;                          // halvings per span of a smoothed curve
  int dptype;                              // 1: static pressure is shown, 0: total
  std::int16_t xunit, yunit;               // display units
  float xfactor, yfactor;                  // display value = factor * base value
  std::int16_t nalabels;                   // rows used of alabels
  ALabel alabels[kMostALabels];
  float lpmin, lpmax, lpstep;  // overrides of the sound level lines, dB(A); 0: not set
};

extern DiagramState dg;
extern SavedParameters dg_savedpar;  // outlives the state: the choices hold for the next product too

// What the curves reach the chart through; all in base units.
inline int dg_x_pixel(float qv) {
  return chart_x_pixel(dg.chart, dg.xfactor * qv);
}
inline int dg_y_pixel(float dp) {
  return chart_y_pixel(dg.chart, dg.yfactor * dp);
}
inline bool dg_has_place(float qv, float dp) {
  return chart_has_place(dg.chart, dg.xfactor * qv, dg.yfactor * dp);
}
inline void dg_line(tavd_hdc hdc, float x1, float y1, float x2, float y2) {
  chart_clip_line(dg.chart, hdc, dg.xfactor * x1, dg.yfactor * y1, dg.xfactor * x2, dg.yfactor * y2);
}

struct DiagramRanges {
  float xmin, ymin, xmax, ymax;  // l/s or m/s, and Pa
};
DiagramRanges dg_ranges();

// Turns a total pressure at flow `qv` into a static one, where that is what the diagram shows.
void dg_static_dp(float qv, float* dp);

// Display unit of an index; any other index counts as 0.
float dg_xunit_factor(int unit);
float dg_yunit_factor(int unit);

// Registers the window class for a module, once for each: 0, or -1 if the platform refuses.
int dg_register_class(tavd_hmodule module);

// Three circles around a point, each of half the radius of the one before, largest first.
void draw_point_mark(tavd_hdc hdc, int x, int y, int radius);

}  // namespace tavd
