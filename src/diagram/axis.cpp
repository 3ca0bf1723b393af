#include "diagram/axis.h"

namespace tavd {
namespace {

constexpr int kMostDecimals = 8;
constexpr int kMostDigits = 10;
constexpr std::int16_t kShortestLabel = 3;  // characters
constexpr int kMostRounds = 1000;
constexpr float kFallbackStep = 5.0F;
constexpr double kFewestIntervals = 4.0;
constexpr double kMostIntervals = 10.0;

}  // namespace

void axis_format(float lo, float /*hi*/, std::int16_t* len, std::int16_t* des) {
  int decimals = 0;
  for (double t = 0.9999; decimals < kMostDecimals && lo <= t; t /= 10.0) ++decimals;
  int width = kShortestLabel + decimals;
  double t = 9.9999;
  for (int round = 0; round < kMostDigits && t < lo; ++round) {
    ++width;
    t *= 10.0;
  }
  *des = static_cast<std::int16_t>(decimals);
  *len = static_cast<std::int16_t>(width);
}

ChartAxis axis_over(float min, float max) {
  ChartAxis axis{min, max, 0.0F, 0, 0, true};
  axis_format(min, max, &axis.len, &axis.des);
  return axis;
}

bool axis_step(float lo, float hi, float* step) {
  *step = kFallbackStep;
  if (!(lo < hi)) return false;
  const double range = hi - lo;
  // In double, so that a step is the float next to a 1-2-5 number: in float the roundings of many factors of
  // ten would add up.
  double candidates[] = {1e-05, 2e-05, 5e-05};
  for (int round = 0; round < kMostRounds; ++round) {
    for (double& s : candidates) {
      const double intervals = range / s;
      if (intervals >= kFewestIntervals && intervals <= kMostIntervals) {
        *step = static_cast<float>(s);
        return true;
      }
      s = intervals <= kMostIntervals ? s / 10.0 : s * 10.0;
    }
  }
  return true;
}

}  // namespace tavd
