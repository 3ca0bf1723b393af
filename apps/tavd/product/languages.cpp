#include "product/languages.h"

#include <algorithm>
#include <iterator>

#include "base/errors.h"
#include "base/text.h"
#include "tavd/tavdcore.h"

namespace tavdhost {
namespace {

constexpr Language kLanguages[] = {
    {TAVD_LANGUAGE_FINNISH, "FIN", "fi", "Finnish"},
    {TAVD_LANGUAGE_SWEDISH, "SWE", "sv", "Swedish"},
    {TAVD_LANGUAGE_ENGLISH, "GBR", "en", "English"},
    {TAVD_LANGUAGE_GERMAN, "DEU", "de", "German"},
    {TAVD_LANGUAGE_NORWEGIAN, "NOR", "no", "Norwegian"},
    {TAVD_LANGUAGE_FRENCH, "FRA", "fr", "French"},
    {TAVD_LANGUAGE_SPANISH, "ESP", "es", "Spanish"},
    {TAVD_LANGUAGE_ITALIAN, "ITA", "it", "Italian"},
    {TAVD_LANGUAGE_POLISH, "POL", "pl", "Polish"},
    {TAVD_LANGUAGE_DANISH, "DNK", "da", "Danish"},
    {TAVD_LANGUAGE_CZECH, "CZE", "cs", "Czech"},
    {TAVD_LANGUAGE_PORTUGUESE, "PRT", "pt", "Portuguese"},
    {TAVD_LANGUAGE_HUNGARIAN, "HUN", "hu", "Hungarian"},
    {TAVD_LANGUAGE_DUTCH, "NLD", "nl", "Dutch"},
    {TAVD_LANGUAGE_ICELANDIC, "ISL", "is", "Icelandic"},
    {TAVD_LANGUAGE_ESTONIAN, "EST", "et", "Estonian"},
    {TAVD_LANGUAGE_LITHUANIAN, "LTU", "lt", "Lithuanian"},
    {TAVD_LANGUAGE_LETTISH, "LVA", "lv", "Lettish"},
    {TAVD_LANGUAGE_RUSSIAN, "RUS", "ru", "Russian"},
    {TAVD_LANGUAGE_FLEMISH, "FL", "nl-be", "Flemish"},
    {TAVD_LANGUAGE_SLOVAK, "SVK", "sk", "Slovak"},
    {TAVD_LANGUAGE_BULGARIAN, "BGR", "bg", "Bulgarian"},
    {TAVD_LANGUAGE_ROMANIAN, "ROU", "ro", "Romanian"},
    {TAVD_LANGUAGE_BOSNIAN, "BIH", "bs", "Bosnian"},
    {TAVD_LANGUAGE_CROATIAN, "HRV", "hr", "Croatian"},
    {TAVD_LANGUAGE_SLOVENIAN, "SVN", "sl", "Slovenian"},
    {TAVD_LANGUAGE_ARABIC, "AR", "ar", "Arabic"},
    {TAVD_LANGUAGE_JAPANESE, "JPN", "ja", "Japanese"},
    {TAVD_LANGUAGE_TURKISH, "TUR", "tr", "Turkish"},
    {TAVD_LANGUAGE_CHINESE, "CHN", "zh", "Chinese"},
};

std::string known_languages() {
  std::string names;
  for (const Language& language : kLanguages)
    names += (names.empty() ? "" : ", ") + std::string(language.iso);
  return names;
}

}  // namespace

std::span<const Language> languages() {
  return kLanguages;
}

std::int16_t language_number(std::string_view name) {
  const auto* found =
      std::find_if(std::begin(kLanguages), std::end(kLanguages), [&](const Language& language) {
        return same_letters(name, language.code) || same_letters(name, language.iso) ||
               same_letters(name, language.name) || name == std::to_string(language.number);
      });
  if (found == std::end(kLanguages)) {
    throw UserError("no language " + in_quotes(name) + "; there are " + known_languages());
  }
  return found->number;
}

std::int16_t language_of_market(std::string_view market) {
  const auto* found =
      std::find_if(std::begin(kLanguages), std::end(kLanguages),
                   [&](const Language& language) { return same_letters(market, language.code); });
  return found == std::end(kLanguages) ? std::int16_t{TAVD_LANGUAGE_ENGLISH} : found->number;
}

}  // namespace tavdhost
