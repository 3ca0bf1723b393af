// The sample catalogue, built and loaded as a host does, for tests of its figures: they must be those of
// products that could exist. A field of a FlowData stands as "+field" in a check: the record is packed, so no
// reference may be bound to it.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "support/program.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace clitest {

inline constexpr int kGrid = 15;  // points per axis of a product's field

struct Item {
  std::string class_id;
  std::string object_id;
  tavb_rec rec;
  FlowData flow;
  std::string name() const { return class_id + " " + object_id; }
};

// The catalogue in a database of its own, and all its products loaded: model records and the layers of
// layered products, which are no products by themselves, are left out.
class Catalogue {
 public:
  Catalogue();
  ~Catalogue();
  Catalogue(const Catalogue&) = delete;
  Catalogue& operator=(const Catalogue&) = delete;

  std::int16_t db() const { return db_; }
  std::vector<Item> items;

 private:
  void add(tavb_rec rec);
  Folder folder_;
  std::int16_t db_ = -1;
};

// Builds the catalogue once for all its tests.
struct CatalogueTest : testing::Test {
  static void SetUpTestSuite() { catalogue = std::make_unique<Catalogue>(); }
  static void TearDownTestSuite() { catalogue.reset(); }
  static std::unique_ptr<Catalogue> catalogue;

  // The products whose class and id begin so, as "ASD QZBA".
  static std::vector<Item> of(const std::string& start);
};

// Point `i` of kGrid on a logarithmic scale, both ends included.
float scale(float lowest, float highest, int i);

bool is_fan(const FlowData& flow);

// Where a scale can begin: the axes of a fan do at zero, its curve does not.
float lowest_flow(const FlowData& flow);
float lowest_pressure(const FlowData& flow);

double resistance(float qv, float dp);

DuctSize duct_of(const FlowData& flow);

// Rows of the sound table that belong to one setting: neighbours of the same resistance within 10 %. What is
// measured at several flows has one curve, along which the resistance changes.
std::vector<std::vector<LwPoint>> sound_curves(const FlowData& flow);

// Levels of the product at `qv` and `dp`, dB; the product has an answer there.
std::array<float, 8> level(const Item& item, float qv, float dp);

}  // namespace clitest
