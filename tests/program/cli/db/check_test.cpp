// `tavd db check`: how it tells what it finds, and faults in the values themselves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "check_fixture.h"

namespace {

using clitest::Check;
using clitest::kFoundSomething;
using clitest::Outcome;
using clitest::run_program;
using tavdtest::Record;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(Check, FindsNothingInTheSampleCatalogue) {
  const clitest::Folder folder;
  const std::string path = folder.file("catalogue.tavdb");
  clitest::run_text({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", path});
  EXPECT_THAT(clitest::run_text({"db", "check", path}),
              testing::MatchesRegex("no findings in [0-9]+ records\n"));
}

TEST_F(Check, FindsNothingInADatabaseWithNothingButItsHeader) {
  EXPECT_EQ(run().out, "no findings in 1 record\n");
  EXPECT_EQ(run().exit_code, 0);
}

TEST_F(Check, ADatabaseWithoutAFileHeaderIsFound) {
  const tavdtest::Database empty;
  const Outcome outcome = run_program({"db", "check", empty.path()});
  EXPECT_EQ(outcome.exit_code, kFoundSomething);
  EXPECT_EQ(outcome.out,
            "000 FILEHEADER: expected this record in every database, found none\n1 finding in 0 records\n");
}

TEST_F(Check, JsonHoldsEachFindingWithItsPlace) {
  Record("TST", "X").floats(1651, {1, 2}).floats(1652, {1, 2, 3, 4}).save(database.handle());
  const Outcome outcome = run({"--json"});
  EXPECT_EQ(outcome.exit_code, kFoundSomething);
  const Json::Value json = clitest::parse_json(outcome.out);
  EXPECT_EQ(json["records"].asInt(), 2);
  ASSERT_EQ(json["findings"].size(), 1u);
  const Json::Value& finding = json["findings"][0];
  EXPECT_EQ(finding["class"].asString(), "TST");
  EXPECT_EQ(finding["id"].asString(), "X");
  EXPECT_EQ(finding["attribute"].asInt(), 1652);
  EXPECT_EQ(finding["name"].asString(), "damperpoints");
  EXPECT_EQ(finding["expected"].asString(), "whole items of 12 bytes");
  EXPECT_EQ(finding["found"].asString(), "16 bytes");
  EXPECT_FALSE(finding.isMember("row"));
}

TEST_F(Check, WhatIsNoDatabaseIsRefused) {
  EXPECT_THAT(clitest::expect_user_error({"db", "check", "/nowhere"}), HasSubstr("no database \"/nowhere\""));
}

TEST_F(Check, ItemsOfTheWrongSizeOrNumberAreFound) {
  Record("TST", "X")
      .words(1150, {0, 0})
      .rows(1659, std::vector<float>(22, 1.0F))
      .bytes(1654, "abc", 3)
      .save(database.handle());
  EXPECT_THAT(findings(), ElementsAre("TST X: sizingmode (1150): expected exactly 1 item, found 2 items",
                                      "TST X: dlw (1654): expected whole items of 8 bytes, found 3 bytes",
                                      "TST X: qvL2 (1659): expected at most 10 items, found 11 items"));
}

TEST_F(Check, NumbersThatAreNoneAreFoundWithTheirRow) {
  Record("TST", "X")
      .floats(1671, {1, std::numeric_limits<float>::quiet_NaN()})
      .floats(1657, {1, 2, 3, std::numeric_limits<float>::infinity()})
      .save(database.handle());
  EXPECT_THAT(findings(),
              ElementsAre("TST X: qvdppoints (1657) row 2: expected a number as dp, found infinity",
                          "TST X: floatpair (1671): expected a number as value, found not a number"));
}

TEST_F(Check, TextsThatDoNotFitAreFound) {
  Record("TST", "X")
      .text(1503, std::string(100, 'x'))
      .text(1562, std::string(40, 'x'))
      .text(9552, std::string(80, 'x'))
      .text(9501, std::string(256, 'x'))
      .text(8529, std::string(255, 'x'))
      .save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("TST X: szManu (1503): expected at most 99 bytes, found 100 bytes",
                  "TST X: code.default (1562): expected at most 39 characters, as lists of sizes have room "
                  "for, found 40 characters",
                  "TST X: code.SWE (9501): expected at most 255 characters, found 256 characters",
                  "TST X: description.English (9552): expected at most 79 characters, as lists of sizes "
                  "have room for, found 80 characters"));
}

TEST_F(Check, TextsThatAreNoneInTheirCharsetAreFound) {
  Record("TST", "X").text(9593, "\xE5\x9C").text(1503, std::string("a\0b", 3)).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre(HasSubstr("TST X: szManu (1503): expected a text in the file's own charset"),
                  "TST X: description.Chinese (9593): expected a text in UTF-8 without NUL, found 2 bytes "
                  "that are none: e59c"));
}

TEST_F(Check, NumbersWithoutANameAreTheHostsOwn) {
  Record("TST", "X").bytes(1777, "\xFF", 1).save(database.handle());
  EXPECT_THAT(findings(), IsEmpty());
}

}  // namespace
