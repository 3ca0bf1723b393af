#include "sheet/charts.h"

#include <span>

#include "base/json_text.h"
#include "drawing/drawings.h"
#include "sheet/chart/band_chart.h"
#include "sheet/chart/chart_curves.h"
#include "sheet/chart/chart_form.h"
#include "sheet/chart/flow_chart.h"
#include "sheet/chart/throw_chart.h"

namespace tavdhost {
namespace {

ChartUnit chart_unit(const SheetTexts& texts, const hosts::Unit& unit) {
  return {&unit, unit_sign(texts, unit)};
}

// The far side of an axis of flows tells them by the hour where the near one does by the second, and the
// other way round; others have one unit.
ChartUnits flow_units(const SheetTexts& texts, const hosts::Unit& unit) {
  const hosts::Unit& by_second = hosts::base_unit(hosts::Quantity::kFlow);
  const hosts::Unit& other = &unit == &by_second ? *hosts::find_unit("m3/h") : by_second;
  return {chart_unit(texts, unit), chart_unit(texts, other)};
}

ChartTexts chart_texts(const SheetTexts& texts) {
  ChartTexts words;
  words.flow = texts.names.flow;
  words.velocity = texts.names.velocity;
  words.pressure = texts.names.pressure;
  words.throw_length = texts.answers.throw_length;
  words.octave_band = texts.answers.octave_band;
  words.sound_power = texts.answers.band_power;
  words.curve = texts.chart.curve;
  words.fan_curve = texts.chart.fan_curve;
  words.fan_limits = texts.chart.fan_limits;
  words.position = texts.chart.position;
  words.level = texts.schedule.level;
  words.throw_line = texts.answers.throw_length;
  words.limits = texts.chart.limits;
  words.point = texts.chart.point;
  words.total_A = texts.chart.total_A;
  words.any_pressure = texts.chart.any_pressure;
  words.no_data = texts.words.no_data;
  return words;
}

ChartForm chart_form(const SheetForm& form) {
  const SheetTexts& texts = *form.texts;
  ChartForm chart;
  chart.texts = chart_texts(texts);
  chart.flow = flow_units(texts, *form.units.flow);
  chart.velocity = {chart_unit(texts, *form.units.velocity)};
  chart.pressure = {chart_unit(texts, *form.units.pressure)};
  chart.decibel = unit_sign(texts, "dB");
  chart.decibel_A = unit_sign(texts, "dB(A)");
  chart.hertz = unit_sign(texts, "Hz");
  chart.metre = unit_sign(texts, "m");
  chart.decimal = texts.decimal;
  chart.right_to_left = texts.right_to_left;
  return chart;
}

ChartDuty chart_duty(const SheetSubject& subject) {
  ChartDuty duty;
  duty.qv = subject.point.qv;
  duty.dp = subject.point.dp.value_or(0);
  const std::optional<SoundAnswer>& sound = subject.point.sound;
  if (sound && sound->code == 0) duty.level = sound->room_level;
  const std::optional<DamperAnswer>& damper = subject.point.stepless;
  if (damper && damper->code == 0) duty.position = damper->position;
  return duty;
}

FlowCurves curves_of(const SheetSubject& subject, const SheetForm& form) {
  const Product& product = subject.chosen.product;
  return flow_curves(product.flow, &product.size, form.room_damping);
}

Json::Value curve_json(const ChartCurve& curve) {
  Json::Value json;
  json["family"] = family_name(curve.family);
  const bool has_value = curve.family == CurveFamily::kPosition || curve.family == CurveFamily::kLevel;
  if (has_value) json["value"] = json_number(static_cast<float>(curve.value));
  if (!curve.name.empty()) json["name"] = curve.name;
  json["x"] = Json::Value(Json::arrayValue);
  json["y"] = Json::Value(Json::arrayValue);
  for (const CurvePoint& point : curve.points) {
    json["x"].append(json_number(static_cast<float>(point.x)));
    json["y"].append(json_number(static_cast<float>(point.y)));
  }
  return json;
}

Json::Value list_json(const std::vector<ChartCurve>& curves) {
  Json::Value list(Json::arrayValue);
  for (const ChartCurve& curve : curves) list.append(curve_json(curve));
  return list;
}

}  // namespace

SheetParts parts_of(const SheetSubject& subject, const SheetContents& contents) {
  return {subject.sketch.has_value(), contents.sound_power.has_value(),
          contents.sound_power.has_value() || contents.attenuation.has_value(),
          has_throw_data(subject.chosen.product.flow)};
}

void draw_sound_chart(const PageWriter& writer, const Box& box, const SheetContents& contents,
                      const SheetForm& form) {
  if (!contents.sound_power) return;
  draw_band_chart(writer.painter(), writer.placed(box),
                  {*contents.sound_power, contents.sound_power_A.value_or(0)}, chart_form(form));
}

void draw_pressure_chart(const PageWriter& writer, const Box& box, const SheetSubject& subject,
                         const SheetForm& form) {
  draw_flow_chart(writer.painter(), writer.placed(box), curves_of(subject, form), chart_duty(subject),
                  chart_form(form));
}

void draw_length_chart(const PageWriter& writer, const Box& box, const SheetSubject& subject,
                       const SheetForm& form) {
  draw_throw_chart(writer.painter(), writer.placed(box), throw_curves(subject.chosen.product.flow),
                   chart_duty(subject), double{subject.point.throw_length.value_or(0)}, chart_form(form));
}

Json::Value curves_json(const SheetSubject& subject, const SheetForm& form) {
  const FlowData& flow = subject.chosen.product.flow;
  const FlowCurves pressures = curves_of(subject, form);
  Json::Value json;
  json["pressure"]["x_unit"] = flow.isvelocity != 0 ? "m/s" : "l/s";
  json["pressure"]["y_unit"] = "Pa";
  json["pressure"]["curves"] = list_json(pressures.curves);
  for (const LevelMark& mark : pressures.marks) {
    Json::Value one;
    one["level_dBA"] = json_number(static_cast<float>(mark.level));
    one["x"] = json_number(static_cast<float>(mark.point.x));
    one["y"] = json_number(static_cast<float>(mark.point.y));
    json["pressure"]["levels"].append(one);
  }
  if (!has_throw_data(flow)) return json;
  json["throw"]["x_unit"] = "l/s";
  json["throw"]["y_unit"] = "m";
  json["throw"]["curves"] = list_json(throw_curves(flow).curves);
  return json;
}

}  // namespace tavdhost
