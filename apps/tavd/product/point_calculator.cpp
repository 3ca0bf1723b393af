#include "product/point_calculator.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <stdexcept>

#include "shared/kinds.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

// Pressures of a fixed resistance that three digits do not tell apart are the same.
constexpr float kSamePressure = 0.005F;

void check(const char* function, int code) {
  if (code == TAVDN_NO_MEMORY) throw std::bad_alloc();
  if (code != TAVDN_OK) throw std::logic_error(tavdn_message(function, code));
}

tavdn_product* prepared(const Product& product) {
  tavdn_product* made = nullptr;
  check("tavdn_prepare", tavdn_prepare(&product.flow, &product.size, &made));
  return made;
}

// An array with room for the numbers of the block; none if they are not asked for.
template <typename Number>
Number* array(std::vector<Number>& numbers, bool wanted, std::size_t count) {
  if (!wanted) return nullptr;
  numbers.resize(count);
  return numbers.data();
}

Bands bands_at(const std::vector<float>& numbers, std::size_t index) {
  Bands bands;
  std::copy_n(numbers.begin() + static_cast<std::ptrdiff_t>(index * bands.size()), bands.size(),
              bands.begin());
  return bands;
}

std::optional<bool> is_reachable(const FlowData& flow, const OperatingPoint& point) {
  if (!point.dp) return {};
  if (point.fan && point.fan->check_code) return *point.fan->check_code == 0;
  if (point.stepless) {
    return point.stepless->has_position() ? std::optional(point.stepless->code == 0) : std::nullopt;
  }
  if (point.range_code != 0 || hosts::is_damper(flow) || hosts::is_fan(flow)) return {};
  if (hosts::has_fixed_pressure(flow)) {
    return std::abs(*point.dp - point.dp_min) <= kSamePressure * point.dp_min;
  }
  return *point.dp >= point.dp_min && *point.dp <= point.dp_max;
}

}  // namespace

PointCalculator::PointCalculator(const Product& product, const Answers& answers, float room_damping)
    : product_(product), answers_(answers), room_damping_(room_damping), prepared_(prepared(product)) {}

tavdn_results PointCalculator::results_of(std::size_t count) {
  const Answers& wanted = answers_;
  tavdn_results results{};
  results.size = sizeof results;
  results.range_code = array(range_code_, true, count);
  results.dp_min = array(dp_min_, true, count);
  results.dp_max = array(dp_max_, true, count);
  results.position_code = array(stepless_.codes, wanted.position, count);
  results.position = array(stepless_.positions, wanted.position, count);
  results.setting_code = array(stepped_.codes, wanted.position, count);
  results.setting = array(stepped_.positions, wanted.position, count);
  results.fan_code = array(fan_code_, wanted.fan, count);
  results.fan_total = array(fan_total_, wanted.fan, count);
  results.fan_static = array(fan_static_, wanted.fan, count);
  results.fan_dynamic = array(fan_dynamic_, wanted.fan, count);
  results.fan_check = array(fan_check_, wanted.fan_check, count);
  results.lw_code = array(lw_code_, wanted.sound, count);
  results.lw = array(lw_, wanted.sound, count * TAVD_BANDS);
  results.lpa = array(room_level_, wanted.sound, count);
  results.dlw = array(attenuation_, wanted.attenuation, count * TAVD_BANDS);
  results.throw_length = array(throw_length_, wanted.throw_length, count);
  return results;
}

void PointCalculator::calculate(std::span<const float> qv, std::span<const float> dp) {
  qv_ = qv;
  dp_ = dp;
  const tavdn_results results = results_of(qv.size());
  check("tavdn_calculate", tavdn_calculate(prepared_.get(), qv.size(), qv.data(),
                                           dp.empty() ? nullptr : dp.data(), room_damping_, &results));
  if (!answers_.sound) return;
  constexpr float kNoDamping = 0;  // dB
  float* const lw_A = array(lw_A_, true, qv.size());
  check("tavdn_lpa", tavdn_lpa(qv.size(), lw_.data(), kNoDamping, lw_A));
}

// The pressure at a position is none of the answers for many points.
DamperAnswer PointCalculator::damper(const Positions& found, std::size_t index) const {
  DamperAnswer answer{found.codes[index], found.positions[index], 0};
  if (answer.has_position()) {
    answer.dp = tavca_dptot_damperpos(&product_.flow, qv_[index], answer.position);
  }
  return answer;
}

FanAnswer PointCalculator::fan(std::size_t index) const {
  FanAnswer answer{fan_code_[index], fan_total_[index], fan_static_[index], fan_dynamic_[index], {}};
  if (answers_.fan_check) answer.check_code = fan_check_[index];
  return answer;
}

SoundAnswer PointCalculator::sound(std::size_t index) const {
  if (lw_code_[index] != 0) return {lw_code_[index], {}, 0, 0};
  return {lw_code_[index], bands_at(lw_, index), lw_A_[index], room_level_[index]};
}

OperatingPoint PointCalculator::point(std::size_t index) const {
  const FlowData& flow = product_.flow;
  OperatingPoint point{};
  point.qv = qv_[index];
  point.flow_in_range = point.qv >= flow.qvmin && point.qv <= flow.qvmax;
  if (!dp_.empty()) {
    point.dp = dp_[index];
    point.dp_in_range = *point.dp >= flow.dpmin && *point.dp <= flow.dpmax;
  }
  point.range_code = range_code_[index];
  point.dp_min = dp_min_[index];
  point.dp_max = dp_max_[index];
  if (answers_.position) {
    point.stepless = damper(stepless_, index);
    point.stepped = damper(stepped_, index);
  }
  if (answers_.fan) point.fan = fan(index);
  if (answers_.sound) point.sound = sound(index);
  if (answers_.attenuation) point.attenuation = bands_at(attenuation_, index);
  if (answers_.throw_length && throw_length_[index] > 0) point.throw_length = throw_length_[index];
  point.reachable = is_reachable(flow, point);
  return point;
}

OperatingPoint calculated_point(const Product& product, float qv, std::optional<float> dp,
                                float room_damping) {
  PointCalculator calculator(product, answers_of(product, dp.has_value()), room_damping);
  calculator.calculate({&qv, 1}, dp ? std::span(&*dp, 1) : std::span<const float>());
  return calculator.point(0);
}

}  // namespace tavdhost
