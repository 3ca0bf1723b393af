// Pictures through libtavdgui and libtavdcairo.
#include "drawing/picture.h"

#include <cmath>
#include <stdexcept>

#include "base/paths.h"
#include "base/platform.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "drawing/description.h"
#include "drawing/placement.h"
#include "drawing/portable/cut_surface.h"
#include "drawing/portable/page.h"
#include "drawing/portable/placed.h"
#include "tavdgui/tavdcairo.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {

const PictureForms kPictureForms = {".png, .svg, .pdf or .txt",
                                    ".png, .svg, .pdf, or .txt for the list of drawing operations",
                                    ".png, .svg or .pdf",
                                    ".svg",
                                    "SVG",
                                    ".svg"};

namespace {

// So many of a picture's pixels in device units of the place that it takes.
std::int32_t scaled(int pixels, int units, int of_pixels) {
  return static_cast<std::int32_t>(std::lround(static_cast<double>(pixels) * units / of_pixels));
}

}  // namespace

struct Picture::Surface {
  std::string path;
  PictureSize size;
  bool is_recording;
  bool is_page;
  Area place;  // of the picture on the surface, device units: all of it, or a part of a page
  tgui_surface* surface;
};

namespace {

void draw(const hosts::LibraryDrawing& drawing, tgui_surface* surface) {
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
  drawing.create_tools();
  drawing.draw(surface);
  drawing.destroy_tools();
}

int32_t keep_bytes(void* kept, const void* bytes, std::size_t length) {
  static_cast<std::string*>(kept)->assign(static_cast<const char*>(bytes), length);
  return 0;
}

void draw_frame(tgui_surface* surface, const Area& window, std::uint32_t colour) {
  tgui_object* const pen = tgui_create_pen(TGUI_PEN_SOLID, 1, colour);
  tgui_object* const former = tgui_select(surface, pen);
  tgui_move_to(surface, window.left, window.top);
  tgui_line_to(surface, window.right, window.top);
  tgui_line_to(surface, window.right, window.bottom);
  tgui_line_to(surface, window.left, window.bottom);
  tgui_line_to(surface, window.left, window.top);
  tgui_select(surface, former);
  tgui_delete_object(pen);
}

}  // namespace

void draw_placed(const hosts::LibraryDrawing& drawing, tgui_surface* surface, const Area& place) {
  const int saved = tgui_save(surface);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, drawing.plane_width, drawing.plane_height);
  tgui_set_viewport_org(surface, place.left, place.top);
  tgui_set_viewport_ext(surface, place.width(), place.height());
  draw(drawing, surface);
  tgui_restore(surface, saved);
}

Picture::Picture(const std::string& path, PictureSize size, const std::string& format)
    : surface_(new Surface{path, size, false, false, {0, 0, size.width, size.height}, nullptr}) {
  const std::string ending = picture_ending(path, format);
  tgui_surface*& surface = surface_->surface;
  if (ending == ".png") {
    surface = tgui_cairo_png(path.c_str(), size.width, size.height);
  } else if (ending == ".svg") {
    surface = tgui_cairo_svg(path.c_str(), size.width, size.height);
  } else if (ending == ".pdf") {
    surface = page_surface(path.c_str(), size);
    surface_->is_page = true;
    surface_->place = place_on_page(size, top_margin());
  } else if (ending == ".txt") {
    surface_->is_recording = true;
    surface = tgui_recording_create(size.width, size.height);
  } else {
    throw unknown_form(path, format);
  }
  if (surface == nullptr) throw cannot_write(path, "no picture of this size can be made");
}

Picture::~Picture() {
  tgui_surface_destroy(surface_->surface);
}

void Picture::describe(const DrawingText& text) {
  tgui_cairo_describe(surface_->surface, text.title.c_str(), text.description.c_str());
  if (surface_->is_page) {
    surface_->place = place_on_page(surface_->size, write_heading(surface_->surface, surface_->size, text));
  }
}

bool Picture::is_recording() const {
  return surface_->is_recording;
}

Area Picture::whole() const {
  return {0, 0, surface_->size.width, surface_->size.height};
}

Area Picture::placed(const Area& area) const {
  const Area& all = surface_->place;
  const PictureSize& size = surface_->size;
  const auto x = [&](int pixels) { return all.left + scaled(pixels, all.width(), size.width); };
  const auto y = [&](int pixels) { return all.top + scaled(pixels, all.height(), size.height); };
  return {x(area.left), y(area.top), x(area.right), y(area.bottom)};
}

namespace {

// By a window of the class that the library registered.
void paint_window(const hosts::LibraryDrawing& drawing, tgui_surface* surface, const Area& room) {
  tgui_window* window = tgui_create_window(drawing.window_class, "", 0, 0, 0, room.width(), room.height(),
                                           nullptr, 0, program_module());
  if (window == nullptr) throw std::runtime_error("no window for the drawing could be made");
  tgui_set_surface(window, surface);
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  tgui_destroy_window(window);
}

}  // namespace

// A recording is what a window paints, if the drawing has windows. In an SVG the curves of a drawing that
// stands alone are in groups with names: among several the pens of one could be taken for those of another.
void Picture::paint(const hosts::LibraryDrawing& drawing, const Area& room) {
  tgui_surface* const surface = surface_->surface;
  if (is_recording() && drawing.window_class != nullptr) {
    paint_window(drawing, surface, room);
    return;
  }
  if (room == whole()) {
    for (const auto& [colour, width, name] : drawing.pens) tgui_cairo_name_pen(surface, colour, width, name);
  }
  draw_placed(drawing, surface, fitted_place(drawing, placed(room)));
}

// What a drawing puts outside of its window would stand in the cell beside it.
void Picture::paint(const hosts::LibraryDrawing& drawing, const Cell& cell) {
  tgui_surface* const surface = surface_->surface;
  const Area place = placed(cell.place);
  const Area& window = cell.window;
  const int saved = tgui_save(surface);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, drawing.plane_width, drawing.plane_height);
  tgui_set_viewport_org(surface, place.left, place.top);
  tgui_set_viewport_ext(surface, place.width(), place.height());
  tgui_surface* const cut = cut_surface(surface, window);
  draw(drawing, cut);
  tgui_surface_destroy(cut);
  if (cell.frame) draw_frame(surface, window, *cell.frame);
  tgui_restore(surface, saved);
}

void Picture::finish() {
  if (surface_->is_recording) {
    write_output(surface_->path, tgui_recording_text(surface_->surface));
    return;
  }
  std::string bytes;
  char reason[300] = {};
  const bool completed =
      tgui_cairo_finish_into(surface_->surface, keep_bytes, &bytes, reason, sizeof reason) == 0;
  surface_->surface = nullptr;
  if (!completed) throw cannot_write(surface_->path, reason);
  write_output(surface_->path, bytes);
}

std::optional<Covered> covered(const hosts::LibraryDrawing& drawing, const Area& place) {
  tgui_surface* const measuring = tgui_cairo_measure(1, 1);
  draw_placed(drawing, measuring, place);
  Covered all = {};
  tgui_box box = {};
  const bool is_empty = tgui_cairo_extent(measuring, &box) != 0;
  all.all = {box.left, box.top, box.right, box.bottom};
  for (std::int32_t i = 0; tgui_cairo_text_extent(measuring, i, &box) == 0; ++i) {
    all.texts.push_back({box.left, box.top, box.right, box.bottom});
  }
  tgui_surface_destroy(measuring);
  if (is_empty) return {};
  return all;
}

}  // namespace tavdhost
