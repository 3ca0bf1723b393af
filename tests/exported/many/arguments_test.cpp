// Bad input to libtavdn: an answer or a code, and arrays that stay as they were where there is a code.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "exported/many/results.h"
#include "support/products.h"
#include "tavd/tavdn.h"

namespace {

using manytest::kNoCode;
using manytest::kUnwritten;
using manytest::Results;
using tavdtest::damper_product;
using tavdtest::resistance_product;

constexpr std::size_t kMoreThanMemory = std::numeric_limits<std::size_t>::max() / 2;

class ManyArguments : public testing::Test {
 protected:
  ManyArguments() {
    const FlowData fd = damper_product({{1, 100, 400}, {2, 100, 100}, {3, 100, 25}});
    tavdn_prepare(&fd, nullptr, &product);
  }
  ~ManyArguments() override { tavdn_release(product); }

  tavdn_product* product = nullptr;
  std::array<float, 3> qv = {100, 100, 100};
  std::array<float, 3> dp = {200, 500, 20};
  Results results{3};
};

TEST_F(ManyArguments, PositionsOfADamper) {
  ASSERT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &results.record), 0);
  const tavdn_results& out = results.record;
  EXPECT_FLOAT_EQ(out.position[0], 1.5F);
  EXPECT_EQ(out.position[1], 1.0F);
  EXPECT_EQ(out.position[2], 3.0F);
  EXPECT_EQ(out.position_code[0], 0);
  EXPECT_EQ(out.position_code[1], 1);
  EXPECT_EQ(out.position_code[2], -1);
  EXPECT_EQ(out.dp_min[0], 25.0F);
  EXPECT_EQ(out.dp_max[0], 400.0F);
  EXPECT_EQ(out.lw_code[0], -3);  // no sound table
  EXPECT_EQ(out.lpa[0], 0.0F);
  EXPECT_EQ(out.throw_code[0], -1);
  EXPECT_EQ(out.throw_length[0], 0.0F);
}

TEST_F(ManyArguments, NullArraysAreLeftOut) {
  tavdn_results out{};
  out.size = sizeof out;
  EXPECT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &out), 0);
  out.position = results.record.position;
  EXPECT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &out), 0);
  EXPECT_FLOAT_EQ(out.position[0], 1.5F);
  EXPECT_EQ(results.record.position_code[0], kNoCode);
  EXPECT_EQ(results.record.dp_min[0], kUnwritten);
}

// Each array alone holds what it holds among all.
TEST_F(ManyArguments, EachArrayAloneHoldsTheSame) {
  ASSERT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &results.record), 0);
  constexpr std::size_t kFirst = offsetof(tavdn_results, range_code);
  for (std::size_t at = kFirst; at < sizeof(tavdn_results); at += sizeof(void*)) {
    Results alone(3);
    tavdn_results out{};
    out.size = sizeof out;
    const void* array = nullptr;
    const void* expected = nullptr;
    std::memcpy(&array, reinterpret_cast<char*>(&alone.record) + at, sizeof array);
    std::memcpy(&expected, reinterpret_cast<char*>(&results.record) + at, sizeof expected);
    std::memcpy(reinterpret_cast<char*>(&out) + at, &array, sizeof array);
    ASSERT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &out), 0);
    EXPECT_EQ(std::memcmp(array, expected, 3 * sizeof(float)), 0) << "member at byte " << at;
  }
}

TEST_F(ManyArguments, NoPressureCountsAsZero) {
  ASSERT_EQ(tavdn_calculate(product, 3, qv.data(), nullptr, 4.0F, &results.record), 0);
  EXPECT_EQ(results.record.position_code[0], -4);
  EXPECT_EQ(results.record.dp_max[2], 400.0F);
}

TEST_F(ManyArguments, NoPointsTouchNothing) {
  EXPECT_EQ(tavdn_calculate(product, 0, nullptr, nullptr, 4.0F, &results.record), 0);
  EXPECT_EQ(results.record.dp_min[0], kUnwritten);
  EXPECT_EQ(tavdn_lpa(0, nullptr, 4.0F, nullptr), 0);
  EXPECT_EQ(tavdn_throw(product, nullptr, 0, nullptr, nullptr), 0);
  EXPECT_EQ(tavdn_ductarea(0, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(tavdn_endref(0, nullptr, nullptr), 0);
}

TEST_F(ManyArguments, MissingArgumentsAreRefused) {
  EXPECT_EQ(tavdn_calculate(nullptr, 3, qv.data(), dp.data(), 4.0F, &results.record), -1);
  EXPECT_EQ(tavdn_calculate(product, 3, nullptr, dp.data(), 4.0F, &results.record), -1);
  EXPECT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, nullptr), -1);
  EXPECT_EQ(results.record.dp_min[0], kUnwritten);
  float number = kUnwritten;
  EXPECT_EQ(tavdn_lpa(1, nullptr, 4.0F, &number), -1);
  EXPECT_EQ(tavdn_lpa(1, qv.data(), 4.0F, nullptr), -1);
  EXPECT_EQ(tavdn_throw(nullptr, nullptr, 1, qv.data(), &number), -1);
  EXPECT_EQ(tavdn_throw(product, nullptr, 1, nullptr, &number), -1);
  EXPECT_EQ(tavdn_throw(product, nullptr, 1, qv.data(), nullptr), -1);
  const std::int16_t b = 160;
  EXPECT_EQ(tavdn_ductarea(1, nullptr, &b, &number), -1);
  EXPECT_EQ(tavdn_ductarea(1, &b, nullptr, nullptr), -1);
  EXPECT_EQ(tavdn_endref(1, nullptr, &number), -1);
  EXPECT_EQ(tavdn_endref(1, qv.data(), nullptr), -1);
  EXPECT_EQ(number, kUnwritten);
}

TEST_F(ManyArguments, MorePointsThanMemoryAreRefused) {
  EXPECT_EQ(tavdn_calculate(product, kMoreThanMemory, qv.data(), dp.data(), 4.0F, &results.record), -1);
  EXPECT_EQ(tavdn_lpa(kMoreThanMemory, qv.data(), 4.0F, dp.data()), -1);
  EXPECT_EQ(tavdn_throw(product, nullptr, kMoreThanMemory, qv.data(), dp.data()), -1);
  const std::int16_t b = 160;
  EXPECT_EQ(tavdn_ductarea(kMoreThanMemory, &b, &b, dp.data()), -1);
  EXPECT_EQ(tavdn_endref(kMoreThanMemory, qv.data(), dp.data()), -1);
}

TEST_F(ManyArguments, RecordsOfAnotherSizeAreRefused) {
  results.record.size = 0;
  EXPECT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &results.record), -1);
  results.record.size = sizeof(tavdn_results) - sizeof(void*);
  EXPECT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &results.record), -1);
  EXPECT_EQ(results.record.dp_min[0], kUnwritten);
}

// A host that was built with a later header, on this library.
TEST_F(ManyArguments, MembersOfALaterHeaderMustBeNull) {
  struct Later {
    tavdn_results known;
    float* unknown;
  } later{results.record, nullptr};
  later.known.size = sizeof later;
  EXPECT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &later.known), 0);
  EXPECT_FLOAT_EQ(results.record.position[0], 1.5F);
  float more = kUnwritten;
  later.unknown = &more;
  EXPECT_EQ(tavdn_calculate(product, 3, qv.data(), dp.data(), 4.0F, &later.known), -1);
}

TEST(ManyProduct, PreparingSaysWhatIsMissing) {
  const FlowData fd = resistance_product(100, 50);
  tavdn_product* product = reinterpret_cast<tavdn_product*>(&product);
  EXPECT_EQ(tavdn_prepare(nullptr, nullptr, &product), -1);
  EXPECT_EQ(product, nullptr);
  EXPECT_EQ(tavdn_prepare(&fd, nullptr, nullptr), -1);
  tavdn_release(nullptr);
  EXPECT_EQ(tavdn_flowdata(nullptr), nullptr);
}

TEST(ManyProduct, KeepsACopyOfRecordAndDuct) {
  FlowData fd = resistance_product(100, 50);
  std::strcpy(fd.szobjID, "ABC-160");
  tavdn_product* product = nullptr;
  ASSERT_EQ(tavdn_prepare(&fd, nullptr, &product), 0);
  const FlowData before = fd;
  std::memset(&fd, 0xFF, sizeof fd);
  EXPECT_EQ(std::memcmp(tavdn_flowdata(product), &before, sizeof before), 0);
  const float qv = 200;
  Results results(1);
  EXPECT_EQ(tavdn_calculate(product, 1, &qv, nullptr, 4.0F, &results.record), 0);
  EXPECT_EQ(results.record.dp_min[0], 200.0F);
  tavdn_release(product);
}

TEST(ManyProduct, WithoutFlowDataAnswersCodes) {
  const FlowData empty = tavdtest::product(0);
  FlowData fd = empty;
  fd.nhdd = 0;
  tavdn_product* product = nullptr;
  ASSERT_EQ(tavdn_prepare(&fd, nullptr, &product), 0);
  const float qv = 100;
  const float dp = 50;
  Results results(1);
  EXPECT_EQ(tavdn_calculate(product, 1, &qv, &dp, 4.0F, &results.record), 0);
  EXPECT_EQ(results.record.range_code[0], -2);
  EXPECT_EQ(results.record.position_code[0], -3);
  EXPECT_EQ(results.record.lw_code[0], -2);
  tavdn_release(product);
}

TEST(ManyTables, DuctAreas) {
  const std::int16_t b[] = {200, 400, 160, -5};
  const std::int16_t h[] = {0, 200, -1, 0};
  float area[4] = {kUnwritten, kUnwritten, kUnwritten, kUnwritten};
  ASSERT_EQ(tavdn_ductarea(4, b, h, area), 0);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(area[i], tavca_ductarea_m2(b[i], h[i]));
  ASSERT_EQ(tavdn_ductarea(4, b, nullptr, area), 0);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(area[i], tavca_ductarea_m2(b[i], 0));
}

TEST(ManyTables, EndReflections) {
  const float area[] = {0.1F, 1.0F, 2.0F, 0.19F, 0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()};
  float reflection[7 * TAVD_BANDS];
  std::fill(std::begin(reflection), std::end(reflection), kUnwritten);
  ASSERT_EQ(tavdn_endref(7, area, reflection), 0);
  EXPECT_NEAR(reflection[0], 13.978, 0.001);
  EXPECT_NEAR(reflection[2 * TAVD_BANDS], 2.404, 0.001);
  EXPECT_EQ(reflection[2 * TAVD_BANDS + 1], 0.0F);
  for (int i = 0; i < 7; ++i) {
    for (int band = 0; band < TAVD_BANDS; ++band) {
      EXPECT_EQ(reflection[i * TAVD_BANDS + band], tavca_endref_A(band, area[i])) << i << " " << band;
    }
  }
}

}  // namespace
