#include "product/shown_units.h"

#include "base/errors.h"
#include "base/text.h"

namespace tavdhost {
namespace {

using hosts::Quantity;

const hosts::Unit*& place_of(ShownUnits& units, Quantity quantity) {
  switch (quantity) {
    case Quantity::kFlow:
      return units.flow;
    case Quantity::kVelocity:
      return units.velocity;
    case Quantity::kPressure:
      break;
  }
  return units.pressure;
}

}  // namespace

ShownUnits parse_units(std::string_view option, std::string_view list) {
  ShownUnits units;
  for (std::string_view rest = list;;) {
    const std::size_t comma = rest.find(',');
    const std::string_view name = rest.substr(0, comma);
    const hosts::Unit* unit = hosts::find_unit(name);
    if (unit == nullptr) {
      throw UserError(std::string(option) + " is " + in_quotes(list) +
                      ", expected units such as m3/h,Pa of " + unit_names(Quantity::kFlow) + "; " +
                      unit_names(Quantity::kVelocity) + "; " + unit_names(Quantity::kPressure));
    }
    place_of(units, unit->quantity) = unit;
    if (comma == std::string_view::npos) return units;
    rest.remove_prefix(comma + 1);
  }
}

std::string unit_names(Quantity quantity) {
  std::string names;
  for (const hosts::Unit& unit : hosts::units_of(quantity)) {
    names += (names.empty() ? "" : ", ") + std::string(unit.name);
  }
  return names;
}

}  // namespace tavdhost
