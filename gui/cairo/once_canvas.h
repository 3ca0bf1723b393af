// A canvas that leaves out what it drew a moment ago.
#pragma once

#include <memory>

#include "gui/cairo/canvas.h"

namespace tavdcairo {

// Charts draw a tick that ends one decade and starts the next twice in the same place. Without antialiasing
// that shows as one; with it the second stroke makes text and lines look bolder than their neighbours.
std::unique_ptr<Canvas> make_once_canvas(std::unique_ptr<Canvas> canvas);

}  // namespace tavdcairo
