// The drawings of a product, ready to be painted into a picture, whole or as far as a part of it, with a
// title that fits. The library has one of each kind at a time, so no two of a kind may live side by side. The
// database outlives the drawing.
#pragma once

#include <cstdint>
#include <string>

#include "drawing/diagram_settings.h"
#include "drawing/picture.h"
#include "drawing/title.h"
#include "product/database.h"
#include "product/product.h"
#include "tavd/L2dg.h"

namespace tavdhost {

inline constexpr const char* kPositionLabel = "pos";  // in front of the first damper position
inline constexpr const char* kLevelLabel = "dB(A)";   // behind the first sound level

// What more is needed to the right of the plot for the texts that stand there: the levels of a device for a
// pressure range, the first of them with its label, or the host's own texts at the lines of a damper. In the
// units of the plane.
int room_at_right(const FlowData& flow, const DiagramSettings& settings);

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
  void paint(Picture& picture, const Area& room);
  void paint(Picture& picture) { paint(picture, picture.whole()); }

 private:
  void build(const Record& record);

  RecordTitle title_;
  int room_at_right_;  // units of the plane
  bool drawable_ = false;
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
  void paint(Picture& picture, const Area& room);
  void paint(Picture& picture) { paint(picture, picture.whole()); }

 private:
  void build(const Record& record);

  RecordTitle title_;
  bool drawable_ = false;
};

// The dimensioned sketch, for records with has_shape().
class ShapePicture {
 public:
  ShapePicture(const Database& database, const Record& record);
  ~ShapePicture();
  ShapePicture(const ShapePicture&) = delete;
  ShapePicture& operator=(const ShapePicture&) = delete;

  void paint(Picture& picture);

 private:
  RecordTitle title_;
};

inline constexpr const char* kThrowParameter = L2DG_THROW_PARAMETER;

bool has_throw_data(const FlowData& flow);
// The value of the first throw line; empty if one line is for all values.
std::string first_throw_value(const FlowData& flow);
bool has_shape(const Database& database, const Record& record);

}  // namespace tavdhost
