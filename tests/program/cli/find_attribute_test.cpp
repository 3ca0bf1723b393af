// `tavd find-attribute`: which record of a layered product answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "families.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::lines_of;
using clitest::run_json;
using clitest::run_text;
using tavdtest::Record;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct FindAttribute : testing::Test {
  FindAttribute() { clitest::add_families(database); }

  std::vector<std::string> command(const char* id, const char* attribute,
                                   std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"find-attribute", database.path(), "LAY", id, attribute});
    return options;
  }
  // The record that answers, and its text.
  std::string answer(const char* id, const char* attribute) const {
    const Json::Value json = run_json(command(id, attribute));
    return json["answered_by"]["id"].asString() + ": " + json["value"].asString();
  }

  tavdtest::Database database;
};

TEST_F(FindAttribute, TheMostSpecificRecordThatHoldsItAnswers) {
  EXPECT_EQ(answer("P-10-A", "installationdef"), "P-10-A: exact");
  EXPECT_EQ(answer("P-10-B", "installationdef"), "P-10-*: ten");
  EXPECT_EQ(answer("P-20-A", "installationdef"), "P-*-A: A");
  EXPECT_EQ(answer("P-20-B", "installationdef"), "P-*-*: main");
  EXPECT_EQ(answer("P-10-A", "szManu"), "P-*-A: maker of A");
  EXPECT_EQ(answer("P-10-A", "szStruct"), "P-*-*: P-{B}");
}

TEST_F(FindAttribute, ShowsTheLayersInTheOrderInWhichTheyAreAsked) {
  EXPECT_THAT(lines_of(run_text(command("P-10-A", "szManu"))),
              ElementsAre("LAY P-10-A: szManu (1503)", "  LAYER         ID      HOLDS IT",
                          "  exact record  P-10-A  no", "  sub record    P-10-*  no",
                          "  sub record    P-*-A   yes, answers", "  main record   P-*-*   yes", "",
                          "Maker: maker of A"));
}

TEST_F(FindAttribute, JsonNamesEveryLayer) {
  const Json::Value json = run_json(command("P-10-A", "1503"));
  EXPECT_EQ(json["attribute"].asInt(), 1503);
  EXPECT_EQ(json["name"].asString(), "szManu");
  EXPECT_EQ(json["answered_by"]["layer"].asString(), "sub record");
  ASSERT_EQ(json["layers"].size(), 4u);
  EXPECT_EQ(json["layers"][0]["layer"].asString(), "exact record");
  EXPECT_FALSE(json["layers"][0]["holds"].asBool());
  EXPECT_EQ(json["layers"][3]["id"].asString(), "P-*-*");
}

TEST_F(FindAttribute, TextsOfMarketAndLanguageNeedNoNumber) {
  Record("LAY", "P-30-*")
      .words(clitest::kSizingMode, {11})
      .text(9500, "Koodi")
      .text(8500, "https://example.com/fi")
      .text(9550, "Kuvaus")
      .text(1562, "Code")
      .save(database.handle());
  const auto value = [&](const char* attribute, std::vector<std::string> options) {
    return run_json(command("P-30-X", attribute, std::move(options)))["value"].asString();
  };
  EXPECT_EQ(value("code", {"--market", "FIN"}), "Koodi");
  EXPECT_EQ(value("code", {}), "Code");
  EXPECT_EQ(value("weblink", {"--market", "FIN"}), "https://example.com/fi");
  EXPECT_EQ(value("description", {"--language", "fi"}), "Kuvaus");
  EXPECT_EQ(value("code.FIN", {}), "Koodi");
}

TEST_F(FindAttribute, TablesAndUnknownNumbersAreShown) {
  Record("LAY", "P-30-*")
      .words(clitest::kSizingMode, {11})
      .floats(1651, {50, 20})
      .bytes(1777, "\x01\x02", 2)
      .save(database.handle());
  EXPECT_THAT(run_text(command("P-30-X", "qvdpref")), HasSubstr("\nReference point (qvdpref)\n"
                                                                "  Flow, l/s or m/s  Pressure, Pa\n"
                                                                "                50            20\n"));
  EXPECT_EQ(run_json(command("P-30-X", "qvdpref"))["value"]["dpref"].asFloat(), 20.0F);
  EXPECT_THAT(run_text(command("P-30-X", "1777")), HasSubstr("Attribute 1777: 2 bytes: 0102\n"));
  EXPECT_EQ(run_json(command("P-30-X", "1777"))["hex"].asString(), "0102");
}

TEST_F(FindAttribute, WhatNoLayerHoldsIsToldWithTheLayersAsked) {
  EXPECT_THAT(expect_user_error(command("P-20-A", "damperpoints")),
              HasSubstr("no layer of \"P-20-A\" holds damperpoints (1652); asked were sub record P-*-A, main "
                        "record P-*-*\n"));
}

TEST_F(FindAttribute, IdsThatAreNoVariantAreRefused) {
  EXPECT_THAT(
      expect_user_error(command("P10A", "szManu")),
      HasSubstr("\"P10A\" is no id of a layered product, expected fields with \"-\" or \"+\" between them"));
  EXPECT_THAT(expect_user_error(command("P-10", "szManu")),
              HasSubstr("\"P-10\" does not fit the main record, expected an id such as \"P-*-*\""));
  EXPECT_THAT(expect_user_error(command("Q-10", "szManu")),
              HasSubstr("no main record (sizing mode 10) for "));
  EXPECT_THAT(expect_user_error(command("P-12345678901234567890123456789", "szManu")),
              HasSubstr("has 31 characters, expected at most 30\n"));
  EXPECT_THAT(expect_user_error({"find-attribute", database.path(), "FAM", "F-100", "szManu"}),
              HasSubstr("expected a variant of a layered product"));
}

TEST_F(FindAttribute, TwoMainRecordsAreRefused) {
  Record("LAY", "P-*").words(clitest::kSizingMode, {10}).save(database.handle());
  EXPECT_THAT(expect_user_error(command("P-10-A", "szManu")),
              HasSubstr("LAY P-... in " + database.path() + " has two main records, expected one"));
}

TEST_F(FindAttribute, UnknownAttributesAndClassesAreNamed) {
  for (const char* attribute : {"colour", "code.XYZ", "codes.FIN", "40000", "1.5", ""}) {
    EXPECT_THAT(expect_user_error(command("P-10-A", attribute)),
                HasSubstr("no attribute \"" + std::string(attribute) +
                          "\"; expected a name such as flowheader or "
                          "code.FIN, or a number such as 1650"));
  }
  EXPECT_THAT(expect_user_error({"find-attribute", database.path(), "LAYER", "P-10-A", "szManu"}),
              HasSubstr("no class \"LAYER\""));
}

}  // namespace
