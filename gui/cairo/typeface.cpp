#include "gui/cairo/typeface.h"

#include <array>
#include <atomic>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <utility>

#include "gui/cairo/shaping.h"

namespace tavdcairo {

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
using FontMap = std::unique_ptr<PangoFontMap, Unref>;
using Context = std::unique_ptr<PangoContext, Unref>;
using Layout = std::unique_ptr<PangoLayout, Unref>;

struct FreeDescription {
  void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using Description = std::unique_ptr<PangoFontDescription, FreeDescription>;

struct DestroyOptions {
  void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
using FontOptions = std::unique_ptr<cairo_font_options_t, DestroyOptions>;

// Shapes for one turn on surfaces of one kind.
struct Drawing {
  Context context;
  FontOptions surface;  // those of the last surface
};

// Scale and rotation of a drawing: Pango shapes for them, wherever the text stands.
using Turn = std::array<double, 4>;  // xx, yx, xy, yy
constexpr Turn kUpright = {1, 0, 0, 1};

// A font, and the lines that were measured and shaped in it.
struct Font {
  using Line = std::tuple<Turn, bool, bool, std::string>;  // turn, underline, strikeout, text

  Description description;
  double ascent, descent;  // of its cell, device units
  std::map<std::string, double, std::less<>> widths;
  std::map<Line, Layout> lines;
};

using FontKey = std::tuple<std::string, double, int, bool>;  // face, size, weight, italic

// What is kept from text to text and from picture to picture. When it is full all of it goes, so that a host
// that draws ever other texts pays no more than the shaping of each.
struct Shelf {
  std::map<FontKey, Font> fonts;
  std::map<Turn, Drawing> drawings;
  Context measuring;           // of no cairo context
  std::size_t lines = 0;       // measured or shaped, of all fonts
  std::size_t text_bytes = 0;  // of them
};
constexpr std::size_t kMostFonts = 64;
constexpr std::size_t kMostDrawings = 16;
constexpr std::size_t kMostLines = 512;
constexpr std::size_t kMostTextBytes = 65536;

// Pango keeps every font that was ever looked up, for each size and turn some 30 to 80 KB, as long as its
// font map lives, so the map is renewed from time to time. It outlives the shelf many times over: looking up
// a font takes longer than drawing a picture.
struct Fonts {
  FontMap map;
  std::set<std::pair<FontKey, Turn>> looked_up;
};
constexpr std::size_t kMostLookedUp = 128;

Fonts& fonts();
void note_look_up(const TextStyle& style, const Turn& turn);
Shelf& shelf_with_room();
void count(Shelf& shelf, const std::string& utf8);
Context make_context();
PangoContext* context_for(Shelf& shelf, cairo_t* cairo, const Turn& turn);
Layout make_layout(PangoContext* context, const Font& font, const std::string& utf8, const TextStyle& style);
FontKey key_of(const TextStyle& style);
Font& font_of(Shelf& shelf, const TextStyle& style);

}  // namespace

PangoLayoutLine* shape(cairo_t* cairo, const std::string& utf8, const TextStyle& style) {
  Shelf& shelf = shelf_with_room();
  Font& font = font_of(shelf, style);
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  const Turn turn = {matrix.xx, matrix.yx, matrix.xy, matrix.yy};
  PangoContext* context = context_for(shelf, cairo, turn);
  Layout& layout = font.lines[{turn, style.underline, style.strikeout, utf8}];
  if (!layout) {
    layout = make_layout(context, font, utf8, style);
    note_look_up(style, turn);
    count(shelf, utf8);
  }
  return pango_layout_get_line_readonly(layout.get(), 0);
}

LineMetrics measure(const std::string& utf8, const TextStyle& style) {
  Shelf& shelf = shelf_with_room();
  Font& font = font_of(shelf, style);
  auto known = font.widths.find(utf8);
  if (known == font.widths.end()) {
    PangoRectangle logical;
    pango_layout_get_extents(make_layout(shelf.measuring.get(), font, utf8, style).get(), nullptr, &logical);
    known = font.widths.emplace(utf8, pango_units_to_double(logical.width)).first;
    count(shelf, utf8);
  }
  return {font.ascent, font.descent, known->second};
}

LineMetrics measure_height(const TextStyle& style) {
  const Font& font = font_of(shelf_with_room(), style);
  return {font.ascent, font.descent, 0};
}

double cell_height(const std::string& face, int weight, bool italic) {
  constexpr double kProbe = 1000;
  TextStyle style = {};
  style.family = face;
  style.size = kProbe;
  style.weight = weight;
  style.italic = italic;
  const LineMetrics metrics = measure_height(style);
  return (metrics.ascent + metrics.descent) / kProbe;
}

namespace {

Fonts& fonts() {
  static thread_local Fonts fonts;
  if (!fonts.map) {
    fonts.map.reset(pango_cairo_font_map_new());
  }
  return fonts;
}

void note_look_up(const TextStyle& style, const Turn& turn) {
  fonts().looked_up.insert({key_of(style), turn});
}

Shelf& shelf_with_room() {
  static thread_local Shelf shelf;
  const bool renews_fonts = fonts().looked_up.size() >= kMostLookedUp;
  if (renews_fonts || shelf.fonts.size() >= kMostFonts || shelf.drawings.size() >= kMostDrawings ||
      shelf.lines >= kMostLines || shelf.text_bytes >= kMostTextBytes) {
    shelf = {};
  }
  if (renews_fonts) {
    fonts() = {};
  }
  if (!shelf.measuring) {
    shelf.measuring = make_context();
  }
  return shelf;
}

void count(Shelf& shelf, const std::string& utf8) {
  ++shelf.lines;
  shelf.text_bytes += utf8.size();
}

// Cairo has one font for all threads that ask for the same, and locks it while it paints or measures letters:
// sixteen threads waited for each other for a twentieth of their time. So threads ask in turn for the orders
// of colours in a pixel, of which letters in shades of gray know nothing: for Cairo these are other fonts.
cairo_subpixel_order_t order_of_thread() {
  constexpr std::array<cairo_subpixel_order_t, 5> kOrders = {
      CAIRO_SUBPIXEL_ORDER_DEFAULT, CAIRO_SUBPIXEL_ORDER_RGB, CAIRO_SUBPIXEL_ORDER_BGR,
      CAIRO_SUBPIXEL_ORDER_VRGB, CAIRO_SUBPIXEL_ORDER_VBGR};
  static std::atomic<std::size_t> threads = 0;
  static thread_local const std::size_t number = threads++;
  return kOrders[number % kOrders.size()];
}

Context make_context() {
  Context context(pango_font_map_create_context(fonts().map.get()));
  // Unhinted, so that a text is as wide in every format and at every size as its design says.
  const FontOptions options(cairo_font_options_create());
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_subpixel_order(options.get(), order_of_thread());
  pango_cairo_context_set_font_options(context.get(), options.get());
  pango_context_set_round_glyph_positions(context.get(), FALSE);
  return context;
}

// Pango takes every update for a change, and then shapes the lines of the context anew: it is told only where
// the surface has other font options than the last one under the same turn.
PangoContext* context_for(Shelf& shelf, cairo_t* cairo, const Turn& turn) {
  Drawing& drawing = shelf.drawings[turn];
  FontOptions options(cairo_font_options_create());
  cairo_surface_get_font_options(cairo_get_target(cairo), options.get());
  if (!drawing.context) {
    drawing.context = make_context();
  }
  if (!drawing.surface || !cairo_font_options_equal(drawing.surface.get(), options.get())) {
    pango_cairo_update_context(cairo, drawing.context.get());
    drawing.surface = std::move(options);
  }
  return drawing.context.get();
}

Layout make_layout(PangoContext* context, const Font& font, const std::string& utf8, const TextStyle& style) {
  Layout layout(pango_layout_new(context));
  pango_layout_set_font_description(layout.get(), font.description.get());
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

Description describe(const TextStyle& style) {
  Description description(pango_font_description_new());
  pango_font_description_set_family(description.get(), families(style.family).c_str());
  pango_font_description_set_absolute_size(description.get(), style.size * PANGO_SCALE);
  pango_font_description_set_weight(description.get(), static_cast<PangoWeight>(style.weight));
  pango_font_description_set_style(description.get(), style.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  return description;
}

FontKey key_of(const TextStyle& style) {
  return {style.family, style.size, style.weight, style.italic};
}

// The cell is the chosen font's, not that of the glyphs shown: a title keeps its place when one of its
// characters comes from another font. It is costly: Pango shapes a sample of the language to tell it.
Font& font_of(Shelf& shelf, const TextStyle& style) {
  const FontKey key = key_of(style);
  if (const auto known = shelf.fonts.find(key); known != shelf.fonts.end()) {
    return known->second;
  }
  note_look_up(style, kUpright);
  Font font = {describe(style), 0, 0, {}, {}};
  PangoFontMetrics* metrics =
      pango_context_get_metrics(shelf.measuring.get(), font.description.get(), nullptr);
  font.ascent = pango_units_to_double(pango_font_metrics_get_ascent(metrics));
  font.descent = pango_units_to_double(pango_font_metrics_get_descent(metrics));
  pango_font_metrics_unref(metrics);
  return shelf.fonts.emplace(key, std::move(font)).first->second;
}

}  // namespace

}  // namespace tavdcairo
