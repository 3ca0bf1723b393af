// What a flow diagram shows beside the product.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/picture.h"

namespace tavdhost {

// A text for one damper position.
struct PositionLabel {
  float position;
  std::string text;  // windows-1252, percent signs doubled
};

// As the library takes it. Left as it stands: l/s, Pa, nothing marked.
struct DiagramSettings {
  PictureSize size = {};
  std::int16_t xunit = 0, yunit = 0;       // numbers of units.h
  float qv = 0;                            // 0: no operating point
  float dp = 0;                            // 0: the flow alone is marked
  float qvlimit1 = 0, qvlimit2 = 0;        // 0: no limits
  float lpmin = 0, lpmax = 0, lpstep = 0;  // dB(A); 0: as the diagram chooses
  std::vector<PositionLabel> a_labels = {};
  std::vector<std::string> parameters = {};  // NAME=VALUE
};

}  // namespace tavdhost
