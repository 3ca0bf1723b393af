// How far the ink and the texts of pictures reach, found in the finished files and not by the program that
// made them.
#pragma once

#include <string>
#include <vector>

namespace pictures {

struct Box {
  double left, top, right, bottom;
};

// A part of a picture.
struct Part {
  std::string what;  // "line", "ellipse", or the text itself
  Box box;
  std::string colour = "";  // of a text, "#rrggbb"
};

struct Svg {
  double width, height;
  std::vector<Part> parts;  // of texts their cells, in the font that is installed for the first family
};

// Throws std::runtime_error for what is no SVG of the kind that the program writes.
Svg read_svg(const std::string& svg);

// Whether a pixel of a PNG's outermost rows and columns is not white; and whether any is.
struct PngInk {
  bool on_edge, anywhere;
};
PngInk read_png(const std::string& path);

// A page of a PDF: its size, its title, and the words on it; points of 1/72 inch.
struct Page {
  double width, height;
  std::vector<Part> words;
};

// The pages of several files of one page each.
std::vector<Page> read_pages(const std::vector<std::string>& pdfs, const std::string& folder);

// Whether a page of theirs has ink outside of its margins, mm; by number, from 0.
std::vector<int> pages_with_ink_in_margins(const std::vector<std::string>& pdfs, const std::string& folder,
                                           double margin);

}  // namespace pictures
