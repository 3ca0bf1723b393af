// The sample catalogue, built and loaded as a host does: its figures must be those of products that could
// exist. A field of a FlowData stands as "+field" in a check: the record is packed, so no reference may be
// bound to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
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

  static std::vector<Item> of_class(const std::string& class_id) {
    std::vector<Item> found;
    for (const Item& item : catalogue->items) {
      if (item.class_id == class_id) found.push_back(item);
    }
    EXPECT_FALSE(found.empty()) << class_id;
    return found;
  }
};

std::unique_ptr<Catalogue> CatalogueTest::catalogue;

// Point `i` of kGrid on a logarithmic scale, both ends included.
float scale(float lowest, float highest, int i) {
  return static_cast<float>(lowest * std::pow(double{highest} / lowest, i / (kGrid - 1.0)));
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

// Rows of the sound table that belong to one setting: neighbours of the same resistance within 10 %.
std::vector<std::vector<LwPoint>> sound_curves(const FlowData& flow) {
  std::vector<std::vector<LwPoint>> curves;
  for (int i = 0; i < flow.nlw; ++i) {
    const LwPoint row = flow.lwpoints[i];
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

TEST_F(CatalogueTest, HoldsThreeFamiliesWithTheirSizes) {
  const struct {
    const char* class_id;
    const char* object_id;
    int kind;
    int sizes;
  } families[] = {{"DMP", "QZDA-*", 20, 6}, {"ASD", "QZBA-*", 10, 4}, {"LVR", "QZLA-*", 11, 4}};
  for (const auto& family : families) {
    FamilyList list;
    tavfm_init(&list);
    char object_id[31] = "                              ";
    std::copy_n(family.object_id, std::strlen(family.object_id), object_id);
    EXPECT_EQ(tavfm_read(&list, catalogue->db(), family.class_id, object_id), family.sizes)
        << family.object_id;
    EXPECT_EQ(list.sizingmode, 1);
    tavfm_release(&list);
    for (const Item& item : of_class(family.class_id)) EXPECT_EQ(+item.flow.kind, family.kind) << item.name();
  }
}

TEST_F(CatalogueTest, EveryProductHasAPressureRangeAtEveryFlow) {
  for (const Item& item : catalogue->items) {
    for (int i = 0; i < kGrid; ++i) {
      const float qv = scale(item.flow.qvmin, item.flow.qvmax, i);
      float mindp = -1;
      float maxdp = -1;
      EXPECT_EQ(tavca_minmaxdptot(&item.flow, qv, &mindp, &maxdp), 0) << item.name();
      EXPECT_GT(mindp, 0) << item.name();
      EXPECT_GE(maxdp, item.flow.kind == 20 ? 100 * mindp : mindp) << item.name();
      EXPECT_LE(maxdp, item.flow.kind == 20 ? 1000 * mindp : mindp) << item.name();
    }
  }
}

TEST_F(CatalogueTest, EveryProductHasASoundLevelAllOverItsField) {
  for (const Item& item : catalogue->items) {
    const DuctSize duct = duct_of(item.flow);
    for (int i = 0; i < kGrid * kGrid; ++i) {
      const float qv = scale(item.flow.qvmin, item.flow.qvmax, i % kGrid);
      const float dp = scale(item.flow.dpmin, item.flow.dpmax, i / kGrid);
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

TEST_F(CatalogueTest, FlowsFollowTheAreaOfTheDuct) {
  for (const Item& item : catalogue->items) {
    const FlowData& flow = item.flow;
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
  for (const Item& item : of_class("DMP")) {
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
  for (const Item& item : of_class("DMP")) {
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
  for (const Item& item : of_class("DMP")) {
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
  for (const Item& item : of_class("DMP")) {
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
  for (const Item& item : of_class("ASD")) {
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
  for (const Item& item : of_class("LVR")) {
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
