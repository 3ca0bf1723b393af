// What is left after a process was killed, and two processes at one file.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>

#include <functional>
#include <thread>

#include "files.h"
#include "service/reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;
using namespace std::chrono_literals;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;
constexpr int kRecords = 8;
constexpr std::size_t kTextLength = 200;

std::string id_of(int index) {
  return "R" + std::to_string(index);
}

// The texts of one generation differ from those of another in every byte.
std::string text_of_generation(int generation) {
  return std::string(kTextLength, static_cast<char>('a' + generation % 26));
}

pid_t in_child(const std::function<void()>& steps) {
  const pid_t child = fork();
  if (child == 0) {
    steps();
    _exit(0);
  }
  return child;
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

}  // namespace

TEST(Durability, KilledWriterLeavesEachRecordOldOrNewAndTheFileSound) {
  const Folder folder;
  const std::string path = (folder / "db.tavdb").string();
  tavdsrv_closedatabase(tavbopendatabase(nullptr, path.c_str(), 1));
  int rounds_with_records = 0;
  for (int round = 0; round < 10; ++round) {
    const pid_t child = in_child([&] {
      const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
      for (int generation = 0;; ++generation) {
        for (int i = 0; i < kRecords; ++i) {
          std::string text = text_of_generation(generation);
          Record record("TVM", id_of(i).c_str());
          record.text(kMaker, text);
          tavbsaverecwithahm(db, record.rec(), text.data(), static_cast<std::int32_t>(text.size()));
        }
      }
    });
    std::this_thread::sleep_for(20ms + round * 7ms);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);

    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
    ASSERT_GT(db, 0) << tavdsrv_lasterror();
    for (int i = 0; i < kRecords; ++i) {
      const Held rec(tavbfindrec(db, "TVM", id_of(i).c_str(), kExact));
      if (!rec) continue;
      ++rounds_with_records;
      const std::string text = text_of(rec.get(), kMaker);
      EXPECT_EQ(text, std::string(kTextLength, text[0]));
      std::int32_t length = 0;
      void* block = tavbgetahm(db, rec.get(), &length);
      EXPECT_EQ(std::string(static_cast<char*>(block), static_cast<std::size_t>(length)), text)
          << "record and ahm block are saved in one step";
      tavbreleaseahm(block);
    }
    tavdsrv_closedatabase(db);
    EXPECT_EQ(integrity(path), "ok");
  }
  EXPECT_GT(rounds_with_records, 0);
}

TEST(Durability, WhatWasSavedBeforeTheKillIsThere) {
  const Folder folder;
  const std::string path = (folder / "db.tavdb").string();
  int pipe_ends[2];
  ASSERT_EQ(pipe(pipe_ends), 0);
  const pid_t child = in_child([&] {
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 1);
    for (int i = 0;; ++i) {
      Record("ASD", id_of(i).c_str()).save(db);
      if (write(pipe_ends[1], "x", 1) != 1) _exit(1);
    }
  });
  close(pipe_ends[1]);
  char told[5];
  for (char& one : told) ASSERT_EQ(read(pipe_ends[0], &one, 1), 1);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  close(pipe_ends[0]);
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(found(db, "ASD", id_of(i).c_str(), kExact), "ASD:" + id_of(i));
  tavdsrv_closedatabase(db);
}

TEST(Durability, KilledGroupOfChangesLeavesNothing) {
  const Folder folder;
  const std::string path = (folder / "db.tavdb").string();
  const std::int16_t made = tavbopendatabase(nullptr, path.c_str(), 1);
  Record("ASD", "A").text(kMaker, "old").save(made);
  tavdsrv_closedatabase(made);
  const pid_t child = in_child([&] {
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
    tavdsrv_begin(db);
    // More than the cache holds, so that changed pages reach the file before the kill.
    for (int i = 0; i < 1000; ++i)
      Record("ASD", id_of(i).c_str()).text(kMaker, std::string(30000, 'n')).save(db);
    Record("ASD", "A").text(kMaker, "new").save(db);
    raise(SIGKILL);
  });
  waitpid(child, nullptr, 0);
  ASSERT_TRUE(fs::exists(path + "-journal"));
  ASSERT_GT(fs::file_size(path), 1'000'000U) << "the group must have reached the file";
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
  EXPECT_EQ(stored_text(db, "ASD", "A", kMaker), "old");
  EXPECT_EQ(found(db, "ASD", "R0", kExact), "none");
  tavdsrv_closedatabase(db);
  EXPECT_EQ(integrity(path), "ok");
}

TEST(Durability, TwoProcessesSaveAndReadOneFile) {
  constexpr int kSaves = 20;
  const Folder folder;
  const std::string path = (folder / "db.tavdb").string();
  tavdsrv_closedatabase(tavbopendatabase(nullptr, path.c_str(), 1));
  const auto save_all = [&](const char* class_id) {
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
    for (int i = 0; i < kSaves; ++i) {
      Record("ASD", "SHARED").text(kMaker, class_id).save(db);
      Record(class_id, id_of(i).c_str()).save(db);
      if (*tavdsrv_lasterror() != '\0') _exit(1);
    }
    tavdsrv_closedatabase(db);
  };
  const pid_t child = in_child([&] { save_all("AAA"); });
  save_all("BBB");
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
  for (int i = 0; i < kSaves; ++i) {
    EXPECT_EQ(found(db, "AAA", id_of(i).c_str(), kExact), "AAA:" + id_of(i));
    EXPECT_EQ(found(db, "BBB", id_of(i).c_str(), kExact), "BBB:" + id_of(i));
  }
  tavdsrv_closedatabase(db);
}

TEST(Durability, DatabaseMadeByManyProcessesAtOnceIsMadeOnce) {
  const Folder folder;
  const std::string path = (folder / "db.tavdb").string();
  std::vector<pid_t> children;
  for (int i = 0; i < 6; ++i) {
    children.push_back(in_child([&, i] {
      const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 1);
      if (db < 0) _exit(1);
      Record("ASD", id_of(i).c_str()).save(db);
      _exit(*tavdsrv_lasterror() != '\0');
    }));
  }
  for (const pid_t child : children) {
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 0);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(found(db, "ASD", id_of(i).c_str(), kExact), "ASD:" + id_of(i));
  tavdsrv_closedatabase(db);
  EXPECT_EQ(folder.snapshot().size(), 1U);
}

TEST(Durability, ThreadsShareADatabase) {
  const Database database;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 10; ++i) {
        const std::string id = std::to_string(t) + "-" + std::to_string(i);
        Record("ASD", id.c_str()).text(kMaker, id).save(database.handle());
        EXPECT_EQ(stored_text(database.handle(), "ASD", id.c_str(), kMaker), id);
        EXPECT_STREQ(tavdsrv_lasterror(), "");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(Durability, ProcessesThatMakeOneDatabaseAllGetIt) {
  constexpr int kRounds = 60;
  constexpr int kProcesses = 4;
  const Folder folder;
  for (int round = 0; round < kRounds; ++round) {
    const std::string path = (folder / ("made" + std::to_string(round) + ".tavdb")).string();
    std::vector<pid_t> children;
    for (int i = 0; i < kProcesses; ++i) {
      children.push_back(in_child([&] {
        if (tavbopendatabase(nullptr, path.c_str(), 1) >= 1) return;
        std::fprintf(stderr, "%s\n", tavdsrv_lasterror());
        _exit(1);
      }));
    }
    for (const pid_t child : children) {
      int status = -1;
      EXPECT_EQ(child, waitpid(child, &status, 0));
      EXPECT_EQ(0, status) << "round " << round;
    }
  }
}
