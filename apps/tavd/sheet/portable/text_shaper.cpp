#include "sheet/portable/text_shaper.h"

#include <map>
#include <memory>
#include <tuple>

namespace tavdhost {
namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
struct FreeDescription {
  void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using Context = std::unique_ptr<PangoContext, Unref>;
using Layout = std::unique_ptr<PangoLayout, Unref>;
using Description = std::unique_ptr<PangoFontDescription, FreeDescription>;

using ContextKey = std::tuple<std::string, TextDirection>;                          // language
using FontKey = std::tuple<double, bool>;                                           // size, bold
using LineKey = std::tuple<double, bool, TextDirection, std::string, std::string>;  // ..., language, text

struct Line {
  Layout layout;
  TextSize size;
};

// When it is full all of it goes, so that ever other texts take no more than the shaping of each.
struct Shelf {
  std::map<ContextKey, Context> contexts;
  std::map<FontKey, Description> fonts;
  std::map<LineKey, Line> lines;
};
constexpr std::size_t kMostFonts = 64;
constexpr std::size_t kMostLines = 2048;

Context make_context(const std::string& language, TextDirection direction) {
  Context context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  pango_cairo_context_set_font_options(context.get(), options);
  cairo_font_options_destroy(options);
  constexpr double kPixelsAsPoints = 72;
  pango_cairo_context_set_resolution(context.get(), kPixelsAsPoints);
  pango_context_set_round_glyph_positions(context.get(), FALSE);
  pango_context_set_language(context.get(), pango_language_from_string(language.c_str()));
  pango_context_set_base_dir(
      context.get(), direction == TextDirection::kRightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
  return context;
}

Description make_font(const TextStyle& style) {
  Description font(pango_font_description_new());
  pango_font_description_set_family_static(font.get(), kPageFaces);
  pango_font_description_set_weight(font.get(), style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_absolute_size(font.get(), style.size * kLayoutUnits * PANGO_SCALE);
  return font;
}

Line make_line(Shelf& shelf, const std::string& text, const TextStyle& style, const std::string& language) {
  Context& context = shelf.contexts[{language, style.direction}];
  if (!context) context = make_context(language, style.direction);
  Description& font = shelf.fonts[{style.size, style.bold}];
  if (!font) font = make_font(style);
  Line line = {Layout(pango_layout_new(context.get())), {}};
  PangoLayout* const layout = line.layout.get();
  pango_layout_set_auto_dir(layout, style.direction == TextDirection::kByText);
  pango_layout_set_single_paragraph_mode(layout, TRUE);
  pango_layout_set_font_description(layout, font.get());
  pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
  PangoRectangle cell;
  pango_layout_get_extents(layout, nullptr, &cell);
  const auto mm = [](int units) { return pango_units_to_double(units) / kLayoutUnits; };
  const int ascent = pango_layout_get_baseline(layout);
  line.size = {mm(cell.width), mm(ascent), mm(cell.height - ascent)};
  return line;
}

Line& line_of(const std::string& text, const TextStyle& style, const std::string& language) {
  static thread_local Shelf shelf;
  if (shelf.fonts.size() >= kMostFonts || shelf.lines.size() >= kMostLines) shelf = {};
  Line& line = shelf.lines[{style.size, style.bold, style.direction, language, text}];
  if (!line.layout) line = make_line(shelf, text, style, language);
  return line;
}

}  // namespace

PangoLayoutLine* shaped_line(const std::string& text, const TextStyle& style, const std::string& language) {
  return pango_layout_get_line_readonly(line_of(text, style, language).layout.get(), 0);
}

TextSize shaped_size(const std::string& text, const TextStyle& style, const std::string& language) {
  return line_of(text, style, language).size;
}

bool is_right_to_left(const std::string& text, const TextStyle& style, const std::string& language) {
  PangoLayoutLine* const line = shaped_line(text, style, language);
  return pango_layout_line_get_resolved_direction(line) == PANGO_DIRECTION_RTL;
}

}  // namespace tavdhost
