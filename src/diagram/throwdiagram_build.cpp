#include "diagram/throwdiagram_build.h"

#include <algorithm>
#include <cstdint>

#include "base/held.h"
#include "calc/numeric.h"
#include "calc/parameter.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

// Flows for each metre of a terminal's length go on where the units of all diagrams end.
constexpr DisplayUnit kFlowUnitsByMetre[] = {{"qv [m3/h/m]", 3.6F}, {"qv [l/s/m]", 1.0F}};
constexpr int kFlowUnitsByMetreCount =
    static_cast<int>(sizeof kFlowUnitsByMetre / sizeof kFlowUnitsByMetre[0]);

constexpr char kThrowTitle[] = "L02 [m]";
constexpr float kThrowStep = 1.0F;    // m, of a linear axis
constexpr float kLowestThrow = 0.5F;  // m, of the axis: a logarithmic one has no place for 0

struct ThrowRange {
  float min, max;  // m
};

// Throw at flow `qv` by one measured point alone, which makes it proportional to the flow.
float estimate(QvL2Point point, float qv) {
  ChartThrowLine line;
  fit_power(&point, 1, &line.nL2, &line.kL2);
  return line.at(qv);
}

QvL2Point point_of(const ParL2Point& row) {
  return {row.qv, row.L2};
}

// A rough range of the throws over the product's flows: from the last value's throw to the first one's, or
// along the first measured point. False if the product has no throw data.
bool estimate_range(const FlowData& fd, ThrowRange* range) {
  if (const int rows = row_count(fd.nparL2, TAVD_PARL2_ROWS); rows > 0) {
    range->max = estimate(point_of(fd.parL2[0]), fd.qvmax);
    range->min = estimate(point_of(fd.parL2[rows - 1]), fd.qvmin);
  } else if (row_count(fd.nqvL2, TAVD_QVL2_ROWS) > 0) {
    range->min = estimate(fd.qvL2[0], fd.qvmin);
    range->max = estimate(fd.qvL2[0], fd.qvmax);
  } else {
    return false;
  }
  param_apply_factor(&fd, &range->min);
  param_apply_factor(&fd, &range->max);
  return true;
}

// Outward to whole metres, at least one of them apart from the lowest.
ThrowRange rounded_outward(ThrowRange range) {
  const std::int64_t min = std::max(held<std::int32_t>(wide(range.min)), 0);
  const std::int64_t max = std::max(held<std::int32_t>(wide(range.max)) + std::int64_t{1}, min + 1);
  return {std::max(static_cast<float>(min), kLowestThrow), static_cast<float>(max)};
}

void load_product(ThrowDiagram& dg, const ThrowChoices& choices, tavb_rec rec) {
  tavca_load_flowdata(dg.db, rec, &dg.flowdata);
  choices.savedpar.apply(&dg.flowdata);
}

Chart* make_chart(const ThrowDiagram& dg, const ThrowRange& range) {
  const FlowData& fd = dg.flowdata;
  const ChartAxis x = axis_over(dg.xfactor * fd.qvmin, dg.xfactor * fd.qvmax);
  ChartAxis y = axis_over(dg.yfactor * range.min, dg.yfactor * range.max);
  y.step = kThrowStep;
  return chart_create(x, y, throw_flow_unit(dg.xunit).title, kThrowTitle, dg.title);
}

}  // namespace

const DisplayUnit& throw_flow_unit(int unit) {
  const int by_metre = unit - kFlowUnitCount;
  if (by_metre >= 0 && by_metre < kFlowUnitsByMetreCount) return kFlowUnitsByMetre[by_metre];
  return kFlowUnits[unit >= 0 && unit < kFlowUnitCount ? unit : 0];
}

bool build(ThrowDiagram& dg, const ThrowChoices& choices, tavb_rec rec) {
  chart_destroy(dg.chart);
  dg.chart = nullptr;
  if (rec == nullptr) return false;
  choose_narrow_title(dg, rec);
  load_product(dg, choices, rec);
  return build_chart(dg);
}

bool build_chart(ThrowDiagram& dg) {
  ThrowRange range;
  if (!estimate_range(dg.flowdata, &range)) return false;
  if (has_limits(dg.flowdata, false)) dg.chart = make_chart(dg, rounded_outward(range));
  // Never cleared here: after a failed build the window stays blank until another size or a new start.
  if (dg.chart == nullptr) dg.failed = true;
  return dg.chart != nullptr;
}

}  // namespace tavd
