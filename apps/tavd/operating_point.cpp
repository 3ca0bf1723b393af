#include "operating_point.h"

#include <algorithm>
#include <iterator>

#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

struct CodeText {
  int code;
  const char* text;
};

constexpr CodeText kRangeTexts[] = {
    {TAVCA_OK, "calculated"},
    {TAVCA_DPTOT_NO_DATA, "the product has no flow data"},
    {TAVCA_DPTOT_BAD_POINT, "the reference point is missing or has no flow"},
    {TAVCA_DPTOT_BAD_DAMPER, "the damper table is missing or has a row without flow"},
    {TAVCA_DPTOT_OTHER_KIND, "this kind of product has no pressure law"},
};

constexpr CodeText kDamperTexts[] = {
    {TAVCA_POS_NO_DAMPER, "this product has no positions"},
    {TAVCA_POS_ABOVE_TABLE, "more throttled than the first setting"},
    {TAVCA_OK, "in range"},
    {TAVCA_POS_BELOW_TABLE, "more open than the last setting"},
    {TAVCA_POS_NO_TABLE, "the damper table is missing"},
    {TAVCA_POS_BAD_POINT, "flow or pressure is too small"},
    {TAVCA_POS_BAD_ROW, "the damper table has a row without flow or pressure"},
};

constexpr CodeText kFanTexts[] = {
    {TAVCA_OK, "on the fan curve"},
    {TAVCA_FAN_BELOW_CURVE, "flow below the fan curve, along the line through its first point"},
    {TAVCA_FAN_ABOVE_CURVE, "flow above the fan curve, the fan delivers no pressure"},
};

constexpr CodeText kFanCheckTexts[] = {
    {TAVCA_OK, "the fan can serve this point"},
    {TAVCA_FAN_BELOW_CURVE, "pressure above the line through the first point of the curve"},
    {TAVCA_FAN_ABOVE_CURVE, "flow above the curve, or pressure below the line through its last point"},
    {TAVCA_FAN_OVER_CURVE, "pressure above the fan curve at this flow"},
};

constexpr CodeText kSoundTexts[] = {
    {TAVCA_OK, "calculated"},
    {TAVCA_LW_NO_FLOW, "the flow is too small"},
    {TAVCA_LW_NO_DATA, "the product has no flow data"},
    {TAVCA_LW_FEW_ROWS, "the sound table has fewer than two rows"},
    {TAVCA_LW_OTHER_KIND, "this kind of product has no sound calculation"},
    {TAVCA_LW_NO_PRESSURE, "there is no pressure at this flow"},
    {TAVCA_LW_NO_PAIR, "the sound table has no two rows to go between"},
    {TAVCA_LW_MANY_CURVES, "the sound table has too many curves"},
    {TAVCA_LW_BAD_CURVE_ROW, "the sound table has a row without flow or pressure"},
    {TAVCA_LW_FEW_CURVES, "the sound table has only one curve"},
    {TAVCA_LW_RISING_CURVES, "the curves of the sound table are not in falling order of resistance"},
    {TAVCA_LW_SHORT_CURVE, "a curve of the sound table has only one row"},
    {TAVCA_LW_MANY_FLOWS, "the sound table has too many flows"},
    {TAVCA_LW_BAD_FLOW_ROW, "the sound table has a row without flow or pressure"},
    {TAVCA_LW_FEW_FLOWS, "the sound table has only one flow"},
    {TAVCA_LW_SHORT_FLOW, "a flow of the sound table has only one row"},
};

template <std::size_t N>
const char* text_of(const CodeText (&texts)[N], int code) {
  const auto* found = std::find_if(std::begin(texts), std::end(texts),
                                   [&](const CodeText& entry) { return entry.code == code; });
  return found == std::end(texts) ? "not calculated" : found->text;
}

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

SoundAnswer solve_sound(const FlowData& flow, float qv, float dp, const DuctSize& size) {
  SoundAnswer answer{};
  answer.code = tavca_lw(&flow, qv, dp, answer.lw.data(), &size);
  if (answer.code == 0) answer.room_level = tavca_LpA(answer.lw.data());
  return answer;
}

// The pressure of these kinds follows from the flow alone.
bool is_fixed_curve(const FlowData& flow) {
  return flow.kind == TAVD_KIND_RESISTANCE || flow.kind == TAVD_KIND_RESISTANCE_VELOCITY ||
         flow.kind == TAVD_KIND_RESISTANCE_POINTS;
}

// One attenuation for all points needs nothing; a line is followed by flow, or by the position of a damper,
// which needs a pressure.
bool has_attenuation(const FlowData& flow, bool with_dp) {
  if (flow.ndlw != 0 || flow.ndlwpoints == 1) return true;
  const float first = flow.dlwpoints[0].pos;
  const float second = flow.dlwpoints[1].pos;
  if (flow.ndlwpoints < 1 || flow.kind < TAVD_KIND_DAMPER || !(second > first)) return false;
  return !is_damper(flow) || with_dp;
}

}  // namespace

Answers answers_of(const Product& product, bool with_dp) {
  const FlowData& flow = product.flow;
  if (flow.nhdd == 0) return {};
  Answers answers{};
  float lowest = 0;
  float highest = 0;
  answers.range = tavca_minmaxdptot(&flow, flow.qvmax, &lowest, &highest) == 0;
  answers.position = is_damper(flow) && with_dp;
  answers.fan = is_fan(flow) && flow.nfan > 0;
  answers.fan_check = answers.fan && with_dp;
  answers.sound = flow.nlw > 0 && (with_dp || is_fixed_curve(flow));
  answers.attenuation = has_attenuation(flow, with_dp);
  answers.throw_length = flow.nqvL2 > 0 || flow.nparL2 > 0;
  return answers;
}

OperatingPoint calculate(const Product& product, const Answers& answers, float qv, std::optional<float> dp) {
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
  if (answers.sound) point.sound = solve_sound(flow, qv, dp.value_or(0), product.size);
  if (answers.attenuation) {
    point.attenuation.emplace();
    tavca_dlw(&flow, qv, dp.value_or(0), point.attenuation->data());
  }
  if (answers.throw_length) {
    const float length = tavca_L2_isothermal(&flow, qv, flow.par[0].value);
    if (length > 0) point.throw_length = length;
  }
  return point;
}

const char* range_text(int code) {
  return text_of(kRangeTexts, code);
}

const char* damper_text(int code) {
  return text_of(kDamperTexts, code);
}

const char* fan_text(int code) {
  return text_of(kFanTexts, code);
}

const char* fan_check_text(int code) {
  return text_of(kFanCheckTexts, code);
}

const char* sound_text(int code) {
  return text_of(kSoundTexts, code);
}

}  // namespace tavdhost
