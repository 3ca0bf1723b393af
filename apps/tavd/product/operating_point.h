// Everything the library answers about a product at one operating point: point_calculator.h.
#pragma once

#include <array>
#include <optional>

#include "product/product.h"
#include "shared/codes.h"
#include "shared/selection.h"

namespace tavdhost {

using Bands = std::array<float, TAVD_BANDS>;  // dB, octave bands from 63 to 8000 Hz
inline constexpr std::array<int, TAVD_BANDS> kBandHz = {63, 125, 250, 500, 1000, 2000, 4000, 8000};

// An answer of the solvers: their code, and what they answered.
struct DamperAnswer {
  int code;
  float position;  // as the maker labels the settings
  float dp;        // total pressure at that position, Pa; given for codes -1, 0 and 1
  bool has_position() const { return hosts::has_position(code); }
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
  float lw_A;        // A-weighted sound power level, dB(A)
  float room_level;  // the same less the room damping, dB(A)
};

using hosts::kRoomDamping;

struct OperatingPoint {
  float qv;                         // l/s, or m/s for products by air velocity
  std::optional<float> dp;          // total pressure asked for, Pa
  bool flow_in_range;               // qv lies within the product's limits
  std::optional<bool> dp_in_range;  // so does dp; none without a pressure
  // Whether the product can have this pressure at this flow; none without a pressure and where the library
  // cannot tell. The levels of a point that cannot be reached are those that the library gives all the same:
  // at the nearest pressure that can be, or on the line beyond it.
  std::optional<bool> reachable;

  int range_code;        // of the pressure range
  float dp_min, dp_max;  // Pa

  std::optional<DamperAnswer> stepless, stepped;  // adjustable dampers
  std::optional<FanAnswer> fan;                   // fans
  std::optional<SoundAnswer> sound;               // products with a sound table
  std::optional<Bands> attenuation;               // products with attenuation data
  std::optional<float> throw_length;              // m, products with throw data
};

// Which questions a product can answer, the same at every point.
struct Answers {
  bool range;         // lowest and highest pressure
  bool position;      // positions of an adjustable damper
  bool fan;           // pressures of a fan
  bool fan_check;     // whether the fan can serve the point
  bool sound;         // sound power and level in the room
  bool attenuation;   // attenuation
  bool throw_length;  // throw length
};

// Without a pressure (`with_dp` false) there is no position and no check of a fan, a sound level only for
// products whose pressure follows from the flow, and no attenuation that goes by the position of a damper.
Answers answers_of(const Product& product, bool with_dp);

}  // namespace tavdhost
