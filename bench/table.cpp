#include "table.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>

#include "allocations.h"

namespace bench {

namespace {

// The best of all repetitions: what the machine can do when nothing else runs on it.
class BestTimes : public benchmark::ConsoleReporter {
 public:
  BestTimes() : ConsoleReporter(OO_None) {
    SetOutputStream(&std::cerr);
    SetErrorStream(&std::cerr);
  }
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const double ns = run.cpu_accumulated_time / static_cast<double>(run.iterations) * 1e9;
      const auto known = best_.try_emplace(run.run_name.function_name, ns).first;
      known->second = std::min(known->second, ns);
    }
  }
  double ns(const std::string& name) const { return best_.at(name); }

 private:
  std::map<std::string, double> best_;
};

void time(benchmark::State& state, const std::function<void()>& run, long* allocated) {
  run();  // the first run binds symbols and warms caches
  const long before = allocations();
  for (auto _ : state) run();
  if (allocated != nullptr) *allocated += allocations() - before;
}

}  // namespace

int measure_and_print(std::vector<Job>& jobs) {
  std::vector<long> allocated(jobs.size(), 0);
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    const std::string id = std::to_string(i);
    const auto* library = &jobs[i].library;
    const auto* yardstick = &jobs[i].yardstick;
    long* count = &allocated[i];
    benchmark::RegisterBenchmark((id + "L").c_str(),
                                 [=](benchmark::State& state) { time(state, *library, count); });
    benchmark::RegisterBenchmark((id + "Y").c_str(),
                                 [=](benchmark::State& state) { time(state, *yardstick, nullptr); });
  }
  BestTimes times;
  benchmark::RunSpecifiedBenchmarks(&times);

  int missed = 0;
  std::string group;
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    const Job& job = jobs[i];
    if (job.group != group) {
      group = job.group;
      std::printf("%s", group.c_str());
    }
    const double library = times.ns(std::to_string(i) + "L") / job.calls;
    const double yardstick = times.ns(std::to_string(i) + "Y") / job.calls;
    std::string wanted = " ";
    bool reached = allocated[i] == 0;
    char text[64];
    if (job.wanted.ratio > 0) {
      std::snprintf(text, sizeof text, " at least %.0f times ", job.wanted.ratio);
      wanted = text;
      reached = reached && yardstick / library >= job.wanted.ratio;
    }
    if (job.wanted.beyond > 0) {
      std::snprintf(text, sizeof text, " at most %.1f us beyond ", job.wanted.beyond / 1000);
      wanted = text;
      reached = reached && library - yardstick <= job.wanted.beyond;
    }
    if (!reached) {
      ++missed;
      wanted += "**missed** ";
    }
    std::printf("| `%s` | %s | %.1f | %.1f | %.2f | %ld |%s|\n", job.name.c_str(), job.detail.c_str(),
                library, yardstick, yardstick / library, allocated[i], wanted.c_str());
  }
  return missed;
}

}  // namespace bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  std::vector<bench::Job> jobs;
  bench::add_calculations(jobs);
  bench::add_loads(jobs);
  const int missed = bench::measure_and_print(jobs);
  if (missed != 0) std::fprintf(stderr, "%d of %zu jobs miss what they want\n", missed, jobs.size());
  return missed == 0 ? 0 : 1;
}
