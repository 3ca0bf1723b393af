#include "drawing/description.h"

#include "base/numbers.h"
#include "base/text.h"

namespace tavdhost {
namespace {

std::string titled(const Product& product, const std::string& name, const char* what) {
  return (name.empty() ? name_of(product) : printable(name)) + ": " + what;
}

// "Round control damper, class DMP, id QZDA-160: adjustable damper, size 160 mm,
// 16 - 160 l/s, 5 - 300 Pa, total."
std::string about(const Product& product) {
  std::string text = product.description.empty() ? "" : product.description + ", ";
  text += "class " + printable(product.key.class_id) + ", id " + printable(product.key.object_id) + ": " +
          kind_text(product.flow);
  const std::string size = size_text(product.size);
  if (!size.empty()) text += ", size " + size + " mm";
  if (product.flow.nhdd != 0) {
    text += ", " + flow_limits_text(product.flow) + ", " + pressure_limits_text(product.flow);
  }
  return text + ".";
}

// What of the point is in the picture, and no more.
std::string marked(const Product& product, const std::optional<PointMark>& mark) {
  if (!mark || mark->drawn == Drawn::kNothing) return "";
  const std::string flow = " Marked: " + brief(mark->point.qv) + " " + flow_unit(product.flow);
  const bool has_pressure = mark->drawn == Drawn::kPoint && mark->point.dp;
  return flow + (has_pressure ? " and " + brief(*mark->point.dp) + " Pa." : ".");
}

}  // namespace

std::string name_of(const Product& product) {
  return product.code.empty() ? printable(product.key.object_id) : product.code;
}

DrawingText flow_diagram_text(const Product& product, const std::string& name,
                              const std::optional<PointMark>& mark) {
  return {titled(product, name, "flow diagram"),
          "Pressure over flow. " + about(product) + marked(product, mark)};
}

DrawingText throw_diagram_text(const Product& product, const std::string& name, const std::string& value,
                               const std::optional<PointMark>& mark) {
  return {titled(product, name, "throw length diagram"),
          "Throw length over flow" + (value.empty() ? "" : ", line of the value " + printable(value)) + ". " +
              about(product) + marked(product, mark)};
}

DrawingText shape_picture_text(const Product& product, const std::string& name) {
  return {titled(product, name, "dimensions"), "Dimensioned sketch. " + about(product)};
}

}  // namespace tavdhost
