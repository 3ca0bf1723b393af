// Which files are product databases, and that the others are left alone.
#include <random>

#include "foreign.h"
#include "support/narrow_path.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

constexpr const char* kOtherTables = "its tables are not those of a product database";

}  // namespace

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
  expect_refused(path, kOtherTables);
}

TEST_F(Foreign, TableThatIsAViewIsRefused) {
  const fs::path path = make_database();
  run_sql(path, "DROP TABLE ahm; CREATE VIEW ahm AS SELECT 1 AS id, x'00' AS key, x'00' AS block;");
  expect_refused(path, kOtherTables);
}

TEST_F(Foreign, TableWithAComputedColumnIsRefused) {
  const fs::path path = make_database();
  run_sql(path,
          "DROP TABLE record; CREATE TABLE record(id INTEGER PRIMARY KEY, key BLOB NOT NULL UNIQUE, "
          "body BLOB NOT NULL AS (zeroblob(900000000)));"
          "INSERT INTO record(key) VALUES(CAST('ASDPIPE-0                        ' AS BLOB));");
  expect_refused(path, kOtherTables);
}

TEST_F(Foreign, TableWithAnotherColumnIsRefused) {
  const fs::path path = make_database();
  run_sql(path, "ALTER TABLE record ADD COLUMN more BLOB;");
  expect_refused(path, kOtherTables);
}

TEST_F(Foreign, TableWithoutItsIndexIsRefused) {
  const fs::path path = make_database();
  run_sql(path,
          "PRAGMA writable_schema=ON; DELETE FROM sqlite_schema WHERE name = 'sqlite_autoindex_record_1';");
  expect_refused(path, "");
  run_sql(path, "PRAGMA writable_schema=ON;");
}

TEST_F(Foreign, TableWithAnIndexOfItsOwnIsRefused) {
  const fs::path path = make_database();
  run_sql(path, "CREATE INDEX costly ON record(length(hex(body)));");
  expect_refused(path, kOtherTables);
}

TEST_F(Foreign, SchemaWithoutEndIsRefused) {
  const fs::path path = make_database();
  run_sql(path,
          "PRAGMA writable_schema=ON; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT "
          "20000) "
          "INSERT INTO sqlite_schema SELECT 'table', 't' || i, 't' || i, 2, "
          "'CREATE TABLE t' || i || '(a)' FROM n;");
  expect_refused(path, kOtherTables);
}

TEST_F(Foreign, LongestRecordIsStoredAndALongerOneIsNot) {
  constexpr std::int32_t kMost = 67108864;
  const std::int16_t db = tavbopendatabase(nullptr, make_database().string().c_str(), kOpenExisting);
  const Record record("TVM", "M");
  std::string block(kMost + 1, 'b');
  tavbsaverecwithahm(db, record.rec(), block.data(), kMost);
  EXPECT_STREQ(tavdsrv_lasterror(), "");
  tavbsaverecwithahm(db, record.rec(), block.data(), kMost + 1);
  EXPECT_THAT(tavdsrv_lasterror(),
              HasSubstr("67108865 bytes for one record, at most 67108864 can be stored"));
  std::int32_t length = 0;
  tavbreleaseahm(tavbgetahm(db, record.rec(), &length));
  EXPECT_EQ(length, kMost);
  tavdsrv_closedatabase(db);
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
