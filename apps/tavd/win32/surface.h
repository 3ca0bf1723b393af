// What a picture draws on: pixels in memory, or an enhanced metafile.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "picture.h"

namespace tavdhost {

// A drawing and its place in the picture.
struct Placed {
  const LibraryDrawing& drawing;
  Area place;                  // of its plane, pixels
  const Cell* cell = nullptr;  // null: over the whole picture, nothing is cut
};

// Draws on a device context of which `origin`, a point of the picture, is the corner, and which has
// `fineness` pixels for one of the picture's. The drawing's tools must have been made.
void draw_placed(HDC hdc, const Placed& placed, POINT origin, int fineness);

// The pixels of the picture that a placed drawing may cover.
Area covered(const Placed& placed, PictureSize size);

class Surface {
 public:
  virtual ~Surface() = default;
  // In words for lists of files.
  virtual void describe(const std::string& /*title*/) {}
  virtual void draw(const Placed& placed) = 0;
  // The bytes of the finished file; nothing more is drawn.
  virtual std::string bytes() = 0;
};

std::unique_ptr<Surface> pixel_surface(PictureSize size);
std::unique_ptr<Surface> metafile_surface(PictureSize size);

}  // namespace tavdhost
