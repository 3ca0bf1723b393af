// The curve smoother: turns a few points into a smooth curve through all of them. Every point gets a tangent;
// every span between two points is halved again and again, each new point placed from the tangents on either
// side of it. Geometry runs in working space, where a coordinate whose axis is logarithmic is its logarithm,
// so that the curve is smooth as drawn.
//
// One curve at a time, for the whole process:
//
//   if (smooth_init(n, points, xlog, ylog, depth) == 0) {
//     smooth_first(&x, &y);
//     while (smooth_next(&x, &y)) ...
//     smooth_end();
//   }
#pragma once

namespace tavd {

struct CurvePoint {
  float x, y;
};

inline constexpr int kDeepestSmoothing = 6;  // halvings per span

// Takes `n` points, which stay the caller's and must live until smooth_end. `depth` is the number of halvings
// per span: above 6 it counts as 6, below 1 as 1. Returns 0, or -1 for fewer than 2 points or when memory
// runs out; nothing is held then.
int smooth_init(int n, const CurvePoint* points, bool xlog, bool ylog, int depth);

// The first input point as it was given: 1, or 0 without a curve.
int smooth_first(float* x, float* y);

// The next point: 1, or 0 at the end. The curve ends early where two tangents that should meet are parallel.
// n points give 1 + (n - 1) * 2^depth points in all.
int smooth_next(float* x, float* y);

void smooth_end();

}  // namespace tavd
