// Databases of different size: opening and listing a family take the same number of reads, and memory does
// not grow with the file.
#include <dlfcn.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstring>

#include "stress.h"
#include "tavd/tavfm.h"

namespace {

long steps = 0;  // of SQLite's statements in this process
long rows = 0;   // that they gave

}  // namespace

// Stands in front of SQLite's own for everything in this program, the service included.
extern "C" __attribute__((visibility("default"))) int sqlite3_step(sqlite3_stmt* statement) {
  using Step = int (*)(sqlite3_stmt*);
  static const auto real = reinterpret_cast<Step>(dlsym(RTLD_NEXT, "sqlite3_step"));
  const int code = real(statement);
  ++steps;
  if (code == SQLITE_ROW) ++rows;
  return code;
}

namespace stress {

namespace {

constexpr const char* kClass = "DMP";
constexpr const char* kFamily =
    "Q0000000-*                    ";  // the first of every class of tavd db synth
constexpr int kMembers = 40;
constexpr std::int16_t kAtOrAfter = 1;  // mode of tavbfindrec

struct Figures {
  long opening_steps = 0;
  long opening_reads = 0;  // of the operating system
  long family_rows = 0;
  long records = 0;
  long peak = 0;  // resident memory after all that, kB
};

long reads() {
  return told_in("/proc/self/io", "syscr:");
}

long count_records(std::int16_t db) {
  long count = 0;
  const std::string lowest(30, '\1');
  tavb_rec rec = tavbfindrec(db, "\1\1\1", lowest.c_str(), kAtOrAfter);
  while (rec != nullptr) {
    ++count;
    tavb_rec next = tavbnextrec(db, rec);
    tavbreleaserec(rec);
    rec = next;
  }
  expect(*tavdsrv_lasterror() == '\0', "walking over everything");
  return count;
}

void list_family(std::int16_t db, Figures& figures) {
  FamilyList list;
  tavfm_init(&list);
  const long before = rows;
  const int members = tavfm_read(&list, db, kClass, kFamily);
  figures.family_rows = rows - before;
  tavfm_release(&list);
  expect(members == kMembers, "the family has " + std::to_string(members) + " members");
}

Figures measure(const std::filesystem::path& path) {
  auto& figures = shared<Figures>();
  finish(start([&] {
    const long reads_before = reads(), steps_before = steps;
    const Opened database(path);
    figures.opening_reads = reads() - reads_before;
    figures.opening_steps = steps - steps_before;
    list_family(database.handle(), figures);
    figures.records = count_records(database.handle());
    figures.peak = peak_memory();
  }));
  return figures;
}

std::filesystem::path make(const Scale& scale, long records) {
  std::filesystem::path path = scale.folder / (std::to_string(records) + ".tavdb");
  const int code = run_tavd(scale, {"db", "synth", path.string(), "--records", std::to_string(records)});
  expect(code == 0, "tavd db synth ended with " + std::to_string(code));
  return path;
}

void expect_few_reads(const Figures& figures) {
  // The main record twice, once by its id and once on the walk; its members; the record behind them; and a
  // quarter of that read ahead.
  constexpr long kNeeded = 2 + kMembers + 1;
  constexpr long kMost = kNeeded + kNeeded / 4;
  expect(figures.family_rows >= kNeeded && figures.family_rows <= kMost,
         "listing the family read " + std::to_string(figures.family_rows) + " records");
}

void expect_same(long small, long large, const char* what) {
  expect(small == large,
         std::string(what) + " differ: " + std::to_string(small) + " and " + std::to_string(large));
}

}  // namespace

void size(const Scale& scale) {
  const long few = 1000, middle = 20'000, many = scale.full ? 1'000'000 : 60'000;
  const Figures small = measure(make(scale, few));
  const Figures half = measure(make(scale, middle));
  const Figures large = measure(make(scale, many));
  expect(small.records == few && half.records == middle && large.records == many, "a walk misses records");
  expect(large.opening_steps > 0, "no statement was counted");
  expect_same(small.opening_steps, large.opening_steps, "statements at opening");
  expect_same(small.opening_reads, large.opening_reads, "reads at opening");
  expect_few_reads(small);
  expect_few_reads(large);
  // Both files are larger than the cache.
  constexpr long kNoise = 2048;  // kB
  expect(large.peak < half.peak + kNoise, "memory grows with the file: " + std::to_string(half.peak) +
                                              " kB, then " + std::to_string(large.peak));
  std::printf("%8s %14s %14s %22s %16s\n", "records", "steps to open", "reads to open",
              "rows for family of 40", "peak memory, kB");
  for (const Figures& each : {small, half, large}) {
    std::printf("%8ld %14ld %14ld %22ld %16ld\n", each.records, each.opening_steps, each.opening_reads,
                each.family_rows, each.peak);
  }
}

}  // namespace stress
