// Walks read several records in one step; nobody may notice.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "service/reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;
constexpr int kRecords = 1000;

std::string id_of(int index) {
  return "R" + std::to_string(10000 + index);
}

// Longer than a walk trusts what it has read ahead.
void wait_a_little() {
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
}

// A database of many records, a second handle on it as another process has it, and a walk through the first.
class Walk : public testing::Test {
 protected:
  void SetUp() override {
    tavdsrv_begin(database.handle());
    for (int i = 0; i < kRecords; ++i)
      Record("ASD", id_of(i).c_str()).text(kMaker, "old").save(database.handle());
    ASSERT_EQ(tavdsrv_commit(database.handle()), 0);
    other = tavbopendatabase(nullptr, database.path().c_str(), 0);
    ASSERT_GT(other, 0);
    at = tavbfindrec(database.handle(), "ASD", "", kAtOrAfter);
  }
  void TearDown() override {
    tavbreleaserec(at);
    tavdsrv_closedatabase(other);
  }

  std::string step() {
    tavb_rec next = tavbnextrec(database.handle(), at);
    tavbreleaserec(at);
    at = next;
    return name_of(at);
  }
  // Far enough that it reads ahead.
  void go_to(int index) {
    while (name_of(at) != "ASD:" + id_of(index)) ASSERT_NE(step(), "none");
  }

  Database database;
  std::int16_t other = -1;
  tavb_rec at = nullptr;
};

}  // namespace

TEST_F(Walk, MeetsEveryRecordOnceAndInOrder) {
  for (int i = 1; i < kRecords; ++i) ASSERT_EQ(step(), "ASD:" + id_of(i));
  EXPECT_EQ(step(), "none");
  EXPECT_STREQ(tavdsrv_lasterror(), "");
}

TEST_F(Walk, MeetsWhatAnotherHandleSavesInFrontOfIt) {
  go_to(200);
  Record("ASD", (id_of(200) + "-A").c_str()).save(other);
  wait_a_little();
  EXPECT_EQ(step(), "ASD:" + id_of(200) + "-A");
  EXPECT_EQ(step(), "ASD:" + id_of(201));
}

TEST_F(Walk, TellsTheNewValueOfWhatAnotherHandleChanges) {
  go_to(200);
  Record("ASD", id_of(203).c_str()).text(kMaker, "new").save(other);
  wait_a_little();
  go_to(203);
  EXPECT_EQ(text_of(at, kMaker), "new");
}

TEST_F(Walk, DoesNotMeetWhatAnotherHandleDeletes) {
  go_to(200);
  tavbdeleterec(other, "ASD", id_of(201).c_str());
  tavbdeleterec(other, "ASD", id_of(202).c_str());
  wait_a_little();
  EXPECT_EQ(step(), "ASD:" + id_of(203));
}

TEST_F(Walk, MeetsItsOwnHandlesChangesAtOnce) {
  go_to(200);
  Record("ASD", (id_of(200) + "-A").c_str()).save(database.handle());
  tavbdeleterec(database.handle(), "ASD", id_of(201).c_str());
  Record("ASD", id_of(202).c_str()).text(kMaker, "new").save(database.handle());
  EXPECT_EQ(step(), "ASD:" + id_of(200) + "-A");
  EXPECT_EQ(step(), "ASD:" + id_of(202));
  EXPECT_EQ(text_of(at, kMaker), "new");
}

TEST_F(Walk, ForgetsAGroupThatIsRolledBack) {
  go_to(200);
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  for (int i = 0; i < 5; ++i) {
    Record("ASD", (id_of(203) + "-" + std::to_string(i)).c_str()).save(database.handle());
  }
  EXPECT_EQ(step(), "ASD:" + id_of(201));
  go_to(203);
  EXPECT_EQ(step(), "ASD:" + id_of(203) + "-0");
  ASSERT_EQ(tavdsrv_rollback(database.handle()), 0);
  EXPECT_EQ(step(), "ASD:" + id_of(204));
}

TEST_F(Walk, GoesOnFromARecordThatWasDeleted) {
  go_to(200);
  tavbdeleterec(database.handle(), "ASD", id_of(200).c_str());
  EXPECT_EQ(step(), "ASD:" + id_of(201));
}

TEST_F(Walk, TwoOfThemThroughOneHandleDoNotDisturbEachOther) {
  go_to(200);
  tavb_rec second = tavbfindrec(database.handle(), "ASD", id_of(500).c_str(), kExact);
  for (int i = 1; i < 100; ++i) {
    tavb_rec next = tavbnextrec(database.handle(), second);
    tavbreleaserec(second);
    second = next;
    EXPECT_EQ(name_of(second), "ASD:" + id_of(500 + i));
    EXPECT_EQ(step(), "ASD:" + id_of(200 + i));
  }
  tavbreleaserec(second);
}

TEST_F(Walk, BackToAnEarlierRecordGoesOnFromThere) {
  go_to(200);
  const Held earlier(tavbfindrec(database.handle(), "ASD", id_of(100).c_str(), kExact));
  const Held next(tavbnextrec(database.handle(), earlier.get()));
  EXPECT_EQ(name_of(next.get()), "ASD:" + id_of(101));
  const Held again(tavbnextrec(database.handle(), earlier.get()));
  EXPECT_EQ(name_of(again.get()), "ASD:" + id_of(101));
  EXPECT_EQ(step(), "ASD:" + id_of(201));
}

TEST_F(Walk, RecordsMayBeLargerThanWhatIsReadAhead) {
  tavdsrv_begin(database.handle());
  for (int i = 300; i < 310; ++i) {
    Record record("ASD", id_of(i).c_str());
    for (int attribute = 0; attribute < 12; ++attribute) {
      record.text(20000 + attribute, std::string(32000, static_cast<char>('a' + i % 26)));
    }
    record.save(database.handle());
  }
  ASSERT_EQ(tavdsrv_commit(database.handle()), 0);
  for (int i = 1; i < 320; ++i) {
    ASSERT_EQ(step(), "ASD:" + id_of(i));
    if (i < 300 || i >= 310) continue;
    char text[4] = {};
    tavbcopyatt(0, at, 20011, nullptr, text, 3);
    EXPECT_EQ(std::string(text), std::string(3, static_cast<char>('a' + i % 26)));
  }
}
