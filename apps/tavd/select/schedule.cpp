#include "select/schedule.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "base/errors.h"
#include "base/text.h"
#include "import/columns.h"
#include "shared/units.h"

namespace tavdhost {
namespace {

constexpr std::size_t kLongestLine = std::size_t{1}
                                     << 20;  // bytes; a quote that nobody closes makes them longer
constexpr std::size_t kFaultsShown = 20;

enum class Unit { kNone, kFlow, kPressure, kLevel, kLevelA, kMetre, kMillimetre };

struct Known {
  std::string_view name;
  Take take;  // null: a text of the line's own
  Unit unit;
};
constexpr Known kColumns[] = {
    {"room", nullptr, Unit::kNone},
    {"terminal", nullptr, Unit::kNone},
    {"name", nullptr, Unit::kNone},
    {"qv", take_flow, Unit::kFlow},
    {"flow", take_flow, Unit::kFlow},
    {"dp", take_pressure, Unit::kPressure},
    {"pressure", take_pressure, Unit::kPressure},
    {"dp min", take_lowest_pressure, Unit::kPressure},
    {"lp max", take_level, Unit::kLevelA},
    {"lw max", take_bands, Unit::kLevel},
    {"room damping", take_damping, Unit::kLevel},
    {"throw min", take_shortest_throw, Unit::kMetre},
    {"throw max", take_longest_throw, Unit::kMetre},
    {"size", take_size, Unit::kMillimetre},
    {"class", take_classes, Unit::kNone},
    {"rank", take_rank, Unit::kNone},
    {"top", take_hits, Unit::kNone},
    {"allow unknown", take_unknown, Unit::kNone},
};
constexpr std::string_view kParameter = "param ";

// What the unit of a heading may be called, where there is but one.
bool is_only_unit(Unit unit, const std::string& name) {
  switch (unit) {
    case Unit::kLevel:
      return same_letters(name, "dB");
    case Unit::kLevelA:
      return same_letters(name, "dB(A)") || same_letters(name, "dBA");
    case Unit::kMetre:
      return same_letters(name, "m");
    case Unit::kMillimetre:
      return same_letters(name, "mm");
    default:
      return name.empty();
  }
}

// The unit that a number gets behind it; nothing where the heading's unit is none for it.
std::optional<std::string> unit_behind(Unit unit, const std::string& name) {
  if (unit != Unit::kFlow && unit != Unit::kPressure) {
    if (name.empty() || is_only_unit(unit, name)) return "";
    return std::nullopt;
  }
  const hosts::Unit* const found = hosts::find_unit(name);
  const auto wanted = unit == Unit::kFlow ? hosts::Quantity::kFlow : hosts::Quantity::kPressure;
  if (found == nullptr || found->quantity != wanted) return std::nullopt;
  return found->name;
}

const char* example_of(Unit unit) {
  switch (unit) {
    case Unit::kFlow:
      return "qv [l/s] or qv [m3/h]";
    case Unit::kPressure:
      return "dp [Pa]";
    case Unit::kLevel:
      return "room damping [dB]";
    case Unit::kLevelA:
      return "lp max [dB(A)]";
    case Unit::kMetre:
      return "throw min [m]";
    case Unit::kMillimetre:
      return "size [mm]";
    case Unit::kNone:
      break;
  }
  return "none";
}

std::string unknown_column(const std::string& name) {
  std::vector<std::string_view> names;
  for (const Known& known : kColumns) names.push_back(known.name);
  return "unknown column " + in_quotes(name) + did_you_mean(name, names) + ", expected " +
         schedule_columns() + "; a column without a heading is not read";
}

bool has_text(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") != std::string::npos;
}

void add(const Source& source, const CsvCell& cell, const std::string& text, Faults& faults) {
  faults.add(source, source.place(static_cast<std::ptrdiff_t>(cell.offset)), text);
}

}  // namespace

std::optional<Source> TableLines::next() {
  for (;;) {
    std::string text;
    std::string line;
    const std::size_t first = line_;
    bool is_open = false;  // a quote is
    while (std::getline(in_, line)) {
      ++line_;
      text += line;
      is_open = is_open != (std::ranges::count(line, '"') % 2 != 0);
      if (text.size() > kLongestLine) {
        throw UserError(name_ + ":" + std::to_string(first) + ":1: a line of more than " +
                        std::to_string(kLongestLine) +
                        " bytes, expected the line of a table; is a quote open?");
      }
      if (!is_open) break;
      text += '\n';
    }
    if (in_.bad()) throw UserError(name_ + ": cannot be read");
    if (first == line_) return std::nullopt;
    if (has_text(text)) return Source(name_, std::move(text), first);
  }
}

void ScheduleFaults::add(const Faults& of_a_line) {
  ++lines_;
  if (shown_.size() < kFaultsShown) shown_.push_back(of_a_line.listing());
}

std::string ScheduleFaults::listing() const {
  std::string text;
  for (const std::string& line : shown_) text += (text.empty() ? "" : "\n") + line;
  if (lines_ > shown_.size()) text += "\nand " + std::to_string(lines_ - shown_.size()) + " more lines";
  return text;
}

Schedule::Column Schedule::column_of(const CsvCell& cell, std::string& fault) const {
  Column column;
  if (cell.text.empty()) return column;
  const HeadingParts parts = heading_parts(cell.text);
  column.name = parts.name;
  if (lower(parts.name).starts_with(kParameter)) {
    column.take = take_parameter;
    column.before = parts.name.substr(kParameter.size()) + "=";
    return column;
  }
  const auto* const known =
      std::ranges::find_if(kColumns, [&](const Known& one) { return same_letters(one.name, parts.name); });
  if (known == std::end(kColumns)) {
    fault = unknown_column(parts.name);
    return column;
  }
  const std::optional<std::string> unit = unit_behind(known->unit, parts.unit);
  if (!unit) {
    fault = std::string(parts.unit.empty() ? "no unit" : "an unknown unit") + " in " + in_quotes(cell.text) +
            ", expected " + example_of(known->unit);
    return column;
  }
  column.take = known->take;
  column.is_own = known->take == nullptr;
  column.is_number =
      known->unit != Unit::kNone && known->unit != Unit::kMillimetre && known->take != take_bands;
  column.behind = *unit;
  return column;
}

Schedule::Schedule(const Source& heading, const Request& usual)
    : usual_(usual), separator_(csv_separator(heading.text())) {
  Faults faults;
  const std::vector<CsvRow> rows = csv_rows(heading, separator_, faults);
  const CsvRow cells = rows.empty() ? CsvRow() : rows.front();
  bool has_flow = usual.has_flow;
  bool has_pressure = usual.has_pressure;
  for (const CsvCell& cell : cells) {
    std::string fault;
    Column column = column_of(cell, fault);
    const bool is_second = std::ranges::any_of(columns_, [&](const Column& other) {
      if (column.name.empty()) return false;
      const bool is_one_of_a_kind = column.take != nullptr && column.take != take_parameter;
      return same_letters(other.name, column.name) || (is_one_of_a_kind && other.take == column.take);
    });
    if (is_second && fault.empty())
      fault = in_quotes(cell.text) + " is a second column of its kind, expected one";
    if (!fault.empty()) add(heading, cell, fault, faults);
    if (column.is_own) own_names_.push_back(lower(column.name));
    has_flow = has_flow || column.take == take_flow;
    has_pressure = has_pressure || column.take == take_pressure;
    columns_.push_back(std::move(column));
    if (faults.count() > kFaultsShown) break;
  }
  own_names_.emplace_back("line");
  if (faults.empty() && !has_flow) faults.add("no column of flows, expected one such as qv [m3/h], or --qv");
  if (faults.empty() && !has_pressure)
    faults.add("no column of pressures, expected one such as dp [Pa], or --dp");
  if (!faults.empty()) {
    throw UserError("the heading of " + heading.name() + " is not as expected, nothing is written\n" +
                    faults.listing());
  }
}

bool Schedule::has_its_cells(const Source& line, const CsvRow& row, Faults& faults) const {
  if (row.size() <= columns_.size()) return true;
  const auto beyond = row.begin() + static_cast<std::ptrdiff_t>(columns_.size());
  const auto filled = std::find_if(beyond, row.end(), [](const CsvCell& cell) { return !cell.text.empty(); });
  if (filled == row.end()) return true;
  add(line, *filled,
      "more cells than the heading has, expected " + std::to_string(columns_.size()) +
          "; numbers with a decimal comma need another separator between the cells",
      faults);
  return false;
}

// A number with a point or a comma as decimal sign, but the same in the whole schedule.
std::string Schedule::number_of(const std::string& text) {
  const std::size_t sign = text.find_first_of(".,");
  if (sign == std::string::npos) return text;
  if (decimal_ == '\0') decimal_ = text[sign];
  if (text[sign] != decimal_) {
    throw UserError("found " + in_quotes(text) + ", expected a number with \"" + decimal_ +
                    "\" as its decimal sign, as in the lines before");
  }
  std::string number = text;
  std::ranges::replace(number, decimal_, '.');
  return number;
}

bool Schedule::take_cell(const Source& line, const Column& column, const CsvCell& cell, Request& request,
                         Faults& faults) {
  std::string whole;
  try {
    const std::string text = column.is_number ? number_of(cell.text) : cell.text;
    if (column.take == take_classes) request.classes.clear();
    whole = column.before + text + column.behind;
    column.take(column.name, whole, request);
    return true;
  } catch (const UserError& error) {
    // The cell as it stands, without the unit of its heading.
    const bool is_made = !whole.empty() && whole != cell.text;
    add(line, cell,
        is_made ? with_replaced(error.what(), in_quotes(whole), in_quotes(cell.text)) : error.what(), faults);
    return false;
  }
}

std::optional<ScheduledDuty> Schedule::read(const Source& line, Faults& faults) {
  const std::vector<CsvRow> rows = csv_rows(line, separator_, faults);
  if (!faults.empty() || rows.empty()) return std::nullopt;
  const CsvRow& row = rows.front();
  bool is_good = has_its_cells(line, row, faults);
  ScheduledDuty read{{}, usual_};
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const bool is_there = i < row.size() && !row[i].text.empty();
    if (columns_[i].is_own) read.own.push_back(is_there ? row[i].text : "");
    if (is_there && columns_[i].take != nullptr) {
      is_good = take_cell(line, columns_[i], row[i], read.request, faults) && is_good;
    }
  }
  read.own.push_back(std::to_string(line.place(0).line));
  if (!is_good) return std::nullopt;
  if (!read.request.has_flow) add(line, row.front(), "a line without a flow, expected one", faults);
  if (!read.request.has_pressure) add(line, row.front(), "a line without a pressure, expected one", faults);
  const tavdn_duty& duty = read.request.duty;
  if (duty.dp_lowest > duty.dp && read.request.has_pressure) {
    add(line, row.front(), "dp min is above dp, expected it below", faults);
  }
  if (duty.throw_max != 0 && duty.throw_min > duty.throw_max) {
    add(line, row.front(), "throw min is above throw max, expected it below", faults);
  }
  if (!faults.empty()) return std::nullopt;
  return read;
}

std::string schedule_columns() {
  std::string names;
  for (const Known& known : kColumns) names += std::string(known.name) + ", ";
  return names + "param NAME";
}

}  // namespace tavdhost
