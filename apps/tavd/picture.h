// Picture files that a diagram is drawn into, by the ending of their name.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tavdgui/tavdgui.h"

namespace tavdhost {

inline constexpr int kLargestSide = 16384;  // pixels, the most that a PNG surface takes

struct DrawingText;

struct PictureSize {
  std::int32_t width, height;  // pixels
};

// "1200x900". Throws UserError if it is no size, or a side is not from 64 to 16384.
PictureSize picture_size(const std::string& text);

// A file being drawn. Nothing is on disk before finish(), and nothing is left there if finish() fails.
class Picture {
 public:
  // Throws UserError if the ending is none of .png, .svg, .pdf and .txt. A .pdf has one page in the
  // proportions of the picture, as large as fits on A4 across; a .txt lists the drawing operations.
  Picture(const std::string& path, PictureSize size);
  ~Picture();
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  tgui_surface* surface() const { return surface_; }
  PictureSize size() const { return size_; }

  // What it shows, for screen readers; only an SVG has a place for it.
  void describe(const DrawingText& text);

  // Writes the file. Throws UserError with the reason if it cannot be written.
  void finish();

 private:
  void finish_recording();
  std::string path_;
  PictureSize size_;
  bool is_recording_;
  tgui_surface* surface_ = nullptr;
};

}  // namespace tavdhost
