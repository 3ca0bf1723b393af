// A product at an operating point, as commands and other hosts of the program's parts tell it.
#pragma once

#include <optional>
#include <string>

#include "product/amount.h"
#include "product/chosen.h"
#include "product/operating_point.h"
#include "product/shown_units.h"

namespace tavdhost {

// How the answers are calculated and shown.
struct AnswerForm {
  ShownUnits units;
  float room_damping;  // dB
};

// A product at a point.
struct Calculated {
  Chosen chosen;
  OperatingPoint point;
  std::string typed;  // the flow as it was typed, where it had a unit
};

// Of a product without flow data nothing but the product. Throws UserError if the flow goes by a size that is
// not known.
Calculated calculate(Chosen chosen, const Amount& qv, std::optional<float> dp, const AnswerForm& form);

}  // namespace tavdhost
