// The chart engine: two axes, linear or base-10 logarithmic, in a rectangle of device units. It lays the plot
// out, maps world values, draws frame, titles, tick labels and grid, and clips straight segments to the plot.
// It knows no units: every value that reaches it is in the display unit of its axis.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

inline constexpr int kAxisTitleSize = 20;     // characters of an axis title, terminator included
inline constexpr int kChartTitleSize = 80;    // characters of the diagram title, terminator included
inline constexpr int kDefaultExtent = 10000;  // side of the default rectangle, device units
inline constexpr char kChartFace[] = "Microsoft Sans Serif";

// A chart holds either the narrow or the wide set of texts; the other set stays empty.
struct Chart {
  float xmin, ymin, xmax, ymax;  // axis ranges, set at creation
  std::int16_t xlen, xdes;       // x tick labels: width in characters, decimals
  std::int16_t ylen, ydes;       // the same of y
  float xsteps, ysteps;          // tick spacing of a linear axis, world units
  char szX[kAxisTitleSize];
  char szY[kAxisTitleSize];
  char title[kChartTitleSize];
  unsigned char xlog, ylog;                                   // not 0: logarithmic
  std::int16_t rect_left, rect_top, rect_right, rect_bottom;  // outer rectangle, device units
  std::int16_t plot_left, plot_top, plot_right, plot_bottom;  // plot rectangle
  std::int16_t title_font, axis_font, tick_font;              // font heights
  std::int16_t title_gap;                                     // from rect_top to the diagram title
  std::int16_t xblock;      // band under the plot for the x labels; from plot_bottom to the x title
  std::int16_t xlabel_gap;  // from plot_bottom to the x labels
  std::int16_t ylabel_gap;  // from the y labels to plot_left
  std::int16_t yblock;      // band left of the plot for the y labels; from the y title to plot_left
  std::int16_t pen_width;   // of frame and grid
  float xscale, yscale;     // device units per world unit, per decade on a logarithmic axis
  tavd_hdc hdc;             // of the current chart_draw
  tavd_wchar szXw[kAxisTitleSize];
  tavd_wchar szYw[kAxisTitleSize];
  tavd_wchar titlew[kChartTitleSize];
};

// One axis of a chart to be made.
struct ChartAxis {
  float min, max;         // display units
  float step;             // tick spacing of a linear axis, display units
  std::int16_t len, des;  // tick labels: width in characters, decimals
  bool log;
};

// A new chart in the default rectangle, or null if memory ran out. A text that does not fit its field is
// dropped whole; null texts count as empty.
Chart* chart_create(const ChartAxis& x, const ChartAxis& y, const char* szX, const char* szY,
                    const char* title);
Chart* chart_createw(const ChartAxis& x, const ChartAxis& y, const tavd_wchar* szX, const tavd_wchar* szY,
                     const tavd_wchar* title);
void chart_destroy(Chart* chart);  // null allowed

// Lays the chart out in a rectangle of device units. Under 50 units wide or high the former layout stays.
void chart_resize(Chart* chart, int left, int top, int right, int bottom);
void chart_resize_default(Chart* chart);  // 0, 0 to 10000, 10000

// Draws frame, titles, tick labels and grid. The flags switch the tick labels of an axis.
void chart_draw(Chart* chart, tavd_hdc hdc, bool xlabels, bool ylabels);

// Device coordinate of a world value, truncated toward zero.
int chart_x_pixel(const Chart* chart, float x);
int chart_y_pixel(const Chart* chart, float y);

// Whether a point has a place on both axes: a finite device coordinate. Zero and negative values have none on
// a logarithmic axis.
bool chart_has_place(const Chart* chart, float x, float y);

// Draws a world segment with the selected pen, clipped to the plot rectangle. A segment with an end that has
// no place on its axis is not drawn.
void chart_clip_line(const Chart* chart, tavd_hdc hdc, float x1, float y1, float x2, float y2);

// Axis ranges and plot rectangle (left, top, right, bottom); a null chart leaves the arguments untouched.
void chart_get_ranges(const Chart* chart, float* xmin, float* ymin, float* xmax, float* ymax);
void chart_get_plot_rect(const Chart* chart, int rect[4]);

// The largest power of ten, at most 1e7, that does not exceed 1.01 v; 0 for a negative v.
float chart_decade(float v);

// One axis as mapping and tick walks see it, the same for x and y: device coordinates run from `start`, where
// `min` stands, to `end`; `sign` is 1 where they grow on the way (x) and -1 where they fall (y).
struct AxisView {
  float min, max, step, scale;
  int start, end, sign;
  bool log;
};

AxisView chart_x_axis(const Chart& chart);
AxisView chart_y_axis(const Chart& chart);
double axis_position(const AxisView& axis, float value);  // device coordinate before it is truncated

}  // namespace tavd
