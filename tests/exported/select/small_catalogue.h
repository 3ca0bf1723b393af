// Catalogues of a few products for one test.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/database.h"
#include "support/products.h"
#include "tavd/tavdf.h"
#include "tavd/tavdn_select.h"

namespace selecttest {

struct Closing {
  void operator()(tavdn_catalogue* catalogue) const { tavdn_catalogue_close(catalogue); }
};
using Catalogue = std::unique_ptr<tavdn_catalogue, Closing>;

inline tavdn_catalogue_options catalogue_options() {
  tavdn_catalogue_options options{};
  options.size = sizeof options;
  return options;
}

inline Catalogue open_catalogue(const tavdtest::Database& db,
                                const tavdn_catalogue_options* options = nullptr) {
  tavdn_catalogue* catalogue = nullptr;
  EXPECT_EQ(tavdn_catalogue_open(db.handle(), options, &catalogue), 0);
  return Catalogue(catalogue);
}

inline tavdn_duty duty(double qv, float dp) {
  tavdn_duty duty{};
  duty.size = sizeof duty;
  duty.qv = qv;
  duty.dp = dp;
  duty.roomdamp = 4.0F;
  duty.wanted = 1;
  return duty;
}

// From 10 to 200 l/s; 400, 100 and 25 Pa at 100 l/s in its three settings. No sound table.
inline void damper(const tavdtest::Database& db, const char* class_id, const std::string& id, int size) {
  tavdtest::Record(class_id, id.c_str())
      .header(120, static_cast<std::int16_t>(size), 0, 10, 200, 1, 500)
      .rows<DamperPoint>(1652, {{1, 100, 400}, {2, 100, 100}, {3, 100, 25}})
      .save(db.handle());
}

// From 10 to 100 l/s, 20 Pa at 50 l/s; throws 2 m at 50 l/s. No sound table.
inline void terminal(const tavdtest::Database& db, const char* class_id, const std::string& id, int size) {
  tavdtest::Record(class_id, id.c_str())
      .header(110, static_cast<std::int16_t>(size), 0, 10, 100, 1, 100)
      .floats(1651, {50, 20})
      .rows<QvL2Point>(1659, {{50, 2}, {100, 4}})
      .save(db.handle());
}

// One hit of one product, or why not.
struct Outcome {
  std::size_t products;
  std::vector<tavdn_hit> hits;
  std::vector<unsigned char> reasons;
};

inline Outcome select(const Catalogue& catalogue, const tavdn_duty& duty) {
  Outcome outcome{0, std::vector<tavdn_hit>(static_cast<std::size_t>(duty.wanted)), {}};
  outcome.reasons.resize(tavdn_catalogue_count(catalogue.get()), 255);
  tavdn_fitting fitting{99, 99};
  EXPECT_EQ(tavdn_select(catalogue.get(), &duty, outcome.hits.size(), outcome.hits.data(), &fitting,
                         outcome.reasons.data()),
            0);
  outcome.products = fitting.products;
  outcome.hits.resize(static_cast<std::size_t>(fitting.hits));
  return outcome;
}

}  // namespace selecttest
