#include "model/suggestion.h"

#include <algorithm>
#include <cmath>

#include "shared/kinds.h"
#include "tavd/tavca.h"

namespace viewer {
namespace {

// Diagrams are logarithmic, so the middle is the geometric one where there is one.
float middle(float low, float high) {
  if (!(high > low)) return low;
  return low > 0 ? std::sqrt(low * high) : (low + high) / 2;
}

// To three digits, as one would type it.
float rounded(float number) {
  if (!(number > 0)) return 0;
  const double unit = std::pow(10.0, std::floor(std::log10(static_cast<double>(number))) - 2);
  return static_cast<float>(std::round(number / unit) * unit);
}

}  // namespace

float suggested_flow(const Product& product) {
  return has_flow_data(product) ? rounded(middle(product.flow.qvmin, product.flow.qvmax)) : 0;
}

float suggested_pressure(const Product& product, float qv) {
  if (!has_flow_data(product)) return 0;
  const FlowData& flow = product.flow;
  if (hosts::is_fan(flow)) {
    float total = 0;
    float fan_static = 0;
    float dynamic = 0;
    tavca_fan_dp(&flow, qv, &total, &fan_static, &dynamic);
    return rounded(total);
  }
  float lowest = 0;
  float highest = 0;
  const float wanted = middle(flow.dpmin, flow.dpmax);
  if (tavca_minmaxdptot(&flow, qv, &lowest, &highest) != 0 || highest < lowest) return rounded(wanted);
  return rounded(std::clamp(wanted, lowest, highest));
}

}  // namespace viewer
