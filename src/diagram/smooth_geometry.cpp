#include "diagram/smooth_geometry.h"

#include <algorithm>
#include <cmath>

#include "calc/numeric.h"
#include "gwmath.h"

namespace tavd {
namespace {

constexpr float kFullTurn = 6.2831855F;
constexpr float kHalfTurn = 3.1415927F;
constexpr float kQuarterTurn = 1.5707964F;

constexpr float kSameX = 10000.0F;  // points closer than this part of x are one above the other
constexpr double kStraight = 0.00031415926059708;  // a smaller turn is none
constexpr double kVertical = 1e-06;                // cosine of a vertical line
constexpr double kParallel = 1e-06;                // difference of slopes of parallel lines

// How far the new point of an arc goes from the middle of the chord toward the crossing of the tangents, by
// the distance of the crossing in chords: half the way for a flat arc, falling to 0.3 at one chord.
constexpr double kFlatArc = 0.1;
constexpr float kFlatPull = 0.5F;
constexpr float kPullFall = 0.2F;
constexpr float kPullFallOver = 0.9F;
constexpr double kSteepPull = 0.3;
constexpr double kSteepExponent = -0.68;

// An inflection stays in the middle half of its chord.
constexpr float kInflectionFirst = 0.25F;
constexpr float kInflectionLast = 0.75F;

CurvePoint middle(CurvePoint p, CurvePoint q) {
  return {(p.x + q.x) * 0.5F, (p.y + q.y) * 0.5F};
}

CurvePoint toward(CurvePoint p, CurvePoint q, float share) {
  return {p.x + (q.x - p.x) * share, p.y + (q.y - p.y) * share};
}

float distance(CurvePoint p, CurvePoint q) {
  const float dx = q.x - p.x;
  const float dy = q.y - p.y;
  const float squared = dx * dx + dy * dy;
  return squared <= 0.0F ? 0.0F : narrow(std::sqrt(wide(squared)));
}

// `to_crossing`: from the middle of the chord to the crossing.
float pull(float to_crossing, float chord) {
  const float ratio = to_crossing / chord;
  if (wide(ratio) < kFlatArc) return kFlatPull;
  if (ratio < 1.0F) return kFlatPull - ((ratio - narrow(kFlatArc)) * kPullFall) / kPullFallOver;
  // At most half a chord from the middle, and less the farther the crossing is.
  return std::min((chord * 0.5F) / to_crossing, narrow(kSteepPull * std::pow(wide(ratio), kSteepExponent)));
}

}  // namespace

float angle_norm(float a) {
  while (a < 0.0F) a += kFullTurn;
  while (a >= kFullTurn) a -= kFullTurn;
  return a;
}

float angle_of(CurvePoint a, CurvePoint b) {
  if (std::fabs(a.x - b.x) >= std::fabs(b.x / kSameX)) {
    const float slope = (b.y - a.y) / (b.x - a.x);
    const float t = narrow(gwatan(wide(slope)));
    if (a.x > b.x) return t + kHalfTurn;
    return t < 0.0F ? t + kFullTurn : t;
  }
  return a.y <= b.y ? kQuarterTurn : -kQuarterTurn;
}

float angle_delta(float a, float b) {
  const float d = b - a;
  if (b > a && d > kHalfTurn) return d - kFullTurn;
  if (b < a && d < -kHalfTurn) return d + kFullTurn;
  return d;
}

float angle_through(CurvePoint a, CurvePoint b, CurvePoint c) {
  const float u = angle_of(a, b);
  const float v = angle_of(b, c);
  return angle_norm(u + angle_delta(u, v) * 0.5F);
}

int tangent_cross(float x1, float y1, float a1, float x2, float y2, float a2, float* x, float* y) {
  const bool vertical1 = std::fabs(std::cos(wide(a1))) < kVertical;
  const bool vertical2 = std::fabs(std::cos(wide(a2))) < kVertical;
  const float m1 = vertical1 ? 0.0F : narrow(gwtan(wide(a1)));
  const float m2 = vertical2 ? 0.0F : narrow(gwtan(wide(a2)));
  const float b1 = y1 - m1 * x1;
  const float b2 = y2 - m2 * x2;
  if (vertical2) {
    if (vertical1) return 0;
    *x = x2;
    *y = m1 * x2 + b1;
    return 1;
  }
  if (vertical1) {
    *x = x1;
  } else if (wide(std::fabs(m1 - m2)) < kParallel) {
    return 0;
  } else {
    *x = (b2 - b1) / (m1 - m2);
  }
  *y = m2 * *x + b2;
  return 1;
}

std::optional<TangentPoint> between(const TangentPoint& from, const TangentPoint& to) {
  const CurvePoint p = from.at;
  const CurvePoint q = to.at;
  const float chord = angle_of(p, q);
  const float d1 = angle_delta(from.tangent, chord);
  const float d2 = angle_delta(chord, to.tangent);
  const bool straight1 = wide(std::fabs(d1)) < kStraight;
  const bool straight2 = wide(std::fabs(d2)) < kStraight;
  const CurvePoint m = middle(p, q);
  if (straight1 && straight2) return TangentPoint{m, chord};
  float a1 = from.tangent;
  float a2 = to.tangent;
  if (straight1) {
    // Flat against the chord at the start: half of the turn at the far end is taken for it.
    a1 = angle_norm(chord - d2 * 0.5F);
  } else if (straight2) {
    a2 = angle_norm(chord + d1 * 0.5F);
  } else if ((d1 < 0.0F && d2 > 0.0F) || (d1 > 0.0F && d2 < 0.0F)) {
    // An inflection lies on the chord, nearer to the end with the smaller turn.
    const double turn1 = std::fabs(wide(d1));
    const float w =
        std::clamp(narrow(turn1 / (std::fabs(wide(d2)) + turn1)), kInflectionFirst, kInflectionLast);
    return TangentPoint{toward(p, q, w), angle_norm(w > 0.5F ? chord - d2 * 0.5F : chord + d1 * 0.5F)};
  }
  CurvePoint crossing;
  if (tangent_cross(p.x, p.y, a1, q.x, q.y, a2, &crossing.x, &crossing.y) == 0) return std::nullopt;
  const CurvePoint at = toward(m, crossing, pull(distance(m, crossing), distance(p, q)));
  return TangentPoint{at, straight1 || straight2 ? chord : angle_through(p, at, q)};
}

}  // namespace tavd
