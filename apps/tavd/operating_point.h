// Everything the library answers about a product at one operating point.
#pragma once

#include <array>
#include <optional>

#include "product.h"

namespace tavdhost {

using Bands = std::array<float, TAVD_BANDS>;  // dB, octave bands from 63 to 8000 Hz

// An answer of the solvers: their code, and what they answered.
struct DamperAnswer {
  int code;
  float position;  // as the maker labels the settings
  float dp;        // total pressure at that position, Pa; told for codes -1, 0 and 1
  bool has_position() const { return code >= -1 && code <= 1; }
};

struct FanAnswer {
  int code;                       // of the pressures
  float total;                    // Pa
  float fan_static;               // Pa
  float dynamic;                  // Pa
  std::optional<int> check_code;  // of the operating point; none without a pressure
};

struct SoundAnswer {
  int code;
  Bands lw;          // sound power level, dB
  float room_level;  // dB(A)
};

struct OperatingPoint {
  float qv;                 // l/s, or m/s for products by air velocity
  std::optional<float> dp;  // total pressure asked for, Pa
  bool flow_in_range;       // qv lies within the product's limits

  int range_code;        // of the pressure range
  float dp_min, dp_max;  // Pa

  std::optional<DamperAnswer> stepless, stepped;  // adjustable dampers
  std::optional<FanAnswer> fan;                   // fans
  std::optional<SoundAnswer> sound;               // products with a sound table
  std::optional<Bands> attenuation;               // products with attenuation data
  std::optional<float> throw_length;              // m, products with throw data
};

// Calculates at flow `qv`. Without `dp` there is no position and no check of a fan, and a sound level only
// for products whose pressure follows from the flow.
OperatingPoint calculate(const Product& product, float qv, std::optional<float> dp);

// What the codes mean, in words.
const char* range_text(int code);
const char* damper_text(int code);
const char* fan_text(int code);
const char* fan_check_text(int code);
const char* sound_text(int code);

}  // namespace tavdhost
