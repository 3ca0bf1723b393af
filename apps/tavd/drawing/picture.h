// Picture files that drawings go into, by the ending of their name. What endings there are and how a picture
// is made is the platform's; the rest of the program knows no surface.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/errors.h"
#include "drawing/area.h"
#include "shared/drawings.h"

namespace tavdhost {

inline constexpr int kLargestSide = 16384;  // pixels, the most that a PNG surface takes

struct DrawingText;

struct PictureSize {
  std::int32_t width, height;  // pixels
};

// "1200x900". Throws UserError if it is no size, or a side is not from 64 to 16384.
PictureSize picture_size(const std::string& text);

// The pictures that this platform makes, in words and as endings.
struct PictureForms {
  const char* endings;        // all, for messages: ".png, .svg, .pdf or .txt"
  const char* output;         // all, for the help of an option
  const char* sheet;          // those for a sheet of drawings
  const char* page_ending;    // what a web page shows best
  const char* page_name;      // what that is called
  const char* vector_ending;  // for what is enlarged and printed
};
extern const PictureForms kPictureForms;

// What is to be written, as an ending: the format if there is one, else what the path ends in; in lower case.
std::string picture_ending(const std::string& path, const std::string& format);
// What to report if that is none of the platform's.
UserError unknown_form(const std::string& path, const std::string& format);

// A small drawing among others in a picture. Of lines it has what lies in the window, and of texts
// those whose reference point does; figures are drawn whole.
struct Cell {
  Area place;                          // of the drawing's plane, pixels
  Area window;                         // logical units
  std::optional<std::uint32_t> frame;  // colour of a thin line about the window, 0x00BBGGRR
};

// A picture being drawn, for a file, a device or standard output. Nothing is written before finish(), and no
// file is left if finish() fails.
class Picture {
 public:
  // `format` is an ending without its dot; empty: the path's own ending counts. Throws UserError if it is
  // none of the platform's.
  Picture(const std::string& path, PictureSize size, const std::string& format = "");
  ~Picture();
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  // What it shows, where the form has a place for it: for screen readers and lists of files, and as the
  // heading of a page. Comes before what is painted.
  void describe(const DrawingText& text);

  // Whether it is the list of drawing operations, in which a drawing is as the library has it: it depends on
  // no font, so that nothing is measured for it.
  bool is_recording() const;

  // The whole picture; and where an area of it, pixels, stands on what it is drawn on: elsewhere on a page.
  Area whole() const;
  Area placed(const Area& area) const;

  // The drawing as the library's state has it now, in a part of the picture so that nothing of it is cut
  // (placement.h); or as a cell.
  void paint(const hosts::LibraryDrawing& drawing, const Area& room);
  void paint(const hosts::LibraryDrawing& drawing, const Cell& cell);

  // Writes the file. Throws UserError with the reason if it cannot be written.
  void finish();

 private:
  struct Surface;
  std::unique_ptr<Surface> surface_;
};

// What a drawing as it is now covers, with its plane at a place of a picture.
struct Covered {
  Extent all;                 // lines with their widths, figures, cells of texts
  std::vector<Extent> texts;  // the cells, in the order in which they are drawn: the title is the first
};
// Nothing: the drawing is empty.
std::optional<Covered> covered(const hosts::LibraryDrawing& drawing, const Area& place);

// How many lines and figures a drawing as it is now has.
struct Strokes {
  std::size_t lines = 0;
  std::size_t ellipses = 0;
};
Strokes strokes(const hosts::LibraryDrawing& drawing);
// Those that a pen of this look has drawn.
Strokes strokes(const hosts::LibraryDrawing& drawing, const hosts::PenName& pen);

}  // namespace tavdhost
