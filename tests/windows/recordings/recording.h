// Where the drawings are recorded: the one thing that differs from system to system. emf.cpp draws through
// GDI into an enhanced metafile and reads its records, surface.cpp draws on a recording surface of
// libtavdgui.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "tavd/types.h"

namespace recordings {

// The module that registers the window classes.
tavd_hmodule module();

// What `draw` does on a fresh device context, a line for each operation, as docs/recording.md tells.
std::string drawn(const std::function<void(tavd_hdc)>& draw);

using WindowProcedure = std::intptr_t (*)(tavd_hwnd, unsigned, std::uintptr_t, std::intptr_t);

// What the procedure does on WM_PAINT in a window with a client area of so many pixels.
std::string painted(WindowProcedure procedure, int width, int height);

}  // namespace recordings
