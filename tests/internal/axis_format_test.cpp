// Width and decimals of tick labels.
#include <gtest/gtest.h>

#include <limits>

#include "diagram/axis.h"

namespace tavd {
namespace {

struct Format {
  std::int16_t len, des;
  bool operator==(const Format&) const = default;
};

Format format(float lo, float hi = 1000) {
  Format f{-99, -99};
  axis_format(lo, hi, &f.len, &f.des);
  return f;
}

TEST(AxisFormat, HalfHasOneDecimalAndFourCharacters) {
  EXPECT_EQ((Format{4, 1}), format(0.5F));
}

TEST(AxisFormat, FiveHasNoDecimalsAndThreeCharacters) {
  EXPECT_EQ((Format{3, 0}), format(5));
}

TEST(AxisFormat, TwoHundredFiftyHasFiveCharacters) {
  EXPECT_EQ((Format{5, 0}), format(250));
}

TEST(AxisFormat, EachPowerOfTenBelowOneAddsADecimal) {
  EXPECT_EQ((Format{3, 0}), format(1));
  EXPECT_EQ((Format{5, 2}), format(0.05F));
  EXPECT_EQ((Format{6, 3}), format(0.005F));
}

TEST(AxisFormat, DecimalsEndAtEight) {
  EXPECT_EQ((Format{11, 8}), format(0));
  EXPECT_EQ((Format{11, 8}), format(1e-20F));
  EXPECT_EQ((Format{11, 8}), format(-7));
}

TEST(AxisFormat, EachPowerOfTenAboveAddsACharacterUpToTen) {
  EXPECT_EQ((Format{4, 0}), format(10));
  EXPECT_EQ((Format{5, 0}), format(100));
  EXPECT_EQ((Format{13, 0}), format(1e20F));
}

TEST(AxisFormat, UpperEndIsNotRead) {
  EXPECT_EQ(format(20, 30), format(20, 1e9F));
}

TEST(AxisFormat, NumbersThatAreNoneEnd) {
  EXPECT_EQ((Format{3, 0}), format(std::numeric_limits<float>::quiet_NaN()));
  EXPECT_EQ((Format{13, 0}), format(std::numeric_limits<float>::infinity()));
}

}  // namespace
}  // namespace tavd
