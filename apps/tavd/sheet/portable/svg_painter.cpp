#include "sheet/portable/svg_painter.h"

#include "base/text.h"
#include "sheet/page_numbers.h"
#include "sheet/portable/text_shaper.h"

namespace tavdhost {
namespace {

std::string attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + "\"";
}

std::string path_of(std::span<const PagePoint> points) {
  std::string path;
  for (const PagePoint point : points) {
    path += (path.empty() ? "M" : "L") + page_number(point.x) + " " + page_number(point.y);
  }
  return path;
}

std::string stroke_of(const LineStyle& style) {
  std::string text = attribute("fill", "none") + attribute("stroke", page_colour(style.colour)) +
                     attribute("stroke-width", page_number(style.width));
  if (style.dashes.empty()) return text;
  std::string lengths;
  for (const double mm : style.dashes) lengths += (lengths.empty() ? "" : " ") + page_number(mm);
  return text + attribute("stroke-dasharray", lengths);
}

std::string circle_of(PagePoint centre, double radius) {
  return attribute("cx", page_number(centre.x)) + attribute("cy", page_number(centre.y)) +
         attribute("r", page_number(radius));
}

// Where the text is anchored: its beginning is on the right where it runs from there.
const char* anchor_of(Along along, bool right_to_left) {
  if (along == Along::kCentre) return "middle";
  return (along == Along::kLeft) != right_to_left ? "start" : "end";
}

}  // namespace

SvgPainter::SvgPainter(const SvgPage& page) : language_(page.language) {
  const std::string width = page_number(page.width);
  const std::string height = page_number(page.height);
  body_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
          attribute("width", width + "mm") + attribute("height", height + "mm") +
          attribute("viewBox", "0 0 " + width + " " + height) + attribute("xml:lang", markup(page.language)) +
          attribute("role", "img") + attribute("aria-labelledby", "title desc") + ">\n<title id=\"title\">" +
          markup(page.title) + "</title>\n<desc id=\"desc\">" + markup(page.description) +
          "</desc>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n<g stroke-linejoin=\"round\"" +
          attribute("font-family", kPageFaces) + ">\n";
}

void SvgPainter::line(std::span<const PagePoint> points, const LineStyle& style) {
  body_ += "<path" + attribute("d", path_of(points)) + stroke_of(style) + "/>\n";
}

void SvgPainter::area(std::span<const PagePoint> corners, std::uint32_t colour) {
  body_ += "<path" + attribute("d", path_of(corners) + "Z") + attribute("fill", page_colour(colour)) + "/>\n";
}

void SvgPainter::circle(PagePoint centre, double radius, const LineStyle& style) {
  body_ += "<circle" + circle_of(centre, radius) + stroke_of(style) + "/>\n";
}

void SvgPainter::disc(PagePoint centre, double radius, std::uint32_t colour) {
  body_ += "<circle" + circle_of(centre, radius) + attribute("fill", page_colour(colour)) + "/>\n";
}

TextSize SvgPainter::measure(const std::string& text, const TextStyle& style) {
  return shaped_size(text, style, language_);
}

void SvgPainter::draw_text(const std::string& text, const TextStyle& style, const TextPlace& place,
                           const TextSize& size) {
  const bool right_to_left = is_right_to_left(text, style, language_);
  const PagePoint begin = baseline_offset(style, place, size);
  std::string transform = "translate(" + page_number(place.at.x) + " " + page_number(place.at.y) + ")";
  if (place.angle != 0) transform += " rotate(" + page_number(-place.angle) + ")";
  // The anchor rather than our own width places the line, so that it stays in place in the viewer's font.
  body_ += "<text" + attribute("transform", transform) + attribute("y", page_number(begin.y)) +
           attribute("font-size", page_number(style.size)) + attribute("fill", page_colour(style.colour)) +
           attribute("text-anchor", anchor_of(place.along, right_to_left));
  if (style.bold) body_ += attribute("font-weight", "700");
  if (right_to_left) body_ += attribute("direction", "rtl");
  body_ += attribute("xml:space", "preserve") + ">" + markup(text) + "</text>\n";
}

void SvgPainter::begin_group(const std::string& name) {
  body_ += "<g><title>" + markup(name) + "</title>\n";
}

void SvgPainter::end_group() {
  body_ += "</g>\n";
}

void SvgPainter::embed(const Box& box, const std::string& svg) {
  const std::size_t begin = svg.find("<svg ");
  if (begin == std::string::npos) return;
  const std::size_t end = svg.find('>', begin);
  const std::string head = svg.substr(begin, end - begin);
  const std::size_t view = head.find(" viewBox=");
  const std::string size =
      view == std::string::npos ? "" : head.substr(view, head.find('"', view + 11) + 1 - view);
  body_ += "<svg" + attribute("x", page_number(box.left)) + attribute("y", page_number(box.top)) +
           attribute("width", page_number(box.width)) + attribute("height", page_number(box.height)) + size +
           svg.substr(end);
  if (body_.back() != '\n') body_ += '\n';
}

std::string SvgPainter::finish() {
  return body_ + "</g>\n</svg>\n";
}

}  // namespace tavdhost
