#include "product/amount.h"

#include <charconv>
#include <cmath>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "product/shown_units.h"
#include "shared/numbers.h"
#include "shared/selection.h"
#include "tavd/ewads.h"

namespace tavdhost {
namespace {

using hosts::Quantity;

constexpr double kLitresPerCubicMetre = 1000;

UserError refusal(std::string_view option, std::string_view text, const std::string& expected) {
  return UserError{std::string(option) + " is " + in_quotes(text) + ", expected " + expected};
}

bool is_positive(float value) {
  return std::isfinite(value) && value > 0;
}

// In double, for a number that is to be converted; in base units it is a float above 0 as well.
double positive_double(std::string_view option, std::string_view text, const Measured& measured) {
  const std::string_view number = measured.number;
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  const bool whole = error == std::errc() && end == number.data() + number.size();
  if (!whole || !is_positive(static_cast<float>(hosts::to_base(value, *measured.unit)))) {
    throw refusal(option, text, hosts::kExpectedAboveZero);
  }
  return value;
}

std::string product_name(const Product& product) {
  return printable(product.key.class_id) + " " + printable(product.key.object_id);
}

}  // namespace

Measured split_unit(std::string_view option, std::string_view text, Quantity first, Quantity second) {
  // Digits, signs and exponents; a unit never begins with one of them, and "1e3" has none.
  double ignored = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), ignored);
  const auto digits = static_cast<std::size_t>(read.ptr - text.data());
  const std::string_view rest = text.substr(digits);
  const bool is_number =
      digits > 0 && (text[digits - 1] == '.' || (text[digits - 1] >= '0' && text[digits - 1] <= '9'));
  if (rest.empty() || !is_number) return {text, nullptr};
  const hosts::Unit* unit = hosts::find_unit(rest);
  if (unit == nullptr || (unit->quantity != first && unit->quantity != second)) {
    const std::string units = unit_names(first) + (first == second ? "" : ", " + unit_names(second));
    throw refusal(option, text,
                  std::string(hosts::kExpectedAboveZero) + ", with one of the units " + units + " or none");
  }
  return {text.substr(0, digits), unit};
}

Amount parse_flow(std::string_view option, std::string_view text) {
  const Measured measured = split_unit(option, text, Quantity::kFlow, Quantity::kVelocity);
  if (measured.unit == nullptr) return {positive_number(option, text), 0, nullptr};
  return {0, positive_double(option, text, measured), measured.unit};
}

float parse_pressure(std::string_view option, std::string_view text) {
  const Measured measured = split_unit(option, text, Quantity::kPressure, Quantity::kPressure);
  if (measured.unit == nullptr) return positive_number(option, text);
  return static_cast<float>(hosts::to_base(positive_double(option, text, measured), *measured.unit));
}

float parse_room_damping(std::string_view option, std::string_view text) {
  float value = hosts::kRoomDamping;
  if (text.empty()) return value;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size() && std::isfinite(value)) return value;
  throw refusal(option, text, hosts::kExpectedDecibels);
}

bool goes_through_size(const Product& product, const Amount& amount) {
  if (amount.unit == nullptr) return false;
  return (amount.unit->quantity == Quantity::kVelocity) != (product.flow.isvelocity != 0);
}

float flow_of(const Product& product, const Amount& amount) {
  if (amount.unit == nullptr) return amount.plain;
  const double base = hosts::to_base(amount.number, *amount.unit);
  if (!goes_through_size(product, amount)) return static_cast<float>(base);
  const float area = ewads_m2(&product.size);  // m2
  const float through = product.flow.isvelocity != 0
                            ? ewads_vms(&product.size, base)
                            : static_cast<float>(base * double{area} * kLitresPerCubicMetre);
  if (!is_positive(through)) {
    throw UserError(product_name(product) + " has no size to convert " + amount.unit->name +
                    " by, expected " +
                    unit_names(product.flow.isvelocity != 0 ? Quantity::kVelocity : Quantity::kFlow));
  }
  return through;
}

std::string through_text(const Product& product) {
  return " through its size, " + size_text(product.size) + " mm";
}

std::string typed_text(const Product& product, const Amount& amount, const ShownUnits& units) {
  if (amount.unit == nullptr || amount.unit == &units.flow_of(product.flow)) return {};
  std::string text = brief(static_cast<float>(amount.number)) + " " + amount.unit->name;
  if (!goes_through_size(product, amount)) return text;
  return text + through_text(product);
}

}  // namespace tavdhost
