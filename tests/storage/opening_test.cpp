// Which files are product databases, and that the others are left alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <random>

#include "files.h"
#include "service/reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

constexpr std::int32_t kOpenExisting = 0;
constexpr std::int32_t kCreate = 1;

void run_sql(const fs::path& path, const char* sql) {
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &connection), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(connection);
  sqlite3_close(connection);
}

class Foreign : public testing::Test {
 protected:
  // Makes a product database with some records, closed.
  fs::path make_database() {
    const fs::path path = folder / "good.tavdb";
    const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kCreate);
    tavdsrv_begin(db);
    for (int i = 0; i < 50; ++i) {
      Record("ASD", ("PIPE-" + std::to_string(i)).c_str()).text(1503, std::string(300, 'x')).save(db);
    }
    EXPECT_EQ(tavdsrv_commit(db), 0);
    tavdsrv_closedatabase(db);
    return path;
  }

  // Expects that the file is refused in both modes, for a reason, and that the whole folder stays as it is.
  void expect_refused(const fs::path& path, const std::string& reason) {
    const auto before = folder.snapshot();
    for (const std::int32_t mode : {kOpenExisting, kCreate}) {
      EXPECT_EQ(tavbopendatabase(nullptr, path.c_str(), mode), -1);
      EXPECT_THAT(tavdsrv_lasterror(), HasSubstr(path.string()));
      EXPECT_THAT(tavdsrv_lasterror(), HasSubstr(reason));
    }
    EXPECT_TRUE(folder.snapshot() == before) << path << " was touched";
  }

  Folder folder;
};

}  // namespace

TEST_F(Foreign, EmptyFileIsRefused) {
  write_file(folder / "empty", "");
  expect_refused(folder / "empty", "not a product database");
}

TEST_F(Foreign, TextFileIsRefused) {
  write_file(folder / "text", "Dear sir or madam,\n");
  expect_refused(folder / "text", "not a product database");
}

TEST_F(Foreign, RandomBytesAreRefused) {
  std::mt19937 random(1);
  for (const std::size_t size : {1, 16, 99, 100, 101, 4096, 10000}) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    write_file(folder / "random", bytes);
    expect_refused(folder / "random", "not a product database");
  }
}

TEST_F(Foreign, FolderIsRefused) {
  fs::create_directory(folder / "sub");
  expect_refused(folder / "sub", "not a file");
}

TEST_F(Foreign, PipeIsRefusedWithoutWaiting) {
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(tavbopendatabase(nullptr, (folder / "pipe").c_str(), kOpenExisting), -1);
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr("not a file"));
}

TEST_F(Foreign, DatabaseOfAnotherApplicationIsRefused) {
  run_sql(folder / "other", "CREATE TABLE t(a); INSERT INTO t VALUES(1);");
  expect_refused(folder / "other", "not a product database");
}

TEST_F(Foreign, DatabaseOfAnotherApplicationWithOurTablesIsRefused) {
  const fs::path path = make_database();
  run_sql(path, "PRAGMA application_id=1;");
  expect_refused(path, "not a product database");
}

TEST_F(Foreign, OtherLayoutsAreRefusedWithBothNumbers) {
  const fs::path path = make_database();
  run_sql(path, "PRAGMA user_version=2;");
  expect_refused(path, "layout 2, this service reads layout 1");
  run_sql(path, "PRAGMA user_version=0;");
  expect_refused(path, "layout 0, this service reads layout 1");
}

TEST_F(Foreign, DatabaseWithoutOurTablesIsRefused) {
  const fs::path path = make_database();
  run_sql(path, "DROP TABLE record;");
  expect_refused(path, "no such table");
}

TEST_F(Foreign, TableThatIsAViewIsRefused) {
  const fs::path path = make_database();
  run_sql(path, "DROP TABLE ahm; CREATE VIEW ahm AS SELECT 1 AS id, x'00' AS key, x'00' AS block;");
  expect_refused(path, "ahm");
}

TEST_F(Foreign, WriteAheadLogIsRefused) {
  const fs::path path = make_database();
  run_sql(path, "PRAGMA journal_mode=WAL;");
  expect_refused(path, "journal");
}

TEST_F(Foreign, TruncatedDatabaseIsRefusedAtEveryLength) {
  const std::string whole = read_file(make_database());
  ASSERT_GT(whole.size(), 20000U);
  for (std::size_t length = 0; length < whole.size(); length += length < 200 ? 7 : 509) {
    write_file(folder / "cut.tavdb", whole.substr(0, length));
    expect_refused(folder / "cut.tavdb", "");
  }
  write_file(folder / "cut.tavdb", whole.substr(0, whole.size() - 1));
  expect_refused(folder / "cut.tavdb", "");
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

TEST_F(Foreign, CreatingLeavesNothingBesideTheDatabase) {
  make_database();
  const auto files = folder.snapshot();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files.begin()->first, "good.tavdb");
}

TEST_F(Foreign, OpeningAndReadingDoNotTouchTheDatabase) {
  const fs::path path = make_database();
  const auto before = folder.snapshot();
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), kCreate);
  EXPECT_EQ(found(db, "ASD", "", kAtOrAfter), "ASD:PIPE-0");
  EXPECT_EQ(found(db, "ASD", "PIPE-49", kExact), "ASD:PIPE-49");
  tavdsrv_closedatabase(db);
  EXPECT_TRUE(folder.snapshot() == before);
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
