// What tavd calc answers, as JSON.
#pragma once

#include <json/value.h>

#include "answers/calculated.h"

namespace tavdhost {

// One object: the product, and the point if it can be calculated.
Json::Value calculated_json(const Calculated& calculated, const AnswerForm& form);

// "not taken off", "taken off", or "none" where there is none to take off.
const char* end_reflection_word(EndReflection end_reflection);

}  // namespace tavdhost
