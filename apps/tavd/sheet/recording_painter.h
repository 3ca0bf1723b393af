// Writes down what is drawn, an operation a line, for comparing pages with what was looked at. Texts are
// measured by a rule and not by a font, so that a recording is the same wherever it is made.
#pragma once

#include <string>

#include "sheet/painter.h"

namespace tavdhost {

class RecordingPainter : public Painter {
 public:
  using Painter::area;
  void line(std::span<const PagePoint> points, const LineStyle& style) override;
  void area(std::span<const PagePoint> corners, std::uint32_t colour) override;
  void circle(PagePoint centre, double radius, const LineStyle& style) override;
  void disc(PagePoint centre, double radius, std::uint32_t colour) override;
  TextSize measure(const std::string& text, const TextStyle& style) override;
  void begin_group(const std::string& name) override;
  void end_group() override;

  const std::string& recording() const { return recording_; }

 protected:
  void draw_text(const std::string& text, const TextStyle& style, const TextPlace& place,
                 const TextSize& size) override;

 private:
  std::string recording_;
};

}  // namespace tavdhost
