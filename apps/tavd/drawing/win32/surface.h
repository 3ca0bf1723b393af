// What a picture is drawn on: pixels in memory, or an enhanced metafile.
#pragma once

#include <memory>
#include <string>

#include "drawing/win32/recorded.h"

namespace tavdhost {

class Surface {
 public:
  virtual ~Surface() = default;
  // What it shows, for lists of files; comes before the first drawing.
  virtual void describe(const std::string& /*title*/) {}
  virtual void draw(const Recorded& drawing, const Placed& placed) = 0;
  // The bytes of the finished file; nothing is drawn behind this.
  virtual std::string bytes() = 0;
};

std::unique_ptr<Surface> pixel_surface(PictureSize size);
std::unique_ptr<Surface> metafile_surface(PictureSize size);

}  // namespace tavdhost
