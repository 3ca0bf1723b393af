#include "diagram/smooth.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "base/gwmem.h"
#include "calc/numeric.h"
#include "diagram/smooth_geometry.h"

namespace tavd {
namespace {

constexpr std::int32_t kSmootherTag = 9001;  // in out-of-memory reports

}  // namespace

Smoother::Smoother(const CurvePoint* points, int n, bool xlog, bool ylog, int depth)
    : points_(points), xlog_(xlog), ylog_(ylog) {
  if (n < 2) return;
  int sub = 2;
  for (int i = 1; i < std::min(depth, kDeepestSmoothing); ++i) sub *= 2;
  sub += 1;
  const std::int64_t bytes =
      (std::int64_t{n} + 3 * std::int64_t{sub}) * static_cast<std::int64_t>(sizeof(float));
  if (bytes > std::numeric_limits<std::int32_t>::max()) return;
  auto* block = static_cast<float*>(gwGmalloc(static_cast<std::int32_t>(bytes), kSmootherTag));
  if (block == nullptr) return;
  count_ = n;
  sub_ = sub;
  tangent_ = block;
  angle_ = block + n;
  span_ = reinterpret_cast<CurvePoint*>(block + n + sub);
  input_tangents();
}

Smoother::~Smoother() {
  gwGfree(tangent_);
}

bool Smoother::first(float* x, float* y) {
  if (count_ == 0) return false;
  *x = points_[0].x;
  *y = points_[0].y;
  segment_ = kBeforeFirst;
  cursor_ = kNoSpan;
  return true;
}

bool Smoother::next(float* x, float* y) {
  if (cursor_ >= sub_ - 1) {
    if (segment_ >= count_ - 2) return false;
    // The first point of a span repeats the last one of the span before and is passed over.
    cursor_ = 0;
    ++segment_;
    if (!span_fill(segment_)) {
      // What is left of the span holds no points: the end is the end, however often it is asked for.
      cursor_ = kNoSpan;
      segment_ = count_;
      return false;
    }
  }
  ++cursor_;
  const CurvePoint p = span_[cursor_];
  *x = xlog_ ? narrow(std::pow(10.0, wide(p.x))) : p.x;
  *y = ylog_ ? narrow(std::pow(10.0, wide(p.y))) : p.y;
  return true;
}

// A coordinate without a logarithm stays as it is.
CurvePoint Smoother::working_point(int i) const {
  CurvePoint p = points_[i];
  if (xlog_ && p.x > 0.0F) p.x = narrow(lg(p.x));
  if (ylog_ && p.y > 0.0F) p.y = narrow(lg(p.y));
  return p;
}

// Inner points take the bisector of the chords on both sides; the ends turn away from their neighbour's
// tangent by half of its turn. Of two points alone the last looks back at the first, which bends the span.
void Smoother::input_tangents() {
  CurvePoint a = working_point(0);
  CurvePoint b = working_point(1);
  if (count_ == 2) {
    tangent_[0] = angle_of(a, b);
    tangent_[1] = angle_of(b, a);
    return;
  }
  const float first_chord = angle_of(a, b);
  const int last = count_ - 1;
  for (int i = 1; i < last; ++i) {
    const CurvePoint c = working_point(i + 1);
    tangent_[i] = angle_through(a, b, c);
    a = b;
    b = c;
  }
  tangent_[0] = angle_norm(first_chord - angle_delta(first_chord, tangent_[1]) * 0.5F);
  const float last_chord = angle_of(a, b);
  tangent_[last] = angle_norm(last_chord + angle_delta(tangent_[last - 1], last_chord) * 0.5F);
}

// Left half first: an insertion reads the tangents that the ones before it wrote.
bool Smoother::span_divide(int i, int j) {
  const int m = (i + j) / 2;
  const auto inserted = between({span_[i], angle_[i]}, {span_[j], angle_[j]});
  if (!inserted) return false;
  span_[m] = inserted->at;
  angle_[m] = inserted->tangent;
  return m - i < 2 || (span_divide(i, m) && span_divide(m, j));
}

bool Smoother::span_fill(int k) {
  const int last = sub_ - 1;
  span_[0] = working_point(k);
  angle_[0] = tangent_[k];
  span_[last] = working_point(k + 1);
  angle_[last] = tangent_[k + 1];
  return span_divide(0, last);
}

}  // namespace tavd
