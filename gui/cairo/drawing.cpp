// What libtavdgui's operations draw on a canvas: the state of the surface is applied here, operation by
// operation.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "codepage/codepage.h"
#include "gui/cairo/picture.h"
#include "gui/cairo/typeface.h"
#include "gui/cairo/utf8.h"

namespace tavdcairo {
namespace {

constexpr double kFarOutside = 1e6;     // device units; cairo's own numbers end at some 8e6
constexpr double kSmallestText = 0.01;  // em height, device units
constexpr double kLargestText = 2000;   // what the font rasteriser takes

Picture& picture_of(void* context) {
  return *static_cast<Picture*>(context);
}

tgui_state state_of(const tgui_surface* surface) {
  tgui_state state;
  tgui_surface_state(surface, &state);
  return state;
}

Point device(const tgui_surface* surface, double x, double y) {
  Point point;
  tgui_to_device(surface, x, y, &point.x, &point.y);
  return {std::clamp(point.x, -kFarOutside, kFarOutside), std::clamp(point.y, -kFarOutside, kFarOutside)};
}

// Device units per logical unit, along x and y.
Point scale(const tgui_surface* surface) {
  Point origin;
  Point one;
  tgui_to_device(surface, 0, 0, &origin.x, &origin.y);
  tgui_to_device(surface, 1, 1, &one.x, &one.y);
  return {std::fabs(one.x - origin.x), std::fabs(one.y - origin.y)};
}

// The selected pen; none if it draws nothing. A pen is as wide as the x axis scales it, and at least one
// device unit; on pixels its width is a whole number.
std::optional<Stroke> stroke_of(const tgui_surface* surface, const tgui_state& state, const Canvas& canvas) {
  tgui_object_info pen;
  if (tgui_get_object(state.pen, &pen) != 0 || pen.style == TGUI_PEN_NULL) {
    return std::nullopt;
  }
  double width = std::max(1.0, pen.width * scale(surface).x);
  if (canvas.has_pixels()) {
    width = std::floor(width + 0.5);
  }
  return Stroke{width, pen.colour, pen.style};
}

std::optional<std::uint32_t> fill_of(const tgui_state& state) {
  constexpr int kNullBrush = 1;
  tgui_object_info brush;
  if (tgui_get_object(state.brush, &brush) != 0 || brush.style == kNullBrush) {
    return std::nullopt;
  }
  return brush.colour;
}

bool same(const Stroke& a, const Stroke& b) {
  return a.width == b.width && a.colour == b.colour && a.style == b.style;
}

// Where the middle of a line of this width falls on whole pixels.
double on_pixels(double value, double width) {
  const bool odd = std::fmod(width, 2) == 1;
  return odd ? std::floor(value) + 0.5 : std::floor(value + 0.5);
}

// The name of the selected pen; empty if it has none.
std::string group_of(Picture& picture, const tgui_state& state) {
  tgui_object_info pen;
  if (picture.named_pens.empty() || tgui_get_object(state.pen, &pen) != 0) {
    return "";
  }
  std::vector<NamedPen>& named = picture.named_pens;
  const auto looks_so = [&pen](const NamedPen& row) {
    return row.colour == pen.colour && row.width == pen.width;
  };
  auto found = std::find_if(named.begin(), named.end(),
                            [&](const NamedPen& row) { return row.pen == state.pen && looks_so(row); });
  if (found == named.end()) {
    found = std::find_if(named.begin(), named.end(),
                         [&](const NamedPen& row) { return row.pen == nullptr && looks_so(row); });
  }
  if (found == named.end()) {
    return "";
  }
  found->pen = state.pen;
  return found->name;
}

// Has what is drawn next stand in the group of the selected pen.
void enter_group(Picture& picture, const tgui_state& state) {
  std::string group = group_of(picture, state);
  if (group != picture.group) {
    flush(picture);  // the line so far belongs to the former group
    picture.canvas->group(group);
    picture.group = std::move(group);
  }
}

// Lines that go on where the last one ended, in the same pen and direction of an axis or not at all along
// one, are drawn as one, so that joints are smooth and dashes run on.
void line_to(void* context, tgui_surface* surface, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  Picture& picture = picture_of(context);
  const tgui_state state = state_of(surface);
  const std::optional<Stroke> stroke = stroke_of(surface, state, *picture.canvas);
  if (!stroke) {
    flush(picture);
    return;
  }
  enter_group(picture, state);
  const Point from = device(surface, x1, y1);
  const Point to = device(surface, x2, y2);
  const auto along_axis = [](Point a, Point b) { return a.x == b.x || a.y == b.y; };
  const bool goes_on = !picture.line.empty() && picture.line.back().x == from.x &&
                       picture.line.back().y == from.y && same(picture.line_stroke, *stroke) &&
                       !along_axis(from, to) && !along_axis(picture.line[0], picture.line[1]);
  if (!goes_on) {
    flush(picture);
    picture.line = {from};
    picture.line_stroke = *stroke;
  }
  picture.line.push_back(to);
}

// The ellipse that a bounding rectangle stands for.
Ellipse inscribed(const tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  const Point a = device(surface, left, top);
  const Point b = device(surface, right, bottom);
  return {{(a.x + b.x) / 2, (a.y + b.y) / 2}, std::fabs(b.x - a.x) / 2, std::fabs(b.y - a.y) / 2};
}

void ellipse(void* context, tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  Picture& picture = picture_of(context);
  flush(picture);
  const tgui_state state = state_of(surface);
  enter_group(picture, state);
  picture.canvas->ellipse(inscribed(surface, left, top, right, bottom),
                          {stroke_of(surface, state, *picture.canvas), fill_of(state)});
}

void arc(void* context, tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom,
         int32_t xs, int32_t ys, int32_t xe, int32_t ye) {
  Picture& picture = picture_of(context);
  flush(picture);
  const tgui_state state = state_of(surface);
  const std::optional<Stroke> stroke = stroke_of(surface, state, *picture.canvas);
  const Ellipse whole = inscribed(surface, left, top, right, bottom);
  if (!stroke || !(whole.rx > 0) || !(whole.ry > 0)) {
    return;
  }
  enter_group(picture, state);
  const auto angle = [&](int32_t x, int32_t y) {
    const Point point = device(surface, x, y);
    return std::atan2((point.y - whole.centre.y) / whole.ry, (point.x - whole.centre.x) / whole.rx);
  };
  const double from = angle(xs, ys);
  double to = angle(xe, ye);
  if (to >= from) {
    to -= 2 * std::numbers::pi;
  }
  picture.canvas->arc(whole, from, to, *stroke);
}

// The selected font and the text state, in device units. GDI takes the height from the y axis and lets the
// width follow the design, so that text is never stretched.
TextStyle style_of(const tgui_surface* surface, const tgui_state& state) {
  constexpr int kDefaultHeight = 13;  // device units, where a font asks for none
  tgui_object_info object;
  tgui_get_object(state.font, &object);
  const tgui_font& font = object.font;
  TextStyle style;
  style.family = font.face;
  style.weight = font.weight == 0 ? 400 : std::clamp(font.weight, 100, 1000);
  style.italic = font.italic != 0;
  style.underline = font.underline != 0;
  style.strikeout = font.strikeout != 0;
  style.size = font.height == 0 ? kDefaultHeight : std::fabs(font.height * scale(surface).y);
  if (font.height > 0) {
    style.size /= cell_height(style.family, style.weight, style.italic);
  }
  style.size = std::clamp(style.size, kSmallestText, kLargestText);
  style.angle = font.escapement / 10.0;
  style.colour = state.text_colour;
  style.opaque = state.background_mode == TGUI_OPAQUE;
  style.horizontal = (state.text_align & TGUI_TA_CENTER) == TGUI_TA_CENTER ? Horizontal::kCentre
                     : (state.text_align & TGUI_TA_RIGHT) != 0             ? Horizontal::kRight
                                                                           : Horizontal::kLeft;
  style.vertical = (state.text_align & TGUI_TA_BASELINE) == TGUI_TA_BASELINE ? Vertical::kBaseline
                   : (state.text_align & TGUI_TA_BOTTOM) != 0                ? Vertical::kBottom
                                                                             : Vertical::kTop;
  return style;
}

void textw(void* context, tgui_surface* surface, int32_t x, int32_t y, const tavd_wchar* text,
           int32_t length) {
  Picture& picture = picture_of(context);
  flush(picture);
  const tgui_state state = state_of(surface);
  enter_group(picture, state);
  picture.canvas->text(to_utf8(text, static_cast<std::size_t>(length)), device(surface, x, y),
                       style_of(surface, state));
}

void text(void* context, tgui_surface* surface, int32_t x, int32_t y, const char* bytes, int32_t length) {
  std::basic_string<tavd_wchar> wide(static_cast<std::size_t>(length), u'\0');
  wide.resize(
      codepage::widen(codepage::kDefault, bytes, static_cast<std::size_t>(length), wide.data(), wide.size()));
  textw(context, surface, x, y, wide.data(), static_cast<int32_t>(wide.size()));
}

// An operation as a surface calls it.
template <auto kDraw, typename... Arguments>
void drawn(void* context, tgui_surface* surface, Arguments... arguments) {
  or_lacks(picture_of(context), [&] { kDraw(context, surface, arguments...); });
}

}  // namespace

void flush(Picture& picture) {
  std::vector<Point> line;
  line.swap(picture.line);
  if (line.size() < 2) {
    return;
  }
  // Only straight strokes along an axis are moved to whole pixels; a smooth curve would become uneven.
  if (picture.canvas->has_pixels()) {
    const double width = picture.line_stroke.width;
    const bool upright = std::all_of(line.begin(), line.end(), [&](Point p) { return p.x == line[0].x; });
    const bool level = std::all_of(line.begin(), line.end(), [&](Point p) { return p.y == line[0].y; });
    for (Point& point : line) {
      point.x = upright ? on_pixels(point.x, width) : point.x;
      point.y = level ? on_pixels(point.y, width) : point.y;
    }
  }
  picture.canvas->polyline(line, picture.line_stroke);
}

void add_drawing(tgui_operations& operations) {
  operations.line_to = drawn<line_to>;
  operations.ellipse = drawn<ellipse>;
  operations.arc = drawn<arc>;
  operations.text = drawn<text>;
  operations.textw = drawn<textw>;
}

}  // namespace tavdcairo
