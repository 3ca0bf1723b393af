#include "catalogue/contents.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "base/numbers.h"
#include "base/text.h"
#include "catalogue/source.h"
#include "catalogue/values.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

constexpr std::size_t kShownBytes = 32;  // of a value without words
constexpr const char* kFlow = "{flow}";  // stands for the product's flow unit
constexpr const char* kBandHeadings[TAVD_BANDS] = {"63 Hz", "125",  "250",  "500",
                                                   "1000",  "2000", "4000", "8000"};

// What an attribute is called, and the headings of its columns: bands take eight columns of their own.
struct Words {
  std::int16_t number;
  const char* title;
  std::span<const char* const> headings;
};

constexpr const char* kFlowHeader[] = {"Kind",
                                       "Width or diameter, mm",
                                       "Height, mm",
                                       "Lowest flow, {flow}",
                                       "Highest flow, {flow}",
                                       "Lowest pressure, Pa",
                                       "Highest pressure, Pa"};
constexpr const char* kOldHeader[] = {"Kind",
                                      "Diameter, mm",
                                      "Lowest flow, {flow}",
                                      "Highest flow, {flow}",
                                      "Lowest pressure, kPa",
                                      "Highest pressure, kPa"};
constexpr const char* kLimits[] = {"Lowest flow, {flow}", "Highest flow, {flow}", "Lowest pressure, Pa",
                                   "Highest pressure, Pa"};
constexpr const char* kFlowPoint[] = {"Flow, {flow}", "Pressure, Pa"};
constexpr const char* kDamper[] = {"Setting", "Flow, {flow}", "Pressure, Pa"};
constexpr const char* kAttenuation[] = {"Setting or flow", "dB"};
constexpr const char* kThrow[] = {"Flow, {flow}", "Throw, m"};
constexpr const char* kParameterThrow[] = {"Value", "Flow, {flow}", "Throw, m"};
constexpr const char* kParameter[] = {"Value", "Resistance, Pa/({flow})2", "Sound, dB", "Attenuation, dB",
                                      "Throw factor"};
constexpr const char* kFan[] = {"Flow, {flow}", "Pressure, Pa", "Host's own"};
constexpr const char* kSound[] = {"Flow, {flow}", "Pressure, Pa", "dB"};

constexpr Words kWords[] = {
    {TAVD_ATT_USES_UTF8, "Text encoding", {}},
    {TAVD_ATT_DIAMETERS, "Diameters, mm", {}},
    {TAVD_ATT_SHAPE_DATA, "Shape as stored", {}},
    {TAVD_ATT_SIZING_MODE, "Sizing mode", {}},
    {TAVD_ATT_LW_SIZE_COEF, "Size coefficient of the sound level", {}},
    {TAVD_ATT_CODE_THIRD, "Product code, third choice", {}},
    {TAVD_ATT_MAKER, "Maker", {}},
    {TAVD_ATT_CODE_SECOND, "Product code, second choice", {}},
    {TAVD_ATT_ID_TEMPLATE, "Template of the product id", {}},
    {TAVD_ATT_INSTALLATION, "Installation", {}},
    {TAVD_ATT_PAR_NAMES, "Names of the parameters", {}},
    {TAVD_ATT_MODEL_ID, "Model record", {}},
    {TAVD_ATT_MEMBER_IDS, "Members", {}},
    {TAVD_ATT_OLD_HEADER, "Older flow header", kOldHeader},
    {TAVD_ATT_FLOW_HEADER, "Flow header", kFlowHeader},
    {TAVD_ATT_QVDP_REF, "Reference point", kFlowPoint},
    {TAVD_ATT_DAMPER_POINTS, "Damper settings", kDamper},
    {TAVD_ATT_LW_POINTS, "Sound power, dB", kSound},
    {TAVD_ATT_DLW, "Attenuation, dB", {}},
    {TAVD_ATT_DLW_POINTS, "Attenuation, dB", kAttenuation},
    {TAVD_ATT_QVDP_POINTS, "Pressure by flow", kFlowPoint},
    {TAVD_ATT_QVDP_LIMITS, "Limits of the fan", kLimits},
    {TAVD_ATT_QV_L2, "Throw", kThrow},
    {TAVD_ATT_PAR_L2, "Throw by value of the first parameter", kParameterThrow},
    {TAVD_ATT_PAR1_TABLE, "First parameter", kParameter},
    {TAVD_ATT_PAR2_TABLE, "Second parameter", kParameter},
    {TAVD_ATT_FAN_CURVE, "Fan curve", kFan},
    {TAVD_ATT_MODEL_ID_SECOND, "Model record, second choice", {}},
    {TAVD_ATT_INT_PAIR, "Pair of whole numbers, the host's own", {}},
    {TAVD_ATT_FLOAT_PAIR, "Pair of numbers, the host's own", {}},
    {TAVD_ATT_TEXT_1674, "Text read by nothing", {}},
};

const Words* words_of(std::int16_t number) {
  const auto* found = std::ranges::find(kWords, number, &Words::number);
  return found == std::end(kWords) ? nullptr : found;
}

std::string cell(const Json::Value& value) {
  if (value.isString()) return printable(trim_end(value.asString()));
  if (value.isIntegral()) return std::to_string(value.asInt64());
  return shortest(value.asFloat());
}

// The cells of an item, eight for each column of bands.
void add_cells(std::vector<std::string>& row, const Json::Value& item) {
  if (!item.isArray()) {
    row.push_back(cell(item));
    return;
  }
  for (const Json::Value& part : item) add_cells(row, part);
}

std::string with_flow_unit(std::string text, const std::string& unit) {
  const std::size_t at = text.find(kFlow);
  return at == std::string::npos ? text : text.replace(at, std::string_view(kFlow).size(), unit);
}

bool is_table(const Held& held) {
  return held.value && (held.layout->form == Form::kRows || held.layout->form == Form::kRecord);
}

std::vector<std::string> headings_of(const Held& held, const std::string& flow_unit) {
  std::vector<std::string> headings;
  const Words* words = words_of(held.number);
  for (std::size_t i = 0; i < held.layout->columns.size(); ++i) {
    if (held.layout->columns[i].type == ColumnType::kBands) {
      headings.insert(headings.end(), std::begin(kBandHeadings), std::end(kBandHeadings));
    } else {
      headings.push_back(with_flow_unit(words->headings[i], flow_unit));
    }
  }
  return headings;
}

std::string hex_line(const std::string& bytes) {
  std::string count = std::to_string(bytes.size()) + (bytes.size() == 1 ? " byte" : " bytes");
  if (bytes.empty()) return count;
  return count + ": " + to_hex(std::string_view(bytes).substr(0, kShownBytes)) +
         (bytes.size() > kShownBytes ? "..." : "");
}

}  // namespace

Held held_attribute(TextCodec& codec, std::int16_t number, const std::string& bytes) {
  Held held{number, attribute_name(number), attribute_layout(number), {}, bytes};
  if (held.layout == nullptr) return held;
  const auto text = decode_value(codec, *held.layout, number, bytes, 2);
  if (!text) return held;
  const Source source("", '[' + *text + ']');
  Faults faults;
  Json::Value root;
  if (parse(source, root, faults)) held.value = root[0];
  return held;
}

std::vector<Held> held_attributes(TextCodec& codec, const Entry& entry) {
  std::vector<Held> all;
  for (const auto& [number, bytes] : entry.attributes) all.push_back(held_attribute(codec, number, bytes));
  return all;
}

std::string title_of(const Held& held) {
  if (const Words* words = words_of(held.number)) return words->title;
  return held.layout == nullptr ? "Attribute " + held.name : held.name;
}

std::optional<std::string> line_of(const Held& held) {
  if (!held.value) return hex_line(held.bytes);
  if (is_table(held)) return std::nullopt;
  std::vector<std::string> cells;
  add_cells(cells, *held.value);
  std::string line;
  for (const std::string& text : cells) line += (line.empty() ? "" : ", ") + text;
  return line;
}

void print_table(std::ostream& out, const Held& held, const std::string& flow_unit) {
  if (!is_table(held)) return;
  out << '\n' << title_of(held) << " (" << held.name << ")\n";
  Columns columns;
  std::vector<std::string> row = headings_of(held, flow_unit);
  const std::size_t width = row.size();
  row.front().insert(0, "  ");
  columns.add(std::move(row));
  const auto add_row = [&](std::vector<std::string> cells) {
    cells.front().insert(0, "  ");
    columns.add(std::move(cells));
  };
  if (held.layout->form == Form::kRecord) {
    std::vector<std::string> cells;
    for (const Column& column : held.layout->columns) add_cells(cells, (*held.value)[column.name]);
    add_row(std::move(cells));
  } else {
    for (const Json::Value& item : *held.value) {
      std::vector<std::string> cells;
      add_cells(cells, item);
      add_row(std::move(cells));
    }
  }
  for (std::size_t i = 0; i < width; ++i) columns.align_right(i);
  columns.print(out);
}

}  // namespace tavdhost
