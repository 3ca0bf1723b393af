#include "import/entry.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string_view>

#include "base/json_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "shared/records.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

// How far a pressure may lie off the square law: what rounding to whole Pa and reading off a chart make.
constexpr double kOffPart = 0.15;
constexpr double kOffPressure = 1;       // Pa besides
constexpr double kSameResistance = 0.1;  // part of a curve's first resistance within which its rows lie
constexpr const char* kHeader =
    "// Made by tavd db import. Flows are in l/s, or m/s for kinds 11 and 22, pressures in Pa.\n"
    "[\n"
    "  // How texts are stored: once in each database, and the same in all sources that have it.\n"
    "  {\"class\": \"000\", \"id\": \"FILEHEADER\", \"usesUTF8\": 1}";

using Points = std::vector<MeasuredPoint>;
using Wanted = std::function<bool(const MeasuredPoint&)>;

double resistance(const MeasuredPoint& point) {
  return double{*point.dp} / (double{*point.qv} * double{*point.qv});
}

bool less_flow(const MeasuredPoint& a, const MeasuredPoint& b) {
  return *a.qv < *b.qv;
}

bool less_pressure(const MeasuredPoint& a, const MeasuredPoint& b) {
  return *a.dp < *b.dp;
}

std::string bands_text(const std::array<int, TAVD_BANDS>& levels) {
  std::string text = "[";
  for (const int level : levels) text += (text.size() > 1 ? ", " : "") + std::to_string(level);
  return text + ']';
}

// The rows of a measured product in the order of the catalogue's tables, which is what the calculations need.
class EntryWriter {
 public:
  EntryWriter(const MeasuredProduct& product, const ImportSettings& settings, Faults& faults)
      : product_(product), settings_(settings), faults_(faults) {}

  std::string text();

 private:
  Points wanted(const Wanted& wanted) const;
  Points settings_rows() const;
  Points sound_rows() const;
  Points by_resistance(Points rows) const;
  void no_other_columns();
  void on_one_resistance(const MeasuredPoint& first, const Points& rows, const std::string& hint);
  void curve();
  void reference(const Points& rows);
  void table(const char* name, const Points& rows, std::size_t most,
             const std::function<std::string(const MeasuredPoint&)>& row);
  void sound();
  void throws();
  std::string header();
  LimitPair limits(const std::optional<LimitPair>& given, std::optional<float> MeasuredPoint::*field,
                   const char* what, const char* option);
  void missing(const std::string& expected);
  void member(const std::string& name, const std::string& value) {
    members_ += ",\n    " + json_quoted(name) + ": " + value;
  }

  const MeasuredProduct& product_;
  const ImportSettings& settings_;
  Faults& faults_;
  std::string members_;
};

void EntryWriter::missing(const std::string& expected) {
  const MeasuredPoint& first = product_.points.front();
  faults_.add(*first.source, first.place, printable(product_.id) + ": expected " + expected);
}

Points EntryWriter::wanted(const Wanted& wanted) const {
  Points found;
  std::ranges::copy_if(product_.points, std::back_inserter(found), wanted);
  return found;
}

// The first row of each setting, the most throttled in front.
Points EntryWriter::settings_rows() const {
  Points first;
  for (const MeasuredPoint& point : product_.points) {
    if (!point.setting || !point.qv || !point.dp) continue;
    const bool known = std::ranges::any_of(
        first, [&](const MeasuredPoint& other) { return other.setting == point.setting; });
    if (!known) first.push_back(point);
  }
  std::ranges::stable_sort(first, std::greater<>(), resistance);
  return first;
}

// Rows of one setting, or of one resistance where they have none, together; the highest resistance in front.
Points EntryWriter::by_resistance(Points rows) const {
  std::vector<Points> curves;
  for (const MeasuredPoint& row : rows) {
    auto curve = std::ranges::find_if(curves, [&](const Points& known) {
      const MeasuredPoint& first = known.front();
      if (row.setting || first.setting) return row.setting == first.setting;
      return std::abs(resistance(row) - resistance(first)) < kSameResistance * resistance(first);
    });
    if (curve == curves.end()) curve = curves.insert(curves.end(), Points());
    curve->push_back(row);
  }
  std::ranges::stable_sort(curves, std::greater<>(),
                           [](const Points& curve) { return resistance(curve.front()); });
  rows.clear();
  for (Points& curve : curves) {
    std::ranges::stable_sort(curve, less_pressure);
    rows.insert(rows.end(), curve.begin(), curve.end());
  }
  return rows;
}

Points EntryWriter::sound_rows() const {
  Points rows = wanted([](const MeasuredPoint& point) { return point.lw && point.qv && point.dp; });
  switch (settings_.kind) {
    case TAVD_KIND_LIMITS:
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      return by_resistance(std::move(rows));
    case TAVD_KIND_RANGE:
    case TAVD_KIND_FAN:
      std::ranges::stable_sort(rows, less_pressure);
      break;
    default:
      break;
  }
  std::ranges::stable_sort(rows, less_flow);
  return rows;
}

void EntryWriter::table(const char* name, const Points& rows, std::size_t most,
                        const std::function<std::string(const MeasuredPoint&)>& row) {
  if (rows.size() > most) {
    faults_.add(*rows[most].source, rows[most].place,
                printable(product_.id) + ": " + std::to_string(rows.size()) + " rows for " + name +
                    ", expected at most " + std::to_string(most));
  }
  std::string text;
  for (const MeasuredPoint& point : rows) {
    text += (text.empty() ? "" : ",") + std::string("\n      [") + row(point) + ']';
  }
  member(name, '[' + text + "\n    ]");
}

// One point stands for all rows of a setting, or of a fixed resistance.
void EntryWriter::on_one_resistance(const MeasuredPoint& first, const Points& rows, const std::string& hint) {
  for (const MeasuredPoint& row : rows) {
    const double expected = resistance(first) * double{*row.qv} * double{*row.qv};
    if (std::abs(double{*row.dp} - expected) <= kOffPart * expected + kOffPressure) continue;
    faults_.add(*row.source, row.place,
                printable(product_.id) + ": expected about " + brief(static_cast<float>(expected)) +
                    " Pa, as the square law has it through " + brief(*first.dp) + " Pa at " +
                    brief(*first.qv) + ", found " + brief(*row.dp) + " Pa" + hint);
    return;
  }
}

// Columns that the kind has no place for.
void EntryWriter::no_other_columns() {
  const bool has_settings = settings_.kind == TAVD_KIND_LIMITS || settings_.kind == TAVD_KIND_DAMPER ||
                            settings_.kind == TAVD_KIND_DAMPER_VELOCITY;
  for (const MeasuredPoint& point : product_.points) {
    if (point.setting && !has_settings) return missing("no pos, as the kind has no settings");
    if (point.aux && settings_.kind != TAVD_KIND_FAN) return missing("no aux, which fans alone have");
  }
}

// The point of the highest flow is measured best.
void EntryWriter::reference(const Points& rows) {
  const MeasuredPoint& highest = *std::ranges::max_element(rows, less_flow);
  on_one_resistance(highest, rows, "; --kind curve takes points of any law");
  member("qvdpref", "{\"qvref\": " + shortest(*highest.qv) + ", \"dpref\": " + shortest(*highest.dp) + '}');
}

void EntryWriter::curve() {
  const auto has_point = [](const MeasuredPoint& point) { return point.qv && point.dp; };
  const auto pair = [](const MeasuredPoint& point) {
    return shortest(*point.qv) + ", " + shortest(*point.dp);
  };
  Points rows = wanted(has_point);
  switch (settings_.kind) {
    case TAVD_KIND_RESISTANCE:
    case TAVD_KIND_RESISTANCE_VELOCITY:
      if (rows.empty()) return missing("rows with qv and dp");
      return reference(rows);
    case TAVD_KIND_RESISTANCE_POINTS:
      if (rows.empty()) return missing("rows with qv and dp");
      std::ranges::stable_sort(rows, less_flow);
      return table("qvdppoints", rows, TAVD_QVDP_ROWS, pair);
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      rows = settings_rows();
      if (rows.empty()) return missing("rows with pos, qv and dp, as the product is a damper");
      for (const MeasuredPoint& setting : rows) {
        on_one_resistance(setting, wanted([&](const MeasuredPoint& point) {
                            return has_point(point) && point.setting == setting.setting;
                          }),
                          ": the rows of a setting have one resistance");
      }
      return table("damperpoints", rows, TAVD_DAMPER_ROWS,
                   [&](const MeasuredPoint& point) { return shortest(*point.setting) + ", " + pair(point); });
    case TAVD_KIND_FAN:
      std::erase_if(rows, [](const MeasuredPoint& point) { return point.lw.has_value(); });
      if (rows.empty()) return missing("rows with qv and dp without bands, the curve of the fan");
      std::ranges::stable_sort(rows, less_flow);
      return table("fancurve", rows, TAVD_FAN_ROWS, [&](const MeasuredPoint& point) {
        return pair(point) + ", " + shortest(point.aux.value_or(0));
      });
    default:
      return;
  }
}

void EntryWriter::sound() {
  const Points rows = sound_rows();
  if (rows.empty()) return;
  table("lwpoints", rows, TAVD_LW_ROWS, [](const MeasuredPoint& point) {
    const std::string row = shortest(*point.qv) + ", " + shortest(*point.dp) + ", " + bands_text(*point.lw);
    return point.level ? row + ", " + shortest(*point.level) : row;
  });
}

void EntryWriter::throws() {
  Points rows = wanted([](const MeasuredPoint& point) { return point.L2 && point.qv; });
  if (rows.empty()) return;
  std::ranges::stable_sort(rows, less_flow);
  table("qvL2", rows, TAVD_QVL2_ROWS,
        [](const MeasuredPoint& point) { return shortest(*point.qv) + ", " + shortest(*point.L2); });
}

LimitPair EntryWriter::limits(const std::optional<LimitPair>& given,
                              std::optional<float> MeasuredPoint::*field, const char* what,
                              const char* option) {
  if (given) return *given;
  std::optional<LimitPair> found;
  for (const MeasuredPoint& point : product_.points) {
    const std::optional<float>& value = point.*field;
    if (!value) continue;
    if (!found) found = {*value, *value};
    found = {std::min(found->low, *value), std::max(found->high, *value)};
  }
  if (!found || !(found->high > found->low)) {
    missing(std::string("different ") + what + " in its rows, or " + option + " LOW,HIGH");
    return {};
  }
  return *found;
}

std::string EntryWriter::header() {
  if (product_.size.b == 0) missing("a size, by --size or in a column of that name");
  const LimitPair flows = limits(settings_.flows, &MeasuredPoint::qv, "flows", "--flow-limits");
  const LimitPair pressures =
      limits(settings_.pressures, &MeasuredPoint::dp, "pressures", "--pressure-limits");
  const int kind = settings_.kind + (settings_.static_pressures ? 0 : TAVD_KIND_TOTAL_PRESSURE);
  return "{\"kind\": " + std::to_string(kind) + ", \"b\": " + std::to_string(product_.size.b) +
         ", \"h\": " + std::to_string(product_.size.shape == 0 ? 0 : product_.size.h) +
         ", \"qvmin\": " + shortest(flows.low) + ", \"qvmax\": " + shortest(flows.high) +
         ", \"dpmin\": " + shortest(pressures.low) + ", \"dpmax\": " + shortest(pressures.high) + '}';
}

std::string EntryWriter::text() {
  if (product_.id.empty()) missing("an id, by --id or in a column of that name");
  if (product_.id.size() > hosts::kIdChars) missing("an id of at most 30 characters");
  member("id", json_quoted(product_.id));
  member("code", "{\"default\": " + json_quoted(product_.id) + '}');
  if (!product_.description.empty()) {
    member("description", "{\"English\": " + json_quoted(product_.description) + '}');
  }
  member("flowheader", header());
  no_other_columns();
  curve();
  sound();
  throws();
  return ",\n  {\n    \"class\": " + json_quoted(settings_.class_id) + members_ + "\n  }";
}

}  // namespace

std::string source_text(const std::vector<MeasuredProduct>& products, const ImportSettings& settings,
                        Faults& faults) {
  std::string text = kHeader;
  for (const MeasuredProduct& product : products) text += EntryWriter(product, settings, faults).text();
  return text + "\n]\n";
}

}  // namespace tavdhost
