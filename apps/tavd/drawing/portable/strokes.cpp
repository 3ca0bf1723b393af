// Counting what a drawing consists of.
#include <optional>

#include "drawing/picture.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {
namespace {

struct Count {
  std::optional<hosts::PenName> pen;  // nothing: all count
  Strokes strokes;
};

// Whether the selected pen is the one that is asked for.
bool counts(const Count& count, const tgui_surface* surface) {
  if (!count.pen) return true;
  tgui_state state = {};
  tgui_object_info pen = {};
  tgui_surface_state(surface, &state);
  tgui_get_object(state.pen, &pen);
  return pen.colour == count.pen->colour && pen.width == count.pen->width;
}

void line_to(void* context, tgui_surface* surface, int32_t /*x1*/, int32_t /*y1*/, int32_t /*x2*/,
             int32_t /*y2*/) {
  Count& count = *static_cast<Count*>(context);
  if (counts(count, surface)) ++count.strokes.lines;
}

void ellipse(void* context, tgui_surface* surface, int32_t /*left*/, int32_t /*top*/, int32_t /*right*/,
             int32_t /*bottom*/) {
  Count& count = *static_cast<Count*>(context);
  if (counts(count, surface)) ++count.strokes.ellipses;
}

Strokes counted(const hosts::LibraryDrawing& drawing, Count count) {
  tgui_operations operations = {};
  operations.size = sizeof operations;
  operations.line_to = line_to;
  operations.ellipse = ellipse;
  tgui_surface* const surface =
      tgui_surface_create(&operations, &count, drawing.plane_width, drawing.plane_height);
  drawing.create_tools();
  drawing.draw(surface);
  drawing.destroy_tools();
  tgui_surface_destroy(surface);
  return count.strokes;
}

}  // namespace

Strokes strokes(const hosts::LibraryDrawing& drawing) {
  return counted(drawing, {});
}

Strokes strokes(const hosts::LibraryDrawing& drawing, const hosts::PenName& pen) {
  return counted(drawing, {pen, {}});
}

}  // namespace tavdhost
