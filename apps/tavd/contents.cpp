#include "contents.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "catalogue_source.h"
#include "catalogue_values.h"
#include "numbers.h"
#include "text.h"

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
    {1049, "Text encoding", {}},
    {1102, "Diameters, mm", {}},
    {1110, "Shape as stored", {}},
    {1150, "Sizing mode", {}},
    {1302, "Size coefficient of the sound level", {}},
    {1501, "Product code, third choice", {}},
    {1503, "Maker", {}},
    {1505, "Product code, second choice", {}},
    {1511, "Template of the product id", {}},
    {1513, "Installation", {}},
    {1514, "Names of the parameters", {}},
    {1525, "Model record", {}},
    {1604, "Members", {}},
    {1649, "Older flow header", kOldHeader},
    {1650, "Flow header", kFlowHeader},
    {1651, "Reference point", kFlowPoint},
    {1652, "Damper settings", kDamper},
    {1653, "Sound power, dB", kSound},
    {1654, "Attenuation, dB", {}},
    {1655, "Attenuation, dB", kAttenuation},
    {1657, "Pressure by flow", kFlowPoint},
    {1658, "Limits of the fan", kLimits},
    {1659, "Throw", kThrow},
    {1660, "Throw by value of the first parameter", kParameterThrow},
    {1661, "First parameter", kParameter},
    {1662, "Second parameter", kParameter},
    {1666, "Fan curve", kFan},
    {1669, "Model record, second choice", {}},
    {1670, "Pair of whole numbers, the host's own", {}},
    {1671, "Pair of numbers, the host's own", {}},
    {1674, "Text read by nothing", {}},
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
