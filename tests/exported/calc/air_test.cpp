#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/products.h"

namespace {

using tavdtest::kNonsense;
using tavdtest::product;

TEST(DynamicPressure, OfAFlowGoesByItsVelocityInTheDuct) {
  EXPECT_FLOAT_EQ(tavca_pdyn(100.0F, 0.1F, 0), 0.6F);
  const float v = (250.0F / 1000.0F) / 0.0314F;
  EXPECT_EQ(tavca_pdyn(250.0F, 0.0314F, 0), 0.6F * v * v);
}

TEST(DynamicPressure, IsZeroWithoutADuctArea) {
  EXPECT_EQ(tavca_pdyn(100.0F, 0.0F, 0), 0.0F);
  EXPECT_EQ(tavca_pdyn(100.0F, -1.0F, 0), 0.0F);
}

TEST(DynamicPressure, OfAVelocityDoesNotLookAtTheArea) {
  EXPECT_FLOAT_EQ(tavca_pdyn(5.0F, 0.0F, 1), 15.0F);
  EXPECT_EQ(tavca_pdyn(3.7F, 0.0F, 1), 0.6F * 3.7F * 3.7F);
  EXPECT_EQ(tavca_pdyn(3.7F, 1.0F, -2), 0.6F * 3.7F * 3.7F);
}

TEST(DynamicPressure, ComparesTheSmallestAreaInDouble) {
  const float nearest = 1e-8F;  // 9.99999993922529e-09, below the bound
  EXPECT_EQ(tavca_pdyn(100.0F, nearest, 0), 0.0F);
  EXPECT_GT(tavca_pdyn(100.0F, std::nextafter(nearest, 1.0F), 0), 0.0F);
}

TEST(DuctArea, OfAHeightOfZeroOrLessIsThatOfACircle) {
  EXPECT_EQ(tavca_ductarea_m2(200, 0), 0.7853982F * (200.0F / 1000.0F) * (200.0F / 1000.0F));
  EXPECT_NEAR(tavca_ductarea_m2(200, 0), 0.7853982 * 0.04, 1e-9);
  EXPECT_EQ(tavca_ductarea_m2(200, -1), tavca_ductarea_m2(200, 0));
}

TEST(DuctArea, OfARectangleIsWidthTimesHeight) {
  EXPECT_FLOAT_EQ(tavca_ductarea_m2(400, 200), 0.08F);
  EXPECT_EQ(tavca_ductarea_m2(315, 160), (160.0F / 1000.0F) * (315.0F / 1000.0F));
}

TEST(FlowLimits, OfALoadedRecordAreGiven) {
  FlowData fd = product(10);
  fd.qvmin = 12.5F;
  fd.qvmax = 80.0F;
  float qmin = kNonsense;
  float qmax = kNonsense;
  EXPECT_EQ(tavca_qminqmax(&fd, &qmin, &qmax), 0);
  EXPECT_EQ(qmin, 12.5F);
  EXPECT_EQ(qmax, 80.0F);
}

TEST(FlowLimits, TakeNullOutputs) {
  FlowData fd = product(10);
  fd.nhdd = 0;
  EXPECT_EQ(tavca_qminqmax(&fd, nullptr, nullptr), -1);
}

TEST(Interpolation, OfEqualAbscissaeGivesTheFirstOrdinate) {
  EXPECT_EQ(tavca_linlog_interp(100.0F, 100.0F, 150.0F, 3.0F, 7.0F), 3.0F);
  EXPECT_EQ(tavca_loglin_interp(100.0F, 100.0F, 150.0F, 3.0F, 7.0F), 3.0F);
}

TEST(Interpolation, AtTheSecondAbscissaGivesTheSecondOrdinate) {
  EXPECT_FLOAT_EQ(tavca_linlog_interp(100.0F, 200.0F, 200.0F, 3.0F, 7.0F), 7.0F);
  EXPECT_FLOAT_EQ(tavca_loglin_interp(100.0F, 200.0F, 200.0F, 3.0F, 7.0F), 7.0F);
}

TEST(Interpolation, OnALogarithmicOrdinateExtrapolates) {
  EXPECT_FLOAT_EQ(tavca_linlog_interp(0.0F, 10.0F, 20.0F, 1.0F, 10.0F), 100.0F);
  EXPECT_FLOAT_EQ(tavca_linlog_interp(0.0F, 10.0F, -10.0F, 1.0F, 10.0F), 0.1F);
}

TEST(Interpolation, OnALogarithmicAbscissaExtrapolates) {
  EXPECT_FLOAT_EQ(tavca_loglin_interp(10.0F, 100.0F, 1000.0F, 1.0F, 2.0F), 3.0F);
  EXPECT_FLOAT_EQ(tavca_loglin_interp(100.0F, 10.0F, 1.0F, 2.0F, 1.0F), 0.0F);
}

TEST(Interpolation, TakesDifferencesInFloatAndLogarithmsInDouble) {
  const float x1 = 0.1F;
  const float x2 = 33.3F;
  const float x = 7.77F;
  const float y1 = 41.7F;
  const float y2 = 0.3F;
  const auto lg = [](float value) { return std::log10(static_cast<double>(value)); };
  const double slope = (lg(y2) - lg(y1)) / static_cast<double>(x2 - x1);
  EXPECT_EQ(tavca_linlog_interp(x1, x2, x, y1, y2),
            static_cast<float>(std::pow(10.0, lg(y1) + slope * static_cast<double>(x - x1))));
  EXPECT_EQ(tavca_loglin_interp(x1, x2, x, y1, y2),
            static_cast<float>(static_cast<double>(y1) +
                               (static_cast<double>(y2 - y1) / (lg(x2) - lg(x1))) * (lg(x) - lg(x1))));
}

TEST(Interpolation, GuardsByTheSignedSizeOfTheFirstAbscissa) {
  // Equal abscissae of 0 or below divide by zero instead.
  EXPECT_TRUE(std::isnan(tavca_linlog_interp(0.0F, 0.0F, 0.0F, 3.0F, 7.0F)));
  EXPECT_TRUE(std::isnan(tavca_linlog_interp(-5.0F, -5.0F, -5.0F, 3.0F, 7.0F)));
  // Neighbouring floats lie far above the guard's resolution.
  const float next = std::nextafter(100.0F, 200.0F);
  EXPECT_FLOAT_EQ(tavca_linlog_interp(100.0F, next, next, 3.0F, 7.0F), 7.0F);
}

TEST(Interpolation, InvertsByChangingPlaces) {
  tavdtest::Numbers numbers;
  for (int i = 0; i < 1000; ++i) {
    const float x1 = numbers.between(1.0F, 100.0F);
    const float x2 = x1 * numbers.between(1.5F, 4.0F);
    const float y1 = numbers.between(1.0F, 50.0F);
    const float y2 = y1 * numbers.between(1.5F, 4.0F);
    const float x = numbers.between(x1, x2);
    const float y = tavca_loglin_interp(x1, x2, x, y1, y2);
    EXPECT_GE(y, y1 * 0.999999F);
    EXPECT_LE(y, y2 * 1.000001F);
    EXPECT_NEAR(tavca_linlog_interp(y1, y2, y, x1, x2), x, x * 1e-5F);
  }
}

}  // namespace
