// What kinds of products have in common.
#pragma once

#include "tavd/attributes.h"

namespace tavd {

// One resistance, without a setting.
inline bool is_resistance(int kind) {
  return kind == TAVD_KIND_RESISTANCE || kind == TAVD_KIND_RESISTANCE_VELOCITY ||
         kind == TAVD_KIND_RESISTANCE_POINTS;
}

// A table of settings.
inline bool is_damper(int kind) {
  return kind == TAVD_KIND_DAMPER || kind == TAVD_KIND_DAMPER_VELOCITY;
}

// Every flow of the record is an air velocity.
inline bool is_by_velocity(int kind) {
  return kind == TAVD_KIND_RESISTANCE_VELOCITY || kind == TAVD_KIND_DAMPER_VELOCITY;
}

// Sound is measured at a few flows rather than on curves of constant resistance.
inline bool is_measured_by_flow(int kind) {
  return kind == TAVD_KIND_RANGE || kind == TAVD_KIND_FAN;
}

}  // namespace tavd
