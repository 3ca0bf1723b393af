// One page about a product: title, diagrams, sketch and results.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "drawing/drawings.h"
#include "model/results.h"

namespace viewer {

struct PageContents {
  std::wstring title, subtitle;
  std::vector<ResultLine> lines;
  std::array<bool, kDrawingCount> drawn;
};

// Draws the page into a rectangle of device units that are as high as they are wide.
void draw_page(HDC hdc, const RECT& area, const PageContents& contents);

}  // namespace viewer
