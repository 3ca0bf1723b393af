// What a drawing shows, in words: the title and the description of an SVG.
#pragma once

#include <optional>
#include <string>

#include "drawing/picture.h"
#include "product/product.h"

namespace tavdhost {

struct DrawingText {
  std::string title;
  std::string description;
};

// A point marked in a diagram: a flow, and a pressure if there is one.
struct MarkedPoint {
  float qv;                 // l/s, or m/s for products by air velocity
  std::optional<float> dp;  // Pa
};

// `name` is what the drawing has as its own title; empty: the product's code, or its id.
DrawingText flow_diagram_text(const Product& product, const std::string& name = "",
                              const std::optional<MarkedPoint>& point = {});
// `value` selects the throw line, empty for none.
DrawingText throw_diagram_text(const Product& product, const std::string& name, const std::string& value,
                               const std::optional<MarkedPoint>& point = {});
DrawingText shape_picture_text(const Product& product, const std::string& name = "");

// The product's code, or its id if it has none.
std::string name_of(const Product& product);

}  // namespace tavdhost
