// How the charts of sheets look: weights in mm, colours, dashes. Families of curves differ by dash and
// weight, so that a black and white print tells them apart; the grid is lighter and thinner than any curve.
#pragma once

#include "sheet/chart/chart_curves.h"
#include "sheet/painter.h"

namespace tavdhost {

inline constexpr std::uint32_t kWhite = 0xFFFFFF;  // 0x00BBGGRR
inline constexpr std::uint32_t kInk = 0x000000;
inline constexpr std::uint32_t kDutyColour = 0x9A3A00;
inline constexpr std::uint32_t kLevelColour = 0x2000A8;
inline constexpr std::uint32_t kOutside = 0xF1F1F1;  // of the limits

inline constexpr LineStyle kMinorGrid = {0.06, 0xDCDCDC};
inline constexpr LineStyle kMajorGrid = {0.11, 0xBEBEBE};
inline constexpr LineStyle kFrameLine = {0.18, 0x404040};

inline constexpr double kLimitDashes[] = {2.6, 0.7, 0.6, 0.7};
inline constexpr double kLevelDashes[] = {1.9, 0.9};
inline constexpr double kFanLimitDashes[] = {3.2, 1.0};
inline constexpr double kDutyDashes[] = {0.4, 0.7};
inline constexpr double kThrowDashes[] = {2.4, 1.0};

inline constexpr LineStyle kLimitLine = {0.26, 0x505050, kLimitDashes};
inline constexpr LineStyle kDutyLine = {0.24, kDutyColour, kDutyDashes};
inline constexpr LineStyle kDutyRing = {0.4, kDutyColour};
inline constexpr LineStyle kFlagFrame = {0.15, kDutyColour};
inline constexpr double kDutyRadius = 1.25;  // mm
inline constexpr double kMarkRadius = 0.75;  // mm, of a level on a curve

// Letters, mm of their em.
inline constexpr double kChartLetters = 2.6;
inline constexpr double kLabelLetters = 2.5;
inline constexpr double kSmallLabelLetters = 2.0;
inline constexpr double kSubscript = 0.72;  // of the letters about it

// The line of a curve: settings between whole numbers are lighter, and throw lines of values that are not
// chosen.
inline LineStyle line_of(CurveFamily family, bool is_minor) {
  switch (family) {
    case CurveFamily::kResistance:
    case CurveFamily::kFan:
      return {0.5, kInk};
    case CurveFamily::kPosition:
      return is_minor ? LineStyle{0.17, 0x484848} : LineStyle{0.3, kInk};
    case CurveFamily::kLevel:
      return {0.36, kLevelColour, kLevelDashes};
    case CurveFamily::kFanLimit:
      return {0.26, 0x303030, kFanLimitDashes};
    default:
      return is_minor ? LineStyle{0.22, 0x303030, kThrowDashes} : LineStyle{0.5, kInk};
  }
}

}  // namespace tavdhost
