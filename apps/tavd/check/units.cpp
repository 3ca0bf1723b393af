// Mistakes of units: a table in kPa, in m3/h or in mm is in order by itself, but not beside the product's
// limits and size.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "check/rows.h"
#include "product/product.h"
#include "shared/units.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

using hosts::Quantity;
using hosts::Unit;

constexpr double kSlack = 0.02;            // part of a limit by which points may lie beyond it
constexpr double kDistinctFlow = 3.5;      // m3/h and others, but not cfm
constexpr double kDistinctPressure = 100;  // kPa and inches of water, but not mm
// The highest flow of a product in ventilation, as m/s in its connection or face, and its highest pressure,
// Pa.
constexpr double kSlowestAir = 0.1;
constexpr double kFastestAir = 25;
constexpr float kLeastPressure = 2;
constexpr double kMostPressure = 5000;
constexpr int kSmallestSize = 11;     // mm; below that the library takes the size for none
constexpr float kLongestThrow = 100;  // m
constexpr double kShortestThrowMm = 100;
constexpr double kLitresPerCubicMetre = 1000;

struct Extent {
  double low, high;
};

Extent extent_of(const std::vector<double>& values) {
  const auto [low, high] = std::ranges::minmax(values);
  return {low, high};
}

// "20 to 200 l/s".
std::string text_of(const Extent& extent, const std::string& unit) {
  const std::string low = brief(static_cast<float>(extent.low));
  const std::string high = brief(static_cast<float>(extent.high));
  return (low == high ? low : low + " to " + high) + ' ' + unit;
}

Extent scaled(const Extent& extent, double factor) {
  return {extent.low * factor, extent.high * factor};
}

bool within(double value, const Extent& limits) {
  return value >= limits.low * (1 - kSlack) && value <= limits.high * (1 + kSlack);
}

// How many of the values lie within the limits.
std::size_t count_within(const std::vector<double>& values, const Extent& limits) {
  return static_cast<std::size_t>(
      std::ranges::count_if(values, [&](double value) { return within(value, limits); }));
}

// What is no number above 0 is told elsewhere.
void add_number(std::vector<double>& values, float number) {
  if (number > 0 && std::isfinite(number)) values.push_back(double{number});
}

template <typename Row>
std::vector<double> flows_of(const std::vector<Row>& rows) {
  std::vector<double> values;
  for (const Row& row : rows) add_number(values, row.qv);
  return values;
}

template <typename Row>
std::vector<double> pressures_of(const std::vector<Row>& rows) {
  std::vector<double> values;
  for (const Row& row : rows) add_number(values, row.dp);
  return values;
}

template <typename Row>
std::vector<double> lengths_of(const std::vector<Row>& rows) {
  std::vector<double> values;
  for (const Row& row : rows) add_number(values, row.L2);
  return values;
}

// Limits, and the units in which what should lie within them may have been written.
struct Limits {
  const char* what;
  Extent extent;
  std::span<const Unit> units;  // the first is the one that is expected
  double distinct;              // a unit is taken for likely from this many times the expected one on
};

// Whether what is in the unit is often given without it.
bool is_likely(const Unit& unit, const Limits& limits) {
  return std::max(unit.in_base, 1 / unit.in_base) >= limits.distinct;
}

// "; taken as kPa it is 300 Pa" with the first likely unit in which the value lies within the limits; empty
// if there is none.
std::string in_another_unit(double value, const Limits& limits) {
  for (const Unit& unit : limits.units.subspan(1)) {
    const double converted = hosts::to_base(value, unit);
    if (!is_likely(unit, limits) || !within(converted, limits.extent)) continue;
    return "; taken as " + std::string(unit.name) + " it is " +
           text_of(Extent{converted, converted}, limits.units.front().name);
  }
  return "";
}

// What the values or the limits are in the unit in which all values lie within; empty if there is none.
std::string in_another_unit(const std::vector<double>& values, const Limits& limits, bool likely_ones) {
  const std::string base = limits.units.front().name;
  for (const Unit& unit : limits.units.subspan(1)) {
    if (likely_ones && !is_likely(unit, limits)) continue;
    const Extent values_narrowed = scaled(limits.extent, 1 / unit.in_base);
    const Extent limits_converted = scaled(limits.extent, unit.in_base);
    if (count_within(values, values_narrowed) == values.size()) {
      return "; taken as " + std::string(unit.name) + " they are " +
             text_of(scaled(extent_of(values), unit.in_base), base);
    }
    if (count_within(values, limits_converted) == values.size()) {
      return "; taken as " + std::string(unit.name) + " the limits are " + text_of(limits_converted, base);
    }
  }
  return "";
}

class UnitCheck : RowFindings {
 public:
  UnitCheck(const Entry& entry, const FlowData& flow, Findings& findings)
      : RowFindings(findings), entry_(entry), flow_(flow) {}

  void size();
  void tables();
  void throws();

 private:
  std::int16_t header() const;
  void size_in_list();
  void air_velocity();
  void highest_pressure();
  void table(std::int16_t attribute, const std::vector<double>& flows, const std::vector<double>& pressures);
  void outside(std::int16_t attribute, const Limits& limits, const std::vector<double>& values);
  void throw_lengths(std::int16_t attribute, const std::vector<double>& lengths);

  const Entry& entry_;
  const FlowData& flow_;
};

std::int16_t UnitCheck::header() const {
  return entry_.attributes.contains(TAVD_ATT_FLOW_HEADER) ? TAVD_ATT_FLOW_HEADER : TAVD_ATT_OLD_HEADER;
}

void UnitCheck::size() {
  if (flow_.b > 0 && flow_.b < kSmallestSize) {
    add(header(), 0, "a size in mm, above 10", std::to_string(flow_.b) + " mm");
  } else {
    air_velocity();
  }
  highest_pressure();
  size_in_list();
}

// A list of diameters has the connection's own.
void UnitCheck::size_in_list() {
  const auto found = entry_.attributes.find(TAVD_ATT_DIAMETERS);
  if (found == entry_.attributes.end() || flow_.h > 0 || flow_.b <= 0) return;
  std::vector<std::int16_t> sizes(found->second.size() / sizeof(std::int16_t));
  if (sizes.empty()) return;
  std::memcpy(sizes.data(), found->second.data(), sizes.size() * sizeof(std::int16_t));
  const std::int16_t own = flow_.b;  // the record is packed
  if (std::ranges::find(sizes, own) != sizes.end()) return;
  std::string listed;
  for (const std::int16_t size : sizes) listed += (listed.empty() ? "" : ", ") + std::to_string(size);
  add(TAVD_ATT_DIAMETERS, 0, "the header's own size, " + std::to_string(own) + " mm, among them", listed);
}

// The highest flow makes the velocity of a ventilation product; where it does not, the limits are in another
// unit.
void UnitCheck::air_velocity() {
  if (!(flow_.qvmax > flow_.qvmin)) return;  // told elsewhere
  const bool by_velocity = flow_.isvelocity != 0;
  const double area = flow_.ductarea;
  if (!by_velocity && !(area > 0)) return;
  const Quantity quantity = by_velocity ? Quantity::kVelocity : Quantity::kFlow;
  const double of_one = by_velocity ? 1 : kLitresPerCubicMetre * area;  // flow for 1 m/s
  const Limits likely{
      "", {kSlowestAir * of_one, kFastestAir * of_one}, hosts::units_of(quantity), kDistinctFlow};
  if (within(flow_.qvmax, likely.extent)) return;
  const std::string base = likely.units.front().name;
  const std::string size = std::to_string(flow_.b) + (flow_.h > 0 ? "x" + std::to_string(flow_.h) : "");
  const std::string velocity = brief(static_cast<float>(flow_.qvmax / of_one)) + " m/s";
  add(header(), 0,
      "a highest flow from " + text_of(likely.extent, base) +
          (by_velocity ? ", as the kind is " + std::to_string(flow_.kind) : " for a size of " + size + " mm"),
      brief(flow_.qvmax) + ' ' + base + (by_velocity ? "" : ", an air velocity of " + velocity) +
          in_another_unit(flow_.qvmax, likely));
}

// Limits that are in kPa like the tables.
void UnitCheck::highest_pressure() {
  if (!(flow_.dpmax > flow_.dpmin) || flow_.dpmax >= kLeastPressure) return;
  const Limits likely{
      "", {kLeastPressure, kMostPressure}, hosts::units_of(Quantity::kPressure), kDistinctPressure};
  add(header(), 0, "a highest pressure of at least " + brief(kLeastPressure) + " Pa",
      brief(flow_.dpmax) + " Pa" + in_another_unit(flow_.dpmax, likely));
}

// Either all values lie beyond the limits, or most of them do, and none in a unit that is often taken for the
// expected one.
void UnitCheck::outside(std::int16_t attribute, const Limits& limits, const std::vector<double>& values) {
  const Extent& extent = limits.extent;
  if (values.empty() || !(extent.high > extent.low) || !(extent.high > 0)) return;
  const std::size_t inside = count_within(values, extent);
  if (inside * 2 >= values.size()) return;
  const std::string hint = in_another_unit(values, limits, inside > 0);
  if (inside > 0 && hint.empty()) return;
  const std::string base = limits.units.front().name;
  add(attribute, 0, std::string(limits.what) + " within the limits, " + text_of(extent, base),
      text_of(extent_of(values), base) + hint);
}

void UnitCheck::table(std::int16_t attribute, const std::vector<double>& flows,
                      const std::vector<double>& pressures) {
  const Quantity quantity = flow_.isvelocity != 0 ? Quantity::kVelocity : Quantity::kFlow;
  outside(attribute, {"flows", {flow_.qvmin, flow_.qvmax}, hosts::units_of(quantity), kDistinctFlow}, flows);
  outside(attribute,
          {"pressures", {flow_.dpmin, flow_.dpmax}, hosts::units_of(Quantity::kPressure), kDistinctPressure},
          pressures);
}

void UnitCheck::tables() {
  const auto both = [this](std::int16_t attribute, const auto& rows) {
    table(attribute, flows_of(rows), pressures_of(rows));
  };
  if (flow_.nref > 0) both(TAVD_ATT_QVDP_REF, std::vector<QvDpPoint>{{flow_.qvref, flow_.dpref}});
  both(TAVD_ATT_DAMPER_POINTS, rows_of(flow_.damper, flow_.ndamper));
  both(TAVD_ATT_QVDP_POINTS, rows_of(flow_.qvdppoints, flow_.nqvdp));
  both(TAVD_ATT_FAN_CURVE, rows_of(flow_.fancurve, flow_.nfan));
  both(TAVD_ATT_LW_POINTS, rows_of(flow_.lwpoints, flow_.nlw));
  table(TAVD_ATT_QV_L2, flows_of(rows_of(flow_.qvL2, flow_.nqvL2)), {});
  table(TAVD_ATT_PAR_L2, flows_of(rows_of(flow_.parL2, flow_.nparL2)), {});
}

void UnitCheck::throw_lengths(std::int16_t attribute, const std::vector<double>& lengths) {
  if (lengths.empty()) return;
  const Extent found = extent_of(lengths);
  if (found.high <= kLongestThrow) return;
  const bool in_mm = found.low >= kShortestThrowMm;
  add(attribute, 0, "throws in m, at most " + brief(kLongestThrow),
      text_of(found, "m") + (in_mm ? "; taken as mm they are " + text_of(scaled(found, 1e-3), "m") : ""));
}

void UnitCheck::throws() {
  throw_lengths(TAVD_ATT_QV_L2, lengths_of(rows_of(flow_.qvL2, flow_.nqvL2)));
  throw_lengths(TAVD_ATT_PAR_L2, lengths_of(rows_of(flow_.parL2, flow_.nparL2)));
}

}  // namespace

void check_units(const Entry& entry, const FlowData& flow, Findings& findings) {
  if (flow.nhdd == 0) return;
  UnitCheck check(entry, flow, findings);
  check.size();
  check.tables();
  check.throws();
}

}  // namespace tavdhost
