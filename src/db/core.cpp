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

std::int16_t attribute_of_market(std::int16_t MarketRow::*column, std::int16_t fallback) {
  return market_attribute(settings.marketArea, column, fallback);
}

}  // namespace

// The row of the empty market and rows that are only a language hold no attribute, so the walk passes them.
std::int16_t market_attribute(const char* market, std::int16_t MarketRow::*column, std::int16_t fallback) {
  for (const MarketRow* row = market_table; row->market != nullptr; ++row) {
    if (row->*column > 0 && std::strcmp(row->market, market) == 0) return row->*column;
  }
  return fallback;
}

std::int16_t description_attribute(std::int16_t lng) {
  for (const MarketRow* row = market_table; row->market != nullptr; ++row) {
    if (row->lng == lng && row->pdesc > 0) return row->pdesc;
  }
  return 0;
}

void read_market(const char* text, char (&market)[TAVDCORE_MARKET_CHARS]) {
  std::memset(market, 0, sizeof market);
  gwstrcpyfield(market, text, TAVDCORE_MARKET_CHARS);
  for (char& c : market) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

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
  char market[TAVDCORE_MARKET_CHARS];  // the host may hand in our own field
  read_market(marketArea, market);
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
  return attribute_of_market(&MarketRow::pcode, TAVD_ATT_CODE_DEFAULT);
}

int16_t tavdcore_weblinkAttId(void) {
  return attribute_of_market(&MarketRow::weblink, TAVD_ATT_WEBLINK_DEFAULT);
}

int16_t tavdcore_pdescAttId(void) {
  return description_attribute(settings.user_lng);
}

int16_t tavdf_charsetId(int16_t attId) {
  for (const CharsetRow* row = charset_table; row->attribute > 0; ++row) {
    if (row->attribute == attId) return row->charset;
  }
  return 0;
}
