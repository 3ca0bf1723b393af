// Groups of changes that are larger than SQLite's cache: what others see, and what a killed writer leaves.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>

#include "files.h"
#include "service/reading.h"
#include "support/database.h"
#include "system_calls.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;
constexpr int kRecords = 45;
constexpr int kAttributes = 8;
constexpr std::size_t kBytes = 30'000;  // of an attribute: 11 MB for all, and the cache holds 8

std::string id_of(int index) {
  return "R" + std::to_string(100 + index);
}

void save(std::int16_t db, const std::string& id, char generation) {
  Record record("ASD", id.c_str());
  record.text(kMaker, std::string(1, generation));
  for (int i = 0; i < kAttributes; ++i) record.text(20000 + i, std::string(kBytes, generation));
  record.save(db);
}

void save_all(std::int16_t db, char generation) {
  for (int i = 0; i < kRecords; ++i) save(db, id_of(i), generation);
}

// Replaces every record, and adds as many.
void change_all(std::int16_t db) {
  save_all(db, 'n');
  for (int i = 0; i < kRecords; ++i) save(db, "MORE" + std::to_string(i), 'n');
}

// Runs `steps` in a process of its own; whether it answers true there.
bool in_other_process(const std::function<bool()>& steps) {
  const pid_t child = fork();
  if (child == 0) _exit(steps() ? 0 : 1);
  int status = -1;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Finds and walks; whether all records are of this generation, and how many there are.
bool reads(const std::string& path, char generation, int count) {
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
  if (db < 0) return false;
  bool good = stored_text(db, "ASD", id_of(7).c_str(), kMaker) == std::string(1, generation);
  for (Held at(tavbfindrec(db, "", "", kAtOrAfter)); at; at.go_on(db), --count)
    good = good && text_of(at.get(), kMaker) == std::string(1, generation);
  good = good && *tavdsrv_lasterror() == '\0' && count == 0;
  tavdsrv_closedatabase(db);
  return good;
}

std::string integrity(const std::string& path) {
  sqlite3* connection = nullptr;
  sqlite3_stmt* statement = nullptr;
  sqlite3_open(path.c_str(), &connection);
  sqlite3_prepare_v2(connection, "PRAGMA integrity_check", -1, &statement, nullptr);
  std::string answer = "no answer";
  if (sqlite3_step(statement) == SQLITE_ROW) {
    answer = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  }
  sqlite3_finalize(statement);
  sqlite3_close(connection);
  return answer;
}

class LargeGroup : public testing::Test {
 protected:
  void SetUp() override {
    path = (folder / "db.tavdb").string();
    db = tavbopendatabase(nullptr, path.c_str(), 1);
    ASSERT_EQ(tavdsrv_begin(db), 0);
    save_all(db, 'o');
    ASSERT_EQ(tavdsrv_commit(db), 0);
  }
  void TearDown() override { tavdsrv_closedatabase(db); }

  bool others_read(char generation, int count) {
    return in_other_process([&] { return reads(path, generation, count); });
  }

  Folder folder;
  std::string path;
  std::int16_t db = -1;
};

// Calls that change a file, of the process that is to be killed at one of them.
struct Calls {
  std::atomic<int> count;
  int fatal;  // 0: none
};
Calls* calls = nullptr;

void count_call() {
  if (++calls->count == calls->fatal) raise(SIGKILL);
}

ssize_t counted_pwrite(int file, const void* bytes, std::size_t length, off_t at) {
  count_call();
  return pwrite(file, bytes, length, at);
}
int counted_truncate(int file, off_t length) {
  count_call();
  return ftruncate(file, length);
}
int counted_unlink(const char* name) {
  count_call();
  return unlink(name);
}

template <typename Function>
sqlite3_syscall_ptr call(Function* function) {
  return reinterpret_cast<sqlite3_syscall_ptr>(function);
}

// Changes everything in a process of its own that dies at the given call; whether it came to its end.
bool change_and_die(const std::string& path, int fatal_call) {
  calls->count = 0;
  calls->fatal = fatal_call;
  return in_other_process([&] {
    const SystemCall pwrite("pwrite", call(counted_pwrite));
    const SystemCall pwrite64("pwrite64", call(counted_pwrite));
    const SystemCall truncate("ftruncate", call(counted_truncate));
    const SystemCall unlink("unlink", call(counted_unlink));
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
    if (tavdsrv_begin(db) != 0) return false;
    change_all(db);
    return tavdsrv_commit(db) == 0;
  });
}

}  // namespace

TEST_F(LargeGroup, OthersReadWhatWasThereBeforeUntilItIsCommitted) {
  const auto size = fs::file_size(path);
  ASSERT_EQ(tavdsrv_begin(db), 0);
  change_all(db);
  ASSERT_STREQ(tavdsrv_lasterror(), "");
  EXPECT_GT(fs::file_size(path), size) << "the group has not left the cache";
  const auto began = std::chrono::steady_clock::now();
  EXPECT_TRUE(others_read('o', kRecords));
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(3)) << "nobody has to wait";
  EXPECT_EQ(tavdsrv_commit(db), 0);
  EXPECT_TRUE(others_read('n', 2 * kRecords));
  EXPECT_EQ(integrity(path), "ok");
  EXPECT_EQ(folder.snapshot().size(), 1U);
}

TEST_F(LargeGroup, TheGroupItselfReadsItsOwnChanges) {
  ASSERT_EQ(tavdsrv_begin(db), 0);
  change_all(db);
  tavbdeleterec(db, "ASD", id_of(3).c_str());
  for (int i = 0; i < kRecords; ++i) {
    EXPECT_EQ(stored_text(db, "ASD", id_of(i).c_str(), kMaker), i == 3 ? "absent" : "n");
  }
  const Held after(tavbfindrec(db, "ASD", id_of(3).c_str(), kAtOrAfter));
  EXPECT_EQ(name_of(after.get()), "ASD:" + id_of(4));
  EXPECT_EQ(tavdsrv_rollback(db), 0);
}

TEST_F(LargeGroup, RolledBackItLeavesTheFileAsItWas) {
  const std::string before = read_file(path);
  ASSERT_EQ(tavdsrv_begin(db), 0);
  change_all(db);
  ASSERT_EQ(tavdsrv_rollback(db), 0);
  EXPECT_TRUE(read_file(path) == before);
  EXPECT_EQ(stored_text(db, "ASD", id_of(7).c_str(), kMaker), "o");
  save(db, id_of(7), 'n');
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  EXPECT_EQ(stored_text(db, "ASD", id_of(7).c_str(), kMaker), "n");
  EXPECT_EQ(integrity(path), "ok");
}

TEST_F(LargeGroup, CommitThatDoesNotGetTheFileDropsIt) {
  // A reader of another program that does not end.
  sqlite3* reader = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &reader), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(reader, "BEGIN; SELECT count(*) FROM record", nullptr, nullptr, nullptr), SQLITE_OK);
  ASSERT_EQ(tavdsrv_begin(db), 0);
  change_all(db);
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  EXPECT_EQ(tavdsrv_commit(db), -1);
  EXPECT_STREQ(tavdsrv_lasterror(), (path + ": database is locked").c_str());
  sqlite3_close(reader);
  EXPECT_TRUE(others_read('o', kRecords));
  EXPECT_EQ(integrity(path), "ok");
  ASSERT_EQ(tavdsrv_begin(db), 0);
  change_all(db);
  EXPECT_EQ(tavdsrv_commit(db), 0);
  EXPECT_TRUE(others_read('n', 2 * kRecords));
}

TEST_F(LargeGroup, WriterThatIsKilledAtAnyCallLeavesAllOfItOrNothing) {
  constexpr int kRounds = 8;
  calls = static_cast<Calls*>(
      mmap(nullptr, sizeof(Calls), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  tavdsrv_closedatabase(db);
  const std::string before = read_file(path);
  ASSERT_TRUE(change_and_die(path, 0));
  const int all = calls->count;
  ASSERT_GT(all, 1000) << "the calls are not counted";
  int old_ones = 0;
  const auto check = [&](int fatal) {
    write_file(path, before);
    ASSERT_FALSE(change_and_die(path, fatal));
    const bool is_old = reads(path, 'o', kRecords);
    ASSERT_TRUE(is_old || reads(path, 'n', 2 * kRecords)) << "killed at call " << fatal << " of " << all;
    if (is_old) ++old_ones;
    ASSERT_EQ(integrity(path), "ok");
    // A journal that was not yet durable changes nothing, and goes with the next save.
    const std::int16_t again = tavbopendatabase(nullptr, path.c_str(), 0);
    save(again, "NEXT", 'x');
    tavdsrv_closedatabase(again);
    ASSERT_EQ(folder.snapshot().size(), 1U) << "something stays behind";
  };
  for (int round = 1; round < kRounds; ++round) check(all * round / kRounds);
  // The last ones of all, around the removal of the journal.
  for (int last = 0; last < 4; ++last) check(all - last);
  EXPECT_GE(old_ones, kRounds);
  db = tavbopendatabase(nullptr, path.c_str(), 0);
}
