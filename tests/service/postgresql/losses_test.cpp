// Several writers, writers that are killed, and servers that are: nothing is torn, and a loss is told once.
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <thread>

#include "administrator.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

constexpr int kRecords = 40;
const std::string kSomebody = "SELECT count(*) > 0 FROM pg_stat_activity WHERE ";

void save_all(std::int16_t db, const char* text) {
  for (int i = 0; i < kRecords; ++i) Record("ASD", id_of(i).c_str()).text(1503, text).save(db);
}

class Losses : public OnServer {
 protected:
  Losses() {
    const Open db;
    EXPECT_EQ(tavdsrv_begin(db.get()), 0);
    save_all(db.get(), "old");
    EXPECT_EQ(tavdsrv_commit(db.get()), 0);
  }
  // What all records say, or "torn".
  static std::string said() {
    const Open db;
    const std::string first = stored_text(db.get(), "ASD", id_of(0).c_str(), 1503);
    for (int i = 1; i < kRecords; ++i) {
      if (stored_text(db.get(), "ASD", id_of(i).c_str(), 1503) != first) return "torn";
    }
    return first;
  }
  // Makes the server wait for a second one, which never comes, at the end of each commit, and calls until it
  // does.
  template <typename Call>
  std::future<int> held_up(Call call) {
    administrator->run("ALTER SYSTEM SET synchronous_standby_names = 'nowhere'");
    administrator->run("SELECT pg_reload_conf()");
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end) {
      auto answer = std::async(std::launch::async, call);
      while (answer.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready) {
        if (administrator->run(kSomebody + "wait_event = 'SyncRep'") == "t") return answer;
      }
    }
    ADD_FAILURE() << "the server held nobody up";
    return std::async(std::launch::deferred, call);
  }
  // Waits until the server sees a connection in that state.
  void wait_for(const std::string& condition) {
    administrator->wait_for(kSomebody + condition, std::chrono::seconds(5));
  }
};

}  // namespace

TEST_F(Losses, GroupHoldsOffAnotherSaverUntilItsEndAndNoReader) {
  const Open group;
  const Open other;
  ASSERT_EQ(tavdsrv_begin(group.get()), 0);
  save_all(group.get(), "group");
  EXPECT_EQ(stored_text(other.get(), "ASD", id_of(0).c_str(), 1503), "old");
  auto saver = std::async(std::launch::async, [&] {
    Record("ASD", id_of(0).c_str()).text(1503, "single").save(other.get());
    return std::string(tavdsrv_lasterror());
  });
  wait_for("wait_event_type = 'Lock'");
  EXPECT_EQ(said(), "old");
  ASSERT_EQ(tavdsrv_commit(group.get()), 0);
  EXPECT_EQ(saver.get(), "");
  EXPECT_EQ(stored_text(other.get(), "ASD", id_of(0).c_str(), 1503), "single") << "it came behind the group";
  EXPECT_EQ(stored_text(other.get(), "ASD", id_of(1).c_str(), 1503), "group");
}

TEST_F(Losses, SaverThatWaitsTooLongIsTold) {
  const Open group;
  const Open other;
  ASSERT_EQ(tavdsrv_begin(group.get()), 0);
  const auto begin = std::chrono::steady_clock::now();
  Record("ASD", id_of(0).c_str()).text(1503, "single").save(other.get());
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("lock timeout"));
  const auto waited = std::chrono::steady_clock::now() - begin;
  EXPECT_GT(waited, std::chrono::milliseconds(4500));
  EXPECT_LT(waited, std::chrono::seconds(15));
  ASSERT_EQ(tavdsrv_rollback(group.get()), 0);
  EXPECT_EQ(said(), "old");
}

TEST_F(Losses, TwoWritersOfGroupsLeaveTheOneOrTheOther) {
  const auto write = [](const char* text) {
    const Open db;
    for (int i = 0; i < 10; ++i) {
      if (tavdsrv_begin(db.get()) != 0) return std::string(tavdsrv_lasterror());
      save_all(db.get(), text);
      if (tavdsrv_commit(db.get()) != 0) return std::string(tavdsrv_lasterror());
    }
    return std::string();
  };
  auto one = std::async(std::launch::async, write, "one");
  auto other = std::async(std::launch::async, write, "other");
  EXPECT_EQ(one.get(), "");
  EXPECT_EQ(other.get(), "");
  EXPECT_THAT(said(), testing::AnyOf("one", "other"));
}

TEST_F(Losses, WriterThatIsKilledInAGroupLeavesNothingAndHoldsOffNobody) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t writer = fork();
  if (writer == 0) {
    const std::int16_t db = open();
    tavdsrv_begin(db);
    save_all(db, "killed");
    [[maybe_unused]] const auto written = write(ready[1], "x", 1);
    pause();
    _exit(0);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  kill(writer, SIGKILL);
  waitpid(writer, nullptr, 0);
  close(ready[0]);
  close(ready[1]);
  EXPECT_EQ(said(), "old");
  const Open db;
  ASSERT_EQ(tavdsrv_begin(db.get()), 0) << tavdsrv_lasterror();
  save_all(db.get(), "next");
  EXPECT_EQ(tavdsrv_commit(db.get()), 0);
  EXPECT_EQ(said(), "next");
}

TEST_F(Losses, LostConnectionIsToldOnceAndTheNextCallConnectsAgain) {
  const Open db;
  tavb_rec at = tavbfindrec(db.get(), "ASD", id_of(0).c_str(), kExact);
  administrator->end_connections();
  EXPECT_EQ(tavbnextrec(db.get(), at), nullptr);
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("the connection to the server was lost"));
  const Held next(tavbnextrec(db.get(), at));
  EXPECT_EQ(name_of(next.get()), "ASD:" + id_of(1));
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  tavbreleaserec(at);
  administrator->end_connections();
  Record("ASD", "NEW").save(db.get());
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("the connection to the server was lost"));
  Record("ASD", "NEW").save(db.get());
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  EXPECT_EQ(found(db.get(), "ASD", "NEW", kExact), "ASD:NEW");
}

TEST_F(Losses, ServerThatIsKilledInAGroupDropsItWhole) {
  const Open db;
  ASSERT_EQ(tavdsrv_begin(db.get()), 0);
  save_all(db.get(), "killed");
  restart_server();
  Record("ASD", id_of(0).c_str()).text(1503, "behind").save(db.get());
  const std::string reason = tavdsrv_lasterror();
  EXPECT_THAT(reason, HasSubstr("the connection to the server was lost"));
  EXPECT_EQ(stored_text(db.get(), "ASD", id_of(1).c_str(), 1503), "old") << "reading goes on";
  Record("ASD", id_of(0).c_str()).text(1503, "behind").save(db.get());
  EXPECT_EQ(tavdsrv_lasterror(), reason + "; the group's changes are dropped");
  EXPECT_EQ(tavdsrv_commit(db.get()), -1);
  EXPECT_EQ(tavdsrv_lasterror(), reason + "; the group's changes are dropped");
  EXPECT_EQ(said(), "old");
  ASSERT_EQ(tavdsrv_begin(db.get()), 0) << tavdsrv_lasterror();
  save_all(db.get(), "next");
  EXPECT_EQ(tavdsrv_commit(db.get()), 0);
  EXPECT_EQ(said(), "next");
}

TEST_F(Losses, ReadingThatMeetsTheLossFailsTheGroupToo) {
  const Open db;
  ASSERT_EQ(tavdsrv_begin(db.get()), 0);
  save_all(db.get(), "lost");
  administrator->end_connections();
  EXPECT_EQ(found(db.get(), "ASD", id_of(0).c_str(), kExact), "none");
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("the connection to the server was lost"));
  EXPECT_EQ(stored_text(db.get(), "ASD", id_of(0).c_str(), 1503), "old");
  Record("ASD", id_of(0).c_str()).text(1503, "alone").save(db.get());
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("the connection to the server was lost"));
  EXPECT_EQ(tavdsrv_commit(db.get()), -1);
  EXPECT_EQ(said(), "old");
}

TEST_F(Losses, WhatASaveHasReturnedFromIsThereWhenTheServerIsKilled) {
  {
    const Open db;
    Record("ASD", "SINGLE").text(1503, "kept").save(db.get());
    EXPECT_STREQ(tavdsrv_lasterror(), "");
    ASSERT_EQ(tavdsrv_begin(db.get()), 0);
    save_all(db.get(), "kept");
    ASSERT_EQ(tavdsrv_commit(db.get()), 0);
  }
  restart_server();
  const Open db;
  EXPECT_EQ(stored_text(db.get(), "ASD", "SINGLE", 1503), "kept");
  EXPECT_EQ(said(), "kept");
}

// A save that does not wait until it is on disk would not wait for a second server either.
TEST_F(Losses, SavesAreDurableWhereTheDatabaseIsSetToBeHasty) {
  administrator->run("ALTER DATABASE t3 SET synchronous_commit = off");
  const Open db;
  auto save = held_up([&] {
    Record("ASD", "A").save(db.get());
    return 0;
  });
  administrator->run("ALTER SYSTEM RESET synchronous_standby_names");
  administrator->run("SELECT pg_reload_conf()");
  save.get();
  administrator->run("ALTER DATABASE t3 RESET ALL");
  EXPECT_EQ(found(db.get(), "ASD", "A", kExact), "ASD:A");
}

// The commit waits for a second server that never comes, after it is stored: then this one is killed.
TEST_F(Losses, CommitWhoseAnswerIsLostIsToldAsItCameOut) {
  const Open db;
  auto commit = held_up([&] {
    EXPECT_EQ(tavdsrv_begin(db.get()), 0);
    save_all(db.get(), "stored");
    return tavdsrv_commit(db.get());
  });
  administrator->run("ALTER SYSTEM RESET synchronous_standby_names");
  restart_server();
  EXPECT_EQ(commit.get(), 0);
  EXPECT_EQ(said(), "stored");
}
