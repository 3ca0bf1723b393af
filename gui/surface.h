// Surfaces and their drawing state.
#pragma once

#include <cstdint>
#include <vector>

#include "gui/objects.h"
#include "tavdgui/tavdgui.h"

namespace tgui {

// The state of a device context that was just made.
struct State {
  Hold pen{stock(TGUI_BLACK_PEN)};
  Hold brush{stock(TGUI_WHITE_BRUSH)};
  Hold font{stock(TGUI_SYSTEM_FONT)};
  std::uint32_t text_align = TGUI_TA_LEFT | TGUI_TA_TOP;
  std::uint32_t text_colour = 0;
  std::int32_t background_mode = TGUI_OPAQUE;
  std::int32_t map_mode = TGUI_MM_TEXT;
  std::int32_t window_org[2] = {0, 0};
  std::int32_t window_ext[2] = {1, 1};
  std::int32_t viewport_org[2] = {0, 0};
  std::int32_t viewport_ext[2] = {1, 1};
  std::int32_t position[2] = {0, 0};
};

// What a surface had before a window began to paint on it. `painter` is the serial number of the window.
struct PaintFrame {
  std::uint64_t painter;
  State state;
  std::vector<State> saved;
};

// Gives the surface a fresh state and an empty stack of saved ones for a window's painting, and brings back
// what was there. Ending a painting ends those that began after it; ending one that never began does nothing.
void begin_paint(tgui_surface* surface, std::uint64_t painter);
void end_paint(tgui_surface* surface, std::uint64_t painter);

}  // namespace tgui

struct tgui_surface {
  tgui_operations operations;
  void* context;
  std::int32_t width, height;
  tgui::State state;
  std::vector<tgui::State> saved;
  std::vector<tgui::PaintFrame> frames;
};
