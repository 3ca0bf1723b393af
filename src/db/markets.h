// Which attribute holds a market's or a language's texts, and how each is stored.
#pragma once

#include <cstdint>

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

}  // namespace tavd
