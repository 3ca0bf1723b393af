#include "drawings.h"

#include <algorithm>
#include <cstddef>

#include "tavd/L2dg.h"
#include "tavd/tavdg.h"
#include "tavd/tavdshapepic.h"

namespace viewer {
namespace {

struct DrawingCalls {
  DrawingKind kind;
  void (*create_tools)();
  void (*draw)(HDC);
  void (*destroy_tools)();
};

// In the order of the enumeration.
constexpr DrawingCalls kCalls[kDrawingCount] = {
    {{L"Flow diagram", TAVDG_WINDOW_CLASS, "TavdViewerFlow", tavdg_diagram_proc, TAVDG_EXTENT, TAVDG_EXTENT,
      true},
     tavdg_create_drawing_tools,
     tavdg_draw_diagram,
     tavdg_destroy_drawing_tools},
    {{L"Throw length diagram", L2DG_WINDOW_CLASS, "TavdViewerThrow", L2dg_diagram_proc, L2DG_EXTENT,
      L2DG_EXTENT, true},
     L2dg_create_drawing_tools,
     L2dg_draw_diagram,
     L2dg_destroy_drawing_tools},
    {{L"Sketch", TAVDSHAPEPIC_WINDOW_CLASS, "TavdViewerShape", tavdshapepic_picproc, TAVDSHAPEPIC_WIDTH,
      TAVDSHAPEPIC_HEIGHT, false},
     tavdshapepic_create_drawing_tools,
     tavdshapepic_draw,
     tavdshapepic_destroy_drawing_tools},
};

const DrawingCalls& calls_of(Drawing drawing) {
  return kCalls[static_cast<std::size_t>(drawing)];
}

// The part of the rectangle that the plane fills, from its upper edge on.
RECT fitted(const DrawingKind& kind, const RECT& target) {
  if (kind.stretched) return target;
  const int width = static_cast<int>(target.right - target.left);
  const int height = static_cast<int>(target.bottom - target.top);
  const int fit_width = std::min(width, MulDiv(height, kind.width, kind.height));
  const int fit_height = std::min(height, MulDiv(width, kind.height, kind.width));
  const LONG left = target.left + (width - fit_width) / 2;
  return {left, target.top, left + fit_width, target.top + fit_height};
}

}  // namespace

const DrawingKind& kind_of(Drawing drawing) {
  return calls_of(drawing).kind;
}

void draw(Drawing drawing, HDC hdc, const RECT& target) {
  const DrawingCalls& calls = calls_of(drawing);
  const RECT part = fitted(calls.kind, target);
  const int saved = SaveDC(hdc);
  SetMapMode(hdc, MM_ANISOTROPIC);
  SetWindowOrgEx(hdc, 0, 0, nullptr);
  SetWindowExtEx(hdc, calls.kind.width, calls.kind.height, nullptr);
  SetViewportOrgEx(hdc, static_cast<int>(part.left), static_cast<int>(part.top), nullptr);
  SetViewportExtEx(hdc, static_cast<int>(part.right - part.left), static_cast<int>(part.bottom - part.top),
                   nullptr);
  SetBkMode(hdc, TRANSPARENT);
  calls.create_tools();
  calls.draw(hdc);
  RestoreDC(hdc, saved);  // tools may still be selected, and are deleted only when they are not
  calls.destroy_tools();
}

}  // namespace viewer
