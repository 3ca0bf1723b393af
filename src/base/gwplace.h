// Where a dialog of the library comes up on the screen.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

// Each moves `window`, keeps its size and its place in the z-order, and keeps it on the screen: 10 from
// the left, upper and right edge, 30 from the lower one. On a screen that is too small the right and lower
// edge win.
void gwwnd_to_cursor(tavd_hwnd window, std::int32_t dx, std::int32_t dy);  // cursor position plus (dx, dy)
void gwwnd_center_on_cursor(tavd_hwnd window);
void gwwnd_center(tavd_hwnd window);  // over the parent, or the screen if it has none

}  // namespace tavd
