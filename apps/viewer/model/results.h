// What the library answers about a product at an operating point, as lines of text with units.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "model/product.h"
#include "model/units.h"
#include "shared/selection.h"

namespace viewer {

struct OperatingPoint {
  std::optional<float> qv;  // l/s, or m/s for products by air velocity
  std::optional<float> dp;  // total pressure, Pa
  // Level difference between sound power and room, dB. The library has it from tavca_setroomdamp, for
  // results and diagram alike.
  float room_damping = hosts::kRoomDamping;
};

struct ResultLine {
  std::wstring label;
  std::vector<std::wstring> cells;  // one, or eight of octave bands
};

// Size, kind and limits of the product, and its answers at the point. Flows and pressures are in the units
// given; a product by air velocity keeps to m/s. `throw_value` chooses the throw line, empty: the first.
std::vector<ResultLine> results_of(const Product& product, const OperatingPoint& point,
                                   const std::string& throw_value, const Unit& flow, const Unit& pressure);

// Lines end in CR LF, cells are parted by tabs.
std::wstring text_of(const std::vector<ResultLine>& lines);

// What is wrong with the point for this product, in a sentence; empty if nothing is.
std::wstring remark_of(const Product& product, const OperatingPoint& point);

}  // namespace viewer
