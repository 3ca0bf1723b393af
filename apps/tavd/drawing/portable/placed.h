// A drawing of the library at a place of a surface.
#pragma once

#include "drawing/area.h"
#include "shared/drawings.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {

// With its plane at the place, device units: as a window of the drawing's class draws.
void draw_placed(const hosts::LibraryDrawing& drawing, tgui_surface* surface, const Area& place);

}  // namespace tavdhost
