// Pictures as SVG. Written as text by ourselves, because cairo's own SVG turns every character into an
// outline, and a text that stays text can be searched, copied and edited.
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <set>
#include <utility>

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
  void describe(const std::string& title, const std::string& description) override;
  void group(const std::string& name) override;
  bool finish(std::string& bytes, std::string& reason) override;
  bool has_pixels() const override { return false; }

 private:
  void close_group();
  void enter_group();

  std::string size_;  // attributes of the picture
  std::string title_, description_;
  std::string body_;
  std::string open_group_;                         // the one that body_ ends in; empty: none
  std::string group_;                              // of the next figure: it is opened only if there is one
  std::set<std::string> ids_ = {"title", "desc"};  // that are taken
};

std::string number(double value);
std::string hex(std::uint32_t colour);
std::string escaped(const std::string& utf8);
std::string id_of(const std::string& name);
std::string stroke_attributes(const Stroke& stroke);

}  // namespace

std::unique_ptr<Canvas> make_svg_canvas(int width, int height) {
  return std::make_unique<SvgCanvas>(width, height);
}

namespace {

SvgCanvas::SvgCanvas(int width, int height) {
  const std::string w = std::to_string(width);
  const std::string h = std::to_string(height);
  size_ = "width=\"" + w + "\" height=\"" + h + "\" viewBox=\"0 0 " + w + " " + h + "\"";
}

void SvgCanvas::describe(const std::string& title, const std::string& description) {
  title_ = title;
  description_ = description;
}

void SvgCanvas::group(const std::string& name) {
  group_ = name;
}

void SvgCanvas::close_group() {
  if (!open_group_.empty()) {
    body_ += "</g>\n";
    open_group_.clear();
  }
}

void SvgCanvas::enter_group() {
  if (open_group_ == group_) {
    return;
  }
  close_group();
  open_group_ = group_;
  if (!group_.empty()) {
    const std::string plain = id_of(group_);
    std::string id = plain;
    for (int count = 2; !ids_.insert(id).second; ++count) {
      id = plain + "-" + std::to_string(count);
    }
    body_ += "<g id=\"" + id + "\"><title>" + escaped(group_) + "</title>\n";
  }
}

void SvgCanvas::polyline(const std::vector<Point>& points, const Stroke& stroke) {
  enter_group();
  body_ += "<path d=\"";
  char command = 'M';
  for (const Point& point : points) {
    body_ += command + number(point.x) + " " + number(point.y);
    command = 'L';
  }
  body_ += "\"" + stroke_attributes(stroke) + "/>\n";
}

void SvgCanvas::ellipse(const Ellipse& ellipse, const Paint& paint) {
  enter_group();
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
  enter_group();
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
  const LineMetrics metrics = style.opaque ? measure(utf8, style) : measure_height(style);
  const Point baseline = baseline_offset(metrics, style);
  const std::string turn = style.angle == 0 ? "" : " rotate(" + number(-style.angle) + ")";
  enter_group();
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
  close_group();
  std::string labels;
  std::string head;
  for (const auto& [tag, text] : {std::pair("title", &title_), std::pair("desc", &description_)}) {
    if (!text->empty()) {
      head += std::string("<") + tag + " id=\"" + tag + "\">" + escaped(*text) + "</" + tag + ">\n";
      labels += (labels.empty() ? "" : " ") + std::string(tag);
    }
  }
  // Without a role of its own a picture's title is not read by all screen readers.
  const std::string role = labels.empty() ? "" : " role=\"img\" aria-labelledby=\"" + labels + "\"";
  bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" " + size_ +
          role + ">\n" + head +
          "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n"
          "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n" +
          body_ + "</g>\n</svg>\n";
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

// The letters and digits of a name with "-" between words; "group" in front of a digit, with which no id
// should begin, and in the place of nothing.
std::string id_of(const std::string& name) {
  std::string id;
  for (const char c : name) {
    const bool is_capital = c >= 'A' && c <= 'Z';
    if (is_capital || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
      id += is_capital ? static_cast<char>(c - 'A' + 'a') : c;
    } else if (!id.empty() && id.back() != '-') {
      id += '-';
    }
  }
  if (!id.empty() && id.back() == '-') {
    id.pop_back();
  }
  if (id.empty()) {
    return "group";
  }
  return id[0] <= '9' ? "group-" + id : id;
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
