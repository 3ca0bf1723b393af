#include "drawing/marks.h"

#include "base/numbers.h"
#include "drawing/picture.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

constexpr std::size_t kLinesOfALimit = 2;  // a bracket: its post and its foot

std::string flow_text(const Product& product, float qv) {
  return brief(qv) + " " + flow_unit(product.flow);
}

std::string point_text(const Product& product, const AskedPoint& point) {
  return flow_text(product, point.qv) + (point.dp ? " and " + brief(*point.dp) + " Pa" : "");
}

bool lies_between(float value, float low, float high) {
  return value > low && value < high;
}

// Why a flow diagram does not show a flow.
std::string flow_reason(const Product& product, float qv) {
  const FlowData& flow = product.flow;
  if (hosts::is_fan(flow)) return "the diagram of a fan shows its curve alone";
  if (lies_between(qv, flow.qvmin, flow.qvmax)) return "the diagram does not show it";
  return "the flow axis is " + flow_limits_text(flow);
}

}  // namespace

PointMark point_mark(const hosts::LibraryDrawing& drawing, const AskedPoint& point) {
  const Strokes drawn = strokes(drawing, hosts::kOperatingPoint);
  const Drawn what = drawn.ellipses != 0 ? Drawn::kPoint : drawn.lines != 0 ? Drawn::kFlow : Drawn::kNothing;
  return {point, what};
}

std::string unmarked_text(const Product& product, const PointMark& mark) {
  const AskedPoint& point = mark.point;
  if (mark.drawn == Drawn::kNothing) {
    return point_text(product, point) + " not marked: " + flow_reason(product, point.qv);
  }
  if (mark.drawn == Drawn::kFlow && point.dp) {
    return brief(*point.dp) + " Pa not marked, the line shows " + flow_text(product, point.qv) +
           " alone: the pressure axis is " + brief(product.flow.dpmin) + " - " + brief(product.flow.dpmax) +
           " Pa";
  }
  return "";
}

std::string unmarked_throw_text(const Product& product, const PointMark& mark) {
  const std::string flow = flow_text(product, mark.point.qv);
  switch (mark.drawn) {
    case Drawn::kNothing:
      return flow + " not marked: " + flow_reason(product, mark.point.qv);
    case Drawn::kFlow:
      return "throw length not marked, the line shows " + flow + " alone: it is beyond the axis";
    case Drawn::kPoint:
      return "";
  }
  return "";
}

std::string unmarked_limits_text(const Product& product, float qv1, float qv2) {
  const std::size_t drawn = strokes(hosts::kFlowDrawing, hosts::kFlowLimits).lines / kLinesOfALimit;
  if (drawn == 2) return "";
  const FlowData& flow = product.flow;
  const bool first_lies_inside = lies_between(qv1, flow.qvmin, flow.qvmax);
  if (drawn == 1) {
    const float missing = first_lies_inside ? qv2 : qv1;
    return "limit " + flow_text(product, missing) + " not marked: " + flow_reason(product, missing);
  }
  return "limits " + brief(qv1) + " and " + flow_text(product, qv2) +
         " not marked: " + flow_reason(product, first_lies_inside ? qv2 : qv1);
}

}  // namespace tavdhost
