#include <algorithm>
#include <cmath>

#include "shared/kinds.h"
#include "sheet/chart/chart_curves.h"
#include "sheet/chart/geometry.h"
#include "sheet/chart/level_curves.h"
#include "sheet/chart/roots.h"
#include "sheet/chart/sampler.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr std::size_t kCurvePoints = 41;
constexpr std::size_t kFanPoints = 81;
constexpr double kLevelTolerance = 0.01;  // dB(A)

class FlowCurveMaker {
 public:
  FlowCurveMaker(const FlowData& flow, const DuctSize* duct, float room_damping)
      : sampler_(flow, duct, room_damping), flow_(sampler_.flow()) {
    made_.is_velocity = flow.isvelocity != 0;
    made_.is_linear = hosts::is_fan(flow);
    made_.takes_any_pressure = flow.kind == TAVD_KIND_LIMITS || flow.kind == TAVD_KIND_RANGE;
    made_.qv_min = double{flow.qvmin};
    made_.qv_max = double{flow.qvmax};
    made_.dp_min = double{flow.dpmin};
    made_.dp_max = double{flow.dpmax};
  }

  FlowCurves make();

 private:
  void add(CurveFamily family, double value, const std::vector<CurvePoint>& points);
  void add_resistance();
  void add_positions();
  void add_fan();
  void add_system_line(const FanPoint& end);
  void add_marks(const std::vector<float>& qv);
  std::vector<float> flows() const { return spaced(made_.qv_min, made_.qv_max, kCurvePoints, true); }

  Sampler sampler_;
  const FlowData& flow_;
  FlowCurves made_;
};

// The parts of a curve that lie within the limits. A power law is straight where both axes are logarithmic,
// so that its ends are exact there.
void FlowCurveMaker::add(CurveFamily family, double value, const std::vector<CurvePoint>& points) {
  const auto flat = [this](double number) { return made_.is_linear ? number : std::log(number); };
  const auto back = [this](double number) { return made_.is_linear ? number : std::exp(number); };
  const Box limits = {flat(made_.qv_min), flat(made_.dp_min), flat(made_.qv_max) - flat(made_.qv_min),
                      flat(made_.dp_max) - flat(made_.dp_min)};
  Polyline line;
  for (const CurvePoint point : points) {
    if (!std::isfinite(point.y) || (!made_.is_linear && point.y <= 0)) return;
    line.push_back({flat(point.x), flat(point.y)});
  }
  for (const Polyline& part : inside(line, limits)) {
    ChartCurve curve = {family, value, "", {}};
    for (const PagePoint point : part) curve.points.push_back({back(point.x), back(point.y)});
    made_.curves.push_back(std::move(curve));
  }
}

void FlowCurveMaker::add_resistance() {
  std::vector<float> qv = flows();
  for (int i = 0; i < std::min<int>(flow_.nqvdp, TAVD_QVDP_ROWS); ++i) {
    const float measured = flow_.qvdppoints[i].qv;
    if (measured > flow_.qvmin && measured < flow_.qvmax) qv.push_back(measured);
  }
  std::ranges::sort(qv);
  const std::vector<Sampler::Range> ranges = sampler_.ranges(qv);
  std::vector<CurvePoint> points;
  for (std::size_t i = 0; i < qv.size(); ++i) points.push_back({double{qv[i]}, double{ranges[i].lowest}});
  // At exactly the last measured flow there may be no pressure: the curve goes on beside it.
  std::erase_if(points, [](const CurvePoint& point) { return !(point.y > 0); });
  add(CurveFamily::kResistance, 0, points);
  add_marks(qv);
}

// Levels on the curve of a product whose pressure follows from the flow.
void FlowCurveMaker::add_marks(const std::vector<float>& qv) {
  if (flow_.nlw == 0) return;
  const std::vector<float> levels = sampler_.levels(qv, {});
  std::vector<Bracket> brackets;
  std::vector<double> sought;
  for (const double level : round_levels({levels.begin(), levels.end()})) {
    for (std::size_t i = 1; i < qv.size(); ++i) {
      const double from = double{levels[i - 1]} - level;
      const double to = double{levels[i]} - level;
      if (!std::isfinite(from) || !std::isfinite(to) || (from < 0) == (to < 0)) continue;
      brackets.push_back({double{qv[i - 1]}, double{qv[i]}, from, to});
      sought.push_back(level);
    }
  }
  find_roots(brackets, kLevelTolerance,
             [&](const std::vector<std::size_t>& asked, const std::vector<double>& places) {
               const std::vector<float> at =
                   sampler_.levels(std::vector<float>(places.begin(), places.end()), {});
               std::vector<double> differences;
               for (std::size_t k = 0; k < at.size(); ++k)
                 differences.push_back(double{at[k]} - sought[asked[k]]);
               return differences;
             });
  for (std::size_t i = 0; i < brackets.size(); ++i) {
    const float root = static_cast<float>(brackets[i].root);
    const double dp = double{sampler_.ranges({&root, 1})[0].lowest};
    if (dp >= made_.dp_min && dp <= made_.dp_max) made_.marks.push_back({sought[i], {double{root}, dp}});
  }
}

void FlowCurveMaker::add_positions() {
  const std::vector<float> qv = flows();
  for (int row = 0; row < std::min<int>(flow_.ndamper, TAVD_DAMPER_ROWS); ++row) {
    const float position = flow_.damper[row].pos;
    std::vector<CurvePoint> points;
    for (const float flow : qv) {
      const float dp = tavca_dptot_damperpos(&flow_, flow, position);
      if (dp > 0) points.push_back({double{flow}, double{dp}});
    }
    add(CurveFamily::kPosition, double{position}, points);
  }
}

// The square law from no flow to an end of the fan's curve.
void FlowCurveMaker::add_system_line(const FanPoint& end) {
  const float dp = sampler_.fan_pressures({&end.qv, 1})[0];
  std::vector<CurvePoint> points;
  for (const float qv : spaced(0, double{end.qv}, kCurvePoints, false)) {
    const double part = double{qv} / double{end.qv};
    points.push_back({double{qv}, double{dp} * part * part});
  }
  add(CurveFamily::kFanLimit, 0, points);
}

void FlowCurveMaker::add_fan() {
  const int rows = std::min<int>(flow_.nfan, TAVD_FAN_ROWS);
  if (rows < 2) return;
  const FanPoint first = flow_.fancurve[0];
  const FanPoint last = flow_.fancurve[rows - 1];
  if (!(first.qv >= 0) || !(last.qv > first.qv)) return;
  const std::vector<float> qv = spaced(double{first.qv}, double{last.qv}, kFanPoints, false);
  const std::vector<float> dp = sampler_.fan_pressures(qv);
  std::vector<CurvePoint> points;
  for (std::size_t i = 0; i < qv.size(); ++i) {
    if (std::isfinite(dp[i])) points.push_back({double{qv[i]}, double{dp[i]}});
  }
  add(CurveFamily::kFan, 0, points);
  // A curve that begins without a flow has the axis as its first limit.
  if (first.qv > 0) add_system_line(first);
  add_system_line(last);
}

FlowCurves FlowCurveMaker::make() {
  if (!made_.can_draw()) return made_;
  if (hosts::has_fixed_pressure(flow_)) add_resistance();
  if (hosts::is_damper(flow_)) add_positions();
  if (hosts::is_fan(flow_)) add_fan();
  if (hosts::has_fixed_pressure(flow_) || (hosts::is_fan(flow_) && made_.curves.empty())) return made_;
  for (ChartCurve& curve : level_curves(sampler_, made_)) made_.curves.push_back(std::move(curve));
  return made_;
}

}  // namespace

const char* family_name(CurveFamily family) {
  switch (family) {
    case CurveFamily::kResistance:
      return "resistance";
    case CurveFamily::kPosition:
      return "position";
    case CurveFamily::kLevel:
      return "level";
    case CurveFamily::kFan:
      return "fan";
    case CurveFamily::kFanLimit:
      return "fan limit";
    default:
      return "throw";
  }
}

FlowCurves flow_curves(const FlowData& flow, const DuctSize* duct, float room_damping) {
  return FlowCurveMaker(flow, duct, room_damping).make();
}

}  // namespace tavdhost
