// `tavd show`: everything that the database holds of a product.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "families.h"
#include "samples.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::lines_of;
using clitest::run_json;
using clitest::run_text;
using clitest::texts_of;
using tavdtest::Record;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

struct Show : testing::Test {
  Show() {
    clitest::add_samples(database);
    clitest::add_families(database);
  }

  std::vector<std::string> command(const char* class_id, const char* id,
                                   std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"show", database.path(), class_id, id});
    return options;
  }
  std::vector<std::string> lines(const char* class_id, const char* id) const {
    return lines_of(run_text(command(class_id, id)));
  }

  tavdtest::Database database;
};

TEST_F(Show, TellsLimitsCodeAndTexts) {
  EXPECT_THAT(
      lines("ASD", "DAMPER-200"),
      testing::AllOf(Contains("ASD DAMPER-200"), Contains("  Code              Damper 200"),
                     Contains("  Description       Round damper"), Contains("  Size              200 mm"),
                     Contains("  Kind              adjustable damper"),
                     Contains("  Flow limits       20 - 200 l/s"),
                     Contains("  Pressure limits   10 - 500 Pa, total"),
                     Contains("  Stored pressures  total"), Contains("  Sizing            single product")));
}

TEST_F(Show, TextsOfAllMarketsAndLanguagesAreListed) {
  EXPECT_THAT(run_text(command("ASD", "DAMPER-200")),
              testing::AllOf(HasSubstr("\nProduct codes (code)\n"
                                       "  default  Damper 200\n"
                                       "  FIN      S\xC3\xA4\xC3\xA4t\xC3\xB6pelti 200\n"),
                             HasSubstr("\nDescriptions (description)\n"
                                       "  Swedish  Runt spj\xC3\xA4ll\n"
                                       "  English  Round damper\n")));
}

TEST_F(Show, TablesAreTablesWithUnits) {
  const std::string text = run_text(command("ASD", "DAMPER-200"));
  EXPECT_THAT(text, HasSubstr("\nDamper settings (damperpoints)\n"
                              "  Setting  Flow, l/s  Pressure, Pa\n"
                              "        1        100           400\n"
                              "        2        100           100\n"
                              "        3        100            25\n"));
  EXPECT_THAT(text, HasSubstr("\nSound power, dB (lwpoints)\n"
                              "  Flow, l/s  Pressure, Pa  63 Hz  125  250  500  1000  2000  4000  8000\n"
                              "        100           400     60   60   60   60    60    60    60    60\n"));
  EXPECT_THAT(text, HasSubstr("\nFirst parameter (par1table)\n"
                              "  Value  Resistance, Pa/(l/s)2  Sound, dB  Attenuation, dB  Throw factor\n"
                              "    100                      0          0                0             0\n"
                              "    200                  0.001          2                0             0\n"));
}

TEST_F(Show, FlowsOfAVelocityProductAreInMetresPerSecond) {
  EXPECT_THAT(run_text(command("AEX", "GRILLE-400x200")), HasSubstr("  Flow, m/s  Pressure, Pa\n"
                                                                    "          4           100\n"));
}

// Every attribute that has columns has a heading for each.
TEST_F(Show, EveryTableHasItsHeading) {
  const unsigned char bands[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  Record("ALL", "TABLES")
      .bytes(1649, "\x6E\x00\x64\x00\x00\x00\x20\x41\x00\x00\xC8\x42\x00\x00\x80\x3C\x00\x00\x00\x3F", 20)
      .header(110, 100, 0, 10, 100, 5, 200)
      .floats(1651, {50, 20})
      .floats(1652, {1, 2, 3})
      .bytes(1654, bands, 8)
      .floats(1655, {1, 0, 0})
      .floats(1657, {1, 2})
      .floats(1658, {1, 2, 3, 4})
      .floats(1659, {1, 2})
      .bytes(1660, "30    \x00\x00\x80\x3F\x00\x00\x00\x40", 14)
      .rows<clitest::SoundRow>(1653, {{1, 2, 3}})
      .rows<clitest::ParameterRow>(1661, {{"A", 1, 2}})
      .rows<clitest::ParameterRow>(1662, {{"B", 1, 2}})
      .floats(1666, {1, 2, 3})
      .save(database.handle());
  const std::string text = run_text(command("ALL", "TABLES"));
  const std::string bands_heading = "63 Hz  125  250  500  1000  2000  4000  8000\n";
  for (const std::string& heading : {
           std::string("Older flow header (hdd)\n  Kind  Diameter, mm  Lowest flow, l/s  Highest flow, l/s  "
                       "Lowest pressure, kPa  Highest pressure, kPa\n"),
           std::string(
               "Flow header (flowheader)\n  Kind  Width or diameter, mm  Height, mm  Lowest flow, l/s"),
           std::string("Reference point (qvdpref)\n  Flow, l/s  Pressure, Pa\n"),
           "Attenuation, dB (dlwpoints)\n  Setting or flow  " + bands_heading,
           std::string("Pressure by flow (qvdppoints)\n  Flow, l/s  Pressure, Pa\n"),
           std::string("Limits of the fan (QvDpLimits)\n  Lowest flow, l/s  Highest flow, l/s  Lowest"),
           std::string("Throw (qvL2)\n  Flow, l/s  Throw, m\n"),
           std::string("Throw by value of the first parameter (parL2)\n  Value  Flow, l/s  Throw, m\n"),
           std::string("Second parameter (par2table)\n  Value  Resistance, Pa/(l/s)2"),
           std::string("Fan curve (fancurve)\n  Flow, l/s  Pressure, Pa  Host's own\n"),
       }) {
    EXPECT_THAT(text, HasSubstr('\n' + heading));
  }
  EXPECT_THAT(lines("ALL", "TABLES"), Contains("  Attenuation, dB (dlw)  1, 2, 3, 4, 5, 6, 7, 8"));
}

TEST_F(Show, TellsHowPressuresAreStored) {
  Record("ASD", "STATIC").header(10, 100, 0, 10, 100, 5, 200).save(database.handle());
  EXPECT_THAT(lines("ASD", "STATIC"), Contains("  Stored pressures  static"));
  Record("ASD", "OLD")
      .bytes(1649, "\x0A\x00\x64\x00\x00\x00\x20\x41\x00\x00\xC8\x42\x00\x00\x80\x3C\x00\x00\x00\x3F", 20)
      .save(database.handle());
  EXPECT_THAT(lines("ASD", "OLD"), Contains("  Stored pressures  total, kPa"));
}

TEST_F(Show, ShapeIsToldAsStoredAndAsDrawn) {
  EXPECT_THAT(lines("FAM", "F-100"),
              testing::IsSupersetOf(
                  {"  Shape             number 140", "    drawn as        number 140, dimensions 200 mm"}));
  Record("FAM", "S").words(clitest::kShape, {101, 160, 220, 180, 50}).save(database.handle());
  const auto shown = lines("FAM", "S");
  EXPECT_THAT(shown, Contains("  Shape   number 101, dimensions 160, 220, 180, 50 mm"));
  EXPECT_THAT(shown, Not(Contains(HasSubstr("drawn as"))));
}

TEST_F(Show, FamilyAndModelAreTold) {
  EXPECT_THAT(lines("FAM", "F-*"),
              testing::IsSupersetOf({"  Sizing            main record of a family, by the * in its id",
                                     "  Sizes             F-100, F-125", "  Model record      MODEL-1"}));
  EXPECT_THAT(lines("FAM", "F"), Contains("  Sizes not found  GONE"));
  EXPECT_THAT(lines("FAM", "F-125"), Contains("  Size of           F, F-*"));
  EXPECT_THAT(lines("LAY", "P-*-*"), Contains("  Sizing  main record of a layered product"));
  Record("FAM", "LOST").text(clitest::kModelIdFallback, "MODEL-9").save(database.handle());
  EXPECT_THAT(lines("FAM", "LOST"), Contains("  Model record  MODEL-9, not in the database"));
}

TEST_F(Show, AttachedBlockOfAModelRecordIsCounted) {
  EXPECT_THAT(lines("TVM", "MODEL-1"), Contains("  Attached block  18 bytes"));
}

TEST_F(Show, WebLinkFollowsTheMarket) {
  Record("FAM", "WEB")
      .text(8529, "https://example.com/a")
      .text(8500, "https://example.com/fi")
      .save(database.handle());
  EXPECT_THAT(lines("FAM", "WEB"), Contains("  Web link  https://example.com/a"));
  EXPECT_THAT(
      lines_of(run_text(command("FAM", "WEB", {"--market", "FIN"}))),
      testing::IsSupersetOf({"  Web link  https://example.com/fi", "Web links (weblink)",
                             "  default  https://example.com/a", "  FIN      https://example.com/fi"}));
}

TEST_F(Show, WhatHasNoWordsIsShownInHex) {
  Record record("RAW", "BYTES");
  record.bytes(1777, "\x01\x02", 2)
      .bytes(1652, "\x01\x02\x03", 3)
      .bytes(-5, std::string(40, 'x').data(), 40)
      .bytes(77, "", 0)
      .save(database.handle());
  EXPECT_THAT(lines("RAW", "BYTES"),
              testing::IsSupersetOf({"  Attribute -5     40 bytes: " +
                                         [] {
                                           std::string hex;
                                           for (int i = 0; i < 32; ++i) hex += "78";
                                           return hex;
                                         }() +
                                         "...",
                                     std::string("  Attribute 77     0 bytes"),
                                     std::string("  Damper settings  3 bytes: 010203"),
                                     std::string("  Attribute 1777   2 bytes: 0102")}));
}

TEST_F(Show, ControlCharactersDoNotReachTheTerminal) {
  Record("RAW", "EVIL").text(clitest::kMaker, "a\x1B[2Jb").save(database.handle());
  EXPECT_THAT(run_text(command("RAW", "EVIL")), Not(HasSubstr("\x1B")));
}

TEST_F(Show, JsonHoldsProductFamilyShapeAndEveryAttribute) {
  const Json::Value json = run_json(command("FAM", "F-100"));
  EXPECT_EQ(json["class"].asString(), "FAM");
  EXPECT_EQ(json["code"].asString(), "Hundred");
  EXPECT_EQ(json["limits"]["qv_max_l_s"].asFloat(), 100.0F);
  EXPECT_EQ(json["sizing_mode"].asInt(), 0);
  EXPECT_THAT(texts_of(json["size_of"]), ElementsAre("F", "F-*"));
  EXPECT_EQ(json["model"]["id"].asString(), "MODEL-2");
  EXPECT_TRUE(json["model"]["found"].asBool());
  EXPECT_EQ(json["shape"]["number"].asInt(), 140);
  EXPECT_EQ(json["shape"]["drawn_as"]["dimensions_mm"][0].asInt(), 200);
  const Json::Value& attributes = json["attributes"];
  EXPECT_EQ(attributes["qvdpref"]["qvref"].asFloat(), 50.0F);
  EXPECT_EQ(attributes["code"]["default"].asString(), "Hundred");
  EXPECT_EQ(attributes["szManu"].asString(), "Own works");
  EXPECT_FALSE(attributes.isMember("id"));
}

TEST_F(Show, JsonOfAModelRecordHoldsItsBlockInHex) {
  EXPECT_EQ(run_json(command("TVM", "MODEL-1"))["attributes"]["ahm"].asString(),
            "626c6f636b206f6620746865206d6f64656c");
}

TEST_F(Show, ProductThatDoesNotExistIsNamedWithItsNeighbours) {
  EXPECT_THAT(expect_user_error(command("ASD", "DAMPER-20")), HasSubstr("near it: DAMPER-200\n"));
  EXPECT_THAT(expect_user_error({"show", database.path(), "ASD"}), HasSubstr("ID is required"));
  EXPECT_THAT(expect_user_error(command("ASD", "DAMPER-200", {"--language", "tlh"})),
              HasSubstr("no language \"tlh\""));
}

}  // namespace
