// How the charts of sheets tell what they tell: words, units and numbers of the language. A chart has no
// words of its own but the symbols of quantities, which are the same in all languages.
#pragma once

#include <string>

#include "shared/units.h"

namespace tavdhost {

inline constexpr double kRow = 3.6;  // mm, of a line of text in any script

// A unit of an axis, and how the language writes it.
struct ChartUnit {
  const hosts::Unit* unit;
  std::string sign;
};

// A quantity has one unit on the near side of the chart, and perhaps another on the far one.
struct ChartUnits {
  ChartUnit near_side;
  ChartUnit far_side = {nullptr, ""};  // null: none
};

// UTF-8, without numbers, units or colons.
struct ChartTexts {
  // Names of the axes.
  std::string flow, velocity, pressure, throw_length, octave_band, sound_power;
  // Names of the curves.
  std::string curve;       // a product's pressure over its flow
  std::string fan_curve;   // what a fan delivers
  std::string fan_limits;  // of the field in which a fan works
  std::string position;    // settings of a damper
  std::string level;       // sound level in the room
  std::string throw_line;
  std::string limits;   // of the product
  std::string point;    // the duty
  std::string total_A;  // the bar of the A-weighted sum, such as "A"
  // Stands in the middle of a chart that has no curve: a product that takes any pressure in its limits.
  std::string any_pressure;
  // And of a chart that cannot be drawn.
  std::string no_data;
};

struct ChartForm {
  ChartTexts texts;
  ChartUnits flow;  // for products by air velocity `velocity` counts
  ChartUnits velocity;
  ChartUnits pressure;
  std::string decibel, decibel_A, hertz, metre;  // signs of units
  char decimal = '.';                            // sign between a number and its decimals
  bool right_to_left = false;                    // the words; axes run as they always do

  // Between a name and its unit.
  std::string comma() const { return right_to_left ? "،" : ","; }
};

}  // namespace tavdhost
