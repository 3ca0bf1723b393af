#include <gtest/gtest.h>

#include <cmath>

#include "calc/interpolation.h"
#include "calc/parameter.h"
#include "support/products.h"

namespace {

using tavdtest::kNonsense;
using tavdtest::throw_row;

struct Fit {
  bool fits = false;
  float nL2 = kNonsense;
  float kL2 = kNonsense;
};

template <int N>
Fit fit(const QvL2Point (&points)[N], int n = N) {
  Fit f;
  f.fits = tavd::fit_power(points, n, &f.nL2, &f.kL2);
  return f;
}

struct Points {
  int code = 99;
  float out[4] = {kNonsense, kNonsense, kNonsense, kNonsense};
};

template <int N>
Points points_of(const ParL2Point (&table)[N], const char* value, int n = N) {
  Points p;
  p.code = tavd::param_l2_points(table, n, p.out, value);
  return p;
}

void expect_points(const Points& p, int code, float qv1, float L1, float qv2, float L2) {
  EXPECT_EQ(p.code, code);
  EXPECT_FLOAT_EQ(p.out[0], qv1);
  EXPECT_FLOAT_EQ(p.out[1], L1);
  EXPECT_FLOAT_EQ(p.out[2], qv2);
  EXPECT_FLOAT_EQ(p.out[3], L2);
}

TEST(ThrowFit, OfTwoPoints) {
  const Fit f = fit({{100.0F, 5.0F}, {200.0F, 8.0F}});
  EXPECT_TRUE(f.fits);
  EXPECT_NEAR(f.nL2, 0.678072, 5e-7);
  EXPECT_NEAR(f.kL2, 0.220205, 5e-7);
}

TEST(ThrowFit, OfOnePointIsProportional) {
  const Fit f = fit({{80.0F, 6.0F}});
  EXPECT_TRUE(f.fits);
  EXPECT_EQ(f.nL2, 1.0F);
  EXPECT_EQ(f.kL2, 6.0F / 80.0F);
}

TEST(ThrowFit, OfPointsWithoutFlowFailsWithZeros) {
  const Fit fits[] = {fit({{0.0F, 5.0F}}), fit({{9e-8F, 5.0F}, {200.0F, 8.0F}}),
                      fit({{100.0F, 5.0F}, {0.0F, 8.0F}}), fit({{100.0F, 5.0F}}, 0)};
  for (const Fit& f : fits) {
    EXPECT_FALSE(f.fits);
    EXPECT_EQ(f.nL2, 0.0F);
    EXPECT_EQ(f.kL2, 0.0F);
  }
}

TEST(ThrowPoints, BetweenTwoValuesBlendFlowsAndLines) {
  const ParL2Point table[] = {throw_row("10", 100.0F, 4.0F), throw_row("10", 200.0F, 8.0F),
                              throw_row("20", 120.0F, 12.0F), throw_row("20", 240.0F, 24.0F)};
  // Both lines are proportional: 0.04 and 0.1 m per l/s, half way 0.07.
  expect_points(points_of(table, "15"), 2, 110.0F, 110.0F * 0.07F, 220.0F, 220.0F * 0.07F);
  expect_points(points_of(table, "12.5"), 2, 105.0F, 105.0F * 0.055F, 210.0F, 210.0F * 0.055F);
}

TEST(ThrowPoints, BetweenTwoValuesAreTakenInDouble) {
  const ParL2Point table[] = {throw_row("10", 97.0F, 4.1F), throw_row("10", 203.0F, 7.7F),
                              throw_row("20", 119.0F, 9.3F), throw_row("20", 251.0F, 15.1F)};
  const auto wide = [](float x) { return static_cast<double>(x); };
  const auto lg = [&](float x) { return std::log10(wide(x)); };
  const double e1 = (lg(7.7F) - lg(4.1F)) / (lg(203.0F) - lg(97.0F));
  const double e2 = (lg(15.1F) - lg(9.3F)) / (lg(251.0F) - lg(119.0F));
  const double c1 = wide(4.1F) / std::pow(wide(97.0F), e1);
  const double c2 = wide(9.3F) / std::pow(wide(119.0F), e2);
  const double t = (wide(13.0F) - 10.0) / 10.0;
  const double q[2] = {97.0 + t * (119.0 - 97.0), 203.0 + t * (251.0 - 203.0)};
  const Points p = points_of(table, "13");
  EXPECT_EQ(p.code, 2);
  for (int i = 0; i < 2; ++i) {
    const double a = c1 * std::pow(q[i], e1);
    const double b = c2 * std::pow(q[i], e2);
    EXPECT_EQ(p.out[2 * i], static_cast<float>(q[i]));
    EXPECT_EQ(p.out[2 * i + 1], static_cast<float>(a + t * (b - a)));
  }
}

TEST(ThrowPoints, BelowTheTableAreRefusedAndAboveItHeld) {
  const ParL2Point table[] = {throw_row("10", 100.0F, 4.0F), throw_row("10", 200.0F, 8.0F),
                              throw_row("20", 120.0F, 12.0F), throw_row("20", 240.0F, 24.0F)};
  expect_points(points_of(table, "5"), -2, 0.0F, 0.0F, 0.0F, 0.0F);
  expect_points(points_of(table, "25"), 2, 120.0F, 12.0F, 240.0F, 24.0F);
}

TEST(ThrowPoints, OfAValueOfTheTableAreItsRows) {
  const ParL2Point table[] = {throw_row("10", 100.0F, 4.0F), throw_row("10", 200.0F, 8.0F),
                              throw_row("20", 120.0F, 12.0F), throw_row("20", 240.0F, 24.0F)};
  expect_points(points_of(table, "10"), 2, 100.0F, 4.0F, 200.0F, 8.0F);
  expect_points(points_of(table, "20.005"), 2, 120.0F, 12.0F, 240.0F, 24.0F);
}

TEST(ThrowPoints, OfOneRowPerValueBlendProportionalLines) {
  const ParL2Point table[] = {throw_row("10", 100.0F, 4.0F), throw_row("20", 120.0F, 12.0F)};
  // The upper value's length at the lower value's flow: 12/120*100 = 10; half way from 4: 7.
  expect_points(points_of(table, "15"), 1, 100.0F, 7.0F, 0.0F, 0.0F);
  expect_points(points_of(table, "10"), 1, 100.0F, 4.0F, 0.0F, 0.0F);
  expect_points(points_of(table, "99"), 1, 120.0F, 12.0F, 0.0F, 0.0F);
}

TEST(ThrowPoints, OfMixedRowsPerValueAreOne) {
  const ParL2Point table[] = {throw_row("10", 100.0F, 4.0F), throw_row("10", 200.0F, 8.0F),
                              throw_row("20", 120.0F, 12.0F)};
  expect_points(points_of(table, "15"), 1, 100.0F, 7.0F, 0.0F, 0.0F);
}

TEST(ThrowPoints, OfAValueWithManyRowsUseItsFirstTwo) {
  const ParL2Point table[] = {throw_row("10", 100.0F, 4.0F), throw_row("10", 200.0F, 8.0F),
                              throw_row("10", 300.0F, 99.0F), throw_row("20", 120.0F, 12.0F),
                              throw_row("20", 240.0F, 24.0F)};
  expect_points(points_of(table, "15"), 2, 110.0F, 110.0F * 0.07F, 220.0F, 220.0F * 0.07F);
}

TEST(ThrowPoints, OfLabelsAreTheFirstAndTheLastEqualRow) {
  const ParL2Point table[] = {throw_row("A", 1.0F, 2.0F), throw_row("\"b\"", 3.0F, 4.0F),
                              throw_row("B", 5.0F, 6.0F), throw_row("B", 7.0F, 8.0F)};
  expect_points(points_of(table, "b"), 2, 3.0F, 4.0F, 7.0F, 8.0F);
  expect_points(points_of(table, "a"), 1, 1.0F, 2.0F, 0.0F, 0.0F);
  expect_points(points_of(table, "c"), -2, 0.0F, 0.0F, 0.0F, 0.0F);
}

TEST(ThrowPoints, OfNoValueAreTheFirstRows) {
  const ParL2Point table[] = {throw_row("10", 100.0F, 4.0F), throw_row("20", 200.0F, 8.0F)};
  expect_points(points_of(table, ""), 2, 100.0F, 4.0F, 200.0F, 8.0F);
  expect_points(points_of(table, "", 1), 1, 100.0F, 4.0F, 0.0F, 0.0F);
  expect_points(points_of(table, "", 0), -1, 0.0F, 0.0F, 0.0F, 0.0F);
}

TEST(LinearInterpolation, IsTakenInFloatAndGuarded) {
  EXPECT_EQ(tavd::lin_interp(100.0F, 100.0F, 150.0F, 3.0F, 7.0F), 3.0F);
  EXPECT_FLOAT_EQ(tavd::lin_interp(100.0F, 200.0F, 200.0F, 3.0F, 7.0F), 7.0F);
  EXPECT_EQ(tavd::lin_interp(0.1F, 33.3F, 7.77F, 41.7F, 0.3F),
            41.7F + ((0.3F - 41.7F) / (33.3F - 0.1F)) * (7.77F - 0.1F));
  EXPECT_TRUE(std::isnan(tavd::lin_interp(0.0F, 0.0F, 0.0F, 3.0F, 7.0F)));
}

}  // namespace
