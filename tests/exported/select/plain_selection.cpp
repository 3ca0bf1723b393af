#include "exported/select/plain_selection.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

#include "tavd/ewads.h"
#include "tavd/tavb.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace selecttest {
namespace {

bool is_product(std::int16_t db, tavb_rec rec, const std::string& class_id) {
  if (class_id == "000" || class_id == "TVM") return false;
  std::int16_t mode = 0;
  tavbcopyatt(db, rec, 1150, nullptr, &mode, sizeof mode);
  return mode >= 0 && mode != 1 && mode != 2 && mode != 10 && mode != 11;
}

std::string text_of(const char* value) {
  return {value, strnlen(value, 6)};
}

bool is_number(const std::string& text) {
  float number = 0;
  return tavca_param_valuetoreal(text.c_str(), &number) == 0;
}

bool has_value(const ParTable& table, const std::string& value) {
  bool all_numbers = true;
  bool met = false;
  for (int i = 0; i < table.count; ++i) {
    const std::string row = text_of(table.table[i].value);
    all_numbers = all_numbers && is_number(row);
    met = met || tavca_param_valuecmp(row.c_str(), value.c_str()) == 0;
  }
  return met || (all_numbers && is_number(value));
}

// The records that a set of values makes of one; none if a table does not have a value.
std::vector<FlowData> choices_of(const FlowData& loaded, const PlainValues& values) {
  std::vector<FlowData> all = {loaded};
  for (const auto& [name, value] : values) {
    int table = -1;
    for (int i = loaded.npar - 1; i >= 0; --i) {
      if (name == loaded.par[i].name) table = i;
    }
    if (table < 0) continue;
    const ParTable& rows = loaded.par[table];
    if (value != nullptr && *value != '\0' && !has_value(rows, value)) return {};
    std::vector<FlowData> next;
    for (const FlowData& one : all) {
      if (value != nullptr) {
        FlowData chosen = one;
        tavca_param_setvalue(&chosen, name.c_str(), value);
        next.push_back(chosen);
        continue;
      }
      for (int row = 0; row < rows.count; ++row) {
        FlowData chosen = one;
        tavca_param_setvalue(&chosen, name.c_str(), text_of(rows.table[row].value).c_str());
        next.push_back(chosen);
      }
    }
    all = next;
  }
  return all;
}

bool is_fixed(const FlowData& fd) {
  return fd.kind == 10 || fd.kind == 11 || fd.kind == 12;
}

bool is_damper(const FlowData& fd) {
  return fd.kind == 20 || fd.kind == 22;
}

double litres_per_second(const tavdn_duty& duty) {
  return duty.flow_unit == 1 ? duty.qv * (1000.0 / 3600.0) : duty.qv;
}

bool lacks_size(const PlainProduct& product) {
  return product.duct.b == 0;
}

int why_not_before_flow(const PlainProduct& product, const tavdn_duty& duty) {
  bool of_class = duty.nclasses == 0;
  for (int i = 0; i < duty.nclasses; ++i) of_class = of_class || product.class_id == duty.classes[i];
  if (!of_class) return TAVDN_WHY_CLASS;
  if (duty.duct_max.b == 0) return 0;
  if (lacks_size(product)) return (duty.unknown_allowed & 1) != 0 ? 0 : TAVDN_WHY_SIZE_UNKNOWN;
  const DuctSize& is = product.duct;
  const bool fits = is.shape == duty.duct_min.shape && duty.duct_min.b <= is.b && is.b <= duty.duct_max.b &&
                    (is.shape == 0 || (duty.duct_min.h <= is.h && is.h <= duty.duct_max.h));
  return fits ? 0 : TAVDN_WHY_SIZE;
}

// The single function does not tell a length of 0 from none.
int throw_code_of(const FlowData& fd) {
  tavdn_product* product = nullptr;
  tavdn_prepare(&fd, nullptr, &product);
  const float qv = 1.0F;
  std::int32_t code = 1;
  tavdn_results results{};
  results.size = sizeof results;
  results.throw_code = &code;
  tavdn_calculate(product, 1, &qv, nullptr, 4.0F, &results);
  tavdn_release(product);
  return code;
}

// All numbers of one product at the duty's point, and what it lacks.
tavdn_hit numbers_of(const PlainProduct& product, const FlowData& fd, const tavdn_duty& duty, float qv) {
  tavdn_hit hit;
  std::memset(&hit, 0, sizeof hit);
  hit.qv = qv;
  hit.range_code = tavca_minmaxdptot(&fd, qv, &hit.dp_min, &hit.dp_max);
  hit.dp = duty.dp;
  const bool has_own_pressure = hit.range_code == 0 && !(fd.kind == 12 && tavca_floating_dp(&fd, qv) == 0.0F);
  if (is_fixed(fd) && has_own_pressure) hit.dp = hit.dp_min;
  hit.position_code = tavca_damper_pos(&fd, qv, hit.dp, &hit.position);
  hit.setting_code = tavca_damper_pos_fixed(&fd, qv, hit.dp, &hit.setting);
  if (fd.kind == 40) {
    hit.fan_check = tavca_fan_op_check(&fd, qv, hit.dp);
    hit.fan_code = tavca_fan_dp(&fd, qv, &hit.fan_total, &hit.fan_static, &hit.fan_dynamic);
  }
  hit.lw_code = tavca_lw(&fd, qv, hit.dp, hit.lw, &product.duct);
  tavca_setroomdamp(duty.roomdamp);
  if (hit.lw_code == 0) hit.lpa = tavca_LpA(hit.lw);
  hit.throw_length = tavca_L2_isothermal(&fd, qv, fd.par[0].value);
  hit.throw_code = hit.throw_length != 0.0F ? 0 : throw_code_of(fd);
  hit.area = std::max(ewads_m2(&product.duct), 0.0F);
  const float half = 0.5F * (fd.qvmax - fd.qvmin);
  if (half > 0.0F) hit.fit = std::fabs(qv - 0.5F * (fd.qvmin + fd.qvmax)) / half;

  bool knows_pressure = hit.range_code == 0;
  if (is_fixed(fd)) knows_pressure = has_own_pressure;
  if (is_damper(fd)) knows_pressure = hit.position_code >= -1 && hit.position_code <= 1;
  if (fd.kind == 40) knows_pressure = fd.nfan > 0;
  if (lacks_size(product)) hit.unknown |= 1;
  if (!knows_pressure) hit.unknown |= 2;
  if (hit.lw_code != 0) hit.unknown |= 4;
  if (hit.throw_code != 0) hit.unknown |= 8;
  return hit;
}

int why_not_pressure(const FlowData& fd, const tavdn_duty& duty, const tavdn_hit& hit) {
  if ((hit.unknown & 2) != 0) return TAVDN_WHY_PRESSURE_UNKNOWN;
  if (fd.kind == 40) {
    if (hit.fan_check == -100) return TAVDN_WHY_FAN_BELOW_CURVE;
    if (hit.fan_check == -200) return TAVDN_WHY_FAN_ABOVE_CURVE;
    return hit.fan_check == -300 ? TAVDN_WHY_FAN_OVER_CURVE : 0;
  }
  if (is_damper(fd)) {
    if (hit.position_code == -1) return TAVDN_WHY_PRESSURE_HIGH;
    return hit.position_code == 1 ? TAVDN_WHY_PRESSURE_LOW : 0;
  }
  if (is_fixed(fd)) {
    if (!(hit.dp_min <= duty.dp)) return TAVDN_WHY_PRESSURE_HIGH;
    return hit.dp_min >= duty.dp_lowest ? 0 : TAVDN_WHY_PRESSURE_LOW;
  }
  if (!(duty.dp >= hit.dp_min)) return TAVDN_WHY_PRESSURE_HIGH;
  return duty.dp <= hit.dp_max ? 0 : TAVDN_WHY_PRESSURE_LOW;
}

int why_not_sound(const tavdn_duty& duty, const tavdn_hit& hit) {
  const bool any_band = std::any_of(duty.lw_max, duty.lw_max + 8, [](float limit) { return limit != 0; });
  if (!any_band && duty.lp_max == 0) return 0;
  if (hit.lw_code != 0) return TAVDN_WHY_SOUND_UNKNOWN;
  for (int band = 0; band < 8; ++band) {
    if (duty.lw_max[band] != 0 && !(hit.lw[band] <= duty.lw_max[band])) return TAVDN_WHY_BAND;
  }
  return duty.lp_max == 0 || hit.lpa <= duty.lp_max ? 0 : TAVDN_WHY_LEVEL;
}

int why_not_throw(const tavdn_duty& duty, const tavdn_hit& hit) {
  if (duty.throw_min == 0 && duty.throw_max == 0) return 0;
  if (hit.throw_code != 0) return TAVDN_WHY_THROW_UNKNOWN;
  if (!(hit.throw_length >= duty.throw_min)) return TAVDN_WHY_THROW_SHORT;
  return duty.throw_max == 0 || hit.throw_length <= duty.throw_max ? 0 : TAVDN_WHY_THROW_LONG;
}

bool excludes(int reason, const tavdn_duty& duty) {
  if (reason == TAVDN_WHY_PRESSURE_UNKNOWN) return (duty.unknown_allowed & 2) == 0;
  if (reason == TAVDN_WHY_SOUND_UNKNOWN) return (duty.unknown_allowed & 4) == 0;
  if (reason == TAVDN_WHY_THROW_UNKNOWN) return (duty.unknown_allowed & 8) == 0;
  return reason != 0;
}

// What is no number ranks like what is not known.
void rank(const FlowData& fd, const PlainProduct& product, const tavdn_duty& duty, PlainHit& of) {
  const tavdn_hit& hit = of.hit;
  switch (duty.rank) {
    case TAVDN_RANK_SOUND:
      of.has_key = hit.lw_code == 0;
      of.key = hit.lpa;
      break;
    case TAVDN_RANK_PRESSURE:
      of.has_key = fd.kind == 40 ? hit.fan_code == 0 : hit.range_code == 0;
      of.key = fd.kind == 40 ? hit.fan_total : hit.dp_min;
      break;
    case TAVDN_RANK_SIZE:
      of.has_key = !lacks_size(product);
      of.key = hit.area;
      break;
    default:
      of.has_key = true;
      of.key = hit.fit;
  }
  of.has_key = of.has_key && !std::isnan(of.key);
}

bool is_before(const PlainHit& a, const PlainHit& b) {
  if (a.has_key != b.has_key) return a.has_key;
  return a.has_key && a.key < b.key;
}

// The best choice of a product, or why there is none.
std::optional<PlainHit> best_of(const PlainProduct& product, const PlainValues& values,
                                const tavdn_duty& duty, unsigned char* why) {
  int farthest = why_not_before_flow(product, duty);
  if (farthest != 0) {
    *why = static_cast<unsigned char>(farthest);
    return {};
  }
  const std::vector<FlowData> choices = choices_of(product.loaded, values);
  if (choices.empty()) farthest = TAVDN_WHY_VALUE;
  std::optional<PlainHit> best;
  for (const FlowData& fd : choices) {
    const double base = litres_per_second(duty);
    const float qv = fd.isvelocity != 0 ? ewads_vms(&product.duct, base) : static_cast<float>(base);
    float low = 0;
    float high = 0;
    tavca_qminqmax(&fd, &low, &high);
    if (fd.isvelocity != 0 && !(qv > 0)) {
      farthest = std::max<int>(farthest, TAVDN_WHY_FLOW_UNKNOWN);
    } else if (!(low <= qv && qv <= high)) {
      farthest = std::max<int>(farthest, low <= qv ? TAVDN_WHY_FLOW_HIGH : TAVDN_WHY_FLOW_LOW);
    } else {
      PlainHit found{numbers_of(product, fd, duty, qv), fd, false, 0};
      int reason = 0;
      for (const int asked : {why_not_pressure(fd, duty, found.hit), why_not_sound(duty, found.hit),
                              why_not_throw(duty, found.hit)}) {
        if (reason == 0 && excludes(asked, duty)) reason = asked;
      }
      farthest = std::max(farthest, reason);
      if (reason != 0) continue;
      rank(fd, product, duty, found);
      if (!best || is_before(found, *best)) best = found;
    }
  }
  *why = best ? 0 : static_cast<unsigned char>(farthest);
  return best;
}

}  // namespace

std::vector<PlainProduct> plain_products(std::int16_t db, bool without_end_reflection) {
  std::vector<PlainProduct> products;
  const std::string lowest(30, '\x01');
  tavb_rec rec = tavbfindrec(db, lowest.c_str(), lowest.c_str(), 1);
  while (rec != nullptr) {
    char class_id[8] = {};
    char object_id[32] = {};
    tavbgetID(db, rec, class_id, object_id);
    PlainProduct product{};
    product.class_id = class_id;
    tavbobjIDtosz(db, object_id, object_id);
    product.object_id = object_id;
    tavdf_load_ductsize(db, rec, &product.duct);
    if (is_product(db, rec, class_id) && tavca_load_flowdata(db, rec, &product.loaded) == 0 &&
        product.loaded.nhdd != 0) {
      if (without_end_reflection) tavca_check_end_reflection(&product.loaded);
      products.push_back(product);
    }
    tavb_rec next = tavbnextrec(db, rec);
    tavbreleaserec(rec);
    rec = next;
  }
  return products;
}

PlainAnswer plain_select(const std::vector<PlainProduct>& products, const PlainValues& values,
                         const tavdn_duty& duty) {
  PlainAnswer answer;
  answer.reasons.resize(products.size());
  for (std::size_t i = 0; i < products.size(); ++i) {
    std::optional<PlainHit> best = best_of(products[i], values, duty, &answer.reasons[i]);
    if (!best) continue;
    best->hit.product = static_cast<std::uint32_t>(i);
    answer.hits.push_back(*best);
  }
  std::stable_sort(answer.hits.begin(), answer.hits.end(), is_before);
  return answer;
}

}  // namespace selecttest
