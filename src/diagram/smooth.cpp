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
constexpr int kNoSpan = 999;                 // a cursor beyond every span

// One curve at a time. The three arrays lie in one block, in this order.
struct {
  const CurvePoint* points = nullptr;  // the caller's
  int count = 0;
  bool xlog = false;
  bool ylog = false;
  int sub = 0;               // points per span, both ends included
  float* tangent = nullptr;  // of each input point, radians
  float* angle = nullptr;    // tangent of each point of the current span, radians
  CurvePoint* span = nullptr;
  int segment = 0;  // the current span, -1 before the first
  int cursor = kNoSpan;
} sm;

CurvePoint working_point(int i);
void input_tangents();
bool span_fill(int k);

}  // namespace

int smooth_init(int n, const CurvePoint* points, bool xlog, bool ylog, int depth) {
  smooth_end();
  if (n < 2) {
    return -1;
  }
  int sub = 2;
  for (int i = 1; i < std::min(depth, kDeepestSmoothing); ++i) {
    sub *= 2;
  }
  sub += 1;
  const std::int64_t bytes =
      (std::int64_t{n} + 3 * std::int64_t{sub}) * static_cast<std::int64_t>(sizeof(float));
  if (bytes > std::numeric_limits<std::int32_t>::max()) {
    return -1;
  }
  auto* block = static_cast<float*>(gwGmalloc(static_cast<std::int32_t>(bytes), kSmootherTag));
  if (block == nullptr) {
    return -1;
  }
  sm.points = points;
  sm.count = n;
  sm.xlog = xlog;
  sm.ylog = ylog;
  sm.sub = sub;
  sm.tangent = block;
  sm.angle = block + n;
  sm.span = reinterpret_cast<CurvePoint*>(block + n + sub);
  sm.segment = 0;
  sm.cursor = kNoSpan;
  input_tangents();
  return 0;
}

int smooth_first(float* x, float* y) {
  if (sm.count == 0) {
    return 0;
  }
  *x = sm.points[0].x;
  *y = sm.points[0].y;
  sm.segment = -1;
  sm.cursor = kNoSpan;
  return 1;
}

int smooth_next(float* x, float* y) {
  if (sm.cursor >= sm.sub - 1) {
    if (sm.segment >= sm.count - 2) {
      return 0;
    }
    // The first point of a span repeats the last one of the span before and is passed over.
    sm.cursor = 0;
    ++sm.segment;
    if (!span_fill(sm.segment)) {
      // What is left of the span holds no points: the end is the end, however often it is asked for.
      sm.cursor = kNoSpan;
      sm.segment = sm.count;
      return 0;
    }
  }
  ++sm.cursor;
  const CurvePoint p = sm.span[sm.cursor];
  *x = sm.xlog ? narrow(std::pow(10.0, wide(p.x))) : p.x;
  *y = sm.ylog ? narrow(std::pow(10.0, wide(p.y))) : p.y;
  return 1;
}

void smooth_end() {
  gwGfree(sm.tangent);
  sm = {};
}

namespace {

// A coordinate without a logarithm stays as it is.
CurvePoint working_point(int i) {
  CurvePoint p = sm.points[i];
  if (sm.xlog && p.x > 0.0F) {
    p.x = narrow(lg(p.x));
  }
  if (sm.ylog && p.y > 0.0F) {
    p.y = narrow(lg(p.y));
  }
  return p;
}

// Inner points take the bisector of the chords on both sides; the ends turn away from their neighbour's
// tangent by half of its turn. Of two points alone the last looks back at the first, which bends the span.
void input_tangents() {
  CurvePoint a = working_point(0);
  CurvePoint b = working_point(1);
  if (sm.count == 2) {
    sm.tangent[0] = angle_of(a, b);
    sm.tangent[1] = angle_of(b, a);
    return;
  }
  const float first_chord = angle_of(a, b);
  const int last = sm.count - 1;
  for (int i = 1; i < last; ++i) {
    const CurvePoint c = working_point(i + 1);
    sm.tangent[i] = angle_through(a, b, c);
    a = b;
    b = c;
  }
  sm.tangent[0] = angle_norm(first_chord - angle_delta(first_chord, sm.tangent[1]) * 0.5F);
  const float last_chord = angle_of(a, b);
  sm.tangent[last] = angle_norm(last_chord + angle_delta(sm.tangent[last - 1], last_chord) * 0.5F);
}

// Left half first: an insertion reads the tangents that the ones before it wrote.
bool span_divide(int i, int j) {
  const int m = (i + j) / 2;
  const auto inserted = between({sm.span[i], sm.angle[i]}, {sm.span[j], sm.angle[j]});
  if (!inserted) {
    return false;
  }
  sm.span[m] = inserted->at;
  sm.angle[m] = inserted->tangent;
  return m - i < 2 || (span_divide(i, m) && span_divide(m, j));
}

bool span_fill(int k) {
  const int last = sm.sub - 1;
  sm.span[0] = working_point(k);
  sm.angle[0] = sm.tangent[k];
  sm.span[last] = working_point(k + 1);
  sm.angle[last] = sm.tangent[k + 1];
  return span_divide(0, last);
}

}  // namespace
}  // namespace tavd
