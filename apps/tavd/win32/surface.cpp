#include "surface.h"

#include <algorithm>

namespace tavdhost {
namespace {

LONG width_of(const Area& area) {
  return area.right - area.left;
}

LONG height_of(const Area& area) {
  return area.bottom - area.top;
}

void draw_frame(HDC hdc, const Area& window, std::uint32_t colour) {
  const HPEN pen = CreatePen(PS_SOLID, 1, colour);
  const HGDIOBJ former = SelectObject(hdc, pen);
  MoveToEx(hdc, window.left, window.top, nullptr);
  LineTo(hdc, window.right, window.top);
  LineTo(hdc, window.right, window.bottom);
  LineTo(hdc, window.left, window.bottom);
  LineTo(hdc, window.left, window.top);
  SelectObject(hdc, former);
  DeleteObject(pen);
}

}  // namespace

void draw_placed(HDC hdc, const Placed& placed, POINT origin, int fineness) {
  const LibraryDrawing& drawing = placed.drawing;
  const int saved = SaveDC(hdc);
  SetMapMode(hdc, MM_ANISOTROPIC);
  SetWindowOrgEx(hdc, 0, 0, nullptr);
  SetWindowExtEx(hdc, drawing.plane_width, drawing.plane_height, nullptr);
  SetViewportOrgEx(hdc, (placed.place.left - origin.x) * fineness, (placed.place.top - origin.y) * fineness,
                   nullptr);
  SetViewportExtEx(hdc, width_of(placed.place) * fineness, height_of(placed.place) * fineness, nullptr);
  SetBkMode(hdc, TRANSPARENT);
  if (placed.cell != nullptr) {
    const Area& window = placed.cell->window;
    const int inner = SaveDC(hdc);
    IntersectClipRect(hdc, window.left, window.top, window.right, window.bottom);
    drawing.draw(hdc);
    RestoreDC(hdc, inner);
    if (placed.cell->frame) draw_frame(hdc, window, *placed.cell->frame);
  } else {
    drawing.draw(hdc);
  }
  RestoreDC(hdc, saved);
}

Area covered(const Placed& placed, PictureSize size) {
  if (placed.cell == nullptr) return {0, 0, size.width, size.height};
  constexpr LONG kEdge = 2;  // pixels, for the width of lines on the window's edge
  const Area& window = placed.cell->window;
  const auto x = [&](LONG logical, LONG edge) {
    const LONG at =
        placed.place.left + MulDiv(logical, width_of(placed.place), placed.drawing.plane_width) + edge;
    return std::clamp<std::int32_t>(at, 0, size.width);
  };
  const auto y = [&](LONG logical, LONG edge) {
    const LONG at =
        placed.place.top + MulDiv(logical, height_of(placed.place), placed.drawing.plane_height) + edge;
    return std::clamp<std::int32_t>(at, 0, size.height);
  };
  return {x(window.left, -kEdge), y(window.top, -kEdge), x(window.right, kEdge), y(window.bottom, kEdge)};
}

}  // namespace tavdhost
