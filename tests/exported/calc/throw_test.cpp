#include <gtest/gtest.h>

#include <cmath>

#include "support/products.h"

namespace {

using tavdtest::add_parameter;
using tavdtest::entry;
using tavdtest::product;
using tavdtest::put;
using tavdtest::throw_row;

FlowData terminal(std::initializer_list<QvL2Point> rows) {
  FlowData fd = product(10);
  fd.nqvL2 = put(fd.qvL2, rows);
  return fd;
}

FlowData terminal_by_value(std::initializer_list<ParL2Point> rows) {
  FlowData fd = product(10);
  fd.nparL2 = put(fd.parL2, rows);
  return fd;
}

float throw_of(const FlowData& fd, float qv, const char* value = "") {
  return tavca_L2_isothermal(&fd, qv, value);
}

TEST(Throw, FollowsThePowerLawThroughTwoPointsWithoutLimit) {
  const FlowData fd = terminal({{100.0F, 5.0F}, {200.0F, 8.0F}});
  EXPECT_NEAR(throw_of(fd, 150.0F), 6.582, 0.0005);
  EXPECT_NEAR(throw_of(fd, 400.0F), 12.8, 0.0005);
  EXPECT_FLOAT_EQ(throw_of(fd, 100.0F), 5.0F);
}

TEST(Throw, NarrowsExponentAndCoefficientBeforeTheyAreUsed) {
  const FlowData fd = terminal({{97.0F, 5.1F}, {211.0F, 8.3F}});
  const auto wide = [](float x) { return static_cast<double>(x); };
  const double n = (std::log10(wide(8.3F)) - std::log10(wide(5.1F))) /
                   (std::log10(wide(211.0F)) - std::log10(wide(97.0F)));
  const auto nL2 = static_cast<float>(n);
  const auto kL2 = static_cast<float>(wide(5.1F) / std::pow(wide(97.0F), n));
  for (float qv : {55.5F, 133.0F, 307.0F}) {
    EXPECT_EQ(throw_of(fd, qv), static_cast<float>(wide(kL2) * std::pow(wide(qv), wide(nL2))));
  }
}

TEST(Throw, OfOnePointIsProportionalToTheFlow) {
  const FlowData fd = terminal({{100.0F, 5.0F}});
  EXPECT_FLOAT_EQ(throw_of(fd, 250.0F), 12.5F);
}

TEST(Throw, UsesTheFirstTwoPointsOnly) {
  const FlowData two = terminal({{100.0F, 5.0F}, {200.0F, 8.0F}});
  const FlowData three = terminal({{100.0F, 5.0F}, {200.0F, 8.0F}, {0.0F, 99.0F}});
  EXPECT_EQ(throw_of(two, 150.0F), throw_of(three, 150.0F));
}

TEST(Throw, WithoutATableIsZero) {
  EXPECT_EQ(throw_of(product(10), 100.0F), 0.0F);
  EXPECT_EQ(tavca_L2_isothermal(nullptr, 100.0F, ""), 0.0F);
}

TEST(Throw, DoesNotTestForFlowData) {
  FlowData fd = terminal({{100.0F, 5.0F}});
  fd.nhdd = 0;
  EXPECT_FLOAT_EQ(throw_of(fd, 100.0F), 5.0F);
}

TEST(Throw, OfAValueBelowTheTableIsZeroThoughPlainPointsAreThere) {
  FlowData fd = terminal_by_value({throw_row("10", 100.0F, 5.0F), throw_row("20", 100.0F, 8.0F)});
  const QvL2Point point = {100.0F, 5.0F};
  fd.qvL2[0] = point;
  fd.nqvL2 = 1;
  EXPECT_EQ(throw_of(fd, 100.0F, "5"), 0.0F);
  EXPECT_EQ(throw_of(fd, 100.0F, "left"), 0.0F);
}

TEST(Throw, OfNoValueTakesTheFirstTwoRows) {
  const FlowData fd = terminal_by_value(
      {throw_row("10", 100.0F, 5.0F), throw_row("20", 200.0F, 8.0F), throw_row("30", 100.0F, 99.0F)});
  const FlowData plain = terminal({{100.0F, 5.0F}, {200.0F, 8.0F}});
  for (const char* value : {"", "      9", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(tavca_L2_isothermal(&fd, 150.0F, value), throw_of(plain, 150.0F));
  }
}

TEST(Throw, OfALabelTakesItsRows) {
  const FlowData fd = terminal_by_value({throw_row("\"L\"", 100.0F, 5.0F), throw_row("\"R\"", 100.0F, 8.0F),
                                         throw_row("\"R\"", 200.0F, 16.0F)});
  EXPECT_FLOAT_EQ(throw_of(fd, 100.0F, "l"), 5.0F);
  EXPECT_FLOAT_EQ(throw_of(fd, 150.0F, "R"), 12.0F);
}

TEST(Throw, OfNoFlowIsZero) {
  EXPECT_EQ(throw_of(terminal({{100.0F, 5.0F}, {200.0F, 8.0F}}), 0.0F), 0.0F);
}

TEST(Throw, IsHalvedByAFactorOfOneHalfAndLeftAloneByAFactorOfZero) {
  FlowData fd = terminal({{100.0F, 5.0F}});
  add_parameter(fd, "P", {entry("1", 0.0F, 0, 0, 0.5F), entry("2", 0.0F, 0, 0, 0.0F)});
  EXPECT_FLOAT_EQ(throw_of(fd, 100.0F), 5.0F);
  tavca_param_setvalue(&fd, "P", "1");
  EXPECT_FLOAT_EQ(throw_of(fd, 100.0F), 2.5F);
  tavca_param_setvalue(&fd, "P", "2");
  EXPECT_FLOAT_EQ(throw_of(fd, 100.0F), 5.0F);
}

TEST(Throw, OfPointsWithoutFlowIsZero) {
  EXPECT_EQ(throw_of(terminal({{0.0F, 5.0F}}), 100.0F), 0.0F);
  EXPECT_EQ(throw_of(terminal({{0.0F, 5.0F}, {200.0F, 8.0F}}), 100.0F), 0.0F);
  EXPECT_EQ(throw_of(terminal({{100.0F, 5.0F}, {0.0F, 8.0F}}), 100.0F), 0.0F);
}

TEST(Throw, OfAPointWithoutLengthTakesItsLogarithmUnguarded) {
  // lg 0 is minus infinity, and so is the exponent: an infinite coefficient times a power of 0.
  EXPECT_TRUE(std::isnan(throw_of(terminal({{100.0F, 5.0F}, {200.0F, 0.0F}}), 150.0F)));
}

TEST(Throw, StaysInsideTablesThatClaimTooManyRows) {
  FlowData fd = terminal({{100.0F, 5.0F}, {200.0F, 8.0F}});
  fd.nqvL2 = 32767;
  EXPECT_NEAR(throw_of(fd, 150.0F), 6.582, 0.0005);
  fd.nqvL2 = -1;
  EXPECT_EQ(throw_of(fd, 150.0F), 0.0F);

  FlowData by_value = product(10);
  for (int row = 0; row < TAVD_PARL2_ROWS; ++row) {
    by_value.parL2[row] = throw_row("7", 100.0F + static_cast<float>(row), 5.0F + static_cast<float>(row));
  }
  by_value.nparL2 = 32767;
  EXPECT_FLOAT_EQ(throw_of(by_value, 100.0F, "9999"), throw_of(by_value, 100.0F, "7"));
  EXPECT_EQ(throw_of(by_value, 100.0F, "x"), 0.0F);
  by_value.nparL2 = -32768;
  EXPECT_EQ(throw_of(by_value, 100.0F, "7"), 0.0F);
}

TEST(Throw, PassesThroughItsPoints) {
  tavdtest::Numbers numbers;
  for (int i = 0; i < 500; ++i) {
    const float q1 = numbers.between(1.0F, 300.0F);
    const float q2 = q1 * numbers.between(1.2F, 4.0F);
    const float L1 = numbers.between(0.5F, 20.0F);
    const float L2 = L1 * numbers.between(1.1F, 4.0F);
    const FlowData fd = terminal({{q1, L1}, {q2, L2}});
    EXPECT_NEAR(throw_of(fd, q1), L1, L1 * 2e-5F);
    EXPECT_NEAR(throw_of(fd, q2), L2, L2 * 2e-5F);
  }
}

}  // namespace
