#include "drawing/portable/page.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "base/text.h"
#include "drawing/description.h"
#include "tavdgui/tavdcairo.h"

namespace tavdhost {
namespace {

// A4, ISO 216, mm.
constexpr int kShortSide = 210;
constexpr int kLongSide = 297;
constexpr int kMargin = 15;
constexpr int kGap = 6;  // between the words and the picture

constexpr int kUnits = 20;  // device units to a mm: a line is never thinner than one of them

constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kDarkGrey = 0x404040;

// A font of the heading and the distance of its lines, device units.
struct Face {
  int height;
  int weight;
  int line;
  std::uint32_t colour;
};
constexpr Face kTitle = {5 * kUnits, 700, 7 * kUnits, kBlack};
constexpr Face kDescription = {3 * kUnits, 400, 4 * kUnits, kDarkGrey};

PictureSize page_of(PictureSize size) {
  if (size.height > size.width) return {kShortSide * kUnits, kLongSide * kUnits};
  return {kLongSide * kUnits, kShortSide * kUnits};
}

tgui_object* make_font(const Face& face) {
  tgui_font font = {};
  font.height = -face.height;
  font.weight = face.weight;
  std::strcpy(font.face, "Arial");
  return tgui_create_font(&font);
}

void write(tgui_surface* surface, const Face& face, int x, int y, const std::string& text) {
  const std::u16string wide = utf8::utf8to16(text);
  tgui_object* const font = make_font(face);
  const int saved = tgui_save(surface);
  tgui_select(surface, font);
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
  tgui_set_text_align(surface, TGUI_TA_LEFT | TGUI_TA_TOP);
  tgui_set_text_colour(surface, face.colour);
  tgui_textw(surface, x, y, wide.data(), static_cast<std::int32_t>(wide.size()));
  tgui_restore(surface, saved);
  tgui_delete_object(font);
}

double width_of(const Face& face, const std::string& text) {
  tgui_surface* const measuring = tgui_cairo_measure(1, 1);
  write(measuring, face, 0, 0, text);
  tgui_box box = {};
  tgui_cairo_extent(measuring, &box);
  tgui_surface_destroy(measuring);
  return box.right - box.left;
}

// The words in lines that are no wider than they may be, unless one word is.
std::vector<std::string> wrapped(const Face& face, const std::string& text, int width) {
  std::vector<std::string> lines(1);
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t blank = std::min(text.find(' ', from), text.size());
    const std::string word = text.substr(from, blank - from);
    std::string longer = lines.back();
    if (!longer.empty()) longer += ' ';
    longer += word;
    if (lines.back().empty() || width_of(face, longer) <= width) {
      lines.back() = longer;
    } else {
      lines.push_back(word);
    }
    from = blank + 1;
  }
  return lines;
}

}  // namespace

tgui_surface* page_surface(const char* path, PictureSize size) {
  const PictureSize page = page_of(size);
  return tgui_cairo_pdf(path, page.width, page.height, static_cast<double>(page.width) / kUnits,
                        static_cast<double>(page.height) / kUnits);
}

int top_margin() {
  return kMargin * kUnits;
}

Area place_on_page(PictureSize size, int top) {
  const PictureSize page = page_of(size);
  const int most_width = page.width - 2 * kMargin * kUnits;
  const int most_height = page.height - kMargin * kUnits - top;
  const double scale =
      std::min(static_cast<double>(most_width) / size.width, static_cast<double>(most_height) / size.height);
  const auto width = static_cast<std::int32_t>(size.width * scale);
  const auto height = static_cast<std::int32_t>(size.height * scale);
  const std::int32_t left = (page.width - width) / 2;
  return {left, top, left + width, top + height};
}

int write_heading(tgui_surface* surface, PictureSize size, const DrawingText& text) {
  const int width = page_of(size).width - 2 * kMargin * kUnits;
  int y = top_margin();
  for (const auto& [face, words] :
       {std::pair(kTitle, text.title), std::pair(kDescription, text.description)}) {
    for (const std::string& line : wrapped(face, printable(words), width)) {
      write(surface, face, kMargin * kUnits, y, line);
      y += face.line;
    }
  }
  return y + kGap * kUnits;
}

}  // namespace tavdhost
