#include "table.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>

#include "allocations.h"

namespace bench {

namespace {

using Nanoseconds = std::chrono::duration<double, std::nano>;

constexpr Nanoseconds kSlice{
    50'000};  // long against a reading of the clock, short against changes of the machine

// One job as it was measured: slices of the library and of the yardstick in turn, so that what else the
// machine does hits both alike.
struct Measured {
  std::vector<double> library;    // ns per call, by slice
  std::vector<double> yardstick;  // ns per call, by slice
  std::vector<double> ratio;      // yardstick over library, by pair of slices
  long allocated = 0;             // by the library, all slices
};

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Nanoseconds time(const std::function<void()>& run, int times) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < times; ++i) run();
  return std::chrono::steady_clock::now() - start;
}

// How many runs fill a slice. The first run binds symbols and warms caches, which takes less than a slice.
int runs_per_slice(const std::function<void()>& run) {
  int runs = 1;
  if (time(run, runs) > 2 * kSlice) return runs;
  while (time(run, runs) < kSlice) runs *= 2;
  return runs;
}

void measure(benchmark::State& state, const Job& job, Measured* measured) {
  const int library_runs = runs_per_slice(job.library);
  const int yardstick_runs = runs_per_slice(job.yardstick);
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores): the library's own idiom
    const long before = allocations();
    const double library = time(job.library, library_runs).count() / library_runs / job.calls;
    measured->allocated += allocations() - before;
    const double yardstick = time(job.yardstick, yardstick_runs).count() / yardstick_runs / job.calls;
    measured->library.push_back(library);
    measured->yardstick.push_back(yardstick);
    measured->ratio.push_back(yardstick / library);
  }
  state.SetLabel(job.name + " " + job.detail);
}

// One line of a table; false if the job misses what it wants.
bool print_line(const Job& job, const Measured& measured) {
  const double library = median(measured.library);
  const double yardstick = median(measured.yardstick);
  const double ratio = median(measured.ratio);
  std::string wanted = " ";
  bool reached = job.wanted.may_allocate || measured.allocated == 0;
  char text[64];
  if (job.wanted.ratio > 0) {
    std::snprintf(text, sizeof text, " at least %g times ", job.wanted.ratio);
    wanted = text;
    reached = reached && ratio >= job.wanted.ratio;
  }
  if (job.wanted.beyond > 0) {
    std::snprintf(text, sizeof text, " at most %.1f us beyond ", job.wanted.beyond / 1000);
    wanted = text;
    reached = reached && library - yardstick <= job.wanted.beyond;
  }
  if (job.wanted.at_most > 0) {
    std::snprintf(text, sizeof text, "%sat most %.0f ns ", wanted == " " ? "" : "and ", job.wanted.at_most);
    wanted += text;
    reached = reached && library <= job.wanted.at_most;
  }
  if (!reached) wanted += "**missed** ";
  std::printf("| `%s` | %s | %.1f | %.1f | %.2f | %ld |%s|\n", job.name.c_str(), job.detail.c_str(),
              library / job.unit, yardstick / job.unit, ratio, measured.allocated, wanted.c_str());
  return reached;
}

}  // namespace

int measure_and_print(const std::vector<Job>& jobs) {
  std::vector<Measured> measured(jobs.size());
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    const auto run = [&jobs, &measured, i](benchmark::State& state) {
      measure(state, jobs[i], &measured[i]);
    };
    // The clock decides how long is enough: of what other threads and processes do this one's time tells
    // nothing.
    benchmark::RegisterBenchmark(std::to_string(i).c_str(), run)->UseRealTime();
  }
  benchmark::ConsoleReporter progress(benchmark::ConsoleReporter::OO_None);
  progress.SetOutputStream(&std::cerr);
  progress.SetErrorStream(&std::cerr);
  benchmark::RunSpecifiedBenchmarks(&progress);

  int missed = 0;
  std::string group;
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    if (measured[i].ratio.empty()) continue;  // left out by a filter
    if (jobs[i].group != group) std::printf("%s", jobs[i].group.c_str());
    group = jobs[i].group;
    if (!print_line(jobs[i], measured[i])) ++missed;
  }
  return missed;
}

}  // namespace bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  std::vector<bench::Job> jobs;
  bench::add_jobs(jobs);
  const int missed = bench::measure_and_print(jobs);
  if (missed != 0) std::fprintf(stderr, "%d of %zu jobs miss what they want\n", missed, jobs.size());
  return missed == 0 ? 0 : 1;
}
