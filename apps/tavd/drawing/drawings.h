// The drawings of a product, ready to be painted into a picture. The library has one of each kind at a time,
// so no two of a kind may live side by side.
#pragma once

#include <cstdint>
#include <string>

#include "drawing/diagram_settings.h"
#include "drawing/picture.h"
#include "product/database.h"
#include "product/product.h"
#include "tavd/L2dg.h"

namespace tavdhost {

// Pressure over flow, with the product's chosen parameters.
class FlowDiagram {
 public:
  FlowDiagram(const Database& database, const Record& record, const Product& product,
              const DiagramSettings& settings, bool static_pressure);
  ~FlowDiagram();
  FlowDiagram(const FlowDiagram&) = delete;
  FlowDiagram& operator=(const FlowDiagram&) = delete;

  // Whether the product's limits make a diagram.
  bool is_drawable() const { return drawable_; }
  // Over the whole picture.
  void paint(Picture& picture) const;
  // Small, on a part of the picture, pixels.
  void paint_cell(Picture& picture, Area place) const;

 private:
  bool drawable_;
};

// Throw length over flow, for products with has_throw_data().
class ThrowDiagram {
 public:
  // `qv` is the flow to mark, l/s, 0 for none; `unit` that of the axis, and `value` selects the throw line,
  // empty for the first one, unlabelled.
  ThrowDiagram(const Database& database, const Record& record, const Product& product, float qv,
               std::int16_t unit, const std::string& value);
  ~ThrowDiagram();
  ThrowDiagram(const ThrowDiagram&) = delete;
  ThrowDiagram& operator=(const ThrowDiagram&) = delete;

  bool is_drawable() const { return drawable_; }
  void paint(Picture& picture) const;
  void paint_cell(Picture& picture, Area place) const;

 private:
  bool drawable_;
};

// The dimensioned sketch, for records with has_shape().
class ShapePicture {
 public:
  ShapePicture(const Database& database, const Record& record);
  ~ShapePicture();
  ShapePicture(const ShapePicture&) = delete;
  ShapePicture& operator=(const ShapePicture&) = delete;

  void paint(Picture& picture) const;
};

inline constexpr const char* kThrowParameter = L2DG_THROW_PARAMETER;

bool has_throw_data(const FlowData& flow);
// The value of the first throw line; empty if one line is for all values.
std::string first_throw_value(const FlowData& flow);
bool has_shape(const Database& database, const Record& record);

}  // namespace tavdhost
