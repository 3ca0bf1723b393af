#include "drawing/drawings.h"

#include <algorithm>
#include <cstddef>

#include "model/database.h"

namespace viewer {
namespace {

// In the order of the enumeration.
constexpr const hosts::LibraryDrawing* kLibraryDrawings[kDrawingCount] = {
    &hosts::kFlowDrawing, &hosts::kThrowDrawing, &hosts::kShapeDrawing};

// The part of the rectangle that the plane fills, from its upper edge on.
RECT fitted(const hosts::LibraryDrawing& drawing, const RECT& target) {
  if (!drawing.keeps_proportions) return target;
  const int width = static_cast<int>(target.right - target.left);
  const int height = static_cast<int>(target.bottom - target.top);
  const int fit_width = std::min(width, MulDiv(height, drawing.plane_width, drawing.plane_height));
  const int fit_height = std::min(height, MulDiv(width, drawing.plane_height, drawing.plane_width));
  const LONG left = target.left + (width - fit_width) / 2;
  return {left, target.top, left + fit_width, target.top + fit_height};
}

}  // namespace

const hosts::LibraryDrawing& library_drawing(Drawing drawing) {
  return *kLibraryDrawings[static_cast<std::size_t>(drawing)];
}

std::wstring name_of(Drawing drawing) {
  return wide(library_drawing(drawing).name);
}

void draw(Drawing drawing, HDC hdc, const RECT& target) {
  const hosts::LibraryDrawing& library = library_drawing(drawing);
  const RECT part = fitted(library, target);
  const int saved = SaveDC(hdc);
  SetMapMode(hdc, MM_ANISOTROPIC);
  SetWindowOrgEx(hdc, 0, 0, nullptr);
  SetWindowExtEx(hdc, library.plane_width, library.plane_height, nullptr);
  SetViewportOrgEx(hdc, static_cast<int>(part.left), static_cast<int>(part.top), nullptr);
  SetViewportExtEx(hdc, static_cast<int>(part.right - part.left), static_cast<int>(part.bottom - part.top),
                   nullptr);
  SetBkMode(hdc, TRANSPARENT);
  library.create_tools();
  library.draw(hdc);
  RestoreDC(hdc, saved);  // tools may still be selected, and are deleted only when they are not
  library.destroy_tools();
}

}  // namespace viewer
