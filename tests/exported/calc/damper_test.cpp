#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/products.h"

namespace {

using tavdtest::add_pressure_term;
using tavdtest::damper_product;
using tavdtest::kNonsense;
using tavdtest::product;
using tavdtest::resistance_product;

struct Position {
  int code = 99;
  float pos = kNonsense;
};

Position stepless(const FlowData& fd, float qv, float dp) {
  Position p;
  p.code = tavca_damper_pos(&fd, qv, dp, &p.pos);
  return p;
}

Position stepped(const FlowData& fd, float qv, float dp) {
  Position p;
  p.code = tavca_damper_pos_fixed(&fd, qv, dp, &p.pos);
  return p;
}

void expect_position(const Position& p, int code, float pos) {
  EXPECT_EQ(p.code, code);
  EXPECT_EQ(p.pos, pos);
}

// Resistances 0.04, 0.01 and 0.0025 at positions 1, 2 and 3.
FlowData damper() {
  return damper_product({{1.0F, 100.0F, 400.0F}, {2.0F, 100.0F, 100.0F}, {3.0F, 100.0F, 25.0F}});
}

FlowData falling_damper() {
  return damper_product({{3.0F, 100.0F, 400.0F}, {2.0F, 100.0F, 100.0F}, {1.0F, 100.0F, 25.0F}});
}

TEST(DamperPressure, BetweenTwoRowsIsTheGeometricMean) {
  const FlowData fd = damper();
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 1.5F), 200.0F);
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 200.0F, 2.0F), 400.0F);
  EXPECT_EQ(tavca_dptot_damperpos(&fd, 80.0F, 1.3F),
            tavca_linlog_interp(1.0F, 2.0F, 1.3F, (400.0F * 80.0F * 80.0F) / (100.0F * 100.0F),
                                (100.0F * 80.0F * 80.0F) / (100.0F * 100.0F)));
}

TEST(DamperPressure, HoldsThePositionInsideTheTable) {
  const FlowData fd = damper();
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 0.0F), 400.0F);
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 7.0F), 25.0F);
  const FlowData falling = falling_damper();
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&falling, 100.0F, 0.0F), 25.0F);
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&falling, 100.0F, 7.0F), 400.0F);
}

TEST(DamperPressure, OfADamperByVelocityGoesByItsTableToo) {
  FlowData fd = damper();
  fd.kind = TAVD_KIND_DAMPER_VELOCITY;
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 1.5F), 200.0F);
  const Position position = stepless(fd, 100.0F, 100.0F);
  EXPECT_EQ(position.code, 0);
  EXPECT_FLOAT_EQ(position.pos, 2.0F);
}

TEST(DamperPressure, OfAProductWithoutDamperIsItsOnePressure) {
  const FlowData fd = resistance_product(100.0F, 50.0F);
  EXPECT_EQ(tavca_dptot_damperpos(&fd, 70.0F, 2.0F), tavca_dptotmin(&fd, 70.0F));
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 70.0F, 2.0F), 24.5F);
}

TEST(DamperPressure, OfARangeWithoutTableIsZeroAndHasNoPosition) {
  FlowData fd = product(13);
  add_pressure_term(fd, 0.01F);
  EXPECT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 1.5F), 0.0F);
  expect_position(stepless(fd, 100.0F, 50.0F), 2, 0.0F);
  expect_position(stepped(fd, 100.0F, 50.0F), 2, 0.0F);
}

TEST(DamperPressure, OfOneRowIgnoresThePosition) {
  FlowData fd = damper_product({{5.0F, 100.0F, 50.0F}});
  EXPECT_EQ(tavca_dptot_damperpos(&fd, 30.0F, -9.0F), (50.0F * 30.0F * 30.0F) / (100.0F * 100.0F));
  add_pressure_term(fd, 0.01F);
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 5.0F), 150.0F);
}

TEST(DamperPressure, NeedsFlowsInTheFirstRowAndInItsBracket) {
  const FlowData first = damper_product({{1, 0.0F, 400.0F}, {2, 100.0F, 100.0F}});
  EXPECT_EQ(tavca_dptot_damperpos(&first, 100.0F, 1.5F), 0.0F);
  const FlowData middle =
      damper_product({{1, 100.0F, 400.0F}, {2, 0.0F, 100.0F}, {3, 100.0F, 25.0F}, {4, 100.0F, 9.0F}});
  EXPECT_EQ(tavca_dptot_damperpos(&middle, 100.0F, 1.5F), 0.0F);
  EXPECT_EQ(tavca_dptot_damperpos(&middle, 100.0F, 2.5F), 0.0F);
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&middle, 100.0F, 3.5F), 15.0F);
}

TEST(DamperPressure, AllowsSmallerFlowsThanTheSolvers) {
  const FlowData fd = damper_product({{1, 5e-7F, 400.0F}, {2, 5e-7F, 100.0F}});
  EXPECT_GT(tavca_dptot_damperpos(&fd, 1.0F, 1.5F), 0.0F);
  expect_position(stepless(fd, 1.0F, 10.0F), -5, 0.0F);
}

TEST(DamperPressure, CountsEqualEndsAsRising) {
  const FlowData fd = damper_product({{2, 100.0F, 400.0F}, {3, 100.0F, 100.0F}, {2, 100.0F, 25.0F}});
  // The position is held at 2; the scan stops before row 1 lies above it.
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 2.5F), 400.0F);
}

TEST(DamperPressure, StaysInsideTheTableWhateverTheRecordClaims) {
  FlowData fd = product(20);
  for (int i = 0; i < TAVD_DAMPER_ROWS; ++i) {
    fd.damper[i] = {static_cast<float>(i + 1), 100.0F, 400.0F / static_cast<float>(i + 1)};
  }
  fd.ndamper = 32767;
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 99.0F), 20.0F);
  expect_position(stepless(fd, 100.0F, 1.0F), -1, 20.0F);
  expect_position(stepped(fd, 100.0F, 1.0F), -1, 20.0F);
  fd.ndamper = -32768;
  EXPECT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 99.0F), 0.0F);
  expect_position(stepless(fd, 100.0F, 50.0F), -3, 0.0F);
  expect_position(stepped(fd, 100.0F, 50.0F), -3, 0.0F);
}

TEST(DamperPosition, BetweenTwoRowsGoesByTheLogarithmOfPressure) {
  const Position p = stepless(damper(), 100.0F, 200.0F);
  EXPECT_EQ(p.code, 0);
  EXPECT_FLOAT_EQ(p.pos, 1.5F);
}

TEST(DamperPosition, IsSolvedInDoubleAndNarrowedOnce) {
  const FlowData fd = damper_product({{1.1F, 97.0F, 391.0F}, {2.7F, 103.0F, 77.0F}});
  const auto lg = [](float x) { return std::log10(static_cast<double>(x)); };
  const float qv = 88.0F;
  const float dpa = (391.0F * qv * qv) / (97.0F * 97.0F);
  const float dpb = (77.0F * qv * qv) / (103.0F * 103.0F);
  for (float dp : {70.0F, 123.4F, 250.0F}) {
    const double t = (lg(dp) - lg(dpb)) / (lg(dpa) - lg(dpb));
    const double pos =
        static_cast<double>(2.7F) + t * (static_cast<double>(1.1F) - static_cast<double>(2.7F));
    expect_position(stepless(fd, qv, dp), 0, static_cast<float>(pos));
  }
}

TEST(DamperPosition, DemandUpToOnePercentAboveFirstRowExtrapolates) {
  const Position p = stepless(damper(), 100.0F, 403.0F);
  EXPECT_EQ(p.code, 0);
  EXPECT_LT(p.pos, 1.0F);
  EXPECT_NEAR(p.pos, 1.0 - std::log10(403.0 / 400.0) / std::log10(4.0), 1e-5);
  expect_position(stepless(damper(), 100.0F, 405.0F), 1, 1.0F);
}

TEST(DamperPosition, DemandUpToOnePercentBelowLastRowIsHeldThere) {
  expect_position(stepless(damper(), 100.0F, 24.9F), 0, 3.0F);
  expect_position(stepless(damper(), 100.0F, 25.0F), 0, 3.0F);
}

TEST(DamperPosition, OfAFallingTableIsTheInverseOfItsPressure) {
  const FlowData fd = falling_damper();
  const Position p = stepless(fd, 100.0F, 200.0F);
  EXPECT_EQ(p.code, 0);
  EXPECT_FLOAT_EQ(p.pos, 2.5F);
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 2.5F), 200.0F);
}

TEST(DamperPosition, BetweenRowsOfOnePressureIsTheLowerRow) {
  // The first row lies within 1 % of the demand, so that the bracket is the first pair.
  const FlowData fd = damper_product({{1.0F, 1.0F, 1e-5F}, {2.0F, 1.0F, 9.95e-6F}, {3.0F, 1.0F, 9.9e-6F}});
  expect_position(stepless(fd, 1.0F, 1.0E-5F), 0, 2.0F);
}

TEST(SteppedDamperPosition, IsTheNearestRowByPressureRatio) {
  expect_position(stepped(damper(), 100.0F, 150.0F), 0, 2.0F);
  expect_position(stepped(damper(), 100.0F, 300.0F), 0, 1.0F);
  expect_position(stepped(damper(), 100.0F, 201.0F), 0, 1.0F);
  expect_position(stepped(damper(), 100.0F, 199.0F), 0, 2.0F);
  expect_position(stepped(damper(), 100.0F, 30.0F), 0, 3.0F);
}

TEST(SteppedDamperPosition, OnATieIsTheEarlierRow) {
  const FlowData fd = damper_product(
      {{1.0F, 100.0F, 400.0F}, {2.0F, 100.0F, 100.0F}, {2.5F, 100.0F, 100.0F}, {3.0F, 100.0F, 25.0F}});
  expect_position(stepped(fd, 100.0F, 100.0F), 0, 2.0F);
}

TEST(SteppedDamperPosition, OfTwoRowsIsInterpolated) {
  const FlowData fd = damper_product({{1.0F, 100.0F, 400.0F}, {2.0F, 100.0F, 100.0F}});
  const Position p = stepped(fd, 100.0F, 200.0F);
  EXPECT_EQ(p.code, 0);
  EXPECT_FLOAT_EQ(p.pos, 1.5F);
  const FlowData one = damper_product({{1.0F, 100.0F, 400.0F}});
  expect_position(stepped(one, 100.0F, 400.0F), 0, 1.0F);
}

TEST(DamperRequest, TakesANullOutput) {
  const FlowData fd = damper();
  EXPECT_EQ(tavca_damper_pos(&fd, 100.0F, 200.0F, nullptr), 0);
}

TEST(DamperRequest, TakesTheParameterTermOutOfTheDemand) {
  FlowData fd = damper();
  add_pressure_term(fd, 0.01F);
  const Position p = stepless(fd, 100.0F, 300.0F);
  EXPECT_EQ(p.code, 0);
  EXPECT_FLOAT_EQ(p.pos, 1.5F);
  EXPECT_FLOAT_EQ(tavca_dptot_damperpos(&fd, 100.0F, 1.5F), 300.0F);
  expect_position(stepped(fd, 100.0F, 250.0F), 0, 2.0F);
}

TEST(DamperRequest, WithATermLargerThanTheDemandLeavesTheSmallestPressure) {
  // What is left is 1e-5 Pa, a resistance of 1e-9 at 100 l/s, between the two rows and half way by pressure
  // ratio.
  FlowData fd = damper_product({{1.0F, 100.0F, 1e-3F}, {2.0F, 100.0F, 1e-7F}});
  add_pressure_term(fd, 0.01F);
  const Position p = stepless(fd, 100.0F, 60.0F);
  EXPECT_EQ(p.code, 0);
  EXPECT_NEAR(p.pos, 1.5F, 1e-5F);
}

TEST(DamperRequest, WithATermBelowAThousandthOfAPascalStays) {
  FlowData fd = damper_product({{1.0F, 1.0F, 2.0F}, {2.0F, 1.0F, 1.0F}});
  const Position plain = stepless(fd, 1.0F, 1.5F);
  add_pressure_term(fd, 0.0005F);
  expect_position(stepless(fd, 1.0F, 1.5F), 0, plain.pos);
}

TEST(DamperRequest, MeetsABadRowBeyondTheBracketOnlyWhenStepped) {
  const FlowData fd =
      damper_product({{1, 100.0F, 400.0F}, {2, 100.0F, 100.0F}, {3, 0.0F, 50.0F}, {4, 100.0F, 25.0F}});
  const Position p = stepless(fd, 100.0F, 200.0F);
  EXPECT_EQ(p.code, 0);
  EXPECT_FLOAT_EQ(p.pos, 1.5F);
  expect_position(stepless(fd, 100.0F, 60.0F), -5, 0.0F);
  expect_position(stepped(fd, 100.0F, 200.0F), -5, 0.0F);
}

TEST(DamperRequest, OfNotANumberStaysInsideTheTable) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float inf = std::numeric_limits<float>::infinity();
  for (const FlowData& fd : {damper(), falling_damper()}) {
    for (float odd : {nan, inf}) {
      EXPECT_GE(stepless(fd, odd, 200.0F).code, -5);
      EXPECT_GE(stepless(fd, 100.0F, odd).code, -5);
      EXPECT_GE(stepped(fd, odd, 200.0F).code, -5);
      EXPECT_GE(stepped(fd, 100.0F, odd).code, -5);
      EXPECT_FALSE(std::isnan(stepped(fd, odd, 200.0F).pos));
    }
    EXPECT_TRUE(std::isnan(tavca_dptot_damperpos(&fd, 100.0F, nan)));
  }
}

// Dampers of 3 to 20 rows, positions rising or falling, resistances falling.
FlowData any_damper(tavdtest::Numbers& numbers) {
  FlowData fd = product(20);
  const int n = 3 + numbers.upto(17);
  const float step = numbers.upto(1) == 0 ? 1.0F : -1.0F;
  float k = numbers.between(0.5F, 5.0F);
  float pos = numbers.between(-5.0F, 25.0F);
  for (int i = 0; i < n; ++i) {
    const float qv = numbers.between(20.0F, 200.0F);
    fd.damper[i] = {pos, qv, k * qv * qv};
    k *= numbers.between(0.4F, 0.9F);
    pos += step * numbers.between(0.5F, 3.0F);
  }
  fd.ndamper = static_cast<std::int16_t>(n);
  return fd;
}

TEST(DamperProperty, PositionSolvedFromAPressureGivesThatPressureBack) {
  tavdtest::Numbers numbers;
  for (int i = 0; i < 2000; ++i) {
    const FlowData fd = any_damper(numbers);
    const float qv = numbers.between(10.0F, 300.0F);
    const float min = tavca_dptotmin(&fd, qv);
    const float max = tavca_dptotmax(&fd, qv);
    const float dp = numbers.between(min, max);
    const Position p = stepless(fd, qv, dp);
    ASSERT_EQ(p.code, 0);
    EXPECT_NEAR(tavca_dptot_damperpos(&fd, qv, p.pos), dp, dp * 1e-4F);
  }
}

TEST(DamperProperty, PressureOfAPositionGivesThatPositionBack) {
  tavdtest::Numbers numbers;
  for (int i = 0; i < 2000; ++i) {
    const FlowData fd = any_damper(numbers);
    const float qv = numbers.between(10.0F, 300.0F);
    const float first = fd.damper[0].pos;
    const float last = fd.damper[fd.ndamper - 1].pos;
    const float pos = numbers.between(first, last);
    const float dp = tavca_dptot_damperpos(&fd, qv, pos);
    const Position p = stepless(fd, qv, dp);
    ASSERT_EQ(p.code, 0);
    EXPECT_NEAR(p.pos, pos, 1e-3F);
  }
}

TEST(DamperProperty, SteppedPositionIsAlwaysOneOfTheTable) {
  tavdtest::Numbers numbers;
  for (int i = 0; i < 2000; ++i) {
    const FlowData fd = any_damper(numbers);
    const float qv = numbers.between(10.0F, 300.0F);
    const float dp = numbers.between(0.2F, 1.5F) * tavca_dptotmax(&fd, qv);
    const Position p = stepped(fd, qv, dp);
    ASSERT_GE(p.code, -1);
    ASSERT_LE(p.code, 1);
    const bool in_table = std::any_of(fd.damper, fd.damper + fd.ndamper,
                                      [&](const DamperPoint& row) { return row.pos == p.pos; });
    EXPECT_TRUE(in_table);
  }
}

TEST(DamperProperty, PressureRangeBracketsEveryPosition) {
  tavdtest::Numbers numbers;
  for (int i = 0; i < 2000; ++i) {
    FlowData fd = any_damper(numbers);
    if (i % 2 == 1) add_pressure_term(fd, 0.001F);
    const float qv = numbers.between(10.0F, 300.0F);
    const float dp = tavca_dptot_damperpos(&fd, qv, numbers.between(-50.0F, 80.0F));
    EXPECT_GE(dp, tavca_dptotmin(&fd, qv) * 0.99999F);
    EXPECT_LE(dp, tavca_dptotmax(&fd, qv) * 1.00001F);
  }
}

}  // namespace
