#include "product/operating_point.h"

#include <cmath>

#include "shared/kinds.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

// Pressures of a fixed resistance that three digits do not tell apart are the same.
constexpr float kSamePressure = 0.005F;

using DamperSolver = decltype(tavca_damper_pos);

DamperAnswer solve_damper(const FlowData& flow, float qv, float dp, DamperSolver* solve) {
  DamperAnswer answer{};
  answer.code = solve(&flow, qv, dp, &answer.position);
  if (answer.has_position()) answer.dp = tavca_dptot_damperpos(&flow, qv, answer.position);
  return answer;
}

FanAnswer solve_fan(const FlowData& flow, float qv, std::optional<float> dp) {
  FanAnswer answer{};
  answer.code = tavca_fan_dp(&flow, qv, &answer.total, &answer.fan_static, &answer.dynamic);
  if (dp) answer.check_code = tavca_fan_op_check(&flow, qv, *dp);
  return answer;
}

// The damping is the process's own, so it is set for each sum.
float weighted_sum(const Bands& lw, float damping) {
  tavca_setroomdamp(damping);
  return tavca_LpA(lw.data());
}

SoundAnswer solve_sound(const FlowData& flow, float qv, float dp, const DuctSize& size, float room_damping) {
  SoundAnswer answer{};
  answer.code = tavca_lw(&flow, qv, dp, answer.lw.data(), &size);
  if (answer.code != 0) return answer;
  answer.lw_A = weighted_sum(answer.lw, 0);
  answer.room_level = weighted_sum(answer.lw, room_damping);
  return answer;
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

// One attenuation for all points needs nothing; a line is followed by flow, or by the position of a damper,
// which needs a pressure.
bool has_attenuation(const FlowData& flow, bool with_dp) {
  if (flow.ndlw != 0 || flow.ndlwpoints == 1) return true;
  const float first = flow.dlwpoints[0].pos;
  const float second = flow.dlwpoints[1].pos;
  if (flow.ndlwpoints < 1 || flow.kind < TAVD_KIND_DAMPER || !(second > first)) return false;
  return !hosts::is_damper(flow) || with_dp;
}

}  // namespace

Answers answers_of(const Product& product, bool with_dp) {
  const FlowData& flow = product.flow;
  if (flow.nhdd == 0) return {};
  Answers answers{};
  float lowest = 0;
  float highest = 0;
  answers.range = tavca_minmaxdptot(&flow, flow.qvmax, &lowest, &highest) == 0;
  answers.position = hosts::is_damper(flow) && with_dp;
  answers.fan = hosts::is_fan(flow) && flow.nfan > 0;
  answers.fan_check = answers.fan && with_dp;
  answers.sound = flow.nlw > 0 && (with_dp || hosts::has_fixed_pressure(flow));
  answers.attenuation = has_attenuation(flow, with_dp);
  answers.throw_length = flow.nqvL2 > 0 || flow.nparL2 > 0;
  return answers;
}

OperatingPoint calculate(const Product& product, const Answers& answers, float qv, std::optional<float> dp,
                         float room_damping) {
  const FlowData& flow = product.flow;
  OperatingPoint point{};
  point.qv = qv;
  point.dp = dp;
  point.flow_in_range = qv >= flow.qvmin && qv <= flow.qvmax;
  if (dp) point.dp_in_range = *dp >= flow.dpmin && *dp <= flow.dpmax;
  point.range_code = tavca_minmaxdptot(&flow, qv, &point.dp_min, &point.dp_max);
  if (answers.position) {
    point.stepless = solve_damper(flow, qv, *dp, tavca_damper_pos);
    point.stepped = solve_damper(flow, qv, *dp, tavca_damper_pos_fixed);
  }
  if (answers.fan) point.fan = solve_fan(flow, qv, dp);
  if (answers.sound) point.sound = solve_sound(flow, qv, dp.value_or(0), product.size, room_damping);
  if (answers.attenuation) {
    point.attenuation.emplace();
    tavca_dlw(&flow, qv, dp.value_or(0), point.attenuation->data());
  }
  if (answers.throw_length) {
    const float length = tavca_L2_isothermal(&flow, qv, flow.par[0].value);
    if (length > 0) point.throw_length = length;
  }
  point.reachable = is_reachable(flow, point);
  return point;
}

}  // namespace tavdhost
