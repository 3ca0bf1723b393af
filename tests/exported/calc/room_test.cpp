#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "support/products.h"

namespace {

FlowData outlet(const char* class_id, float ductarea) {
  FlowData fd = tavdtest::product(10);
  std::memcpy(fd.szclass, class_id, 4);
  fd.ductarea = ductarea;
  const LwPoint row = {100.0F, 50.0F, {60, 10, 2, 0, 30, 30, 30, 30}};
  fd.lwpoints[0] = row;
  fd.nlw = 1;
  return fd;
}

void expect_levels(const FlowData& fd, const int (&levels)[8]) {
  for (int band = 0; band < TAVD_BANDS; ++band) EXPECT_EQ(fd.lwpoints[0].lw[band], levels[band]) << band;
}

TEST(RoomLevel, OfEqualBands) {
  const float forty[8] = {40, 40, 40, 40, 40, 40, 40, 40};
  const float zero[8] = {};
  EXPECT_NEAR(tavca_LpA(forty), 42.987, 0.0005);
  EXPECT_NEAR(tavca_LpA(zero), 2.987, 0.0005);
}

TEST(RoomLevel, OfAFallingSpectrum) {
  const float lw[8] = {50, 48, 45, 43, 40, 38, 35, 30};
  EXPECT_NEAR(tavca_LpA(lw), 41.886, 0.0005);
}

TEST(RoomLevel, IsTheEnergySumOfTheWeightedBands) {
  const double weighting[8] = {-26.2, -16.1, -8.6, -3.2, 0.0, 1.2, 1.0, -1.1};
  tavdtest::Numbers numbers;
  for (int i = 0; i < 500; ++i) {
    float lw[8];
    double energy = 0.0;
    for (int band = 0; band < 8; ++band) {
      lw[band] = numbers.between(-10.0F, 99.0F);
      energy += std::pow(10.0, (static_cast<double>(lw[band]) + weighting[band] - 4.0) / 10.0);
    }
    EXPECT_NEAR(tavca_LpA(lw), 10.0 * std::log10(energy), 1e-4);
  }
}

TEST(RoomLevel, RoundsToFloatAfterEachBand) {
  const float weighting[8] = {-26.2F, -16.1F, -8.6F, -3.2F, 0.0F, 1.2F, 1.0F, -1.1F};
  const float lw[8] = {51.3F, 48.7F, 45.1F, 43.9F, 40.2F, 38.6F, 35.5F, 30.4F};
  float sum = (lw[0] + weighting[0]) - 4.0F;
  for (int band = 1; band < 8; ++band) {
    const float level = (lw[band] + weighting[band]) - 4.0F;
    const float hi = sum > level ? sum : level;
    const float lo = sum > level ? level : sum;
    const float d = -(hi - lo) / 10.0F;
    sum = static_cast<float>(static_cast<double>(hi) +
                             10.0 * std::log10(1.0 + std::pow(10.0, static_cast<double>(d))));
  }
  EXPECT_EQ(tavca_LpA(lw), sum);
}

TEST(RoomLevel, OfNoBandsIsZero) {
  EXPECT_EQ(tavca_LpA(nullptr), 0.0F);
}

TEST(EndReflection, OfATenthOfASquareMetre) {
  const double expected[8] = {13.978, 7.801, 3.082, 0.476, 0.0, 0.0, 0.0, 0.0};
  for (int band = 0; band < 8; ++band)
    EXPECT_NEAR(tavca_endref_A(band, 0.1F), expected[band], 0.0005) << band;
  for (int band = 4; band < 8; ++band) EXPECT_EQ(tavca_endref_A(band, 0.1F), 0.0F) << band;
}

TEST(EndReflection, OfASquareMetre) {
  EXPECT_NEAR(tavca_endref_A(0, 1.0F), 4.469, 0.0005);
  EXPECT_NEAR(tavca_endref_A(1, 1.0F), 1.008, 0.0005);
  for (int band = 2; band < 8; ++band) EXPECT_EQ(tavca_endref_A(band, 1.0F), 0.0F) << band;
}

TEST(EndReflection, AtTwoSquareMetresBelongsToTheLowestBandOnly) {
  EXPECT_NEAR(tavca_endref_A(0, 2.0F), 2.404, 0.0005);
  EXPECT_EQ(tavca_endref_A(1, 2.0F), 0.0F);
  EXPECT_EQ(tavca_endref_A(0, std::nextafter(2.0F, 3.0F)), 0.0F);
  EXPECT_GT(tavca_endref_A(1, std::nextafter(2.0F, 1.0F)), 0.0F);
}

TEST(EndReflection, ComparesTheBoundsAsFloats) {
  EXPECT_EQ(tavca_endref_A(2, 0.6F), 0.0F);
  EXPECT_EQ(tavca_endref_A(3, 0.2F), 0.0F);
  EXPECT_EQ(tavca_endref_A(4, 0.05F), 0.0F);
}

TEST(EndReflection, IsNeverNegative) {
  EXPECT_EQ(tavca_endref_A(3, 0.19F), 0.0F);
  for (int band = 0; band < 8; ++band) {
    for (float area = 0.0005F; area < 2.5F; area *= 1.01F) EXPECT_GE(tavca_endref_A(band, area), 0.0F);
  }
}

TEST(EndReflection, OutsideBandsAndAreasIsZero) {
  EXPECT_EQ(tavca_endref_A(8, 0.1F), 0.0F);
  EXPECT_EQ(tavca_endref_A(-1, 0.1F), 0.0F);
  for (float area : {0.0F, -0.1F, -std::numeric_limits<float>::infinity(),
                     std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
    for (int band = 0; band < 8; ++band) EXPECT_EQ(tavca_endref_A(band, area), 0.0F);
  }
}

TEST(EndReflection, TakesLogarithmAndQuotientInDoubleAndPowersInFloat) {
  const float A = 0.0731F;
  const double E = -3.530523 * std::log(static_cast<double>(A)) + 0.01298109 / static_cast<double>(A) +
                   -5.984685 + 8.345772 * static_cast<double>(A) + -2.697747 * static_cast<double>(A * A) +
                   0.3195841 * static_cast<double>(A * A * A);
  EXPECT_EQ(tavca_endref_A(2, A), static_cast<float>(E));
}

TEST(EndReflectionStep, TakesWholeDecibelsOffEveryRow) {
  FlowData fd = outlet("XYZ", 0.1F);
  tavca_check_end_reflection(&fd);
  expect_levels(fd, {46, 2, 0, 0, 30, 30, 30, 30});
}

TEST(EndReflectionStep, TakesThemOffAgainAtEveryCall) {
  FlowData fd = outlet("XYZ", 0.1F);
  tavca_check_end_reflection(&fd);
  tavca_check_end_reflection(&fd);
  expect_levels(fd, {32, 0, 0, 0, 30, 30, 30, 30});
}

TEST(EndReflectionStep, LeavesFiveClassesAlone) {
  for (const char* class_id : {"ASD", "AEX", "AED", "AOD", "CCB"}) {
    FlowData fd = outlet(class_id, 0.1F);
    tavca_check_end_reflection(&fd);
    expect_levels(fd, {60, 10, 2, 0, 30, 30, 30, 30});
  }
  FlowData fd = outlet("asd", 0.1F);
  tavca_check_end_reflection(&fd);
  expect_levels(fd, {46, 2, 0, 0, 30, 30, 30, 30});
}

TEST(EndReflectionStep, LeavesProductsWithoutDuctAreaAlone) {
  FlowData fd = outlet("XYZ", 9e-7F);
  tavca_check_end_reflection(&fd);
  expect_levels(fd, {60, 10, 2, 0, 30, 30, 30, 30});
  tavca_check_end_reflection(nullptr);
}

TEST(EndReflectionStep, HoldsAReflectionThatFitsNoByte) {
  FlowData fd = outlet("XYZ", 2e-6F);  // more than 2000 dB in the lowest band by the curve
  fd.lwpoints[0].lw[0] = 200;
  tavca_check_end_reflection(&fd);
  EXPECT_EQ(fd.lwpoints[0].lw[0], 200 - 127);
}

TEST(EndReflectionStep, ChangesNoRowBeyondTheTable) {
  FlowData fd = outlet("XYZ", 0.1F);
  for (int row = 0; row < TAVD_LW_ROWS; ++row) fd.lwpoints[row] = tavdtest::sound_row(100.0F, 50.0F, 60);
  fd.nlw = 32767;
  std::memset(fd.dlw, 77, sizeof fd.dlw);
  tavca_check_end_reflection(&fd);
  EXPECT_EQ(fd.lwpoints[TAVD_LW_ROWS - 1].lw[0], 46);
  for (auto level : fd.dlw) EXPECT_EQ(level, 77);
  FlowData none = outlet("XYZ", 0.1F);
  none.nlw = -1;
  tavca_check_end_reflection(&none);
  expect_levels(none, {60, 10, 2, 0, 30, 30, 30, 30});
}

}  // namespace
