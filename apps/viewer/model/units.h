// Units that flows and pressures are shown in, and numbers as text.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "shared/units.h"

namespace viewer {

using hosts::Unit;

// The place in a list is the number by which the diagrams know the unit.
std::span<const Unit> flow_units();
std::span<const Unit> pressure_units();

// Of products whose flows are air velocities.
const Unit& velocity_unit();

std::wstring fixed(double number, int decimals);

// The number without zeros at its end, to five digits that count: for a field that is to be typed into.
std::wstring plain(double number);

// As a window shows the unit: "m³/h".
std::wstring sign_of(const Unit& unit);

// "38.1 Pa", of a number in base units.
std::wstring with_unit(double base, const Unit& unit);

// What was typed: a number of 0 or more with a point or a comma, blanks around it. Nothing for
// any other text.
std::optional<double> parsed(std::wstring_view text);

}  // namespace viewer
