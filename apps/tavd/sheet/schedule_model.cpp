#include "sheet/schedule_model.h"

#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "select/hits.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

constexpr double kSecondsPerHour = 3600;
constexpr double kLitresPerCubicMetre = 1000;
constexpr int kDecimals = 1;  // of a level and a throw length

double litres_per_second(const tavdn_duty& duty) {
  return duty.flow_unit == TAVDN_FLOW_M3_H ? duty.qv * kLitresPerCubicMetre / kSecondsPerHour : duty.qv;
}

// The pressure of the operating point, where there is one: a product without a pressure law is shown without.
std::optional<float> pressure_of(const tavdn_hit& hit) {
  if ((hit.unknown & TAVDN_UNKNOWN_PRESSURE) != 0 || !(hit.dp > 0)) return {};
  return hit.dp;
}

// The flow that the hit was calculated with, so that the sheet has the same numbers.
Amount flow_of_hit(const tavdn_hit& hit) {
  Amount amount;
  amount.plain = hit.qv;
  return amount;
}

}  // namespace

void ScheduleModel::add(const AnsweredDuty& answered) {
  ScheduleRow row;
  row.own = answered.own;
  const SheetTexts& texts = *form_.texts;
  const auto flow = static_cast<float>(litres_per_second(answered.duty));
  row.flow = localized(texts, brief(shown(flow, *form_.units.flow)));
  row.pressure = localized(texts, brief(shown(answered.duty.dp, *form_.units.pressure)));
  if (answered.selected.hits.empty()) {
    ++without_;
  } else {
    add_hit(answered, row);
  }
  rows_.push_back(std::move(row));
}

void ScheduleModel::add_hit(const AnsweredDuty& answered, ScheduleRow& row) {
  const SheetTexts& texts = *form_.texts;
  const ShownHit shown_hit(answered.catalogue, answered.selected.hits.front());
  const tavdn_hit& hit = shown_hit.hit;
  const tavdn_listed& listed = *tavdn_catalogue_product(answered.catalogue, hit.product);
  row.code = shown_hit.code.empty() ? shown_hit.object_id : shown_hit.code;
  row.description = shown_hit.description;
  row.size = shown_hit.size;
  const auto pressure = pressure_of(hit);
  const float takes = hosts::is_fan(shown_hit.flow) ? hit.fan_total : hit.dp;
  const hosts::Unit& unit = *form_.units.pressure;
  row.takes = pressure ? localized(texts, fixed(shown(takes, unit), unit.decimals)) : texts.words.unknown;
  if ((hit.unknown & TAVDN_UNKNOWN_SOUND) == 0) row.level = localized(texts, fixed(hit.lpa, kDecimals));
  if ((hit.unknown & TAVDN_UNKNOWN_THROW) == 0) {
    row.throw_length = localized(texts, fixed(hit.throw_length, kDecimals));
  }
  ScheduledSheet sheet{{listed.class_id, listed.object_id}, {}, {flow_of_hit(hit), pressure}, row.code};
  for (const auto& [name, value] : chosen_parameters(shown_hit.flow)) {
    std::string& parameter = sheet.parameters.emplace_back(name);
    parameter += "=";
    parameter += value;
  }
  row.sheet = sheet_of(std::move(sheet));
}

std::size_t ScheduleModel::sheet_of(ScheduledSheet sheet) {
  const Same same{sheet.key.class_id, sheet.key.object_id, sheet.parameters, sheet.duty.qv.plain,
                  sheet.duty.dp};
  const auto [found, is_new] = known_.emplace(same, sheets_.size());
  if (is_new) sheets_.push_back(std::move(sheet));
  return found->second;
}

}  // namespace tavdhost
