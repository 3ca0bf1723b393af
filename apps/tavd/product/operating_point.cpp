#include "product/operating_point.h"

#include "shared/kinds.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

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

}  // namespace tavdhost
