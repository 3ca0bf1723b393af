// Where the parts of a chart have come to stand, for tests and for what is drawn about it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sheet/chart/geometry.h"

namespace tavdhost {

struct LabelLayout {
  std::string text;
  Quad cell;  // of its letters
};

struct ChartLayout {
  Box plot = {};                      // within the frame
  Box limits = {};                    // of the product, in the plot
  std::optional<PagePoint> duty;      // the middle of its mark
  std::optional<Box> flag;            // with its values
  std::vector<LabelLayout> labels;    // of curves and marks
  std::vector<std::string> left_out;  // labels that have no place
};

}  // namespace tavdhost
