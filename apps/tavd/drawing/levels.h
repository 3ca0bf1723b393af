// Lines of equal sound level that a picture shows well, for pictures whose levels nobody has asked for.
#pragma once

#include "drawing/picture.h"

namespace tavdhost {

// The lowest level of a damper's lines and the step between them at which no label stands on another text or
// beside the diagram, dB(A); 0: what the diagram chooses by itself, also where nothing else is better.
struct Levels {
  float lowest, step;
};

class OwnFlowDiagram;

// Of a diagram that is to be as large as this; it has one levels or others afterwards.
Levels legible_levels(OwnFlowDiagram& diagram, PictureSize size);

}  // namespace tavdhost
