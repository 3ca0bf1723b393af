#include "product/codes_text.h"

#include <algorithm>
#include <iterator>

#include "tavd/codes.h"

namespace tavdhost {
namespace {

struct ResultText {
  int result;
  const char* text;
};

constexpr ResultText kResults[] = {
    {TAVD_CODE_OK, "the template was used up"},
    {TAVD_CODE_BAD_SIZE,
     "a letter does not suit the duct, D a rectangular one or B and H a round one, or the template ends "
     "behind {"},
    {TAVD_CODE_BAD_LETTER,
     "a letter is none of D, B and H, or behind it stands none of :, } and the digits 1 to 9"},
    {TAVD_CODE_UNCLOSED, "the template ends inside a field, or no } follows its unit"},
    {TAVD_CODE_DIGITS_AT_END, "the template ends behind the number of digits"},
    {TAVD_CODE_BAD_UNIT, "where a unit must stand is neither mm nor cm nor dm"},
};

}  // namespace

const char* template_text(int result) {
  const auto* found = std::ranges::find(kResults, result, &ResultText::result);
  return found == std::end(kResults) ? "not built" : found->text;
}

}  // namespace tavdhost
