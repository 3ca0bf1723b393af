#include "shared/units.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

namespace hosts {
namespace {

constexpr double kSecondsPerHour = 3600;
constexpr double kLitresPerCubicMetre = 1000;
// The international foot is 0.3048 m and the inch 0.0254 m, exactly.
constexpr double kFootPerMinute = 0.3048 / 60;                                                // m/s
constexpr double kCubicFootPerMinute = 0.3048 * 0.3048 * 0.3048 * kLitresPerCubicMetre / 60;  // l/s
// Conventional columns of water: 1000 kg/m3 and the standard gravity of 9.80665 m/s2 (ISO 80000-4).
constexpr double kMillimetreOfWater = 9.80665;              // Pa
constexpr double kInchOfWater = 25.4 * kMillimetreOfWater;  // Pa

constexpr Unit kFlows[] = {
    {Quantity::kFlow, "l/s", "l/s", "l_s", 1, 1},
    {Quantity::kFlow, "l/h", "l/h", "l_h", 1 / kSecondsPerHour, 0},
    {Quantity::kFlow, "m3/s", "m³/s", "m3_s", kLitresPerCubicMetre, 4},
    {Quantity::kFlow, "m3/h", "m³/h", "m3_h", kLitresPerCubicMetre / kSecondsPerHour, 1},
    {Quantity::kFlow, "cfm", "cfm", "cfm", kCubicFootPerMinute, 1},
};
constexpr Unit kVelocities[] = {
    {Quantity::kVelocity, "m/s", "m/s", "m_s", 1, 2},
    {Quantity::kVelocity, "fpm", "fpm", "fpm", kFootPerMinute, 0},
};
constexpr Unit kPressures[] = {
    {Quantity::kPressure, "Pa", "Pa", "Pa", 1, 1},
    {Quantity::kPressure, "kPa", "kPa", "kPa", 1000, 4},
    {Quantity::kPressure, "inWC", "\" WC", "inWC", kInchOfWater, 3},
    {Quantity::kPressure, "inwg", "in wg", "inwg", kInchOfWater, 3},
    {Quantity::kPressure, "mmwg", "mm wg", "mmwg", kMillimetreOfWater, 2},
};
constexpr std::size_t kAxisFlows = std::size(kFlows);
constexpr std::size_t kAxisPressures = 4;

constexpr std::string_view kRaisedThree = "³";

// As names are compared: "m³/h", "M3/h" and "m^3/h" are "m3/h".
std::string plain(std::string_view name) {
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (name.substr(i, kRaisedThree.size()) == kRaisedThree) {
      text += '3';
      i += kRaisedThree.size() - 1;
    } else if (std::string_view(". \"^").find(name[i]) == std::string_view::npos) {
      text += name[i] >= 'A' && name[i] <= 'Z' ? static_cast<char>(name[i] - 'A' + 'a') : name[i];
    }
  }
  return text;
}

}  // namespace

std::span<const Unit> units_of(Quantity quantity) {
  switch (quantity) {
    case Quantity::kFlow:
      return kFlows;
    case Quantity::kVelocity:
      return kVelocities;
    case Quantity::kPressure:
      break;
  }
  return kPressures;
}

std::span<const Unit> axis_units(Quantity quantity) {
  const std::span<const Unit> all = units_of(quantity);
  switch (quantity) {
    case Quantity::kFlow:
      return all.first(kAxisFlows);
    case Quantity::kVelocity:
      return all.first(1);
    case Quantity::kPressure:
      break;
  }
  return all.first(kAxisPressures);
}

const Unit& base_unit(Quantity quantity) {
  return units_of(quantity).front();
}

const Unit* find_unit(std::string_view name) {
  const std::string asked = plain(name);
  for (const Quantity quantity : {Quantity::kFlow, Quantity::kVelocity, Quantity::kPressure}) {
    const std::span<const Unit> units = units_of(quantity);
    const auto found =
        std::ranges::find_if(units, [&](const Unit& unit) { return plain(unit.name) == asked; });
    if (found != units.end()) return &*found;
  }
  return nullptr;
}

}  // namespace hosts
