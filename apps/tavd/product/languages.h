// The languages of product descriptions, as a user names them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tavdhost {

struct Language {
  std::int16_t number;  // as the library counts them
  const char* code;     // of the market area with this language, or the language's own
  const char* iso;      // ISO 639-1
  const char* name;     // English name
};

// All that the library knows.
std::span<const Language> languages();

// The language number for "1512", "GBR", "en" or "English", in any case. Throws UserError that lists what
// there is.
std::int16_t language_number(std::string_view name);

// The language that goes with a market area, or English if the market has none of its own.
std::int16_t language_of_market(std::string_view market);

}  // namespace tavdhost
