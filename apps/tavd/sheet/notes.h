// What is to be known about the numbers of a sheet: what lies outside the product's limits, what is
// interpolated.
#pragma once

#include <string>
#include <vector>

#include "sheet/subject.h"

namespace tavdhost {

// Sentences of the language, what hinders first.
std::vector<std::string> sheet_notes(const SheetSubject& subject, const SheetForm& form);

// "16–160 l/s" and "5–300 Pa", in the language and units of the sheet.
std::string flow_limits_in(const SheetForm& form, const FlowData& flow);
std::string pressure_limits_in(const SheetForm& form, const FlowData& flow);

}  // namespace tavdhost
