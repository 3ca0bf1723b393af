// Products that fit, as JSON.
#include "base/json_text.h"
#include "base/text.h"
#include "product/operating_point.h"
#include "product/product.h"
#include "select/hits.h"
#include "shared/codes.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

Json::Value position_json(int code, float position) {
  Json::Value json = code_json(code, hosts::damper_text(code));
  if (hosts::has_position(code)) json["position"] = json_number(position);
  return json;
}

Json::Value sound_json(const tavdn_hit& hit) {
  Json::Value json = code_json(hit.lw_code, hosts::sound_text(hit.lw_code));
  if (hit.lw_code != 0) return json;
  for (const int hz : kBandHz) json["bands_Hz"].append(hz);
  for (const float level : hit.lw) json["lw_dB"].append(json_number(level));
  json["room_level_dBA"] = json_number(hit.lpa);
  return json;
}

class HitJson {
 public:
  HitJson(const ShownHit& shown_hit, const ShownUnits& units)
      : shown_(shown_hit), hit_(shown_hit.hit), units_(units) {}

  Json::Value value(int rank) const {
    Json::Value json;
    json["rank"] = rank;
    json["class"] = shown_.class_id;
    json["id"] = shown_.object_id;
    json["code"] = shown_.code;
    json["description"] = shown_.description;
    json["size_mm"] = shown_.size;
    for (const auto& [name, chosen] : chosen_parameters(shown_.flow)) {
      json["parameters"][printable(name)] = printable(chosen);
    }
    json[flow_key(shown_.flow, "", units_)] = json_number(shown(hit_.qv, units_.flow_of(shown_.flow)));
    json[pressure_key("", units_)] = pressure(hit_.dp);
    add_pressures(json);
    json["sound"] = sound_json(hit_);
    if (hit_.throw_code == TAVDN_THROW_GIVEN) json["throw_length_m"] = json_number(hit_.throw_length);
    json["fit"] = json_number(hit_.fit);
    json["unknown"] = answers_text(hit_.unknown);
    return json;
  }

 private:
  Json::Value pressure(float value) const { return json_number(shown(value, *units_.pressure)); }

  void add_pressures(Json::Value& json) const {
    json["pressure_range"] = code_json(hit_.range_code, hosts::range_text(hit_.range_code));
    if (hit_.range_code == 0) {
      json["pressure_range"][pressure_key("_min", units_)] = pressure(hit_.dp_min);
      json["pressure_range"][pressure_key("_max", units_)] = pressure(hit_.dp_max);
    }
    if (hosts::is_damper(shown_.flow)) {
      json["position_stepless"] = position_json(hit_.position_code, hit_.position);
      json["position_stepped"] = position_json(hit_.setting_code, hit_.setting);
    }
    if (!hosts::is_fan(shown_.flow)) return;
    json["fan"] = code_json(hit_.fan_code, hosts::fan_text(hit_.fan_code));
    json["fan"][pressure_key("_total", units_)] = pressure(hit_.fan_total);
    json["fan"][pressure_key("_static", units_)] = pressure(hit_.fan_static);
    json["fan"][pressure_key("_dynamic", units_)] = pressure(hit_.fan_dynamic);
    json["fan"]["check"] = code_json(hit_.fan_check, hosts::fan_check_text(hit_.fan_check));
  }

  const ShownHit& shown_;
  const tavdn_hit& hit_;
  const ShownUnits& units_;
};

Json::Value reasons_json(const tavdn_catalogue* catalogue, const Selected& selected) {
  Json::Value list(Json::arrayValue);
  for (std::size_t i = 0; i < selected.reasons.size(); ++i) {
    const int reason = selected.reasons[i];
    if (reason == TAVDN_WHY_FITS) continue;
    const tavdn_listed& listed = *tavdn_catalogue_product(catalogue, i);
    Json::Value json = code_json(reason, reason_text(reason));
    json["class"] = printable(listed.class_id);
    json["id"] = printable(listed.object_id);
    list.append(json);
  }
  return list;
}

}  // namespace

Json::Value hits_json(const SelectCatalogue& catalogue, const Request& request, const Selected& selected,
                      bool explain, const ShownUnits& units) {
  Json::Value json;
  json[std::string("qv_") + units.flow->key] =
      json_number(shown(static_cast<float>(request.duty.qv), *units.flow));
  json[pressure_key("", units)] = json_number(shown(request.duty.dp, *units.pressure));
  json["room_damping_dB"] = json_number(request.duty.roomdamp);
  json["products"] = static_cast<Json::UInt64>(catalogue.count());
  json["fitting"] = static_cast<Json::UInt64>(selected.products);
  json["hits"] = Json::Value(Json::arrayValue);
  int rank = 0;
  for (const tavdn_hit& hit : selected.hits) {
    const ShownHit shown_hit(catalogue.get(), hit);
    json["hits"].append(HitJson(shown_hit, units).value(++rank));
  }
  if (explain) json["rejected"] = reasons_json(catalogue.get(), selected);
  return json;
}

}  // namespace tavdhost
