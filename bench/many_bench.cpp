// A million points in one call of libtavdn, beside the single functions, beside numpy, and by two threads.
#include <memory>
#include <thread>
#include <vector>

#include "numpy_process.h"
#include "processes.h"
#include "scene.h"
#include "table.h"
#include "tavd/tavca.h"
#include "tavd/tavdn.h"

namespace bench {
namespace {

constexpr std::size_t kPoints = 1'000'000;  // as in numpy_yardstick.py
constexpr std::size_t kDifferent = 10'000;  // points that are repeated
constexpr float kRoomDamping = 4.0F;        // dB

// A prepared product, its points, and an array for whatever is answered.
struct Work {
  explicit Work(std::int16_t kind) : scene(bench::scene(kind, kDifferent)) {
    const DuctSize* const duct = &scene->points.front().duct;
    tavdn_prepare(&scene->product.fd, duct, &product);
    for (std::size_t i = 0; i < kPoints; ++i) {
      qv[i] = scene->points[i % kDifferent].qv;
      dp[i] = scene->points[i % kDifferent].dp;
    }
    results.size = sizeof results;
  }
  ~Work() { tavdn_release(product); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  const FlowData& fd() const { return scene->product.fd; }
  const DuctSize* duct() const { return &scene->points.front().duct; }
  void calculate() const { tavdn_calculate(product, kPoints, qv.data(), dp.data(), kRoomDamping, &results); }

  std::shared_ptr<Scene> scene;
  tavdn_product* product = nullptr;
  std::vector<float> qv = std::vector<float>(kPoints);
  std::vector<float> dp = std::vector<float>(kPoints);
  std::vector<float> numbers = std::vector<float>(kPoints);
  std::vector<float> bands = std::vector<float>(kPoints * TAVD_BANDS);
  std::vector<std::int32_t> codes = std::vector<std::int32_t>(kPoints);
  tavdn_results results{};
};

using Single = void (*)(Work& work, std::size_t point);

// One answer of tavdn_calculate beside the single function.
Job beside_single(std::string name, std::string detail, const std::shared_ptr<Work>& work, Single single,
                  Wanted wanted) {
  const auto yardstick = [work, single] {
    for (std::size_t i = 0; i < kPoints; ++i) single(*work, i);
  };
  return {std::move(name), std::move(detail), kPoints, [work] { work->calculate(); }, yardstick, wanted, {}};
}

std::shared_ptr<Work> sound_of(std::int16_t kind) {
  auto work = std::make_shared<Work>(kind);
  work->results.lw = work->bands.data();
  work->results.lw_code = work->codes.data();
  return work;
}

void add_answers(std::vector<Job>& jobs) {
  const Single sound = [](Work& work, std::size_t i) {
    work.codes[i] = tavca_lw(&work.fd(), work.qv[i], work.dp[i], &work.bands[i * TAVD_BANDS], work.duct());
  };
  Wanted wanted;
  wanted.ratio = 4;
  wanted.at_most = 100;
  jobs.push_back(beside_single("lw", "kind 10", sound_of(10), sound, {}));
  jobs.push_back(beside_single("lw", "kind 20", sound_of(20), sound, wanted));
  jobs.push_back(beside_single("lw", "kind 30", sound_of(30), sound, wanted));
  const auto position = std::make_shared<Work>(std::int16_t{20});
  position->results.position = position->numbers.data();
  position->results.position_code = position->codes.data();
  jobs.push_back(beside_single("position", "kind 20", position,
                               [](Work& work, std::size_t i) {
                                 work.codes[i] =
                                     tavca_damper_pos(&work.fd(), work.qv[i], work.dp[i], &work.numbers[i]);
                               },
                               {3}));
  const auto setting = std::make_shared<Work>(std::int16_t{20});
  setting->results.setting = setting->numbers.data();
  setting->results.setting_code = setting->codes.data();
  jobs.push_back(beside_single("setting", "kind 20", setting,
                               [](Work& work, std::size_t i) {
                                 work.codes[i] = tavca_damper_pos_fixed(&work.fd(), work.qv[i], work.dp[i],
                                                                        &work.numbers[i]);
                               },
                               {}));
}

// Bands between 20 and 80 dB and flows between 10 and 300 l/s, as in numpy_yardstick.py.
struct Tables {
  Tables() {
    reference::Random random(20);
    for (float& level : lw) level = random.uniform(20.0F, 80.0F);
    for (float& flow : qv) flow = random.uniform(10.0F, 300.0F);
    FlowData fd{};
    fd.nqvL2 = 2;
    fd.qvL2[0] = {100.0F, 5.0F};
    fd.qvL2[1] = {200.0F, 8.0F};
    tavdn_prepare(&fd, nullptr, &product);
  }
  ~Tables() { tavdn_release(product); }
  Tables(const Tables&) = delete;
  Tables& operator=(const Tables&) = delete;

  void room_levels() { tavdn_lpa(kPoints, lw.data(), kRoomDamping, numbers.data()); }
  void throws() { tavdn_throw(product, nullptr, kPoints, qv.data(), numbers.data()); }

  tavdn_product* product = nullptr;
  std::vector<float> lw = std::vector<float>(kPoints * TAVD_BANDS);
  std::vector<float> qv = std::vector<float>(kPoints);
  std::vector<float> numbers = std::vector<float>(kPoints);
};

void add_tables(std::vector<Job>& jobs) {
  const auto tables = std::make_shared<Tables>();
  const auto numpy = std::make_shared<NumpyProcess>(TAVD_NUMPY_YARDSTICK);
  const auto room = [tables] { tables->room_levels(); };
  const auto throws = [tables] { tables->throws(); };
  jobs.push_back({"tavdn_lpa", "beside numpy", kPoints, room, [numpy] { numpy->run("lpa"); }, {1}, {}});
  jobs.push_back({"tavdn_lpa",
                  "",
                  kPoints,
                  room,
                  [tables] {
                    for (std::size_t i = 0; i < kPoints; ++i) {
                      tables->numbers[i] = tavca_LpA(&tables->lw[i * TAVD_BANDS]);
                    }
                  },
                  {},
                  {}});
  jobs.push_back({"tavdn_throw", "beside numpy", kPoints, throws, [numpy] { numpy->run("throw"); }, {1}, {}});
}

// Several times a run: a processor that has slept through the run of one thread takes milliseconds until it
// is at its full speed.
constexpr int kTurns = 8;
constexpr int kCallsOfTurns = kTurns * static_cast<int>(kPoints);

void calculate_half(const Work& work, std::size_t half) {
  constexpr std::size_t kHalf = kPoints / 2;
  const std::size_t first = half * kHalf;
  tavdn_results results = work.results;
  results.lw += first * TAVD_BANDS;
  results.lw_code += first;
  for (int turn = 0; turn < kTurns; ++turn) {
    tavdn_calculate(work.product, kHalf, &work.qv[first], &work.dp[first], kRoomDamping, &results);
  }
}

// Both halves of the points by a thread each, beside all of them by one, and beside a process each.
void add_threads(std::vector<Job>& jobs) {
  const auto work = sound_of(20);
  const auto threads = [work] {
    std::thread first([&work] { calculate_half(*work, 0); });
    std::thread second([&work] { calculate_half(*work, 1); });
    first.join();
    second.join();
  };
  const auto one = [work] {
    for (int turn = 0; turn < kTurns; ++turn) work->calculate();
  };
  Wanted wanted;
  wanted.ratio = 1.8;
  wanted.may_allocate = true;  // the threads
  jobs.push_back({"lw", "kind 20, two threads beside one", kCallsOfTurns, threads, one, wanted, {}});
  const auto processes =
      std::make_shared<Processes>(2, [work](std::size_t half) { calculate_half(*work, half); });
  wanted.ratio = 0.95;
  jobs.push_back({"lw",
                  "kind 20, two threads beside two processes",
                  kCallsOfTurns,
                  threads,
                  [processes] { processes->run(); },
                  wanted,
                  {}});
}

}  // namespace

void add_jobs(std::vector<Job>& jobs) {
  add_answers(jobs);
  add_tables(jobs);
  add_threads(jobs);
  for (Job& job : jobs) {
    job.group = R"(
## Many points

A million points in one call of libtavdn, beside as many calls of the single functions where
nothing else is told. numpy works in 32 bits, `10*log10(sum(10**(...)))` and `k*q**n`.
Two processes have nothing in common but the machine: what they get of it is all that two threads can have.

| Answer | Product | Library, ns a point | Yardstick, ns a point | Times as fast | Allocations | Wanted |
|---|---|---:|---:|---:|---:|---|
)";
  }
  add_drawings(jobs);
}

}  // namespace bench
