// The tick spacing of a linear axis.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "diagram/axis.h"

namespace tavd {
namespace {

float step(float lo, float hi) {
  float s = -99;
  EXPECT_TRUE(axis_step(lo, hi, &s));
  return s;
}

TEST(AxisStep, CutsTheRangeIntoFourToTenIntervals) {
  EXPECT_EQ(0.1F, step(0, 1));
  EXPECT_EQ(2.0F, step(0, 10.5F));
  EXPECT_EQ(50.0F, step(0, 500));
  EXPECT_EQ(200.0F, step(0, 1200));
  EXPECT_EQ(500.0F, step(0, 2600));
  EXPECT_EQ(0.001F, step(3, 3.005F));
}

TEST(AxisStep, FirstOfOneTwoFiveCounts) {
  // 10 intervals of 100, 5 of 200: the one comes first.
  EXPECT_EQ(100.0F, step(0, 1000));
  // 10.5 intervals of 100 are too many, so two.
  EXPECT_EQ(200.0F, step(0, 1050));
}

TEST(AxisStep, EqualOrFallingEndsLeaveFive) {
  float s = -99;
  EXPECT_FALSE(axis_step(7, 7, &s));
  EXPECT_EQ(5.0F, s);
  s = -99;
  EXPECT_FALSE(axis_step(8, 7, &s));
  EXPECT_EQ(5.0F, s);
  s = -99;
  EXPECT_FALSE(axis_step(std::numeric_limits<float>::quiet_NaN(), 7, &s));
  EXPECT_EQ(5.0F, s);
}

TEST(AxisStep, EndlessRangeLeavesFive) {
  float s = -99;
  EXPECT_TRUE(axis_step(0, std::numeric_limits<float>::infinity(), &s));
  EXPECT_EQ(5.0F, s);
}

TEST(AxisStep, IsAOneTwoFiveNumberOverAllMagnitudes) {
  for (double hi = 1e-6; hi < 1e12; hi *= 1.37) {
    const float range = static_cast<float>(hi);
    const float s = step(0, range);
    const double intervals = static_cast<double>(range) / static_cast<double>(s);
    EXPECT_GE(intervals, 3.9999) << hi;
    EXPECT_LE(intervals, 10.0001) << hi;
    const double decade = std::pow(10.0, std::floor(std::log10(static_cast<double>(s)) + 1e-6));
    const double digit = static_cast<double>(s) / decade;
    EXPECT_LT(std::min({std::fabs(digit - 1), std::fabs(digit - 2), std::fabs(digit - 5)}), 1e-5) << hi;
  }
}

}  // namespace
}  // namespace tavd
