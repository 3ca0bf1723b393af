// The system refuses what the service asks of it at the worst moment.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "files.h"
#include "service/reading.h"
#include "support/database.h"
#include "system_calls.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;

// What SQLite opens to synchronize a folder. A pipe cannot be synchronized.
int open_pipe_for_folder(const char*, int* descriptor) {
  int ends[2];
  if (pipe(ends) != 0) return SQLITE_CANTOPEN;
  close(ends[1]);
  *descriptor = ends[0];
  return SQLITE_OK;
}

class FolderThatIsNotSynchronized : public testing::Test {
 protected:
  void save(const char* text) { Record("ASD", "A").text(kMaker, text).save(database.handle()); }
  std::string stored_for_others() {
    const std::int16_t other = tavbopendatabase(nullptr, database.path().c_str(), 0);
    const std::string text = stored_text(other, "ASD", "A", kMaker);
    tavdsrv_closedatabase(other);
    return text;
  }
  void expect_done_with_a_warning() {
    EXPECT_STREQ(tavdsrv_lasterror(), "");
    EXPECT_THAT(tavdsrv_lastwarning(), HasSubstr(database.path() + ": stored, but its folder"));
  }
  Database database;
};

}  // namespace

TEST_F(FolderThatIsNotSynchronized, SaveIsReportedAsDoneWithWhatIsUncertain) {
  save("old");
  {
    const SystemCall fault("openDirectory", reinterpret_cast<sqlite3_syscall_ptr>(open_pipe_for_folder));
    save("new");
    expect_done_with_a_warning();
  }
  EXPECT_EQ(stored_for_others(), "new");
  save("newer");
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  EXPECT_STREQ(tavdsrv_lastwarning(), "");
  EXPECT_EQ(stored_for_others(), "newer");
}

TEST_F(FolderThatIsNotSynchronized, DeletionIsReportedAsDoneWithWhatIsUncertain) {
  save("old");
  const SystemCall fault("openDirectory", reinterpret_cast<sqlite3_syscall_ptr>(open_pipe_for_folder));
  tavbdeleterec(database.handle(), "ASD", "A");
  expect_done_with_a_warning();
  EXPECT_EQ(stored_for_others(), "absent");
}

TEST_F(FolderThatIsNotSynchronized, CommitReturnsZeroAndTellsWhatIsUncertain) {
  save("old");
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  save("new");
  {
    const SystemCall fault("openDirectory", reinterpret_cast<sqlite3_syscall_ptr>(open_pipe_for_folder));
    EXPECT_EQ(tavdsrv_commit(database.handle()), 0);
    expect_done_with_a_warning();
  }
  EXPECT_EQ(stored_for_others(), "new");
  EXPECT_EQ(tavdsrv_commit(database.handle()), -1) << "the group has ended";
  save("newer");
  EXPECT_STREQ(tavdsrv_lasterror(), "");
}
