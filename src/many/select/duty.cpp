#include "many/select/duty.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <string>

#include "db/ids.h"
#include "tavd/ewads.h"

namespace tavd {
namespace {

constexpr double kLitresPerCubicMetre = 1000;
constexpr double kSecondsPerHour = 3600;
constexpr std::uint32_t kAnswers =
    TAVDN_UNKNOWN_SIZE | TAVDN_UNKNOWN_PRESSURE | TAVDN_UNKNOWN_SOUND | TAVDN_UNKNOWN_THROW;

bool is_limit(float value) {
  return std::isfinite(value) && value >= 0.0F;
}

bool is_flow(const tavdn_duty& duty) {
  const auto flow = static_cast<float>(litres_per_second(duty));
  return (duty.flow_unit == TAVDN_FLOW_L_S || duty.flow_unit == TAVDN_FLOW_M3_H) && std::isfinite(flow) &&
         flow > 0.0F;
}

bool is_pressure(const tavdn_duty& duty) {
  return std::isfinite(duty.dp) && duty.dp > 0.0F && is_limit(duty.dp_lowest) && duty.dp_lowest <= duty.dp;
}

bool is_sound(const tavdn_duty& duty) {
  return is_limit(duty.lp_max) && std::isfinite(duty.roomdamp) &&
         std::all_of(std::begin(duty.lw_max), std::end(duty.lw_max), is_limit);
}

bool is_throw(const tavdn_duty& duty) {
  return is_limit(duty.throw_min) && is_limit(duty.throw_max) &&
         (duty.throw_max == 0.0F || duty.throw_min <= duty.throw_max);
}

bool is_nothing(const DuctSize& duct) {
  return duct.shape == 0 && duct.b == 0 && duct.h == 0;
}

// A round size is its diameter alone.
bool is_size(const tavdn_duty& duty) {
  const DuctSize& low = duty.duct_min;
  const DuctSize& high = duty.duct_max;
  if (is_nothing(low) && is_nothing(high)) return true;
  if (low.shape != high.shape || low.b < 1 || high.b < low.b) return false;
  if (low.shape == TAVD_DUCT_ROUND) return true;
  return low.shape == TAVD_DUCT_RECTANGULAR && low.h >= 1 && high.h >= low.h;
}

std::string class_key(const char* text) {
  std::string key(text, strnlen(text, kClassChars));
  key.resize(kClassChars, ' ');
  return key;
}

bool are_classes(const tavdn_catalogue& catalogue, const tavdn_duty& duty) {
  if (duty.nclasses == 0) return true;
  if (duty.classes == nullptr || duty.nclasses < 0) return false;
  return std::all_of(duty.classes, duty.classes + duty.nclasses, [&](const char* text) {
    return text != nullptr &&
           std::binary_search(catalogue.classes.begin(), catalogue.classes.end(), class_key(text));
  });
}

bool is_wanted(const tavdn_duty& duty, std::size_t room) {
  return duty.wanted >= 1 && static_cast<std::size_t>(duty.wanted) <= room;
}

}  // namespace

double litres_per_second(const tavdn_duty& duty) {
  return duty.flow_unit == TAVDN_FLOW_M3_H ? duty.qv * (kLitresPerCubicMetre / kSecondsPerHour) : duty.qv;
}

int check_duty(const tavdn_catalogue& catalogue, const tavdn_duty* duty, std::size_t room) {
  if (duty == nullptr || duty->size != sizeof *duty) return TAVDN_DUTY_RECORD;
  if (!is_flow(*duty)) return TAVDN_DUTY_FLOW;
  if (!is_pressure(*duty)) return TAVDN_DUTY_PRESSURE;
  if (!is_sound(*duty)) return TAVDN_DUTY_SOUND;
  if (!is_throw(*duty)) return TAVDN_DUTY_THROW;
  if (!is_size(*duty)) return TAVDN_DUTY_SIZE;
  if (!are_classes(catalogue, *duty)) return TAVDN_DUTY_CLASS;
  if (duty->values < 0 || static_cast<std::size_t>(duty->values) >= catalogue.sets) return TAVDN_DUTY_VALUES;
  if (duty->rank < TAVDN_RANK_SOUND || duty->rank > TAVDN_RANK_FIT) return TAVDN_DUTY_RANK;
  if ((duty->unknown_allowed & ~kAnswers) != 0) return TAVDN_DUTY_UNKNOWN;
  if (!is_wanted(*duty, room)) return TAVDN_DUTY_WANTED;
  return TAVDN_OK;
}

Duty::Duty(const tavdn_catalogue& catalogue, const tavdn_duty& duty)
    : asked(duty),
      flow_(litres_per_second(duty)),
      has_band_limits_(std::any_of(std::begin(duty.lw_max), std::end(duty.lw_max),
                                   [](float limit) { return limit != 0.0F; })) {
  if (duty.nclasses == 0) return;
  classes_.resize(catalogue.classes.size());
  for (std::int32_t i = 0; i < duty.nclasses; ++i) {
    const auto found =
        std::lower_bound(catalogue.classes.begin(), catalogue.classes.end(), class_key(duty.classes[i]));
    classes_[static_cast<std::size_t>(found - catalogue.classes.begin())] = true;
  }
}

float Duty::flow_of(const Candidate& candidate) const {
  if (candidate.fd().isvelocity == 0) return flow();
  return ewads_vms(&candidate.listed.duct, flow_);
}

bool Duty::fits_size(const DuctSize& duct) const {
  const DuctSize& low = asked.duct_min;
  const DuctSize& high = asked.duct_max;
  const bool fits_width = duct.shape == low.shape && duct.b >= low.b && duct.b <= high.b;
  return fits_width && (low.shape == TAVD_DUCT_ROUND || (duct.h >= low.h && duct.h <= high.h));
}

}  // namespace tavd
