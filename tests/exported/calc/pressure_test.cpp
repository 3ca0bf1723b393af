#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/messages.h"
#include "support/products.h"

namespace {

using tavdtest::add_pressure_term;
using tavdtest::curve_product;
using tavdtest::damper_product;
using tavdtest::kNonsense;
using tavdtest::Messages;
using tavdtest::product;
using tavdtest::range_product;
using tavdtest::resistance_product;
using testing::ElementsAre;
using testing::IsEmpty;

struct Range {
  int code = 99;
  float min = kNonsense;
  float max = kNonsense;
};

Range range_of(const FlowData& fd, float qv) {
  Range range;
  range.code = tavca_minmaxdptot(&fd, qv, &range.min, &range.max);
  return range;
}

FlowData measured_curve() {
  return curve_product({{10.0F, 20.0F}, {20.0F, 80.0F}, {40.0F, 160.0F}});
}

TEST(FloatingPressure, FollowsTheSquareLawOutsideItsPoints) {
  const FlowData fd = measured_curve();
  EXPECT_EQ(tavca_floating_dp(&fd, 5.0F), (20.0F / (10.0F * 10.0F)) * 5.0F * 5.0F);
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 5.0F), 5.0F);
  EXPECT_EQ(tavca_floating_dp(&fd, 80.0F), (160.0F / (40.0F * 40.0F)) * 80.0F * 80.0F);
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 80.0F), 640.0F);
}

TEST(FloatingPressure, LetsTheExponentFloatFromPairToPair) {
  const FlowData fd = measured_curve();
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 15.0F), 45.0F);   // exponent 2
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 30.0F), 120.0F);  // exponent 1
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 10.0F), 20.0F);
}

TEST(FloatingPressure, BetweenPointsIsTakenInDouble) {
  const FlowData fd = curve_product({{11.3F, 17.9F}, {23.1F, 70.3F}});
  const auto lg = [](float x) { return std::log10(static_cast<double>(x)); };
  for (float qv : {12.0F, 17.7F, 23.0F}) {
    const double e = (lg(70.3F) - lg(17.9F)) / (lg(23.1F) - lg(11.3F));
    const double c = static_cast<double>(70.3F) / std::pow(static_cast<double>(23.1F), e);
    EXPECT_EQ(tavca_floating_dp(&fd, qv), static_cast<float>(c * std::pow(static_cast<double>(qv), e)));
  }
}

TEST(FloatingPressure, AtExactlyTheLastFlowIsZeroWithoutAMessage) {
  const FlowData fd = measured_curve();
  Messages messages(1);
  EXPECT_EQ(tavca_floating_dp(&fd, 40.0F), 0.0F);
  EXPECT_THAT(messages.texts, IsEmpty());
}

TEST(FloatingPressure, OfOnePointFollowsTheSquareLawOnBothSidesAndIsZeroAtThePoint) {
  const FlowData fd = curve_product({{10.0F, 20.0F}});
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 5.0F), 5.0F);
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 20.0F), 80.0F);
  EXPECT_EQ(tavca_floating_dp(&fd, 10.0F), 0.0F);
}

TEST(FloatingPressure, WarnsOfABadRowInTheMiddleOnlyWhereItIsMet) {
  const FlowData fd = curve_product({{10.0F, 20.0F}, {20.0F, 80.0F}, {30.0F, 0.0F}, {40.0F, 320.0F}});
  {
    Messages messages(1);
    EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 15.0F), 45.0F);
    EXPECT_THAT(messages.texts, IsEmpty());
    EXPECT_EQ(tavca_floating_dp(&fd, 35.0F), 0.0F);
    EXPECT_THAT(messages.texts, ElementsAre("Invalid value in qvdppoint attribute"));
  }
  Messages off(0);
  EXPECT_EQ(tavca_floating_dp(&fd, 35.0F), 0.0F);
  EXPECT_THAT(off.texts, IsEmpty());
}

TEST(FloatingPressure, EndsAtABadRowThatIsTheFarEndOfItsBracket) {
  const FlowData fd = curve_product({{10.0F, 20.0F}, {20.0F, 0.0F}, {40.0F, 320.0F}});
  Messages messages(1);
  EXPECT_EQ(tavca_floating_dp(&fd, 15.0F), 0.0F);
  EXPECT_THAT(messages.texts, ElementsAre("Invalid value in qvdppoint attribute"));
}

TEST(FloatingPressure, WarnsOfABadFirstRowAtAnyFlow) {
  const FlowData fd = curve_product({{0.0F, 20.0F}, {20.0F, 80.0F}});
  Messages messages(1);
  EXPECT_EQ(tavca_floating_dp(&fd, 50.0F), 0.0F);
  EXPECT_EQ(tavca_floating_dp(&fd, -1.0F), 0.0F);
  EXPECT_THAT(messages.texts,
              ElementsAre("Invalid value in qvdppoints attribute", "Invalid value in qvdppoints attribute"));
}

TEST(FloatingPressure, WarnsOfABadLastRowOnlyFromTheFirstFlowOn) {
  const FlowData fd = curve_product({{10.0F, 20.0F}, {20.0F, 80.0F}, {40.0F, -1.0F}});
  Messages messages(1);
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 5.0F), 5.0F);
  EXPECT_THAT(messages.texts, IsEmpty());
  EXPECT_EQ(tavca_floating_dp(&fd, 15.0F), 0.0F);
  EXPECT_THAT(messages.texts, ElementsAre("Invalid value in qvdppoints attribute"));
}

TEST(FloatingPressure, WithoutPointsIsZeroSilently) {
  Messages messages(1);
  FlowData fd = product(12);
  EXPECT_EQ(tavca_floating_dp(&fd, 10.0F), 0.0F);
  fd.nqvdp = -7;
  EXPECT_EQ(tavca_floating_dp(&fd, 10.0F), 0.0F);
  EXPECT_EQ(tavca_floating_dp(nullptr, 10.0F), 0.0F);
  EXPECT_THAT(messages.texts, IsEmpty());
}

TEST(FloatingPressure, CarriesTheParameterTermOnce) {
  FlowData fd = measured_curve();
  add_pressure_term(fd, 0.01F);
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 15.0F), 45.0F + 2.25F);
  EXPECT_EQ(tavca_floating_dp(&fd, 40.0F), 0.0F);
}

TEST(FloatingPressure, ReadsNoMoreRowsThanTheRecordHolds) {
  FlowData fd = product(12);
  for (int i = 0; i < TAVD_QVDP_ROWS; ++i) {
    fd.qvdppoints[i].qv = static_cast<float>(i + 1);
    fd.qvdppoints[i].dp = static_cast<float>((i + 1) * (i + 1));
  }
  fd.nqvdp = 32767;
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 40.0F), 1600.0F);
  EXPECT_FLOAT_EQ(tavca_floating_dp(&fd, 2.5F), 6.25F);
}

TEST(FloatingPressure, OfNotANumberFindsNoBracket) {
  const FlowData fd = measured_curve();
  EXPECT_EQ(tavca_floating_dp(&fd, std::numeric_limits<float>::quiet_NaN()), 0.0F);
  EXPECT_TRUE(std::isinf(tavca_floating_dp(&fd, std::numeric_limits<float>::infinity())));
}

TEST(PressureRange, OfAFixedResistanceIsOnePressure) {
  for (int kind : {10, 11}) {
    FlowData fd = resistance_product(70.0F, 33.0F);
    fd.kind = static_cast<std::int16_t>(kind);
    const Range range = range_of(fd, 45.0F);
    EXPECT_EQ(range.code, 0);
    EXPECT_EQ(range.max, (33.0F * 45.0F * 45.0F) / (70.0F * 70.0F));
    EXPECT_EQ(range.min, range.max);
  }
}

TEST(PressureRange, OfADamperGoesFromItsLastToItsFirstRow) {
  for (int kind : {20, 22}) {
    FlowData fd = damper_product({{1, 100.0F, 400.0F}, {2, 90.0F, 100.0F}, {3, 110.0F, 25.0F}});
    fd.kind = static_cast<std::int16_t>(kind);
    const Range range = range_of(fd, 70.0F);
    EXPECT_EQ(range.code, 0);
    EXPECT_EQ(range.max, (400.0F * 70.0F * 70.0F) / (100.0F * 100.0F));
    EXPECT_EQ(range.min, (25.0F * 70.0F * 70.0F) / (110.0F * 110.0F));
  }
}

TEST(PressureRange, OfARangeDeviceIsThatOfItsDataAndMovesWithTheParameterTerm) {
  for (int kind : {30, 13, 40}) {
    FlowData fd = range_product(20.0F, 200.0F);
    fd.kind = static_cast<std::int16_t>(kind);
    EXPECT_EQ(range_of(fd, 10.0F).min, 20.0F);
    EXPECT_EQ(range_of(fd, 10.0F).max, 200.0F);
    add_pressure_term(fd, 0.01F);
    const Range range = range_of(fd, 10.0F);
    EXPECT_EQ(range.code, 0);
    EXPECT_FLOAT_EQ(range.min, 21.0F);
    EXPECT_FLOAT_EQ(range.max, 201.0F);
  }
}

TEST(PressureRange, OfAMeasuredCurveCarriesTheParameterTermTwice) {
  FlowData fd = measured_curve();
  add_pressure_term(fd, 0.01F);
  const Range range = range_of(fd, 15.0F);
  EXPECT_EQ(range.code, 0);
  EXPECT_EQ(range.min, tavca_floating_dp(&fd, 15.0F) + 0.01F * 15.0F * 15.0F);
  EXPECT_FLOAT_EQ(range.min, 45.0F + 2 * 2.25F);
  EXPECT_EQ(range.max, range.min);
}

TEST(PressureRange, TakesNullOutputs) {
  const FlowData fd = resistance_product(70.0F, 33.0F);
  Range range;
  EXPECT_EQ(tavca_minmaxdptot(&fd, 45.0F, nullptr, &range.max), 0);
  EXPECT_EQ(tavca_minmaxdptot(&fd, 45.0F, &range.min, nullptr), 0);
  EXPECT_EQ(range.min, range.max);
}

TEST(PressureRange, FollowsTheSquareOfTheFlow) {
  tavdtest::Numbers numbers;
  for (int i = 0; i < 500; ++i) {
    const FlowData fd = resistance_product(numbers.between(1.0F, 500.0F), numbers.between(1.0F, 500.0F));
    const float qv = numbers.between(1.0F, 500.0F);
    EXPECT_NEAR(tavca_dptotmin(&fd, 2.0F * qv) / tavca_dptotmin(&fd, qv), 4.0F, 1e-5F);
  }
}

}  // namespace
