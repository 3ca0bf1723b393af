// Four threads calculate at once, each on a record of its own and all on one that nobody changes. Run under
// ThreadSanitizer (preset `threads`), which reports any write that they would share.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

#include "oracle/reference/records.h"
#include "tavd/ewads.h"
#include "tavd/tavca.h"

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 40;
constexpr int kPointsPerRound = 25;
constexpr std::array<std::int16_t, 8> kKinds = {10, 11, 12, 13, 20, 22, 30, 40};

using Answers = std::vector<float>;

void calculate(const FlowData& fd, const reference::Point& at, Answers& answers) {
  float out[TAVD_BANDS] = {};
  const auto keep = [&](int code) {
    answers.push_back(static_cast<float>(code));
    answers.insert(answers.end(), std::begin(out), std::end(out));
  };
  keep(tavca_lw(&fd, at.qv, at.dp, out, &at.duct));
  answers.push_back(tavca_LpA(out));
  keep(tavca_dlw(&fd, at.qv, at.dp, out));
  keep(tavca_minmaxdptot(&fd, at.qv, &out[0], &out[1]));
  keep(tavca_fan_dp(&fd, at.qv, &out[0], &out[1], &out[2]));
  keep(tavca_fan_op_check(&fd, at.qv, at.dp));
  keep(tavca_damper_pos(&fd, at.qv, at.dp, &out[0]));
  keep(tavca_damper_pos_fixed(&fd, at.qv, at.dp, &out[0]));
  answers.push_back(tavca_floating_dp(&fd, at.qv));
  answers.push_back(tavca_dptot_damperpos(&fd, at.qv, at.pos));
  answers.push_back(tavca_L2_isothermal(&fd, at.qv, "15"));
  answers.push_back(tavca_endref_A(0, fd.ductarea));
  answers.push_back(ewads_vms(&at.duct, 100.0));
}

// The shared record of every kind, asked at points that depend on the round alone.
void ask_shared(const std::vector<FlowData>& shared, Answers& answers) {
  for (int round = 0; round < kRounds; ++round) {
    reference::Random random(static_cast<std::uint64_t>(round));
    for (const FlowData& fd : shared) {
      for (int i = 0; i < kPointsPerRound; ++i) calculate(fd, random_point(random, fd, false), answers);
    }
  }
}

// A record of the thread's own, loaded with values of its own and changed.
void ask_own(int thread, Answers& answers) {
  reference::Random random(static_cast<std::uint64_t>(1000 + thread));
  for (int round = 0; round < kRounds; ++round) {
    FlowData fd = random_product(random, kKinds[static_cast<std::size_t>(round) % kKinds.size()],
                                 reference::Shape::sorted)
                      .fd;
    tavca_param_setvalue(&fd, "VALVE", "12.5");
    tavca_check_end_reflection(&fd);
    for (int i = 0; i < kPointsPerRound; ++i) calculate(fd, random_point(random, fd, false), answers);
  }
}

bool same(const Answers& a, const Answers& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

}  // namespace

int main() {
  std::vector<FlowData> shared;
  reference::Random random(7);
  for (const std::int16_t kind : kKinds) {
    FlowData fd = random_product(random, kind, reference::Shape::full).fd;
    tavca_param_setvalue(&fd, "VALVE", "45");
    shared.push_back(fd);
  }
  Answers alone;
  ask_shared(shared, alone);

  std::array<Answers, kThreads> together;
  std::array<Answers, kThreads> own;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      const auto place = static_cast<std::size_t>(thread);
      ask_own(thread, own[place]);
      ask_shared(shared, together[place]);
    });
  }
  for (std::thread& thread : threads) thread.join();

  int wrong = 0;
  for (int thread = 0; thread < kThreads; ++thread) {
    const auto place = static_cast<std::size_t>(thread);
    Answers own_alone;
    ask_own(thread, own_alone);
    if (!same(together[place], alone)) ++wrong;
    if (!same(own[place], own_alone)) ++wrong;
  }
  std::printf("%d threads, %zu numbers each on the shared records: %s\n", kThreads, alone.size(),
              wrong == 0 ? "as by one thread" : "NOT as by one thread");
  return wrong == 0 ? 0 : 1;
}
