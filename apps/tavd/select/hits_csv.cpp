// Products that fit, comma-separated.
#include "base/csv.h"
#include "product/operating_point.h"
#include "product/product.h"
#include "select/hits.h"
#include "shared/codes.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

constexpr int kHitCells = 15;  // behind rank and fitting and without the bands

void number_if(CsvLine& line, bool is_given, float value) {
  if (is_given) {
    line.number(value);
  } else {
    line.empty();
  }
}

void add_hit(CsvLine& line, const ShownHit& shown_hit, const ShownUnits& units) {
  const tavdn_hit& hit = shown_hit.hit;
  const FlowData& flow = shown_hit.flow;
  const bool has_position = hosts::is_damper(flow) && hosts::has_position(hit.position_code);
  const bool has_setting = hosts::is_damper(flow) && hosts::has_position(hit.setting_code);
  const bool has_sound = (hit.unknown & TAVDN_UNKNOWN_SOUND) == 0;
  const auto pressure = [&](float value) { return shown(value, *units.pressure); };
  line.text(shown_hit.class_id);
  line.text(shown_hit.object_id);
  line.text(shown_hit.code);
  line.text(shown_hit.description);
  line.text(shown_hit.size);
  line.text(shown_hit.parameters);
  number_if(line, flow.isvelocity != 0, shown(hit.qv, *units.velocity));
  line.number(pressure(hit.dp));
  number_if(line, hit.range_code == 0, pressure(hit.dp_min));
  number_if(line, hit.range_code == 0, pressure(hit.dp_max));
  number_if(line, has_position, hit.position);
  number_if(line, has_setting, hit.setting);
  number_if(line, hosts::is_fan(flow), pressure(hit.fan_total));
  for (const float level : hit.lw) number_if(line, has_sound, level);
  number_if(line, has_sound, hit.lpa);
  number_if(line, (hit.unknown & TAVDN_UNKNOWN_THROW) == 0, hit.throw_length);
  line.number(hit.fit);
  line.text(answers_text(hit.unknown));
}

}  // namespace

void HitLines::heading(const std::vector<std::string>& own, std::string& out) const {
  CsvLine line(out);
  for (const std::string& text : own) line.text(text);
  line.text(std::string("qv_") + units_.flow->key);
  for (const char* text :
       {"fitting", "rank", "class", "id", "code", "description", "size_mm", "parameters"}) {
    line.text(text);
  }
  line.text(std::string("v_") + units_.velocity->key);
  for (const char* which : {"", "_min", "_max"}) line.text(pressure_key(which, units_));
  line.text("position_stepless");
  line.text("position_stepped");
  line.text("fan_" + pressure_key("_total", units_));
  for (const int hz : kBandHz) line.text("lw_" + std::to_string(hz) + "Hz_dB");
  for (const char* text : {"room_level_dBA", "throw_length_m", "fit", "unknown", "why_not"}) line.text(text);
  line.end();
}

void HitLines::add(const std::vector<std::string>& own, const tavdn_catalogue* catalogue,
                   const tavdn_duty& duty, const Selected& selected, const std::string& why_not,
                   std::string& out) const {
  const auto begin = [&](CsvLine& line) {
    for (const std::string& text : own) line.text(text);
    line.number(shown(static_cast<float>(duty.qv), *units_.flow));
    line.text(std::to_string(selected.products));
  };
  int rank = 0;
  for (const tavdn_hit& hit : selected.hits) {
    CsvLine line(out);
    begin(line);
    line.whole(++rank);
    add_hit(line, ShownHit(catalogue, hit), units_);
    line.empty();
    line.end();
  }
  if (!selected.hits.empty()) return;
  CsvLine line(out);
  begin(line);
  line.empty();
  for (int i = 0; i < kHitCells + TAVD_BANDS + 2; ++i) line.empty();
  line.text(why_not);
  line.end();
}

}  // namespace tavdhost
