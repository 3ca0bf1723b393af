#include "operating_point.h"

#include <algorithm>
#include <iterator>

#include "tavd/tavca.h"

namespace tavdhost {
namespace {

struct CodeText {
  int code;
  const char* text;
};

constexpr CodeText kRangeTexts[] = {
    {0, "calculated"},
    {-2, "the product has no flow data"},
    {-3, "the reference point is missing or has no flow"},
    {-4, "the damper table is missing or has a row without flow"},
    {-6, "this kind of product has no pressure law"},
};

constexpr CodeText kDamperTexts[] = {
    {2, "this product has no positions"},
    {1, "more throttled than the first setting"},
    {0, "in range"},
    {-1, "more open than the last setting"},
    {-3, "the damper table is missing"},
    {-4, "flow or pressure is too small"},
    {-5, "the damper table has a row without flow or pressure"},
};

constexpr CodeText kFanTexts[] = {
    {0, "on the fan curve"},
    {-100, "flow below the fan curve, along the line through its first point"},
    {-200, "flow above the fan curve, the fan delivers no pressure"},
};

constexpr CodeText kFanCheckTexts[] = {
    {0, "the fan can serve this point"},
    {-100, "pressure above the line through the first point of the curve"},
    {-200, "flow above the curve, or pressure below the line through its last point"},
    {-300, "pressure above the fan curve at this flow"},
};

constexpr CodeText kSoundTexts[] = {
    {0, "calculated"},
    {-1, "the flow is too small"},
    {-2, "the product has no flow data"},
    {-3, "the sound table has fewer than two rows"},
    {-9, "this kind of product has no sound calculation"},
    {-11, "there is no pressure at this flow"},
    {-12, "the sound table has no two rows to go between"},
    {-21, "the sound table has too many curves"},
    {-22, "the sound table has a row without flow or pressure"},
    {-23, "the sound table has only one curve"},
    {-24, "the curves of the sound table are not in falling order of resistance"},
    {-25, "a curve of the sound table has only one row"},
    {-31, "the sound table has too many flows"},
    {-32, "the sound table has a row without flow or pressure"},
    {-33, "the sound table has only one flow"},
    {-34, "a flow of the sound table has only one row"},
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
  return flow.kind == 10 || flow.kind == 11 || flow.kind == 12;
}

// One attenuation for all points needs nothing; a line is followed by flow, or by the position of a damper,
// which needs a pressure.
bool has_attenuation(const FlowData& flow, bool with_dp) {
  if (flow.ndlw != 0 || flow.ndlwpoints == 1) return true;
  const float first = flow.dlwpoints[0].pos;
  const float second = flow.dlwpoints[1].pos;
  if (flow.ndlwpoints < 1 || flow.kind < 20 || !(second > first)) return false;
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
