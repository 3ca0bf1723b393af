#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "drawing/drawings.h"
#include "sheet/chart/chart_curves.h"
#include "sheet/chart/sampler.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr std::size_t kThrowPoints = 21;
constexpr double kMostRatio = 20;  // of the flows of a logarithmic axis: fans have no lowest flow

bool same_value(const std::string& a, const std::string& b) {
  return tavca_param_valuecmp(a.c_str(), b.c_str()) == 0;
}

// The values that lines are for, that of the sheet first: the chosen one, or the first of the table.
std::vector<std::string> line_values(const FlowData& flow) {
  if (flow.nparL2 == 0) return {""};
  const std::string chosen = flow.par[0].value;
  std::vector<std::string> values = {chosen.empty() ? first_throw_value(flow) : chosen};
  for (int i = 0; i < std::min<int>(flow.nparL2, TAVD_PARL2_ROWS); ++i) {
    const char* const text = flow.parL2[i].value;
    const std::string value(trim_end({text, strnlen(text, TAVD_PARAMETER_CHARS)}));
    if (std::ranges::none_of(values,
                             [&value](const std::string& known) { return same_value(known, value); })) {
      values.push_back(value);
    }
  }
  return values;
}

}  // namespace

ThrowCurves throw_curves(const FlowData& flow) {
  ThrowCurves made;
  if (!has_throw_data(flow) || !(flow.qvmax > 0) || !(flow.qvmax > flow.qvmin)) return made;
  constexpr float kNoDamping = 0;
  const Sampler sampler(flow, nullptr, kNoDamping);
  made.qv_min = std::max(double{flow.qvmin}, double{flow.qvmax} / kMostRatio);
  made.qv_max = double{flow.qvmax};
  made.length_min = INFINITY;
  const std::vector<float> qv = spaced(made.qv_min, made.qv_max, kThrowPoints, true);
  for (const std::string& value : line_values(flow)) {
    const std::vector<float> lengths = sampler.throw_lengths(value, qv);
    ChartCurve curve = {CurveFamily::kThrow, 0, value, {}};
    for (std::size_t i = 0; i < qv.size(); ++i) {
      if (!(lengths[i] > 0) || !std::isfinite(lengths[i])) continue;
      curve.points.push_back({double{qv[i]}, double{lengths[i]}});
      made.length_min = std::min(made.length_min, double{lengths[i]});
      made.length_max = std::max(made.length_max, double{lengths[i]});
    }
    if (curve.points.size() > 1) made.curves.push_back(std::move(curve));
  }
  return made;
}

}  // namespace tavdhost
