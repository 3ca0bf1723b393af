#include "sheet/chart/throw_chart.h"

#include "sheet/chart/curve_chart.h"
#include "sheet/chart/duty.h"
#include "sheet/chart/look.h"

namespace tavdhost {
namespace {

const hosts::Unit kMetre = {hosts::Quantity::kFlow, "m", "m", "m", 1, 1};

std::vector<LegendEntry> legend_of_throw(const ChartDuty& duty, const ChartForm& form) {
  std::vector<LegendEntry> legend = {
      {LegendEntry::Kind::kLine, line_of(CurveFamily::kThrow, false), form.texts.throw_line},
      {LegendEntry::Kind::kLine, kLimitLine, form.texts.limits}};
  if (duty.qv > 0) legend.push_back({LegendEntry::Kind::kDuty, kDutyLine, form.texts.point});
  return legend;
}

// Between quotes is how tables write values that are no numbers.
std::string plain_value(const std::string& value) {
  return value.size() > 1 && value.front() == '"' && value.back() == '"' ? value.substr(1, value.size() - 2)
                                                                         : value;
}

}  // namespace

ChartLayout draw_throw_chart(Painter& painter, const Box& box, const ThrowCurves& curves,
                             const ChartDuty& duty, double duty_length, const ChartForm& form) {
  if (!curves.can_draw()) {
    draw_empty_chart(painter, box, form.texts.no_data);
    return {};
  }
  const ChartUnits metres = {{&kMetre, form.metre}};
  const Reach x = reach_of(Scale::kLogarithmic, curves.qv_min, curves.qv_max, double{duty.qv});
  const Reach y = reach_of(Scale::kLogarithmic, curves.length_min, curves.length_max, duty_length);
  const Frame frame(painter, box,
                    {{form.texts.flow, "q", "v"}, form.flow, Scale::kLogarithmic, x.low, x.high},
                    {{form.texts.throw_length, "l", "0.2"}, metres, Scale::kLogarithmic, y.low, y.high},
                    legend_of_throw(duty, form), form);
  // A throw length has no limits of its own.
  CurveChart chart(painter, frame, {curves.qv_min, y.low}, {curves.qv_max, y.high});
  for (std::size_t i = 0; i < curves.curves.size(); ++i) {
    constexpr double kNearTheEnd = 0.85;
    const ChartCurve& curve = curves.curves[i];
    const std::string label = curves.curves.size() > 1 ? plain_value(curve.name) : "";
    chart.add({.name = form.texts.throw_line,
               .style = line_of(CurveFamily::kThrow, i > 0),
               .label = label,
               .label_at = kNearTheEnd,
               .only_with_label = false,
               .weight = i > 0 ? kUsualLine : kMainLine},
              curve.points);
  }
  if (duty.qv > 0) {
    std::vector<std::string> values = {amount_text(duty.qv, form.flow.near_side, form.decimal)};
    if (duty_length > 0)
      values.push_back(amount_text(static_cast<float>(duty_length), metres.near_side, form.decimal));
    chart.set_duty({double{duty.qv}, duty_length}, values);
  }
  return chart.draw(form.texts.no_data);
}

}  // namespace tavdhost
