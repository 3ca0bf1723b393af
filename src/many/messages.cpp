// Every code of every function in words.
#include <algorithm>
#include <cstring>
#include <span>

#include "tavd/tavd.h"
#include "tavd/tavdn.h"
#include "tavd/tavdn_select.h"

namespace tavd {
namespace {

struct CodeText {
  int code;
  const char* text;
};

// ---- Calculations -----------------------------------------------------------

constexpr CodeText kLoad[] = {
    {TAVCA_OK, "loaded"},
    {TAVCA_LOAD_NO_HEADER, "the record has no header of flow data"},
};

constexpr CodeText kLimits[] = {
    {TAVCA_OK, "given"},
    {TAVCA_LIMITS_NO_DATA, "the product has no flow data"},
};

constexpr CodeText kParameterValue[] = {
    {TAVCA_OK, "chosen"},
    {TAVCA_PARAM_NO_NAME, "the product has no parameter of this name"},
};

constexpr CodeText kParameterNumber[] = {
    {TAVCA_OK, "a number"},
    {TAVCA_PARAM_NO_NUMBER, "not a number, but a label"},
};

constexpr CodeText kFan[] = {
    {TAVCA_OK, "on the fan curve"},
    {TAVCA_FAN_NO_RECORD, "there is no product record"},
    {TAVCA_FAN_BELOW_CURVE, "flow below the fan curve, along the line through its first point"},
    {TAVCA_FAN_ABOVE_CURVE, "flow above the fan curve, the fan delivers no pressure"},
};

constexpr CodeText kFanCheck[] = {
    {TAVCA_OK, "the fan can serve this point"},
    {TAVCA_FAN_NO_RECORD, "there is no product record"},
    {TAVCA_FAN_BELOW_CURVE, "pressure above the line through the first point of the curve"},
    {TAVCA_FAN_ABOVE_CURVE, "flow above the curve, or pressure below the line through its last point"},
    {TAVCA_FAN_OVER_CURVE, "pressure above the fan curve at this flow"},
};

constexpr CodeText kRange[] = {
    {TAVCA_OK, "calculated"},
    {TAVCA_DPTOT_NO_DATA, "the product has no flow data"},
    {TAVCA_DPTOT_BAD_POINT, "the reference point is missing or has no flow"},
    {TAVCA_DPTOT_BAD_DAMPER, "the damper table is missing or has a row without flow"},
    {TAVCA_DPTOT_OTHER_KIND, "this kind of product has no pressure law"},
};

constexpr CodeText kPressureOfPosition[] = {
    {TAVCA_DPTOT_NO_DATA, "the product has no flow data"},
};

constexpr CodeText kPosition[] = {
    {TAVCA_POS_NO_DAMPER, "this product has no positions"},
    {TAVCA_POS_ABOVE_TABLE, "more throttled than the first setting"},
    {TAVCA_OK, "in range"},
    {TAVCA_POS_BELOW_TABLE, "more open than the last setting"},
    {TAVCA_POS_NO_TABLE, "the damper table is missing"},
    {TAVCA_POS_BAD_POINT, "flow or pressure is too small"},
    {TAVCA_POS_BAD_ROW, "the damper table has a row without flow or pressure"},
};

constexpr CodeText kSound[] = {
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

constexpr CodeText kCalculated[] = {
    {TAVCA_OK, "calculated"},
};

// ---- Codes, ids and sizes ---------------------------------------------------

constexpr CodeText kVersion[] = {
    {TAVD_INTERFACE_VERSION, "the library has this interface"},
    {TAVD_INTERFACE_REFUSED, "the library has another interface"},
};

constexpr CodeText kProductCode[] = {
    {TAVD_CODE_OK, "built"},
    {TAVD_CODE_BAD_SIZE, "the template asks for a measure that the duct does not have, or ends behind \"{\""},
    {TAVD_CODE_BAD_LETTER,
     "a field of the template is none of D, B and H, or is followed by something else than "
     "\":\", \"}\" or a digit from 1 to 9"},
    {TAVD_CODE_UNCLOSED, "a field of the template is not closed"},
    {TAVD_CODE_DIGITS_AT_END, "the template ends behind a number of digits"},
    {TAVD_CODE_BAD_UNIT, "a field of the template has a unit other than mm, cm and dm"},
};

constexpr CodeText kProductId[] = {
    {TAVD_CODE_OK, "built"},
};

constexpr CodeText kSizeText[] = {
    {0, "read"},
    {EWADS_NO_SIZE, "the text is not a duct size"},
};

// ---- Databases, families, id sets -------------------------------------------

constexpr CodeText kOpen[] = {
    {TAVDF_NO_DATABASE, "the database can't be opened"},
};

constexpr CodeText kDuctSize[] = {
    {0, "from the header of flow data"},
    {TAVDF_OTHER_SIZE, "not from the header of flow data; 0 if no size is known"},
};

constexpr CodeText kShape[] = {
    {0, "repaired where it had to be"},
};

constexpr CodeText kInstallation[] = {
    {0, "given"},
    {TAVDF_NO_TEXT, "the product has no installation text"},
};

constexpr CodeText kCopy[] = {
    {0, "copied"},
    {TAVDF_NO_RECORD, "the database has no such product"},
};

constexpr CodeText kDelete[] = {
    {0, "deleted"},
    {TAVDF_NO_RECORD, "the database has no such product"},
};

constexpr CodeText kFamilyAdd[] = {
    {0, "added"},
    {TAVFM_REFUSED, "there is no record, or the list is not initialised"},
    {TAVFM_NO_MEMORY, "memory ran out, the list is empty"},
};

constexpr CodeText kFamilyGet[] = {
    {0, "given"},
    {TAVFM_NO_SUCH_INDEX, "the family has no member of this index"},
};

constexpr CodeText kFamilyMember[] = {
    {TAVFM_MEMBER, "a member of the family"},
    {TAVFM_NO_MEMBER, "no member of the family"},
    {TAVFM_PAST_FAMILY, "no member of the family, nor is any id behind it"},
};

constexpr CodeText kSetSigns[] = {
    {0, "set"},
    {TAVDIDSET_REFUSED, "there are no characters, or one that can't be such a sign"},
};

constexpr CodeText kSetRead[] = {
    {0, "read"},
    {TAVDIDSET_NO_PRODUCT, "the id has no separator, the product has two main records, or memory ran out"},
};

constexpr CodeText kSetAdjust[] = {
    {0, "adjusted"},
    {TAVDIDSET_NO_PRODUCT, "the product has no main record"},
    {TAVDIDSET_NOT_ADJUSTED, "the id does not fit the main record"},
};

constexpr CodeText kSetFind[] = {
    {TAVDIDSET_FOUND, "found"},
    {TAVDIDSET_NOT_FOUND, "no record of the product has this attribute"},
    {TAVDIDSET_NO_PRODUCT, "the product has no main record"},
    {TAVDIDSET_NOT_ADJUSTED, "the set is not adjusted to an id"},
};

// ---- Diagrams ---------------------------------------------------------------

constexpr CodeText kDiagram[] = {
    {0, "built"},
    {TAVDG_NOT_BUILT,
     "the product is missing or has no usable limits of flow and pressure, or memory ran out"},
};

constexpr CodeText kDiagramStart[] = {
    {0, "started"},
};

constexpr CodeText kThrowDiagram[] = {
    {0, "built"},
    {L2DG_NOT_BUILT,
     "the product is missing, has no throw table or no usable limits of flow and pressure, or memory ran "
     "out"},
};

constexpr CodeText kThrowDiagramStart[] = {
    {0, "started"},
    {L2DG_NOT_BUILT,
     "the window class is refused, or the product is missing, has no throw table or no usable limits "
     "of flow and pressure, or memory ran out"},
};

// ---- Many points ------------------------------------------------------------

constexpr CodeText kPrepare[] = {
    {TAVDN_OK, "prepared"},
    {TAVDN_BAD_ARGUMENT, "an argument is missing"},
    {TAVDN_NO_MEMORY, "memory ran out"},
};

constexpr CodeText kArrays[] = {
    {TAVDN_OK, "calculated"},
    {TAVDN_BAD_ARGUMENT,
     "an argument is missing or of another size, or there are more points than memory can hold"},
};

constexpr CodeText kPicture[] = {
    {TAVDN_OK, "drawn"},
    {TAVDN_BAD_ARGUMENT, "an argument is missing or of another size"},
    {TAVDN_NO_MEMORY, "memory ran out"},
    {TAVDN_NOT_DRAWN, "the product makes no such diagram"},
};

constexpr CodeText kThrow[] = {
    {TAVDN_THROW_GIVEN, "calculated"},
    {TAVDN_THROW_NONE, "the product has no throw line"},
};

// ---- Selection --------------------------------------------------------------

constexpr CodeText kCatalogue[] = {
    {TAVDN_OK, "opened"},
    {TAVDN_BAD_ARGUMENT, "an argument is missing or of another size, or a number of items is negative"},
    {TAVDN_NO_MEMORY, "memory ran out"},
    {TAVDN_CANCELLED, "cancelled"},
};

constexpr CodeText kSelect[] = {
    {TAVDN_OK, "selected"},
    {TAVDN_BAD_ARGUMENT, "an argument is missing, or there are more duties than memory can hold"},
    {TAVDN_NO_MEMORY, "memory ran out"},
    {TAVDN_DUTY_RECORD, "the duty is missing or of another size"},
    {TAVDN_DUTY_FLOW, "the flow is no number above 0, or its unit is unknown"},
    {TAVDN_DUTY_PRESSURE,
     "the available pressure is no number above 0, or the lowest is below 0 or above the available one"},
    {TAVDN_DUTY_SOUND, "a limit of sound is no number of 0 or above, or the room damping is no number"},
    {TAVDN_DUTY_THROW, "a throw length is no number of 0 or above, or the shortest is above the longest"},
    {TAVDN_DUTY_SIZE, "the smallest and the largest duct have no sizes, different shapes or the wrong order"},
    {TAVDN_DUTY_CLASS, "the catalogue has no product of a class"},
    {TAVDN_DUTY_VALUES, "the catalogue was not opened with this set of parameter values"},
    {TAVDN_DUTY_RANK, "the ranking is unknown"},
    {TAVDN_DUTY_UNKNOWN, "an answer that may be unknown is none"},
    {TAVDN_DUTY_WANTED, "fewer than one hit is wanted, or more than there is room for"},
};

constexpr CodeText kReasons[] = {
    {TAVDN_WHY_FITS, "it fits"},
    {TAVDN_WHY_CLASS, "it is of another class"},
    {TAVDN_WHY_SIZE_UNKNOWN, "it has no duct size"},
    {TAVDN_WHY_SIZE, "it has another duct size"},
    {TAVDN_WHY_VALUE, "it does not have the value of a parameter"},
    {TAVDN_WHY_FLOW_UNKNOWN, "it goes by air velocity and has no duct size"},
    {TAVDN_WHY_FLOW_LOW, "the flow is below its limits"},
    {TAVDN_WHY_FLOW_HIGH, "the flow is above its limits"},
    {TAVDN_WHY_PRESSURE_UNKNOWN, "it has no data for its pressure"},
    {TAVDN_WHY_PRESSURE_HIGH, "it takes more pressure than is available"},
    {TAVDN_WHY_PRESSURE_LOW, "it takes less pressure than it must"},
    {TAVDN_WHY_FAN_BELOW_CURVE, "the pressure is too high for its curve to begin"},
    {TAVDN_WHY_FAN_ABOVE_CURVE, "the flow is above its curve, or the pressure below it"},
    {TAVDN_WHY_FAN_OVER_CURVE, "it gives less pressure at this flow"},
    {TAVDN_WHY_SOUND_UNKNOWN, "it has no data for its sound"},
    {TAVDN_WHY_BAND, "it has too much sound power in a band"},
    {TAVDN_WHY_LEVEL, "it is too loud in the room"},
    {TAVDN_WHY_THROW_UNKNOWN, "it has no throw line"},
    {TAVDN_WHY_THROW_SHORT, "its throw is too short"},
    {TAVDN_WHY_THROW_LONG, "its throw is too long"},
};

struct FunctionCodes {
  const char* function;
  std::span<const CodeText> codes;
};

constexpr FunctionCodes kFunctions[] = {
    {"tavca_load_flowdata", kLoad},
    {"tavca_qminqmax", kLimits},
    {"tavca_param_setvalue", kParameterValue},
    {"tavca_param_valuetoreal", kParameterNumber},
    {"tavca_fan_dp", kFan},
    {"tavca_fan_op_check", kFanCheck},
    {"tavca_minmaxdptot", kRange},
    {"tavca_dptot_damperpos", kPressureOfPosition},
    {"tavca_damper_pos", kPosition},
    {"tavca_damper_pos_fixed", kPosition},
    {"tavca_lw", kSound},
    {"tavca_dlw", kCalculated},
    {"tavd_version_nmb", kVersion},
    {"tavd_build_code_ds", kProductCode},
    {"tavd_build_code_ds2", kProductCode},
    {"tavd_build_code_dsw", kProductCode},
    {"tavd_build_code_dsw2", kProductCode},
    {"tavd_build_productId_ds", kProductId},
    {"tavd_build_productId_ds2", kProductId},
    {"tavd_build_productId_dsw", kProductId},
    {"tavd_build_productId_dsw2", kProductId},
    {"ewads_sscanf", kSizeText},
    {"ewads_swscanf", kSizeText},
    {"tavdf_open_database", kOpen},
    {"tavdf_open_databasew", kOpen},
    {"tavdf_load_ductsize", kDuctSize},
    {"tavdf_check_shapedata", kShape},
    {"tavdf_load_installationdef", kInstallation},
    {"tavdf_copy_recs", kCopy},
    {"tavdf_delete_recs", kDelete},
    {"tavfm_add", kFamilyAdd},
    {"tavfm_addw", kFamilyAdd},
    {"tavfm_get", kFamilyGet},
    {"tavfm_getw", kFamilyGet},
    {"tavfm_is_member", kFamilyMember},
    {"tavfm_is_memberw", kFamilyMember},
    {"tavdidset_set_wildchars", kSetSigns},
    {"tavdidset_set_separators", kSetSigns},
    {"tavdidset_read", kSetRead},
    {"tavdidset_adjust", kSetAdjust},
    {"tavdidset_findatt", kSetFind},
    {"tavdg_init", kDiagram},
    {"tavdg_init_empty", kDiagramStart},
    {"tavdg_initdiagramdata", kDiagram},
    {"L2dg_init", kThrowDiagramStart},
    {"L2dg_initdiagramdata", kThrowDiagram},
    {"tavdn_prepare", kPrepare},
    {"tavdn_calculate", kArrays},
    {"tavdn_lpa", kArrays},
    {"tavdn_throw", kArrays},
    {"tavdn_ductarea", kArrays},
    {"tavdn_endref", kArrays},
    {"tavdn_draw_flow", kPicture},
    {"tavdn_draw_throw", kPicture},
    {"tavdn_draw_shape", kPicture},
    {"tavdn_results.throw_code", kThrow},
    {"tavdn_catalogue_open", kCatalogue},
    {"tavdn_check_duty", kSelect},
    {"tavdn_select", kSelect},
    {"tavdn_select_many", kSelect},
    {"TAVDN_WHY_", kReasons},
};

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

const char* tavdn_message(const char* function, int code) {
  if (function == nullptr) return nullptr;
  for (const FunctionCodes& known : kFunctions) {
    if (std::strcmp(known.function, function) != 0) continue;
    const auto found = std::find_if(known.codes.begin(), known.codes.end(),
                                    [&](const CodeText& entry) { return entry.code == code; });
    return found != known.codes.end() ? found->text : nullptr;
  }
  return nullptr;
}
