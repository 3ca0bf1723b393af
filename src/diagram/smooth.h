// The curve smoother: turns a few points into a smooth curve through all of them. Every point gets a tangent;
// every span between two points is halved again and again, each new point placed from the tangents on either
// side of it. Geometry runs in working space, where a coordinate whose axis is logarithmic is its logarithm,
// so that the curve is smooth as drawn.
//
//   Smoother curve(points, n, xlog, ylog, depth);
//   if (curve.first(&x, &y)) {
//     while (curve.next(&x, &y)) ...
//   }
#pragma once

namespace tavd {

struct CurvePoint {
  float x, y;
};

inline constexpr int kDeepestSmoothing = 6;  // halvings per span

class Smoother {
 public:
  // Takes `n` points, which stay the caller's and must outlive the smoother. `depth` is the number of
  // halvings per span: above kDeepestSmoothing it counts as that, below 1 as 1. Of fewer than 2 points, or
  // when memory runs out, there is no curve.
  Smoother(const CurvePoint* points, int n, bool xlog, bool ylog, int depth);
  ~Smoother();
  Smoother(const Smoother&) = delete;
  Smoother& operator=(const Smoother&) = delete;

  // The first input point as it was given; false without a curve.
  bool first(float* x, float* y);

  // The next point; false at the end. The curve ends early where two tangents that should meet are parallel.
  // n points give 1 + (n - 1) * 2^depth points in all.
  bool next(float* x, float* y);

 private:
  CurvePoint working_point(int i) const;
  void input_tangents();
  bool span_fill(int k);
  bool span_divide(int i, int j);

  static constexpr int kBeforeFirst = -1;
  static constexpr int kNoSpan = 999;  // a cursor beyond every span

  const CurvePoint* points_;
  int count_ = 0;  // 0: no curve
  bool xlog_, ylog_;
  int sub_ = 0;  // points per span, both ends included
  // Three arrays in one block, in this order.
  float* tangent_ = nullptr;  // of each input point, radians
  float* angle_ = nullptr;    // tangent of each point of the current span, radians
  CurvePoint* span_ = nullptr;
  int segment_ = 0;  // the current span
  int cursor_ = kNoSpan;
};

}  // namespace tavd
