// The sample catalogue, built and loaded as a host does: its figures must be those of products that could
// exist. A field of a FlowData stands as "+field" in a check: the record is packed, so no reference may be
// bound to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>

#include "program.h"
#include "tavd/tavca.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"
#include "tavd/tavdsrv.h"
#include "tavd/tavfm.h"

namespace {

using ::testing::AllOf;
using ::testing::Ge;
using ::testing::Le;

constexpr int kGrid = 15;  // points per axis of the field

struct Item {
  std::string class_id;
  std::string object_id;
  tavb_rec rec;
  FlowData flow;
  std::string name() const { return class_id + " " + object_id; }
};

// The catalogue in a database of its own, built once, and all its products loaded.
class Catalogue {
 public:
  Catalogue() {
    const std::string path = folder_.file("catalogue.tavdb");
    const auto outcome =
        clitest::run_program({"db", "build", std::string(TAVD_SOURCE_DIR) + "/catalogue", "-o", path});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    tavdcore_init(1512, "", "");
    db_ = tavdf_open_database(path.c_str(), 0);
    EXPECT_GE(db_, 0);
    for (tavb_rec rec = tavbfindrec(db_, "AAA", "", 1); rec != nullptr; rec = tavbnextrec(db_, rec)) add(rec);
  }
  ~Catalogue() {
    for (const Item& item : items) tavbreleaserec(item.rec);
    tavdsrv_closedatabase(db_);
  }
  Catalogue(const Catalogue&) = delete;
  Catalogue& operator=(const Catalogue&) = delete;

  std::int16_t db() const { return db_; }
  std::vector<Item> items;

 private:
  void add(tavb_rec rec) {
    char class_id[8] = {};
    char object_id[32] = {};
    char text[32] = {};
    tavbgetID(db_, rec, class_id, object_id);
    tavbobjIDtosz(db_, object_id, text);
    Item item{class_id, text, rec, {}};
    EXPECT_EQ(tavca_load_flowdata(db_, rec, &item.flow), 0) << item.name();
    items.push_back(item);
  }

  clitest::Folder folder_;
  std::int16_t db_ = -1;
};

struct CatalogueTest : testing::Test {
  static void SetUpTestSuite() { catalogue = std::make_unique<Catalogue>(); }
  static void TearDownTestSuite() { catalogue.reset(); }
  static std::unique_ptr<Catalogue> catalogue;

  // The products whose class and id begin so, as "ASD QZBA".
  static std::vector<Item> of(const std::string& start) {
    std::vector<Item> found;
    for (const Item& item : catalogue->items) {
      if (item.name().compare(0, start.size(), start) == 0) found.push_back(item);
    }
    EXPECT_FALSE(found.empty()) << start;
    return found;
  }
};

std::unique_ptr<Catalogue> CatalogueTest::catalogue;

// Point `i` of kGrid on a logarithmic scale, both ends included.
float scale(float lowest, float highest, int i) {
  return static_cast<float>(lowest * std::pow(double{highest} / lowest, i / (kGrid - 1.0)));
}

bool is_fan(const FlowData& flow) {
  return flow.kind == 40;
}

// Where a scale can begin: the axes of a fan do at zero, its curve does not.
float lowest_flow(const FlowData& flow) {
  return is_fan(flow) ? +flow.fancurve[0].qv : +flow.qvmin;
}

float lowest_pressure(const FlowData& flow) {
  return is_fan(flow) ? flow.dpmax / 50 : +flow.dpmin;
}

double resistance(float qv, float dp) {
  return double{dp} / (double{qv} * double{qv});
}

// Energy sum of the bands, dB.
double total_level(const LwPoint& row) {
  double sum = 0;
  for (std::uint8_t band : row.lw) sum += std::pow(10.0, band / 10.0);
  return 10 * std::log10(sum);
}

DuctSize duct_of(const FlowData& flow) {
  return {static_cast<std::int16_t>(flow.h > 0 ? 1 : 0), flow.b, flow.h};
}

// Rows of the sound table that belong to one setting: neighbours of the same resistance within 10 %. What is
// measured at several flows has one curve, along which the resistance changes.
std::vector<std::vector<LwPoint>> sound_curves(const FlowData& flow) {
  std::vector<std::vector<LwPoint>> curves;
  for (int i = 0; i < flow.nlw; ++i) {
    const LwPoint row = flow.lwpoints[i];
    if (flow.kind == 12 && i > 0) {
      curves.back().push_back(row);
      continue;
    }
    const double k = resistance(row.qv, row.dp);
    if (!curves.empty()) {
      const double known = resistance(curves.back()[0].qv, curves.back()[0].dp);
      if (std::abs(k - known) < 0.1 * known) {
        curves.back().push_back(row);
        continue;
      }
    }
    curves.push_back({row});
  }
  return curves;
}

TEST_F(CatalogueTest, HoldsItsFamiliesWithTheirSizes) {
  const struct {
    const char* class_id;
    const char* object_id;
    int kind;
    int sizes;
  } families[] = {{"DMP", "QZDA-*", 20, 6}, {"ASD", "QZBA-*", 10, 4}, {"LVR", "QZLA-*", 11, 4},
                  {"AEX", "QZEA-*", 12, 4}, {"VLV", "QZTA-*", 13, 4}, {"ASD", "QZSA-*", 20, 4},
                  {"MLD", "QZMA-*", 22, 4}, {"VAV", "QZVA-*", 30, 4}, {"CCB", "QZKA-*", 30, 4},
                  {"FAN", "QZFA-*", 40, 5}};
  std::size_t products = 0;
  for (const auto& family : families) {
    FamilyList list;
    tavfm_init(&list);
    char object_id[31] = "                              ";
    std::copy_n(family.object_id, std::strlen(family.object_id), object_id);
    EXPECT_EQ(tavfm_read(&list, catalogue->db(), family.class_id, object_id), family.sizes)
        << family.object_id;
    EXPECT_EQ(list.sizingmode, 1);
    tavfm_release(&list);
    const auto items = of(std::string(family.class_id) + " " + std::string(family.object_id, 5));
    EXPECT_EQ(items.size(), family.sizes + 1u) << family.object_id;
    for (const Item& item : items) EXPECT_EQ(+item.flow.kind, family.kind) << item.name();
    products += items.size();
  }
  EXPECT_EQ(products, catalogue->items.size());
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

// Levels of the product at `qv` and `dp`, dB; the product has an answer there.
std::array<float, 8> level(const Item& item, float qv, float dp) {
  const DuctSize duct = duct_of(item.flow);
  std::array<float, 8> lw;
  lw.fill(-99);
  EXPECT_EQ(tavca_lw(&item.flow, qv, dp, lw.data(), &duct), 0) << item.name() << " " << qv << " " << dp;
  return lw;
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
