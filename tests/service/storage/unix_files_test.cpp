// As opening_test.cpp, with what only a Unix has: pipes, forks and signals, any letter in a name, a shell.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "foreign.h"

using namespace tavdtest;
using testing::HasSubstr;

TEST_F(Foreign, PipeIsRefusedWithoutWaiting) {
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(tavbopendatabase(nullptr, (folder / "pipe").c_str(), kOpenExisting), -1);
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("not a file"));
}

TEST_F(Foreign, JournalBesideAForeignFileIsNotRolledBack) {
  // A journal as a crash leaves it behind. Reading the file beside it as a database would play it back.
  const fs::path path = make_database();
  const pid_t child = fork();
  if (child == 0) {
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kOpenExisting);
    tavdsrv_begin(db);
    for (int i = 0; i < 1000; ++i)
      Record("AAA", std::to_string(i).c_str()).text(1503, std::string(30000, 'n')).save(db);
    raise(SIGKILL);
  }
  waitpid(child, nullptr, 0);
  write_file(folder / "text", std::string(8192, 'x'));
  fs::copy_file(path.string() + "-journal", folder / "text-journal");
  expect_refused(folder / "text", "not a product database");

  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kOpenExisting);
  EXPECT_EQ(found(db, "", "", kAtOrAfter), "ASD:PIPE-0");
  tavdsrv_closedatabase(db);
  EXPECT_FALSE(fs::exists(path.string() + "-journal"))
      << "beside a product database the same journal is played back";
}

TEST_F(Foreign, NamesThatSqliteTreatsSpeciallyAreFileNames) {
  const fs::path old = fs::current_path();
  fs::current_path(folder.path());
  for (const char* name : {":memory:", "file:x?mode=memory", "a b%20c?d#e"}) {
    EXPECT_EQ(tavbopendatabase(nullptr, name, kOpenExisting), -1);
    const std::int16_t db = tavbopendatabase(nullptr, name, kCreate);
    EXPECT_GT(db, 0) << tavdsrv_lasterror();
    tavdsrv_closedatabase(db);
    EXPECT_TRUE(fs::is_regular_file(name));
  }
  fs::current_path(old);
}

TEST_F(Foreign, OpeningAgainKeepsTheLocksOfAnOpenGroupOfChanges) {
  const fs::path path = make_database();
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kOpenExisting);
  ASSERT_EQ(tavdsrv_begin(db), 0);
  tavdsrv_closedatabase(tavbopendatabase(nullptr, path.c_str(), kOpenExisting));
  // Another process asks: is the file still reserved?
  const std::string ask = "sqlite3 '" + path.string() + "' 'BEGIN IMMEDIATE' 2>&1";
  FILE* asking = popen(ask.c_str(), "r");
  char answer[200] = {};
  EXPECT_NE(fgets(answer, sizeof answer, asking), nullptr);
  pclose(asking);
  EXPECT_THAT(answer, HasSubstr("locked"));
  EXPECT_EQ(tavdsrv_rollback(db), 0);
  tavdsrv_closedatabase(db);
}
