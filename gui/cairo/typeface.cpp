#include "gui/cairo/typeface.h"

#include <array>
#include <map>
#include <string_view>
#include <tuple>

namespace tavdcairo {

namespace {

// Faces that come with Windows only, and the free face of the same measures. Characters that a face lacks are
// taken from whatever installed font has them.
struct Substitute {
  std::string_view face;
  std::string_view families;
};
constexpr std::string_view kSans = "Liberation Sans,Arial,Helvetica,DejaVu Sans,sans-serif";
constexpr std::array<Substitute, 4> kSubstitutes = {{
    {"Microsoft Sans Serif", kSans},
    {"MS Sans Serif", kSans},
    {"Arial", kSans},
    {"", kSans},
}};

// Ascent and descent of a font's cell, device units.
struct Cell {
  double ascent, descent;
};

PangoFontDescription* describe(const TextStyle& style);
Cell cell_of(PangoLayout* layout, const TextStyle& style);

}  // namespace

std::string families(const std::string& face) {
  for (const Substitute& substitute : kSubstitutes) {
    if (face == substitute.face) {
      return std::string(substitute.families);
    }
  }
  return face + "," + std::string(kSans);
}

Layout make_layout(cairo_t* cairo, const std::string& utf8, const TextStyle& style) {
  const std::unique_ptr<PangoContext, Unref> context(
      pango_font_map_create_context(pango_cairo_font_map_get_default()));
  // Unhinted, so that a text is as wide in every format and at every size as its design says.
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  pango_cairo_context_set_font_options(context.get(), options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(context.get(), FALSE);
  if (cairo != nullptr) {
    pango_cairo_update_context(cairo, context.get());
  }

  Layout layout(pango_layout_new(context.get()));
  PangoFontDescription* description = describe(style);
  pango_layout_set_font_description(layout.get(), description);
  pango_font_description_free(description);
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  PangoAttrList* attributes = pango_attr_list_new();
  if (style.underline) {
    pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
  }
  if (style.strikeout) {
    pango_attr_list_insert(attributes, pango_attr_strikethrough_new(TRUE));
  }
  pango_layout_set_attributes(layout.get(), attributes);
  pango_attr_list_unref(attributes);
  pango_layout_set_text(layout.get(), utf8.c_str(), static_cast<int>(utf8.size()));
  return layout;
}

LineMetrics measure(const std::string& utf8, const TextStyle& style) {
  const Layout shaped = make_layout(nullptr, utf8, style);
  PangoLayout* layout = shaped.get();
  PangoRectangle logical;
  pango_layout_get_extents(layout, nullptr, &logical);
  const Cell cell = cell_of(layout, style);
  return {cell.ascent, cell.descent, pango_units_to_double(logical.width)};
}

double cell_height(const std::string& face, int weight, bool italic) {
  constexpr double kProbe = 1000;
  TextStyle style = {};
  style.family = face;
  style.size = kProbe;
  style.weight = weight;
  style.italic = italic;
  const LineMetrics metrics = measure("", style);
  return (metrics.ascent + metrics.descent) / kProbe;
}

Point baseline_offset(const LineMetrics& metrics, const TextStyle& style) {
  Point offset = {0, 0};
  switch (style.horizontal) {
    case Horizontal::kLeft:
      break;
    case Horizontal::kCentre:
      offset.x = -metrics.width / 2;
      break;
    case Horizontal::kRight:
      offset.x = -metrics.width;
      break;
  }
  switch (style.vertical) {
    case Vertical::kTop:
      offset.y = metrics.ascent;
      break;
    case Vertical::kBottom:
      offset.y = -metrics.descent;
      break;
    case Vertical::kBaseline:
      break;
  }
  return offset;
}

namespace {

PangoFontDescription* describe(const TextStyle& style) {
  PangoFontDescription* description = pango_font_description_new();
  pango_font_description_set_family(description, families(style.family).c_str());
  pango_font_description_set_absolute_size(description, style.size * PANGO_SCALE);
  pango_font_description_set_weight(description, static_cast<PangoWeight>(style.weight));
  pango_font_description_set_style(description, style.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  return description;
}

// The cell is the chosen font's, not that of the glyphs shown: a title keeps its place when one of its
// characters comes from another font. A drawing has many texts in few fonts, and Pango shapes a sample of the
// language each time that it is asked: the answers of the last fonts are kept.
Cell cell_of(PangoLayout* layout, const TextStyle& style) {
  using Font = std::tuple<std::string, double, int, bool>;
  constexpr std::size_t kMostFonts = 64;
  static std::map<Font, Cell> known;
  const Font font(style.family, style.size, style.weight, style.italic);
  const auto found = known.find(font);
  if (found != known.end()) return found->second;

  PangoFontMetrics* metrics = pango_context_get_metrics(pango_layout_get_context(layout),
                                                        pango_layout_get_font_description(layout), nullptr);
  const Cell cell = {pango_units_to_double(pango_font_metrics_get_ascent(metrics)),
                     pango_units_to_double(pango_font_metrics_get_descent(metrics))};
  pango_font_metrics_unref(metrics);
  if (known.size() == kMostFonts) known.clear();
  known.emplace(font, cell);
  return cell;
}

}  // namespace

}  // namespace tavdcairo
