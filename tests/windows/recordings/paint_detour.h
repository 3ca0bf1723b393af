// Has the windows of tavd.dll paint into a metafile. BeginPaint alone chooses where a window paints, and it
// never chooses a metafile, so for a while the DLL is given another BeginPaint and EndPaint than the
// system's.
#pragma once

#include <windows.h>

namespace recordings {

class PaintDetour {
 public:
  explicit PaintDetour(HDC target);
  ~PaintDetour();
  PaintDetour(const PaintDetour&) = delete;
  PaintDetour& operator=(const PaintDetour&) = delete;
};

}  // namespace recordings
