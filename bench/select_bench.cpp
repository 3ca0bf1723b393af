// Selection out of whole catalogues, beside the single functions over all pairs, and beside numpy which asks
// no more than whether flow and pressure lie within limits. Prints its part of docs/performance.md.
//
//   bench_select SMALL MIDDLE LARGE      databases of `tavd db synth`
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "numpy_process.h"
#include "tavd/tavca.h"
#include "tavd/tavdn_select.h"
#include "tavd/tavdsrv.h"

namespace bench {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr std::size_t kDuties = 1000;
constexpr int kWanted = 5;
constexpr int kRuns = 3;              // of which the median counts
constexpr float kRoomDamping = 4.0F;  // dB

// The most that may be taken.
constexpr double kMostSeconds = 2.0;  // for the duties out of the middle catalogue, by two threads
constexpr double kMostOpening = 1.0;  // of the middle catalogue, from a warm file, s

constexpr int kMostMissed = 100;
int missed = 0;

[[noreturn]] void give_up(const std::string& what) {
  std::fprintf(stderr, "bench_select: %s %s\n", what.c_str(), tavdsrv_lasterror());
  std::exit(2);
}

double seconds(const std::function<void()>& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return Seconds(std::chrono::steady_clock::now() - start).count();
}

double median_seconds(const std::function<void()>& run) {
  std::vector<double> times;
  for (int i = 0; i < kRuns; ++i) times.push_back(seconds(run));
  std::sort(times.begin(), times.end());
  return times[kRuns / 2];
}

double resident_bytes() {
  std::ifstream file("/proc/self/statm");
  double pages = 0;
  file >> pages >> pages;
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// Duties such as a building has: flow, available pressure, a level in the room; the quietest are wanted.
std::vector<tavdn_duty> duties() {
  std::mt19937 random(20);
  std::uniform_real_distribution<double> flow(std::log(10.0), std::log(1500.0));
  std::uniform_real_distribution<float> pressure(10.0F, 300.0F);
  std::uniform_real_distribution<float> level(25.0F, 50.0F);
  std::vector<tavdn_duty> all(kDuties);
  for (tavdn_duty& duty : all) {
    duty.size = sizeof duty;
    duty.qv = std::exp(flow(random));
    duty.dp = pressure(random);
    duty.lp_max = level(random);
    duty.roomdamp = kRoomDamping;
    duty.wanted = kWanted;
  }
  return all;
}

struct Answers {
  std::vector<tavdn_hit> hits = std::vector<tavdn_hit>(kDuties * kWanted);
  std::vector<tavdn_fitting> fitting = std::vector<tavdn_fitting>(kDuties);
};

// The catalogue's records, as the single functions want them.
struct Records {
  explicit Records(const tavdn_catalogue* catalogue) {
    for (std::size_t i = 0; i < tavdn_catalogue_count(catalogue); ++i) {
      fd.push_back(tavdn_flowdata(tavdn_catalogue_variant(catalogue, i, 0)));
      duct.push_back(&tavdn_catalogue_product(catalogue, i)->duct);
    }
  }
  std::vector<const FlowData*> fd;
  std::vector<const DuctSize*> duct;
};

// Whether the product fits, and its level: limits, pressure and sound in this order, no further than needed.
bool fits(const FlowData& fd, const DuctSize& duct, const tavdn_duty& duty, float* level) {
  const auto qv = static_cast<float>(duty.qv);
  float low = 0;
  float high = 0;
  if (tavca_qminqmax(&fd, &low, &high) != 0 || qv < low || qv > high) return false;
  float dp = duty.dp;
  float position = 0;
  if (fd.kind == TAVD_KIND_DAMPER) {
    if (tavca_damper_pos(&fd, qv, dp, &position) != 0) return false;
  } else if (fd.kind == TAVD_KIND_FAN) {
    if (tavca_fan_op_check(&fd, qv, dp) != 0) return false;
  } else {
    if (tavca_minmaxdptot(&fd, qv, &low, &high) != 0) return false;
    if (fd.kind == TAVD_KIND_RANGE && (dp < low || dp > high)) return false;
    if (fd.kind != TAVD_KIND_RANGE && low > dp) return false;
    if (fd.kind != TAVD_KIND_RANGE) dp = low;
  }
  float lw[TAVD_BANDS];
  if (tavca_lw(&fd, qv, dp, lw, &duct) != 0) return false;
  *level = tavca_LpA(lw);
  return *level <= duty.lp_max;
}

struct Ranked {
  float level;
  std::uint32_t product;
  bool operator<(const Ranked& other) const {
    return level != other.level ? level < other.level : product < other.product;
  }
};

std::vector<std::vector<Ranked>> select_by_single_functions(const Records& records,
                                                            const std::vector<tavdn_duty>& asked) {
  tavca_setroomdamp(kRoomDamping);
  std::vector<std::vector<Ranked>> all(asked.size());
  for (std::size_t i = 0; i < asked.size(); ++i) {
    for (std::size_t j = 0; j < records.fd.size(); ++j) {
      float level = 0;
      if (!fits(*records.fd[j], *records.duct[j], asked[i], &level)) continue;
      all[i].push_back({level, static_cast<std::uint32_t>(j)});
    }
    std::sort(all[i].begin(), all[i].end());
  }
  return all;
}

bool is_same(const Answers& answers, const std::vector<std::vector<Ranked>>& single) {
  for (std::size_t i = 0; i < kDuties; ++i) {
    if (answers.fitting[i].products != single[i].size()) return false;
    for (std::size_t j = 0; j < std::min<std::size_t>(kWanted, single[i].size()); ++j) {
      const tavdn_hit& hit = answers.hits[i * kWanted + j];
      if (hit.product != single[i][j].product || hit.lpa != single[i][j].level) return false;
    }
  }
  return true;
}

class Measured {
 public:
  Measured(const std::string& path, NumpyProcess& numpy) : numpy_(numpy) {
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
    if (db < 0) give_up("cannot open " + path);
    // The first of two catalogues takes memory that is new, the second finds the file warm.
    const double before = resident_bytes();
    open(db);
    memory_ = resident_bytes() - before;
    tavdn_catalogue_close(catalogue_);
    opening_ = seconds([&] { open(db); });
    tavdsrv_closedatabase(db);
  }
  ~Measured() { tavdn_catalogue_close(catalogue_); }
  Measured(const Measured&) = delete;
  Measured& operator=(const Measured&) = delete;

  void print(bool with_single_functions, bool is_judged) {
    const double products = static_cast<double>(tavdn_catalogue_count(catalogue_));
    Answers alone;
    Answers together;
    const double one = median_seconds([&] { select(1, alone); });
    const double two = median_seconds([&] { select(2, together); });
    tavdn_fitting fitting{};
    const double single_duty = median_seconds(
        [&] { tavdn_select(catalogue_, asked_.data(), kWanted, alone.hits.data(), &fitting, nullptr); });
    numpy_.run(
        ("make " + std::to_string(static_cast<int>(products)) + " " + std::to_string(kDuties)).c_str());
    const double limits = median_seconds([&] { numpy_.run("limits"); });
    std::printf("| %.0f | %.0f | %.1f | %.2f | %.2f | %.2f | ", products, opening_ * 1e3,
                memory_ / products / 1e3, single_duty * 1e3, one, two);
    if (with_single_functions) {
      const Records records(catalogue_);
      std::vector<std::vector<Ranked>> single;
      const double by_single = seconds([&] { single = select_by_single_functions(records, asked_); });
      const bool same = is_same(together, single);
      if (!same) ++missed;
      std::printf("%.2f, %s | ", by_single, same ? "same hits" : "OTHER HITS");
    } else {
      std::printf("- | ");
    }
    std::printf("%.2f | ", limits);
    if (!is_judged) {
      std::puts("|");
      return;
    }
    const bool is_good = two <= kMostSeconds && opening_ <= kMostOpening;
    if (!is_good) ++missed;
    std::printf("%.0f s by two threads, opened in %.0f s%s |\n", kMostSeconds, kMostOpening,
                is_good ? "" : ": MISSED");
  }

 private:
  void open(std::int16_t db) {
    if (tavdn_catalogue_open(db, nullptr, &catalogue_) != TAVDN_OK) give_up("cannot read the catalogue");
  }
  void select(int threads, Answers& answers) const {
    const int code = tavdn_select_many(catalogue_, kDuties, asked_.data(), kWanted, answers.hits.data(),
                                       answers.fitting.data(), nullptr, threads, nullptr);
    if (code != TAVDN_OK) give_up(tavdn_message("tavdn_select_many", code));
  }

  NumpyProcess& numpy_;
  std::vector<tavdn_duty> asked_ = duties();
  tavdn_catalogue* catalogue_ = nullptr;
  double opening_ = 0;
  double memory_ = 0;  // bytes
};

// So that the memory of each catalogue is new. Returns how many figures it missed.
int in_a_process(const std::function<void()>& run) {
  const pid_t child = fork();
  if (child == 0) {
    run();
    std::fflush(stdout);
    _exit(std::min(missed, kMostMissed));
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) give_up("a measurement died");
  return WEXITSTATUS(status);
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  if (argc != 4) {
    std::fprintf(stderr, "usage: bench_select SMALL MIDDLE LARGE\n");
    return 2;
  }
  std::printf(
      "\n## Selection\n\nA thousand duties, each with a flow, an available pressure and a limit of the level "
      "in the "
      "room, out of\ndatabases of `tavd db synth`; the five quietest of each, and how many fit. The single "
      "functions ask "
      "each pair\nno further than needed. numpy asks all pairs whether flow and pressure lie within limits, "
      "and no "
      "more.\n\n"
      "| Products | Opened, ms | Memory, kB a product | One duty, ms | A thousand, one thread, s | Two "
      "threads, s | "
      "Single functions, s | numpy, limits alone, s | Wanted |\n"
      "|---:|---:|---:|---:|---:|---:|---:|---:|---|\n");
  for (int i = 1; i < argc; ++i) {
    std::fflush(stdout);
    missed += in_a_process([&] {
      NumpyProcess numpy(TAVD_NUMPY_LIMITS);
      Measured(argv[i], numpy).print(i < argc - 1, i == 2);
    });
  }
  if (missed != 0) std::fprintf(stderr, "%d figures of the selection miss what they want\n", missed);
  return missed == 0 ? 0 : 1;
}
