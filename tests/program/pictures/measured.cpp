#include "program/pictures/measured.h"

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <numbers>
#include <sstream>
#include <stdexcept>

#include "support/unseen_page.h"

namespace pictures {
namespace {

// The text behind `name="` in a tag; empty if it has no such attribute.
std::string attribute(const std::string& tag, const std::string& name) {
  const std::size_t at = tag.find(" " + name + "=\"");
  if (at == std::string::npos) return "";
  const std::size_t begin = at + name.size() + 3;
  return tag.substr(begin, tag.find('"', begin) - begin);
}

double number(const std::string& tag, const std::string& name) {
  const std::string text = attribute(tag, name);
  return text.empty() ? 0 : std::strtod(text.c_str(), nullptr);
}

std::string unescaped(std::string text) {
  constexpr std::pair<const char*, const char*> kEntities[] = {
      {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}};
  for (const auto& [entity, character] : kEntities) {
    for (std::size_t at = text.find(entity); at != std::string::npos; at = text.find(entity)) {
      text.replace(at, std::strlen(entity), character);
    }
  }
  return text;
}

Box about(const Box& a, const Box& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

Box widened(const Box& box, double by) {
  return {box.left - by, box.top - by, box.right + by, box.bottom + by};
}

// The ends of its lines and arcs: those of arcs that bulge beyond their ends are not asked for.
Box path_box(const std::string& path) {
  Box box = {1e9, 1e9, -1e9, -1e9};
  const char* at = path.c_str();
  while (*at != '\0') {
    const char command = *at++;
    std::vector<double> values;
    while (*at != '\0' && *at != 'M' && *at != 'L' && *at != 'A') {
      char* end = nullptr;
      values.push_back(std::strtod(at, &end));
      at = end;
      while (*at == ' ') ++at;
    }
    if (values.size() != (command == 'A' ? 7U : 2U)) throw std::runtime_error("path " + path);
    const double x = values[values.size() - 2];
    const double y = values.back();
    box = about(box, {x, y, x, y});
  }
  return box;
}

// Measures texts in the fonts that are installed.
class Letters {
 public:
  // With the start of its baseline at 0, 0.
  Box cell(const std::string& text, const std::string& family, double size, bool is_bold) const {
    cairo_t* const context = page_.context();
    cairo_select_font_face(context, family.c_str(), CAIRO_FONT_SLANT_NORMAL,
                           is_bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context, size);
    cairo_font_extents_t font = {};
    cairo_text_extents_t extents = {};
    cairo_font_extents(context, &font);
    cairo_text_extents(context, text.c_str(), &extents);
    return {0, -font.ascent, extents.x_advance, font.descent};
  }

 private:
  UnseenPage page_;
};

Box turned(const Box& box, double degrees) {
  const double angle = degrees * std::numbers::pi / 180;
  Box all = {1e9, 1e9, -1e9, -1e9};
  for (const double x : {box.left, box.right}) {
    for (const double y : {box.top, box.bottom}) {
      const double at_x = x * std::cos(angle) - y * std::sin(angle);
      const double at_y = x * std::sin(angle) + y * std::cos(angle);
      all = about(all, {at_x, at_y, at_x, at_y});
    }
  }
  return all;
}

// A line of the form <g transform="translate(X Y) rotate(A)"><text ...>WORDS</text></g>.
Part text_part(const std::string& line) {
  static const Letters letters;
  double x = 0;
  double y = 0;
  double angle = 0;
  std::sscanf(line.c_str(), "<g transform=\"translate(%lf %lf) rotate(%lf)", &x, &y, &angle);
  const std::string tag = line.substr(line.find("<text "));
  const std::size_t begin = tag.find('>') + 1;
  const std::string text = unescaped(tag.substr(begin, tag.find("</text>") - begin));
  const std::string families = attribute(tag, "font-family");
  Box cell = letters.cell(text, families.substr(0, families.find(',')), number(tag, "font-size"),
                          attribute(tag, "font-weight") == "700");
  const std::string anchor = attribute(tag, "text-anchor");
  const double back = anchor == "end" ? cell.right : anchor == "middle" ? cell.right / 2 : 0;
  const double down = number(tag, "y");
  cell = turned({cell.left - back, cell.top + down, cell.right - back, cell.bottom + down}, angle);
  return {text, {cell.left + x, cell.top + y, cell.right + x, cell.bottom + y}, attribute(tag, "fill")};
}

Part ellipse_part(const std::string& line) {
  const double x = number(line, "cx");
  const double y = number(line, "cy");
  const double rx = number(line, "rx");
  const double ry = number(line, "ry");
  return {"ellipse", widened({x - rx, y - ry, x + rx, y + ry}, number(line, "stroke-width") / 2)};
}

std::string output_of(const std::string& command) {
  std::string text;
  std::FILE* const pipe = popen(command.c_str(), "r");
  std::array<char, 4096> piece;
  while (std::fgets(piece.data(), piece.size(), pipe) != nullptr) text += piece.data();
  if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command.substr(0, 200));
  return text;
}

// All pages in one file.
std::string united(const std::vector<std::string>& pdfs, const std::string& folder) {
  const std::string all = folder + "/all.pdf";
  std::string command = "pdfunite";
  for (const std::string& pdf : pdfs) command += " '" + pdf + "'";
  output_of(command + " '" + all + "' 2>&1");
  return all;
}

// Grey pixels of a page as pdftoppm writes them.
struct Grey {
  int width, height;
  std::string pixels;
};

Grey read_grey(std::istream& file) {
  std::string kind;
  int most = 0;
  Grey grey = {};
  file >> kind >> grey.width >> grey.height >> most;
  file.get();
  if (kind != "P5" || most != 255) throw std::runtime_error("not a page of pdftoppm");
  grey.pixels.resize(static_cast<std::size_t>(grey.width) * static_cast<std::size_t>(grey.height));
  file.read(grey.pixels.data(), static_cast<std::streamsize>(grey.pixels.size()));
  return grey;
}

bool has_ink_within(const Grey& grey, int margin) {
  for (int y = 0; y < grey.height; ++y) {
    for (int x = 0; x < grey.width; ++x) {
      const bool inside = x >= margin && y >= margin && x < grey.width - margin && y < grey.height - margin;
      const auto at =
          static_cast<std::size_t>(y) * static_cast<std::size_t>(grey.width) + static_cast<std::size_t>(x);
      if (!inside && grey.pixels[at] != '\xFF') return true;
    }
  }
  return false;
}

}  // namespace

Svg read_svg(const std::string& svg) {
  const std::size_t head = svg.find("<svg ");
  if (head == std::string::npos) throw std::runtime_error("no SVG");
  const std::string tag = svg.substr(head, svg.find('>', head) - head);
  Svg read = {number(tag, "width"), number(tag, "height"), {}};
  std::istringstream lines(svg);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("<path ")) {
      read.parts.push_back(
          {"line", widened(path_box(attribute(line, "d")), number(line, "stroke-width") / 2)});
    } else if (line.starts_with("<ellipse ")) {
      read.parts.push_back(ellipse_part(line));
    } else if (line.starts_with("<g transform")) {
      read.parts.push_back(text_part(line));
    }
  }
  return read;
}

PngInk read_png(const std::string& path) {
  const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
      cairo_image_surface_create_from_png(path.c_str()), cairo_surface_destroy);
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
    throw std::runtime_error("no PNG: " + path);
  const int width = cairo_image_surface_get_width(surface.get());
  const int height = cairo_image_surface_get_height(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  const unsigned char* const data = cairo_image_surface_get_data(surface.get());
  const std::size_t row_bytes = static_cast<std::size_t>(width) * 4;
  const std::string white(row_bytes, '\xFF');
  // The fourth byte of a pixel without transparency means nothing; here it is set.
  PngInk ink = {};
  for (int y = 0; y < height; ++y) {
    const unsigned char* const row = data + static_cast<std::ptrdiff_t>(y) * stride;
    const bool is_white = std::memcmp(row, white.data(), row_bytes) == 0;
    const bool ends_are_white =
        std::memcmp(row, white.data(), 4) == 0 && std::memcmp(row + row_bytes - 4, white.data(), 4) == 0;
    ink.anywhere = ink.anywhere || !is_white;
    ink.on_edge = ink.on_edge || !ends_are_white || (!is_white && (y == 0 || y == height - 1));
  }
  return ink;
}

std::vector<Page> read_pages(const std::vector<std::string>& pdfs, const std::string& folder) {
  std::istringstream lines(output_of("pdftotext -bbox '" + united(pdfs, folder) + "' -"));
  std::vector<Page> pages;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("<page ") != std::string::npos) {
      pages.push_back({number(line, "width"), number(line, "height"), {}});
    } else if (line.find("<word ") != std::string::npos) {
      const std::size_t begin = line.find('>') + 1;
      pages.back().words.push_back(
          {unescaped(line.substr(begin, line.find("</word>") - begin)),
           {number(line, "xMin"), number(line, "yMin"), number(line, "xMax"), number(line, "yMax")}});
    }
  }
  return pages;
}

std::vector<int> pages_with_ink_in_margins(const std::vector<std::string>& pdfs, const std::string& folder,
                                           double margin) {
  constexpr double kResolution = 36;  // pixels to an inch
  constexpr double kInch = 25.4;      // mm
  const std::string file = folder + "/pages.pgm";
  output_of("pdftoppm -gray -r " + std::to_string(kResolution) + " '" + united(pdfs, folder) + "' > '" +
            file + "'");
  std::ifstream stream(file, std::ios::binary);
  std::vector<int> found;
  const int pixels = static_cast<int>(margin / kInch * kResolution);
  for (int page = 0; stream.peek() != std::char_traits<char>::eof(); ++page) {
    if (has_ink_within(read_grey(stream), pixels)) found.push_back(page);
  }
  return found;
}

}  // namespace pictures
