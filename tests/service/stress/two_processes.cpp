// One process saves without a pause while others read: no call fails, no record is torn or older than what
// was saved before it was asked for.
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "stress.h"

namespace stress {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kClass = "ASD";
constexpr int kRecords = 40;
constexpr std::size_t kBytes = 1500;
constexpr int kReaders = 2;
constexpr std::int16_t kAtOrAfter = 1;           // mode of tavbfindrec
constexpr useconds_t kLongerThanASave = 20'000;  // us
constexpr useconds_t kLongerThanTrusted = 200;   // us: a walk has looked at the file again

// What the processes tell one another.
struct Shared {
  std::atomic<bool> stop;
  std::atomic<int> saved[kRecords];    // generation that is durable
  std::atomic<int> started[kRecords];  // generation that is durable or on its way
  std::atomic<long> saves, finds, walks;
  std::atomic<long> longest;  // us
};

std::string id_of(int index) {
  return "R" + std::to_string(1000 + index);
}

void save(Shared& shared, std::int16_t db, int index, int generation) {
  shared.started[index] = generation;
  const Record record(kClass, id_of(index), generation, kBytes);
  expect(record.save(db), "saving under load");
  ++shared.saves;
}

// Single records and groups in turn.
void write(Shared& shared, const std::filesystem::path& path) {
  const Opened database(path);
  const std::int16_t db = database.handle();
  std::mt19937 random(1);
  for (int generation = 2; !shared.stop; ++generation) {
    for (int i = 0; i < 4; ++i) {
      const int index = static_cast<int>(random() % kRecords);
      save(shared, db, index, generation);
      shared.saved[index] = generation;
    }
    ++generation;
    expect(tavdsrv_begin(db) == 0, "beginning a group under load");
    for (int i = 0; i < kRecords; ++i) save(shared, db, i, generation);
    expect(tavdsrv_commit(db) == 0, "committing a group under load");
    for (auto& saved : shared.saved) saved = generation;
  }
}

void expect_between(int generation, int oldest, const Shared& shared, int index) {
  expect(generation != kAbsent, id_of(index) + " is not there");
  expect(generation >= oldest, id_of(index) + " is older than what was saved before it was asked for");
  expect(generation <= shared.started[index], id_of(index) + " comes from the future");
}

// Makes one call of a reader's, and notes how long it took if no other has taken longer.
template <typename Call>
auto timed(Shared& shared, Call&& call) {
  const auto begin = Clock::now();
  auto result = call();
  const long took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin).count();
  for (long known = shared.longest; took > known;) {
    if (shared.longest.compare_exchange_weak(known, took)) break;
  }
  return result;
}

void find_one(Shared& shared, std::int16_t db, int index) {
  const int oldest = shared.saved[index];
  const int generation = timed(shared, [&] { return stored_generation(db, kClass, id_of(index)); });
  expect_between(generation, oldest, shared, index);
  ++shared.finds;
}

// Walks over all records, and sometimes waits in the middle.
void walk(Shared& shared, std::int16_t db, std::mt19937& random) {
  std::vector<int> oldest(kRecords);
  const auto note = [&] {
    for (int i = 0; i < kRecords; ++i) oldest[static_cast<std::size_t>(i)] = shared.saved[i];
  };
  note();
  const bool waits = random() % 4 == 0;
  tavb_rec rec = timed(shared, [&] { return tavbfindrec(db, kClass, "", kAtOrAfter); });
  for (int i = 0; i < kRecords; ++i) {
    expect(rec != nullptr, "a walk ends early");
    expect_between(generation_of(rec), oldest[static_cast<std::size_t>(i)], shared, i);
    if (waits && i % 10 == 9) {
      usleep(kLongerThanASave);
      note();
      usleep(kLongerThanTrusted);
    }
    tavb_rec next = timed(shared, [&] { return tavbnextrec(db, rec); });
    expect(*tavdsrv_lasterror() == '\0', "walking under load");
    tavbreleaserec(rec);
    rec = next;
  }
  expect(rec == nullptr, "a walk goes on behind the last record");
  ++shared.walks;
}

void read(Shared& shared, const std::filesystem::path& path, unsigned seed) {
  std::mt19937 random(seed);
  while (!shared.stop) {
    // Again and again, also while a change is on its way.
    const auto database = timed(shared, [&] { return std::make_unique<Opened>(path); });
    for (int i = 0; i < 50; ++i) {
      find_one(shared, database->handle(), static_cast<int>(random() % kRecords));
      if (i % 5 == 0) walk(shared, database->handle(), random);
    }
  }
}

}  // namespace

void two_processes(const Scale& scale) {
  const std::filesystem::path path = scale.folder / "load.tavdb";
  auto& told = shared<Shared>();
  {
    const Opened database(path, 1);
    for (int i = 0; i < kRecords; ++i) {
      save(told, database.handle(), i, 1);
      told.saved[i] = 1;
    }
  }
  std::vector<pid_t> processes = {start([&] { write(told, path); })};
  for (unsigned i = 0; i < kReaders; ++i) processes.push_back(start([&] { read(told, path, i); }));
  const auto end = Clock::now() + std::chrono::seconds(scale.full ? 60 : 2);
  while (Clock::now() < end) usleep(20'000);
  told.stop = true;
  for (const pid_t process : processes) finish(process);
  expect_sound(path);
  expect(told.saves > kRecords && told.finds > 0 && told.walks > 0, "nothing was done");
  std::printf(
      "one process saved %ld records while %d others found %ld and walked %ld times over %d records; "
      "the longest call of a reader took %.1f ms\n",
      told.saves.load(), kReaders, told.finds.load(), told.walks.load(), kRecords,
      static_cast<double>(told.longest) / 1000);
}

}  // namespace stress
