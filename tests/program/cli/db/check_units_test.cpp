// `tavd db check`: tables in the wrong unit, sizes and throws that no product has, sound off the product's
// own curve.
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

std::vector<clitest::SoundRow> sound(std::initializer_list<std::pair<float, float>> points) {
  std::vector<clitest::SoundRow> rows;
  for (const auto& [qv, dp] : points) rows.emplace_back(qv, dp, 40);
  return rows;
}

// The product of found(): 10 to 100 l/s and 5 to 500 Pa in a connection of 100 mm.
TEST_F(Check, PressuresInKilopascalAreFound) {
  EXPECT_THAT(
      found(20,
            [](Record& r) {
              r.floats(1652, {1, 50, 0.3F, 2, 50, 0.1F, 3, 50, 0.05F});
            }),
      ElementsAre("damperpoints (1652): expected pressures within the limits, 5 to 500 Pa, found 0.05 to "
                  "0.3 Pa; taken as kPa they are 50 to 300 Pa"));
  EXPECT_THAT(
      found(10,
            [](Record& r) {
              r.floats(1651, {50, 0.05F});
            }),
      ElementsAre("qvdpref (1651): expected pressures within the limits, 5 to 500 Pa, found 0.05 Pa; taken "
                  "as kPa they are 50 Pa"));
}

TEST_F(Check, FlowsInCubicMetresAnHourAreFound) {
  EXPECT_THAT(
      found(13,
            [](Record& r) {
              r.floats(1659, {200, 2, 350, 3.5F});
            }),
      ElementsAre("qvL2 (1659): expected flows within the limits, 10 to 100 l/s, found 200 to 350 l/s; taken "
                  "as m3/h they are 55.6 to 97.2 l/s"));
}

// 36 to 360 m3/h are the limits, so that the least of the points lies within them as it stands.
TEST_F(Check, FlowsOfAnotherUnitAreFoundAlsoWhereTheLimitsOverlap) {
  EXPECT_THAT(
      found(12,
            [](Record& r) {
              r.floats(1657, {72, 10, 144, 40, 288, 160});
            }),
      ElementsAre("qvdppoints (1657): expected flows within the limits, 10 to 100 l/s, found 72 to 288 l/s; "
                  "taken as m3/h they are 20 to 80 l/s"));
}

TEST_F(Check, LimitsInAnotherUnitThanTheTableAreFound) {
  Record("TST", "X")
      .header(112, 100, 0, 10, 100, 0.005F, 0.5F)
      .floats(1657, {20, 10, 80, 160})
      .save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("TST X: flowheader (1650): expected a highest pressure of at least 2 Pa, found 0.5 Pa; "
                  "taken as kPa it "
                  "is 500 Pa",
                  "TST X: qvdppoints (1657): expected pressures within the limits, 0.005 to 0.5 Pa, found 10 "
                  "to 160 Pa; taken as kPa the limits are 5 to 500 Pa"));
}

TEST_F(Check, PointsOutsideTheLimitsInEveryUnitAreFoundWithoutAGuess) {
  EXPECT_THAT(
      found(13,
            [](Record& r) {
              r.floats(1659, {1, 2, 9000, 3.5F});
            }),
      ElementsAre("qvL2 (1659): expected flows within the limits, 10 to 100 l/s, found 1 to 9000 l/s"));
}

TEST_F(Check, PointsOfWhichSomeLieOutsideAreGood) {
  EXPECT_THAT(found(12, [](Record& r) { r.floats(1657, {5, 1, 50, 100, 110, 484}); }), IsEmpty());
  EXPECT_THAT(found(20, [](Record& r) { r.floats(1652, {1, 20, 50, 2, 50, 4, 3, 60, 3}); }), IsEmpty());
}

TEST_F(Check, ThrowsInMillimetresAreFound) {
  EXPECT_THAT(
      found(13,
            [](Record& r) {
              r.floats(1659, {20, 2000, 40, 3500});
            }),
      ElementsAre(
          "qvL2 (1659): expected throws in m, at most 100, found 2000 to 3500 m; taken as mm they are "
          "2 to 3.5 m"));
  EXPECT_THAT(found(13, [](Record& r) { r.floats(1659, {20, 50, 40, 100}); }), IsEmpty());
}

TEST_F(Check, ThrowsThatFallWithTheFlowAreFound) {
  EXPECT_THAT(found(13,
                    [](Record& r) {
                      r.floats(1659, {20, 5, 40, 3});
                    }),
              ElementsAre("qvL2 (1659) row 2: expected a throw above 5 of the row before, found 3"));
  EXPECT_THAT(found(13,
                    [](Record& r) {
                      r.text(1660, std::string("A     \0\0\xA0\x41\0\0\xA0\x40"
                                               "A     \0\0\x20\x42\0\0\x40\x40",
                                               28));
                    }),
              ElementsAre("parL2 (1660) row 2: expected a throw above 5 of the row before, found 3"));
}

TEST_F(Check, ASizeThatIsNotInMillimetresIsFound) {
  Record("TST", "X").header(113, 10, 0, 10, 100, 5, 500).save(database.handle());
  EXPECT_THAT(findings(),
              ElementsAre("TST X: flowheader (1650): expected a size in mm, above 10, found 10 mm"));
}

// A circle of 100 mm has 7.854 l/s at 1 m/s.
TEST_F(Check, LimitsThatDoNotGoWithTheSizeAreFound) {
  Record("TST", "A").header(113, 100, 0, 36, 360, 5, 500).save(database.handle());
  Record("TST", "B").header(113, 100, 200, 72, 900, 5, 500).save(database.handle());
  Record("TST", "C").header(111, 400, 0, 36, 360, 5, 500).floats(1651, {100, 50}).save(database.handle());
  Record("TST", "D").header(113, 100, 0, 0.01F, 0.1F, 5, 500).save(database.handle());
  EXPECT_THAT(findings(), ElementsAre("TST A: flowheader (1650): expected a highest flow from 0.785 to 196 "
                                      "l/s for a size of 100 mm, found "
                                      "360 l/s, an air velocity of 45.8 m/s; taken as m3/h it is 100 l/s",
                                      "TST B: flowheader (1650): expected a highest flow from 2 to 500 l/s "
                                      "for a size of 100x200 mm, found "
                                      "900 l/s, an air velocity of 45 m/s; taken as m3/h it is 250 l/s",
                                      "TST C: flowheader (1650): expected a highest flow from 0.1 to 25 m/s, "
                                      "as the kind is 11, found 360 "
                                      "m/s; taken as fpm it is 1.83 m/s",
                                      "TST D: flowheader (1650): expected a highest flow from 0.785 to 196 "
                                      "l/s for a size of 100 mm, found "
                                      "0.1 l/s, an air velocity of 0.013 m/s; taken as m3/s it is 100 l/s"));
}

TEST_F(Check, LimitsThatGoWithTheSizeAreGood) {
  Record("TST", "A").header(113, 100, 0, 36, 190, 5, 500).save(database.handle());  // 24 m/s
  Record("TST", "B").header(111, 400, 400, 0.1F, 0.5F, 1, 3).floats(1651, {0.3F, 2}).save(database.handle());
  EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(Check, LimitsInKilopascalAreFound) {
  Record("TST", "A")
      .header(110, 100, 0, 10, 100, 0.005F, 0.3F)
      .floats(1651, {50, 0.05F})
      .save(database.handle());
  EXPECT_THAT(findings(),
              ElementsAre("TST A: flowheader (1650): expected a highest pressure of at least 2 Pa, found 0.3 "
                          "Pa; taken as kPa it is 300 Pa"));
}

TEST_F(Check, AListOfDiametersWithoutTheHeadersIsFound) {
  EXPECT_THAT(found(13,
                    [](Record& r) {
                      r.words(1102, {160, 200});
                    }),
              ElementsAre("d (1102): expected the header's own size, 100 mm, among them, found 160, 200"));
  EXPECT_THAT(found(13, [](Record& r) { r.words(1102, {160, 100}); }), IsEmpty());
}

TEST_F(Check, SoundOffTheResistanceOfTheProductIsFound) {
  EXPECT_THAT(
      found(10,
            [](Record& r) {
              r.floats(1651, {50, 100}).rows(1653, sound({{25, 30}, {50, 100}, {100, 200}}));
            }),
      ElementsAre(
          "lwpoints (1653) row 1: expected the product's own pressure, 25 Pa at 25 l/s, found 30, and "
          "1 more row off it"));
  EXPECT_THAT(
      found(12,
            [](Record& r) {
              r.floats(1657, {20, 16, 80, 256}).rows(1653, sound({{40, 64}, {60, 300}}));
            }),
      ElementsAre("lwpoints (1653) row 2: expected the product's own pressure, 144 Pa at 60 l/s, found 300"));
}

TEST_F(Check, SoundThatIsRoundedBesideTheResistanceIsGood) {
  EXPECT_THAT(found(10,
                    [](Record& r) {
                      r.floats(1651, {50, 100}).rows(1653, sound({{10, 5}, {25, 28}, {50, 90}, {100, 440}}));
                    }),
              IsEmpty());
  // At exactly the flow of the last point a curve of this kind has no pressure.
  EXPECT_THAT(found(12,
                    [](Record& r) {
                      r.floats(1657, {20, 16, 80, 256}).rows(1653, sound({{40, 64}, {80, 256}}));
                    }),
              IsEmpty());
}

TEST_F(Check, SoundBesideTheSettingsOfADamperIsFound) {
  EXPECT_THAT(
      found(20,
            [](Record& r) {
              r.floats(1652, {1, 50, 400, 2, 50, 100})
                  .rows(1653, sound({{25, 250}, {50, 1000}, {25, 25}, {50, 100}}));
            }),
      ElementsAre("lwpoints (1653) row 1: expected a resistance of the settings, 0.04 to 0.16 Pa/flow2, "
                  "found 0.4, and 1 more row off it"));
  EXPECT_THAT(found(20,
                    [](Record& r) {
                      r.floats(1652, {1, 50, 400, 2, 50, 100})
                          .rows(1653, sound({{25, 110}, {50, 440}, {25, 24}, {50, 96}}));
                    }),
              IsEmpty());
}

TEST_F(Check, NegativeFlowsOfFansAndAttenuationAreFound) {
  EXPECT_THAT(found(40,
                    [](Record& r) {
                      r.floats(1658, {0, 100, 0, 500}).floats(1666, {-1, 200, 0, 50, -5, 0});
                    }),
              ElementsAre("fancurve (1666) row 1: expected a flow of 0 or more, found -1",
                          "fancurve (1666) row 2: expected a pressure of 0 or more, found -5"));
  EXPECT_THAT(found(30,
                    [](Record& r) {
                      r.floats(1655, {-20, 0, 0, 10, 0, 0});
                    }),
              ElementsAre("dlwpoints (1655) row 1: expected a flow of 0 or more, found -20"));
}

TEST_F(Check, AClassInLowerCaseAndBlanksInFrontOfAnIdAreFound) {
  Record("tSt", "X").save(database.handle());
  Record("TST", " Y").save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre(
          "TST  Y: expected an id without blanks in front, found \" Y\"",
          "tSt X: expected a class in capitals, as it is told apart from others by each letter, found "
          "\"tSt\""));
}

}  // namespace
