#include "sheet/portable/cairo_painter.h"

#include <cairo.h>

#include <numbers>
#include <vector>

#include "sheet/portable/text_shaper.h"

namespace tavdhost {
namespace {

constexpr double kPoints = 72.0 / 25.4;  // a millimetre

void set_colour(cairo_t* context, std::uint32_t colour) {
  cairo_set_source_rgb(context, (colour & 0xFF) / 255.0, (colour >> 8 & 0xFF) / 255.0,
                       (colour >> 16 & 0xFF) / 255.0);
}

void add_path(cairo_t* context, std::span<const PagePoint> points) {
  cairo_new_path(context);
  for (const PagePoint point : points) cairo_line_to(context, point.x * kPoints, point.y * kPoints);
}

void add_circle(cairo_t* context, PagePoint centre, double radius) {
  cairo_new_path(context);
  cairo_arc(context, centre.x * kPoints, centre.y * kPoints, radius * kPoints, 0, 2 * std::numbers::pi);
  cairo_close_path(context);
}

void stroke(cairo_t* context, const LineStyle& style) {
  set_colour(context, style.colour);
  cairo_set_line_width(context, style.width * kPoints);
  cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
  std::vector<double> dashes;
  for (const double mm : style.dashes) dashes.push_back(mm * kPoints);
  cairo_set_dash(context, dashes.data(), static_cast<int>(dashes.size()), 0);
  cairo_stroke(context);
}

}  // namespace

CairoPainter::CairoPainter(cairo_t* context, const std::string& language)
    : context_(cairo_reference(context)), language_(language) {}

CairoPainter::~CairoPainter() {
  cairo_destroy(context_);
}

void CairoPainter::line(std::span<const PagePoint> points, const LineStyle& style) {
  add_path(context_, points);
  stroke(context_, style);
}

void CairoPainter::area(std::span<const PagePoint> corners, std::uint32_t colour) {
  add_path(context_, corners);
  set_colour(context_, colour);
  cairo_fill(context_);
}

void CairoPainter::circle(PagePoint centre, double radius, const LineStyle& style) {
  add_circle(context_, centre, radius);
  stroke(context_, style);
}

void CairoPainter::disc(PagePoint centre, double radius, std::uint32_t colour) {
  add_circle(context_, centre, radius);
  set_colour(context_, colour);
  cairo_fill(context_);
}

TextSize CairoPainter::measure(const std::string& text, const TextStyle& style) {
  return shaped_size(text, style, language_);
}

void CairoPainter::draw_text(const std::string& text, const TextStyle& style, const TextPlace& place,
                             const TextSize& size) {
  const PagePoint begin = baseline_offset(style, place, size);
  cairo_save(context_);
  cairo_translate(context_, place.at.x * kPoints, place.at.y * kPoints);
  if (place.angle != 0) cairo_rotate(context_, -place.angle * std::numbers::pi / 180);
  cairo_scale(context_, kPoints / kLayoutUnits, kPoints / kLayoutUnits);
  cairo_move_to(context_, begin.x * kLayoutUnits, begin.y * kLayoutUnits);
  set_colour(context_, style.colour);
  pango_cairo_show_layout_line(context_, shaped_line(text, style, language_));
  cairo_restore(context_);
  cairo_new_path(context_);
}

}  // namespace tavdhost
