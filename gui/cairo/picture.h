// What stands behind a surface, and how the operations of libtavdgui draw on it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "gui/cairo/canvas.h"
#include "gui/cairo/measuring_canvas.h"
#include "tavdgui/tavdgui.h"

namespace tavdcairo {

// A pen that the host has named, known by its look until one of that look draws.
struct NamedPen {
  std::uint32_t colour;  // 0x00BBGGRR
  int width;             // logical units
  std::string name;
  const tgui_object* pen = nullptr;  // the one that took the name
};

// The picture behind a surface: its canvas, where it goes, the line that is being drawn, and the group that
// what is drawn stands in.
struct Picture {
  std::unique_ptr<Measured> measured;  // null: a picture that is drawn
  std::unique_ptr<Canvas> canvas;
  std::string path;  // empty: no file
  std::vector<Point> line;
  Stroke line_stroke = {};
  std::vector<NamedPen> named_pens;
  std::string group;             // empty: none
  bool lacks_something = false;  // memory ran out for a part of it, and it is never written
};

// Draws a part of a picture, or has the picture remember that it lacks one.
template <typename Draw>
void or_lacks(Picture& picture, Draw draw) {
  try {
    draw();
  } catch (...) {
    picture.lacks_something = true;
  }
}

// Draws the line that may still go on.
void flush(Picture& picture);

// Enters what draws on a surface whose context is a Picture.
void add_drawing(tgui_operations& operations);

}  // namespace tavdcairo
