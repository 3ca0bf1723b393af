// The geometry of the curve smoother: directions, and the point that goes between two others. Angles are
// radians in float; trigonometry and powers run in double and are narrowed at once.
#pragma once

#include <optional>

#include "diagram/smooth.h"

namespace tavd {

// The angle within 0 up to, but not including, a full turn.
float angle_norm(float a);

// Direction from `a` to `b`, from 0 up to a full turn. Points whose x are equal to a ten-thousandth of b.x
// lie above one another: a quarter turn up or, as a negative angle, down.
float angle_of(CurvePoint a, CurvePoint b);

// The turn from direction `a` to direction `b`, the shorter way, positive to the left.
float angle_delta(float a, float b);

// Tangent at `b` of a curve through the three points: the bisector of its two chords.
float angle_through(CurvePoint a, CurvePoint b, CurvePoint c);

// Where the line through (x1, y1) at angle a1 meets the one through (x2, y2) at angle a2: 1, or 0 if they
// are parallel.
int tangent_cross(float x1, float y1, float a1, float x2, float y2, float a2, float* x, float* y);

// A point of the curve with the curve's direction there.
struct TangentPoint {
  CurvePoint at;
  float tangent;
};

// The point that goes between two others, nothing where their tangents do not meet.
std::optional<TangentPoint> between(const TangentPoint& from, const TangentPoint& to);

}  // namespace tavd
