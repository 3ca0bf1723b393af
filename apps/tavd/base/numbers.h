// Numbers as the user writes and reads them. No locale: the decimal sign is a point.
#pragma once

#include <string>
#include <string_view>

#include "shared/numbers.h"

namespace tavdhost {

// The number that `text` is, whole; `option` names it in the message. Throws UserError unless it is a finite
// number above 0.
float positive_number(std::string_view option, std::string_view text);

// A whole number within the limits, both included; otherwise UserError.
int whole_number(std::string_view option, std::string_view text, int lowest, int highest);

using hosts::brief;
using hosts::fixed;

// The shortest text that reads back as the same float; and such a text or a whole number behind what `out`
// holds.
std::string shortest(float value);
void append_shortest(std::string& out, float value);
void append_whole(std::string& out, int value);

}  // namespace tavdhost
