// Pictures as SVG. Written as text by ourselves, because cairo's own SVG turns every character into an
// outline, and a text that stays text can be searched, copied and edited.
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "gui/cairo/canvas.h"
#include "gui/cairo/typeface.h"
#include "tavdgui/tavdgui.h"

namespace tavdcairo {

namespace {

class SvgCanvas : public Canvas {
 public:
  SvgCanvas(int width, int height);

  void polyline(const std::vector<Point>& points, const Stroke& stroke) override;
  void ellipse(const Ellipse& ellipse, const Paint& paint) override;
  void arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) override;
  void text(const std::string& utf8, Point reference, const TextStyle& style) override;
  bool finish(std::string& bytes, std::string& reason) override;
  bool has_pixels() const override { return false; }

 private:
  std::string body_;
};

std::string number(double value);
std::string hex(std::uint32_t colour);
std::string escaped(const std::string& utf8);
std::string stroke_attributes(const Stroke& stroke);

}  // namespace

std::unique_ptr<Canvas> make_svg_canvas(int width, int height) {
  return std::make_unique<SvgCanvas>(width, height);
}

namespace {

SvgCanvas::SvgCanvas(int width, int height) {
  const std::string w = std::to_string(width);
  const std::string h = std::to_string(height);
  body_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
          w + "\" height=\"" + h + "\" viewBox=\"0 0 " + w + " " + h +
          "\">\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n"
          "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
}

void SvgCanvas::polyline(const std::vector<Point>& points, const Stroke& stroke) {
  body_ += "<path d=\"";
  char command = 'M';
  for (const Point& point : points) {
    body_ += command + number(point.x) + " " + number(point.y);
    command = 'L';
  }
  body_ += "\"" + stroke_attributes(stroke) + "/>\n";
}

void SvgCanvas::ellipse(const Ellipse& ellipse, const Paint& paint) {
  body_ += "<ellipse cx=\"" + number(ellipse.centre.x) + "\" cy=\"" + number(ellipse.centre.y) + "\" rx=\"" +
           number(ellipse.rx) + "\" ry=\"" + number(ellipse.ry) + "\"";
  if (paint.fill) {
    body_ += " fill=\"" + hex(*paint.fill) + "\"";
  }
  if (paint.stroke) {
    body_ += stroke_attributes(*paint.stroke);
  }
  body_ += "/>\n";
}

void SvgCanvas::arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) {
  // `to` lies behind `from` in the counter-clockwise sense: at a smaller angle, since y runs downward.
  constexpr double kHalfTurn = 3.14159265358979323846;
  const double sweep = from - to;
  body_ += "<path d=\"M" + number(ellipse.centre.x + ellipse.rx * std::cos(from)) + " " +
           number(ellipse.centre.y + ellipse.ry * std::sin(from));
  // An SVG arc cannot be a full turn: two halves.
  for (const double part : {from - sweep / 2, to}) {
    body_ += "A" + number(ellipse.rx) + " " + number(ellipse.ry) + " 0 " +
             (sweep / 2 > kHalfTurn ? "1" : "0") + " 0 " +
             number(ellipse.centre.x + ellipse.rx * std::cos(part)) + " " +
             number(ellipse.centre.y + ellipse.ry * std::sin(part));
  }
  body_ += "\"" + stroke_attributes(stroke) + "/>\n";
}

void SvgCanvas::text(const std::string& utf8, Point reference, const TextStyle& style) {
  static constexpr std::array<const char*, 3> kAnchors = {"start", "middle", "end"};
  const LineMetrics metrics = measure(utf8, style);
  const Point baseline = baseline_offset(metrics, style);
  const std::string turn = style.angle == 0 ? "" : " rotate(" + number(-style.angle) + ")";
  body_ += "<g transform=\"translate(" + number(reference.x) + " " + number(reference.y) + ")" + turn + "\">";
  if (style.opaque) {
    body_ += "<rect x=\"" + number(baseline.x) + "\" y=\"" + number(baseline.y - metrics.ascent) +
             "\" width=\"" + number(metrics.width) + "\" height=\"" +
             number(metrics.ascent + metrics.descent) + "\" fill=\"#ffffff\"/>";
  }
  // The anchor rather than our own width places the line, so that it stays in place in the viewer's font.
  body_ += "<text y=\"" + number(baseline.y) + "\" text-anchor=\"" +
           kAnchors[static_cast<std::size_t>(style.horizontal)] + "\" font-family=\"" +
           escaped(families(style.family)) + "\" font-size=\"" + number(style.size) + "\"";
  if (style.weight != 400) {
    body_ += " font-weight=\"" + std::to_string(style.weight) + "\"";
  }
  if (style.italic) {
    body_ += " font-style=\"italic\"";
  }
  if (style.underline || style.strikeout) {
    body_ += std::string(" text-decoration=\"") + (style.underline ? "underline " : "") +
             (style.strikeout ? "line-through" : "") + "\"";
  }
  body_ += " fill=\"" + hex(style.colour) + "\" xml:space=\"preserve\">" + escaped(utf8) + "</text></g>\n";
}

bool SvgCanvas::finish(std::string& bytes, std::string& reason) {
  reason.clear();
  bytes = body_ + "</g>\n</svg>\n";
  return true;
}

// Two decimals: a hundredth of a pixel, far below what shows.
std::string number(double value) {
  constexpr double kFarOutside = 1e9;  // nothing that far away can be seen
  if (!(std::fabs(value) < kFarOutside)) {
    value = std::copysign(kFarOutside, value);
  }
  const double rounded = std::round(value * 100) / 100 + 0.0;  // + 0.0: no negative zero
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), rounded, std::chars_format::fixed);
  return {text.data(), end.ptr};
}

std::string hex(std::uint32_t colour) {
  std::array<char, 8> text;
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour & 0xFF, colour >> 8 & 0xFF,
                colour >> 16 & 0xFF);
  return text.data();
}

// XML has no place for control characters, escaped or not: they become spaces.
std::string escaped(const std::string& utf8) {
  std::string result;
  for (const char c : utf8) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
  }
  return result;
}

std::string stroke_attributes(const Stroke& stroke) {
  std::string result = " stroke=\"" + hex(stroke.colour) + "\" stroke-width=\"" + number(stroke.width) + "\"";
  const std::vector<double>& lengths = dashes(stroke.style);
  if (!lengths.empty()) {
    result += " stroke-linecap=\"butt\" stroke-dasharray=\"";
    for (std::size_t i = 0; i < lengths.size(); ++i) {
      result += (i > 0 ? " " : "") + number(lengths[i] * stroke.width);
    }
    result += "\"";
  }
  return result;
}

}  // namespace

}  // namespace tavdcairo
