// Lines and turned boxes on the plane of a chart.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "sheet/box.h"

namespace tavdhost {

using Polyline = std::vector<PagePoint>;
using Quad = std::array<PagePoint, 4>;  // convex, its corners in order

Quad quad_of(const Box& box);
// A box of this size about its middle, turned counter-clockwise by an angle in degrees.
Quad turned_quad(PagePoint middle, double width, double height, double degrees);
Box box_about(const Quad& quad);

bool overlap(const Quad& a, const Quad& b);
bool crosses(const Quad& quad, PagePoint from, PagePoint to);
bool holds(const Box& box, const Quad& quad);

double distance(PagePoint a, PagePoint b);

// The parts of a line in the box.
std::vector<Polyline> inside(std::span<const PagePoint> line, const Box& box);
// The parts outside of the quad.
std::vector<Polyline> outside(std::span<const PagePoint> line, const Quad& quad);

// Places along a line by the length from its beginning.
class Course {
 public:
  explicit Course(std::span<const PagePoint> line);
  double length() const { return lengths_.back(); }
  PagePoint at(double length) const;
  // The largest distance of the line from the chord between two places of it.
  double bulge(double from, double to) const;

 private:
  std::span<const PagePoint> line_;
  std::vector<double> lengths_;
};

}  // namespace tavdhost
