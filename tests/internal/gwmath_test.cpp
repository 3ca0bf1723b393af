// Windows's own logarithm takes the steps of the C library elsewhere. Here those steps stand beside the C
// library.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

// In a namespace of its own: the library of this system has functions of the same names.
namespace on_windows {
#include "../../src/base/win32/gwmath.h"
}

namespace {

using on_windows::tavd::gwlog10;

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

}  // namespace
