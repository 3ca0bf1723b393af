// A surface that draws on a part of another one.
#pragma once

#include "drawing/area.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {

// Draws on `target` in its coordinates, but of lines only what lies in `window`, logical units, and of texts
// those whose reference point does; figures are drawn whole. Null if memory ran out. The caller destroys it,
// before the target.
tgui_surface* cut_surface(tgui_surface* target, Area window);

}  // namespace tavdhost
