// `tavd db check`: headers and tables that spoil the calculations.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "check_fixture.h"
#include "samples.h"

namespace {

using clitest::Check;
using tavdtest::Record;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
      {20, "damperpoints (1652): expected damper settings, as the kind is 20, found none"},
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
                      r.floats(1651, {50, 125}).rows(1653, sound({{20, 20}, {10, 5}}));
                    }),
              ElementsAre("lwpoints (1653) row 2: expected a flow above 20 of the row before, found 10"));
  EXPECT_THAT(found(10,
                    [](Record& r) {
                      r.floats(1651, {50, 125}).rows(1653, sound({{20, 20}}));
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

}  // namespace
