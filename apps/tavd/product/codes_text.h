// What the builders of product codes answer, in words.
#pragma once

#include <string>

namespace tavdhost {

// "the template was used up" for 0, otherwise what is wrong with the template.
const char* template_text(int result);

}  // namespace tavdhost
