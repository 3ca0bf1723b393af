// What the codes of the calculations mean, in words; "not calculated" for a code that none of them has.
#pragma once

#include "tavd/tavca.h"

namespace hosts {

// Whether the code of a damper's solver comes with a position: in range, or held at either end.
inline bool has_position(int code) {
  return code >= TAVCA_POS_BELOW_TABLE && code <= TAVCA_POS_ABOVE_TABLE;
}

const char* range_text(int code);      // of tavca_minmaxdptot
const char* damper_text(int code);     // of tavca_damper_pos and tavca_damper_pos_fixed
const char* fan_text(int code);        // of tavca_fan_dp
const char* fan_check_text(int code);  // of tavca_fan_op_check
const char* sound_text(int code);      // of tavca_lw

}  // namespace hosts
