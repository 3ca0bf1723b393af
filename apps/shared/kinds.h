// Kinds of products: what they are in words, and which questions they answer.
#pragma once

#include <cstdint>

#include "tavd/flowdata.h"

namespace hosts {

// Such as "adjustable damper"; null for a number that is no kind.
const char* kind_name(std::int16_t kind);

// Dampers have positions, fans a curve.
bool is_damper(const FlowData& flow);
bool is_fan(const FlowData& flow);

// Whether the pressure, and with it the sound level, follows from the flow alone.
bool has_fixed_pressure(const FlowData& flow);

}  // namespace hosts
