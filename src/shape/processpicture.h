// The one shape picture of the process, on which the exported functions act. Tests look at it; nothing that
// reads or draws does.
#pragma once

#include "shape/picture.h"

namespace tavd {

extern ShapeState shp;

}  // namespace tavd
