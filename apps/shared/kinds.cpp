#include "shared/kinds.h"

#include <algorithm>
#include <iterator>

#include "tavd/attributes.h"

namespace hosts {
namespace {

struct Kind {
  std::int16_t number;
  const char* name;
};

constexpr Kind kKinds[] = {
    {TAVD_KIND_RESISTANCE, "fixed resistance"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "fixed resistance by air velocity"},
    {TAVD_KIND_RESISTANCE_POINTS, "fixed resistance measured at several flows"},
    {TAVD_KIND_LIMITS, "pressure range"},
    {TAVD_KIND_DAMPER, "adjustable damper"},
    {TAVD_KIND_DAMPER_VELOCITY, "adjustable damper by air velocity"},
    {TAVD_KIND_RANGE, "device for a pressure range"},
    {TAVD_KIND_FAN, "fan"},
};

}  // namespace

const char* kind_name(std::int16_t kind) {
  const auto* found = std::ranges::find(kKinds, kind, &Kind::number);
  return found == std::end(kKinds) ? nullptr : found->name;
}

bool is_damper(const FlowData& flow) {
  return flow.kind == TAVD_KIND_DAMPER || flow.kind == TAVD_KIND_DAMPER_VELOCITY;
}

bool is_fan(const FlowData& flow) {
  return flow.kind == TAVD_KIND_FAN;
}

bool has_fixed_pressure(const FlowData& flow) {
  return flow.kind == TAVD_KIND_RESISTANCE || flow.kind == TAVD_KIND_RESISTANCE_VELOCITY ||
         flow.kind == TAVD_KIND_RESISTANCE_POINTS;
}

}  // namespace hosts
