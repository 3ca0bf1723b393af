#include "product/codes_text.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

#include "base/text.h"
#include "tavd/codes.h"

namespace tavdhost {
namespace {

constexpr std::int32_t kRoom = 256;  // of a code, wide characters

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

BuiltText build_code(const std::string& code, const DuctSize& size, const DuctSize* second) {
  if (code.find('{') == std::string::npos) return {"", 0, code};
  BuiltText built{code, 0, ""};
  std::basic_string<tavd_wchar> wide;
  utf8::utf8to16(code.begin(), code.end(), std::back_inserter(wide));
  tavd_wchar text[kRoom] = {};
  const DuctSize none = {};
  built.result = tavd_build_code_dsw2(text, kRoom, wide.c_str(), &size, second != nullptr ? second : &none);
  built.text = printable(to_utf8(text, kRoom));
  return built;
}

std::string filled_code(const std::string& code, const DuctSize& size) {
  const BuiltText built = build_code(code, size, nullptr);
  return built.result == 0 ? built.text : code;
}

}  // namespace tavdhost
