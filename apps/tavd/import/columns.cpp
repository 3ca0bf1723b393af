#include "import/columns.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/text.h"
#include "tavd/flowdata.h"

namespace tavdhost {
namespace {

using hosts::Quantity;

struct Name {
  std::string_view name;
  Field field;
  std::string_view example;  // of a heading with its unit, if it needs one
};

constexpr Name kNames[] = {
    {"id", Field::kId, ""},
    {"description", Field::kDescription, ""},
    {"size", Field::kSize, ""},
    {"pos", Field::kSetting, ""},
    {"setting", Field::kSetting, ""},
    {"qv", Field::kFlow, "qv [l/s], qv [m3/h] or v [m/s]"},
    {"flow", Field::kFlow, "flow [l/s], flow [m3/h] or v [m/s]"},
    {"v", Field::kFlow, "v [m/s]"},
    {"dp", Field::kPressure, "dp [Pa] or dp [kPa]"},
    {"pressure", Field::kPressure, "pressure [Pa] or pressure [kPa]"},
    {"LwA", Field::kLevel, ""},
    {"L2", Field::kThrow, "L2 [m]"},
    {"throw", Field::kThrow, "throw [m]"},
    {"aux", Field::kAux, ""},
};

constexpr std::string_view kBands[TAVD_BANDS] = {"63", "125", "250", "500", "1000", "2000", "4000", "8000"};
constexpr std::string_view kShortBands[TAVD_BANDS] = {"63", "125", "250", "500", "1k", "2k", "4k", "8k"};

struct Length {
  std::string_view name;
  double metres;
};
constexpr Length kLengths[] = {{"m", 1}, {"cm", 0.01}, {"mm", 0.001}, {"ft", 0.3048}};

// The octave band that "63", "1000 Hz" or "1 kHz" names; TAVD_BANDS for no band.
std::size_t band_of(const std::string& name) {
  std::string plain;
  for (const char c : lower(name)) {
    if (c != ' ') plain += c;
  }
  if (plain.ends_with("hz")) plain.resize(plain.size() - 2);
  for (std::size_t i = 0; i < TAVD_BANDS; ++i) {
    if (plain == kBands[i] || plain == kShortBands[i]) return i;
  }
  return TAVD_BANDS;
}

class HeadingReader {
 public:
  HeadingReader(const Source& source, Faults& faults) : source_(source), faults_(faults) {}

  // Whether the cell is a good heading.
  bool read(const CsvCell& cell) {
    if (cell.text.empty()) {
      headings.push_back({Field::kNothing, TAVD_BANDS, nullptr, 0});
      return true;
    }
    const HeadingParts parts = heading_parts(cell.text);
    Heading heading{Field::kBand, band_of(parts.name), nullptr, 0};
    if (heading.band == TAVD_BANDS) {
      const auto* found = std::ranges::find_if(
          kNames, [&](const Name& known) { return same_letters(known.name, parts.name); });
      if (found == std::end(kNames)) return refuse(cell, unknown(parts.name));
      heading.field = found->field;
      if (!read_unit(parts.unit, heading)) {
        return refuse(cell, std::string(parts.unit.empty() ? "no unit" : "an unknown unit") + " in " +
                                in_quotes(cell.text) + ", expected one such as " +
                                std::string(found->example));
      }
    }
    const bool known = std::ranges::any_of(headings, [&](const Heading& other) {
      return other.field == heading.field && other.band == heading.band;
    });
    if (known) return refuse(cell, in_quotes(cell.text) + " is a second column of its kind, expected one");
    headings.push_back(heading);
    return true;
  }

  std::vector<Heading> headings;

 private:
  static bool read_unit(const std::string& unit, Heading& heading) {
    switch (heading.field) {
      case Field::kFlow:
        heading.unit = hosts::find_unit(unit);
        return heading.unit != nullptr && heading.unit->quantity != Quantity::kPressure;
      case Field::kPressure:
        heading.unit = hosts::find_unit(unit);
        return heading.unit != nullptr && heading.unit->quantity == Quantity::kPressure;
      case Field::kThrow: {
        const auto* found = std::ranges::find_if(
            kLengths, [&](const Length& length) { return same_letters(length.name, unit); });
        if (found == std::end(kLengths)) return false;
        heading.metres = found->metres;
        return true;
      }
      default:
        return true;
    }
  }

  static std::string unknown(const std::string& name) {
    std::vector<std::string_view> names;
    for (const Name& known : kNames) names.push_back(known.name);
    return "unknown column " + in_quotes(name) + did_you_mean(name, names) + ", expected " + column_names() +
           "; a column without a heading is not read";
  }

  bool refuse(const CsvCell& cell, const std::string& text) {
    faults_.add(source_, source_.place(static_cast<std::ptrdiff_t>(cell.offset)), text);
    return false;
  }

  const Source& source_;
  Faults& faults_;
};

}  // namespace

HeadingParts heading_parts(const std::string& heading) {
  const std::size_t open = heading.find_first_of("[(");
  if (open == std::string::npos) return {heading, ""};
  const std::size_t close = heading.find_last_of("])");
  const std::size_t length =
      close == std::string::npos || close < open ? std::string::npos : close - open - 1;
  return {std::string(trim_end(heading.substr(0, open))), heading.substr(open + 1, length)};
}

std::vector<Heading> headings_of(const Source& source, const CsvRow& row, Faults& faults) {
  HeadingReader reader(source, faults);
  bool good = true;
  for (const CsvCell& cell : row) good &= reader.read(cell);
  if (!good) reader.headings.clear();
  return reader.headings;
}

std::string column_names() {
  return "id, description, size, pos, qv, v, dp, the bands 63 to 8000, LwA, L2, aux";
}

}  // namespace tavdhost
