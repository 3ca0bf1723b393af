// The quick steps of libtavdn beside the exact ones: how far they are off, and how often the exact one is
// taken.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "calc/calculations.h"
#include "gwmath.h"
#include "many/energysum.h"
#include "many/logarithm.h"
#include "many/paths.h"
#include "many/power.h"
#include "many/product.h"
#include "many/roomlevels.h"
#include "many/throws.h"
#include "oracle/reference/records.h"
#include "tavd/tavca.h"

namespace {

using reference::Random;
using reference::Shape;

// How often the exact step is taken where a point is quick, at most.
constexpr double kSeldom = 0.05;

TEST(QuickLogarithm, IsWithinItsDistanceOfTheExactOne) {
  constexpr std::uint32_t kFirst = 0x00800000;  // the smallest ordinary float
  constexpr std::uint32_t kLast = 0x7F7FFFFF;   // the greatest
  constexpr std::uint32_t kStep = 7919;
  double farthest = 0;
  for (std::uint32_t bits = kFirst; bits <= kLast; bits += kStep) {
    const auto x = std::bit_cast<float>(bits);
    farthest = std::max(farthest, std::fabs(tavd::quick_lg(x) - tavd::gwlog10(x)));
  }
  EXPECT_LT(farthest, tavd::kLogDistance / 2) << "the proven bound leaves room";
}

// Close to 1 the logarithm is small, and so is what it may be off.
TEST(QuickLogarithm, IsWithinItsDistanceAroundOne) {
  for (std::uint32_t bits = 0x3F700000; bits <= 0x3F900000; bits += 3) {
    const auto x = std::bit_cast<float>(bits);
    ASSERT_NEAR(tavd::quick_lg(x), tavd::gwlog10(x), 2e-15) << x;
  }
  EXPECT_EQ(tavd::quick_lg(1.0F) - tavd::quick_lg(1.0F), 0.0);
}

TEST(QuickPower, IsWithinItsDistanceOfTheExactOne) {
  Random random(4);
  double farthest = 0;
  for (int i = 0; i < 400'000; ++i) {
    const double y = static_cast<double>(random.uniform(-40.0F, 40.0F)) * (random.one_in(2) ? 1.0 : 1e-3);
    const long double exact = std::pow(10.0L, static_cast<long double>(y));
    farthest = std::max(farthest, static_cast<double>(std::fabs(tavd::quick_power_of_ten(y) / exact - 1.0L)));
  }
  EXPECT_LT(farthest, tavd::kPowerDistance);
}

TEST(QuickEnergySum, IsWithinItsDistanceOfTheExactOne) {
  for (int span = 0; span < tavd::kSumSpans; ++span) {
    for (int i = -100; i <= 100; ++i) {
      const double u = i / 100.0;
      const double d = -(span + (u + 1.0) / 2.0) / tavd::kSumSpansOfOne;
      const double quick = tavd::sum_polynomial(span, u);
      const long double exact = 10.0L * std::log10(1.0L + std::pow(10.0L, static_cast<long double>(d)));
      ASSERT_NEAR(quick, static_cast<double>(exact), tavd::kSumDistance) << d;
    }
  }
}

// Points of a measured product.
struct Sample {
  Sample(Random& random, int kind) {
    fd = random_product(random, static_cast<std::int16_t>(kind), Shape::full).fd;
    duct = random_point(random, fd, false).duct;
    while (qv.size() < 60) {
      const reference::Point at = random_point(random, fd, false);
      if (!(at.qv > 0.01F && at.qv < 1e6F && at.dp > 0.01F && at.dp < 1e6F)) continue;
      qv.push_back(at.qv);
      dp.push_back(at.dp);
    }
  }
  FlowData fd{};
  DuctSize duct{};
  std::vector<float> qv, dp;
};

class QuickPoints : public testing::TestWithParam<int> {};

// Each set of instructions gives the exact levels, and seldom has to take the exact steps.
TEST_P(QuickPoints, EveryPathGivesTheExactLevels) {
  std::size_t points = 0;
  std::vector<std::size_t> exact(tavd::kMachinePaths);
  for (std::uint64_t seed = 0; points < 40'000; ++seed) {
    Random random(seed * 977 + static_cast<std::uint64_t>(GetParam()));
    const Sample sample(random, GetParam());
    const tavdn_product product(sample.fd, &sample.duct);
    const tavd::LevelSource source = {product.levels, product.limits, product.fd, product.duct()};
    const std::size_t n = sample.qv.size();
    points += n;
    for (std::size_t path = 0; path < tavd::kMachinePaths; ++path) {
      std::vector<float> lw(n * TAVD_BANDS, -12345.0F);
      std::vector<std::int32_t> codes(n, 12345);
      exact[path] +=
          tavd::levels_by(path, source, n, sample.qv.data(), sample.dp.data(), lw.data(), codes.data());
      for (std::size_t i = 0; i < n; ++i) {
        float expected[TAVD_BANDS];
        ASSERT_EQ(codes[i],
                  tavd::sound_power(&sample.fd, sample.qv[i], sample.dp[i], &sample.duct, nullptr, expected));
        for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
          ASSERT_EQ(std::bit_cast<std::uint32_t>(lw[i * TAVD_BANDS + band]),
                    std::bit_cast<std::uint32_t>(expected[band]))
              << tavd::kPathNames[path];
        }
      }
    }
  }
  for (std::size_t path = 0; path < tavd::kMachinePaths; ++path) {
    std::printf("kind %d, %s: exact steps for %.5f of the points\n", GetParam(), tavd::kPathNames[path],
                static_cast<double>(exact[path]) / static_cast<double>(points));
    EXPECT_GT(exact[path], 0U);
    EXPECT_LT(static_cast<double>(exact[path]), kSeldom * static_cast<double>(points));
    EXPECT_EQ(exact[path], exact[0]) << "every path rounds alike";
  }
}

TEST_P(QuickPoints, EveryPathGivesTheExactPositions) {
  std::size_t points = 0;
  std::vector<std::size_t> exact(tavd::kMachinePaths + 1);  // the last: stepped
  const bool is_damper = GetParam() == 20 || GetParam() == 22;
  for (std::uint64_t seed = 0; points < 40'000; ++seed) {
    Random random(seed * 977 + static_cast<std::uint64_t>(GetParam()));
    const Sample sample(random, GetParam());
    const tavdn_product product(sample.fd, &sample.duct);
    const std::size_t n = sample.qv.size();
    points += n;
    for (std::size_t path = 0; path <= tavd::kMachinePaths; ++path) {
      const bool stepped = path == tavd::kMachinePaths;
      std::vector<float> found(n, -12345.0F);
      std::vector<std::int32_t> codes(n, 12345);
      const float* const qv = sample.qv.data();
      const float* const dp = sample.dp.data();
      exact[path] += stepped ? product.positions.stepped(sample.fd, product.limits, n, qv, dp, found.data(),
                                                         codes.data())
                             : product.positions.stepless_by(path, sample.fd, product.limits, n, qv, dp,
                                                             found.data(), codes.data());
      for (std::size_t i = 0; i < n; ++i) {
        float expected;
        ASSERT_EQ(codes[i],
                  (stepped ? tavca_damper_pos_fixed : tavca_damper_pos)(&sample.fd, qv[i], dp[i], &expected));
        ASSERT_EQ(std::bit_cast<std::uint32_t>(found[i]), std::bit_cast<std::uint32_t>(expected)) << path;
      }
    }
  }
  for (const std::size_t count : exact) {
    std::printf("kind %d: exact positions %.5f\n", GetParam(),
                static_cast<double>(count) / static_cast<double>(points));
    if (is_damper) {
      EXPECT_LT(static_cast<double>(count), kSeldom * static_cast<double>(points));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kind, QuickPoints, testing::Values(10, 11, 13, 20, 22, 30, 40),
                         testing::PrintToStringParamName());

std::vector<float> random_rows(Random& random, std::size_t rows) {
  std::vector<float> lw(rows * TAVD_BANDS);
  for (float& level : lw) {
    level = random.uniform(-10.0F, 90.0F);
    if (random.one_in(8)) level = std::round(level);
    if (random.one_in(1000)) level = std::numeric_limits<float>::quiet_NaN();
    if (random.one_in(1000)) level = -std::numeric_limits<float>::infinity();
    if (random.one_in(1000)) level *= 1e20F;
  }
  return lw;
}

// Every set of instructions that this machine has.
TEST(QuickRoomLevels, EveryPathGivesTheExactLevels) {
  ASSERT_GE(tavd::kMachinePaths, 1U);
  Random random(8);
  for (std::size_t path = 0; path < tavd::kMachinePaths; ++path) {
    const char* const name = tavd::kPathNames[path];
    std::size_t exact = 0;
    std::size_t rows = 0;
    for (const std::size_t n : {1U, 5U, 31U, 32U, 33U, 100U, 20'000U}) {
      const std::vector<float> lw = random_rows(random, n);
      const float roomdamp = random.uniform(0.0F, 10.0F);
      std::vector<float> lpa(n, -12345.0F);
      exact += tavd::room_levels_by(path, n, lw.data(), roomdamp, lpa.data());
      rows += n;
      for (std::size_t row = 0; row < n; ++row) {
        const float expected = tavd::room_level(&lw[row * TAVD_BANDS], roomdamp);
        if (std::isnan(expected)) {
          ASSERT_TRUE(std::isnan(lpa[row]));
        } else {
          ASSERT_EQ(std::bit_cast<std::uint32_t>(lpa[row]), std::bit_cast<std::uint32_t>(expected))
              << name << " row " << row << " of " << n;
        }
      }
    }
    std::printf("%s: exact rows %.5f\n", name, static_cast<double>(exact) / static_cast<double>(rows));
    EXPECT_LT(static_cast<double>(exact), 0.05 * static_cast<double>(rows)) << name;
  }
}

TEST(QuickThrowLengths, EveryPathGivesTheExactLengths) {
  Random random(15);
  std::size_t exact = 0;
  std::size_t lengths = 0;
  for (int round = 0; round < 600; ++round) {
    const tavd::ThrowLine line = {random.uniform(-1.0F, 4.0F), random.logarithmic(1e-6F, 10.0F),
                                  random.one_in(2) ? 1.0F : random.uniform(0.2F, 2.0F)};
    // Of many flows the widest path makes tables of its own.
    std::vector<float> qv(
        static_cast<std::size_t>(random.one_in(8) ? random.between(2000, 9000) : random.between(1, 300)));
    for (float& flow : qv)
      flow = random.one_in(8) ? random.logarithmic(2e-38F, 3e38F) : random.logarithmic(0.01F, 1e5F);
    if (random.one_in(4)) qv[0] = std::numeric_limits<float>::infinity();
    if (random.one_in(4)) qv.back() = -1.0F;
    for (std::size_t path = 0; path < tavd::kMachinePaths; ++path) {
      std::vector<float> found(qv.size(), -12345.0F);
      exact += tavd::throw_lengths_by(path, line, qv.size(), qv.data(), found.data());
      lengths += qv.size();
      for (std::size_t i = 0; i < qv.size(); ++i) {
        const float expected = tavd::throw_length(line, qv[i]);
        if (std::isnan(expected)) {
          ASSERT_TRUE(std::isnan(found[i]));
        } else {
          ASSERT_EQ(std::bit_cast<std::uint32_t>(found[i]), std::bit_cast<std::uint32_t>(expected))
              << tavd::kPathNames[path] << " " << i;
        }
      }
    }
  }
  EXPECT_GT(exact, 0U);
  EXPECT_LT(static_cast<double>(exact), kSeldom * static_cast<double>(lengths));
}

}  // namespace
