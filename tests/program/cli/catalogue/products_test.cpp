// The sample catalogue as a whole: its families, and what every product of it must answer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

#include "catalogue_fixture.h"
#include "tavd/tavca.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"
#include "tavd/tavfm.h"

namespace {

using clitest::CatalogueTest;
using clitest::duct_of;
using clitest::is_fan;
using clitest::Item;
using clitest::kGrid;
using clitest::lowest_flow;
using clitest::lowest_pressure;
using clitest::scale;
using clitest::sound_curves;
using ::testing::AllOf;
using ::testing::Ge;
using ::testing::Le;

// Energy sum of the bands, dB.
double total_level(const LwPoint& row) {
  double sum = 0;
  for (std::uint8_t band : row.lw) sum += std::pow(10.0, band / 10.0);
  return 10 * std::log10(sum);
}

TEST_F(CatalogueTest, HoldsItsFamiliesWithTheirSizes) {
  const struct {
    const char* class_id;
    const char* object_id;
    int kind;
    int sizingmode;
    int sizes;
  } families[] = {
      {"DMP", "QZDA-*", 20, 1, 6},     {"ASD", "QZBA-*", 10, 1, 4},      {"LVR", "QZLA-*", 11, 1, 4},
      {"AEX", "QZEA-*", 12, 1, 4},     {"VLV", "QZTA-*", 13, 1, 4},      {"ASD", "QZSA-*", 20, 1, 4},
      {"MLD", "QZMA-*", 22, 1, 4},     {"VAV", "QZVA-*", 30, 1, 4},      {"CCB", "QZKA-*", 30, 1, 4},
      {"FAN", "QZFA-*", 40, 1, 5},     {"SIL", "QZNA-*-*+50", 10, 1, 6}, {"SIL", "QZNA-*-*+100", 10, 1, 6},
      {"HTR", "QZHA-*/*.*", 10, 1, 6}, {"FDM", "QZPA", 10, 2, 5}};
  std::map<std::string, int> kinds;  // of all products, by name
  for (const auto& family : families) {
    FamilyList list;
    tavfm_init(&list);
    EXPECT_EQ(tavfm_read(&list, catalogue->db(), family.class_id, family.object_id), family.sizes)
        << family.object_id;
    EXPECT_EQ(list.sizingmode, family.sizingmode);
    const std::string class_id = std::string(family.class_id) + ' ';
    kinds[class_id + family.object_id] = family.kind;
    for (std::int32_t i = 0; i < list.members.count; ++i) {
      FamilyMember member;
      ASSERT_EQ(tavfm_get(&list, i, &member), 0);
      std::string id(member.objId, sizeof member.objId);
      id.resize(id.find_last_not_of(' ') + 1);
      EXPECT_TRUE(kinds.emplace(class_id + id, family.kind).second) << id << " in two families";
    }
    tavfm_release(&list);
  }
  EXPECT_EQ(kinds.size(), catalogue->items.size());
  for (const Item& item : catalogue->items) EXPECT_EQ(+item.flow.kind, kinds[item.name()]) << item.name();
}

TEST_F(CatalogueTest, EveryProductHasAPressureRangeAtEveryFlow) {
  for (const Item& item : catalogue->items) {
    for (int i = 0; i < kGrid; ++i) {
      const float qv = scale(lowest_flow(item.flow), item.flow.qvmax, i);
      float mindp = -1;
      float maxdp = -1;
      EXPECT_EQ(tavca_minmaxdptot(&item.flow, qv, &mindp, &maxdp), 0) << item.name();
      switch (item.flow.kind) {
        case 20:
        case 22:
          EXPECT_GT(mindp, 0) << item.name();
          EXPECT_THAT(maxdp / mindp, AllOf(Ge(10.0F), Le(1010.0F))) << item.name();
          break;
        case 13:
        case 30:
        case 40:
          EXPECT_EQ(mindp, +item.flow.dpmin) << item.name();
          EXPECT_EQ(maxdp, +item.flow.dpmax) << item.name();
          break;
        default:
          EXPECT_GT(mindp, 0) << item.name() << " at " << qv;
          EXPECT_EQ(maxdp, mindp) << item.name();
      }
    }
  }
}

TEST_F(CatalogueTest, EveryProductHasASoundLevelAllOverItsField) {
  for (const Item& item : catalogue->items) {
    const DuctSize duct = duct_of(item.flow);
    for (int i = 0; i < kGrid * kGrid; ++i) {
      const float qv = scale(lowest_flow(item.flow), item.flow.qvmax, i % kGrid);
      const float dp = scale(lowest_pressure(item.flow), item.flow.dpmax, i / kGrid);
      float lw[8] = {-99, -99, -99, -99, -99, -99, -99, -99};
      EXPECT_EQ(tavca_lw(&item.flow, qv, dp, lw, &duct), 0) << item.name() << " " << qv << " " << dp;
      for (float band : lw) EXPECT_THAT(band, AllOf(Ge(-20.0F), Le(99.0F))) << item.name();
    }
  }
}

TEST_F(CatalogueTest, EveryProductHasADiagram) {
  for (const Item& item : catalogue->items) {
    EXPECT_EQ(tavdg_init(nullptr, catalogue->db(), item.rec, 0, item.flow.qvmax / 2, item.flow.dpmax / 2), 0)
        << item.name();
    EXPECT_EQ(tavdg_initdiagramdata(item.rec), 0) << item.name();
    tavdg_release();
  }
}

// A fan and a beam have flows of their own: theirs follow the pressure they give and their length.
TEST_F(CatalogueTest, FlowsFollowTheAreaOfTheDuct) {
  for (const Item& item : catalogue->items) {
    const FlowData& flow = item.flow;
    if (is_fan(flow) || item.class_id == "CCB") continue;
    if (flow.isvelocity == 0) {
      EXPECT_NEAR(flow.qvmin / 1000 / flow.ductarea, 0.8, 0.05) << item.name();
      EXPECT_NEAR(flow.qvmax / 1000 / flow.ductarea, 8, 0.5) << item.name();
    } else {
      EXPECT_THAT(+flow.qvmin, AllOf(Ge(0.5F), Le(1.0F))) << item.name();
      EXPECT_THAT(+flow.qvmax, AllOf(Ge(5.0F), Le(8.0F))) << item.name();
    }
    EXPECT_THAT(flow.qvmax / flow.qvmin, AllOf(Ge(9.0F), Le(12.0F))) << item.name();
    EXPECT_GT(+flow.dpmin, 0) << item.name();
    EXPECT_GT(+flow.dpmax, +flow.dpmin) << item.name();
  }
}

TEST_F(CatalogueTest, SoundRises50To60DecibelsPerDecadeOfVelocity) {
  for (const Item& item : catalogue->items) {
    if (item.flow.kind >= 30) continue;  // measured at flow and pressure apart
    for (const auto& curve : sound_curves(item.flow)) {
      ASSERT_GE(curve.size(), 3u) << item.name();
      const double rise = total_level(curve.back()) - total_level(curve.front());
      const double slope = rise / std::log10(double{curve.back().qv} / double{curve.front().qv});
      EXPECT_GT(slope, 50) << item.name() << " at " << curve.front().qv;
      EXPECT_LT(slope, 60) << item.name() << " at " << curve.front().qv;
      for (const LwPoint& row : curve) EXPECT_LE(*std::max_element(row.lw, row.lw + 8), 99) << item.name();
    }
  }
}

TEST_F(CatalogueTest, RoomLevelsOfDiagramsLieInsideTheirFields) {
  for (const Item& item : catalogue->items) {
    if (is_fan(item.flow)) continue;  // its diagram has no levels
    FlowData flow = item.flow;
    tavca_check_end_reflection(&flow);
    float lowest = 999;
    float highest = -999;
    for (int i = 0; i < flow.nlw; ++i) {
      float lw[8];
      for (int band = 0; band < 8; ++band) lw[band] = flow.lwpoints[i].lw[band];
      lowest = std::min(lowest, tavca_LpA(lw));
      highest = std::max(highest, tavca_LpA(lw));
    }
    EXPECT_LT(lowest, 25) << item.name();
    EXPECT_GT(highest, 40) << item.name();
  }
}

TEST_F(CatalogueTest, CodesAndDescriptionsFollowMarketAndLanguage) {
  for (const Item& item : catalogue->items) {
    for (const char* market : {"", "FIN", "SWE", "GBR", "DEU", "POL", "EST", "RUS", "UNKNOWN"}) {
      tavdcore_set_market_area(market);
      tavd_wchar code[40] = {};
      tavdf_copyproductcodew(catalogue->db(), item.rec, code, 40);
      EXPECT_EQ(code[0], std::string(market) == "RUS" ? tavd_wchar{0x041A} : tavd_wchar{'Q'})
          << item.name() << market;
      tavd_wchar link[120] = {};
      tavdf_copyweblinkw(catalogue->db(), item.rec, link, 120);
      EXPECT_EQ(link[0], tavd_wchar{'h'}) << item.name() << market;
    }
    for (const std::int16_t language :
         std::initializer_list<std::int16_t>{1510, 1511, 1512, 1513, 1518, 1525, 1528, 1536, 1539}) {
      tavdcore_set_user_lng(language);
      tavd_wchar text[80] = {};
      tavdf_copyproductdescw(catalogue->db(), item.rec, text, 80);
      EXPECT_NE(text[0], tavd_wchar{0}) << item.name() << " " << language;
    }
  }
  tavdcore_init(1512, "", "");
}

}  // namespace
