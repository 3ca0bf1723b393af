#include "sheet/chart/geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace tavdhost {
namespace {

constexpr double kTouching = 1e-9;  // figures that share no more than a rounding are apart

struct Interval {
  double from, to;
};

// How far the corners reach along a direction.
Interval reach(const Quad& quad, PagePoint direction) {
  Interval interval = {INFINITY, -INFINITY};
  for (const PagePoint corner : quad) {
    const double along = corner.x * direction.x + corner.y * direction.y;
    interval = {std::min(interval.from, along), std::max(interval.to, along)};
  }
  return interval;
}

// Whether a side of `a` has all of `b` on its other side: two convex figures are apart only if one has such a
// side.
bool is_apart(const Quad& a, const Quad& b) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    const PagePoint from = a[i];
    const PagePoint to = a[(i + 1) % a.size()];
    const PagePoint across = {to.y - from.y, from.x - to.x};
    const Interval one = reach(a, across);
    const Interval other = reach(b, across);
    if (one.to <= other.from + kTouching || other.to <= one.from + kTouching) return true;
  }
  return false;
}

PagePoint between(PagePoint a, PagePoint b, double part) {
  return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

// The part of a segment on the inner side of all edges of a convex figure with its corners in clockwise order
// on the page, from 0 at its beginning to 1 at its end.
std::optional<Interval> part_inside(const Quad& quad, PagePoint from, PagePoint to) {
  Interval part = {0, 1};
  for (std::size_t i = 0; i < quad.size(); ++i) {
    const PagePoint corner = quad[i];
    const PagePoint next = quad[(i + 1) % quad.size()];
    const auto side = [&](PagePoint point) {
      return (next.x - corner.x) * (point.y - corner.y) - (next.y - corner.y) * (point.x - corner.x);
    };
    const double begin = side(from);
    const double end = side(to);
    if (begin < 0 && end < 0) return {};
    if (begin < 0) part.from = std::max(part.from, begin / (begin - end));
    if (end < 0) part.to = std::min(part.to, begin / (begin - end));
  }
  return part.from < part.to ? std::optional(part) : std::nullopt;
}

// Joins pieces of segments into lines.
class Pieces {
 public:
  void add(PagePoint from, PagePoint to) {
    if (lines_.empty() || lines_.back().back().x != from.x || lines_.back().back().y != from.y) {
      lines_.push_back({from});
    }
    lines_.back().push_back(to);
  }
  std::vector<Polyline> take() { return std::move(lines_); }

 private:
  std::vector<Polyline> lines_;
};

}  // namespace

Quad quad_of(const Box& box) {
  return {
      {{box.left, box.top}, {box.right(), box.top}, {box.right(), box.bottom()}, {box.left, box.bottom()}}};
}

Quad turned_quad(PagePoint middle, double width, double height, double degrees) {
  const double angle = degrees * std::numbers::pi / 180;
  const PagePoint along = {std::cos(angle) * width / 2, -std::sin(angle) * width / 2};
  const PagePoint down = {std::sin(angle) * height / 2, std::cos(angle) * height / 2};
  return {{{middle.x - along.x - down.x, middle.y - along.y - down.y},
           {middle.x + along.x - down.x, middle.y + along.y - down.y},
           {middle.x + along.x + down.x, middle.y + along.y + down.y},
           {middle.x - along.x + down.x, middle.y - along.y + down.y}}};
}

Box box_about(const Quad& quad) {
  const Interval x = reach(quad, {1, 0});
  const Interval y = reach(quad, {0, 1});
  return {x.from, y.from, x.to - x.from, y.to - y.from};
}

bool overlap(const Quad& a, const Quad& b) {
  return !is_apart(a, b) && !is_apart(b, a);
}

bool crosses(const Quad& quad, PagePoint from, PagePoint to) {
  return part_inside(quad, from, to).has_value();
}

bool holds(const Box& box, const Quad& quad) {
  return std::ranges::all_of(quad, [&box](PagePoint corner) {
    return corner.x >= box.left && corner.x <= box.right() && corner.y >= box.top && corner.y <= box.bottom();
  });
}

double distance(PagePoint a, PagePoint b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}

std::vector<Polyline> inside(std::span<const PagePoint> line, const Box& box) {
  Pieces pieces;
  const Quad quad = quad_of(box);
  for (std::size_t i = 1; i < line.size(); ++i) {
    const std::optional<Interval> part = part_inside(quad, line[i - 1], line[i]);
    if (!part) continue;
    // The ends themselves, so that the pieces of neighbouring segments meet.
    pieces.add(part->from == 0 ? line[i - 1] : between(line[i - 1], line[i], part->from),
               part->to == 1 ? line[i] : between(line[i - 1], line[i], part->to));
  }
  return pieces.take();
}

std::vector<Polyline> outside(std::span<const PagePoint> line, const Quad& quad) {
  Pieces pieces;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const PagePoint from = line[i - 1];
    const PagePoint to = line[i];
    const std::optional<Interval> part = part_inside(quad, from, to);
    if (!part) {
      pieces.add(from, to);
      continue;
    }
    if (part->from > 0) pieces.add(from, between(from, to, part->from));
    if (part->to < 1) pieces.add(between(from, to, part->to), to);
  }
  return pieces.take();
}

Course::Course(std::span<const PagePoint> line) : line_(line), lengths_{0} {
  for (std::size_t i = 1; i < line.size(); ++i)
    lengths_.push_back(lengths_.back() + distance(line[i - 1], line[i]));
}

PagePoint Course::at(double length) const {
  if (line_.size() < 2) return line_.front();
  const auto found = std::upper_bound(lengths_.begin() + 1, lengths_.end() - 1, length);
  const auto end = static_cast<std::size_t>(found - lengths_.begin());
  const double step = lengths_[end] - lengths_[end - 1];
  return between(line_[end - 1], line_[end], step > 0 ? (length - lengths_[end - 1]) / step : 0);
}

double Course::bulge(double from, double to) const {
  const PagePoint a = at(from);
  const PagePoint b = at(to);
  const double chord = distance(a, b);
  if (!(chord > 0)) return 0;
  double largest = 0;
  for (std::size_t i = 0; i < line_.size(); ++i) {
    if (lengths_[i] <= from || lengths_[i] >= to) continue;
    const PagePoint p = line_[i];
    largest = std::max(largest, std::abs((b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x)) / chord);
  }
  return largest;
}

}  // namespace tavdhost
