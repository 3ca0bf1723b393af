// Resolution of the display that a window stands on, and the font of its controls.
#pragma once

#include <windows.h>

namespace viewer {

// Dots per inch of the window's display, 96 and up; of the system's where the platform knows no other.
int dpi_of(HWND window);

// Pixels, at `dpi`, of a length given in pixels at 96 dots per inch.
int scaled(int pixels, int dpi);

// The user's own font of messages, made for a resolution.
class UiFont {
 public:
  UiFont() = default;
  ~UiFont();
  UiFont(const UiFont&) = delete;
  UiFont& operator=(const UiFont&) = delete;

  void make(int dpi);
  HFONT handle() const { return font_; }
  int line_height() const { return line_height_; }  // pixels

 private:
  HFONT font_ = nullptr;
  int line_height_ = 0;
};

}  // namespace viewer
