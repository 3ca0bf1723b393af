// Writers that are killed at random moments: the database opens, every record is the old or the new one, a
// group of changes is there whole or not at all, and the file is sound.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <random>

#include "stress.h"

namespace stress {

namespace {

constexpr const char* kSingles = "TVM";  // saved one by one, with a block
constexpr const char* kGroup = "ASD";    // saved together
constexpr int kRecords = 12;
constexpr int kGroupRecords = 30;
constexpr std::size_t kBytes = 3000;
constexpr std::size_t kLargeBytes = 300'000;  // a group of these is more than the cache holds
constexpr std::int16_t kExact = 0;            // mode of tavbfindrec

struct Shared {
  std::atomic<int> started[kRecords];
  std::atomic<int> saved[kRecords];
  std::atomic<int> group_started;
  std::atomic<int> group_saved;
  std::atomic<int> generation;
  std::atomic<bool> writing;
};

std::string id_of(int index) {
  return "R" + std::to_string(100 + index);
}

void save_single(Shared& told, std::int16_t db, int index, int generation) {
  told.started[index] = generation;
  const Record record(kSingles, id_of(index), generation, kBytes);
  tavbsaverecwithahm(db, record.get(), &generation, sizeof generation);
  expect(*tavdsrv_lasterror() == '\0', "saving");
  told.saved[index] = generation;
}

void save_group(Shared& told, std::int16_t db, int generation) {
  told.group_started = generation;
  const std::size_t bytes = generation % 4 == 0 ? kLargeBytes : kBytes;
  expect(tavdsrv_begin(db) == 0, "beginning a group");
  for (int i = 0; i < kGroupRecords; ++i) {
    expect(Record(kGroup, id_of(i), generation, bytes).save(db), "saving in a group");
  }
  expect(tavdsrv_commit(db) == 0, "committing a group");
  told.group_saved = generation;
}

void write_for_ever(Shared& told, const std::filesystem::path& path) {
  const Opened database(path);
  told.writing = true;
  for (;;) {
    const int generation = ++told.generation;
    for (int i = generation % 3; i < kRecords; i += 3) save_single(told, database.handle(), i, generation);
    save_group(told, database.handle(), generation);
  }
}

void check_single(Shared& told, std::int16_t db, int index) {
  tavb_rec rec = tavbfindrec(db, kSingles, id_of(index).c_str(), kExact);
  expect(*tavdsrv_lasterror() == '\0', "finding after a kill");
  const int generation = generation_of(rec);
  std::int32_t length = 0;
  void* block = tavbgetahm(db, rec, &length);
  int of_block = 0;
  expect(block != nullptr && length == sizeof of_block, "a block is missing");
  std::memcpy(&of_block, block, sizeof of_block);
  tavbreleaseahm(block);
  tavbreleaserec(rec);
  expect(of_block == generation, "record and block do not belong together");
  expect(generation == told.saved[index] || generation == told.started[index],
         "a record is neither the old nor the new one");
  told.saved[index] = generation;
  told.started[index] = generation;
}

void check_group(Shared& told, std::int16_t db) {
  const int generation = stored_generation(db, kGroup, id_of(0));
  for (int i = 1; i < kGroupRecords; ++i) {
    expect(stored_generation(db, kGroup, id_of(i)) == generation, "half a group");
  }
  expect(generation == told.group_saved || generation == told.group_started,
         "a group is neither the old nor the new one");
  told.group_saved = generation;
  told.group_started = generation;
}

}  // namespace

void kills(const Scale& scale) {
  const int rounds = scale.full ? 100 : 10;
  const std::filesystem::path path = scale.folder / "killed.tavdb";
  const std::filesystem::path journal = path.string() + "-journal";
  auto& told = shared<Shared>();
  told.generation = 1;
  {
    const Opened database(path, 1);
    for (int i = 0; i < kRecords; ++i) save_single(told, database.handle(), i, 1);
    save_group(told, database.handle(), 1);
  }
  std::mt19937 random(20240607);
  int in_the_middle = 0;
  for (int round = 0; round < rounds; ++round) {
    told.writing = false;
    const pid_t writer = start([&] { write_for_ever(told, path); });
    int status = 0;
    while (!told.writing) {
      expect(waitpid(writer, &status, WNOHANG) == 0, "the writer ended by itself");
      usleep(100);
    }
    usleep(static_cast<useconds_t>(random() % 150'000));
    kill(writer, SIGKILL);
    waitpid(writer, &status, 0);
    expect(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL, "the writer ended by itself");
    if (std::filesystem::exists(journal)) ++in_the_middle;

    const Opened database(path);
    for (int i = 0; i < kRecords; ++i) check_single(told, database.handle(), i);
    check_group(told, database.handle());
    expect_sound(path);
  }
  std::printf("%d writers killed, %d of them in the middle of a change; %d generations written\n", rounds,
              in_the_middle, told.generation.load());
}

}  // namespace stress
