// A piecewise cubic through points that stays monotone wherever the points are (Fritsch and Carlson, SIAM J.
// Numer. Anal. 17, 1980): tangents are means of the neighbouring slopes, cut back into the circle of
// radius 3.
#pragma once

#include <vector>

namespace conformance {

class MonotoneCubic {
 public:
  // `x` rises; at least two points.
  MonotoneCubic(std::vector<double> x, std::vector<double> y);
  double at(double x) const;

 private:
  std::vector<double> x_;
  std::vector<double> y_;
  std::vector<double> tangent_;
};

}  // namespace conformance
