#include "monotone_cubic.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace conformance {

MonotoneCubic::MonotoneCubic(std::vector<double> x, std::vector<double> y)
    : x_(std::move(x)), y_(std::move(y)), tangent_(x_.size()) {
  const std::size_t intervals = x_.size() - 1;
  std::vector<double> slope(intervals);
  for (std::size_t i = 0; i < intervals; ++i) slope[i] = (y_[i + 1] - y_[i]) / (x_[i + 1] - x_[i]);
  tangent_.front() = slope.front();
  tangent_.back() = slope.back();
  for (std::size_t i = 1; i < intervals; ++i) {
    tangent_[i] = slope[i - 1] * slope[i] > 0 ? (slope[i - 1] + slope[i]) / 2 : 0;
  }
  for (std::size_t i = 0; i < intervals; ++i) {
    if (slope[i] == 0) {
      tangent_[i] = tangent_[i + 1] = 0;
      continue;
    }
    const double a = tangent_[i] / slope[i];
    const double b = tangent_[i + 1] / slope[i];
    const double radius = std::hypot(a, b);
    if (radius > 3) {
      tangent_[i] = 3 / radius * a * slope[i];
      tangent_[i + 1] = 3 / radius * b * slope[i];
    }
  }
}

double MonotoneCubic::at(double x) const {
  const auto above = std::upper_bound(x_.begin() + 1, x_.end() - 1, x);
  const auto i = static_cast<std::size_t>(above - x_.begin()) - 1;
  const double h = x_[i + 1] - x_[i];
  const double t = (x - x_[i]) / h;
  const double from = (1 + 2 * t) * (1 - t) * (1 - t);
  const double to = t * t * (3 - 2 * t);
  const double from_tangent = t * (1 - t) * (1 - t);
  const double to_tangent = t * t * (t - 1);
  return y_[i] * from + y_[i + 1] * to + h * (tangent_[i] * from_tangent + tangent_[i + 1] * to_tangent);
}

}  // namespace conformance
