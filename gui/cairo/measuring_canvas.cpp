#include "gui/cairo/measuring_canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "gui/cairo/typeface.h"

namespace tavdcairo {

namespace {

class MeasuringCanvas : public Canvas {
 public:
  explicit MeasuringCanvas(Measured& measured) : measured_(measured) {}

  void polyline(const std::vector<Point>& points, const Stroke& stroke) override;
  void ellipse(const Ellipse& ellipse, const Paint& paint) override;
  void arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) override;
  void text(const std::string& utf8, Point reference, const TextStyle& style) override;
  bool finish(std::string& /*bytes*/, std::string& reason) override {
    reason = "a surface that measures has no bytes";
    return false;
  }
  bool has_pixels() const override { return false; }

 private:
  void take(const tgui_box& box);
  void take(Point point, double stroke_width);

  Measured& measured_;
};

tgui_box about(const tgui_box& a, const tgui_box& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

Point on(const Ellipse& ellipse, double angle) {
  return {ellipse.centre.x + ellipse.rx * std::cos(angle), ellipse.centre.y + ellipse.ry * std::sin(angle)};
}

void MeasuringCanvas::take(const tgui_box& box) {
  measured_.ink = measured_.ink ? about(*measured_.ink, box) : box;
}

void MeasuringCanvas::take(Point point, double stroke_width) {
  const double half = stroke_width / 2;
  take({point.x - half, point.y - half, point.x + half, point.y + half});
}

void MeasuringCanvas::polyline(const std::vector<Point>& points, const Stroke& stroke) {
  for (const Point& point : points) take(point, stroke.width);
}

void MeasuringCanvas::ellipse(const Ellipse& ellipse, const Paint& paint) {
  if (!paint.stroke && !paint.fill) return;
  const double half = paint.stroke ? paint.stroke->width / 2 : 0;
  const auto& [centre, rx, ry] = ellipse;
  take({centre.x - rx - half, centre.y - ry - half, centre.x + rx + half, centre.y + ry + half});
}

// Its ends, and where it passes the axes of its ellipse.
void MeasuringCanvas::arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) {
  constexpr double kQuarter = std::numbers::pi / 2;
  take(on(ellipse, from), stroke.width);
  take(on(ellipse, to), stroke.width);
  for (double turn = std::ceil(to / kQuarter); turn * kQuarter < from; ++turn) {
    take(on(ellipse, turn * kQuarter), stroke.width);
  }
}

void MeasuringCanvas::text(const std::string& utf8, Point reference, const TextStyle& style) {
  const LineMetrics metrics = measure(utf8, style);
  const Point baseline = baseline_offset(metrics, style);
  const double angle = style.angle * std::numbers::pi / 180;
  const auto corner = [&](double along, double across) {
    return Point{reference.x + along * std::cos(angle) + across * std::sin(angle),
                 reference.y - along * std::sin(angle) + across * std::cos(angle)};
  };
  const double top = baseline.y - metrics.ascent;
  const double bottom = baseline.y + metrics.descent;
  const double end = baseline.x + metrics.width;
  const Point first = corner(baseline.x, top);
  tgui_box box = {first.x, first.y, first.x, first.y};
  for (const Point& at : {corner(end, top), corner(baseline.x, bottom), corner(end, bottom)}) {
    box = about(box, {at.x, at.y, at.x, at.y});
  }
  measured_.texts.push_back(box);
  take(box);
}

}  // namespace

std::unique_ptr<Canvas> make_measuring_canvas(Measured& measured) {
  return std::make_unique<MeasuringCanvas>(measured);
}

}  // namespace tavdcairo
