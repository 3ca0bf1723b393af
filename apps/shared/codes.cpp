#include "shared/codes.h"

#include "tavd/tavdn.h"

namespace hosts {
namespace {

const char* text_of(const char* function, int code) {
  const char* const text = tavdn_message(function, code);
  return text != nullptr ? text : "not calculated";
}

}  // namespace

const char* range_text(int code) {
  return text_of("tavca_minmaxdptot", code);
}

const char* damper_text(int code) {
  return text_of("tavca_damper_pos", code);
}

const char* fan_text(int code) {
  return text_of("tavca_fan_dp", code);
}

const char* fan_check_text(int code) {
  return text_of("tavca_fan_op_check", code);
}

const char* sound_text(int code) {
  return text_of("tavca_lw", code);
}

}  // namespace hosts
