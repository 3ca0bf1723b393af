#include "sheet/chart/duty.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"

namespace tavdhost {
namespace {

constexpr double kBeyond = 0.045;  // of the axis, beyond each limit
constexpr double kFar = 2.5;       // a duty that is outside by a larger ratio is not shown
constexpr double kRoom = 1.12;     // ratio by which the axis goes on behind a duty

}  // namespace

Reach reach_of(Scale scale, double lowest, double highest, double duty) {
  double most = highest;
  if (duty > highest && duty <= kFar * highest) most = duty * kRoom;
  if (scale == Scale::kLinear) {
    const double least = std::min(0.0, lowest);
    return {least, most + (most - least) * kBeyond};
  }
  double least = lowest;
  if (duty > 0 && duty < lowest && duty >= lowest / kFar) least = duty / kRoom;
  const double beyond = std::pow(most / least, kBeyond);
  return {least / beyond, most * beyond};
}

std::string amount_text(float base, const ChartUnit& unit, char decimal) {
  return chart_number(hosts::from_base(double{base}, *unit.unit), decimal) + " " + unit.sign;
}

std::string level_text(float level, const ChartForm& form) {
  return with_replaced(fixed(level, 1), ".", std::string(1, form.decimal)) + " " + form.decibel_A;
}

}  // namespace tavdhost
