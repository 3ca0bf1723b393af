#include "catalogue_fixture.h"

#include <cmath>
#include <cstring>

#include "tavd/tavca.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"

namespace clitest {

namespace {

constexpr const char* kModelClass = "TVM";
constexpr const char* kLayeredClass = "GRL";

}  // namespace

Catalogue::Catalogue() {
  const std::string path = folder_.file("catalogue.tavdb");
  const Outcome outcome =
      run_program({"db", "build", std::string(TAVD_SOURCE_DIR) + "/catalogue", "-o", path});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  tavdcore_init(1512, "", "");
  db_ = tavdf_open_database(path.c_str(), 0);
  EXPECT_GE(db_, 0);
  for (tavb_rec rec = tavbfindrec(db_, "AAA", "", 1); rec != nullptr;) {
    tavb_rec next = tavbnextrec(db_, rec);
    add(rec);
    rec = next;
  }
}

Catalogue::~Catalogue() {
  for (const Item& item : items) tavbreleaserec(item.rec);
  tavdsrv_closedatabase(db_);
}

void Catalogue::add(tavb_rec rec) {
  char class_id[8] = {};
  char object_id[32] = {};
  char text[32] = {};
  tavbgetID(db_, rec, class_id, object_id);
  if (std::strcmp(class_id, kModelClass) == 0 || std::strcmp(class_id, kLayeredClass) == 0) {
    tavbreleaserec(rec);
    return;
  }
  tavbobjIDtosz(db_, object_id, text);
  Item item{class_id, text, rec, {}};
  EXPECT_EQ(tavca_load_flowdata(db_, rec, &item.flow), 0) << item.name();
  items.push_back(item);
}

std::unique_ptr<Catalogue> CatalogueTest::catalogue;

std::vector<Item> CatalogueTest::of(const std::string& start) {
  std::vector<Item> found;
  for (const Item& item : catalogue->items) {
    if (item.name().compare(0, start.size(), start) == 0) found.push_back(item);
  }
  EXPECT_FALSE(found.empty()) << start;
  return found;
}

float scale(float lowest, float highest, int i) {
  return static_cast<float>(lowest * std::pow(double{highest} / lowest, i / (kGrid - 1.0)));
}

bool is_fan(const FlowData& flow) {
  return flow.kind == 40;
}

float lowest_flow(const FlowData& flow) {
  return is_fan(flow) ? +flow.fancurve[0].qv : +flow.qvmin;
}

float lowest_pressure(const FlowData& flow) {
  return is_fan(flow) ? flow.dpmax / 50 : +flow.dpmin;
}

double resistance(float qv, float dp) {
  return double{dp} / (double{qv} * double{qv});
}

DuctSize duct_of(const FlowData& flow) {
  return {static_cast<std::int16_t>(flow.h > 0 ? 1 : 0), flow.b, flow.h};
}

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

std::array<float, 8> level(const Item& item, float qv, float dp) {
  const DuctSize duct = duct_of(item.flow);
  std::array<float, 8> lw;
  lw.fill(-99);
  EXPECT_EQ(tavca_lw(&item.flow, qv, dp, lw.data(), &duct), 0) << item.name() << " " << qv << " " << dp;
  return lw;
}

}  // namespace clitest
