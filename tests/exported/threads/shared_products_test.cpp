// Sixteen threads ask one prepared product at once; and sixteen products are prepared, asked and released at
// once. Run under ThreadSanitizer (preset `threads`), which reports any write that they would share.
#include <array>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

#include "oracle/reference/records.h"
#include "tavd/tavca.h"
#include "tavd/tavdn.h"

namespace {

constexpr std::size_t kThreads = 16;
constexpr int kRounds = 12;
constexpr std::size_t kPoints = 150;
constexpr float kRoomDamping = 4.0F;  // dB
constexpr std::array<std::int16_t, 8> kKinds = {10, 11, 12, 13, 20, 22, 30, 40};

struct Points {
  std::vector<float> qv, dp;
};

FlowData record(std::uint64_t seed, std::int16_t kind) {
  reference::Random random(seed);
  FlowData fd = random_product(random, kind, reference::Shape::full).fd;
  tavca_param_setvalue(&fd, "VALVE", "45");
  return fd;
}

Points points_of(const FlowData& fd, std::uint64_t seed) {
  reference::Random random(seed);
  Points points;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const reference::Point at = random_point(random, fd, false);
    points.qv.push_back(at.qv);
    points.dp.push_back(at.dp);
  }
  return points;
}

// Every answer of the product, one array behind the other.
void ask(const tavdn_product* product, const Points& points, std::vector<float>& answers) {
  constexpr std::size_t kArrays = 9 + 2 * TAVD_BANDS;
  std::vector<float> numbers(kArrays * kPoints);
  std::vector<std::int32_t> codes(8 * kPoints);
  float* number = numbers.data();
  std::int32_t* code = codes.data();
  tavdn_results out{};
  out.size = sizeof out;
  for (auto* const array : {&out.dp_min, &out.dp_max, &out.position, &out.setting, &out.fan_total,
                            &out.fan_static, &out.fan_dynamic, &out.lpa, &out.throw_length}) {
    *array = number;
    number += kPoints;
  }
  for (auto* const rows : {&out.lw, &out.dlw}) {
    *rows = number;
    number += kPoints * TAVD_BANDS;
  }
  for (auto* const array : {&out.range_code, &out.position_code, &out.setting_code, &out.fan_code,
                            &out.fan_check, &out.lw_code, &out.dlw_code, &out.throw_code}) {
    *array = code;
    code += kPoints;
  }
  tavdn_calculate(product, kPoints, points.qv.data(), points.dp.data(), kRoomDamping, &out);
  answers.insert(answers.end(), numbers.begin(), numbers.end());
  for (const std::int32_t value : codes) answers.push_back(static_cast<float>(value));
  tavdn_throw(product, "15", kPoints, points.qv.data(), numbers.data());
  answers.insert(answers.end(), numbers.begin(), numbers.begin() + kPoints);
}

void ask_shared(const std::vector<tavdn_product*>& products, std::vector<float>& answers) {
  for (int round = 0; round < kRounds; ++round) {
    for (const tavdn_product* product : products) {
      ask(product, points_of(*tavdn_flowdata(product), static_cast<std::uint64_t>(round)), answers);
    }
  }
}

// A product of the thread's own each round, of which nothing is left.
void ask_own(std::size_t thread, std::vector<float>& answers) {
  for (int round = 0; round < kRounds; ++round) {
    const std::size_t kind = (thread + static_cast<std::size_t>(round)) % kKinds.size();
    const FlowData fd = record(thread * 1000 + static_cast<std::uint64_t>(round), kKinds[kind]);
    tavdn_product* product = nullptr;
    if (tavdn_prepare(&fd, nullptr, &product) != TAVDN_OK) return;
    ask(product, points_of(fd, thread), answers);
    tavdn_release(product);
  }
}

bool same(const std::vector<float>& a, const std::vector<float>& b) {
  return !a.empty() && a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

}  // namespace

int main() {
  std::vector<tavdn_product*> products;
  for (const std::int16_t kind : kKinds) {
    const FlowData fd = record(7, kind);
    tavdn_product* product = nullptr;
    if (tavdn_prepare(&fd, nullptr, &product) != TAVDN_OK) return 1;
    products.push_back(product);
  }
  std::vector<float> alone;
  ask_shared(products, alone);

  std::array<std::vector<float>, kThreads> together;
  std::array<std::vector<float>, kThreads> own;
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      ask_own(thread, own[thread]);
      ask_shared(products, together[thread]);
    });
  }
  for (std::thread& thread : threads) thread.join();

  int wrong = 0;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    std::vector<float> own_alone;
    ask_own(thread, own_alone);
    if (!same(together[thread], alone)) ++wrong;
    if (!same(own[thread], own_alone)) ++wrong;
  }
  for (tavdn_product* product : products) tavdn_release(product);
  std::printf("%zu threads, %zu numbers each of the shared products: %s\n", kThreads, alone.size(),
              wrong == 0 ? "as by one thread" : "NOT as by one thread");
  return wrong == 0 ? 0 : 1;
}
