// The screen, the cursor and the system's colours.
#include <iterator>

#include "tavdgui/tavdgui.h"

namespace {

struct Pair {
  std::int32_t x, y;
};

Pair screen_size = {1920, 1080};
Pair cursor_place = {0, 0};

// Dialog units are a quarter and an eighth of these.
constexpr Pair kDialogBaseUnits = {8, 16};

// Written red first; the interface has red in the lowest byte.
constexpr std::uint32_t from_rgb(std::uint32_t rgb) {
  return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

// The colours of an unchanged desktop, by system colour index.
constexpr std::uint32_t kSystemColours[] = {
    0xC8C8C8,  // 0 scroll bar
    0x000000,  // 1 desktop
    0x99B4D1,  // 2 caption of the active window
    0xBFCDDB,  // 3 caption of an inactive window
    0xF0F0F0,  // 4 menu
    0xFFFFFF,  // 5 window
    0x646464,  // 6 window frame
    0x000000,  // 7 menu text
    0x000000,  // 8 window text
    0x000000,  // 9 caption text
    0xB4B4B4,  // 10 border of the active window
    0xF4F7FC,  // 11 border of an inactive window
    0xABABAB,  // 12 background of document windows
    0x0078D7,  // 13 selected item
    0xFFFFFF,  // 14 text of a selected item
    0xF0F0F0,  // 15 face of buttons and dialogs
    0xA0A0A0,  // 16 shadow of buttons
    0x6D6D6D,  // 17 greyed text
    0x000000,  // 18 button text
    0x000000,  // 19 caption text of an inactive window
    0xFFFFFF,  // 20 lit edge of buttons
    0x696969,  // 21 dark shadow of buttons
    0xE3E3E3,  // 22 light edge of buttons
    0x000000,  // 23 text of a hint
    0xFFFFE1,  // 24 background of a hint
    0x000000,  // 25 not used
    0x0066CC,  // 26 link
    0xB9D1EA,  // 27 far end of an active caption
    0xD7E4F2,  // 28 far end of an inactive caption
    0x0078D7,  // 29 selected menu item
    0xF0F0F0,  // 30 menu bar
};

void hand_out(Pair pair, std::int32_t* x, std::int32_t* y);

}  // namespace

void tgui_set_screen(int32_t width, int32_t height) {
  if (width > 0 && height > 0) {
    screen_size = {width, height};
  }
}

void tgui_screen(int32_t* width, int32_t* height) {
  hand_out(screen_size, width, height);
}

void tgui_set_cursor(int32_t x, int32_t y) {
  cursor_place = {x, y};
}

void tgui_cursor(int32_t* x, int32_t* y) {
  hand_out(cursor_place, x, y);
}

uint32_t tgui_system_colour(int32_t index) {
  return index < 0 || index >= static_cast<std::int32_t>(std::size(kSystemColours))
             ? 0
             : from_rgb(kSystemColours[index]);
}

void tgui_dialog_base_units(int32_t* x, int32_t* y) {
  hand_out(kDialogBaseUnits, x, y);
}

namespace {

void hand_out(Pair pair, std::int32_t* x, std::int32_t* y) {
  if (x != nullptr) {
    *x = pair.x;
  }
  if (y != nullptr) {
    *y = pair.y;
  }
}

}  // namespace
