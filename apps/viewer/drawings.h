// The three drawings of a product, and how the library draws each into a rectangle.
#pragma once

#include <windows.h>

#include <span>

namespace viewer {

enum class Drawing { kFlow, kThrow, kShape };
inline constexpr Drawing kDrawings[] = {Drawing::kFlow, Drawing::kThrow, Drawing::kShape};
inline constexpr int kDrawingCount = 3;

struct DrawingKind {
  const wchar_t* name;        // as a heading
  const char* library_class;  // window class that the library registers
  const char* own_class;      // ours, with the library's procedure, where the platform refused that one
  WNDPROC procedure;
  int width, height;  // of the logical plane
  bool stretched;     // to the rectangle; otherwise it keeps its proportions and stands in the middle of the
                      // width
};

const DrawingKind& kind_of(Drawing drawing);

// Draws what the library holds, on white or on paper. The context is left as it was.
void draw(Drawing drawing, HDC hdc, const RECT& target);

}  // namespace viewer
