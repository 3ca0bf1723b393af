// Units of flows, air velocities and pressures, as both hosts read and show them.
#pragma once

#include <span>
#include <string_view>

namespace hosts {

enum class Quantity { kFlow, kVelocity, kPressure };

struct Unit {
  Quantity quantity;
  const char* name;  // as it is typed and printed: "m3/h"
  const char* sign;  // the same as a window shows it, UTF-8: "m³/h"
  const char* key;   // as it ends a name in JSON or CSV: "m3_h"
  double in_base;    // one of it in base units: l/s, m/s, Pa
  int decimals;      // of results
};

// The base unit stands first. The axes of the diagrams know the units at the beginning of the lists of flows
// and pressures by their places there: axis_units().
std::span<const Unit> units_of(Quantity quantity);
std::span<const Unit> axis_units(Quantity quantity);
const Unit& base_unit(Quantity quantity);

// The unit of that name, in any case; points, blanks, quotes and carets in it do not count, a raised 3 is a
// 3: "in.wg", "M3/H", "m³/h". Null if there is none.
const Unit* find_unit(std::string_view name);

// Conversions are made once, in double, and narrowed afterwards. A number that is given in no unit is in base
// units and needs none.
inline double to_base(double number, const Unit& unit) {
  return number * unit.in_base;
}
inline double from_base(double base, const Unit& unit) {
  return base / unit.in_base;
}
// The number in that unit, converted in double and narrowed once.
inline float shown(float base, const Unit& unit) {
  return static_cast<float>(from_base(base, unit));
}

}  // namespace hosts
