#include "sheet/chart/flow_chart.h"

#include <algorithm>
#include <cmath>

#include "sheet/chart/curve_chart.h"
#include "sheet/chart/duty.h"
#include "sheet/chart/look.h"

namespace tavdhost {
namespace {

// Settings between whole numbers are drawn lighter.
constexpr double kWhole = 0.001;

bool is_between(const ChartCurve& curve) {
  return curve.family == CurveFamily::kPosition && curve.value - std::floor(curve.value) >= kWhole;
}

std::string family_text(CurveFamily family, const ChartForm& form) {
  switch (family) {
    case CurveFamily::kPosition:
      return form.texts.position;
    case CurveFamily::kLevel:
      return form.texts.level + form.comma() + " " + form.decibel_A;
    case CurveFamily::kFan:
      return form.texts.fan_curve;
    case CurveFamily::kFanLimit:
      return form.texts.fan_limits;
    default:
      return form.texts.curve;
  }
}

std::vector<LegendEntry> legend_of(const FlowCurves& curves, const ChartDuty& duty, const ChartForm& form) {
  std::vector<LegendEntry> legend;
  for (const CurveFamily family : {CurveFamily::kResistance, CurveFamily::kFan, CurveFamily::kFanLimit,
                                   CurveFamily::kPosition, CurveFamily::kLevel}) {
    if (std::ranges::find(curves.curves, family, &ChartCurve::family) == curves.curves.end()) continue;
    legend.push_back({LegendEntry::Kind::kLine, line_of(family, false), family_text(family, form)});
  }
  if (!curves.marks.empty()) {
    legend.push_back({LegendEntry::Kind::kDot, line_of(CurveFamily::kResistance, false),
                      family_text(CurveFamily::kLevel, form)});
  }
  legend.push_back({LegendEntry::Kind::kLine, kLimitLine, form.texts.limits});
  if (duty.qv > 0) legend.push_back({LegendEntry::Kind::kDuty, kDutyLine, form.texts.point});
  return legend;
}

CurveChart::Curve curve_of(const ChartCurve& curve, const ChartForm& form) {
  const bool is_main = curve.family == CurveFamily::kResistance || curve.family == CurveFamily::kFan;
  CurveChart::Curve drawn = {.name = family_text(curve.family, form),
                             .style = line_of(curve.family, is_between(curve)),
                             .label = "",
                             .label_at = 0,
                             .only_with_label = false,
                             .weight = is_main ? kMainLine : kUsualLine};
  if (curve.family == CurveFamily::kPosition) {
    constexpr double kNearItsEnd = 0.86;
    drawn.label = chart_number(curve.value, form.decimal);
    drawn.label_at = kNearItsEnd;
  }
  if (curve.family == CurveFamily::kLevel) {
    constexpr double kNearItsBeginning = 0.3;
    drawn.label = chart_number(curve.value, form.decimal);
    drawn.label_at = kNearItsBeginning;
    drawn.only_with_label = true;
  }
  return drawn;
}

std::vector<std::string> duty_values(const FlowCurves& curves, const ChartDuty& duty, const ChartForm& form) {
  const ChartUnit& flow = (curves.is_velocity ? form.velocity : form.flow).near_side;
  std::vector<std::string> values = {amount_text(duty.qv, flow, form.decimal)};
  if (duty.dp > 0) values.push_back(amount_text(duty.dp, form.pressure.near_side, form.decimal));
  if (duty.position) {
    values.push_back(form.texts.position + " " + chart_number(double{*duty.position}, form.decimal));
  }
  if (duty.level > 0) values.push_back(level_text(duty.level, form));
  return values;
}

}  // namespace

ChartLayout draw_flow_chart(Painter& painter, const Box& box, const FlowCurves& curves, const ChartDuty& duty,
                            const ChartForm& form) {
  if (!curves.can_draw()) {
    draw_empty_chart(painter, box, form.texts.no_data);
    return {};
  }
  const Scale scale = curves.is_linear ? Scale::kLinear : Scale::kLogarithmic;
  const Reach x = reach_of(scale, curves.qv_min, curves.qv_max, double{duty.qv});
  const Reach y = reach_of(scale, curves.dp_min, curves.dp_max, double{duty.dp});
  const AxisTitle flow =
      curves.is_velocity ? AxisTitle{form.texts.velocity, "v", ""} : AxisTitle{form.texts.flow, "q", "v"};
  const Frame frame(painter, box,
                    {flow, curves.is_velocity ? form.velocity : form.flow, scale, x.low, x.high},
                    {{form.texts.pressure, "Δp", "t"}, form.pressure, scale, y.low, y.high},
                    legend_of(curves, duty, form), form);
  CurveChart chart(painter, frame, {curves.qv_min, curves.dp_min}, {curves.qv_max, curves.dp_max});
  for (const ChartCurve& curve : curves.curves) chart.add(curve_of(curve, form), curve.points);
  for (const LevelMark& mark : curves.marks)
    chart.add_mark(mark.point, chart_number(mark.level, form.decimal));
  if (duty.qv > 0) {
    chart.set_duty({double{duty.qv}, double{duty.dp}}, duty_values(curves, duty, form));
  }
  return chart.draw(curves.takes_any_pressure ? form.texts.any_pressure : form.texts.no_data);
}

}  // namespace tavdhost
