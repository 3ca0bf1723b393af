#include "sheet/texts/texts.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/text.h"
#include "tavd/attributes.h"
#include "tavd/tavdcore.h"

namespace tavdhost {
namespace {

constexpr std::array kAll = {&kEnglishSheet, &kFinnishSheet, &kGermanSheet, &kSwedishSheet,
                             &kRussianSheet, &kChineseSheet, &kArabicSheet};

struct Numbered {
  std::int16_t language;
  const SheetTexts* texts;
};
constexpr Numbered kByNumber[] = {
    {TAVD_LANGUAGE_ENGLISH, &kEnglishSheet}, {TAVD_LANGUAGE_FINNISH, &kFinnishSheet},
    {TAVD_LANGUAGE_GERMAN, &kGermanSheet},   {TAVD_LANGUAGE_SWEDISH, &kSwedishSheet},
    {TAVD_LANGUAGE_RUSSIAN, &kRussianSheet}, {TAVD_LANGUAGE_CHINESE, &kChineseSheet},
    {TAVD_LANGUAGE_ARABIC, &kArabicSheet},
};

const UnitSign* own_sign(const SheetTexts& texts, std::string_view name) {
  const auto found = std::ranges::find(texts.units, name, &UnitSign::name);
  return found == texts.units.end() ? nullptr : &*found;
}

}  // namespace

std::span<const SheetTexts* const> all_sheet_texts() {
  return kAll;
}

const SheetTexts* sheet_texts_of(std::int16_t language) {
  const auto* const found = std::ranges::find(kByNumber, language, &Numbered::language);
  return found == std::end(kByNumber) ? nullptr : found->texts;
}

std::string_view text_of(std::span<const NumberedText> list, int number) {
  const auto found = std::ranges::find(list, number, &NumberedText::number);
  return found == list.end() ? std::string_view() : found->text;
}

std::string unit_sign(const SheetTexts& texts, const hosts::Unit& unit) {
  const UnitSign* const own = own_sign(texts, unit.name);
  return own == nullptr ? unit.sign : own->sign;
}

std::string unit_sign(const SheetTexts& texts, const char* name) {
  const UnitSign* const own = own_sign(texts, name);
  return own == nullptr ? name : own->sign;
}

std::string localized(const SheetTexts& texts, std::string number) {
  std::ranges::replace(number, '.', texts.decimal);
  return number;
}

std::string with_unit(const SheetTexts& texts, const std::string& number, const std::string& sign) {
  constexpr const char* kIsolate = "\u2066";  // from left to right, as far as the next one
  constexpr const char* kEnd = "\u2069";
  const std::string text = localized(texts, number) + " " + sign;
  return texts.right_to_left ? kIsolate + text + kEnd : text;
}

std::string filled(const char* sentence, std::string_view by) {
  return with_replaced(sentence, "{}", by);
}

}  // namespace tavdhost
