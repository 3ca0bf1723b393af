#include "languages.h"

#include <algorithm>
#include <iterator>

#include "errors.h"
#include "text.h"

namespace tavdhost {
namespace {

struct Language {
  std::int16_t number;  // as the library counts them
  const char* code;     // of the market area with this language, or the language's own
  const char* iso;      // ISO 639-1
  const char* name;     // English name
};

constexpr Language kLanguages[] = {
    {1510, "FIN", "fi", "Finnish"},   {1511, "SWE", "sv", "Swedish"},    {1512, "GBR", "en", "English"},
    {1513, "DEU", "de", "German"},    {1514, "NOR", "no", "Norwegian"},  {1515, "FRA", "fr", "French"},
    {1516, "ESP", "es", "Spanish"},   {1517, "ITA", "it", "Italian"},    {1518, "POL", "pl", "Polish"},
    {1519, "DNK", "da", "Danish"},    {1520, "CZE", "cs", "Czech"},      {1521, "PRT", "pt", "Portuguese"},
    {1522, "HUN", "hu", "Hungarian"}, {1523, "NLD", "nl", "Dutch"},      {1524, "ISL", "is", "Icelandic"},
    {1525, "EST", "et", "Estonian"},  {1526, "LTU", "lt", "Lithuanian"}, {1527, "LVA", "lv", "Lettish"},
    {1528, "RUS", "ru", "Russian"},   {1529, "FL", "nl-be", "Flemish"},  {1530, "SVK", "sk", "Slovak"},
    {1531, "BGR", "bg", "Bulgarian"}, {1532, "ROU", "ro", "Romanian"},   {1533, "BIH", "bs", "Bosnian"},
    {1534, "HRV", "hr", "Croatian"},  {1535, "SVN", "sl", "Slovenian"},  {1536, "AR", "ar", "Arabic"},
    {1537, "JPN", "ja", "Japanese"},  {1538, "TUR", "tr", "Turkish"},    {1539, "CHN", "zh", "Chinese"},
};
constexpr std::int16_t kEnglish = 1512;

std::string known_languages() {
  std::string names;
  for (const Language& language : kLanguages)
    names += (names.empty() ? "" : ", ") + std::string(language.iso);
  return names;
}

}  // namespace

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
  return found == std::end(kLanguages) ? kEnglish : found->number;
}

}  // namespace tavdhost
