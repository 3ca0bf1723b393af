#include <gtest/gtest.h>

#include <limits>

#include "support/products.h"

namespace {

using tavdtest::add_pressure_term;
using tavdtest::fan_product;
using tavdtest::kNonsense;
using tavdtest::product;

struct Delivered {
  int code = 99;
  float total = kNonsense;
  float fan_static = kNonsense;
  float dynamic = kNonsense;
};

Delivered delivered(const FlowData* fd, float qv) {
  Delivered d;
  d.code = tavca_fan_dp(fd, qv, &d.total, &d.fan_static, &d.dynamic);
  return d;
}

FlowData fan() {
  FlowData fd = fan_product({{100.0F, 400.0F, 0.0F}, {200.0F, 300.0F, 0.0F}, {300.0F, 100.0F, 0.0F}});
  fd.ductarea = 0.05F;
  return fd;
}

TEST(FanPressure, OnTheCurveIsLinearBetweenItsPoints) {
  const FlowData fd = fan();
  const Delivered d = delivered(&fd, 150.0F);
  EXPECT_EQ(d.code, 0);
  EXPECT_EQ(d.total, 350.0F);
  EXPECT_EQ(d.dynamic, tavca_pdyn(150.0F, 0.05F, 0));
  EXPECT_FLOAT_EQ(d.dynamic, 5.4F);
  EXPECT_EQ(d.fan_static, 350.0F - d.dynamic);
}

TEST(FanPressure, BelowTheCurveGoesOnAsASystemLine) {
  const FlowData fd = fan();
  const Delivered d = delivered(&fd, 50.0F);
  EXPECT_EQ(d.code, -100);
  EXPECT_EQ(d.total, (400.0F / (100.0F * 100.0F)) * 50.0F * 50.0F);
  EXPECT_FLOAT_EQ(d.total, 100.0F);
  EXPECT_EQ(d.fan_static, d.total - d.dynamic);
}

TEST(FanPressure, OnAPointTakesTheBracketBelow) {
  // The point stands twice: the bracket below ends at its first pressure.
  const FlowData fd = fan_product({{100.0F, 400.0F, 0.0F}, {200.0F, 300.0F, 0.0F}, {200.0F, 250.0F, 0.0F}});
  EXPECT_EQ(delivered(&fd, 200.0F).total, 300.0F);
  const FlowData plain = fan();
  EXPECT_EQ(delivered(&plain, 200.0F).total, 300.0F);
  EXPECT_EQ(delivered(&plain, 100.0F).total, 400.0F);
  EXPECT_EQ(delivered(&plain, 300.0F).total, 100.0F);
}

TEST(FanPressure, OfAStaticCurveGainsTheDynamicPressure) {
  FlowData fd = fan();
  fd.kind100 = 40;
  const Delivered d = delivered(&fd, 150.0F);
  EXPECT_EQ(d.fan_static, 350.0F);
  EXPECT_EQ(d.total, 350.0F + d.dynamic);
}

TEST(FanPressure, ScalesTheParameterTermAlongTheSystemLine) {
  FlowData fd = fan();
  add_pressure_term(fd, 0.001F);
  const float dp1 = 400.0F + 0.001F * 50.0F * 50.0F;
  EXPECT_EQ(delivered(&fd, 50.0F).total, (dp1 / (100.0F * 100.0F)) * 50.0F * 50.0F);
  EXPECT_EQ(delivered(&fd, 150.0F).total, 350.0F + 0.001F * 150.0F * 150.0F);
}

TEST(FanPressure, TakesNullOutputs) {
  const FlowData fd = fan();
  EXPECT_EQ(tavca_fan_dp(&fd, 150.0F, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(tavca_fan_dp(nullptr, 150.0F, nullptr, nullptr, nullptr), -10);
}

TEST(FanPressure, ReadsNoMoreRowsThanTheRecordHolds) {
  FlowData fd = product(40);
  for (int i = 0; i < TAVD_FAN_ROWS; ++i) fd.fancurve[i] = {100.0F + static_cast<float>(i), 400.0F, 0.0F};
  fd.nfan = 32767;
  EXPECT_EQ(delivered(&fd, 119.0F).code, 0);
  EXPECT_EQ(delivered(&fd, 119.5F).code, -200);
  EXPECT_EQ(tavca_fan_op_check(&fd, 119.5F, 1.0F), -200);
}

TEST(FanPressure, OfNotANumberFindsNoBracket) {
  const FlowData fd = fan();
  const Delivered d = delivered(&fd, std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(d.code, 0);
  EXPECT_EQ(d.total, 0.0F);
}

TEST(FanOperatingPoint, OfAStaticCurveGainsTheDynamicPressure) {
  FlowData fd = fan();
  fd.kind100 = 40;
  EXPECT_EQ(tavca_fan_op_check(&fd, 150.0F, 355.0F), 0);
  EXPECT_EQ(tavca_fan_op_check(&fd, 150.0F, 355.5F), -300);
}

TEST(FanOperatingPoint, OnTheFansOwnPressureIsServed) {
  const FlowData fd = fan();
  for (float qv = 100.0F; qv <= 300.0F; qv += 7.0F) {
    const Delivered d = delivered(&fd, qv);
    ASSERT_EQ(d.code, 0);
    EXPECT_EQ(tavca_fan_op_check(&fd, qv, d.total * 0.9999F), 0) << qv;
    EXPECT_NE(tavca_fan_op_check(&fd, qv, d.total * 1.0001F), 0) << qv;
  }
}

}  // namespace
