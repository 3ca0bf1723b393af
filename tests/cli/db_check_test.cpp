// `tavd db check`: each fault that it looks for, and nothing in what is good.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "families.h"
#include "json.h"
#include "program.h"
#include "samples.h"

namespace {

using clitest::lines_of;
using clitest::member_ids;
using clitest::Outcome;
using clitest::run_program;
using tavdtest::Record;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

constexpr int kFoundSomething = 3;  // exit code

struct Check : testing::Test {
  Check() { Record("000", "FILEHEADER").words(1049, {0}).save(database.handle()); }

  Outcome run(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"db", "check", database.path()});
    return run_program(options);
  }
  // The findings, a line each; the exit code fits their number.
  std::vector<std::string> findings() const {
    const Outcome outcome = run();
    EXPECT_EQ(outcome.err, "");
    std::vector<std::string> lines = lines_of(outcome.out);
    if (lines.empty()) {
      ADD_FAILURE() << "no summary";
      return lines;
    }
    const std::string count = lines.size() == 1 ? "no" : std::to_string(lines.size() - 1);
    EXPECT_EQ(lines.back().compare(0, count.size() + 9, count + " finding" + (lines.size() == 2 ? " " : "s")),
              0)
        << lines.back();
    EXPECT_EQ(outcome.exit_code, lines.size() == 1 ? 0 : kFoundSomething);
    lines.pop_back();
    return lines;
  }
  // What is found in one product "TST X" with good limits and these attributes beside.
  template <typename Fill>
  std::vector<std::string> found(std::int16_t kind, Fill fill) const {
    Record record("TST", "X");
    record.header(static_cast<std::int16_t>(kind + 100), 100, 0, 10, 100, 5, 500);
    fill(record);
    record.save(database.handle());
    std::vector<std::string> lines = findings();
    for (std::string& line : lines) {
      EXPECT_EQ(line.compare(0, 7, "TST X: "), 0) << line;
      line.erase(0, 7);
    }
    return lines;
  }

  tavdtest::Database database;
};

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

// ---- Values ----------------------------------------------------------------

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

// ---- Header and tables -----------------------------------------------------

TEST_F(Check, LimitsThatDoNotRiseAreFound) {
  Record("TST", "X").header(199, 0, -1, 100, 10, 0, 500).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("TST X: flowheader (1650): expected kind 10, 11, 12, 13, 20, 22, 30 or 40, with 100 added "
                  "for total pressures, found 99",
                  "TST X: flowheader (1650): expected a width or diameter above 0 mm, found 0",
                  "TST X: flowheader (1650): expected a height above 0 mm, or 0 for a round duct, found -1",
                  "TST X: flowheader (1650): expected a lowest flow above 0 and a higher highest, found 100 "
                  "and 10",
                  "TST X: flowheader (1650): expected a lowest pressure above 0 and a higher highest, found "
                  "0 and 500"));
}

TEST_F(Check, LimitsOfAFanMayBeginAtZero) {
  EXPECT_THAT(found(40,
                    [](Record& r) {
                      r.floats(1658, {0, 100, 0, 500}).floats(1666, {1, 2, 0, 2, 1, 0});
                    }),
              IsEmpty());
  EXPECT_THAT(
      found(40,
            [](Record& r) {
              r.floats(1658, {-1, 100, 0, 500}).floats(1666, {1, 2, 0});
            }),
      ElementsAre("QvDpLimits (1658): expected a lowest flow of 0 or more and a higher highest, found -1 and "
                  "100"));
}

TEST_F(Check, ACurveThatTheKindNeedsIsMissed) {
  const struct {
    std::int16_t kind;
    const char* line;
  } cases[] = {
      {10, "qvdpref (1651): expected a reference point, as the kind is 10, found none"},
      {12, "qvdppoints (1657): expected a pressure curve, as the kind is 12, found none"},
      {22, "damperpoints (1652): expected damper settings, as the kind is 22, found none"},
      {40, "fancurve (1666): expected a fan curve, as the kind is 40, found none"},
  };
  for (const auto& [kind, line] : cases) EXPECT_THAT(found(kind, [](Record&) {}), ElementsAre(line));
  for (const std::int16_t kind : {std::int16_t{13}, std::int16_t{30}}) {
    EXPECT_THAT(found(kind, [](Record&) {}), IsEmpty());
  }
}

TEST_F(Check, AReferencePointWithoutFlowOrPressureIsFound) {
  EXPECT_THAT(found(10,
                    [](Record& r) {
                      r.floats(1651, {0, -1});
                    }),
              ElementsAre("qvdpref (1651): expected a flow above 0, found 0",
                          "qvdpref (1651): expected a pressure above 0, found -1"));
}

TEST_F(Check, SettingsOfADamperOutOfOrderAreFound) {
  EXPECT_THAT(
      found(20,
            [](Record& r) {
              r.floats(1652, {1, 100, 100, 2, 100, 400, 2, 100, 50});
            }),
      ElementsAre("damperpoints (1652) row 2: expected less resistance than the row before, most throttled "
                  "first, found 0.04 after 0.01 Pa/flow2",
                  "damperpoints (1652) row 3: expected settings that rise, or that fall, from row to row, "
                  "found 2 after 2"));
  EXPECT_THAT(found(20,
                    [](Record& r) {
                      r.floats(1652, {1, 100, 400, 2, 0, 100, 3, 100, 25});
                    }),
              ElementsAre("damperpoints (1652) row 2: expected a flow above 0, found 0"));
  EXPECT_THAT(found(20,
                    [](Record& r) {
                      r.floats(1652, {3, 100, 400, 2, 100, 100, 1, 100, 25});
                    }),
              IsEmpty());
}

TEST_F(Check, CurvesThatDoNotRiseAreFound) {
  EXPECT_THAT(
      found(12,
            [](Record& r) {
              r.floats(1657, {10, 10, 20, 40, 20, 30});
            }),
      ElementsAre("qvdppoints (1657) row 3: expected a flow above 20 of the row before, found 20",
                  "qvdppoints (1657) row 3: expected a pressure above 40 of the row before, found 30"));
  EXPECT_THAT(found(40,
                    [](Record& r) {
                      r.floats(1658, {0, 9, 0, 9}).floats(1666, {2, 9, 0, 1, 5, 0});
                    }),
              ElementsAre("fancurve (1666) row 2: expected a flow above 2 of the row before, found 1"));
  EXPECT_THAT(found(13,
                    [](Record& r) {
                      r.floats(1659, {20, 2, 10, 0});
                    }),
              ElementsAre("qvL2 (1659) row 2: expected a throw above 0, found 0",
                          "qvL2 (1659) row 2: expected a flow above 20 of the row before, found 10"));
}

std::vector<clitest::SoundRow> sound(std::initializer_list<std::pair<float, float>> points) {
  std::vector<clitest::SoundRow> rows;
  for (const auto& [qv, dp] : points) rows.emplace_back(qv, dp, 40);
  return rows;
}

TEST_F(Check, SoundOfAFixedResistanceMustRiseWithFlow) {
  EXPECT_THAT(found(10,
                    [](Record& r) {
                      r.floats(1651, {50, 20}).rows(1653, sound({{20, 9}, {10, 5}}));
                    }),
              ElementsAre("lwpoints (1653) row 2: expected a flow above 20 of the row before, found 10"));
  EXPECT_THAT(found(10,
                    [](Record& r) {
                      r.floats(1651, {50, 20}).rows(1653, sound({{20, 9}}));
                    }),
              ElementsAre("lwpoints (1653): expected at least 2 rows, found 1"));
  EXPECT_THAT(found(10,
                    [](Record& r) {
                      r.floats(1651, {50, 20}).rows(1653, sound({{20, 9}, {30, 0}}));
                    }),
              ElementsAre("lwpoints (1653) row 2: expected a pressure above 0, found 0"));
}

TEST_F(Check, SoundCurvesMustRunFromTheHighestResistanceDown) {
  EXPECT_THAT(
      found(13,
            [](Record& r) {
              r.rows(1653, sound({{10, 10}, {20, 40}, {10, 40}, {20, 160}}));
            }),
      ElementsAre("lwpoints (1653) row 3: expected curves from the highest resistance down, found 0.4 after "
                  "0.1 Pa/flow2"));
  EXPECT_THAT(
      found(13,
            [](Record& r) {
              r.rows(1653, sound({{10, 40}, {20, 160}, {10, 10}}));
            }),
      ElementsAre("lwpoints (1653) row 3: expected at least 2 rows for each curve of one resistance, found "
                  "1"));
  EXPECT_THAT(
      found(13,
            [](Record& r) {
              r.rows(1653, sound({{20, 160}, {10, 40}}));
            }),
      ElementsAre("lwpoints (1653): expected rows of more than one curve of one resistance, found one",
                  "lwpoints (1653) row 2: expected pressures that rise within each curve of one resistance, "
                  "found 40 after 160"));
}

TEST_F(Check, SoundByFlowMustRise) {
  EXPECT_THAT(found(30,
                    [](Record& r) {
                      r.rows(1653, sound({{20, 10}, {20, 50}, {10, 10}, {10, 50}}));
                    }),
              ElementsAre("lwpoints (1653) row 3: expected a flow above 20 of the row before, found 10"));
  std::vector<clitest::SoundRow> many;
  for (int i = 1; i <= 21; ++i) {
    many.emplace_back(static_cast<float>(i), 10.0F, 40);
    many.emplace_back(static_cast<float>(i), 20.0F, 40);
  }
  EXPECT_THAT(found(30, [&](Record& r) { r.rows(1653, many); }),
              ElementsAre("lwpoints (1653): expected rows of at most 20 of flow, found 21"));
}

TEST_F(Check, AttenuationOutOfOrderIsFound) {
  EXPECT_THAT(found(30,
                    [](Record& r) {
                      r.floats(1655, {20, 0, 0, 10, 0, 0});
                    }),
              ElementsAre("dlwpoints (1655) row 2: expected a flow above 20 of the row before, found 10"));
  EXPECT_THAT(
      found(13,
            [](Record& r) {
              r.floats(1655, {10, 0, 0, 20, 0, 0});
            }),
      ElementsAre("dlwpoints (1655): expected one row, as the attenuation of this kind follows nothing, "
                  "found 2"));
}

TEST_F(Check, ThrowByValueMustRiseWithinEachValue) {
  EXPECT_THAT(found(13,
                    [](Record& r) {
                      std::string rows = std::string("A     \0\0\x20\x41\0\0\x80\x3F", 14);
                      r.text(1660, rows + rows);
                    }),
              ElementsAre("parL2 (1660) row 2: expected a flow above 10 of the row before, found 10"));
}

TEST_F(Check, ParametersNeedRisingValuesAndNames) {
  const auto table = [](std::initializer_list<const char*> values) {
    std::vector<clitest::ParameterRow> rows;
    for (const char* value : values) rows.emplace_back(value, 0.0F, std::int16_t{0});
    return rows;
  };
  EXPECT_THAT(found(13,
                    [&](Record& r) {
                      r.rows(1661, table({"20", "10"})).text(1514, "A");
                    }),
              ElementsAre("par1table (1661) row 2: expected a value above 20 of the row before, found 10"));
  EXPECT_THAT(found(13,
                    [&](Record& r) {
                      r.rows(1661, table({"a", "A"})).text(1514, "A");
                    }),
              ElementsAre("par1table (1661) row 2: expected each value once, found \"A\" twice"));
  EXPECT_THAT(found(13, [&](Record& r) { r.rows(1661, table({"A"})).text(1514, "A,B"); }),
              ElementsAre("parnames (1514): expected 1 name, one for each parameter table, found 2 names"));
  EXPECT_THAT(found(13, [&](Record& r) { r.rows(1661, table({"A"})); }),
              ElementsAre("parnames (1514): expected 1 name, one for each parameter table, found 0 names"));
  EXPECT_THAT(
      found(13, [&](Record& r) { r.rows(1662, table({"A"})).text(1514, "A"); }),
      ElementsAre("par1table (1661): expected the first parameter's table, as there is a second, found "
                  "none"));
  EXPECT_THAT(found(13, [&](Record& r) { r.rows(1661, table({"A"})).text(1514, "LONGERNAME"); }),
              ElementsAre("parnames (1514): expected names of at most 9 bytes, found \"LONGERNAME\""));
}

// ---- Records that name others ----------------------------------------------

TEST_F(Check, MembersThatAreNotThereOrTwiceAreFound) {
  Record("FAM", "A").save(database.handle());
  Record("FAM", "L").words(1150, {2}).text(1604, member_ids({"A", "GONE", "A", "L"})).save(database.handle());
  EXPECT_THAT(findings(),
              ElementsAre("FAM L: memberids (1604): expected only ids that are in the database, found "
                          "\"GONE\"",
                          "FAM L: memberids (1604): expected each id once, found \"A\" twice",
                          "FAM L: memberids (1604): expected ids of sizes, found the main record "
                          "itself"));
}

TEST_F(Check, FamiliesWithoutSizesAreFound) {
  Record("FAM", "L").words(1150, {2}).save(database.handle());
  Record("FAM", "N").words(1150, {1}).save(database.handle());
  Record("FAM", "P-*").words(1150, {1}).save(database.handle());
  Record("FAM", "X").words(1150, {3}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("FAM L: memberids (1604): expected ids of the sizes, found none",
                  "FAM N: sizingmode (1150): expected a * in the id of a main record with sizing mode 1, "
                  "found N",
                  "FAM P-*: sizingmode (1150): expected records whose ids fit that of the main record, "
                  "found none",
                  "FAM X: sizingmode (1150): expected 0, 1, 2, 10 or 11, found 3"));
}

TEST_F(Check, LayersWithoutTheirMainRecordAreFound) {
  Record("LAY", "P-10").words(1150, {11}).save(database.handle());
  Record("LAY", "Q").words(1150, {10}).save(database.handle());
  Record("LAY", "R-*-*").words(1150, {10}).save(database.handle());
  Record("LAY", "R-*-A").words(1150, {11}).save(database.handle());
  Record("LAY", "R-10").words(1150, {11}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("LAY P-10: sizingmode (1150): expected a main record, sizing mode 10, whose id begins "
                  "with \"P-\", found none",
                  "LAY Q: sizingmode (1150): expected an id with \"-\" or \"+\" between its fields, found Q",
                  "LAY R-10: sizingmode (1150): expected an id that fits that of the main record, "
                  "\"R-*-*\", found R-10"));
}

TEST_F(Check, TwoMainRecordsOfALayeredProductAreFound) {
  Record("LAY", "R-*").words(1150, {10}).save(database.handle());
  Record("LAY", "R-*-*").words(1150, {10}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("LAY R-*: sizingmode (1150): expected one main record whose id begins with \"R-\", found "
                  "two",
                  "LAY R-*-*: sizingmode (1150): expected one main record whose id begins with \"R-\", "
                  "found two"));
}

TEST_F(Check, ModelRecordsThatAreNamedInVainOrByNobodyAreFound) {
  Record("FAM", "A").text(1525, "MODEL-1").save(database.handle());
  Record("FAM", "B").text(1525, "").text(1669, "GONE").save(database.handle());
  Record("FAM", "C").text(1525, std::string(31, 'X')).save(database.handle());
  Record("TVM", "MODEL-1").save(database.handle());
  Record("TVM", "MODEL-2").save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("FAM B: tvmAtt2 (1669): expected the id of a model record, class TVM, found \"GONE\", "
                  "which is not there",
                  "FAM C: tvmAtt (1525): expected an object id of at most 30 characters, found 31 "
                  "characters",
                  "TVM MODEL-2: expected a product that names this model record, found none"));
}

TEST_F(Check, TheTextEncodingStandsOnTheFileHeaderAlone) {
  Record("000", "FILEHEADER").words(1049, {3}).save(database.handle());
  Record("TST", "X").words(1049, {1}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("000 FILEHEADER: usesUTF8 (1049): expected 0 or 2 for windows-1252, or 1 for UTF-8, found "
                  "3",
                  "TST X: usesUTF8 (1049): expected this on the file header only, found 1"));
}

// ---- Templates -------------------------------------------------------------

TEST_F(Check, TemplatesThatDoNotSuitTheProductsSizeAreFound) {
  EXPECT_THAT(
      found(13, [](Record& r) { r.text(1511, "A-{B}").text(9500, "{D:4}"); }),
      ElementsAre(HasSubstr("szStruct (1511): expected a template that suits a size of 100 mm, found "
                            "\"A-{B}\": a letter does not suit the duct"),
                  "code.FIN (9500): expected a template that suits a size of 100 mm, found \"{D:4}\": where "
                  "a unit must stand is neither mm nor cm nor dm"));
  EXPECT_THAT(found(13, [](Record& r) { r.text(1511, "{D}-{B2}x{H2}").text(9500, "{D2}"); }), IsEmpty());
}

TEST_F(Check, ProductIdsThatAreTooLongAreFound) {
  EXPECT_THAT(found(13, [](Record& r) { r.text(1511, std::string(28, 'A') + "{D}"); }),
              ElementsAre("szStruct (1511): expected a product id of at most 30 bytes, found \"" +
                          std::string(28, 'A') + "100\""));
}

}  // namespace
