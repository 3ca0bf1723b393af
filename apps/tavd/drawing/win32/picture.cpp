// Pictures through Windows's own GDI.
#include "drawing/picture.h"

#include <cmath>

#include "base/paths.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "drawing/description.h"
#include "drawing/win32/surface.h"

namespace tavdhost {

const PictureForms kPictureForms = {
    ".png or .emf", ".png, or .emf for an enhanced metafile", ".png or .emf", ".png", "PNG", ".emf"};

struct Picture::Surface {
  std::string path;
  PictureSize size;
  std::unique_ptr<tavdhost::Surface> target;
};

namespace {

// As the windows of the library's classes place their drawings.
Area place_of(const hosts::LibraryDrawing& drawing, PictureSize size) {
  if (!drawing.keeps_proportions) return {0, 0, size.width, size.height};
  const double proportion = static_cast<double>(drawing.plane_width) / drawing.plane_height;
  const auto width = static_cast<std::int32_t>(std::floor(size.height * proportion + 0.5));
  const std::int32_t left = size.width / 2 - width / 2;
  return {left, 0, left + width, size.height};
}

}  // namespace

Picture::Picture(const std::string& path, PictureSize size, const std::string& format)
    : surface_(new Surface{path, size, nullptr}) {
  const std::string ending = picture_ending(path, format);
  if (ending == ".png") {
    surface_->target = pixel_surface(size);
  } else if (ending == ".emf") {
    surface_->target = metafile_surface(size);
  } else {
    throw unknown_form(path, format);
  }
}

Picture::~Picture() = default;

void Picture::describe(const DrawingText& text) {
  surface_->target->describe(text.title);
}

void Picture::paint(const hosts::LibraryDrawing& drawing) {
  surface_->target->draw(Recorded(drawing), {place_of(drawing, surface_->size)});
}

void Picture::paint(const hosts::LibraryDrawing& drawing, const Cell& cell) {
  surface_->target->draw(Recorded(drawing), {cell.place, &cell});
}

void Picture::finish() {
  write_output(surface_->path, surface_->target->bytes());
}

}  // namespace tavdhost
