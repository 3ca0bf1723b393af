// Market area, language and vlk path, and the attribute numbers that follow from them.
#include "support/wide.h"
#include "tavd/tavdcore.h"

#include <gtest/gtest.h>

#include <string>

#include "tavd/tavdf.h"

namespace {

class Core : public testing::Test {
 protected:
  void SetUp() override { tavdcore_init(0, nullptr, nullptr); }
  void TearDown() override { tavdcore_init(0, nullptr, nullptr); }
};

TEST_F(Core, MarketInLowerCaseIsHeldInUpperCase) {
  tavdcore_set_market_area("fin");
  EXPECT_STREQ(tavdcore_marketArea(), "FIN");
  EXPECT_EQ(tavdcore_pcodeAttId(), 9500);
  EXPECT_EQ(tavdcore_weblinkAttId(), 8500);
}

TEST_F(Core, EmptyMarketPassesItsOwnRowAndEndsWithTheDefaults) {
  tavdcore_set_market_area("FIN");
  tavdcore_set_market_area("");
  EXPECT_STREQ(tavdcore_marketArea(), "");
  EXPECT_EQ(tavdcore_pcodeAttId(), 1562);
  EXPECT_EQ(tavdcore_weblinkAttId(), 8529);
}

TEST_F(Core, RowsOfALanguageOnlyGiveTheDefaultsAsMarkets) {
  for (const char* market : {"FL", "AR"}) {
    tavdcore_set_market_area(market);
    EXPECT_EQ(tavdcore_pcodeAttId(), 1562) << market;
    EXPECT_EQ(tavdcore_weblinkAttId(), 8529) << market;
  }
}

TEST_F(Core, BelgiumIsAMarketButItsLanguageNumberIsNone) {
  tavdcore_set_market_area("BEL");
  tavdcore_set_user_lng(-1);
  EXPECT_EQ(tavdcore_pcodeAttId(), 9533);
  EXPECT_EQ(tavdcore_weblinkAttId(), 8533);
  EXPECT_EQ(tavdcore_pdescAttId(), 0);
}

TEST_F(Core, LanguageNumberSelectsTheDescription) {
  tavdcore_set_user_lng(1536);
  EXPECT_EQ(tavdcore_pdescAttId(), 9591);
  for (const int16_t unknown : std::initializer_list<int16_t>{0, 1, 1509, 1540, 32767, -32768}) {
    tavdcore_set_user_lng(unknown);
    EXPECT_EQ(tavdcore_pdescAttId(), 0) << unknown;
  }
}

TEST_F(Core, CharsetsOfSingleAttributes) {
  EXPECT_EQ(tavdf_charsetId(1562), 1);
  EXPECT_EQ(tavdf_charsetId(9518), 8);
  EXPECT_EQ(tavdf_charsetId(9500), 0);
  EXPECT_EQ(tavdf_charsetId(8529), 0);
  EXPECT_EQ(tavdf_charsetId(0), 0);
  EXPECT_EQ(tavdf_charsetId(-1), 0);
}

TEST_F(Core, NullMarketInInitLeavesTheMarketEmpty) {
  tavdcore_set_market_area("FIN");
  tavdcore_init(1510, nullptr, "a.vlk");
  EXPECT_STREQ(tavdcore_marketArea(), "");
  EXPECT_EQ(tavdcore_pdescAttId(), 9550);
  EXPECT_STREQ(tavdcore_vlkFilename(), "a.vlk");
}

TEST_F(Core, NarrowAndWidePathsDoNotFillEachOther) {
  tavdcore_init(0, "FIN", "narrow.vlk");
  EXPECT_STREQ(tavdcore_vlkFilename(), "narrow.vlk");
  EXPECT_EQ(tavdcore_vlkFilenamew()[0], 0);
  tavdcore_initw(0, "SWE", WIDE("wide.vlk"));
  EXPECT_STREQ(tavdcore_vlkFilename(), "");
  EXPECT_EQ(tavdtest::Wide(tavdcore_vlkFilenamew()), WIDE("wide.vlk"));
  EXPECT_STREQ(tavdcore_marketArea(), "SWE");
  tavdcore_init(0, nullptr, nullptr);
  EXPECT_EQ(tavdcore_vlkFilenamew()[0], 0);
}

TEST_F(Core, NullPathsAreEmpty) {
  tavdcore_initw(1511, "SWE", nullptr);
  EXPECT_EQ(tavdcore_vlkFilenamew()[0], 0);
  EXPECT_EQ(tavdcore_pdescAttId(), 9551);
}

TEST_F(Core, LongMarketIsCutAndTerminated) {
  const std::string sent(100, 'q');
  tavdcore_set_market_area(sent.c_str());
  EXPECT_EQ(std::string(tavdcore_marketArea()), std::string(39, 'Q'));
  tavdcore_set_user_lng(1510);
  EXPECT_EQ(tavdcore_pdescAttId(), 9550) << "the field behind the market is whole";
}

TEST_F(Core, MarketOfExactlyTheRoomIsKeptWhole) {
  tavdcore_set_market_area(std::string(39, 'x').c_str());
  EXPECT_EQ(std::string(tavdcore_marketArea()), std::string(39, 'X'));
}

TEST_F(Core, LongPathsAreCutAndTerminated) {
  const std::string narrow(1000, 'p');
  tavdcore_init(0, "FIN", narrow.c_str());
  EXPECT_EQ(std::string(tavdcore_vlkFilename()), std::string(299, 'p'));
  EXPECT_EQ(tavdcore_vlkFilenamew()[0], 0);
  const tavdtest::Wide wide(1000, WIDE('w'));
  tavdcore_initw(0, "FIN", wide.c_str());
  EXPECT_EQ(tavdtest::Wide(tavdcore_vlkFilenamew()), tavdtest::Wide(299, WIDE('w')));
  EXPECT_STREQ(tavdcore_marketArea(), "FIN");
}

TEST_F(Core, OwnMarketFieldMayBeHandedBack) {
  tavdcore_set_market_area("nor");
  tavdcore_set_market_area(tavdcore_marketArea());
  EXPECT_STREQ(tavdcore_marketArea(), "NOR");
}

TEST_F(Core, MarketIsComparedWhole) {
  for (const char* market : {"FI", "FINN", " FIN", "FIN "}) {
    tavdcore_set_market_area(market);
    EXPECT_EQ(tavdcore_pcodeAttId(), 1562) << market;
  }
}

// Codes and links run in step, so a market is known by its place behind 9500 and 8500. "-" marks the numbers
// that belong to no market.
TEST_F(Core, EveryMarketHasItsCodeAndLink) {
  const char* const markets[] = {"FIN", "SWE", "GBR", "DEU", "NOR", "FRA", "ESP", "ITA", "POL",
                                 "DNK", "CZE", "PRT", "HUN", "NLD", "ISL", "EST", "LTU", "LVA",
                                 "RUS", "-",   "SVK", "BGR", "ROU", "BIH", "HRV", "SVN", "CHN",
                                 "JPN", "TUR", "-",   "CHE", "UKR", "AUT", "BEL"};
  int16_t place = 0;
  for (const char* market : markets) {
    if (*market != '-') {
      tavdcore_set_market_area(market);
      EXPECT_EQ(tavdcore_pcodeAttId(), 9500 + place) << market;
      EXPECT_EQ(tavdcore_weblinkAttId(), 8500 + place) << market;
    }
    ++place;
  }
  EXPECT_EQ(place, 34);
}

TEST_F(Core, EveryLanguageHasItsDescription) {
  // From 1510 on; the last ones stand apart.
  for (int16_t lng = 1510; lng <= 1539; ++lng) {
    int expected =
        lng <= 1528 ? 9550 + lng - 1510 : 9569 + lng - 1529;  // Finnish to Russian, Flemish to Croatian
    if (lng >= 1535) {
      constexpr int kApart[] = {9590, 9591, 9592, 9594,
                                9593};  // Slovenian, Arabic, Japanese, Turkish, Chinese
      expected = kApart[lng - 1535];
    }
    tavdcore_set_user_lng(lng);
    EXPECT_EQ(tavdcore_pdescAttId(), expected) << lng;
  }
}

TEST_F(Core, EveryAttributeNumberHasItsCharset) {
  const auto expected = [](int att) {
    if (att == 1562 || att == 1674) return 1;
    if (att == 8529 || att == 8519 || att == 9519 || att == 9529) return 0;
    // Links, codes and descriptions repeat the order of the markets up to Russia.
    for (const int base : {8500, 9500, 9550}) {
      const int place = att - base;
      if (place == 8 || place == 10 || place == 12) return 7;
      if (place >= 15 && place <= 17) return 6;
      if (place == 18) return 8;
    }
    if ((att >= 8520 && att <= 8533) || (att >= 9520 && att <= 9533)) return 1;
    if ((att >= 9569 && att <= 9574) || (att >= 9590 && att <= 9594)) return 1;
    return 0;
  };
  for (int att = -32768; att <= 32767; ++att) {
    ASSERT_EQ(tavdf_charsetId(static_cast<int16_t>(att)), expected(att)) << att;
  }
}

}  // namespace
