#include "attributes.h"

#include <algorithm>
#include <charconv>

#include "tavd/flowdata.h"

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
constexpr std::size_t kMostIds = 32767 / 30;
constexpr std::size_t kTextLimit = 255;  // units of the buffers that product texts are read through

constexpr const char* kIntegerExpected = "a whole number from -32768 to 32767";
constexpr const char* kTextExpected = "a text";

constexpr Attribute kAttributes[] = {
    {1049, "usesUTF8", kSingle, kWord, 1, 1, kIntegerExpected},
    {1102, "d", kList, kWord, 0, 80, "an array of diameters in mm"},
    {1110, "shapedata", kList, kWord, 0, 50, "an array of the shape number and its dimensions in mm"},
    {1150, "sizingmode", kSingle, kWord, 1, 1, kIntegerExpected},
    {1302, "lwsizecoef", kSingle, kNumber, 1, 1, "a number"},
    {1501, "pcode_alt2", kWide, {}, 0, kTextLimit, kTextExpected},
    {1503, "szManu", kText, {}, 0, 99, kTextExpected},
    {1505, "pcode_alt1", kWide, {}, 0, kTextLimit, kTextExpected},
    {1511, "szStruct", kText, {}, 0, 255, kTextExpected},
    {1513, "installationdef", kText, {}, 0, 79, kTextExpected},
    {1514, "parnames", kText, {}, 0, 79, "a text, the names separated by a comma"},
    {1525, "tvmAtt", kText, {}, 0, 39, kTextExpected},
    {1604, "memberids", kList, kIdOnly, 0, kMostIds, "an array of object ids"},
    {1649, "hdd", kRecord, kOldHeader, 1, 1, "an object with kind, b, qvmin, qvmax, dpmin, dpmax"},
    {1650, "flowheader", kRecord, kFlowHeader, 1, 1, "an object with kind, b, h, qvmin, qvmax, dpmin, dpmax"},
    {1651, "qvdpref", kRecord, kReference, 1, 1, "an object with qvref, dpref"},
    {1652, "damperpoints", kRows, kDamper, 0, TAVD_DAMPER_ROWS, "an array of rows [pos, qv, dp]"},
    {1653, "lwpoints", kRows, kSound, 0, TAVD_LW_ROWS, "an array of rows [qv, dp, [8 bands]]"},
    {1654, "dlw", kSingle, kBandsOnly, 1, 1, "an array of 8 bands"},
    {1655, "dlwpoints", kRows, kAttenuation, 0, TAVD_DLW_ROWS, "an array of rows [pos, [8 bands]]"},
    {1657, "qvdppoints", kRows, kFlowPoint, 0, TAVD_QVDP_ROWS, "an array of rows [qv, dp]"},
    {1658, "QvDpLimits", kRecord, kLimits, 1, 1, "an object with qvmin, qvmax, dpmin, dpmax"},
    {1659, "qvL2", kRows, kThrow, 0, TAVD_QVL2_ROWS, "an array of rows [qv, L2]"},
    {1660, "parL2", kRows, kParameterThrow, 0, TAVD_PARL2_ROWS, "an array of rows [value, qv, L2]"},
    {1661, "par1table", kRows, kParameter, 0, TAVD_PARAMETER_ROWS,
     "an array of rows [value, dk, dlw, ddlw, factor]"},
    {1662, "par2table", kRows, kParameter, 0, TAVD_PARAMETER_ROWS,
     "an array of rows [value, dk, dlw, ddlw, factor]"},
    {1666, "fancurve", kRows, kFan, 0, TAVD_FAN_ROWS, "an array of rows [qv, dp, aux]"},
    {1669, "tvmAtt2", kText, {}, 0, 39, kTextExpected},
    {1670, "intpair", kList, kWord, 2, 2, "an array of two whole numbers"},
    {1671, "floatpair", kList, kNumber, 2, 2, "an array of two numbers"},
    {1674, "att1674", kWide, {}, 0, kTextLimit, kTextExpected},
};

constexpr Attribute kGroupText = {0, "", kWide, {}, 0, kTextLimit, kTextExpected};

constexpr GroupText kCodes[] = {
    {1562, "default"}, {9500, "FIN"}, {9501, "SWE"}, {9502, "GBR"}, {9503, "DEU"}, {9504, "NOR"},
    {9505, "FRA"},     {9506, "ESP"}, {9507, "ITA"}, {9508, "POL"}, {9509, "DNK"}, {9510, "CZE"},
    {9511, "PRT"},     {9512, "HUN"}, {9513, "NLD"}, {9514, "ISL"}, {9515, "EST"}, {9516, "LTU"},
    {9517, "LVA"},     {9518, "RUS"}, {9520, "SVK"}, {9521, "BGR"}, {9522, "ROU"}, {9523, "BIH"},
    {9524, "HRV"},     {9525, "SVN"}, {9526, "CHN"}, {9527, "JPN"}, {9528, "TUR"}, {9530, "CHE"},
    {9531, "UKR"},     {9532, "AUT"}, {9533, "BEL"},
};

constexpr GroupText kWeblinks[] = {
    {8529, "default"}, {8500, "FIN"}, {8501, "SWE"}, {8502, "GBR"}, {8503, "DEU"}, {8504, "NOR"},
    {8505, "FRA"},     {8506, "ESP"}, {8507, "ITA"}, {8508, "POL"}, {8509, "DNK"}, {8510, "CZE"},
    {8511, "PRT"},     {8512, "HUN"}, {8513, "NLD"}, {8514, "ISL"}, {8515, "EST"}, {8516, "LTU"},
    {8517, "LVA"},     {8518, "RUS"}, {8520, "SVK"}, {8521, "BGR"}, {8522, "ROU"}, {8523, "BIH"},
    {8524, "HRV"},     {8525, "SVN"}, {8526, "CHN"}, {8527, "JPN"}, {8528, "TUR"}, {8530, "CHE"},
    {8531, "UKR"},     {8532, "AUT"}, {8533, "BEL"},
};

constexpr GroupText kDescriptions[] = {
    {9550, "Finnish"},   {9551, "Swedish"},    {9552, "English"},   {9553, "German"},  {9554, "Norwegian"},
    {9555, "French"},    {9556, "Spanish"},    {9557, "Italian"},   {9558, "Polish"},  {9559, "Danish"},
    {9560, "Czech"},     {9561, "Portuguese"}, {9562, "Hungarian"}, {9563, "Dutch"},   {9564, "Icelandic"},
    {9565, "Estonian"},  {9566, "Lithuanian"}, {9567, "Lettish"},   {9568, "Russian"}, {9569, "Flemish"},
    {9570, "Slovak"},    {9571, "Bulgarian"},  {9572, "Romanian"},  {9573, "Bosnian"}, {9574, "Croatian"},
    {9590, "Slovenian"}, {9591, "Arabic"},     {9592, "Japanese"},  {9593, "Chinese"}, {9594, "Turkish"},
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
      return 30;
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
