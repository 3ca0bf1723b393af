// Eight threads select from one catalogue at once, each on threads of its own, while another opens and closes
// catalogues of the same database. Run under ThreadSanitizer (preset `threads`).
#include <array>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

#include "exported/select/small_catalogue.h"

namespace {

constexpr std::size_t kThreads = 8;
constexpr std::size_t kDuties = 300;
constexpr std::size_t kRoom = 4;

std::vector<tavdn_duty> duties() {
  std::vector<tavdn_duty> all;
  for (std::size_t i = 0; i < kDuties; ++i) {
    all.push_back(selecttest::duty(12.0 + static_cast<double>(i) * 0.5, 40.0F + static_cast<float>(i % 60)));
    all.back().wanted = kRoom;
    all.back().rank = static_cast<int32_t>(i % 4);
  }
  return all;
}

std::vector<tavdn_hit> hits_of(const tavdn_catalogue* catalogue, int threads) {
  const std::vector<tavdn_duty> asked = duties();
  std::vector<tavdn_hit> hits(kDuties * kRoom);
  std::vector<tavdn_fitting> fitting(kDuties);
  const int code = tavdn_select_many(catalogue, kDuties, asked.data(), kRoom, hits.data(), fitting.data(),
                                     nullptr, threads, nullptr);
  if (code != TAVDN_OK) hits.clear();
  return hits;
}

bool same(const std::vector<tavdn_hit>& a, const std::vector<tavdn_hit>& b) {
  return !a.empty() && a.size() == b.size() &&
         std::memcmp(a.data(), b.data(), a.size() * sizeof(tavdn_hit)) == 0;
}

}  // namespace

int main() {
  const tavdtest::Database db;
  for (int i = 0; i < 60; ++i) {
    selecttest::damper(db, "DMP", "D-" + std::to_string(i), 100 + i);
    selecttest::terminal(db, "ASD", "T-" + std::to_string(i), 100 + i);
  }
  const selecttest::Catalogue catalogue = selecttest::open_catalogue(db);
  const std::vector<tavdn_hit> alone = hits_of(catalogue.get(), 1);
  std::array<std::vector<tavdn_hit>, kThreads> together;
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] { together[thread] = hits_of(catalogue.get(), 3); });
  }
  bool is_good = true;
  for (int i = 0; i < 3; ++i) {
    const selecttest::Catalogue other = selecttest::open_catalogue(db);
    is_good = is_good && same(hits_of(other.get(), 2), alone);
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::vector<tavdn_hit>& hits : together) is_good = is_good && same(hits, alone);
  std::puts(is_good ? "all threads selected the same" : "threads selected something else");
  return is_good ? 0 : 1;
}
