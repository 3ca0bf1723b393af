// Pictures through Windows's own GDI.
#include "drawing/picture.h"

#include "base/paths.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "drawing/description.h"
#include "drawing/placement.h"
#include "drawing/win32/surface.h"

namespace tavdhost {

const PictureForms kPictureForms = {
    ".png or .emf", ".png, or .emf for an enhanced metafile", ".png or .emf", ".png", "PNG", ".emf"};

struct Picture::Surface {
  std::string path;
  PictureSize size;
  std::unique_ptr<tavdhost::Surface> target;
};

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

bool Picture::is_recording() const {
  return false;
}

Area Picture::whole() const {
  return {0, 0, surface_->size.width, surface_->size.height};
}

Area Picture::placed(const Area& area) const {
  return area;
}

void Picture::paint(const hosts::LibraryDrawing& drawing, const Area& room) {
  surface_->target->draw(Recorded(drawing), {fitted_place(drawing, room), room});
}

void Picture::paint(const hosts::LibraryDrawing& drawing, const Cell& cell) {
  surface_->target->draw(Recorded(drawing), {cell.place, cell.place, &cell});
}

void Picture::finish() {
  write_output(surface_->path, surface_->target->bytes());
}

}  // namespace tavdhost
