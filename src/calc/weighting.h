// The weighting of octave bands that makes one level of them.
#pragma once

#include "tavd/flowdata.h"

namespace tavd {

// A-weighting at the octave mid-frequencies, dB (IEC 61672-1).
constexpr float kAWeighting[TAVD_BANDS] = {-26.2F, -16.1F, -8.6F, -3.2F, 0.0F, 1.2F, 1.0F, -1.1F};

}  // namespace tavd
