#include "sheet/chart/labels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "sheet/chart/look.h"

namespace tavdhost {
namespace {

constexpr double kMargin = 0.35;     // mm about a label
constexpr double kGapOfLabel = 0.7;  // mm between a label and the ends of its curve's gap
constexpr double kPlaceStep = 0.8;   // mm between the places that are tried
constexpr double kMostBulge = 0.3;   // mm, of a curve beside the chord through its label
constexpr std::size_t kNoLine = static_cast<std::size_t>(-1);

// Of a text that is read from the left or from above to below: never upside down.
double upright(double degrees) {
  if (degrees > 90) return degrees - 180;
  if (degrees <= -90) return degrees + 180;
  return degrees;
}

// Places from the preferred one outward.
std::vector<double> places_from(double preferred, double lowest, double highest) {
  std::vector<double> places;
  preferred = std::clamp(preferred, lowest, highest);
  for (double step = 0; preferred - step >= lowest || preferred + step <= highest; step += kPlaceStep) {
    if (preferred + step <= highest) places.push_back(preferred + step);
    if (step > 0 && preferred - step >= lowest) places.push_back(preferred - step);
  }
  return places;
}

}  // namespace

bool LabelPlacer::is_free(const Quad& quad) const {
  return holds(room_, quad) &&
         std::ranges::none_of(taken_, [&quad](const Quad& other) { return overlap(quad, other); });
}

// The weight of all lines that run through the quad, `but` one.
double LabelPlacer::crossed(const Quad& quad, std::size_t but) const {
  const Box about = box_about(quad);
  const auto runs_through = [&](PagePoint a, PagePoint b) {
    return std::max(a.x, b.x) >= about.left && std::min(a.x, b.x) <= about.right() &&
           std::max(a.y, b.y) >= about.top && std::min(a.y, b.y) <= about.bottom() && crosses(quad, a, b);
  };
  double weight = 0;
  for (std::size_t line = 0; line < lines_.size(); ++line) {
    if (line == but) continue;
    const Polyline& points = lines_[line].points;
    for (std::size_t i = 1; i < points.size(); ++i) {
      if (!runs_through(points[i - 1], points[i])) continue;
      weight += lines_[line].weight;
      break;
    }
  }
  return weight;
}

std::optional<ChartLabel> LabelPlacer::on_line(std::size_t line, const std::string& text,
                                               const TextStyle& style, double preferred) {
  const Course course(lines_[line].points);
  const TextSize size = painter_.measure(text, style);
  const double half = size.width / 2 + kGapOfLabel;
  if (course.length() < 2 * half) return {};
  std::optional<ChartLabel> best;
  double least = kMainLine;
  for (const double at : places_from(preferred * course.length(), half, course.length() - half)) {
    if (course.bulge(at - half, at + half) > kMostBulge) continue;
    const PagePoint from = course.at(at - half);
    const PagePoint to = course.at(at + half);
    const double angle = upright(std::atan2(from.y - to.y, to.x - from.x) * 180 / std::numbers::pi);
    const PagePoint middle = {(from.x + to.x) / 2, (from.y + to.y) / 2};
    const Quad quad = turned_quad(middle, size.width + 2 * kMargin, size.height() + 2 * kMargin, angle);
    if (!is_free(quad)) continue;
    const double cost = crossed(quad, line);
    if (cost >= least) continue;
    least = cost;
    best = {text, style, middle, angle, quad};
    if (cost == 0) break;
  }
  if (best) keep_free(best->quad);
  return best;
}

// A free box in one of eight directions, near rather than far, that hides few lines.
std::optional<Box> LabelPlacer::box_beside(PagePoint point, double gap, double width, double height) const {
  constexpr std::array<PagePoint, 8> kDirections = {
      {{1, -1}, {-1, -1}, {1, 1}, {-1, 1}, {1, 0}, {-1, 0}, {0, -1}, {0, 1}}};
  constexpr double kFarIsBad = 0.7;  // as many lines hidden make up for being so many gaps farther away
  std::optional<Box> best;
  double least = INFINITY;
  for (const double away : {1.0, 1.8, 3.0, 5.0}) {
    for (const PagePoint direction : kDirections) {
      const double lean = direction.x != 0 && direction.y != 0 ? std::numbers::sqrt2 / 2 : 1;
      const PagePoint middle = {point.x + direction.x * (gap * away * lean + width / 2),
                                point.y + direction.y * (gap * away * lean + height / 2)};
      const Box box = {middle.x - width / 2, middle.y - height / 2, width, height};
      if (!is_free(quad_of(box))) continue;
      const double cost = crossed(quad_of(box), kNoLine) + kFarIsBad * (away - 1);
      if (cost >= least) continue;
      least = cost;
      best = box;
    }
  }
  return best;
}

std::optional<ChartLabel> LabelPlacer::beside(PagePoint point, double gap, const std::string& text,
                                              const TextStyle& style) {
  const TextSize size = painter_.measure(text, style);
  const std::optional<Box> box =
      box_beside(point, gap, size.width + 2 * kMargin, size.height() + 2 * kMargin);
  if (!box) return {};
  keep_free(quad_of(*box));
  return ChartLabel{text, style, {box->left + box->width / 2, box->top + box->height / 2}, 0, quad_of(*box)};
}

std::optional<ChartFlag> LabelPlacer::flag(PagePoint point, double gap, const std::vector<std::string>& lines,
                                           const TextStyle& style) {
  constexpr double kPadding = 0.8;  // mm
  double width = 0;
  double height = 0;
  for (const std::string& line : lines) {
    const TextSize size = painter_.measure(line, style);
    width = std::max(width, size.width);
    height += size.height();
  }
  const std::optional<Box> box = box_beside(point, gap, width + 2 * kPadding, height + kPadding);
  if (!box) return {};
  keep_free(quad_of(
      {box->left - kMargin, box->top - kMargin, box->width + 2 * kMargin, box->height + 2 * kMargin}));
  return ChartFlag{lines, style, *box};
}

void LabelPlacer::draw(const ChartLabel& label, const Box& room) const {
  const double turn = label.angle * std::numbers::pi / 180;
  const TextSize size = painter_.measure(label.text, label.style);
  // The cell stands about the middle: its baseline is below that.
  const double down = (size.ascent - size.descent) / 2;
  painter_.text(label.text, label.style,
                {{label.middle.x + std::sin(turn) * down, label.middle.y + std::cos(turn) * down},
                 Along::kCentre,
                 Across::kBaseline,
                 label.angle},
                room);
}

void LabelPlacer::draw(const ChartFlag& flag, const Box& room) const {
  painter_.area(flag.box, kWhite);
  const Box& box = flag.box;
  const std::array<PagePoint, 5> border = {{{box.left, box.top},
                                            {box.right(), box.top},
                                            {box.right(), box.bottom()},
                                            {box.left, box.bottom()},
                                            {box.left, box.top}}};
  painter_.line(border, kFlagFrame);
  double height = 0;
  for (const std::string& line : flag.lines) height += painter_.measure(line, flag.style).height();
  double top = box.top + (box.height - height) / 2;
  for (const std::string& line : flag.lines) {
    painter_.text(line, flag.style, {{box.left + box.width / 2, top}, Along::kCentre, Across::kTop}, room);
    top += painter_.measure(line, flag.style).height();
  }
}

}  // namespace tavdhost
