// Dampers, valves and leaves of the sample catalogue: resistance, sound and attenuation by their settings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "catalogue_fixture.h"
#include "tavd/tavca.h"

namespace {

using clitest::CatalogueTest;
using clitest::Item;
using clitest::resistance;
using clitest::sound_curves;

TEST_F(CatalogueTest, ResistanceOfADamperFallsInEvenSteps) {
  for (const Item& item : of("DMP")) {
    const FlowData& flow = item.flow;
    ASSERT_EQ(+flow.ndamper, 12) << item.name();
    std::vector<double> levels;
    for (int i = 0; i < flow.ndamper; ++i) {
      const DamperPoint row = flow.damper[i];
      EXPECT_EQ(+row.pos, static_cast<float>(i + 1)) << item.name();
      levels.push_back(std::log10(resistance(row.qv, row.dp)));
    }
    const double step = (levels.back() - levels.front()) / (flow.ndamper - 1);
    EXPECT_LT(step, -0.2) << item.name();
    for (std::size_t i = 1; i < levels.size(); ++i) {
      EXPECT_NEAR(levels[i] - levels[i - 1], step, 0.003) << item.name() << " setting " << i + 1;
    }
  }
}

TEST_F(CatalogueTest, LinesOfADamperCrossItsDiagramAndItsPointsLieInIt) {
  for (const Item& item : of("DMP")) {
    const FlowData& flow = item.flow;
    for (int i = 0; i < flow.ndamper; ++i) {
      const DamperPoint row = flow.damper[i];
      const double k = resistance(row.qv, row.dp);
      EXPECT_LT(k * flow.qvmin * flow.qvmin, flow.dpmax / 2) << item.name() << " setting " << i + 1;
      EXPECT_GT(k * flow.qvmax * flow.qvmax, flow.dpmin * 2) << item.name() << " setting " << i + 1;
      EXPECT_TRUE(row.qv >= flow.qvmin && row.qv <= flow.qvmax) << item.name() << " setting " << i + 1;
      EXPECT_TRUE(row.dp >= flow.dpmin && row.dp <= flow.dpmax) << item.name() << " setting " << i + 1;
    }
  }
}

TEST_F(CatalogueTest, ADamperIsMeasuredForSoundAtEverySetting) {
  for (const Item& item : of("DMP")) {
    const auto curves = sound_curves(item.flow);
    ASSERT_EQ(curves.size(), static_cast<std::size_t>(item.flow.ndamper)) << item.name();
    for (std::size_t i = 0; i < curves.size(); ++i) {
      EXPECT_EQ(curves[i].size(), 5u) << item.name();
      const DamperPoint row = item.flow.damper[i];
      const double k = resistance(row.qv, row.dp);
      for (const LwPoint& point : curves[i])
        EXPECT_NEAR(resistance(point.qv, point.dp) / k, 1, 0.01) << item.name();
    }
  }
}

TEST_F(CatalogueTest, AttenuationOfADamperFallsWithOpening) {
  for (const Item& item : of("DMP")) {
    const FlowData& flow = item.flow;
    ASSERT_EQ(+flow.ndlwpoints, 2) << item.name();
    float closed[8] = {};
    float open[8] = {};
    const float qv = flow.qvmin * 2;
    EXPECT_EQ(tavca_dlw(&flow, qv, tavca_dptot_damperpos(&flow, qv, 1), closed), 0);
    EXPECT_EQ(tavca_dlw(&flow, qv, tavca_dptot_damperpos(&flow, qv, 12), open), 0);
    for (int band = 0; band < 8; ++band) EXPECT_GT(closed[band], open[band]) << item.name();
  }
}

TEST_F(CatalogueTest, CurvesOfAThrottleValveStandFromTheHighestResistanceDown) {
  for (const Item& item : of("VLV QZTA")) {
    const auto curves = sound_curves(item.flow);
    ASSERT_EQ(curves.size(), 5u) << item.name();
    for (std::size_t i = 0; i < curves.size(); ++i) {
      EXPECT_EQ(curves[i].size(), 5u) << item.name();
      if (i == 0) continue;
      const double above = resistance(curves[i - 1][0].qv, curves[i - 1][0].dp);
      EXPECT_LT(resistance(curves[i][0].qv, curves[i][0].dp), above / 3) << item.name();
    }
  }
}

TEST_F(CatalogueTest, LeavesThatCloseTakePressureAndAttenuateMore) {
  for (const Item& item : of("MLD QZMA")) {
    const FlowData& flow = item.flow;
    ASSERT_EQ(+flow.ndamper, 6) << item.name();
    EXPECT_EQ(+flow.isvelocity, 1) << item.name();
    float before = 0;
    for (const float angle : {0.0F, 15.0F, 30.0F, 45.0F, 60.0F, 75.0F}) {
      const float dp = tavca_dptot_damperpos(&flow, 3, angle);
      EXPECT_GT(dp, before * 3.5F) << item.name() << " " << angle;
      float position = -1;
      EXPECT_EQ(tavca_damper_pos(&flow, 3, dp, &position), 0) << item.name() << " " << angle;
      EXPECT_NEAR(position, angle, 0.05) << item.name();
      before = dp;
    }
    float open[8] = {};
    float closed[8] = {};
    EXPECT_EQ(tavca_dlw(&flow, 3, tavca_dptot_damperpos(&flow, 3, 0), open), 0);
    EXPECT_EQ(tavca_dlw(&flow, 3, tavca_dptot_damperpos(&flow, 3, 75), closed), 0);
    for (int band = 0; band < 8; ++band) EXPECT_GT(closed[band], open[band] + 2) << item.name();
  }
}

}  // namespace
