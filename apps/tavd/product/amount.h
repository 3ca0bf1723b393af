// Flows and pressures as a user types them: a number, and a unit if it is not the product's own.
#pragma once

#include <string>
#include <string_view>

#include "product/product.h"
#include "shared/units.h"

namespace tavdhost {

// A flow or an air velocity, before it is known what the product is measured by.
struct Amount {
  float plain = 0;                    // the number as it was read, where there is no unit
  double number = 0;                  // in `unit`
  const hosts::Unit* unit = nullptr;  // null: l/s, or m/s for products by air velocity
};

// "80", "288m3/h", "5 m/s"; `option` names it in the message. Throws UserError unless it is a number above 0
// and the unit, if there is one, is of flow or velocity.
Amount parse_flow(std::string_view option, std::string_view text);

// "60", "0.2in.wg": in Pa. Throws UserError in the same way. A number without a unit is read as the float
// that it is; with one it is converted in double and narrowed once.
float parse_pressure(std::string_view option, std::string_view text);

// What the room takes off the sound power level, in dB: any number; the usual one if `text` is empty.
float parse_room_damping(std::string_view option, std::string_view text);

// The number that `text` begins with, and the unit of one of two quantities behind it; null without one.
// Throws UserError for any other unit.
struct Measured {
  std::string_view number;
  const hosts::Unit* unit;
};
Measured split_unit(std::string_view option, std::string_view text, hosts::Quantity first,
                    hosts::Quantity second);

// The amount in the product's own measure, l/s or m/s. A flow becomes a velocity, or a velocity a flow, by
// the cross section of the product's size. Throws UserError if that is not known.
float flow_of(const Product& product, const Amount& amount);

// Whether that takes the product's size.
bool goes_through_size(const Product& product, const Amount& amount);

// " through its size, 400x200 mm".
std::string through_text(const Product& product);

// "288 m3/h", "100 l/s through its size, 400x200 mm": what was typed, where it had a unit that is not the one
// it is shown in; otherwise empty.
std::string typed_text(const Product& product, const Amount& amount, const ShownUnits& units);

}  // namespace tavdhost
