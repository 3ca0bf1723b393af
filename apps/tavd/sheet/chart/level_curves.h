// Curves of equal sound level through the field in which a product works.
#pragma once

#include <vector>

#include "sheet/chart/chart_curves.h"
#include "sheet/chart/sampler.h"

namespace tavdhost {

// Levels worth a curve where these are met, of which some may be no numbers: multiples of 5 dB(A), or of 10
// where there would be many.
std::vector<double> round_levels(const std::vector<double>& met);

// Curves in the part of the limits that the product can reach, each from end to end; those of one level that
// do not meet stand apart. Empty without sound data.
std::vector<ChartCurve> level_curves(const Sampler& sampler, const FlowCurves& limits);

}  // namespace tavdhost
