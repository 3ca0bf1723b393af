// Air terminals of the sample catalogue: boxes, diffusers, valves, beams and louvres.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "catalogue_fixture.h"
#include "tavd/tavca.h"

namespace {

using clitest::CatalogueTest;
using clitest::duct_of;
using clitest::Item;
using clitest::kGrid;
using clitest::scale;
using ::testing::AllOf;
using ::testing::Ge;
using ::testing::Le;

TEST_F(CatalogueTest, TheFrontPlateOfABoxChangesPressureSoundAndThrow) {
  for (const Item& item : of("ASD QZBA")) {
    FlowData flow = item.flow;
    const float qv = flow.qvref;
    const DuctSize duct = duct_of(flow);
    float base[8] = {};
    float plate[8] = {};
    const float dp = tavca_dptotmin(&flow, qv);
    EXPECT_EQ(tavca_lw(&flow, qv, dp, base, &duct), 0);
    EXPECT_EQ(tavca_param_setvalue(&flow, "PLATE", "50"), 0) << item.name();
    EXPECT_NEAR(tavca_dptotmin(&flow, qv) / dp, 2.2, 0.01) << item.name();
    EXPECT_EQ(tavca_lw(&flow, qv, dp, plate, &duct), 0);
    for (int band = 0; band < 8; ++band) EXPECT_NEAR(plate[band] - base[band], 6, 0.01) << item.name();
    EXPECT_EQ(tavca_param_setvalue(&flow, "PLATE", "75"), 0);
    EXPECT_NEAR(tavca_dptotmin(&flow, qv) / dp, 1.3, 0.01) << item.name();
  }
}

TEST_F(CatalogueTest, TheLevelOfALouvreFollowsItsFace) {
  for (const Item& item : of("LVR")) {
    float lw[8] = {};
    float one_m2[8] = {};
    const DuctSize duct = duct_of(item.flow);
    const DuctSize square = {1, 1000, 1000};
    EXPECT_EQ(tavca_lw(&item.flow, 3, 1, lw, &duct), 0);
    EXPECT_EQ(tavca_lw(&item.flow, 3, 1, one_m2, &square), 0);
    const double area = item.flow.b * item.flow.h / 1e6;
    EXPECT_NEAR(lw[2] - one_m2[2], 10 * std::log10(area), 0.01) << item.name();
  }
}

TEST_F(CatalogueTest, StaticPressuresOfAnExhaustValveLoseTheDynamicPressure) {
  for (const Item& item : of("AEX QZEA")) {
    const FlowData& flow = item.flow;
    EXPECT_EQ(+flow.kind100, 112) << item.name();
    ASSERT_EQ(+flow.nqvdp, 8) << item.name();
    for (int i = 0; i < flow.nqvdp; ++i) {
      const QvDpPoint row = flow.qvdppoints[i];
      const double v = double{row.qv} / 1000 / double{flow.ductarea};
      EXPECT_NEAR(row.dp / (4.5 * 0.6 * (v * v + 0.4 * v)), 1, 0.002) << item.name() << " row " << i;
    }
  }
}

TEST_F(CatalogueTest, StaticPressuresOfADiffuserAndABeamGainTheDynamicPressure) {
  for (const Item& item : of("ASD QZSA")) {
    const FlowData& flow = item.flow;
    EXPECT_EQ(+flow.kind100, 120) << item.name();
    ASSERT_EQ(+flow.ndamper, 6) << item.name();
    for (int i = 0; i < flow.ndamper; ++i) {
      const DamperPoint row = flow.damper[i];
      const double v = double{row.qv} / 1000 / double{flow.ductarea};
      EXPECT_NEAR(row.dp / (0.6 * v * v) / (40 * std::pow(3.0 / 40, i / 5.0)), 1, 0.002) << item.name();
    }
  }
  for (const Item& item : of("CCB QZKA")) {
    const FlowData& flow = item.flow;
    EXPECT_EQ(+flow.kind100, 130) << item.name();
    ASSERT_EQ(+flow.nlw, 25) << item.name();
    const LwPoint last = flow.lwpoints[flow.nlw - 1];
    const double v = double{last.qv} / 1000 / double{flow.ductarea};
    EXPECT_GT(v, 3) << item.name();
    EXPECT_NEAR(+last.dp, 250 + 0.6 * v * v, 0.01) << item.name();
    EXPECT_EQ(+flow.dpmax, 250) << item.name();  // limits are left as they stand
  }
}

TEST_F(CatalogueTest, TheExponentOfAnExhaustValveRisesTowardsTwo) {
  for (const Item& item : of("AEX QZEA")) {
    const FlowData& flow = item.flow;
    double before = 1.5;
    for (int i = 1; i < flow.nqvdp; ++i) {
      const QvDpPoint a = flow.qvdppoints[i - 1];
      const QvDpPoint b = flow.qvdppoints[i];
      const float middle = std::sqrt(a.qv * b.qv);
      const double exponent =
          std::log10(double{b.dp} / double{a.dp}) / std::log10(double{b.qv} / double{a.qv});
      EXPECT_GT(exponent, before) << item.name() << " row " << i;
      EXPECT_LT(exponent, 2) << item.name() << " row " << i;
      EXPECT_NEAR(tavca_floating_dp(&flow, middle) / std::sqrt(a.dp * b.dp), 1, 0.001) << item.name();
      before = exponent;
    }
    const QvDpPoint last = flow.qvdppoints[flow.nqvdp - 1];
    EXPECT_GT(+last.qv, +flow.qvmax) << item.name();
  }
}

TEST_F(CatalogueTest, ThrowRisesWithFlowWhereThereIsOne) {
  int with_throw = 0;
  for (const Item& item : catalogue->items) {
    if (item.flow.nqvL2 == 0 && item.flow.nparL2 == 0) continue;
    ++with_throw;
    for (const char* angle : {"", "0", "20", "90"}) {
      float before = 0;
      for (int i = 0; i < kGrid; ++i) {
        const float qv = scale(item.flow.qvmin, item.flow.qvmax, i);
        const float length = tavca_L2_isothermal(&item.flow, qv, angle);
        EXPECT_GT(length, before) << item.name() << " at " << qv;
        before = length;
      }
      EXPECT_THAT(before, AllOf(Ge(1.5F), Le(15.0F))) << item.name() << " " << angle;
    }
  }
  EXPECT_EQ(with_throw, 15);
}

TEST_F(CatalogueTest, VanesTurnedOutShortenTheThrowOfADiffuser) {
  for (const Item& item : of("ASD QZSA")) {
    FlowData flow = item.flow;
    ASSERT_EQ(+flow.nparL2, 6) << item.name();
    float before = 99;
    for (const char* angle : {"0", "30", "45", "70", "90"}) {
      const float length = tavca_L2_isothermal(&flow, flow.qvmax / 2, angle);
      EXPECT_LT(length, before) << item.name() << " " << angle;
      EXPECT_GT(length, 0) << item.name() << " " << angle;
      before = length;
    }
    EXPECT_EQ(tavca_param_setvalue(&flow, "FACE", "square"), 0) << item.name();
    EXPECT_NEAR(tavca_L2_isothermal(&flow, flow.qvmax / 2, "90") / before, 0.9, 0.001) << item.name();
  }
}

}  // namespace
