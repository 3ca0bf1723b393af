// What stands about the curves of a chart: axes with their numbers, titles and a grid, and what the lines
// are.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sheet/chart/axis.h"
#include "sheet/chart/chart_curves.h"
#include "sheet/chart/chart_form.h"
#include "sheet/painter.h"

namespace tavdhost {

// "Flow", "q", "v": the symbol is of ISO 80000.
struct AxisTitle {
  std::string name, symbol, subscript;
};

struct AxisNeeds {
  AxisTitle title;
  ChartUnits units;
  Scale scale;
  double low, high;  // base units
};

// A line, a dot on a line, or the mark of the duty, and what it is.
struct LegendEntry {
  enum class Kind { kLine, kDot, kDuty };
  Kind kind;
  LineStyle style;
  std::string text;
};

class Frame {
 public:
  // The box holds all of the chart.
  Frame(Painter& painter, const Box& box, const AxisNeeds& x, const AxisNeeds& y,
        std::vector<LegendEntry> legend, const ChartForm& form);

  const Box& plot() const { return plot_; }
  const Axis& x() const { return *x_; }
  const Axis& y() const { return *y_; }
  PagePoint place(const CurvePoint& point) const { return {x_->place(point.x), y_->place(point.y)}; }

  // What is below the curves: the plane, grey but for what lies within the limits, and its grid.
  void draw_plane(const Box& limits) const;
  // And around them: the frame, numbers, titles and legend.
  void draw_edges() const;

 private:
  struct Side {
    AxisNeeds needs;
    std::vector<Tick> ticks, far_ticks;
    bool has_far() const { return needs.units.far_side.unit != nullptr; }
  };

  double width(const std::string& text) const { return painter_.measure(text, style_).width; }
  double widest(const std::vector<Tick>& ticks) const;
  std::vector<std::vector<std::size_t>> legend_rows() const;
  double legend_width(const LegendEntry& entry) const;
  void draw_ticks() const;
  void draw_title(const AxisTitle& title, const std::string& unit, PagePoint middle, double angle) const;
  void draw_legend() const;
  void draw_sample(const LegendEntry& entry, double left, double y) const;

  Painter& painter_;
  Box box_, plot_;
  const ChartForm& form_;
  std::vector<LegendEntry> legend_;
  TextStyle style_;
  Side across_, up_;
  std::optional<Axis> x_, y_;
};

// A box with a sentence in its middle, for a chart that cannot be drawn.
void draw_empty_chart(Painter& painter, const Box& box, const std::string& text);

}  // namespace tavdhost
