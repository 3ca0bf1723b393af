// Devices of the sample catalogue that work in a pressure range, and fans.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "catalogue_fixture.h"
#include "tavd/tavca.h"

namespace {

using clitest::CatalogueTest;
using clitest::Item;
using clitest::kGrid;
using clitest::level;
using clitest::scale;
using ::testing::AllOf;
using ::testing::Ge;
using ::testing::Le;

TEST_F(CatalogueTest, LevelsOfARangeDeviceRiseWithPressureAndWithFlow) {
  for (const char* family : {"VAV QZVA", "CCB QZKA"}) {
    for (const Item& item : of(family)) {
      const FlowData& flow = item.flow;
      // The middle band stays clear of the limit at 0 dB, where nothing could rise.
      for (int i = 0; i < kGrid; ++i) {
        float by_pressure = -1;
        float by_flow = -1;
        for (int j = 0; j < kGrid; ++j) {
          const float dp = level(item, scale(flow.qvmin, flow.qvmax, i), scale(flow.dpmin, flow.dpmax, j))[2];
          const float qv = level(item, scale(flow.qvmin, flow.qvmax, j), scale(flow.dpmin, flow.dpmax, i))[2];
          EXPECT_GT(dp, by_pressure) << item.name();
          EXPECT_GT(qv, by_flow) << item.name();
          by_pressure = dp;
          by_flow = qv;
        }
      }
    }
  }
}

TEST_F(CatalogueTest, AVariableFlowBoxAttenuatesMostAtItsLowestFlow) {
  for (const Item& item : of("VAV QZVA")) {
    const FlowData& flow = item.flow;
    float low[8] = {};
    float high[8] = {};
    EXPECT_EQ(tavca_dlw(&flow, flow.qvmin, 100, low), 0);
    EXPECT_EQ(tavca_dlw(&flow, flow.qvmax, 100, high), 0);
    for (int band = 0; band < 8; ++band) {
      EXPECT_GT(low[band], high[band]) << item.name();
      EXPECT_GE(high[band], 0) << item.name();
    }
  }
}

TEST_F(CatalogueTest, LiningAndSilencerOfAVariableFlowBoxAddUp) {
  for (const Item& item : of("VAV QZVA")) {
    Item fitted = item;
    const float qv = item.flow.qvmax / 2;
    const auto bare = level(item, qv, 200);
    float dlw_bare[8] = {};
    float dlw[8] = {};
    EXPECT_EQ(tavca_dlw(&item.flow, qv, 200, dlw_bare), 0);
    ASSERT_EQ(+item.flow.npar, 2) << item.name();
    EXPECT_EQ(tavca_param_setvalue(&fitted.flow, "LINING", "50mm"), 0) << item.name();
    EXPECT_EQ(tavca_param_setvalue(&fitted.flow, "LENGTH", "750"), 0) << item.name();
    EXPECT_EQ(tavca_dlw(&fitted.flow, qv, 200, dlw), 0);
    // Lining 0.1 and silencer (0.2 + 0.35)/2 of the dynamic pressure at 4 m/s, 9.6 Pa.
    const double added = 0.375 * 9.6;
    EXPECT_NEAR(tavca_dptotmin(&fitted.flow, qv) - item.flow.dpmin, added, 0.1) << item.name();
    const auto lw = level(fitted, qv, static_cast<float>(200 + added));
    for (std::size_t band = 0; band < 8; ++band) {
      EXPECT_NEAR(lw[band] - bare[band], -2 - 8, 0.05) << item.name();
      EXPECT_NEAR(dlw[band] - dlw_bare[band], 3 + 8, 0.01) << item.name();
    }
  }
}

TEST_F(CatalogueTest, TheCurveOfAFanFallsAndKeepsInsideItsAxes) {
  for (const Item& item : of("FAN QZFA")) {
    const FlowData& flow = item.flow;
    EXPECT_EQ(+flow.qvmin, 0) << item.name();  // the limits of the axes, not those of the header
    EXPECT_EQ(+flow.dpmin, 0) << item.name();
    ASSERT_EQ(+flow.nfan, 10) << item.name();
    const FanPoint first = flow.fancurve[0];
    const FanPoint last = flow.fancurve[flow.nfan - 1];
    EXPECT_LT(+first.dp, +flow.dpmax) << item.name();
    EXPECT_LT(+last.qv, +flow.qvmax) << item.name();
    float before = flow.dpmax;
    for (int i = 0; i < kGrid; ++i) {
      const float qv = i == kGrid - 1 ? +last.qv : scale(first.qv, last.qv, i);
      float total = -1;
      float fixed = -1;
      float dynamic = -1;
      EXPECT_EQ(tavca_fan_dp(&flow, qv, &total, &fixed, &dynamic), 0) << item.name() << " " << qv;
      EXPECT_LT(total, before) << item.name() << " " << qv;
      EXPECT_GT(total, 0) << item.name() << " " << qv;
      EXPECT_NEAR(fixed + dynamic, total, 0.01) << item.name();
      EXPECT_EQ(tavca_fan_op_check(&flow, qv, total * 0.999F), i == kGrid - 1 ? -200 : 0)
          << item.name() << qv;
      EXPECT_LT(tavca_fan_op_check(&flow, qv, total * 1.01F), 0) << item.name();
      before = total;
    }
  }
}

TEST_F(CatalogueTest, AFanGivesLessPowerToTheAirThanItTakes) {
  for (const Item& item : of("FAN QZFA")) {
    double best = 0;
    for (int i = 0; i < item.flow.nfan; ++i) {
      const FanPoint row = item.flow.fancurve[i];
      best = std::max(best, double{row.qv} / 1000 * double{row.dp} / double{row.aux});
    }
    EXPECT_THAT(best, AllOf(Ge(0.25), Le(0.45))) << item.name();
  }
}

TEST_F(CatalogueTest, AFanIsQuieterWhereItGivesLessPressure) {
  for (const Item& item : of("FAN QZFA")) {
    const float qv = item.flow.fancurve[3].qv;
    const float dp = item.flow.fancurve[3].dp;
    const auto full = level(item, qv, dp);
    const auto half = level(item, qv, dp / 2);
    for (std::size_t band = 0; band < 8; ++band)
      EXPECT_NEAR(full[band] - half[band], 20 * std::log10(2.0), 0.6) << item.name();
  }
}

}  // namespace
