// The three drawings of a product, and how the library draws each into a rectangle.
#pragma once

#include <windows.h>

#include <string>

#include "shared/drawings.h"

namespace viewer {

enum class Drawing { kFlow, kThrow, kShape };
inline constexpr Drawing kDrawings[] = {Drawing::kFlow, Drawing::kThrow, Drawing::kShape};
inline constexpr int kDrawingCount = 3;

const hosts::LibraryDrawing& library_drawing(Drawing drawing);

std::wstring name_of(Drawing drawing);

// Draws what the library holds, on white or on paper. The context is left as it was.
void draw(Drawing drawing, HDC hdc, const RECT& target);

}  // namespace viewer
