#include "answers/calculated_json.h"

#include "base/json_text.h"
#include "base/text.h"
#include "catalogue/attributes.h"
#include "product/families.h"

namespace tavdhost {
namespace {

Json::Value bands_json(const Bands& bands) {
  Json::Value json(Json::arrayValue);
  for (const float level : bands) json.append(json_number(level));
  return json;
}

void put_pressure(Json::Value& json, const char* which, float pressure, const AnswerForm& form) {
  json[pressure_key(which, form.units)] = json_number(shown(pressure, *form.units.pressure));
}

Json::Value damper_json(const DamperAnswer& answer, const AnswerForm& form) {
  Json::Value json = code_json(answer.code, hosts::damper_text(answer.code));
  if (answer.has_position()) {
    json["position"] = json_number(answer.position);
    put_pressure(json, "", answer.dp, form);
  }
  return json;
}

Json::Value fan_json(const FanAnswer& fan, const AnswerForm& form) {
  Json::Value json = code_json(fan.code, hosts::fan_text(fan.code));
  put_pressure(json, "_total", fan.total, form);
  put_pressure(json, "_static", fan.fan_static, form);
  put_pressure(json, "_dynamic", fan.dynamic, form);
  if (fan.check_code) json["check"] = code_json(*fan.check_code, hosts::fan_check_text(*fan.check_code));
  return json;
}

Json::Value sound_json(const Calculated& calculated, const AnswerForm& form) {
  const SoundAnswer& sound = *calculated.point.sound;
  Json::Value json = code_json(sound.code, hosts::sound_text(sound.code));
  if (sound.code != 0) return json;
  for (const int hz : kBandHz) json["bands_Hz"].append(hz);
  json["lw_dB"] = bands_json(sound.lw);
  json["lw_dBA"] = json_number(sound.lw_A);
  json["room_level_dBA"] = json_number(sound.room_level);
  json["room_damping_dB"] = json_number(form.room_damping);
  json["end_reflection"] = end_reflection_word(calculated.chosen.end_reflection);
  if (calculated.point.reachable) json["reachable"] = *calculated.point.reachable;
  return json;
}

Json::Value operating_point_json(const Calculated& calculated, const AnswerForm& form) {
  const FlowData& flow = calculated.chosen.product.flow;
  const OperatingPoint& point = calculated.point;
  Json::Value json;
  json[flow_key(flow, "", form.units)] = json_number(shown(point.qv, form.units.flow_of(flow)));
  if (!calculated.typed.empty()) json["typed"] = calculated.typed;
  if (point.dp) put_pressure(json, "", *point.dp, form);
  json["flow_in_range"] = point.flow_in_range;
  if (point.dp_in_range) json["dp_in_range"] = *point.dp_in_range;
  if (point.reachable) json["reachable"] = *point.reachable;
  return json;
}

Json::Value main_record_json(const Origin& origin) {
  Json::Value json;
  json["sizing_mode"] = origin.mode;
  json["sizing_text"] = sizing_text(origin.mode);
  json["sizes"] = static_cast<int>(origin.sizes);
  json["data_of"] = origin.data_of.empty() ? Json::Value() : Json::Value(printable(origin.data_of));
  return json;
}

Json::Value layer_json(const AnsweringLayer& layer) {
  Json::Value json;
  json["layer"] = layer_text(layer.kind);
  json["id"] = printable(layer.object_id);
  json["attributes"] = Json::Value(Json::arrayValue);
  for (const std::int16_t number : layer.attributes) json["attributes"].append(attribute_name(number));
  return json;
}

Json::Value chosen_json(const Chosen& chosen, const AnswerForm& form) {
  Json::Value json = product_json(chosen.product, form.units);
  if (chosen.origin.is_main_record()) json["main_record"] = main_record_json(chosen.origin);
  for (const AnsweringLayer& layer : chosen.origin.layers) json["layers"].append(layer_json(layer));
  for (const auto& [name, value] : chosen_parameters(chosen.product.flow)) {
    json["parameters"][printable(name)] = printable(value);
  }
  return json;
}

}  // namespace

const char* end_reflection_word(EndReflection end_reflection) {
  switch (end_reflection) {
    case EndReflection::kInTable:
      return "not taken off";
    case EndReflection::kTakenOff:
      return "taken off";
    case EndReflection::kNone:
      break;
  }
  return "none";
}

Json::Value calculated_json(const Calculated& calculated, const AnswerForm& form) {
  const OperatingPoint& point = calculated.point;
  Json::Value json;
  json["product"] = chosen_json(calculated.chosen, form);
  if (calculated.chosen.product.flow.nhdd == 0) return json;
  json["operating_point"] = operating_point_json(calculated, form);
  json["pressure_range"] = code_json(point.range_code, hosts::range_text(point.range_code));
  if (point.range_code == 0) {
    put_pressure(json["pressure_range"], "_min", point.dp_min, form);
    put_pressure(json["pressure_range"], "_max", point.dp_max, form);
  }
  if (point.stepless) json["position_stepless"] = damper_json(*point.stepless, form);
  if (point.stepped) json["position_stepped"] = damper_json(*point.stepped, form);
  if (point.fan) json["fan"] = fan_json(*point.fan, form);
  if (point.sound) json["sound"] = sound_json(calculated, form);
  if (point.attenuation) json["attenuation_dB"] = bands_json(*point.attenuation);
  if (point.throw_length) json["throw_length_m"] = json_number(*point.throw_length);
  return json;
}

}  // namespace tavdhost
