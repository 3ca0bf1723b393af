#include "drawing/win32/dashes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tavdhost {
namespace {

constexpr double kDash[] = {8, 4};
constexpr double kDot[] = {2, 3};
constexpr double kDashDot[] = {8, 3, 2, 3};

DashPoint between(DashPoint a, DashPoint b, double part) {
  return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

}  // namespace

std::span<const double> dash_pattern(UINT pen_style) {
  switch (pen_style & PS_STYLE_MASK) {
    case PS_DASH:
      return kDash;
    case PS_DOT:
      return kDot;
    case PS_DASHDOT:
      return kDashDot;
    default:
      return {};
  }
}

void Dashes::restart() {
  at_ = 0;
  used_ = 0;
}

std::vector<Dash> Dashes::cut(DashPoint from, DashPoint to) {
  std::vector<Dash> dashes;
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  for (double done = 0; done < length;) {
    const double rest = pattern_[at_] * pen_width_ - used_;
    const double step = std::min(rest, length - done);
    const bool is_dash = at_ % 2 == 0;
    if (is_dash)
      dashes.push_back({between(from, to, done / length), between(from, to, (done + step) / length)});
    if (step == rest) {
      at_ = (at_ + 1) % pattern_.size();
      used_ = 0;
    } else {
      used_ += step;
    }
    done += step;
  }
  return dashes;
}

std::vector<DashPoint> ellipse_points(const RECTL& box, POINTL start, POINTL end) {
  constexpr int kPoints = 180;  // on the whole ellipse
  constexpr double kAround = 2 * std::numbers::pi;
  const DashPoint centre = {(box.left + box.right) / 2.0, (box.top + box.bottom) / 2.0};
  const DashPoint radius = {std::max(std::abs(box.right - box.left) / 2.0, 0.5),
                            std::max(std::abs(box.bottom - box.top) / 2.0, 0.5)};
  // y grows downward.
  const auto angle = [&](POINTL at) {
    return std::atan2((centre.y - at.y) / radius.y, (at.x - centre.x) / radius.x);
  };
  const double first = angle(start);
  double sweep = angle(end) - first;
  if (sweep <= 0) sweep += kAround;
  const int count = std::max(2, static_cast<int>(std::lround(kPoints * sweep / kAround)));
  std::vector<DashPoint> points;
  for (int i = 0; i <= count; ++i) {
    const double at = first + sweep * i / count;
    points.push_back({centre.x + radius.x * std::cos(at), centre.y - radius.y * std::sin(at)});
  }
  return points;
}

}  // namespace tavdhost
