// A second opinion on the level search of the flow diagram: written down plainly from its description, step
// by step, every probe from scratch. The tests hold it against the library's bit for bit, and the benchmarks
// take it as the yardstick of speed.
#pragma once

#include <cstdint>

namespace transcription {

struct LevelSearchRow {
  std::int16_t group;
  float val;
  float lw[8];  // dB
};

// The `val` of group g at which the level is L dB(A) in a room that takes `roomdamp` dB, or 0. A course that
// would never end gives 0.
float lp_find(int n, const LevelSearchRow* rows, float L, int g, float roomdamp);

}  // namespace transcription
