#include "drawing/portable/cut_surface.h"

#include <optional>

namespace tavdhost {
namespace {

struct Cut {
  tgui_surface* target;
  Area window;
};

const Cut& cut(void* context) {
  return *static_cast<const Cut*>(context);
}

void line_to(void* context, tgui_surface* /*surface*/, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  const auto& [target, window] = cut(context);
  const std::optional<Line> part = cut_line({x1, y1, x2, y2}, window);
  if (!part) return;
  tgui_move_to(target, part->x1, part->y1);
  tgui_line_to(target, part->x2, part->y2);
}

// Only selecting takes an object that may be changed, and it does not change it.
void select(void* context, tgui_surface* /*surface*/, const tgui_object* object) {
  tgui_select(cut(context).target, const_cast<tgui_object*>(object));
}

void text_align(void* context, tgui_surface* /*surface*/, uint32_t align) {
  tgui_set_text_align(cut(context).target, align);
}

void background_mode(void* context, tgui_surface* /*surface*/, int32_t mode) {
  tgui_set_background_mode(cut(context).target, mode);
}

void ellipse(void* context, tgui_surface* /*surface*/, int32_t left, int32_t top, int32_t right,
             int32_t bottom) {
  tgui_ellipse(cut(context).target, left, top, right, bottom);
}

void arc(void* context, tgui_surface* /*surface*/, int32_t left, int32_t top, int32_t right, int32_t bottom,
         int32_t xs, int32_t ys, int32_t xe, int32_t ye) {
  tgui_arc(cut(context).target, left, top, right, bottom, xs, ys, xe, ye);
}

void text_colour(void* context, tgui_surface* /*surface*/, uint32_t colour) {
  tgui_set_text_colour(cut(context).target, colour);
}

void text(void* context, tgui_surface* /*surface*/, int32_t x, int32_t y, const char* text, int32_t length) {
  const auto& [target, window] = cut(context);
  if (window.holds(x, y)) tgui_text(target, x, y, text, length);
}

void textw(void* context, tgui_surface* /*surface*/, int32_t x, int32_t y, const tavd_wchar* text,
           int32_t length) {
  const auto& [target, window] = cut(context);
  if (window.holds(x, y)) tgui_textw(target, x, y, text, length);
}

void release(void* context) {
  delete static_cast<Cut*>(context);
}

}  // namespace

tgui_surface* cut_surface(tgui_surface* target, Area window) {
  tgui_operations operations = {};
  operations.size = sizeof operations;
  operations.select = select;
  operations.text_align = text_align;
  operations.background_mode = background_mode;
  operations.line_to = line_to;
  operations.ellipse = ellipse;
  operations.arc = arc;
  operations.text_colour = text_colour;
  operations.text = text;
  operations.textw = textw;
  operations.release = release;
  auto* const context = new Cut{target, window};
  tgui_surface* const surface =
      tgui_surface_create(&operations, context, window.right - window.left, window.bottom - window.top);
  if (surface == nullptr) delete context;
  return surface;
}

}  // namespace tavdhost
