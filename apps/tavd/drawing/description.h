// What a drawing shows, in words: the title and the description of an SVG.
#pragma once

#include <optional>
#include <string>

#include "drawing/marks.h"
#include "drawing/picture.h"
#include "product/product.h"

namespace tavdhost {

struct DrawingText {
  std::string title;
  std::string description;
};

// `mark` is what the diagram has of a point that it was asked to mark; nothing if it was not asked.
// `name` is what the drawing has as its own title; empty: the product's code, or its id.
DrawingText flow_diagram_text(const Product& product, const std::string& name = "",
                              const std::optional<PointMark>& mark = {});
// `value` selects the throw line, empty for none.
DrawingText throw_diagram_text(const Product& product, const std::string& name, const std::string& value,
                               const std::optional<PointMark>& mark = {});
DrawingText shape_picture_text(const Product& product, const std::string& name = "");

// The product's code, or its id if it has none.
std::string name_of(const Product& product);

}  // namespace tavdhost
