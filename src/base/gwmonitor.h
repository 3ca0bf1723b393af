// A small tool window that shows how many arrays are initialised and not yet released, for whoever hunts a
// leak. Nothing in the library opens it.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

// Opens the monitor at (x, y) of the screen. Arrays are counted from here on until the window is destroyed:
// arrays that lived before let the count fall below 0.
void gwarray_monitor_open(tavd_hmodule instance, std::int32_t x, std::int32_t y);
// Shows `n`.
void gwarray_monitor_update(std::int32_t n);
// The window, null while the monitor is closed.
tavd_hwnd gwarray_monitor_window();

}  // namespace tavd
