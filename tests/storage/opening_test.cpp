// Which files are product databases, and that the others are left alone.
#include <random>

#include "foreign.h"
#include "support/narrow_path.h"

using namespace tavdtest;

TEST_F(Foreign, FileThatIsMissingIsToldInUtf8) {
  const fs::path path = folder.path() / letters_of_narrow_names();
  const std::string told = utf8(path) + ": no such file";
  EXPECT_EQ(tavbopendatabase(nullptr, narrow_name(path).c_str(), kOpenExisting), -1);
  EXPECT_EQ(tavdsrv_lasterror(), told);
  EXPECT_EQ(tavbopendatabasew(nullptr, path.string<tavd_wchar>().c_str(), kOpenExisting), -1);
  EXPECT_EQ(tavdsrv_lasterror(), told);
}

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

TEST_F(Foreign, CreatingLeavesNothingBesideTheDatabase) {
  make_database();
  const auto files = folder.snapshot();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files.begin()->first, "good.tavdb");
}

TEST_F(Foreign, OpeningAndReadingDoNotTouchTheDatabase) {
  const fs::path path = make_database();
  const auto before = folder.snapshot();
  const std::int16_t db = tavbopendatabase(nullptr, path.string().c_str(), kCreate);
  EXPECT_EQ(found(db, "ASD", "", kAtOrAfter), "ASD:PIPE-0");
  EXPECT_EQ(found(db, "ASD", "PIPE-49", kExact), "ASD:PIPE-49");
  tavdsrv_closedatabase(db);
  EXPECT_TRUE(folder.snapshot() == before);
}
