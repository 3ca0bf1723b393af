// Pictures through libtavdgui and libtavdcairo.
#include "drawing/picture.h"

#include <algorithm>
#include <stdexcept>

#include "base/paths.h"
#include "base/platform.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "drawing/description.h"
#include "drawing/portable/cut_surface.h"
#include "tavdgui/tavdcairo.h"
#include "tavdgui/tavdgui.h"

namespace tavdhost {

const PictureForms kPictureForms = {".png, .svg, .pdf or .txt",
                                    ".png, .svg, .pdf, or .txt for the list of drawing operations",
                                    ".png, .svg or .pdf",
                                    ".svg",
                                    "SVG",
                                    ".svg"};

struct Picture::Surface {
  std::string path;
  PictureSize size;
  bool is_recording;
  tgui_surface* surface;
};

namespace {

constexpr double kPageWidth = 297;  // A4 across, mm
constexpr double kPageHeight = 210;

// One page in the proportions of the picture, as large as fits on A4 across.
tgui_surface* pdf_page(const char* path, PictureSize size) {
  const double scale = std::min(kPageWidth / size.width, kPageHeight / size.height);
  return tgui_cairo_pdf(path, size.width, size.height, size.width * scale, size.height * scale);
}

// A window paints a whole surface: on a part of one the library draws without.
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

Picture::Picture(const std::string& path, PictureSize size, const std::string& format)
    : surface_(new Surface{path, size, false, nullptr}) {
  const std::string ending = picture_ending(path, format);
  tgui_surface*& surface = surface_->surface;
  if (ending == ".png") {
    surface = tgui_cairo_png(path.c_str(), size.width, size.height);
  } else if (ending == ".svg") {
    surface = tgui_cairo_svg(path.c_str(), size.width, size.height);
  } else if (ending == ".pdf") {
    surface = pdf_page(path.c_str(), size);
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

// Only an SVG has a place for it.
void Picture::describe(const DrawingText& text) {
  tgui_cairo_describe(surface_->surface, text.title.c_str(), text.description.c_str());
}

// By a window of the class that the library registered. In an SVG the curves stand in groups with names.
void Picture::paint(const hosts::LibraryDrawing& drawing) {
  tgui_surface* const surface = surface_->surface;
  for (const auto& [colour, width, name] : drawing.pens) tgui_cairo_name_pen(surface, colour, width, name);
  tgui_window* window = tgui_create_window(drawing.window_class, "", 0, 0, 0, surface_->size.width,
                                           surface_->size.height, nullptr, 0, program_module());
  if (window == nullptr) throw std::runtime_error("no window for the drawing could be made");
  tgui_set_surface(window, surface);
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  tgui_destroy_window(window);
}

// What a diagram puts outside of its plane, such as labels of lines that leave it, would stand in the cell
// beside it.
void Picture::paint(const hosts::LibraryDrawing& drawing, const Cell& cell) {
  tgui_surface* const surface = surface_->surface;
  const Area& place = cell.place;
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

bool has_lines(const hosts::LibraryDrawing& drawing) {
  tgui_surface* recording = tgui_recording_create(drawing.plane_width, drawing.plane_height);
  draw(drawing, recording);
  const bool found = std::string(tgui_recording_text(recording)).find("\nline ") != std::string::npos;
  tgui_surface_destroy(recording);
  return found;
}

}  // namespace tavdhost
