// The curves of a product as numbers, exact answers of the library at each point: what charts draw and what
// is handed over as data.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tavd/flowdata.h"

namespace tavdhost {

// What is drawn about the duty; numbers that are not there are 0.
struct ChartDuty {
  float qv = 0;                        // l/s, or m/s for products by air velocity
  float dp = 0;                        // Pa
  float level = 0;                     // in the room, dB(A)
  std::optional<float> position = {};  // of a damper
};

enum class CurveFamily {
  kResistance,  // pressure of a product without settings
  kPosition,    // of a damper: `value` is the setting
  kLevel,       // equal sound level in the room: `value` in dB(A)
  kFan,         // total pressure of a fan
  kFanLimit,    // the system lines through the ends of a fan's curve
  kThrow        // throw length; `name` is the parameter value, where the line is of one
};

// The name of a family in data: "resistance", "position", ...
const char* family_name(CurveFamily family);

struct CurvePoint {
  double x;  // flow, l/s, or velocity, m/s
  double y;  // pressure, Pa, or throw length, m
};

struct ChartCurve {
  CurveFamily family;
  double value;      // of kPosition and kLevel
  std::string name;  // of kThrow: the parameter value
  std::vector<CurvePoint> points;
};

// A point on a curve at which a sound level is reached, for products whose pressure follows from the flow.
struct LevelMark {
  double level;  // dB(A)
  CurvePoint point;
};

// Pressure over flow. Curves stay within the limits of the product.
struct FlowCurves {
  bool is_velocity = false;
  bool is_linear = false;  // axes from 0, of fans; others are logarithmic
  double qv_min = 0, qv_max = 0, dp_min = 0,
         dp_max = 0;  // limits of the product; with no area: nothing can be drawn
  std::vector<ChartCurve> curves;
  std::vector<LevelMark> marks;
  bool takes_any_pressure = false;  // within the limits, so that it has no curve of its own
  bool can_draw() const {
    constexpr double kMost = 1e12;  // Pa, l/s: beyond it are no products
    const bool has_low_ends = is_linear ? qv_min >= 0 && dp_min >= 0 : qv_min > 0 && dp_min > 0;
    return has_low_ends && qv_max > qv_min && dp_max > dp_min && qv_max < kMost && dp_max < kMost;
  }
};

// Of a record as sheets calculate it: parameters chosen, the end reflection taken off or not. `duct` is the
// size that sound levels hold for, null for none; `room_damping` in dB.
FlowCurves flow_curves(const FlowData& flow, const DuctSize* duct, float room_damping);

// Throw length over flow.
struct ThrowCurves {
  double qv_min = 0, qv_max = 0, length_min = 0, length_max = 0;
  std::vector<ChartCurve> curves;  // the line that counts is the first
  bool can_draw() const {
    constexpr double kMost = 1e12;  // l/s, m
    const bool has_low_ends = qv_min > 0 && length_min > 0;
    return has_low_ends && qv_max > qv_min && length_max > length_min && qv_max < kMost && length_max < kMost;
  }
};

// By the chosen value of the parameter that selects the line, the first line where none is chosen; the lines
// of the other values stand behind it.
ThrowCurves throw_curves(const FlowData& flow);

}  // namespace tavdhost
