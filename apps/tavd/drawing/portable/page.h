// A page of paper with a drawing on it: A4 upright or across, with margins, and what the drawing shows in
// words above it.
#pragma once

#include "drawing/area.h"
#include "drawing/picture.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {

// A PDF of one page, upright for a picture that is higher than wide; null if memory ran out.
tgui_surface* page_surface(const char* path, PictureSize size);

// Where on a page a picture of this size stands, device units: as large as there is room for below what lies
// above `top`.
Area place_on_page(PictureSize size, int top);
// The upper margin of the page, device units.
int top_margin();

// Writes the words at the top of the page; returns where they end.
int write_heading(tgui_surface* surface, PictureSize size, const DrawingText& text);

}  // namespace tavdhost
