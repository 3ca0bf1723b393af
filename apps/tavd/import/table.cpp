#include "import/table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <string_view>

#include "base/errors.h"
#include "base/text.h"
#include "import/columns.h"
#include "import/csv.h"
#include "product/size.h"

namespace tavdhost {
namespace {

using hosts::Quantity;
using hosts::Unit;

constexpr int kMostLevel = UINT8_MAX;  // dB that a band can store
constexpr double kLitresPerCubicMetre = 1000;
constexpr double kSquareMillimetres = 1e6;  // in a square metre

double area_of(const DuctSize& size) {
  const double b = size.b;
  return (size.shape == 0 ? std::numbers::pi / 4 * b * b : b * size.h) / kSquareMillimetres;
}

// The rows of one table.
class RowReader {
 public:
  RowReader(const Source& source, std::vector<Heading> headings, bool by_velocity, Faults& faults)
      : source_(source), headings_(std::move(headings)), by_velocity_(by_velocity), faults_(faults) {}

  // The cell of a column; null if it is empty or there is none.
  const CsvCell* cell(const CsvRow& row, Field field, std::size_t band = TAVD_BANDS) const {
    for (std::size_t i = 0; i < std::min(headings_.size(), row.size()); ++i) {
      const Heading& heading = headings_[i];
      if (heading.field == field && heading.band == band) return row[i].text.empty() ? nullptr : &row[i];
    }
    return nullptr;
  }

  bool has_its_cells(const CsvRow& row) {
    if (row.size() <= headings_.size()) return true;
    const auto beyond = row.begin() + static_cast<std::ptrdiff_t>(headings_.size());
    const auto filled =
        std::find_if(beyond, row.end(), [](const CsvCell& cell) { return !cell.text.empty(); });
    if (filled == row.end()) return true;
    add(*filled, "more cells than the heading has, expected " + std::to_string(headings_.size()) +
                     "; numbers with a decimal comma need another separator between the cells");
    return false;
  }

  MeasuredPoint point(const CsvRow& row, const DuctSize& size) {
    expect_whole_point(row);
    MeasuredPoint point{};
    point.source = &source_;
    point.place = source_.place(static_cast<std::ptrdiff_t>(row.front().offset));
    point.setting = number(cell(row, Field::kSetting));
    point.qv = flow(row, size);
    point.dp = scaled(row, Field::kPressure);
    point.lw = bands(row);
    point.level = number(cell(row, Field::kLevel));
    point.L2 = scaled(row, Field::kThrow);
    point.aux = number(cell(row, Field::kAux));
    return point;
  }

  DuctSize size(const CsvCell& cell) {
    try {
      return parse_size("size", lower(cell.text));
    } catch (const UserError& error) {
      add(cell, error.what());
      return {};
    }
  }

 private:
  void expect_whole_point(const CsvRow& row);
  bool has(const CsvRow& row, Field field) const { return cell(row, field) != nullptr; }
  bool has_bands(const CsvRow& row) const {
    for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
      if (cell(row, Field::kBand, band) != nullptr) return true;
    }
    return false;
  }
  void add(const CsvCell& cell, const std::string& text) {
    faults_.add(source_, source_.place(static_cast<std::ptrdiff_t>(cell.offset)), text);
  }
  const Heading& heading(Field field) const { return *std::ranges::find(headings_, field, &Heading::field); }

  std::optional<double> exact(const CsvCell* cell);
  std::optional<float> number(const CsvCell* cell) { return narrowed(exact(cell)); }
  std::optional<float> scaled(const CsvRow& row, Field field);
  std::optional<float> flow(const CsvRow& row, const DuctSize& size);
  std::optional<std::array<int, TAVD_BANDS>> bands(const CsvRow& row);

  static std::optional<float> narrowed(const std::optional<double>& value) {
    if (!value) return std::nullopt;
    return static_cast<float>(*value);
  }

  const Source& source_;
  std::vector<Heading> headings_;
  bool by_velocity_;
  Faults& faults_;
  char decimal_ = '\0';  // the sign that the table's numbers have; none seen yet
};

// What stands in a row must be good for something: nothing is left out without a word.
void RowReader::expect_whole_point(const CsvRow& row) {
  const bool flow = has(row, Field::kFlow);
  const bool pressure = has(row, Field::kPressure);
  const bool length = has(row, Field::kThrow);
  const bool sound = has_bands(row);
  const CsvCell& first = row.front();
  if ((sound || has(row, Field::kSetting)) && !(flow && pressure)) {
    add(first, "a setting or bands, expected qv and dp beside them");
  } else if (has(row, Field::kLevel) && !sound) {
    add(first, "LwA without bands, expected the bands from 63 to 8000: they are what is stored");
  } else if (!flow) {
    add(first, "a row without qv, expected it in each row");
  } else if (!pressure && !length) {
    add(first, "a row with qv alone, expected dp or L2 beside it");
  }
}

// A number with a point or a comma as decimal sign, but the same in the whole table.
std::optional<double> RowReader::exact(const CsvCell* cell) {
  if (cell == nullptr) return std::nullopt;
  std::string text = cell->text;
  const std::size_t sign = text.find_first_of(".,");
  if (sign != std::string::npos) {
    if (decimal_ == '\0') decimal_ = text[sign];
    if (text[sign] != decimal_) {
      add(*cell, "found " + in_quotes(text) + ", expected a number with \"" + decimal_ +
                     "\" as its decimal sign, as in the rows before");
      return std::nullopt;
    }
    text[sign] = '.';
  }
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size() && std::isfinite(static_cast<float>(value))) {
    return value;
  }
  add(*cell, "found " + in_quotes(cell->text) + ", expected a number such as 12" +
                 (decimal_ == '\0' ? '.' : decimal_) + '5');
  return std::nullopt;
}

std::optional<float> RowReader::scaled(const CsvRow& row, Field field) {
  const auto value = exact(cell(row, field));
  if (!value) return std::nullopt;
  const Heading& of = heading(field);
  return static_cast<float>(of.unit != nullptr ? hosts::to_base(*value, *of.unit) : *value * of.metres);
}

// Flows become velocities, and velocities flows, by the size of the connection.
std::optional<float> RowReader::flow(const CsvRow& row, const DuctSize& size) {
  const CsvCell* read = cell(row, Field::kFlow);
  const auto value = exact(read);
  if (!value) return std::nullopt;
  const Unit& unit = *heading(Field::kFlow).unit;
  const double base = hosts::to_base(*value, unit);
  if ((unit.quantity == Quantity::kVelocity) == by_velocity_) return static_cast<float>(base);
  const double area = area_of(size);
  if (!(area > 0)) {
    add(*read, std::string(by_velocity_ ? "a flow" : "an air velocity") + " where the kind has " +
                   (by_velocity_ ? "velocities" : "flows") + ", expected a size to convert it with");
    return std::nullopt;
  }
  return static_cast<float>(by_velocity_ ? base / kLitresPerCubicMetre / area
                                         : base * area * kLitresPerCubicMetre);
}

// Levels are stored in whole dB.
std::optional<std::array<int, TAVD_BANDS>> RowReader::bands(const CsvRow& row) {
  std::array<int, TAVD_BANDS> levels{};
  std::size_t filled = 0;
  const CsvCell* first = nullptr;
  for (std::size_t band = 0; band < levels.size(); ++band) {
    const CsvCell* read = cell(row, Field::kBand, band);
    if (read == nullptr) continue;
    if (first == nullptr) first = read;
    ++filled;
    const auto value = exact(read);
    if (!value) continue;
    if (*value < 0 || std::lround(*value) > kMostLevel) {
      add(*read, "found " + in_quotes(read->text) + ", expected a level from 0 to 255 dB");
    } else {
      levels[band] = static_cast<int>(std::lround(*value));
    }
  }
  if (filled == 0) return std::nullopt;
  if (filled < levels.size()) {
    add(*first, std::to_string(filled) + " bands, expected all 8 from 63 to 8000 Hz or none in a row");
  }
  return levels;
}

}  // namespace

void TableReader::read(const Source& source) {
  const std::size_t told = faults_.count();
  const std::vector<CsvRow> rows = csv_rows(source, faults_);
  if (faults_.count() > told) return;
  if (rows.empty()) {
    faults_.add(source, {1, 1}, "an empty table, expected a heading and rows of values");
    return;
  }
  const std::vector<Heading> headings = headings_of(source, rows.front(), faults_);
  if (headings.empty()) return;
  RowReader reader(source, headings, by_velocity_, faults_);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    const CsvRow& row = rows[i];
    if (!reader.has_its_cells(row)) continue;
    const CsvCell* id = reader.cell(row, Field::kId);
    const std::string name = id != nullptr ? id->text : first_.id;
    auto product = std::ranges::find(products_, name, &MeasuredProduct::id);
    if (product == products_.end()) {
      products_.push_back(first_);
      product = products_.end() - 1;
      product->id = name;
    }
    if (const CsvCell* text = reader.cell(row, Field::kDescription)) product->description = text->text;
    if (const CsvCell* size = reader.cell(row, Field::kSize)) product->size = reader.size(*size);
    product->points.push_back(reader.point(row, product->size));
  }
}

}  // namespace tavdhost
