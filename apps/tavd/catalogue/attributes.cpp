#include "catalogue/attributes.h"

#include <algorithm>
#include <charconv>

#include "tavd/attributes.h"
#include "tavd/flowdata.h"
#include "tavd/tavfm.h"

namespace tavdhost {
namespace {

using enum ColumnType;
using enum Form;

constexpr Column kWord[] = {{"value", kInt16}};
constexpr Column kNumber[] = {{"value", kFloat}};
constexpr Column kBandsOnly[] = {{"dlw", kBands}};
constexpr Column kIdOnly[] = {{"id", kId}};
constexpr Column kFlowHeader[] = {{"kind", kInt16},  {"b", kInt16},     {"h", kInt16},    {"qvmin", kFloat},
                                  {"qvmax", kFloat}, {"dpmin", kFloat}, {"dpmax", kFloat}};
constexpr Column kOldHeader[] = {{"kind", kInt16},  {"b", kInt16},     {"qvmin", kFloat},
                                 {"qvmax", kFloat}, {"dpmin", kFloat}, {"dpmax", kFloat}};
constexpr Column kLimits[] = {{"qvmin", kFloat}, {"qvmax", kFloat}, {"dpmin", kFloat}, {"dpmax", kFloat}};
constexpr Column kReference[] = {{"qvref", kFloat}, {"dpref", kFloat}};
constexpr Column kDamper[] = {{"pos", kFloat}, {"qv", kFloat}, {"dp", kFloat}};
constexpr Column kSound[] = {{"qv", kFloat}, {"dp", kFloat}, {"lw", kBands}};
constexpr Column kAttenuation[] = {{"pos", kFloat}, {"dlw", kBands}};
constexpr Column kFlowPoint[] = {{"qv", kFloat}, {"dp", kFloat}};
constexpr Column kThrow[] = {{"qv", kFloat}, {"L2", kFloat}};
constexpr Column kParameterThrow[] = {{"value", kValue}, {"qv", kFloat}, {"L2", kFloat}};
constexpr Column kParameter[] = {
    {"value", kValue}, {"dk", kFloat}, {"dlw", kInt16}, {"ddlw", kInt16}, {"factor", kFloat}};
constexpr Column kFan[] = {{"qv", kFloat}, {"dp", kFloat}, {"aux", kFloat}};

// An attribute's length is a signed 16-bit number of bytes.
constexpr std::size_t kMostIds = 32767 / TAVFM_ID_CHARS;
constexpr std::size_t kTextLimit = 255;  // units of the buffers that product texts are read through

constexpr const char* kIntegerExpected = "a whole number from -32768 to 32767";
constexpr const char* kTextExpected = "a text";

constexpr Attribute kAttributes[] = {
    {TAVD_ATT_USES_UTF8, "usesUTF8", kSingle, kWord, 1, 1, kIntegerExpected},
    {TAVD_ATT_DIAMETERS, "d", kList, kWord, 0, TAVD_DIAMETER_ITEMS, "an array of diameters in mm"},
    {TAVD_ATT_SHAPE_DATA, "shapedata", kList, kWord, 0, TAVD_SHAPE_ITEMS,
     "an array of the shape number and its dimensions in mm"},
    {TAVD_ATT_SIZING_MODE, "sizingmode", kSingle, kWord, 1, 1, kIntegerExpected},
    {TAVD_ATT_LW_SIZE_COEF, "lwsizecoef", kSingle, kNumber, 1, 1, "a number"},
    {TAVD_ATT_CODE_THIRD, "pcode_alt2", kWide, {}, 0, kTextLimit, kTextExpected},
    {TAVD_ATT_MAKER, "szManu", kText, {}, 0, TAVD_MAKER_BYTES, kTextExpected},
    {TAVD_ATT_CODE_SECOND, "pcode_alt1", kWide, {}, 0, kTextLimit, kTextExpected},
    {TAVD_ATT_ID_TEMPLATE, "szStruct", kText, {}, 0, TAVD_ID_TEMPLATE_BYTES - 1, kTextExpected},
    {TAVD_ATT_INSTALLATION, "installationdef", kText, {}, 0, TAVFM_INSTALLATION_CHARS - 1, kTextExpected},
    {TAVD_ATT_PAR_NAMES,
     "parnames",
     kText,
     {},
     0,
     TAVD_PAR_NAMES_BYTES - 1,
     "a text, the names separated by a comma"},
    {TAVD_ATT_MODEL_ID, "tvmAtt", kText, {}, 0, TAVD_MODEL_ID_BYTES, kTextExpected},
    {TAVD_ATT_MEMBER_IDS, "memberids", kList, kIdOnly, 0, kMostIds, "an array of object ids"},
    {TAVD_ATT_OLD_HEADER, "hdd", kRecord, kOldHeader, 1, 1,
     "an object with kind, b, qvmin, qvmax, dpmin, dpmax"},
    {TAVD_ATT_FLOW_HEADER, "flowheader", kRecord, kFlowHeader, 1, 1,
     "an object with kind, b, h, qvmin, qvmax, dpmin, dpmax"},
    {TAVD_ATT_QVDP_REF, "qvdpref", kRecord, kReference, 1, 1, "an object with qvref, dpref"},
    {TAVD_ATT_DAMPER_POINTS, "damperpoints", kRows, kDamper, 0, TAVD_DAMPER_ROWS,
     "an array of rows [pos, qv, dp]"},
    {TAVD_ATT_LW_POINTS, "lwpoints", kRows, kSound, 0, TAVD_LW_ROWS, "an array of rows [qv, dp, [8 bands]]"},
    {TAVD_ATT_DLW, "dlw", kSingle, kBandsOnly, 1, 1, "an array of 8 bands"},
    {TAVD_ATT_DLW_POINTS, "dlwpoints", kRows, kAttenuation, 0, TAVD_DLW_ROWS,
     "an array of rows [pos, [8 bands]]"},
    {TAVD_ATT_QVDP_POINTS, "qvdppoints", kRows, kFlowPoint, 0, TAVD_QVDP_ROWS, "an array of rows [qv, dp]"},
    {TAVD_ATT_QVDP_LIMITS, "QvDpLimits", kRecord, kLimits, 1, 1, "an object with qvmin, qvmax, dpmin, dpmax"},
    {TAVD_ATT_QV_L2, "qvL2", kRows, kThrow, 0, TAVD_QVL2_ROWS, "an array of rows [qv, L2]"},
    {TAVD_ATT_PAR_L2, "parL2", kRows, kParameterThrow, 0, TAVD_PARL2_ROWS,
     "an array of rows [value, qv, L2]"},
    {TAVD_ATT_PAR1_TABLE, "par1table", kRows, kParameter, 0, TAVD_PARAMETER_ROWS,
     "an array of rows [value, dk, dlw, ddlw, factor]"},
    {TAVD_ATT_PAR2_TABLE, "par2table", kRows, kParameter, 0, TAVD_PARAMETER_ROWS,
     "an array of rows [value, dk, dlw, ddlw, factor]"},
    {TAVD_ATT_FAN_CURVE, "fancurve", kRows, kFan, 0, TAVD_FAN_ROWS, "an array of rows [qv, dp, aux]"},
    {TAVD_ATT_MODEL_ID_SECOND, "tvmAtt2", kText, {}, 0, TAVD_MODEL_ID_BYTES, kTextExpected},
    {TAVD_ATT_INT_PAIR, "intpair", kList, kWord, 2, 2, "an array of two whole numbers"},
    {TAVD_ATT_FLOAT_PAIR, "floatpair", kList, kNumber, 2, 2, "an array of two numbers"},
    {TAVD_ATT_TEXT_1674, "att1674", kWide, {}, 0, kTextLimit, kTextExpected},
};

constexpr Attribute kGroupText = {0, "", kWide, {}, 0, kTextLimit, kTextExpected};

constexpr GroupText kCodes[] = {
    {TAVD_ATT_CODE_DEFAULT, "default"}, {TAVD_ATT_CODE_FIN, "FIN"}, {TAVD_ATT_CODE_SWE, "SWE"},
    {TAVD_ATT_CODE_GBR, "GBR"},         {TAVD_ATT_CODE_DEU, "DEU"}, {TAVD_ATT_CODE_NOR, "NOR"},
    {TAVD_ATT_CODE_FRA, "FRA"},         {TAVD_ATT_CODE_ESP, "ESP"}, {TAVD_ATT_CODE_ITA, "ITA"},
    {TAVD_ATT_CODE_POL, "POL"},         {TAVD_ATT_CODE_DNK, "DNK"}, {TAVD_ATT_CODE_CZE, "CZE"},
    {TAVD_ATT_CODE_PRT, "PRT"},         {TAVD_ATT_CODE_HUN, "HUN"}, {TAVD_ATT_CODE_NLD, "NLD"},
    {TAVD_ATT_CODE_ISL, "ISL"},         {TAVD_ATT_CODE_EST, "EST"}, {TAVD_ATT_CODE_LTU, "LTU"},
    {TAVD_ATT_CODE_LVA, "LVA"},         {TAVD_ATT_CODE_RUS, "RUS"}, {TAVD_ATT_CODE_SVK, "SVK"},
    {TAVD_ATT_CODE_BGR, "BGR"},         {TAVD_ATT_CODE_ROU, "ROU"}, {TAVD_ATT_CODE_BIH, "BIH"},
    {TAVD_ATT_CODE_HRV, "HRV"},         {TAVD_ATT_CODE_SVN, "SVN"}, {TAVD_ATT_CODE_CHN, "CHN"},
    {TAVD_ATT_CODE_JPN, "JPN"},         {TAVD_ATT_CODE_TUR, "TUR"}, {TAVD_ATT_CODE_CHE, "CHE"},
    {TAVD_ATT_CODE_UKR, "UKR"},         {TAVD_ATT_CODE_AUT, "AUT"}, {TAVD_ATT_CODE_BEL, "BEL"},
};

constexpr GroupText kWeblinks[] = {
    {TAVD_ATT_WEBLINK_DEFAULT, "default"}, {TAVD_ATT_WEBLINK_FIN, "FIN"}, {TAVD_ATT_WEBLINK_SWE, "SWE"},
    {TAVD_ATT_WEBLINK_GBR, "GBR"},         {TAVD_ATT_WEBLINK_DEU, "DEU"}, {TAVD_ATT_WEBLINK_NOR, "NOR"},
    {TAVD_ATT_WEBLINK_FRA, "FRA"},         {TAVD_ATT_WEBLINK_ESP, "ESP"}, {TAVD_ATT_WEBLINK_ITA, "ITA"},
    {TAVD_ATT_WEBLINK_POL, "POL"},         {TAVD_ATT_WEBLINK_DNK, "DNK"}, {TAVD_ATT_WEBLINK_CZE, "CZE"},
    {TAVD_ATT_WEBLINK_PRT, "PRT"},         {TAVD_ATT_WEBLINK_HUN, "HUN"}, {TAVD_ATT_WEBLINK_NLD, "NLD"},
    {TAVD_ATT_WEBLINK_ISL, "ISL"},         {TAVD_ATT_WEBLINK_EST, "EST"}, {TAVD_ATT_WEBLINK_LTU, "LTU"},
    {TAVD_ATT_WEBLINK_LVA, "LVA"},         {TAVD_ATT_WEBLINK_RUS, "RUS"}, {TAVD_ATT_WEBLINK_SVK, "SVK"},
    {TAVD_ATT_WEBLINK_BGR, "BGR"},         {TAVD_ATT_WEBLINK_ROU, "ROU"}, {TAVD_ATT_WEBLINK_BIH, "BIH"},
    {TAVD_ATT_WEBLINK_HRV, "HRV"},         {TAVD_ATT_WEBLINK_SVN, "SVN"}, {TAVD_ATT_WEBLINK_CHN, "CHN"},
    {TAVD_ATT_WEBLINK_JPN, "JPN"},         {TAVD_ATT_WEBLINK_TUR, "TUR"}, {TAVD_ATT_WEBLINK_CHE, "CHE"},
    {TAVD_ATT_WEBLINK_UKR, "UKR"},         {TAVD_ATT_WEBLINK_AUT, "AUT"}, {TAVD_ATT_WEBLINK_BEL, "BEL"},
};

constexpr GroupText kDescriptions[] = {
    {TAVD_ATT_DESCRIPTION_FINNISH, "Finnish"},       {TAVD_ATT_DESCRIPTION_SWEDISH, "Swedish"},
    {TAVD_ATT_DESCRIPTION_ENGLISH, "English"},       {TAVD_ATT_DESCRIPTION_GERMAN, "German"},
    {TAVD_ATT_DESCRIPTION_NORWEGIAN, "Norwegian"},   {TAVD_ATT_DESCRIPTION_FRENCH, "French"},
    {TAVD_ATT_DESCRIPTION_SPANISH, "Spanish"},       {TAVD_ATT_DESCRIPTION_ITALIAN, "Italian"},
    {TAVD_ATT_DESCRIPTION_POLISH, "Polish"},         {TAVD_ATT_DESCRIPTION_DANISH, "Danish"},
    {TAVD_ATT_DESCRIPTION_CZECH, "Czech"},           {TAVD_ATT_DESCRIPTION_PORTUGUESE, "Portuguese"},
    {TAVD_ATT_DESCRIPTION_HUNGARIAN, "Hungarian"},   {TAVD_ATT_DESCRIPTION_DUTCH, "Dutch"},
    {TAVD_ATT_DESCRIPTION_ICELANDIC, "Icelandic"},   {TAVD_ATT_DESCRIPTION_ESTONIAN, "Estonian"},
    {TAVD_ATT_DESCRIPTION_LITHUANIAN, "Lithuanian"}, {TAVD_ATT_DESCRIPTION_LETTISH, "Lettish"},
    {TAVD_ATT_DESCRIPTION_RUSSIAN, "Russian"},       {TAVD_ATT_DESCRIPTION_FLEMISH, "Flemish"},
    {TAVD_ATT_DESCRIPTION_SLOVAK, "Slovak"},         {TAVD_ATT_DESCRIPTION_BULGARIAN, "Bulgarian"},
    {TAVD_ATT_DESCRIPTION_ROMANIAN, "Romanian"},     {TAVD_ATT_DESCRIPTION_BOSNIAN, "Bosnian"},
    {TAVD_ATT_DESCRIPTION_CROATIAN, "Croatian"},     {TAVD_ATT_DESCRIPTION_SLOVENIAN, "Slovenian"},
    {TAVD_ATT_DESCRIPTION_ARABIC, "Arabic"},         {TAVD_ATT_DESCRIPTION_JAPANESE, "Japanese"},
    {TAVD_ATT_DESCRIPTION_CHINESE, "Chinese"},       {TAVD_ATT_DESCRIPTION_TURKISH, "Turkish"},
};

constexpr TextGroup kGroups[] = {
    {"code", "a market area code or \"default\"", kCodes},
    {"description", "the English name of a language", kDescriptions},
    {"weblink", "a market area code or \"default\"", kWeblinks},
};

}  // namespace

std::size_t column_size(ColumnType type) {
  switch (type) {
    case kInt16:
      return sizeof(std::int16_t);
    case kFloat:
      return sizeof(float);
    case kBands:
      return TAVD_BANDS;
    case kValue:
      return TAVD_PARAMETER_CHARS;
    case kId:
      return TAVFM_ID_CHARS;
  }
  return 0;
}

std::span<const Attribute> attributes() {
  return kAttributes;
}

const Attribute* find_attribute(std::string_view name) {
  const auto* found =
      std::ranges::find(kAttributes, name, [](const Attribute& a) { return std::string_view(a.name); });
  return found == std::end(kAttributes) ? nullptr : found;
}

const Attribute* find_attribute(int number) {
  const auto* found = std::ranges::find(kAttributes, number, &Attribute::number);
  return found == std::end(kAttributes) ? nullptr : found;
}

std::size_t item_size(const Attribute& attribute) {
  std::size_t size = 0;
  for (const Column& column : attribute.columns) size += column_size(column.type);
  return size;
}

std::span<const TextGroup> text_groups() {
  return kGroups;
}

std::vector<std::string_view> member_names() {
  std::vector<std::string_view> names;
  for (const Attribute& attribute : kAttributes) names.emplace_back(attribute.name);
  for (const TextGroup& group : kGroups) names.emplace_back(group.name);
  return names;
}

const TextGroup* find_text_group(std::string_view name) {
  const auto* found =
      std::ranges::find(kGroups, name, [](const TextGroup& g) { return std::string_view(g.name); });
  return found == std::end(kGroups) ? nullptr : found;
}

std::optional<std::int16_t> attribute_number(std::string_view name) {
  if (const Attribute* attribute = find_attribute(name)) return attribute->number;
  const std::size_t point = name.find('.');
  if (point != std::string_view::npos) {
    const TextGroup* group = find_text_group(name.substr(0, point));
    if (group == nullptr) return std::nullopt;
    const auto text = std::ranges::find(group->texts, name.substr(point + 1),
                                        [](const GroupText& t) { return std::string_view(t.key); });
    if (text == group->texts.end()) return std::nullopt;
    return text->number;
  }
  std::int16_t number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc() || end != name.data() + name.size()) return std::nullopt;
  return number;
}

std::string attribute_name(std::int16_t number) {
  if (const Attribute* attribute = find_attribute(number)) return attribute->name;
  for (const TextGroup& group : kGroups) {
    const auto text = std::ranges::find(group.texts, number, &GroupText::number);
    if (text != group.texts.end()) return std::string(group.name) + '.' + text->key;
  }
  return std::to_string(number);
}

const Attribute* attribute_layout(std::int16_t number) {
  if (const Attribute* attribute = find_attribute(number)) return attribute;
  for (const TextGroup& group : kGroups) {
    const auto text = std::ranges::find(group.texts, number, &GroupText::number);
    if (text != group.texts.end()) return &kGroupText;
  }
  return nullptr;
}

const Attribute& group_text_layout() {
  return kGroupText;
}

}  // namespace tavdhost
