#include "drawing/units.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/text.h"
#include "shared/units.h"

namespace tavdhost {
namespace {

using hosts::Quantity;

// Of throw length diagrams, behind the units of flow: by the metre of a linear terminal.
constexpr const char* kFlowsByTheMetre[] = {"m3/h/m", "l/s/m"};

std::vector<std::string> axis_names(Quantity quantity) {
  std::vector<std::string> names;
  for (const hosts::Unit& unit : hosts::axis_units(quantity)) names.emplace_back(unit.name);
  return names;
}

// The place in a list is the unit's number.
std::int16_t unit_number(const std::vector<std::string>& units, std::string_view option,
                         std::string_view name) {
  std::string known;
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (same_letters(name, units[i])) return static_cast<std::int16_t>(i);
    known += (i == 0 ? "" : ", ") + units[i];
  }
  throw UserError(std::string(option) + " is " + in_quotes(name) + ", expected one of " + known);
}

}  // namespace

std::int16_t flow_unit_number(std::string_view name, std::string_view option) {
  return unit_number(axis_names(Quantity::kFlow), option, name);
}

std::int16_t throw_flow_unit_number(std::string_view name) {
  std::vector<std::string> names = axis_names(Quantity::kFlow);
  names.insert(names.end(), std::begin(kFlowsByTheMetre), std::end(kFlowsByTheMetre));
  return unit_number(names, "--unit", name);
}

std::int16_t pressure_unit_number(std::string_view name, std::string_view option) {
  return unit_number(axis_names(Quantity::kPressure), option, name);
}

}  // namespace tavdhost
