#include "shared/codes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "tavd/tavca.h"

namespace hosts {
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

}  // namespace

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

}  // namespace hosts
