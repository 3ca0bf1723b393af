// A server that follows another one: it tells what has arrived there, and never less than it told before.
#include <gmock/gmock.h>

#include "administrator.h"
#include "support/wide.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

constexpr std::int16_t kText = 1503;
constexpr int kRecords = 40;  // more than a walk reads one by one before it reads ahead

std::string name_at_follower() {
  return "host=" + server_folder() + "/follower user=tavd dbname=t3";
}

class Follower : public OnServer {
 protected:
  static void SetUpTestSuite() { server("follow"); }

  void SetUp() override {
    ASSERT_EQ(tavdsrv_begin(master.get()), 0);
    for (int i = 0; i < kRecords; ++i) save(id_of(i), "old");
    set_utf8_flag(2);
    ASSERT_EQ(tavdsrv_commit(master.get()), 0);
    wait_until_arrived();
  }

  void save(const std::string& id, const char* text) const {
    Record("ASD", id.c_str()).text(kText, text).save(master.get());
  }
  void set_utf8_flag(std::int16_t value) const {
    Record("000", "FILEHEADER").words(1049, {value}).save(master.get());
  }

  // Until the follower has all that the master has stored.
  void wait_until_arrived() const {
    const std::string position = administrator->run("SELECT pg_current_wal_lsn()");
    Administrator(name_at_follower())
        .wait_for("SELECT pg_last_wal_replay_lsn() >= '" + position + "'", std::chrono::seconds(60));
  }

  // Changes the master in such a way that the follower's snapshot is the same text before and after: an older
  // transaction is still open, and a younger one has ended. `read` is called before the change is committed.
  template <typename Change, typename Read>
  void change_unseen(Change change, Read read) {
    const Administrator older;
    older.run("BEGIN");
    older.run("SELECT pg_current_xact_id()");  // a transaction has a number from here on
    ASSERT_EQ(tavdsrv_begin(master.get()), 0);
    change();
    administrator->run("SELECT pg_logical_emit_message(true, '', 'younger')");
    wait_until_arrived();
    const std::string before = snapshot_at_follower();
    read();
    ASSERT_EQ(tavdsrv_commit(master.get()), 0);
    wait_until_arrived();
    EXPECT_EQ(snapshot_at_follower(), before);
  }

  const Open master;

 private:
  static std::string snapshot_at_follower() {
    return Administrator(name_at_follower()).run("SELECT pg_current_snapshot()");
  }
};

}  // namespace

TEST_F(Follower, HasTheRecordsOfItsMaster) {
  const Open follower(name_at_follower(), kOpenExisting);
  EXPECT_EQ(stored_text(follower.get(), "ASD", id_of(7).c_str(), kText), "old");
  Held at(tavbfindrec(follower.get(), "ASD", "", kAtOrAfter));
  for (int i = 0; i < kRecords; ++i, at.go_on(follower.get()))
    ASSERT_EQ(name_of(at.get()), "ASD:" + id_of(i));
  EXPECT_EQ(name_of(at.get()), "none");
  EXPECT_STREQ(tavdsrv_lasterror(), "");
}

TEST_F(Follower, WalkTellsAChangeThatTheSnapshotDoesNot) {
  const Open follower(name_at_follower(), kOpenExisting);
  constexpr int kMet = kRecords / 2;
  Held at(tavbfindrec(follower.get(), "ASD", id_of(0).c_str(), kExact));
  change_unseen(
      [&] {
        tavbdeleterec(master.get(), "ASD", id_of(kMet + 1).c_str());
        save(id_of(kMet + 2), "new");
      },
      [&] {
        for (int i = 1; i <= kMet; ++i) at.go_on(follower.get());
      });
  EXPECT_EQ(name_of(at.get()), "ASD:" + id_of(kMet));
  at.go_on(follower.get());
  EXPECT_EQ(name_of(at.get()), "ASD:" + id_of(kMet + 2));
  EXPECT_EQ(text_of(at.get(), kText), "new");
}

TEST_F(Follower, TextsAreReadAsTheMasterSaysNow) {
  const Open follower(name_at_follower(), kOpenExisting);
  Record record("ASD", "A");
  record.text(kText, "\xC3\x85");
  const auto shown = [&] {
    std::array<tavd_wchar, 10> text{};
    tavbcopywsz(follower.get(), record.rec(), kText, text.data(), sizeof text, 0);
    return tavdtest::Wide(text.data());
  };
  change_unseen([&] { set_utf8_flag(1); }, [&] { EXPECT_EQ(shown(), WIDE("\u00C3\u2026")); });
  found(follower.get(), "ASD", id_of(0).c_str(), kExact);
  EXPECT_EQ(shown(), WIDE("\u00C5"));
}

TEST_F(Follower, SavesAndGroupsAreRefusedAndReadingGoesOn) {
  const Open follower(name_at_follower(), kOpenExisting);
  Record("ASD", id_of(0).c_str()).text(kText, "new").save(follower.get());
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("read-only transaction"));
  tavbdeleterec(follower.get(), "ASD", id_of(0).c_str());
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("read-only transaction"));
  EXPECT_NE(tavdsrv_begin(follower.get()), 0);
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("during recovery"));
  EXPECT_EQ(stored_text(follower.get(), "ASD", id_of(0).c_str(), kText), "old");
}

TEST_F(Follower, TablesAreNotMadeThere) {
  administrator->run("DROP SCHEMA tavd CASCADE");
  wait_until_arrived();
  EXPECT_EQ(open(kCreate, name_at_follower()), -1);
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("read-only transaction"));
  EXPECT_EQ(open(kOpenExisting, name_at_follower()), -1);
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("holds no product database"));
}

TEST_F(Follower, TakesSavesOnceItHasBecomeTheMaster) {
  const Open follower(name_at_follower(), kOpenExisting);
  server("promote");
  Record("ASD", id_of(0).c_str()).text(kText, "new").save(follower.get());
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  ASSERT_EQ(tavdsrv_begin(follower.get()), 0) << tavdsrv_lasterror();
  Record("ASD", id_of(1).c_str()).text(kText, "new").save(follower.get());
  EXPECT_EQ(tavdsrv_commit(follower.get()), 0);
  for (const int i : {0, 1}) EXPECT_EQ(stored_text(follower.get(), "ASD", id_of(i).c_str(), kText), "new");
  EXPECT_EQ(stored_text(master.get(), "ASD", id_of(0).c_str(), kText), "old") << "it is another server now";
  server("follow");
}
