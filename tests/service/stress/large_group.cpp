// One process changes more in a group than the cache holds, by far: others read what was there before, nobody
// is refused, and memory stays flat.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>

#include "stress.h"

namespace stress {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kClass = "ASD";
constexpr std::size_t kBytes = 100'000;  // of a record
constexpr int kReaders = 2;
constexpr int kKills = 6;

enum Stage : int { kBefore, kChanging, kCommitting, kCommitted };

struct Shared {
  std::atomic<int> stage;
  std::atomic<bool> stop;
  std::atomic<long> reads[kCommitted + 1];    // begun and ended in one stage
  std::atomic<long> longest[kCommitted + 1];  // us
  long memory;                                // of the writer, kB
  double changing, committing;                // s
};

std::string id_of(int index) {
  return "R" + std::to_string(10'000 + index);
}

double seconds_since(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

// Replaces all records and adds half as many.
void change_all(std::int16_t db, int records, int generation) {
  for (int i = 0; i < records + records / 2; ++i) {
    expect(Record(kClass, id_of(i), generation, kBytes).save(db), "saving in a large group");
  }
}

void write(Shared& told, const std::filesystem::path& path, int records) {
  const Opened database(path);
  expect(tavdsrv_begin(database.handle()) == 0, "beginning a large group");
  told.stage = kChanging;
  auto begin = Clock::now();
  change_all(database.handle(), records, 2);
  told.changing = seconds_since(begin);
  usleep(300'000);
  told.stage = kCommitting;
  begin = Clock::now();
  expect(tavdsrv_commit(database.handle()) == 0, "committing a large group");
  told.committing = seconds_since(begin);
  told.stage = kCommitted;
  told.memory = peak_memory();
}

// Finds records again and again, and opens the file anew at times.
void read(Shared& told, const std::filesystem::path& path, int records, int seed) {
  for (int at = seed; !told.stop;) {
    const Opened database(path);
    for (int i = 0; i < 20 && !told.stop; ++i) {
      at = (at + 7919) % records;
      const int stage = told.stage;
      const auto begin = Clock::now();
      const int generation = stored_generation(database.handle(), kClass, id_of(at));
      const auto took = static_cast<long>(seconds_since(begin) * 1e6);
      expect(generation == 2 || stage < kCommitted, "a reader sees an old record after the commit");
      if (told.stage != stage) continue;
      expect(generation == 1 || stage >= kCommitting, "a reader sees a change before the commit");
      ++told.reads[stage];
      if (took > told.longest[stage]) told.longest[stage] = took;
    }
  }
}

void expect_whole(const std::filesystem::path& path, int records) {
  const Opened database(path);
  const int generation = stored_generation(database.handle(), kClass, id_of(0));
  for (int i = 1; i < records; ++i) {
    expect(stored_generation(database.handle(), kClass, id_of(i)) == generation, "half a group");
  }
  const bool added = stored_generation(database.handle(), kClass, id_of(records)) == generation;
  expect(added == (generation != 1), "records that were added do not belong to those that were replaced");
  expect_sound(path);
}

// At moments that lie evenly over the whole of it.
void kill_writers(Shared& told, const std::filesystem::path& path, int records) {
  const double whole = told.changing + told.committing + 0.5;
  for (int i = 1; i <= kKills; ++i) {
    told.stage = kBefore;
    const pid_t writer = start([&] { write(told, path, records); });
    usleep(static_cast<useconds_t>(whole * 1e6 * i / (kKills + 1)));
    kill(writer, SIGKILL);
    int status = 0;
    waitpid(writer, &status, 0);
    expect_whole(path, records);
  }
}

}  // namespace

void large_group(const Scale& scale) {
  const int records = scale.full ? 2000 : 300;
  const std::filesystem::path path = scale.folder / "large.tavdb";
  auto& told = shared<Shared>();
  finish(start([&] {
    const Opened database(path, 1);
    expect(tavdsrv_begin(database.handle()) == 0, "beginning a group");
    for (int i = 0; i < records; ++i) {
      expect(Record(kClass, id_of(i), 1, kBytes).save(database.handle()), "saving in a group");
    }
    expect(tavdsrv_commit(database.handle()) == 0, "committing a group");
  }));
  std::vector<pid_t> readers;
  for (int i = 0; i < kReaders; ++i) readers.push_back(start([&, i] { read(told, path, records, i); }));
  usleep(200'000);
  finish(start([&] { write(told, path, records); }));
  usleep(200'000);
  told.stop = true;
  for (const pid_t reader : readers) finish(reader);
  constexpr long kMostMemory = 32'768;  // kB: the cache, and what a process has anyway
  expect(told.reads[kChanging] > 0, "nobody has read while the group was open");
  expect(told.memory < kMostMemory, "memory grows with the group: " + std::to_string(told.memory) + " kB");
  std::printf(
      "%zu MB replaced and half as much added in a group: %.1f s, and %.1f s for the commit; %ld kB of "
      "memory\n",
      static_cast<std::size_t>(records) * kBytes / 1'000'000, told.changing, told.committing, told.memory);
  std::printf(
      "readers found %ld records before it, %ld while it was open, %ld during the commit, %ld after; the "
      "longest "
      "took %.1f, %.1f, %.1f and %.1f ms\n",
      told.reads[kBefore].load(), told.reads[kChanging].load(), told.reads[kCommitting].load(),
      told.reads[kCommitted].load(), static_cast<double>(told.longest[kBefore]) / 1000,
      static_cast<double>(told.longest[kChanging]) / 1000,
      static_cast<double>(told.longest[kCommitting]) / 1000,
      static_cast<double>(told.longest[kCommitted]) / 1000);
  kill_writers(told, path, records);
  std::printf("%d writers of such a group killed: each time all of it was there or nothing\n", kKills);
}

}  // namespace stress
