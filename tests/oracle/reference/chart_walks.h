// A second opinion on the chart: its layout, ticks and clipping written down plainly a second time, without a
// look at src/diagram. What it draws are the lines of a recording.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace transcription {

struct ChartAxis {
  bool log;
  float min, max;
  float step;  // of a linear axis
  std::int16_t len, des;
};

struct ChartPlot {
  ChartAxis x, y;
  int rect_left, rect_top, rect_right, rect_bottom;
  int left, top, right, bottom;  // the plot
  int title_font, axis_font, tick_font;
  int xlabel_gap, ylabel_gap;
  float xscale, yscale;
};

// The layout in a rectangle at least 50 wide and high.
ChartPlot chart_plot(const ChartAxis& x, const ChartAxis& y, int left, int top, int right, int bottom);

int x_pixel(const ChartPlot& plot, float x);
int y_pixel(const ChartPlot& plot, float y);

// Frame, tick labels and grid lines in the order in which they are drawn: "move", "line", "align" and "text".
std::vector<std::string> chart_operations(const ChartPlot& plot);

// The segment as it is drawn, nothing if it is not: "move" and "line". Its ends must fit 16 bits.
std::vector<std::string> clipped_line(const ChartPlot& plot, float x1, float y1, float x2, float y2);

}  // namespace transcription
