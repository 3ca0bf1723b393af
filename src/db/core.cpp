// Market area, language and vlk path: one block for the process.
#include <cctype>
#include <cstdint>
#include <cstring>

#include "base/gwtext.h"
#include "db/markets.h"
#include "tavd/attributes.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"

namespace tavd {
namespace {

struct Settings {
  char vlkFilename[TAVDCORE_PATH_CHARS];
  tavd_wchar vlkFilenamew[TAVDCORE_PATH_CHARS];
  char marketArea[TAVDCORE_MARKET_CHARS];
  std::int16_t user_lng;
};

Settings settings;

// The attribute that the first row of the current market has in this column, or `fallback`. The row of the
// empty market and rows that are only a language hold no attribute, so the walk passes them.
std::int16_t market_attribute(std::int16_t MarketRow::*column, std::int16_t fallback) {
  for (const MarketRow* row = market_table; row->market != nullptr; ++row) {
    if (row->*column > 0 && std::strcmp(row->market, settings.marketArea) == 0) return row->*column;
  }
  return fallback;
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavdcore_init(int16_t lng, const char* marketArea, const char* vlkFilename) {
  settings = {};
  tavdcore_set_user_lng(lng);
  tavdcore_set_market_area(marketArea);
  gwstrcpyfield(settings.vlkFilename, vlkFilename, TAVDCORE_PATH_CHARS);
}

void tavdcore_initw(int16_t lng, const char* marketArea, const tavd_wchar* vlkFilename) {
  tavdcore_init(lng, marketArea, "");
  gwwcscpyfield(settings.vlkFilenamew, vlkFilename, TAVDCORE_PATH_CHARS);
}

void tavdcore_set_market_area(const char* marketArea) {
  char market[TAVDCORE_MARKET_CHARS] = {};  // the host may hand in our own field
  gwstrcpyfield(market, marketArea, TAVDCORE_MARKET_CHARS);
  for (char& c : market) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  std::memcpy(settings.marketArea, market, sizeof market);
}

void tavdcore_set_user_lng(int16_t lng) {
  settings.user_lng = lng;
}

const char* tavdcore_vlkFilename(void) {
  return settings.vlkFilename;
}

const tavd_wchar* tavdcore_vlkFilenamew(void) {
  return settings.vlkFilenamew;
}

const char* tavdcore_marketArea(void) {
  return settings.marketArea;
}

int16_t tavdcore_pcodeAttId(void) {
  return market_attribute(&MarketRow::pcode, TAVD_ATT_CODE_DEFAULT);
}

int16_t tavdcore_weblinkAttId(void) {
  return market_attribute(&MarketRow::weblink, TAVD_ATT_WEBLINK_DEFAULT);
}

int16_t tavdcore_pdescAttId(void) {
  for (const MarketRow* row = market_table; row->market != nullptr; ++row) {
    if (row->lng == settings.user_lng && row->pdesc > 0) return row->pdesc;
  }
  return 0;
}

int16_t tavdf_charsetId(int16_t attId) {
  for (const CharsetRow* row = charset_table; row->attribute > 0; ++row) {
    if (row->attribute == attId) return row->charset;
  }
  return 0;
}
