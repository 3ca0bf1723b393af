// How an axis is numbered, and the display units of flow. Shared by the diagrams.
#pragma once

#include <cstdint>

#include "diagram/chart.h"

namespace tavd {

// A display unit: the title of its axis and what a base value is multiplied by.
struct DisplayUnit {
  const char* title;
  float factor;
};

inline constexpr DisplayUnit kFlowUnits[] = {
    {"qv [l/s]", 1.0F},  {"qv [l/h]", 3600.0F},   {"qv [m3/s]", 0.001F},
    {"qv [m3/h]", 3.6F}, {"qv [cfm]", 2.118644F},
};
inline constexpr int kFlowUnitCount = static_cast<int>(sizeof kFlowUnits / sizeof kFlowUnits[0]);

// Number format of the tick labels of an axis from `lo` up: decimals, and width in characters. The width
// follows the lower end alone.
void axis_format(float lo, float hi, std::int16_t* len, std::int16_t* des);

// An axis over a range with the number format for it; logarithmic, without a step.
ChartAxis axis_over(float min, float max);

// The first 1-2-5 step that cuts the range into 4 to 10 intervals; false and a step of 5 if `lo` is not
// below `hi`.
bool axis_step(float lo, float hi, float* step);

}  // namespace tavd
