#include "sketch.h"

#include <algorithm>
#include <cmath>

namespace bench {

namespace {

Sketch& sketch_of(void* context) {
  return *static_cast<Sketch*>(context);
}

tgui_state state_of(const tgui_surface* surface) {
  tgui_state state;
  tgui_surface_state(surface, &state);
  return state;
}

// Device units per logical unit along y, from which fonts take their size; x follows it in the diagram.
double scale(const tgui_surface* surface) {
  double x, y0, y1;
  tgui_to_device(surface, 0, 0, &x, &y0);
  tgui_to_device(surface, 0, 1, &x, &y1);
  return std::fabs(y1 - y0);
}

SketchPen pen_of(tgui_surface* surface) {
  tgui_object_info pen;
  tgui_get_object(state_of(surface).pen, &pen);
  return {std::max(1.0, pen.width * scale(surface)), pen.colour, pen.style};
}

void line_to(void* context, tgui_surface* surface, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  std::vector<SketchLine>& lines = sketch_of(context).lines;
  const SketchPen pen = pen_of(surface);
  if (pen.style == TGUI_PEN_NULL) return;
  double fx, fy, tx, ty;
  tgui_to_device(surface, x1, y1, &fx, &fy);
  tgui_to_device(surface, x2, y2, &tx, &ty);
  const bool goes_on =
      !lines.empty() && lines.back().pen == pen && lines.back().x.back() == fx && lines.back().y.back() == fy;
  if (!goes_on) lines.push_back({pen, {fx}, {fy}});
  lines.back().x.push_back(tx);
  lines.back().y.push_back(ty);
}

void ellipse(void* context, tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  double x0, y0, x1, y1;
  tgui_to_device(surface, left, top, &x0, &y0);
  tgui_to_device(surface, right, bottom, &x1, &y1);
  tgui_object_info brush;
  tgui_get_object(state_of(surface).brush, &brush);
  sketch_of(context).ellipses.push_back({pen_of(surface), (x0 + x1) / 2, (y0 + y1) / 2,
                                         std::fabs(x1 - x0) / 2, std::fabs(y1 - y0) / 2, brush.colour});
}

void text(void* context, tgui_surface* surface, int32_t x, int32_t y, const char* bytes, int32_t length) {
  const tgui_state state = state_of(surface);
  tgui_object_info object;
  tgui_get_object(state.font, &object);
  const unsigned align = state.text_align;
  SketchText text{};
  tgui_to_device(surface, x, y, &text.x, &text.y);
  text.size = std::fabs(object.font.height * scale(surface));
  text.angle = object.font.escapement / 10.0;
  text.align = (align & TGUI_TA_CENTER) == TGUI_TA_CENTER ? 0 : (align & TGUI_TA_RIGHT) != 0 ? 1 : -1;
  text.above = (align & TGUI_TA_BASELINE) == TGUI_TA_BASELINE ? 0 : (align & TGUI_TA_BOTTOM) != 0 ? 1 : -1;
  text.colour = state.text_colour;
  text.text.assign(bytes, static_cast<std::size_t>(length));
  sketch_of(context).texts.push_back(text);
}

void textw(void* context, tgui_surface* surface, int32_t x, int32_t y, const tavd_wchar* characters,
           int32_t length) {
  std::string narrow;
  for (int32_t i = 0; i < length; ++i) {
    narrow += characters[i] < 0x80 ? static_cast<char>(characters[i]) : '?';
  }
  text(context, surface, x, y, narrow.data(), length);
}

template <typename Figure>
void keep_once(std::vector<Figure>& figures) {
  std::sort(figures.begin(), figures.end());
  figures.erase(std::unique(figures.begin(), figures.end()), figures.end());
}

}  // namespace

Sketch Sketch::of(int width, int height, void (*paint)(tgui_surface*, void*), void* context) {
  tgui_operations table = {};
  table.size = sizeof table;
  table.line_to = line_to;
  table.ellipse = ellipse;
  table.text = text;
  table.textw = textw;
  Sketch sketch;
  tgui_surface* surface = tgui_surface_create(&table, &sketch, width, height);
  paint(surface, context);
  tgui_surface_destroy(surface);
  keep_once(sketch.lines);
  keep_once(sketch.texts);
  return sketch;
}

}  // namespace bench
