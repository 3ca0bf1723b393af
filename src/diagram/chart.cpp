#include "diagram/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "base/gwgdi.h"
#include "base/gwmem.h"
#include "base/held.h"
#include "diagram/proportions.h"
#include "gwmath.h"

namespace tavd {
namespace {

constexpr std::int32_t kChartTag = 4100;  // in out-of-memory reports
constexpr std::int64_t kSmallestExtent = 50;
constexpr std::int64_t kThinPenExtent = 1500;  // up to this width the pen is 1 wide

using Point = std::array<double, 2>;  // x, y, device units

Chart* new_chart(const ChartAxis& x, const ChartAxis& y) {
  auto* chart = static_cast<Chart*>(gwGmalloc(sizeof(Chart), kChartTag));
  if (chart == nullptr) return nullptr;
  std::memset(chart, 0, sizeof *chart);
  chart->xlog = x.log ? 1 : 0;
  chart->ylog = y.log ? 1 : 0;
  chart->xmin = x.min;
  chart->ymin = y.min;
  chart->xmax = x.max;
  chart->ymax = y.max;
  chart->xsteps = x.step;
  chart->ysteps = y.step;
  chart->xlen = x.len;
  chart->xdes = x.des;
  chart->ylen = y.len;
  chart->ydes = y.des;
  return chart;
}

// A text that leaves no room for its terminator is dropped, not cut: half a title would mean something else.
template <typename Char, std::size_t size>
void set_text(Char (&field)[size], const Char* text) {
  if (text == nullptr) return;
  std::size_t length = 0;
  while (length < size && text[length] != Char{}) ++length;
  if (length < size) std::copy(text, text + length, field);
}

// Gives a new chart, which may be null, its texts of one kind and its default layout.
template <typename Char, std::size_t axis_size, std::size_t title_size>
Chart* titled(Chart* chart, Char (Chart::*x)[axis_size], const Char* szX, Char (Chart::*y)[axis_size],
              const Char* szY, Char (Chart::*title_field)[title_size], const Char* title) {
  if (chart != nullptr) {
    set_text(chart->*x, szX);
    set_text(chart->*y, szY);
    set_text(chart->*title_field, title);
    chart_resize_default(chart);
  }
  return chart;
}

float axis_scale(int span, bool log, float min, float max) {
  if (log) {
    min = static_cast<float>(gwlog10(static_cast<double>(min)));
    max = static_cast<float>(gwlog10(static_cast<double>(max)));
  }
  return static_cast<float>(span) / (max - min);
}

// Moves `end` along the segment to where coordinate `c` is `limit`. The other end is the origin of the step,
// so that an end that is very far out is cut exactly.
void cut_end(Point& end, const Point& other, std::size_t c, double limit) {
  const double share = (limit - other[c]) / (end[c] - other[c]);
  end[1 - c] = other[1 - c] + share * (end[1 - c] - other[1 - c]);
  end[c] = limit;
}

// Leaves the part of a segment whose coordinates fit 16 bits; false if there is none.
bool cut_to_int16(Point& from, Point& to) {
  constexpr double kLowest = std::numeric_limits<std::int16_t>::min();
  constexpr double kHighest = std::numeric_limits<std::int16_t>::max();
  for (const std::size_t c : {std::size_t{0}, std::size_t{1}}) {
    if (std::max(from[c], to[c]) < kLowest || std::min(from[c], to[c]) > kHighest) return false;
    const double near = std::clamp(from[c], kLowest, kHighest);
    const double far = std::clamp(to[c], kLowest, kHighest);
    if (near != from[c]) cut_end(from, to, c, near);
    if (far != to[c]) cut_end(to, from, c, far);
  }
  return true;
}

// Makes both ends fit 16 bits; false if there is nothing to draw. Clipping runs in 16 bits, rounded at each
// step, since hosts compare what is drawn unit by unit; a steep curve whose ends lie far outside must be cut
// first, or it would turn or vanish.
bool device_segment(Point& from, Point& to) {
  bool fits = true;
  for (const double position : {from[0], from[1], to[0], to[1]}) {
    if (!std::isfinite(position)) return false;
    fits = fits && std::trunc(position) == held<std::int16_t>(position);
  }
  return fits || cut_to_int16(from, to);
}

// The sum in float, truncated: the slope's rounding is part of where a line ends.
std::int16_t adjusted(std::int16_t coordinate, float by) {
  return held<std::int16_t>(static_cast<double>(static_cast<float>(coordinate) + by));
}

void clip_to_plot(const Chart& chart, tavd_hdc hdc, std::int16_t px1, std::int16_t py1, std::int16_t px2,
                  std::int16_t py2) {
  const std::int16_t left = chart.plot_left;
  const std::int16_t top = chart.plot_top;
  const std::int16_t right = chart.plot_right;
  const std::int16_t bottom = chart.plot_bottom;
  if (px2 < left || px1 > right || std::min(py1, py2) > bottom || std::max(py1, py2) < top) return;
  if (px1 == px2) {
    py1 = std::max(top, std::min(py1, bottom));
    py2 = std::max(top, std::min(py2, bottom));
  } else {
    const float k = static_cast<float>(py2 - py1) / static_cast<float>(px2 - px1);
    const auto to_side = [k](std::int16_t& px, std::int16_t& py, std::int16_t side) {
      py = adjusted(py, k * static_cast<float>(side - px));
      px = side;
    };
    const auto to_edge = [k](std::int16_t& px, std::int16_t& py, std::int16_t edge) {
      px = adjusted(px, static_cast<float>(edge - py) / k);
      py = edge;
    };
    if (px1 < left) to_side(px1, py1, left);
    if (px2 > right) to_side(px2, py2, right);
    if (py1 < top) to_edge(px1, py1, top);
    if (py2 < top) to_edge(px2, py2, top);
    if (py1 > bottom) to_edge(px1, py1, bottom);
    if (py2 > bottom) to_edge(px2, py2, bottom);
  }
  gwline(hdc, px1, py1, px2, py2);
}

}  // namespace

Chart* chart_create(const ChartAxis& x, const ChartAxis& y, const char* szX, const char* szY,
                    const char* title) {
  Chart* chart = new_chart(x, y);
  return titled(chart, &Chart::szX, szX, &Chart::szY, szY, &Chart::title, title);
}

Chart* chart_createw(const ChartAxis& x, const ChartAxis& y, const tavd_wchar* szX, const tavd_wchar* szY,
                     const tavd_wchar* title) {
  Chart* chart = new_chart(x, y);
  return titled(chart, &Chart::szXw, szX, &Chart::szYw, szY, &Chart::titlew, title);
}

void chart_destroy(Chart* chart) {
  gwGfree(chart);
}

void chart_resize(Chart* chart, int left, int top, int right, int bottom) {
  const std::int64_t width = std::int64_t{right} - left + 1;
  const std::int64_t height = std::int64_t{bottom} - top + 1;
  if (chart == nullptr || width < kSmallestExtent || height < kSmallestExtent) return;
  const auto int16 = [](std::int64_t value) { return held<std::int16_t>(value); };
  Chart& c = *chart;
  c.rect_left = int16(left);
  c.rect_top = int16(top);
  c.rect_right = int16(right);
  c.rect_bottom = int16(bottom);
  c.pen_width = width <= kThinPenExtent ? std::int16_t{1} : int16(width / kFramePenPart);
  c.title_font = int16(height / kTitleFontPart);
  c.axis_font = int16(height / kAxisFontPart);
  c.tick_font = int16(height / kTickFontPart);
  c.title_gap = int16(height / kTitleGapPart);
  c.ylabel_gap = int16(width / kYLabelGapPart);
  c.xlabel_gap = int16(height / kXLabelGapPart);
  // A character counts as half the font height wide; one spare character, and the bare number of characters
  // on top.
  const std::int64_t character = c.tick_font / kCharacterPart;
  c.yblock = int16(c.ylen + character * (c.ylen + 1));
  c.xblock = int16(c.xlen + character * (c.xlen + 1));
  const std::int64_t title_band = std::int64_t{c.axis_font / 2} * 3;
  c.plot_left = int16(left + title_band + c.yblock);
  c.plot_top = int16(top + (c.title_font * 5) / 2);
  c.plot_right = int16(right - character * c.xlen);
  c.plot_bottom = int16(bottom - title_band - c.xblock);
  c.xscale = axis_scale(c.plot_right - c.plot_left, c.xlog != 0, c.xmin, c.xmax);
  c.yscale = axis_scale(c.plot_bottom - c.plot_top, c.ylog != 0, c.ymin, c.ymax);
}

void chart_resize_default(Chart* chart) {
  chart_resize(chart, 0, 0, kDefaultExtent, kDefaultExtent);
}

int chart_x_pixel(const Chart* chart, float x) {
  return held<int>(axis_position(chart_x_axis(*chart), x));
}

int chart_y_pixel(const Chart* chart, float y) {
  return held<int>(axis_position(chart_y_axis(*chart), y));
}

bool chart_has_place(const Chart* chart, float x, float y) {
  return std::isfinite(axis_position(chart_x_axis(*chart), x)) &&
         std::isfinite(axis_position(chart_y_axis(*chart), y));
}

void chart_clip_line(const Chart* chart, tavd_hdc hdc, float x1, float y1, float x2, float y2) {
  if (chart == nullptr) return;
  if (x2 < x1) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  const AxisView x = chart_x_axis(*chart);
  const AxisView y = chart_y_axis(*chart);
  Point from{axis_position(x, x1), axis_position(y, y1)};
  Point to{axis_position(x, x2), axis_position(y, y2)};
  if (device_segment(from, to)) {
    clip_to_plot(*chart, hdc, held<std::int16_t>(from[0]), held<std::int16_t>(from[1]),
                 held<std::int16_t>(to[0]), held<std::int16_t>(to[1]));
  }
}

void chart_get_ranges(const Chart* chart, float* xmin, float* ymin, float* xmax, float* ymax) {
  if (chart != nullptr) {
    *xmin = chart->xmin;
    *ymin = chart->ymin;
    *xmax = chart->xmax;
    *ymax = chart->ymax;
  }
}

void chart_get_plot_rect(const Chart* chart, int rect[4]) {
  if (chart != nullptr) {
    rect[0] = chart->plot_left;
    rect[1] = chart->plot_top;
    rect[2] = chart->plot_right;
    rect[3] = chart->plot_bottom;
  }
}

AxisView chart_x_axis(const Chart& chart) {
  return {chart.xmin,       chart.xmax, chart.xsteps,   chart.xscale, chart.plot_left,
          chart.plot_right, 1,          chart.xlog != 0};
}

AxisView chart_y_axis(const Chart& chart) {
  return {chart.ymin,        chart.ymax,     chart.ysteps, chart.yscale,
          chart.plot_bottom, chart.plot_top, -1,           chart.ylog != 0};
}

double axis_position(const AxisView& axis, float value) {
  const float scale = static_cast<float>(axis.sign) * axis.scale;
  if (axis.log) {
    return axis.start +
           double{scale} * (gwlog10(static_cast<double>(value)) - gwlog10(static_cast<double>(axis.min)));
  }
  return static_cast<float>(axis.start) + scale * (value - axis.min);
}

}  // namespace tavd
