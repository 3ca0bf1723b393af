// Opening databases and what their handles answer.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "reading.h"
#include "support/database.h"
#include "support/narrow_path.h"
#include "support/wide.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;
namespace fs = std::filesystem;

namespace {

constexpr std::int32_t kOpenExisting = 0;
constexpr std::int32_t kCreate = 1;

// A path in the temporary folder at which nothing is, before and after the test.
class Path {
 public:
  explicit Path(const fs::path& name) : path_(fs::temp_directory_path() / name) { fs::remove(path_); }
  ~Path() { fs::remove(path_); }
  Path(const Path&) = delete;
  Path& operator=(const Path&) = delete;
  const fs::path& get() const { return path_; }

 private:
  fs::path path_;
};

fs::path serial_name(const char* name) {
  return "tavd-handles-" + std::to_string(::getpid()) + "-" + name;
}

}  // namespace

TEST(Opening, MissingFileIsNotOpenedAndNotMade) {
  const Path path(serial_name("missing"));
  EXPECT_EQ(tavbopendatabase(nullptr, path.get().string().c_str(), kOpenExisting), -1);
  EXPECT_FALSE(fs::exists(path.get()));
}

TEST(Opening, NonzeroModeMakesAMissingDatabase) {
  for (const std::int32_t mode : {kCreate, 2, -1}) {
    const Path path(serial_name("made"));
    const std::int16_t db = tavbopendatabase("some.vlk", path.get().string().c_str(), mode);
    ASSERT_GT(db, 0);
    Record("ASD", "A").save(db);
    EXPECT_EQ(found(db, "ASD", "A", kExact), "ASD:A");
    EXPECT_EQ(tavdsrv_closedatabase(db), 0);
    EXPECT_TRUE(fs::exists(path.get()));
  }
}

TEST(Opening, NonzeroModeOpensWhatExists) {
  const Database database;
  Record("ASD", "A").save(database.handle());
  const std::int16_t again = tavbopendatabase(nullptr, database.path().c_str(), kCreate);
  ASSERT_GT(again, 0);
  EXPECT_EQ(found(again, "ASD", "A", kExact), "ASD:A");
  tavdsrv_closedatabase(again);
}

TEST(Opening, DatabaseKeepsItsRecordsWhenItIsClosed) {
  const Database database;
  Record("ASD", "A").text(1503, "maker").save(database.handle());
  tavdsrv_closedatabase(database.handle());
  const std::int16_t again = tavbopendatabase(nullptr, database.path().c_str(), kOpenExisting);
  ASSERT_GT(again, 0);
  EXPECT_EQ(stored_text(again, "ASD", "A", 1503), "maker");
  tavdsrv_closedatabase(again);
}

TEST(Opening, TwoHandlesOnOneFileSeeEachOthersRecords) {
  const Database database;
  const std::int16_t second = tavbopendatabase(nullptr, database.path().c_str(), kOpenExisting);
  ASSERT_GT(second, 0);
  EXPECT_NE(second, database.handle());
  Record("ASD", "A").text(1503, "by the first").save(database.handle());
  EXPECT_EQ(stored_text(second, "ASD", "A", 1503), "by the first");
  Record("ASD", "A").text(1503, "by the second").save(second);
  EXPECT_EQ(stored_text(database.handle(), "ASD", "A", 1503), "by the second");
  tavbdeleterec(second, "ASD", "A");
  EXPECT_EQ(found(database.handle(), "ASD", "A", kExact), "none");
  tavdsrv_closedatabase(second);
}

TEST(Opening, WidePathMayHaveLettersOfManyScripts) {
  const Path path(u8"tavd-handles-\u00C4nderung-\u0416-\u65E5-\U0001F600");
  const tavdtest::Wide wide = path.get().string<tavd_wchar>();
  for (const std::int32_t mode : {kCreate, kOpenExisting}) {
    const std::int16_t db = tavbopendatabasew(nullptr, wide.c_str(), mode);
    ASSERT_GT(db, 0) << tavdsrv_lasterror();
    if (mode == kCreate) Record("ASD", "A").save(db);
    EXPECT_EQ(found(db, "ASD", "A", kExact), "ASD:A");
    tavdsrv_closedatabase(db);
    EXPECT_TRUE(fs::exists(path.get()));
  }
}

TEST(Opening, NarrowPathWithLettersBeyondAsciiNamesTheSameFileAsTheWideOne) {
  const Path path(serial_name("letters-") += letters_of_narrow_names());
  const std::int16_t db = tavbopendatabase(nullptr, narrow_name(path.get()).c_str(), kCreate);
  ASSERT_GT(db, 0) << tavdsrv_lasterror();
  Record("ASD", "A").save(db);
  tavdsrv_closedatabase(db);
  EXPECT_TRUE(fs::exists(path.get()));
  const std::int16_t wide =
      tavbopendatabasew(nullptr, path.get().string<tavd_wchar>().c_str(), kOpenExisting);
  EXPECT_EQ(found(wide, "ASD", "A", kExact), "ASD:A");
  tavdsrv_closedatabase(wide);
}

TEST(Opening, NoPathOpensNothing) {
  for (const std::int32_t mode : {kOpenExisting, kCreate}) {
    EXPECT_EQ(tavbopendatabase(nullptr, nullptr, mode), -1);
    EXPECT_EQ(tavbopendatabase(nullptr, "", mode), -1);
    EXPECT_EQ(tavbopendatabasew(nullptr, nullptr, mode), -1);
    EXPECT_EQ(tavbopendatabasew(nullptr, WIDE(""), mode), -1);
  }
}

TEST(Opening, WidePathThatIsNoUtf16OpensNothing) {
  const tavd_wchar lone[] = {WIDE('/'), WIDE('t'), WIDE('m'), WIDE('p'), WIDE('/'), 0xD800, WIDE('x'), 0};
  EXPECT_EQ(tavbopendatabasew(nullptr, lone, kOpenExisting), -1);
}

TEST(Opening, MissingFolderOpensNothing) {
  EXPECT_EQ(tavbopendatabase(nullptr, "/nonexistent/folder/x.tavdb", kOpenExisting), -1);
  EXPECT_EQ(tavbopendatabase(nullptr, "/nonexistent/folder/x.tavdb", kCreate), -1);
}

TEST(Handles, ClosedHandleIsGivenToTheNextDatabase) {
  std::int16_t freed = 0;
  {
    const Database first;
    const Database second;
    freed = first.handle();
    EXPECT_EQ(tavdsrv_closedatabase(first.handle()), 0);
    const Database third;
    EXPECT_EQ(third.handle(), freed);
  }
}

TEST(Handles, ManyDatabasesAreOpenAtOnce) {
  const Database database;
  Record("ASD", "A").save(database.handle());
  std::vector<std::int16_t> handles;
  for (int i = 0; i < 100; ++i)
    handles.push_back(tavbopendatabase(nullptr, database.path().c_str(), kOpenExisting));
  for (const std::int16_t handle : handles) {
    EXPECT_EQ(found(handle, "ASD", "A", kExact), "ASD:A");
    EXPECT_EQ(tavdsrv_closedatabase(handle), 0);
  }
}

TEST(Handles, HandlesThatAreNoDatabaseFindAndStoreNothing) {
  std::int16_t closed = 0;
  {
    const Database database;
    closed = database.handle();
  }
  Record record("ASD", "A");
  record.text(1503, "maker");
  for (const int number : {-32768, -1, 0, 32766, 32767, static_cast<int>(closed)}) {
    const auto db = static_cast<std::int16_t>(number);
    char block[] = "block";
    std::int16_t items = 55;
    std::int32_t length = 55;
    char buffer[8] = "#######";
    EXPECT_EQ(tavbfindrec(db, "ASD", "A", kExact), nullptr);
    EXPECT_EQ(tavbfindrec(db, "ASD", "A", kAtOrAfter), nullptr);
    EXPECT_EQ(tavbnextrec(db, record.rec()), nullptr);
    EXPECT_EQ(tavbfindatt(db, "ASD", "A", 1503, &items, buffer, 8), nullptr);
    EXPECT_EQ(items, 0);
    EXPECT_STREQ(buffer, "#######");
    EXPECT_EQ(tavbgetahm(db, record.rec(), &length), nullptr);
    EXPECT_EQ(length, 0);
    tavbsaverec(db, record.rec());
    tavbsaverecwithahm(db, record.rec(), block, 5);
    tavbdeleterec(db, "ASD", "A");
    EXPECT_EQ(tavdsrv_closedatabase(db), -1);
  }
  EXPECT_EQ(text_of(record.rec(), 1503), "maker");
}
