// What the builders of product codes answer, in words.
#pragma once

#include <string>

#include "tavd/types.h"

namespace tavdhost {

// "the template was used up" for 0, otherwise what is wrong with the template.
const char* template_text(int result);

// A text that a template was made of.
struct BuiltText {
  std::string made_from;  // the template, empty if there is none
  int result = 0;         // of the template
  std::string text;       // what the library answers
};

// A market's product code may itself be a template, with fields in braces. `second` may be null.
BuiltText build_code(const std::string& code, const DuctSize& size, const DuctSize* second);

// The code for a product's own size; as it stands if it is no template, or one that does not suit the size.
std::string filled_code(const std::string& code, const DuctSize& size);

}  // namespace tavdhost
