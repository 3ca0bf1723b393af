#include "drawing/units.h"

#include <cstddef>
#include <string>

#include "base/errors.h"
#include "base/text.h"

namespace tavdhost {
namespace {

// The place in a list is the unit's number.
constexpr const char* kFlowUnits[] = {"l/s", "l/h", "m3/s", "m3/h", "cfm"};
constexpr const char* kThrowUnits[] = {"l/s", "l/h", "m3/s", "m3/h", "cfm", "m3/h/m", "l/s/m"};
constexpr const char* kPressureUnits[] = {"Pa", "kPa", "inWC", "inwg"};

template <std::size_t N>
std::int16_t unit_number(const char* const (&units)[N], std::string_view option, std::string_view name) {
  std::string known;
  for (std::size_t i = 0; i < N; ++i) {
    if (same_letters(name, units[i])) return static_cast<std::int16_t>(i);
    known += (i == 0 ? "" : ", ") + std::string(units[i]);
  }
  throw UserError(std::string(option) + " is " + in_quotes(name) + ", expected one of " + known);
}

}  // namespace

std::int16_t flow_unit_number(std::string_view name, std::string_view option) {
  return unit_number(kFlowUnits, option, name);
}

std::int16_t throw_flow_unit_number(std::string_view name) {
  return unit_number(kThrowUnits, "--unit", name);
}

std::int16_t pressure_unit_number(std::string_view name, std::string_view option) {
  return unit_number(kPressureUnits, option, name);
}

}  // namespace tavdhost
