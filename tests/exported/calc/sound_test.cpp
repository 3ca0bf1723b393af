#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/products.h"

namespace {

using tavdtest::add_parameter;
using tavdtest::add_pressure_term;
using tavdtest::attenuation_row;
using tavdtest::curve_product;
using tavdtest::damper_product;
using tavdtest::entry;
using tavdtest::kNonsense;
using tavdtest::product;
using tavdtest::put;
using tavdtest::range_product;
using tavdtest::resistance_product;
using tavdtest::sound_row;

constexpr DuctSize kRound200 = {0, 200, 200};

struct Level {
  int code = 99;
  float bands[8] = {kNonsense, kNonsense, kNonsense, kNonsense, kNonsense, kNonsense, kNonsense, kNonsense};
};

Level level_of(const FlowData& fd, float qv, float dp, const DuctSize* duct = &kRound200) {
  Level level;
  level.code = tavca_lw(&fd, qv, dp, level.bands, duct);
  return level;
}

Level attenuation_of(const FlowData& fd, float qv, float dp) {
  Level level;
  level.code = tavca_dlw(&fd, qv, dp, level.bands);
  return level;
}

void expect_all(const Level& level, int code, float value) {
  EXPECT_EQ(level.code, code);
  for (float band : level.bands) EXPECT_FLOAT_EQ(band, value);
}

void expect_failure(const Level& level, int code) {
  EXPECT_EQ(level.code, code);
  for (float band : level.bands) EXPECT_EQ(band, 0.0F);
}

void set_sound(FlowData& fd, std::initializer_list<LwPoint> rows) {
  fd.nlw = put(fd.lwpoints, rows);
}

// 100 Pa at 100 l/s.
FlowData fixed_product() {
  FlowData fd = resistance_product(100.0F, 100.0F);
  set_sound(fd, {sound_row(70.71F, 50.0F, 40), sound_row(141.42F, 200.0F, 52)});
  return fd;
}

// Three curves, each of two rows, of resistances 0.04, 0.01 and 0.0025.
FlowData curves_product() {
  FlowData fd = damper_product({{1, 100.0F, 400.0F}, {2, 100.0F, 100.0F}, {3, 100.0F, 25.0F}});
  set_sound(fd, {sound_row(50.0F, 100.0F, 50), sound_row(100.0F, 400.0F, 60), sound_row(50.0F, 25.0F, 30),
                 sound_row(100.0F, 100.0F, 40), sound_row(100.0F, 25.0F, 20), sound_row(200.0F, 100.0F, 30)});
  return fd;
}

// Two flows at two pressures each, limits 20 to 200 Pa and 50 to 100 l/s.
FlowData groups_product() {
  FlowData fd = range_product(20.0F, 200.0F);
  fd.qvmin = 50.0F;
  fd.qvmax = 100.0F;
  set_sound(fd, {sound_row(50.0F, 20.0F, 20), sound_row(50.0F, 200.0F, 40), sound_row(100.0F, 20.0F, 30),
                 sound_row(100.0F, 200.0F, 50)});
  return fd;
}

TEST(FixedCurveSound, LiesHalfWayOnTheLogarithmOfPressureWhateverTheCallersPressure) {
  const FlowData fd = fixed_product();
  expect_all(level_of(fd, 100.0F, 100.0F), 0, 46.0F);
  expect_all(level_of(fd, 100.0F, 1.0F), 0, 46.0F);
  expect_all(level_of(fd, 100.0F, -5.0F), 0, 46.0F);
}

TEST(FixedCurveSound, IsThatOfTheInterpolationOnTheProductsOwnPressure) {
  const FlowData fd = fixed_product();
  const float dp = tavca_dptotmin(&fd, 87.0F);
  const float expected = tavca_loglin_interp(50.0F, 200.0F, dp, 40.0F, 52.0F);
  EXPECT_EQ(level_of(fd, 87.0F, 0.0F).bands[3], expected);
}

TEST(FixedCurveSound, GoesByFlowForAMeasuredCurve) {
  FlowData fd = curve_product({{10.0F, 20.0F}, {1000.0F, 80.0F}});
  set_sound(fd, {sound_row(10.0F, 1.0F, 20), sound_row(1000.0F, 1.0F, 60)});
  expect_all(level_of(fd, 100.0F, 50.0F), 0, 40.0F);
}

TEST(FixedCurveSound, TakesTheParameterTermOff) {
  FlowData fd = fixed_product();
  add_pressure_term(fd, 0.005F);
  expect_all(level_of(fd, 100.0F, 0.0F), 0, 46.0F);
}

TEST(FixedCurveSound, IsLimitedToNinetyNineAndZero) {
  FlowData fd = fixed_product();
  expect_all(level_of(fd, 1e5F, 0.0F), 0, 99.0F);
  expect_all(level_of(fd, 0.01F, 0.0F), 0, 0.0F);
}

TEST(FixedCurveSound, ReachesAFlowOutsideTheTableFromThePairThatIsLeft) {
  FlowData fd = resistance_product(100.0F, 100.0F);
  set_sound(fd,
            {sound_row(10.0F, 1.0F, 10), sound_row(100.0F, 100.0F, 30), sound_row(1000.0F, 10000.0F, 90)});
  // Below the table: the pair of the first two rows stays; the third lies above it and the flow below.
  EXPECT_FLOAT_EQ(level_of(fd, 31.622777F, 0.0F).bands[0], 20.0F);
  EXPECT_FLOAT_EQ(level_of(fd, 5.0F, 0.0F).bands[0], tavca_loglin_interp(1.0F, 100.0F, 0.25F, 10.0F, 30.0F));
  // Above the first pair the third row replaces the upper end and the lower end stays where it is.
  EXPECT_FLOAT_EQ(level_of(fd, 500.0F, 0.0F).bands[0],
                  tavca_loglin_interp(1.0F, 10000.0F, 2500.0F, 10.0F, 90.0F));
}

TEST(FixedCurveSound, TakesRowsInAnyOrder) {
  FlowData fd = resistance_product(100.0F, 100.0F);
  set_sound(fd,
            {sound_row(1000.0F, 10000.0F, 90), sound_row(10.0F, 1.0F, 10), sound_row(100.0F, 100.0F, 30)});
  EXPECT_FLOAT_EQ(level_of(fd, 31.622777F, 0.0F).bands[0], 20.0F);
  EXPECT_FLOAT_EQ(level_of(fd, 316.22777F, 0.0F).bands[0], 60.0F);
}

TEST(FixedCurveSound, OfTwoRowsAtOneFlowPutsTheLaterOneAbove) {
  FlowData fd = resistance_product(100.0F, 100.0F);
  set_sound(fd, {sound_row(100.0F, 10.0F, 10), sound_row(100.0F, 1000.0F, 30)});
  expect_all(level_of(fd, 100.0F, 0.0F), 0, 20.0F);
}

TEST(ResistanceCurveSound, IsInterpolatedAlongTwoCurvesAndAcross) {
  const FlowData fd = curves_product();
  // At 100 Pa the curves pass 50 and 100 l/s with 50 and 40 dB.
  expect_all(level_of(fd, 100.0F, 100.0F), 0, 40.0F);
  expect_all(level_of(fd, 50.0F, 100.0F), 0, 50.0F);
  expect_all(level_of(fd, 70.710678F, 100.0F), 0, 45.0F);
}

TEST(ResistanceCurveSound, FormsItsFlowsFromAFloatQuotientAndADoubleRoot) {
  const FlowData fd = curves_product();
  const float dp = 111.0F;
  const float k0 = 100.0F / (50.0F * 50.0F);
  const float k1 = 25.0F / (50.0F * 50.0F);
  const float q0 = static_cast<float>(std::sqrt(static_cast<double>(dp / k0)));
  const float q1 = static_cast<float>(std::sqrt(static_cast<double>(dp / k1)));
  const float l0 = tavca_loglin_interp(100.0F, 400.0F, dp, 50.0F, 60.0F);
  const float l1 = tavca_loglin_interp(25.0F, 100.0F, dp, 30.0F, 40.0F);
  EXPECT_EQ(level_of(fd, 77.0F, dp).bands[2], tavca_loglin_interp(q0, q1, 77.0F, l0, l1));
}

TEST(ResistanceCurveSound, HoldsThePressureInsideTheDampersRange) {
  const FlowData fd = curves_product();
  EXPECT_EQ(level_of(fd, 100.0F, 9999.0F).bands[0], level_of(fd, 100.0F, 400.0F).bands[0]);
  EXPECT_EQ(level_of(fd, 100.0F, 1.0F).bands[0], level_of(fd, 100.0F, 25.0F).bands[0]);
}

TEST(ResistanceCurveSound, LetsTheLowerLimitWinWhereTheLimitsCross) {
  FlowData fd = curves_product();
  fd.kind = 13;
  fd.dpmin = 100.0F;
  fd.dpmax = 50.0F;
  expect_all(level_of(fd, 100.0F, 75.0F), 0, 40.0F);
}

TEST(ResistanceCurveSound, TestsOnlyTheChosenCurvesForTwoRows) {
  FlowData fd = curves_product();
  set_sound(fd, {sound_row(50.0F, 100.0F, 50), sound_row(100.0F, 400.0F, 60), sound_row(50.0F, 25.0F, 30),
                 sound_row(100.0F, 100.0F, 40), sound_row(100.0F, 25.0F, 20)});
  expect_failure(level_of(fd, 100.0F, 50.0F), -25);
  expect_all(level_of(fd, 100.0F, 100.0F), 0, 40.0F);
}

TEST(FlowGroupSound, IsInterpolatedAtTwoFlowsAndAcross) {
  const FlowData fd = groups_product();
  expect_all(level_of(fd, 50.0F, 20.0F), 0, 20.0F);
  expect_all(level_of(fd, 100.0F, 200.0F), 0, 50.0F);
  expect_all(level_of(fd, 70.710678F, 63.245553F), 0, 35.0F);
}

TEST(FlowGroupSound, AboveTheHighestFlowGainsThirtyDecibelsPerDecade) {
  const FlowData fd = groups_product();
  expect_all(level_of(fd, 200.0F, 200.0F), 0, 50.0F + static_cast<float>(30.0 * std::log10(2.0)));
  EXPECT_NEAR(level_of(fd, 200.0F, 200.0F).bands[0], 59.03, 0.005);
  expect_all(level_of(fd, 1e6F, 200.0F), 0, 99.0F);
}

TEST(FlowGroupSound, BelowTheLowestPressureLosesAndEndsAtZero) {
  const FlowData fd = groups_product();
  expect_all(level_of(fd, 50.0F, 10.0F), 0, 20.0F - static_cast<float>(30.0 * std::log10(2.0)));
  expect_all(level_of(fd, 50.0F, 1.0F), 0, 0.0F);
}

TEST(FlowGroupSound, AddsBothWaysOutside) {
  const FlowData fd = groups_product();
  const auto lg = [](float x) { return std::log10(static_cast<double>(x)); };
  const float by_pressure = static_cast<float>(30.0 * (lg(333.0F) - lg(200.0F)));
  const float by_flow = static_cast<float>(30.0 * (lg(33.3F) - lg(50.0F)));
  EXPECT_EQ(level_of(fd, 33.3F, 333.0F).bands[0], (by_pressure + by_flow) + 40.0F);
}

TEST(FlowGroupSound, OfNoPressureEndsAtZero) {
  expect_all(level_of(groups_product(), 50.0F, 0.0F), 0, 0.0F);
}

TEST(FlowGroupSound, OfAnEndlessFlowFails) {
  FlowData fd = groups_product();
  constexpr float kEndless = std::numeric_limits<float>::infinity();
  set_sound(fd, {sound_row(50.0F, 20.0F, 20), sound_row(50.0F, 200.0F, 40), sound_row(kEndless, 20.0F, 30),
                 sound_row(kEndless, 200.0F, 50)});
  expect_failure(level_of(fd, 70.0F, 100.0F), -34);
}

TEST(FlowGroupSound, IsHeldAtNinetyNineBeforeTheWayOutsideCounts) {
  FlowData fd = groups_product();
  set_sound(fd, {sound_row(50.0F, 20.0F, 120), sound_row(50.0F, 200.0F, 120), sound_row(100.0F, 20.0F, 120),
                 sound_row(100.0F, 200.0F, 120)});
  expect_all(level_of(fd, 50.0F, 10.0F), 0, 99.0F - static_cast<float>(30.0 * std::log10(2.0)));
}

TEST(FlowGroupSound, OfAFanWorksTheSameWay) {
  FlowData fd = groups_product();
  fd.kind = 40;
  expect_all(level_of(fd, 70.710678F, 63.245553F), 0, 35.0F);
}

TEST(FlowGroupSound, TakesTheParameterTermOffTheLimitedPressure) {
  FlowData fd = groups_product();
  add_pressure_term(fd, 0.004F);  // 10 Pa at 50 l/s: the limits become 30 and 210 Pa
  expect_all(level_of(fd, 50.0F, 30.0F), 0, 20.0F);
  expect_all(level_of(fd, 50.0F, 210.0F), 0, 40.0F);
}

TEST(SizeTerm, ComesAfterTheLimits) {
  FlowData fd = groups_product();
  fd.lwsizecoef = 3.0F;
  const DuctSize duct = {1, 500, 200};  // 0.1 m2: -10 dB
  for (auto& row : fd.lwpoints) row = sound_row(row.qv, row.dp, 5);
  expect_all(level_of(fd, 70.0F, 100.0F, &duct), 0, -5.0F);
}

// The coefficient is in dB for each doubling of the area, which counts as 0.3 of a decade, from 1 m2 on.
TEST(SizeTerm, IsTheCoefficientForEachDoublingOfTheArea) {
  FlowData fd = groups_product();
  fd.lwsizecoef = 3.0F;
  const DuctSize one = {1, 1000, 1000};
  const DuctSize two = {1, 2000, 1000};
  const DuctSize ten = {1, 10000, 1000};
  expect_all(level_of(fd, 50.0F, 20.0F, &one), 0, 20.0F);
  EXPECT_NEAR(level_of(fd, 50.0F, 20.0F, &two).bands[0], 23.0, 0.02);
  expect_all(level_of(fd, 50.0F, 20.0F, &ten), 0, 30.0F);
}

TEST(SizeTerm, OfADuctWithoutAreaLeavesOutTheParameterTermToo) {
  FlowData fd = groups_product();
  fd.lwsizecoef = 3.0F;
  add_parameter(fd, "P", {entry("1", 0.0F, 7)});
  tavca_param_setvalue(&fd, "P", "1");
  const DuctSize none = {0, 0, 0};
  expect_all(level_of(fd, 50.0F, 20.0F, &none), 0, 20.0F);
  expect_all(level_of(fd, 50.0F, 20.0F, nullptr), 0, 20.0F);
  const DuctSize duct = {1, 500, 200};
  expect_all(level_of(fd, 50.0F, 20.0F, &duct), 0, 17.0F);
}

TEST(SizeTerm, OfASmallCoefficientIsNoneAndDoesNotLookAtTheDuct) {
  FlowData fd = groups_product();
  fd.lwsizecoef = 0.05F;
  add_parameter(fd, "P", {entry("1", 0.0F, 7)});
  tavca_param_setvalue(&fd, "P", "1");
  expect_all(level_of(fd, 50.0F, 20.0F, nullptr), 0, 27.0F);
}

TEST(SizeTerm, OfANegativeCoefficientCounts) {
  FlowData fd = groups_product();
  fd.lwsizecoef = -3.0F;
  const DuctSize duct = {1, 500, 200};
  expect_all(level_of(fd, 50.0F, 20.0F, &duct), 0, 30.0F);
}

TEST(SoundPower, ReadsNoMoreRowsThanTheRecordHolds) {
  FlowData fd = fixed_product();
  for (int row = 2; row < TAVD_LW_ROWS; ++row) fd.lwpoints[row] = fd.lwpoints[row % 2];
  fd.nlw = 32767;
  expect_all(level_of(fd, 100.0F, 0.0F), 0, 46.0F);
}

TEST(SoundPower, OfOddRequestsAndRowsStaysInsideTheTable) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float inf = std::numeric_limits<float>::infinity();
  for (const FlowData& plain : {fixed_product(), curves_product(), groups_product()}) {
    for (float odd : {nan, inf, -inf, 3e38F}) {
      FlowData fd = plain;
      EXPECT_LE(level_of(fd, odd, 100.0F).code, 0);
      EXPECT_LE(level_of(fd, 100.0F, odd).code, 0);
      for (int row = 0; row < TAVD_LW_ROWS; ++row) fd.lwpoints[row] = sound_row(odd, odd, 40);
      fd.nlw = TAVD_LW_ROWS;
      EXPECT_LE(level_of(fd, 100.0F, 100.0F).code, 0);
    }
  }
}

TEST(Attenuation, OfAProductWithOneValueIsThatValue) {
  FlowData fd = product(10);
  for (int band = 0; band < 8; ++band) fd.dlw[band] = static_cast<std::uint8_t>(200 + band);
  fd.ndlw = 1;
  add_parameter(fd, "P", {entry("1", 0.0F, 0, 7)});
  tavca_param_setvalue(&fd, "P", "1");
  const Level level = attenuation_of(fd, 0.0F, 0.0F);
  EXPECT_EQ(level.code, 0);
  for (int band = 0; band < 8; ++band) EXPECT_EQ(level.bands[band], 207.0F + static_cast<float>(band));
}

TEST(Attenuation, OfOneRowIsThatRow) {
  FlowData fd = product(10);
  fd.ndlwpoints = put(fd.dlwpoints, {attenuation_row(1.0F, 12)});
  expect_all(attenuation_of(fd, 0.0F, 0.0F), 0, 12.0F);
}

TEST(Attenuation, OfADamperReadsTwoRowsOfItsTableAndExtendsTheirLine) {
  FlowData fd = curves_product();
  fd.ndlwpoints =
      put(fd.dlwpoints, {attenuation_row(1.0F, 10), attenuation_row(2.0F, 20), attenuation_row(3.0F, 99)});
  expect_all(attenuation_of(fd, 100.0F, 200.0F), 0, 15.0F);
  expect_all(attenuation_of(fd, 100.0F, 50.0F), 0, 25.0F);
  expect_all(attenuation_of(fd, 100.0F, 20.0F), 0, 30.0F);   // below the damper's table: its last position
  expect_all(attenuation_of(fd, 100.0F, 500.0F), 0, 10.0F);  // above it: its first one
}

TEST(Attenuation, FallsBelowZeroOnTheExtendedLine) {
  FlowData fd = curves_product();
  fd.ndlwpoints = put(fd.dlwpoints, {attenuation_row(1.0F, 20), attenuation_row(1.5F, 10)});
  expect_all(attenuation_of(fd, 100.0F, 20.0F), 0, -20.0F);
}

TEST(Attenuation, OfADamperWithoutSolutionIsThatOfTheFirstRow) {
  FlowData fd = curves_product();
  fd.ndlwpoints = put(fd.dlwpoints, {attenuation_row(0.0F, 10), attenuation_row(1.0F, 20)});
  expect_all(attenuation_of(fd, 0.0F, 200.0F), 0, 10.0F);
}

TEST(Attenuation, OfARangeDeviceOrFanGoesByFlow) {
  for (int kind : {30, 40}) {
    FlowData fd = product(kind);
    fd.ndlwpoints = put(fd.dlwpoints, {attenuation_row(100.0F, 10), attenuation_row(200.0F, 20)});
    expect_all(attenuation_of(fd, 150.0F, 0.0F), 0, 15.0F);
    expect_all(attenuation_of(fd, 300.0F, 0.0F), 0, 30.0F);
    expect_all(attenuation_of(fd, 0.0F, 0.0F), 0, 0.0F);
  }
}

TEST(Attenuation, OfATableThatCannotAnswerIsZeroWithoutTheParameterTerm) {
  FlowData fd = product(12);
  fd.ndlwpoints = put(fd.dlwpoints, {attenuation_row(1.0F, 10), attenuation_row(2.0F, 20)});
  add_parameter(fd, "P", {entry("1", 0.0F, 0, 7)});
  tavca_param_setvalue(&fd, "P", "1");
  expect_all(attenuation_of(fd, 100.0F, 100.0F), 0, 0.0F);
  fd.kind = 30;
  fd.dlwpoints[1].pos = 1.0F;
  expect_all(attenuation_of(fd, 100.0F, 100.0F), 0, 0.0F);
  fd.ndlwpoints = 0;
  expect_all(attenuation_of(fd, 100.0F, 100.0F), 0, 0.0F);
  fd.ndlwpoints = -1;
  expect_all(attenuation_of(fd, 100.0F, 100.0F), 0, 0.0F);
}

TEST(Attenuation, OfARecordWithoutFlowDataIsZero) {
  FlowData fd = product(10);
  fd.dlw[0] = 10;
  fd.ndlw = 1;
  fd.nhdd = 0;
  expect_all(attenuation_of(fd, 100.0F, 100.0F), 0, 0.0F);
  Level level;
  EXPECT_EQ(tavca_dlw(nullptr, 100.0F, 100.0F, level.bands), 0);
  EXPECT_EQ(level.bands[0], 0.0F);
  EXPECT_EQ(tavca_dlw(&fd, 100.0F, 100.0F, nullptr), 0);
}

// Rows that lie beyond the first pair replace its far end and leave the near one, so that a table in order is
// always interpolated from its first row.
TEST(SoundProperty, InATableInOrderTheFirstRowIsOneEndOfThePair) {
  tavdtest::Numbers numbers;
  for (int round = 0; round < 1000; ++round) {
    FlowData fd = resistance_product(100.0F, 100.0F);
    const int n = 2 + numbers.upto(20);
    const bool rising = round % 2 == 0;
    float qv = numbers.between(10.0F, 20.0F);
    std::vector<LwPoint> rows;
    for (int row = 0; row < n; ++row) {
      rows.push_back(sound_row(qv, 0.01F * qv * qv, 20 + numbers.upto(40)));
      qv *= rising ? numbers.between(1.05F, 1.3F) : numbers.between(0.8F, 0.95F);
    }
    std::copy(rows.begin(), rows.end(), fd.lwpoints);
    fd.nlw = static_cast<std::int16_t>(n);
    const float target = numbers.between(rows.front().qv, rows.back().qv);
    const auto reaches = [&](const LwPoint& row) { return rising ? row.qv >= target : row.qv <= target; };
    const auto found = std::find_if(rows.begin() + 1, rows.end(), reaches);
    const LwPoint other = found != rows.end() ? *found : rows.back();
    const LwPoint lo = rising ? rows.front() : other;
    const LwPoint hi = rising ? other : rows.front();
    const float expected = tavca_loglin_interp(lo.dp, hi.dp, tavca_dptotmin(&fd, target),
                                               static_cast<float>(lo.lw[0]), static_cast<float>(hi.lw[0]));
    const Level level = level_of(fd, target, 0.0F);
    EXPECT_EQ(level.code, 0);
    EXPECT_EQ(level.bands[0], expected);
  }
}

TEST(SoundProperty, AtAMeasuredPointTheLevelIsTheMeasuredOne) {
  const FlowData curves = curves_product();
  for (int row = 0; row < curves.nlw; ++row) {
    const LwPoint point = curves.lwpoints[row];
    EXPECT_NEAR(level_of(curves, point.qv, point.dp).bands[0], point.lw[0], 0.001) << row;
  }
  const FlowData groups = groups_product();
  for (int row = 0; row < groups.nlw; ++row) {
    const LwPoint point = groups.lwpoints[row];
    EXPECT_NEAR(level_of(groups, point.qv, point.dp).bands[0], point.lw[0], 0.001) << row;
  }
}

}  // namespace
