// Selection beside the single functions over all pairs of products and duties: every hit, rank, reason and
// number, bit for bit.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "exported/select/plain_selection.h"
#include "oracle/reference/records.h"
#include "support/database.h"
#include "support/products.h"
#include "support/program.h"
#include "tavd/ewads.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"

namespace {

using selecttest::plain_products;
using selecttest::plain_select;
using selecttest::PlainAnswer;
using selecttest::PlainHit;
using selecttest::PlainProduct;
using selecttest::PlainValues;

constexpr int kWanted = 7;

struct Closing {
  void operator()(tavdn_catalogue* catalogue) const { tavdn_catalogue_close(catalogue); }
};
using Catalogue = std::unique_ptr<tavdn_catalogue, Closing>;

const std::vector<PlainValues> kSets = {
    {}, {{"PLATE", nullptr}}, {{"PLATE", "60"}}, {{"VALVE", nullptr}, {"PLATE", "100"}}, {{"PLATE", "wide"}}};

Catalogue opened(std::int16_t db, bool without_end_reflection) {
  std::vector<std::vector<tavdn_value>> values;
  std::vector<tavdn_values> sets;
  for (const PlainValues& set : kSets) {
    std::vector<tavdn_value>& of_set = values.emplace_back();
    for (const auto& [name, value] : set) of_set.push_back({name.c_str(), value});
    sets.push_back({of_set.data(), static_cast<std::int32_t>(of_set.size())});
  }
  tavdn_catalogue_options options{};
  options.size = sizeof options;
  options.sets = sets.data();
  options.nsets = static_cast<std::int32_t>(sets.size());
  options.without_end_reflection = without_end_reflection ? 1 : 0;
  tavdn_catalogue* catalogue = nullptr;
  EXPECT_EQ(tavdn_catalogue_open(db, &options, &catalogue), 0);
  return Catalogue(catalogue);
}

// Points in and around the limits of a product, with conditions that some products meet and others do not.
class Duties {
 public:
  explicit Duties(const std::vector<PlainProduct>& products) : products_(products) {}

  tavdn_duty next() {
    const PlainProduct& near =
        products_[static_cast<std::size_t>(numbers_.upto(static_cast<int>(products_.size()) - 1))];
    const float part = numbers_.between(-0.1F, 1.1F);
    tavdn_duty duty{};
    duty.size = sizeof duty;
    const float flow = near_flow(near, part);
    duty.flow_unit = numbers_.upto(1);
    duty.qv = static_cast<double>(std::max(flow, 0.5F)) * (duty.flow_unit == 1 ? 3.6 : 1.0);
    duty.dp = numbers_.between(2.0F, 150.0F);
    duty.roomdamp = sometimes() ? 4.0F : 7.5F;
    duty.rank = numbers_.upto(3);
    duty.values = numbers_.upto(static_cast<int>(kSets.size()) - 1);
    duty.wanted = 1 + numbers_.upto(kWanted - 1);
    if (sometimes()) duty.dp_lowest = duty.dp * numbers_.between(0.0F, 1.0F);
    if (sometimes()) duty.lp_max = numbers_.between(15.0F, 55.0F);
    if (sometimes()) duty.lw_max[numbers_.upto(7)] = numbers_.between(20.0F, 60.0F);
    if (sometimes()) duty.throw_min = numbers_.between(0.0F, 6.0F);
    if (sometimes()) duty.throw_max = duty.throw_min + numbers_.between(0.1F, 9.0F);
    if (sometimes()) duty.unknown_allowed = static_cast<std::uint32_t>(numbers_.upto(15));
    if (sometimes()) add_size(near, duty);
    if (sometimes()) add_class(near, duty);
    return duty;
  }

 private:
  bool sometimes() { return numbers_.upto(3) == 0; }

  // At a part of the way between its limits, l/s.
  static float near_flow(const PlainProduct& near, float part) {
    float flow = near.loaded.qvmin + part * (near.loaded.qvmax - near.loaded.qvmin);
    if (near.loaded.isvelocity != 0) flow *= 1000.0F * ewads_m2(&near.duct);
    constexpr float kSome = 80.0F;
    return std::isfinite(flow) && flow < 1e9F ? flow : kSome;
  }

  void add_size(const PlainProduct& near, tavdn_duty& duty) {
    if (near.duct.b < 1 || (near.duct.shape != 0 && near.duct.h < 1)) return;
    duty.duct_min = duty.duct_max = near.duct;
    if (sometimes()) duty.duct_max.b = static_cast<std::int16_t>(std::min(near.duct.b + 90, 32767));
  }

  void add_class(const PlainProduct& near, tavdn_duty& duty) {
    classes_.push_back(std::make_unique<const char*>(near.class_id.c_str()));
    duty.classes = classes_.back().get();
    duty.nclasses = 1;
  }

  const std::vector<PlainProduct>& products_;
  tavdtest::Numbers numbers_;
  std::vector<std::unique_ptr<const char*>> classes_;
};

// The same bits, member by member; what is no number need not be the same one.
bool has_same_bits(const tavdn_hit& a, const tavdn_hit& b) {
  using Words = std::array<std::uint32_t, sizeof(tavdn_hit) / sizeof(std::uint32_t)>;
  const auto one = std::bit_cast<Words>(a);
  const auto other = std::bit_cast<Words>(b);
  return std::equal(one.begin(), one.end(), other.begin(), [](std::uint32_t x, std::uint32_t y) {
    return x == y || (std::isnan(std::bit_cast<float>(x)) && std::isnan(std::bit_cast<float>(y)));
  });
}

// The same bits but for `variant`, which the record that it names stands for.
void expect_same_hit(const tavdn_catalogue* catalogue, tavdn_hit hit, const PlainHit& plain) {
  const tavdn_product* const product = tavdn_catalogue_variant(catalogue, hit.product, hit.variant);
  ASSERT_NE(product, nullptr);
  EXPECT_EQ(std::memcmp(tavdn_flowdata(product), &plain.chosen, sizeof plain.chosen), 0);
  hit.variant = 0;
  EXPECT_TRUE(has_same_bits(hit, plain.hit))
      << "product " << hit.product << " beside " << plain.hit.product << ", unknown " << hit.unknown
      << " beside " << plain.hit.unknown << ", " << hit.lpa << " beside " << plain.hit.lpa << " dB(A), throw "
      << hit.throw_code << " beside " << plain.hit.throw_code;
}

struct Counts {
  std::size_t hits = 0;
  std::vector<std::size_t> reasons = std::vector<std::size_t>(TAVDN_WHY_COUNT);
};

void compare(const std::string& path, int rounds, bool without_end_reflection, Counts& counts) {
  const std::int16_t db = tavdf_open_database(path.c_str(), 0);
  ASSERT_GT(db, 0);
  const std::vector<PlainProduct> products = plain_products(db, without_end_reflection);
  const Catalogue catalogue = opened(db, without_end_reflection);
  tavdsrv_closedatabase(db);
  ASSERT_EQ(tavdn_catalogue_count(catalogue.get()), products.size());
  Duties duties(products);
  std::vector<tavdn_duty> asked;
  for (int i = 0; i < rounds; ++i) asked.push_back(duties.next());
  std::vector<tavdn_hit> hits(asked.size() * kWanted);
  std::vector<tavdn_fitting> fitting(asked.size());
  std::vector<unsigned char> reasons(asked.size() * products.size(), 255);
  ASSERT_EQ(tavdn_select_many(catalogue.get(), asked.size(), asked.data(), kWanted, hits.data(),
                              fitting.data(), reasons.data(), 2, nullptr),
            0);
  std::vector<tavdn_hit> quick_hits(asked.size() * kWanted);
  std::vector<tavdn_fitting> quick_fitting(asked.size());
  ASSERT_EQ(tavdn_select_many(catalogue.get(), asked.size(), asked.data(), kWanted, quick_hits.data(),
                              quick_fitting.data(), nullptr, 1, nullptr),
            0);
  EXPECT_EQ(std::memcmp(hits.data(), quick_hits.data(), hits.size() * sizeof(tavdn_hit)), 0);
  for (std::size_t i = 0; i < asked.size(); ++i) {
    SCOPED_TRACE("duty " + std::to_string(i));
    const PlainAnswer plain =
        plain_select(products, kSets[static_cast<std::size_t>(asked[i].values)], asked[i]);
    ASSERT_EQ(fitting[i].products, plain.hits.size());
    ASSERT_EQ(quick_fitting[i].products, plain.hits.size());
    const std::size_t expected =
        std::min<std::size_t>(plain.hits.size(), static_cast<std::size_t>(asked[i].wanted));
    ASSERT_EQ(static_cast<std::size_t>(fitting[i].hits), expected);
    for (std::size_t j = 0; j < expected; ++j) {
      expect_same_hit(catalogue.get(), hits[i * kWanted + j], plain.hits[j]);
    }
    counts.hits += expected;
    for (std::size_t j = 0; j < products.size(); ++j) {
      const unsigned char reason = reasons[i * products.size() + j];
      ASSERT_EQ(reason, plain.reasons[j]) << products[j].class_id << ' ' << products[j].object_id;
      ++counts.reasons[reason];
    }
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Agreement, WithTheSampleCatalogue) {
  const clitest::Folder folder;
  const std::string path = folder.file("catalogue.tavdb");
  ASSERT_EQ(clitest::run_program({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", path}).exit_code, 0);
  Counts counts;
  compare(path, 2000, false, counts);
  compare(path, 300, true, counts);
  EXPECT_GT(counts.hits, 1000U);
  // The duties are such that every reason occurs but those that no product of the catalogue gives.
  for (int reason = 0; reason < TAVDN_WHY_COUNT; ++reason) {
    const bool has_data = reason != TAVDN_WHY_SIZE_UNKNOWN && reason != TAVDN_WHY_FLOW_UNKNOWN &&
                          reason != TAVDN_WHY_PRESSURE_UNKNOWN && reason != TAVDN_WHY_SOUND_UNKNOWN;
    EXPECT_EQ(counts.reasons[static_cast<std::size_t>(reason)] > 0U, has_data)
        << tavdn_message("TAVDN_WHY_", reason);
  }
}

template <typename Row, std::size_t N>
void put(tavdtest::Record& record, int attribute, const Row (&table)[N], int count) {
  const int rows = std::clamp(count, 0, static_cast<int>(N));
  if (rows > 0) record.bytes(attribute, table, static_cast<std::size_t>(rows) * sizeof(Row));
}

// A record from which a load makes much the same one.
void save(const FlowData& fd, const std::string& id, std::int16_t db) {
  tavdtest::Record record("RND", id.c_str());
  record.header(static_cast<std::int16_t>(fd.kind + 100), fd.b, fd.h, fd.qvmin, fd.qvmax, fd.dpmin, fd.dpmax)
      .floats(1651, {fd.qvref, fd.dpref})
      .floats(1302, {fd.lwsizecoef});
  put(record, 1652, fd.damper, fd.ndamper);
  put(record, 1657, fd.qvdppoints, fd.nqvdp);
  put(record, 1666, fd.fancurve, fd.nfan);
  put(record, 1653, fd.lwpoints, fd.nlw);
  put(record, 1659, fd.qvL2, fd.nqvL2);
  put(record, 1660, fd.parL2, fd.nparL2);
  if (fd.npar >= 1) put(record, 1661, fd.par[0].table, fd.par[0].count);
  if (fd.npar >= 2) put(record, 1662, fd.par[1].table, fd.par[1].count);
  std::string names;
  for (int i = 0; i < std::min<int>(fd.npar, 2); ++i)
    names += (i == 0 ? "" : ",") + std::string(fd.par[i].name);
  if (!names.empty()) record.text(1514, names);
  record.save(db);
}

// Tables in order, in disorder, and of numbers that no measurement gives.
TEST(Agreement, WithRandomRecords) {
  const tavdtest::Database db;
  reference::Random random(15);
  tavdsrv_begin(db.handle());
  for (int i = 0; i < 400; ++i) {
    constexpr std::array<std::int16_t, 8> kKinds = {10, 11, 12, 13, 20, 22, 30, 40};
    constexpr std::array kShapes = {reference::Shape::sorted, reference::Shape::full,
                                    reference::Shape::shuffled, reference::Shape::hostile};
    const std::int16_t kind = kKinds[static_cast<std::size_t>(i) % kKinds.size()];
    const auto shape = kShapes[static_cast<std::size_t>(random.below(4))];
    save(random_product(random, kind, shape).fd, "R-" + std::to_string(1000 + i), db.handle());
  }
  ASSERT_EQ(tavdsrv_commit(db.handle()), 0);
  Counts counts;
  compare(db.path(), 600, false, counts);
  EXPECT_GT(counts.hits, 1000U);
  for (const int reason : {TAVDN_WHY_PRESSURE_UNKNOWN, TAVDN_WHY_SOUND_UNKNOWN, TAVDN_WHY_FAN_BELOW_CURVE}) {
    EXPECT_GT(counts.reasons[static_cast<std::size_t>(reason)], 0U) << reason;
  }
}

TEST(Agreement, WithSyntheticCatalogues) {
  const clitest::Folder folder;
  Counts counts;
  for (const char* seed : {"1", "2"}) {
    const std::string path = folder.file(std::string("synth") + seed + ".tavdb");
    ASSERT_EQ(clitest::run_program({"db", "synth", path, "--records", "600", "--seed", seed}).exit_code, 0);
    compare(path, 600, false, counts);
  }
  EXPECT_GT(counts.hits, 1000U);
}

}  // namespace
