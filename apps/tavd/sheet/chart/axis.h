// Axes of charts: where a number stands, and which numbers are told.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sheet/chart/chart_form.h"

namespace tavdhost {

enum class Scale { kLinear, kLogarithmic };

// From `low`, in base units, at one end to `high` at the other, mm.
class Axis {
 public:
  Axis(Scale scale, double low, double high, double begin, double end)
      : scale_(scale), low_(low), high_(high), begin_(begin), end_(end) {}

  Scale scale() const { return scale_; }
  double low() const { return low_; }
  double high() const { return high_; }
  double begin() const { return begin_; }
  double end() const { return end_; }
  double place(double value) const;
  bool holds(double value) const { return value >= low_ && value <= high_; }

 private:
  Scale scale_;
  double low_, high_;
  double begin_, end_;
};

struct Tick {
  double place;       // mm
  std::string label;  // of major ones: the number in the unit, plain
  bool is_major() const { return !label.empty(); }
};

// How much of the axis a label takes, mm.
using LabelRoom = std::function<double(const std::string&)>;

// On a logarithmic axis 1, 2, 3 and 5 of each decade have a label, as far as there is room; on one that is
// too short for that to be enough, more do. Between them stand minor ticks.
std::vector<Tick> ticks_of(const Axis& axis, const ChartUnit& unit, char decimal, const LabelRoom& room);

// A number in three or four digits, with the decimal sign of the language.
std::string chart_number(double value, char decimal);

}  // namespace tavdhost
