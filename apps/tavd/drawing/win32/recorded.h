// A drawing of the library as GDI has recorded it, to be drawn again: in bands, cut, fine or coarse.
#pragma once

#include <windows.h>

#include <string>

#include "drawing/picture.h"

namespace tavdhost {

// Where in a picture a drawing stands.
struct Placed {
  Area place;                  // of its plane, pixels
  Area room;                   // in which all of it lies, pixels
  const Cell* cell = nullptr;  // null: nothing is cut
};

class Recorded {
 public:
  // The drawing as the library's state has it now.
  explicit Recorded(const hosts::LibraryDrawing& drawing);

  // Draws on a device context of which `origin`, a point of the picture, is the corner, and which has
  // `fineness` pixels for one of the picture's.
  void draw(HDC hdc, const Placed& placed, POINT origin, int fineness) const;

  // The pixels of the picture that it may cover there.
  Area covered(const Placed& placed, PictureSize size) const;

  // The records.
  const std::string& bytes() const { return bytes_; }

 private:
  PictureSize plane_;
  std::string bytes_;  // of an enhanced metafile in the plane's units
};

}  // namespace tavdhost
