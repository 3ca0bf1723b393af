// What charts have in common of the duty: how far axes reach for it, and its values in words.
#pragma once

#include <string>

#include "sheet/chart/axis.h"
#include "sheet/chart/chart_form.h"

namespace tavdhost {

// Of an axis, base units.
struct Reach {
  double low, high;
};

// A little beyond the limits, so that these are seen, and as far as the duty (0 for none) if it is not far
// outside.
Reach reach_of(Scale scale, double lowest, double highest, double duty);

// "50 l/s", of a number in base units, and "34 dB(A)".
std::string amount_text(float base, const ChartUnit& unit, char decimal);
std::string level_text(float level, const ChartForm& form);

}  // namespace tavdhost
