#include "gui/cairo/once_canvas.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

namespace tavdcairo {

namespace {

constexpr std::size_t kMemory = 4;  // figures: a label and a line, twice

// The last few of one kind of figure. A repetition counts only while nothing but a few lines and texts
// came between, which cover nothing.
template <typename Figure>
class Recent {
 public:
  // Whether `figure` is a repetition; remembers it. `now` counts all figures of the canvas.
  bool repeats(Figure figure, std::size_t now) {
    for (const auto& [known, when] : figures_) {
      if (when != 0 && now - when < kMemory && known == figure) {
        return true;
      }
    }
    figures_[next_++ % kMemory] = {std::move(figure), now};
    return false;
  }

 private:
  std::array<std::pair<Figure, std::size_t>, kMemory> figures_ = {};
  std::size_t next_ = 0;
};

using Line = std::tuple<double, std::uint32_t, int, std::vector<std::pair<double, double>>>;
using Text = std::tuple<std::string, double, double, std::string, double, int, bool, bool, bool,
                        std::uint32_t, double, Horizontal, Vertical, bool>;

class OnceCanvas : public Canvas {
 public:
  explicit OnceCanvas(std::unique_ptr<Canvas> canvas) : canvas_(std::move(canvas)) {}

  void polyline(const std::vector<Point>& points, const Stroke& stroke) override {
    std::vector<std::pair<double, double>> places;
    places.reserve(points.size());
    for (const Point& point : points) {
      places.emplace_back(point.x, point.y);
    }
    if (!lines_.repeats({stroke.width, stroke.colour, stroke.style, std::move(places)}, ++figures_)) {
      canvas_->polyline(points, stroke);
    }
  }

  void text(const std::string& utf8, Point at, const TextStyle& s) override {
    figures_ += s.opaque ? kMemory : 0;
    if (!texts_.repeats({utf8, at.x, at.y, s.family, s.size, s.weight, s.italic, s.underline, s.strikeout,
                         s.colour, s.angle, s.horizontal, s.vertical, s.opaque},
                        ++figures_)) {
      canvas_->text(utf8, at, s);
    }
  }

  void ellipse(const Ellipse& ellipse, const Paint& paint) override {
    figures_ += kMemory;  // it may be filled, over what stood there
    canvas_->ellipse(ellipse, paint);
  }

  void arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) override {
    ++figures_;
    canvas_->arc(ellipse, from, to, stroke);
  }

  void describe(const std::string& title, const std::string& description) override {
    canvas_->describe(title, description);
  }
  void group(const std::string& name) override { canvas_->group(name); }

  bool finish(std::string& bytes, std::string& reason) override { return canvas_->finish(bytes, reason); }
  bool has_pixels() const override { return canvas_->has_pixels(); }

 private:
  std::unique_ptr<Canvas> canvas_;
  Recent<Line> lines_;
  Recent<Text> texts_;
  std::size_t figures_ = 0;
};

}  // namespace

std::unique_ptr<Canvas> make_once_canvas(std::unique_ptr<Canvas> canvas) {
  return std::make_unique<OnceCanvas>(std::move(canvas));
}

}  // namespace tavdcairo
