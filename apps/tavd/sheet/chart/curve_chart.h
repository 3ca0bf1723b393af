// The plane of a chart: curves with their labels, marks, and the duty with its values.
#pragma once

#include <string>
#include <vector>

#include "sheet/chart/chart_layout.h"
#include "sheet/chart/frame.h"
#include "sheet/chart/labels.h"

namespace tavdhost {

class CurveChart {
 public:
  // `limits` of the product in base units: x and y at the least and at the most. Nothing of a curve is drawn
  // beyond.
  CurveChart(Painter& painter, const Frame& frame, const CurvePoint& least, const CurvePoint& most);

  struct Curve {
    std::string name;  // of its group
    LineStyle style;
    std::string label;     // empty: none
    double label_at;       // where on its length it should stand, 0 to 1
    bool only_with_label;  // without a place for the label there is no curve
    double weight;         // for labels of others: kUsualLine, ...
  };
  void add(const Curve& curve, const std::vector<CurvePoint>& points);
  void add_mark(const CurvePoint& point, const std::string& label);
  // `y` of 0: the flow alone.
  void set_duty(const CurvePoint& point, const std::vector<std::string>& values);

  // Finds places and draws it all, the frame too. `inscription` stands where there are no curves.
  ChartLayout draw(const std::string& inscription);

 private:
  struct Drawn {
    Curve curve;
    std::vector<Polyline> parts;
    std::optional<ChartLabel> label;
    bool is_drawn = true;
  };
  struct Mark {
    PagePoint at;
    std::string text;
    std::optional<ChartLabel> label;
  };

  void place_duty();
  void place_labels();
  void place_label(Drawn& drawn, std::size_t line);
  std::vector<Polyline> duty_lines() const;
  void draw_gaps();
  void draw_curves();
  void draw_limits() const;
  void draw_duty() const;
  void draw_leader() const;
  void draw_labels();
  void note(const ChartLabel& label);

  Painter& painter_;
  const Frame& frame_;
  Box limits_;
  LabelPlacer placer_;
  std::vector<Drawn> curves_;
  std::vector<Mark> marks_;
  std::optional<PagePoint> duty_;  // its y at the bottom of the plot where there is no pressure
  bool duty_has_y_ = false;
  std::vector<std::string> values_;
  std::optional<ChartFlag> flag_;
  ChartLayout layout_;
};

}  // namespace tavdhost
