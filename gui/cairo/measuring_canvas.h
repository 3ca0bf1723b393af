// A canvas that draws nothing and keeps how far what it is given reaches.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "gui/cairo/canvas.h"
#include "tavdgui/tavdcairo.h"

namespace tavdcairo {

// Boxes in device units.
struct Measured {
  std::optional<tgui_box> ink;  // about everything: lines with their widths, figures, cells of texts
  std::vector<tgui_box> texts;  // cells of texts, in the order in which they were drawn
};

// `measured` outlives the canvas.
std::unique_ptr<Canvas> make_measuring_canvas(Measured& measured);

}  // namespace tavdcairo
