// Draws a page as SVG in which texts are texts.
#pragma once

#include <string>

#include "sheet/painter.h"

namespace tavdhost {

struct SvgPage {
  double width, height;            // mm
  std::string language;            // BCP 47
  std::string title, description;  // for those who do not see it
};

class SvgPainter : public Painter {
 public:
  explicit SvgPainter(const SvgPage& page);

  using Painter::area;
  void line(std::span<const PagePoint> points, const LineStyle& style) override;
  void area(std::span<const PagePoint> corners, std::uint32_t colour) override;
  void circle(PagePoint centre, double radius, const LineStyle& style) override;
  void disc(PagePoint centre, double radius, std::uint32_t colour) override;
  TextSize measure(const std::string& text, const TextStyle& style) override;
  void begin_group(const std::string& name) override;
  void end_group() override;

  // Another picture, a whole file of SVG with a size and a viewBox, as large as the box allows, in its
  // middle.
  void embed(const Box& box, const std::string& svg);

  // The file.
  std::string finish();

 protected:
  void draw_text(const std::string& text, const TextStyle& style, const TextPlace& place,
                 const TextSize& size) override;

 private:
  std::string language_;
  std::string body_;
};

}  // namespace tavdhost
