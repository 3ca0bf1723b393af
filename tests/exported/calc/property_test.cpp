// What holds for every record, whatever its numbers.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/products.h"

namespace {

using tavdtest::Numbers;

float level_at(const FlowData& fd, float qv, float dp) {
  float bands[TAVD_BANDS];
  std::fill(std::begin(bands), std::end(bands), tavdtest::kNonsense);
  EXPECT_EQ(tavca_lw(&fd, qv, dp, bands, nullptr), 0);
  return bands[0];
}

// Two rows at each of two flows, levels rising with pressure at both. (With more rows the pair that a flow is
// read between starts at its first row whatever lies between, and a level may fall where the next row takes
// over.)
FlowData range_with_sound(Numbers& numbers) {
  FlowData fd = tavdtest::range_product(numbers.between(5.0F, 20.0F), numbers.between(100.0F, 400.0F));
  fd.qvmin = numbers.between(10.0F, 30.0F);
  fd.qvmax = fd.qvmin * numbers.between(2.0F, 6.0F);
  for (const float flow : {fd.qvmin, fd.qvmax}) {
    const int level = 20 + numbers.upto(20);
    fd.lwpoints[fd.nlw++] = tavdtest::sound_row(flow, fd.dpmin, level);
    fd.lwpoints[fd.nlw++] = tavdtest::sound_row(flow, fd.dpmax, level + 1 + numbers.upto(30));
  }
  return fd;
}

TEST(LevelProperty, RisesWithThePressureWhereTheTableDoes) {
  Numbers numbers;
  for (int i = 0; i < 500; ++i) {
    const FlowData fd = range_with_sound(numbers);
    const float qv = numbers.between(fd.qvmin, fd.qvmax);
    float dp = fd.dpmin * 0.8F;
    float level = level_at(fd, qv, dp);
    while (dp < fd.dpmax * 1.2F) {
      dp *= 1.07F;
      const float next = level_at(fd, qv, dp);
      ASSERT_GT(next, level) << "qv " << qv << ", dp " << dp;
      level = next;
    }
  }
}

TEST(LevelProperty, OfAFixedResistanceRisesWithTheFlowWhereTheTableDoes) {
  Numbers numbers;
  for (int i = 0; i < 500; ++i) {
    FlowData fd = tavdtest::resistance_product(100.0F, numbers.between(10.0F, 200.0F));
    fd.lwpoints[0] = tavdtest::sound_row(50.0F, fd.dpref * 0.25F, 20 + numbers.upto(10));
    fd.lwpoints[1] = tavdtest::sound_row(200.0F, fd.dpref * 4.0F, 35 + numbers.upto(30));
    fd.nlw = 2;
    float level = level_at(fd, 40.0F, 0.0F);
    for (int step = 1; step <= 20; ++step) {
      const float qv = 40.0F + 10.0F * static_cast<float>(step);
      const float next = level_at(fd, qv, 0.0F);
      ASSERT_GT(next, level) << qv;
      level = next;
    }
  }
}

// The place is the row exactly. The term is formed from the row below and the whole way up to it, so that a
// float may be rounded on the way; whole decibels may not.
TEST(ParameterProperty, AValueAtARowGivesThatRow) {
  Numbers numbers;
  for (int round = 0; round < 200; ++round) {
    FlowData fd = tavdtest::range_product(50.0F, 500.0F);
    std::strcpy(fd.par[0].name, "LEN");
    fd.npar = 1;
    const int rows = 1 + numbers.upto(TAVD_PARAMETER_ROWS - 1);
    fd.par[0].count = static_cast<std::int16_t>(rows);
    for (int row = 0; row < rows; ++row) {
      fd.par[0].table[row] = tavdtest::entry(std::to_string(100 + 37 * row), numbers.between(0.0F, 0.01F), 0,
                                             numbers.upto(40) - 20);
    }
    fd.ndlw = 1;
    const float qv = numbers.between(10.0F, 200.0F);
    for (int row = 0; row < rows; ++row) {
      ASSERT_EQ(tavca_param_setvalue(&fd, "LEN", std::to_string(100 + 37 * row).c_str()), 0);
      const ParTable par = fd.par[0];
      ASSERT_TRUE((par.idx1 == row && par.frac == 0.0F) || (par.idx2 == row && par.frac == 1.0F));
      const float term = par.table[row].dk * qv * qv;
      ASSERT_NEAR(tavca_dptotmin(&fd, qv), 50.0F + term, 1e-6F * (50.0F + term));
      float attenuation[TAVD_BANDS];
      tavca_dlw(&fd, qv, 0.0F, attenuation);
      ASSERT_EQ(attenuation[0], static_cast<float>(par.table[row].ddlw));
    }
  }
}

TEST(DamperProperty, PositionsAreInversesInAFallingAndARisingTable) {
  Numbers numbers;
  for (int round = 0; round < 1000; ++round) {
    FlowData fd = tavdtest::product(20);
    const int rows = 2 + numbers.upto(TAVD_DAMPER_ROWS - 2);
    const float step = (round % 2 == 0 ? 1.0F : -1.0F) * numbers.between(0.5F, 10.0F);
    float k = numbers.between(0.01F, 1.0F);
    for (int row = 0; row < rows; ++row) {
      const float qv = numbers.between(20.0F, 200.0F);
      fd.damper[row] = {static_cast<float>(row) * step, qv, k * qv * qv};
      k *= numbers.between(0.4F, 0.9F);
    }
    fd.ndamper = static_cast<std::int16_t>(rows);
    const float end = fd.damper[rows - 1].pos;
    const float pos = end * numbers.between(0.001F, 0.999F);
    const float qv = numbers.between(20.0F, 200.0F);
    float back = tavdtest::kNonsense;
    ASSERT_EQ(tavca_damper_pos(&fd, qv, tavca_dptot_damperpos(&fd, qv, pos), &back), 0);
    ASSERT_NEAR(back, pos, std::fabs(end) * 1e-4F);
  }
}

TEST(RoomProperty, NotANumberInAnyBandIsNotANumber) {
  for (int band = 0; band < TAVD_BANDS; ++band) {
    float lw[TAVD_BANDS] = {50, 48, 45, 43, 40, 38, 35, 30};
    lw[band] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(std::isnan(tavca_LpA(lw))) << band;
  }
}

}  // namespace
