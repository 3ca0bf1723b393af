#include "oracle/reference/chart_walks.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace transcription {

namespace {

std::string print(const char* format, ...) {
  char text[200];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  return text;
}

void add_line(std::vector<std::string>& operations, int x1, int y1, int x2, int y2) {
  operations.push_back(print("move %d %d", x1, y1));
  operations.push_back(print("line %d %d %d %d", x1, y1, x2, y2));
}

float scale(int pixels, const ChartAxis& axis) {
  if (!axis.log) return static_cast<float>(pixels) / (axis.max - axis.min);
  const float lg_max = static_cast<float>(std::log10(static_cast<double>(axis.max)));
  const float lg_min = static_cast<float>(std::log10(static_cast<double>(axis.min)));
  return static_cast<float>(pixels) / (lg_max - lg_min);
}

float decade_of(float v) {
  float t = 1e8F;
  t = t / 10.0F;
  while (v + v / 100.0F < t) t = t / 10.0F;
  return t;
}

// What a walk needs to know of its axis.
struct Walk {
  const ChartAxis& axis;
  int (*pixel)(const ChartPlot& plot, float v);
  bool (*beyond_hi)(const ChartPlot& plot, int p);
  bool (*beyond_lo)(const ChartPlot& plot, int p);
  bool (*before_lo)(const ChartPlot& plot, int p);
  void (*label)(const ChartPlot& plot, std::vector<std::string>& operations, int p, float v);
  void (*grid)(const ChartPlot& plot, std::vector<std::string>& operations, int p);
};

void walk_linear(const ChartPlot& plot, const Walk& walk, std::vector<std::string>& operations) {
  const float step = walk.axis.step;
  float v = step * static_cast<float>(std::floor(static_cast<double>(walk.axis.min / step) + 0.5));
  if (v < walk.axis.min) v = v + step;
  do {
    const int p = walk.pixel(plot, v);
    walk.label(plot, operations, p, v);
    if (walk.beyond_hi(plot, p)) break;
    if (walk.beyond_lo(plot, p)) walk.grid(plot, operations, p);
    v = v + step;
  } while (v <= walk.axis.max + step / 2.0F);
}

void walk_logarithmic(const ChartPlot& plot, const Walk& walk, std::vector<std::string>& operations) {
  const double min = static_cast<double>(walk.axis.min);
  const double max = static_cast<double>(walk.axis.max);
  float decade = decade_of(walk.axis.min);
  int k = 1;
  while (static_cast<double>(decade * static_cast<float>(k)) < 0.95 * min) k = k + 1;
  if (k > 1) k = k - 1;
  do {
    for (int j = k; j <= 10; j++) {
      const float v = static_cast<float>(j) * decade;
      if (j == 2 && k == 1) {
        const int p = walk.pixel(plot, 1.5F * decade);
        if (walk.beyond_hi(plot, p)) break;
        if (walk.beyond_lo(plot, p)) walk.grid(plot, operations, p);
      }
      if (static_cast<double>(v) < 0.98 * min) continue;
      if (static_cast<double>(v) > 1.02 * max) break;
      const int p = walk.pixel(plot, v);
      if (j == 1 || j == 2 || j == 3 || j == 5 || j == 10) walk.label(plot, operations, p, v);
      if (walk.before_lo(plot, p)) continue;
      if (walk.beyond_hi(plot, p)) break;
      walk.grid(plot, operations, p);
    }
    k = 1;
    decade = decade * 10.0F;
  } while (decade < walk.axis.max);
}

void walk(const ChartPlot& plot, const Walk& walk, std::vector<std::string>& operations) {
  if (walk.axis.log) {
    walk_logarithmic(plot, walk, operations);
  } else {
    walk_linear(plot, walk, operations);
  }
}

void x_label(const ChartPlot& plot, std::vector<std::string>& operations, int p, float v) {
  const std::string longest = print("%0.*f", plot.x.des, static_cast<double>(plot.x.max));
  const int label_w = (static_cast<int>(longest.size()) * plot.tick_font) / 6;
  const std::string number = print("%0.*f", plot.x.des, static_cast<double>(v));
  operations.push_back(print("text %d %d \"%s\"", p - plot.tick_font / 3,
                             plot.bottom + plot.xlabel_gap + label_w, number.c_str()));
}

void y_label(const ChartPlot& plot, std::vector<std::string>& operations, int p, float v) {
  const std::string number = print("%0.*f", plot.y.des, static_cast<double>(v));
  operations.push_back(
      print("text %d %d \"%s\"", plot.left - plot.ylabel_gap, p + plot.tick_font / 2, number.c_str()));
}

void x_grid(const ChartPlot& plot, std::vector<std::string>& operations, int p) {
  add_line(operations, p, plot.top, p, plot.bottom);
}

void y_grid(const ChartPlot& plot, std::vector<std::string>& operations, int p) {
  add_line(operations, plot.left, p, plot.right, p);
}

int to_int16(double v) {
  if (v > 32767.0) return 32767;
  if (v < -32768.0) return -32768;
  return static_cast<int>(v);
}

// An adjustment, truncated once it is added.
int plus(int coordinate, float by) {
  return to_int16(static_cast<double>(static_cast<float>(coordinate) + by));
}

}  // namespace

ChartPlot chart_plot(const ChartAxis& x, const ChartAxis& y, int left, int top, int right, int bottom) {
  ChartPlot plot{};
  plot.x = x;
  plot.y = y;
  plot.rect_left = left;
  plot.rect_top = top;
  plot.rect_right = right;
  plot.rect_bottom = bottom;
  const int width = right - left + 1;
  const int height = bottom - top + 1;
  plot.title_font = height / 16;
  plot.axis_font = height / 20;
  plot.tick_font = height / 25;
  plot.ylabel_gap = width / 200;
  plot.xlabel_gap = height / 200;
  const int yblock = y.len + (plot.tick_font / 2) * (y.len + 1);
  const int xblock = x.len + (plot.tick_font / 2) * (x.len + 1);
  plot.left = left + (plot.axis_font / 2) * 3 + yblock;
  plot.top = top + (plot.title_font * 5) / 2;
  plot.right = right - (plot.tick_font / 2) * x.len;
  plot.bottom = bottom - (plot.axis_font / 2) * 3 - xblock;
  plot.xscale = scale(plot.right - plot.left, x);
  plot.yscale = scale(plot.bottom - plot.top, y);
  return plot;
}

int x_pixel(const ChartPlot& plot, float x) {
  if (plot.x.log) {
    const double lg = std::log10(static_cast<double>(x)) - std::log10(static_cast<double>(plot.x.min));
    return static_cast<int>(plot.left + static_cast<double>(plot.xscale) * lg);
  }
  return static_cast<int>(static_cast<float>(plot.left) + plot.xscale * (x - plot.x.min));
}

int y_pixel(const ChartPlot& plot, float y) {
  if (plot.y.log) {
    const double lg = std::log10(static_cast<double>(y)) - std::log10(static_cast<double>(plot.y.min));
    return static_cast<int>(plot.bottom - static_cast<double>(plot.yscale) * lg);
  }
  return static_cast<int>(static_cast<float>(plot.bottom) - plot.yscale * (y - plot.y.min));
}

std::vector<std::string> chart_operations(const ChartPlot& plot) {
  std::vector<std::string> operations;
  add_line(operations, plot.left, plot.top, plot.right, plot.top);
  add_line(operations, plot.right, plot.top, plot.right, plot.bottom);
  add_line(operations, plot.right, plot.bottom, plot.left, plot.bottom);
  add_line(operations, plot.left, plot.bottom, plot.left, plot.top);

  operations.push_back("align right+top");
  const Walk x_walk = {plot.x,
                       x_pixel,
                       [](const ChartPlot& c, int p) { return p > c.right - 3; },
                       [](const ChartPlot& c, int p) { return p > c.left + 3; },
                       [](const ChartPlot& c, int p) { return p < c.left + 3; },
                       x_label,
                       x_grid};
  walk(plot, x_walk, operations);

  operations.push_back("align right+bottom");
  const Walk y_walk = {plot.y,
                       y_pixel,
                       [](const ChartPlot& c, int p) { return p < c.top + 3; },
                       [](const ChartPlot& c, int p) { return p < c.bottom - 3; },
                       [](const ChartPlot& c, int p) { return p > c.bottom - 3; },
                       y_label,
                       y_grid};
  walk(plot, y_walk, operations);
  return operations;
}

std::vector<std::string> clipped_line(const ChartPlot& plot, float x1, float y1, float x2, float y2) {
  std::vector<std::string> operations;
  if (x2 < x1) {
    const float x = x1;
    x1 = x2;
    x2 = x;
    const float y = y1;
    y1 = y2;
    y2 = y;
  }
  int px1 = x_pixel(plot, x1);
  int py1 = y_pixel(plot, y1);
  int px2 = x_pixel(plot, x2);
  int py2 = y_pixel(plot, y2);
  if (px2 < plot.left) return operations;
  if (px1 > plot.right) return operations;
  if ((py1 < py2 ? py1 : py2) > plot.bottom) return operations;
  if ((py1 > py2 ? py1 : py2) < plot.top) return operations;
  if (px1 == px2) {
    if (py1 < plot.top) py1 = plot.top;
    if (py1 > plot.bottom) py1 = plot.bottom;
    if (py2 < plot.top) py2 = plot.top;
    if (py2 > plot.bottom) py2 = plot.bottom;
  } else {
    const float k = static_cast<float>(py2 - py1) / static_cast<float>(px2 - px1);
    if (px1 < plot.left) {
      py1 = plus(py1, k * static_cast<float>(plot.left - px1));
      px1 = plot.left;
    }
    if (px2 > plot.right) {
      py2 = plus(py2, k * static_cast<float>(plot.right - px2));
      px2 = plot.right;
    }
    if (py1 < plot.top) {
      px1 = plus(px1, static_cast<float>(plot.top - py1) / k);
      py1 = plot.top;
    }
    if (py2 < plot.top) {
      px2 = plus(px2, static_cast<float>(plot.top - py2) / k);
      py2 = plot.top;
    }
    if (py1 > plot.bottom) {
      px1 = plus(px1, static_cast<float>(plot.bottom - py1) / k);
      py1 = plot.bottom;
    }
    if (py2 > plot.bottom) {
      px2 = plus(px2, static_cast<float>(plot.bottom - py2) / k);
      py2 = plot.bottom;
    }
  }
  add_line(operations, px1, py1, px2, py2);
  return operations;
}

}  // namespace transcription
