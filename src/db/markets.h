// Which attribute holds a market's or a language's texts, and how each is stored.
#pragma once

#include <cstdint>

#include "tavd/tavdcore.h"
#include "tavd/types.h"

namespace tavd {

// One row serves two keys: code and web link are found by `market`, the description by `lng`. -1 means none.
struct MarketRow {
  const char* market;  // null ends the table; the empty market is a market
  std::int16_t pcode;
  std::int16_t pdesc;
  std::int16_t weblink;
  std::int16_t lng;
  const tavd_wchar* language;  // English names, for the reader; may be null
  const tavd_wchar* country;
};

struct CharsetRow {
  std::int16_t attribute;  // below 1 ends the table
  std::int16_t charset;    // as tavbcopywsz counts them
};

extern const MarketRow market_table[];
extern const CharsetRow charset_table[];

// A market area as it is held: cut to its room, in upper case. Null is none.
void read_market(const char* text, char (&market)[TAVDCORE_MARKET_CHARS]);
// The attribute that the first row of a market, as it is held, has in this column, or `fallback`.
std::int16_t market_attribute(const char* market, std::int16_t MarketRow::*column, std::int16_t fallback);
// The attribute that holds the description in a language; 0 if the language is unknown.
std::int16_t description_attribute(std::int16_t lng);

}  // namespace tavd
