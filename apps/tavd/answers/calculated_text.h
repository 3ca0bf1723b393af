// What tavd calc answers, as text.
#pragma once

#include <ostream>
#include <string>

#include "answers/calculated.h"

namespace tavdhost {

// The product, and the point if it can be calculated.
void print_calculated(std::ostream& out, const Calculated& calculated, const AnswerForm& form);

// "12.3", "-" where that is not known; and of flows and pressures in the units of the form.
std::string level_text(float level);
std::string pressure_text(float pressure, const AnswerForm& form);
std::string length_text(float length);

// "of the duct taken off, as in the diagram".
std::string end_reflection_text(EndReflection end_reflection);

// Why the point cannot be reached: "it takes 25.0 - 400.0 Pa at this flow".
std::string unreachable_text(const Calculated& calculated, const AnswerForm& form);

}  // namespace tavdhost
