#include "shared/selection.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "shared/kinds.h"
#include "shared/numbers.h"

namespace hosts {
namespace {

constexpr DutyWord kRankings[] = {{"sound", TAVDN_RANK_SOUND},
                                  {"pressure", TAVDN_RANK_PRESSURE},
                                  {"size", TAVDN_RANK_SIZE},
                                  {"fit", TAVDN_RANK_FIT}};

// What is given where it is of use: the pressure that the product takes or gives.
std::string pressure_text(const tavdn_hit& hit, const FlowData& flow, const Unit& unit) {
  if ((hit.unknown & TAVDN_UNKNOWN_PRESSURE) != 0) return "unknown";
  return brief(shown(is_fan(flow) ? hit.fan_total : hit.dp, unit));
}

}  // namespace

std::span<const DutyWord> rankings() {
  return kRankings;
}

Selected select_one(const tavdn_catalogue* catalogue, const tavdn_duty& duty, bool with_reasons) {
  Selected selected;
  selected.hits.resize(static_cast<std::size_t>(duty.wanted));
  if (with_reasons) selected.reasons.resize(tavdn_catalogue_count(catalogue));
  tavdn_fitting fitting{};
  const int code = tavdn_select(catalogue, &duty, selected.hits.size(), selected.hits.data(), &fitting,
                                with_reasons ? selected.reasons.data() : nullptr);
  if (code == TAVDN_NO_MEMORY) throw std::bad_alloc();
  if (code != TAVDN_OK) throw std::logic_error(tavdn_message("tavdn_select", code));
  selected.products = fitting.products;
  selected.hits.resize(static_cast<std::size_t>(fitting.hits));
  return selected;
}

std::string fitting_text(std::size_t fitting, std::size_t all) {
  return (fitting == 0 ? "none" : std::to_string(fitting)) + " of " + std::to_string(all) +
         (all == 1 ? " product" : " products") + (fitting == 1 ? " fits" : " fit");
}

const char* reason_text(int reason) {
  return tavdn_message("TAVDN_WHY_", reason);
}

// Reasons are numbered in the order in which the conditions are asked.
std::string nearest_reason(const std::vector<unsigned char>& reasons) {
  if (reasons.empty()) return {};
  const unsigned char last = *std::ranges::max_element(reasons);
  const auto count = std::ranges::count(reasons, last);
  return std::string(reason_text(last)) + ": " + std::to_string(count) +
         (count == 1 ? " product" : " products");
}

HitTexts hit_texts(const tavdn_hit& hit, const FlowData& flow, const Unit& flow_unit,
                   const Unit& pressure_unit) {
  const bool has_sound = (hit.unknown & TAVDN_UNKNOWN_SOUND) == 0;
  const bool has_throw = (hit.unknown & TAVDN_UNKNOWN_THROW) == 0;
  return {brief(shown(hit.qv, flow_unit)), pressure_text(hit, flow, pressure_unit),
          hit.range_code == 0 ? brief(shown(hit.dp_min, pressure_unit)) : "",
          has_sound ? fixed(hit.lpa, 1) : "unknown", has_throw ? fixed(hit.throw_length, 1) : ""};
}

}  // namespace hosts
