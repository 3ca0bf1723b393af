// Windows's own logarithm takes the steps of the C library elsewhere, and WebAssembly's tangents those of
// Windows where they count. Here those steps stand beside the C library and beside each other.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

// In a namespace of its own: the library of this system has functions of the same names.
namespace in_browser {
#include "../../src/base/wasm/gwmath.h"
}

namespace {

namespace on_windows = in_browser::extended::tavd;
using on_windows::gwlog10;

TEST(LogarithmOnWindows, PowersOfTenAreWhole) {
  double power = 1.0;
  for (int i = 0; i <= 15; ++i, power *= 10.0) {
    EXPECT_EQ(gwlog10(power), i);
  }
  EXPECT_EQ(gwlog10(0.1), -1.0);
  EXPECT_EQ(gwlog10(0.001), -3.0);
}

TEST(LogarithmOnWindows, NoPlaceForZeroAndNegativeNumbers) {
  EXPECT_EQ(gwlog10(0.0), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(gwlog10(-1.0)));
  EXPECT_TRUE(std::isnan(gwlog10(std::numeric_limits<double>::quiet_NaN())));
  EXPECT_EQ(gwlog10(std::numeric_limits<double>::infinity()), std::numeric_limits<double>::infinity());
}

TEST(LogarithmOnWindows, EqualsThatOfTheCLibraryForFloats) {
  std::mt19937 random(20);
  std::uniform_real_distribution<double> decades(-6.0, 9.0);
  for (int i = 0; i < 200000; ++i) {
    const double x = static_cast<float>(std::pow(10.0, decades(random)));
    ASSERT_EQ(gwlog10(x), std::log10(x)) << x;
  }
}

TEST(LogarithmOnWindows, EqualsThatOfTheCLibraryForTheSmallestNumbers) {
  for (double x = std::numeric_limits<double>::denorm_min(); x < 1.0; x *= 3.0) {
    EXPECT_EQ(gwlog10(x), std::log10(x)) << x;
  }
}

float nearest(double x) {
  return static_cast<float>(x);
}

TEST(TangentsInTheBrowser, AreThoseOfWindowsAsFloats) {
  std::mt19937 random(18);
  std::uniform_real_distribution<double> decades(-6.0, 6.0);
  for (int i = 0; i < 200000; ++i) {
    const double x = static_cast<float>(std::pow(10.0, decades(random))) * (i % 2 == 0 ? 1 : -1);
    ASSERT_EQ(nearest(in_browser::tavd::gwatan(x)), nearest(on_windows::gwatan(x))) << x;
    const double angle = std::remainder(x, 8.0);
    ASSERT_EQ(nearest(in_browser::tavd::gwtan(angle)), nearest(on_windows::gwtan(angle))) << angle;
  }
}

// Halfway between two floats, and next to it: the double of the C library alone does not say which.
TEST(TangentsInTheBrowser, AreExactWhereTheNextDoubleIsAnotherFloat) {
  EXPECT_FALSE(in_browser::tavd::makes_one_float(1.0 + 0x1p-24));
  EXPECT_FALSE(in_browser::tavd::makes_one_float(std::nextafter(1.0 + 0x1p-24, 2.0)));
  EXPECT_TRUE(in_browser::tavd::makes_one_float(1.0 + 0x1p-26));
  EXPECT_TRUE(in_browser::tavd::makes_one_float(0.0));
  EXPECT_FALSE(in_browser::tavd::makes_one_float(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_EQ(std::signbit(in_browser::tavd::gwtan(-0.0)), true);
}

}  // namespace
