// The units in which the commands show flows, air velocities and pressures.
#pragma once

#include <string>
#include <string_view>

#include "shared/units.h"
#include "tavd/flowdata.h"

namespace tavdhost {

// Left as it stands: l/s, m/s and Pa, in which every number stays the float that it is.
struct ShownUnits {
  const hosts::Unit* flow = &hosts::base_unit(hosts::Quantity::kFlow);
  const hosts::Unit* velocity = &hosts::base_unit(hosts::Quantity::kVelocity);
  const hosts::Unit* pressure = &hosts::base_unit(hosts::Quantity::kPressure);

  // That of a product's flows, which may be air velocities.
  const hosts::Unit& flow_of(const FlowData& product) const {
    return product.isvelocity != 0 ? *velocity : *flow;
  }
};

// From a list such as "m3/h,kPa": a unit of flow, of velocity or of pressure stands for all numbers of its
// kind. Throws UserError that names the option and lists the units.
ShownUnits parse_units(std::string_view option, std::string_view list);

using hosts::shown;

// "l/s, l/h, m3/s, m3/h, cfm": for messages and help.
std::string unit_names(hosts::Quantity quantity);

}  // namespace tavdhost
