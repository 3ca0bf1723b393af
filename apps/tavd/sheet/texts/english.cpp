// The sheet in English.
#include "sheet/texts/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr NumberedText kKinds[] = {
    {TAVD_KIND_RESISTANCE, "fixed resistance"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "fixed resistance by air velocity"},
    {TAVD_KIND_RESISTANCE_POINTS, "fixed resistance, measured curve"},
    {TAVD_KIND_LIMITS, "pressure range"},
    {TAVD_KIND_DAMPER, "adjustable damper"},
    {TAVD_KIND_DAMPER_VELOCITY, "adjustable damper by air velocity"},
    {TAVD_KIND_RANGE, "device for a pressure range"},
    {TAVD_KIND_FAN, "fan"},
};
constexpr NumberedText kRange[] = {
    {TAVCA_OK, "calculated"},
    {TAVCA_DPTOT_BAD_POINT, "the reference point is missing"},
    {TAVCA_DPTOT_BAD_DAMPER, "the damper table is missing"},
    {TAVCA_DPTOT_OTHER_KIND, "this kind of product has no pressure law"},
};
constexpr NumberedText kDamper[] = {
    {TAVCA_OK, "in range"},
    {TAVCA_POS_ABOVE_TABLE, "more throttled than the first setting"},
    {TAVCA_POS_BELOW_TABLE, "more open than the last setting"},
    {TAVCA_POS_BAD_POINT, "flow or pressure is too small"},
};
constexpr NumberedText kFan[] = {
    {TAVCA_OK, "on the fan curve"},
    {TAVCA_FAN_BELOW_CURVE, "flow below the fan curve"},
    {TAVCA_FAN_ABOVE_CURVE, "flow above the fan curve: no pressure"},
};
constexpr NumberedText kCheck[] = {
    {TAVCA_OK, "the fan can serve this point"},
    {TAVCA_FAN_BELOW_CURVE, "above the line through the first point of the curve"},
    {TAVCA_FAN_ABOVE_CURVE, "beyond the last point of the curve"},
    {TAVCA_FAN_OVER_CURVE, "pressure above the fan curve at this flow"},
};
constexpr NumberedText kSound[] = {
    {TAVCA_OK, "calculated"},
    {TAVCA_LW_NO_FLOW, "the flow is too small"},
    {TAVCA_LW_FEW_ROWS, "the sound table is too short"},
    {TAVCA_LW_OTHER_KIND, "this kind of product has no sound calculation"},
    {TAVCA_LW_NO_PRESSURE, "there is no pressure at this flow"},
};

}  // namespace

const SheetTexts kEnglishSheet = {
    .language = "en",
    .right_to_left = false,
    .decimal = '.',
    .headings = {.sheet = "Product data sheet",
                 .schedule = "Product schedule",
                 .duty = "Duty",
                 .answers = "Performance at the duty",
                 .bands = "Sound power by octave band",
                 .flow_chart = "Pressure over flow",
                 .throw_chart = "Throw length over flow",
                 .sketch = "Dimensions",
                 .notes = "Notes"},
    .words = {.page = "Page",
              .code = "Product code",
              .id = "Product id",
              .kind = "Kind",
              .size = "Size",
              .database = "Database",
              .unknown = "unknown",
              .not_calculated = "not calculated",
              .no_data = "no data"},
    .names = {.flow = "Flow",
              .velocity = "Air velocity",
              .pressure = "Total pressure",
              .flow_limits = "Flow limits",
              .pressure_limits = "Pressure limits",
              .parameter = "Parameter {}",
              .room_damping = "Room damping",
              .end_reflection = "End reflection"},
    .answers = {.lowest_pressure = "Lowest pressure",
                .highest_pressure = "Highest pressure",
                .position = "Position, stepless",
                .setting = "Position, nearest setting",
                .pressure_there = "Pressure there",
                .fan_total = "Fan, total pressure",
                .fan_static = "Fan, static pressure",
                .fan_dynamic = "Fan, dynamic pressure",
                .fan_point = "Operating point",
                .throw_length = "Throw length",
                .sound_power = "Sound power level, A-weighted",
                .room_level = "Sound level in the room",
                .octave_band = "Octave band",
                .band_power = "Sound power",
                .attenuation = "Attenuation"},
    .notes = {.flow_outside = "The flow lies outside the product's limits, {}.",
              .pressure_outside = "The pressure lies outside the product's limits, {}.",
              .unreachable = "The product cannot have this pressure at this flow: {}.",
              .takes = "it takes {} there",
              .levels_elsewhere = "Sound levels are those of the nearest pressure that can be reached.",
              .position_between = "The position lies between measured settings and is interpolated.",
              .sound_between = "Sound levels are interpolated between measured points.",
              .curve_between = "Pressures are interpolated between measured points.",
              .throw_between = "The throw length is interpolated between measured points.",
              .parameter_between = "{} lies between the values of its table and is interpolated.",
              .total_pressure = "Pressures are total pressures.",
              .throw_velocity = "Throw length: isothermal, to an air velocity of {}.",
              .millimetres = "Dimensions in {}."},
    .end_reflection = {.in_table = "not taken off", .taken_off = "taken off", .none = "none to take off"},
    .schedule = {.room = "Room",
                 .terminal = "Terminal",
                 .name = "Name",
                 .line = "Line",
                 .product = "Product",
                 .available = "Available pressure",
                 .takes = "Product pressure",
                 .level = "Room level",
                 .nothing_fits = "no product fits",
                 .duties = "Duties: {}",
                 .without = "without a product that fits: {}"},
    .chart = {.curve = "pressure curve",
              .fan_curve = "fan curve",
              .fan_limits = "fan limits",
              .position = "position",
              .limits = "limits",
              .point = "duty",
              .total_A = "A",
              .any_pressure = "any pressure within the limits"},
    .kinds = kKinds,
    .range_codes = kRange,
    .damper_codes = kDamper,
    .fan_codes = kFan,
    .check_codes = kCheck,
    .sound_codes = kSound,
    .units = {},
};

}  // namespace tavdhost
