// What a diagram marks of the point and the flow limits that it was asked to mark: counted in the drawing
// itself, so that words about it cannot say other than it shows.
#pragma once

#include <optional>
#include <string>

#include "product/product.h"
#include "shared/drawings.h"

namespace tavdhost {

// A point to mark: a flow, and a pressure if there is one.
struct AskedPoint {
  float qv;                 // l/s, or m/s for products by air velocity
  std::optional<float> dp;  // Pa
};

// What is drawn of it: nothing, a line at its flow, circles about it.
enum class Drawn { kNothing, kFlow, kPoint };

struct PointMark {
  AskedPoint point;
  Drawn drawn;
};

// The mark in a drawing as it is now.
PointMark point_mark(const hosts::LibraryDrawing& drawing, const AskedPoint& point);

// One line about what the flow or throw diagram does not mark of the point, and why; empty if it marks all of
// it.
std::string unmarked_text(const Product& product, const PointMark& mark);
std::string unmarked_throw_text(const Product& product, const PointMark& mark);

// The same about two flow limits in the flow diagram as it is now.
std::string unmarked_limits_text(const Product& product, float qv1, float qv2);

}  // namespace tavdhost
