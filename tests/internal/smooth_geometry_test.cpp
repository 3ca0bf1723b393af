// Directions, turns and crossings of the curve smoother, and the point that it puts between two others.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "diagram/smooth_geometry.h"

namespace tavd {
namespace {

constexpr float kPi = 3.1415927F;
constexpr float kTwoPi = 6.2831855F;
constexpr float kHalfPi = 1.5707964F;
constexpr float kUnwritten = -12345.0F;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(SmoothAngle, NormalAnglesRunFromZeroUpToAFullTurn) {
  EXPECT_EQ(0.0F, angle_norm(0.0F));
  EXPECT_EQ(1.0F, angle_norm(1.0F));
  EXPECT_EQ(0.0F, angle_norm(kTwoPi));
  EXPECT_EQ(kTwoPi - kHalfPi, angle_norm(-kHalfPi));
  EXPECT_NEAR(1.0F, angle_norm(1.0F + 3 * kTwoPi), 1e-5);
  EXPECT_NEAR(kTwoPi - 1.0F, angle_norm(-1.0F - 3 * kTwoPi), 1e-5);
}

// A full turn added to a tiny negative angle rounds to the full turn, which is 0.
TEST(SmoothAngle, TinyNegativeAngleIsZero) {
  EXPECT_EQ(0.0F, angle_norm(-1e-9F));
}

TEST(SmoothDirection, RunsThroughTheFourQuarters) {
  EXPECT_EQ(0.0F, angle_of({0, 0}, {1, 0}));
  EXPECT_FLOAT_EQ(kPi / 4, angle_of({0, 0}, {1, 1}));
  EXPECT_FLOAT_EQ(3 * kPi / 4, angle_of({0, 0}, {-1, 1}));
  EXPECT_EQ(kPi, angle_of({0, 0}, {-1, 0}));
  EXPECT_FLOAT_EQ(5 * kPi / 4, angle_of({0, 0}, {-1, -1}));
  EXPECT_FLOAT_EQ(7 * kPi / 4, angle_of({0, 0}, {1, -1}));
}

TEST(SmoothDirection, StraightUpIsAQuarterTurnAndDownANegativeOne) {
  EXPECT_EQ(kHalfPi, angle_of({3, 1}, {3, 2}));
  EXPECT_EQ(-kHalfPi, angle_of({3, 2}, {3, 1}));
  EXPECT_EQ(kHalfPi, angle_of({3, 1}, {3, 1}));
}

// A ten-thousandth of the second point's x: 0.01 of 100.
TEST(SmoothDirection, PointsCountAsVerticalAtAnyScale) {
  EXPECT_EQ(kHalfPi, angle_of({100.005F, 1}, {100, 2}));
  EXPECT_NE(kHalfPi, angle_of({100.02F, 1}, {100, 2}));
  EXPECT_EQ(kHalfPi, angle_of({1.00005e-6F, 1}, {1e-6F, 2}));
  EXPECT_NEAR(3 * kPi / 4, angle_of({1.0002e-6F, 0}, {1e-6F, 2e-10F}), 1e-3);
  EXPECT_EQ(-kHalfPi, angle_of({-100.005F, 2}, {-100, 1}));
}

TEST(SmoothDirection, SecondPointAtZeroIsNeverVertical) {
  // The slope is infinite where x is the same, and what it gives comes out of the arc tangent.
  EXPECT_FLOAT_EQ(kHalfPi, angle_of({0, 1}, {0, 2}));
  EXPECT_FLOAT_EQ(3 * kHalfPi, angle_of({0, 2}, {0, 1}));
  EXPECT_FLOAT_EQ(kPi + std::atan(-1e6F), angle_of({1e-6F, 0}, {0, 1}));
}

TEST(SmoothTurn, TakesTheShorterWay) {
  EXPECT_FLOAT_EQ(0.5F, angle_delta(1.0F, 1.5F));
  EXPECT_FLOAT_EQ(-0.5F, angle_delta(1.5F, 1.0F));
  EXPECT_FLOAT_EQ(-0.5F, angle_delta(0.25F, kTwoPi - 0.25F));
  EXPECT_FLOAT_EQ(0.5F, angle_delta(kTwoPi - 0.25F, 0.25F));
  EXPECT_EQ(0.0F, angle_delta(2.0F, 2.0F));
}

TEST(SmoothTurn, HalfATurnKeepsItsSign) {
  EXPECT_EQ(kPi, angle_delta(0.0F, kPi));
  EXPECT_EQ(-kPi, angle_delta(kPi, 0.0F));
}

TEST(SmoothTurn, CopesWithTheNegativeAngleOfStraightDown) {
  EXPECT_FLOAT_EQ(kHalfPi, angle_delta(-kHalfPi, 0.0F));
  EXPECT_FLOAT_EQ(-kHalfPi, angle_delta(0.0F, -kHalfPi));
  EXPECT_FLOAT_EQ(0.5F, angle_delta(-kHalfPi, 3 * kHalfPi + 0.5F));
}

TEST(SmoothTangent, BisectsTheTwoChords) {
  EXPECT_FLOAT_EQ(kPi / 4, angle_through({0, 0}, {1, 0}, {1, 1}));
  EXPECT_FLOAT_EQ(kPi / 4, angle_through({0, 0}, {1, 1}, {2, 2}));
  // Down at 7/4 pi and up at 1/4 pi: level.
  const float level = angle_through({-1, 1}, {0, 0}, {1, 1});
  EXPECT_NEAR(0.0, std::sin(level), 1e-6);
  EXPECT_GT(std::cos(level), 0.0F);
}

class SmoothCross : public ::testing::Test {
 protected:
  int cross(CurvePoint p, float a1, CurvePoint q, float a2) {
    x = y = kUnwritten;
    return tangent_cross(p.x, p.y, a1, q.x, q.y, a2, &x, &y);
  }
  float x, y;
};

TEST_F(SmoothCross, OfTwoSlopes) {
  ASSERT_EQ(1, cross({0, 0}, kPi / 4, {2, 0}, 3 * kPi / 4));
  EXPECT_NEAR(1.0F, x, 1e-6);
  EXPECT_NEAR(1.0F, y, 1e-6);
}

TEST_F(SmoothCross, WithTheFirstVertical) {
  ASSERT_EQ(1, cross({3, 7}, kHalfPi, {1, 1}, kPi / 4));
  EXPECT_EQ(3.0F, x);
  EXPECT_FLOAT_EQ(3.0F, y);
}

TEST_F(SmoothCross, WithTheSecondVertical) {
  ASSERT_EQ(1, cross({1, 1}, kPi / 4, {3, 7}, 3 * kHalfPi));
  EXPECT_EQ(3.0F, x);
  EXPECT_FLOAT_EQ(3.0F, y);
}

TEST_F(SmoothCross, ParallelLinesHaveNone) {
  EXPECT_EQ(0, cross({0, 0}, kHalfPi, {1, 0}, -kHalfPi));
  EXPECT_EQ(0, cross({0, 0}, 1.0F, {1, 0}, 1.0F));
  EXPECT_EQ(0, cross({0, 0}, 0.25F, {1, 0}, 0.25F + kPi));
}

class SmoothBetween : public ::testing::Test {
 protected:
  // The point between (0, 0) and (2, 0), whose chord is level.
  std::optional<TangentPoint> level(float from, float to) {
    return between({{0, 0}, angle_norm(from)}, {{2, 0}, angle_norm(to)});
  }
};

TEST_F(SmoothBetween, StraightSpanIsHalved) {
  const auto p = between({{0, 0}, kPi / 4}, {{4, 4}, kPi / 4});
  ASSERT_TRUE(p);
  EXPECT_EQ(2.0F, p->at.x);
  EXPECT_EQ(2.0F, p->at.y);
  EXPECT_FLOAT_EQ(kPi / 4, p->tangent);
}

TEST_F(SmoothBetween, TurnsUnderATenThousandthOfPiAreNone) {
  ASSERT_TRUE(level(0.00031F, -0.00031F));
  EXPECT_EQ(0.0F, level(0.00031F, -0.00031F)->at.y);
  EXPECT_GT(level(0.00032F, -0.00032F)->at.y, 0.0F);
}

// Tangents at 45 degrees cross at (1, 1), one half of the chord away: the pull is 0.5 - (0.4 * 0.2) / 0.9.
TEST_F(SmoothBetween, ArcIsPulledTowardTheCrossing) {
  const auto p = level(kPi / 4, -kPi / 4);
  ASSERT_TRUE(p);
  EXPECT_NEAR(1.0, p->at.x, 1e-6);
  EXPECT_NEAR(0.5 - 0.08 / 0.9, p->at.y, 1e-6);
  EXPECT_NEAR(0.0, std::sin(p->tangent), 1e-6);
}

TEST_F(SmoothBetween, FlatArcIsPulledHalfTheWay) {
  // The crossing is 1 * tan 0.1 = 0.1003 above the middle, 0.05 chords.
  const auto p = level(0.1F, -0.1F);
  ASSERT_TRUE(p);
  EXPECT_NEAR(std::tan(0.1) / 2, p->at.y, 1e-6);
}

TEST_F(SmoothBetween, PullAtOneChordIsThreeTenths) {
  // tan a = 2: the crossing is 2 above the middle, one chord.
  const float a = std::atan(2.0F);
  const auto p = level(a, -a);
  ASSERT_TRUE(p);
  EXPECT_NEAR(2 * 0.3, p->at.y, 1e-5);
}

TEST_F(SmoothBetween, FarCrossingIsPulledLess) {
  // Two chords: 0.3 * 2^-0.68 is less than a half chord, 0.5 / 2.
  const float a = std::atan(4.0F);
  const auto p = level(a, -a);
  ASSERT_TRUE(p);
  EXPECT_NEAR(4 * 0.3 * std::pow(2.0, -0.68), p->at.y, 1e-5);
}

TEST_F(SmoothBetween, NewPointStaysWithinHalfAChordOfTheMiddle) {
  // Twenty chords: 0.3 * 20^-0.68 = 0.0391 is more than 0.5 / 20, so half a chord it is.
  const float a = std::atan(40.0F);
  const auto p = level(a, -a);
  ASSERT_TRUE(p);
  EXPECT_NEAR(1.0, p->at.y, 1e-4);
}

TEST_F(SmoothBetween, InflectionLiesOnTheChord) {
  // Turns of 0.3 and 0.2: 0.3 / 0.5 of the way. The tangent leans against the far one.
  const auto p = level(0.3F, 0.2F);
  ASSERT_TRUE(p);
  EXPECT_NEAR(2 * 0.6, p->at.x, 1e-5);
  EXPECT_EQ(0.0F, p->at.y);
  EXPECT_NEAR(kTwoPi - 0.1, p->tangent, 1e-5);
  // 0.2 and 0.3: the near one counts.
  EXPECT_NEAR(2 * 0.4, level(0.2F, 0.3F)->at.x, 1e-5);
  EXPECT_NEAR(kTwoPi - 0.1, level(0.2F, 0.3F)->tangent, 1e-5);
}

TEST_F(SmoothBetween, InflectionBeforeTheMiddleLeansAgainstTheNearTangent) {
  EXPECT_NEAR(2 * 0.45, level(0.225F, 0.275F)->at.x, 1e-5);
  EXPECT_NEAR(kTwoPi - 0.1125, level(0.225F, 0.275F)->tangent, 1e-5);
  EXPECT_NEAR(2 * 0.55, level(0.275F, 0.225F)->at.x, 1e-5);
  EXPECT_NEAR(kTwoPi - 0.1125, level(0.275F, 0.225F)->tangent, 1e-5);
}

TEST_F(SmoothBetween, InflectionStaysBetweenOneAndThreeQuarters) {
  EXPECT_EQ(0.5F, level(0.01F, 1.0F)->at.x);
  EXPECT_EQ(1.5F, level(1.0F, 0.01F)->at.x);
  for (float turn = 0.001F; turn < 1.5F; turn *= 1.3F) {
    for (const float sign : {-1.0F, 1.0F}) {
      const auto p = level(sign * turn, sign * 0.05F);
      ASSERT_TRUE(p);
      EXPECT_EQ(0.0F, p->at.y) << turn;
      EXPECT_GE(p->at.x, 0.5F) << turn;
      EXPECT_LE(p->at.x, 1.5F) << turn;
    }
  }
}

TEST_F(SmoothBetween, SpanFlatAtOneEndGetsTheDirectionOfItsChord) {
  // The start takes half of the turn at the other end: 0.1 up, to meet a tangent of 0.2 down:
  // y = tan 0.1 * x = tan 0.2 * (2 - x).
  const double x = 2 * std::tan(0.2) / (std::tan(0.1) + std::tan(0.2));
  const double y = std::tan(0.1) * x;
  const double ratio = std::hypot(x - 1, y) / 2;
  const double w = 0.5 - (ratio - 0.1) * 0.2 / 0.9;
  const auto start = level(0.0F, -0.2F);
  ASSERT_TRUE(start);
  EXPECT_NEAR(1 + (x - 1) * w, start->at.x, 1e-5);
  EXPECT_NEAR(y * w, start->at.y, 1e-5);
  EXPECT_EQ(0.0F, start->tangent);
  // The mirror image.
  const auto end = level(0.2F, 0.0F);
  ASSERT_TRUE(end);
  EXPECT_NEAR(1 - (x - 1) * w, end->at.x, 1e-5);
  EXPECT_NEAR(y * w, end->at.y, 1e-5);
  EXPECT_EQ(0.0F, end->tangent);
}

TEST_F(SmoothBetween, ParallelTangentsOnTheSameSideHaveNoPoint) {
  EXPECT_FALSE(level(kHalfPi, -kHalfPi));
  EXPECT_FALSE(level(-kHalfPi, kHalfPi));
}

TEST_F(SmoothBetween, NumbersThatAreNoneEnd) {
  for (const float bad : {kNaN, kInfinity, -kInfinity}) {
    const auto p = between({{bad, 0}, 0.5F}, {{1, 1}, 1.0F});
    if (p) {
      EXPECT_FALSE(std::isfinite(p->at.x) && std::isfinite(p->at.y));
    }
  }
}

}  // namespace
}  // namespace tavd
