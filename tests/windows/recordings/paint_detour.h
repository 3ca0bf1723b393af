// Has the windows of tavd.dll paint into a metafile. BeginPaint alone chooses where a window paints, and it
// never chooses a metafile, so for a while the DLL is given another BeginPaint and EndPaint than the
// system's.
#pragma once

#include <windows.h>

#include "../imports.h"

namespace recordings {

class PaintDetour {
 public:
  // Throws std::runtime_error if tavd.dll does not import them.
  explicit PaintDetour(HDC target);

 private:
  tavdtest::Redirected begin_;
  tavdtest::Redirected end_;
};

}  // namespace recordings
