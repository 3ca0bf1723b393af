// What the flow diagram and the throw length diagram have in common: one product of a family in a chart over
// its own limits, driven by a dialog of the host's, painted into a window of a class of its own.
#pragma once

#include <cstdint>

#include "base/gwgdi.h"
#include "diagram/chart.h"
#include "tavd/flowdata.h"
#include "tavd/tavfm.h"
#include "tavd/types.h"

namespace tavd {

struct ProductDiagram {
  FamilyList familylist;
  tavb_rec rec;  // the product given to the init; the host's
  Chart* chart;  // null before the first build that succeeds
  std::int16_t db;
  FlowData flowdata;  // base units: l/s or m/s, Pa, m
  char classID[8];    // of the product given to the init
  char title[kChartTitleSize];
  char usertitle[kChartTitleSize];
  std::int16_t listid;        // control id of the family list box, 0 for none
  bool failed;                // the last build failed: the window stays blank
  float qv;                   // flow of the operating point, l/s or m/s
  int width, height;          // logical size of the drawing
  int resolution;             // halvings per span of a smoothed curve
  std::int16_t xunit, yunit;  // display units
  float xfactor, yfactor;     // display value = factor * base value
};

// ---- Life ----

// Gives a cleared diagram its family list, its database and its default settings.
void set_up(ProductDiagram& diagram, std::int16_t db);
// Gives back the family list and the chart.
void release(ProductDiagram& diagram);

// Halvings per span of a smoothed curve, cut to an even number.
void set_resolution(ProductDiagram& diagram, int n);

// ---- Building ----

// Whether a chart can be drawn over the product's limits: both rise, and start above zero, or at it where
// the axes may start there.
bool has_limits(const FlowData& fd, bool from_zero);

// The title in narrow text: the host's, else the product code of `rec`.
void choose_narrow_title(ProductDiagram& diagram, tavb_rec rec);

// ---- Drawing; all values in base units ----

struct DiagramRanges {
  float xmin, ymin, xmax, ymax;
};
DiagramRanges base_ranges(const ProductDiagram& diagram);

inline int x_pixel(const ProductDiagram& d, float qv) {
  return chart_x_pixel(d.chart, d.xfactor * qv);
}
inline int y_pixel(const ProductDiagram& d, float y) {
  return chart_y_pixel(d.chart, d.yfactor * y);
}
inline bool has_place(const ProductDiagram& d, float qv, float y) {
  return chart_has_place(d.chart, d.xfactor * qv, d.yfactor * y);
}
inline void draw_line(const ProductDiagram& d, tavd_hdc hdc, float x1, float y1, float x2, float y2) {
  chart_clip_line(d.chart, hdc, d.xfactor * x1, d.yfactor * y1, d.xfactor * x2, d.yfactor * y2);
}

// Three circles around a point, each of half the radius of the one before, largest first.
void draw_point_mark(tavd_hdc hdc, int x, int y, int radius);

// Lays chart and diagram out; nothing without a chart.
void resize(ProductDiagram& diagram, int left, int top, int right, int bottom);
void resize_default(ProductDiagram& diagram);

// Sizes of the tools that the height of the drawing asks for: pen widths and the height of the label font.
struct ToolSizes {
  int wide, narrow;
  std::int16_t label;
};
ToolSizes tool_sizes(const ProductDiagram& diagram);

// ---- Painting ----

// What one paint consists of, in this order.
struct Painter {
  void (*create_tools)();
  void (*draw)(tavd_hdc hdc);
  void (*destroy_tools)();
};

// The window procedure of a diagram: paints it, where there is one, with the logical plane stretched over
// the client area whatever its shape, and leaves all else to the system.
std::intptr_t diagram_proc(const ProductDiagram& diagram, const Painter& painter, tavd_hwnd hwnd,
                           unsigned int msg, std::uintptr_t wparam, std::intptr_t lparam);

}  // namespace tavd
