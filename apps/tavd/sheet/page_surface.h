// A page to draw on in millimetres, over any surface of libtavdgui: PDF, SVG, pixels or a recording. It keeps what
// room each text has and takes, so that nobody has to look whether one leaves its box.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sheet/layout.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {

inline constexpr int kUnitsPerMm = 50;  // logical units of a page: positions and widths are whole ones

struct TextLook {
  double size;  // of the em, mm
  bool bold = false;
  std::uint32_t colour = 0x000000;  // 0x00BBGGRR
};

enum class Side { kLeft, kCentre, kRight };

struct PlacedText {
  std::string text;
  Box room;   // that it may take, mm
  Box taken;  // its cell
};

class PageSurface {
 public:
  // The surface, which outlives this, is a whole page of so many device units.
  PageSurface(tgui_surface* surface, int width, int height);
  ~PageSurface();
  PageSurface(const PageSurface&) = delete;
  PageSurface& operator=(const PageSurface&) = delete;

  // One line whose cell begins at the top of the box, at one of its sides or in its middle.
  void text(const Box& box, const std::string& utf8, const TextLook& look, Side side);
  // How wide a line is, mm.
  static double width_of(const std::string& utf8, const TextLook& look);

  // A filled box, without an outline.
  void fill(const Box& box, std::uint32_t colour);

  // For drawings that have logical units of their own.
  tgui_surface* surface() const { return surface_; }
  // The page's device units at a place of it.
  double device_x(double mm) const { return mm * width_ / kSheetWidth; }
  double device_y(double mm) const { return mm * height_ / kSheetHeight; }

  const std::vector<PlacedText>& texts() const { return texts_; }

 private:
  tgui_surface* surface_;
  int width_, height_;
  int saved_;
  std::vector<PlacedText> texts_;
};

}  // namespace tavdhost
