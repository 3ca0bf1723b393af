#include "sheet/page_surface.h"

#include <utf8.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <tuple>

#include "tavdgui/tavdcairo.h"

namespace tavdhost {
namespace {

constexpr const char* kFace = "Arial";  // whose measures Liberation Sans has
constexpr int kNormal = 400;
constexpr int kBold = 700;

std::int32_t units(double mm) {
  return static_cast<std::int32_t>(std::lround(mm * kUnitsPerMm));
}

void map_page(tgui_surface* surface, int width, int height) {
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, units(kSheetWidth), units(kSheetHeight));
  tgui_set_viewport_org(surface, 0, 0);
  tgui_set_viewport_ext(surface, width, height);
}

tgui_object* make_font(const TextLook& look) {
  tgui_font font = {};
  font.height = -units(look.size);
  font.weight = look.bold ? kBold : kNormal;
  std::strcpy(font.face, kFace);
  return tgui_create_font(&font);
}

void write(tgui_surface* surface, std::int32_t x, std::int32_t y, const std::string& utf8,
           const TextLook& look, std::uint32_t side) {
  const std::u16string wide = utf8::utf8to16(utf8);
  tgui_object* const font = make_font(look);
  tgui_object* const former = tgui_select(surface, font);
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
  tgui_set_text_align(surface, side | TGUI_TA_TOP);
  tgui_set_text_colour(surface, look.colour);
  tgui_textw(surface, x, y, wide.data(), static_cast<std::int32_t>(wide.size()));
  tgui_select(surface, former);
  tgui_delete_object(font);
}

// Sizes of texts, measured once: many are the same on every page of a document.
class Measures {
 public:
  tgui_box of(const std::string& utf8, const TextLook& look) {
    const Key key = {utf8, units(look.size), look.bold};
    const auto known = boxes_.find(key);
    if (known != boxes_.end()) return known->second;
    if (boxes_.size() >= kMost) boxes_.clear();
    tgui_surface* const measuring = tgui_cairo_measure(1, 1);
    write(measuring, 0, 0, utf8, look, TGUI_TA_LEFT);
    tgui_box box = {};
    tgui_cairo_text_extent(measuring, 0, &box);
    tgui_surface_destroy(measuring);
    return boxes_.emplace(key, box).first->second;
  }

 private:
  using Key = std::tuple<std::string, std::int32_t, bool>;
  static constexpr std::size_t kMost = 4096;
  std::map<Key, tgui_box> boxes_;
};

// A unit of the page is a device unit of what measures.
tgui_box measured(const std::string& utf8, const TextLook& look) {
  static thread_local Measures measures;
  return measures.of(utf8, look);
}

std::uint32_t align_of(Side side) {
  switch (side) {
    case Side::kLeft:
      return TGUI_TA_LEFT;
    case Side::kCentre:
      return TGUI_TA_CENTER;
    case Side::kRight:
      break;
  }
  return TGUI_TA_RIGHT;
}

// Where the reference point of a text stands in its box, and where the text begins from there.
double reference(const Box& box, Side side) {
  if (side == Side::kLeft) return box.left;
  return side == Side::kRight ? box.right() : box.left + box.width / 2;
}

double begin_of(double x, double width, Side side) {
  if (side == Side::kLeft) return x;
  return side == Side::kRight ? x - width : x - width / 2;
}

}  // namespace

PageSurface::PageSurface(tgui_surface* surface, int width, int height)
    : surface_(surface), width_(width), height_(height), saved_(tgui_save(surface)) {
  map_page(surface, width, height);
}

PageSurface::~PageSurface() {
  tgui_restore(surface_, saved_);
}

void PageSurface::text(const Box& box, const std::string& utf8, const TextLook& look, Side side) {
  if (utf8.empty()) return;
  const double x = reference(box, side);
  write(surface_, units(x), units(box.top), utf8, look, align_of(side));
  const tgui_box cell = measured(utf8, look);
  const double width = (cell.right - cell.left) / kUnitsPerMm;
  const double height = (cell.bottom - cell.top) / kUnitsPerMm;
  texts_.push_back({utf8, box, {begin_of(x, width, side), box.top, width, height}});
}

double PageSurface::width_of(const std::string& utf8, const TextLook& look) {
  if (utf8.empty()) return 0;
  const tgui_box cell = measured(utf8, look);
  return (cell.right - cell.left) / kUnitsPerMm;
}

// As a line across the middle of the box: surfaces have no boxes. It is as wide as the x axis scales it.
void PageSurface::fill(const Box& box, std::uint32_t colour) {
  const bool is_wide = box.width >= box.height;
  const double thick = is_wide ? box.height : box.width;
  tgui_object* const pen = tgui_create_pen(TGUI_PEN_SOLID, std::max(1, units(thick)), colour);
  tgui_object* const former = tgui_select(surface_, pen);
  const double half = thick / 2;  // the ends are round
  if (is_wide) {
    tgui_move_to(surface_, units(box.left + half), units(box.top + half));
    tgui_line_to(surface_, units(box.right() - half), units(box.top + half));
  } else {
    tgui_move_to(surface_, units(box.left + half), units(box.top + half));
    tgui_line_to(surface_, units(box.left + half), units(box.bottom() - half));
  }
  tgui_select(surface_, former);
  tgui_delete_object(pen);
}

}  // namespace tavdhost
