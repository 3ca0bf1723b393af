// The units that a diagram's axes can have, as a user names them.
#pragma once

#include <cstdint>
#include <string_view>

namespace tavdhost {

// The number of a flow unit (l/s, l/h, m3/s, m3/h, cfm) or a pressure unit (Pa, kPa, inWC, inwg) as the
// diagram counts them. Case does not matter. Throws UserError that names the option and lists the units.
std::int16_t flow_unit_number(std::string_view name, std::string_view option = "--xunit");
std::int16_t pressure_unit_number(std::string_view name, std::string_view option = "--yunit");

// The same for the flow of a throw length diagram, which has two units by the metre more (m3/h/m, l/s/m).
std::int16_t throw_flow_unit_number(std::string_view name);

}  // namespace tavdhost
