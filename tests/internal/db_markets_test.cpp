// The tables of markets and charsets, as far as no exported function tells of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "db/markets.h"

namespace {

using tavd::charset_table;
using tavd::market_table;

const tavd::MarketRow& row(const char* market) {
  const auto* found = market_table;
  while (found->market != nullptr && std::string(found->market) != market) ++found;
  return *found;
}

std::string ascii(const tavd_wchar* name) {
  return name == nullptr ? "-" : std::string(name, std::find(name, name + 100, tavd_wchar{0}));
}

TEST(MarketTable, HasThirtyFiveRowsAndAnEnd) {
  int rows = 0;
  while (market_table[rows].market != nullptr) ++rows;
  EXPECT_EQ(rows, 35);
}

TEST(MarketTable, FirstRowIsTheEmptyMarket) {
  EXPECT_STREQ(market_table[0].market, "");
  EXPECT_EQ(market_table[0].pcode, -1);
  EXPECT_EQ(market_table[0].pdesc, -1);
  EXPECT_EQ(market_table[0].weblink, -1);
  EXPECT_EQ(market_table[0].lng, -1);
  EXPECT_EQ(ascii(market_table[0].language), "-");
  EXPECT_EQ(ascii(market_table[0].country), "All");
}

TEST(MarketTable, RowsStandInTheirOrder) {
  const char* const order[] = {"",    "FIN", "SWE", "GBR", "DEU", "NOR", "FRA", "ESP", "ITA",
                               "POL", "DNK", "CZE", "PRT", "HUN", "NLD", "BEL", "ISL", "EST",
                               "LTU", "LVA", "RUS", "FL",  "SVK", "BGR", "ROU", "BIH", "HRV",
                               "SVN", "AR",  "JPN", "TUR", "CHN", "AUT", "UKR", "CHE"};
  for (std::size_t i = 0; i < std::size(order); ++i) EXPECT_STREQ(market_table[i].market, order[i]) << i;
}

TEST(MarketTable, NamesStandAsTheyAreTyped) {
  EXPECT_EQ(ascii(row("GBR").language), "English");
  EXPECT_EQ(ascii(row("GBR").country), "England");
  EXPECT_EQ(ascii(row("LVA").language), "Lettish");
  EXPECT_EQ(ascii(row("LVA").country), "Latvia");
  EXPECT_EQ(ascii(row("NLD").country), "The Netherlands");
  EXPECT_EQ(ascii(row("BEL").language), "-");
  EXPECT_EQ(ascii(row("BEL").country), "Belgium");
  EXPECT_EQ(ascii(row("FL").language), "Flemish");
  EXPECT_EQ(ascii(row("AUT").language), "-");
  EXPECT_EQ(ascii(row("AUT").country), "-");
}

TEST(MarketTable, EveryLanguageHasANameAndEveryNameALanguage) {
  for (const auto* r = market_table; r->market != nullptr; ++r) {
    EXPECT_EQ(r->language != nullptr, r->lng > 0) << r->market;
    EXPECT_EQ(r->pdesc > 0, r->lng > 0) << r->market;
  }
}

TEST(CharsetTable, HasSixtyPairsAndAnEnd) {
  int pairs = 0;
  while (charset_table[pairs].attribute > 0) ++pairs;
  EXPECT_EQ(pairs, 60);
}

TEST(CharsetTable, PairsStandInTheirOrder) {
  EXPECT_EQ(charset_table[0].attribute, 1562);
  EXPECT_EQ(charset_table[1].attribute, 1674);
  EXPECT_EQ(charset_table[17].attribute, 8528);
  EXPECT_EQ(charset_table[18].attribute, 8531) << "these two stand the other way round";
  EXPECT_EQ(charset_table[19].attribute, 8530);
  EXPECT_EQ(charset_table[59].attribute, 9594);
}

}  // namespace
