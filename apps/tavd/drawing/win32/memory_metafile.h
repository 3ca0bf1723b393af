// An enhanced metafile in memory.
#pragma once

#include <windows.h>

#include <string>

#include "drawing/picture.h"

namespace tavdhost {

class MemoryMetafile {
 public:
  // So many pixels of the screen large. `description` is program and title, each with a terminator, or empty.
  MemoryMetafile(PictureSize size, const std::wstring& description);
  ~MemoryMetafile();
  MemoryMetafile(const MemoryMetafile&) = delete;
  MemoryMetafile& operator=(const MemoryMetafile&) = delete;

  // Where to draw.
  HDC hdc() const { return hdc_; }
  // Its bytes; nothing is drawn behind this.
  std::string finish();

 private:
  HDC hdc_;
};

}  // namespace tavdhost
