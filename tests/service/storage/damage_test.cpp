// Databases that are damaged: everything answers, nothing is read or written outside.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "files.h"
#include "service/reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;

// Reads all that a record tells.
void read_record(std::int16_t db, tavb_rec rec) {
  name_of(rec);
  const std::int32_t count = tavdsrv_attributecount(rec);
  for (std::int32_t i = 0; i < count; ++i) {
    std::int16_t attribute = 0;
    std::int32_t length = 0;
    const void* data = nullptr;
    ASSERT_EQ(tavdsrv_attributeat(rec, i, &attribute, &data, &length), 0);
    const std::vector<char> copy(static_cast<const char*>(data), static_cast<const char*>(data) + length);
    std::int16_t items = 0;
    void* block = tavbcopyatt(db, rec, attribute, &items, nullptr, 0);
    ASSERT_NE(block, nullptr);
    ASSERT_TRUE(std::equal(copy.begin(), copy.end(), static_cast<const char*>(block)));
    tavbreleaseatt(block);
    tavd_wchar wide[40];
    tavbcopywsz(db, rec, attribute, wide, sizeof wide, 0);
  }
  std::int32_t length = 0;
  tavbreleaseahm(tavbgetahm(db, rec, &length));
}

// Walks the whole database and reads everything; returns the number of records that the walk met.
int read_everything(std::int16_t db) {
  int records = 0;
  for (Held at(tavbfindrec(db, "", "", kAtOrAfter)); at; at.go_on(db)) {
    ++records;
    read_record(db, at.get());
  }
  for (int i = 0; i < 20; ++i) {
    const Held found_one(tavbfindrec(db, "ASD", ("PIPE-" + std::to_string(i)).c_str(), kExact));
    if (found_one) read_record(db, found_one.get());
  }
  return records;
}

std::string make_image(const Folder& folder) {
  const fs::path path = folder / "whole.tavdb";
  const std::int16_t db = tavbopendatabase(nullptr, path.string().c_str(), 1);
  tavdsrv_begin(db);
  for (int i = 0; i < 20; ++i) {
    Record record("ASD", ("PIPE-" + std::to_string(i)).c_str());
    record.text(kMaker, std::string(static_cast<std::size_t>(i) * 400, 'm')).words(1110, {1, 2, 3});
    std::string block(static_cast<std::size_t>(i) * 900, 'b');
    tavbsaverecwithahm(db, record.rec(), block.data(), static_cast<std::int32_t>(block.size()));
  }
  Record("000", "FILEHEADER").words(1049, {1}).save(db);
  EXPECT_EQ(tavdsrv_commit(db), 0);
  EXPECT_EQ(read_everything(db), 21);
  tavdsrv_closedatabase(db);
  return read_file(path);
}

// Opens the image and, if the service takes it, reads what it can; saving waits for the disk, so not every
// time.
void exercise(const fs::path& path, bool save) {
  const std::int16_t db = tavbopendatabase(nullptr, path.string().c_str(), 0);
  if (db < 0) return;
  ASSERT_LE(read_everything(db), 1000);
  if (save) {
    Record("ASD", "PIPE-5").text(kMaker, "new").save(db);
    tavbdeleterec(db, "ASD", "PIPE-6");
  }
  tavdsrv_closedatabase(db);
}

std::string packed(std::int16_t number, std::uint32_t length, const std::string& value) {
  std::string bytes(6, '\0');
  std::memcpy(bytes.data(), &number, sizeof number);
  std::memcpy(bytes.data() + 2, &length, sizeof length);
  return bytes + value;
}

class Bodies : public testing::Test {
 protected:
  // Puts `body` under a record's key behind the service's back.
  void store(const std::string& body) {
    Record("ASD", "A").save(database.handle());
    sqlite3* connection = nullptr;
    sqlite3_stmt* statement = nullptr;
    ASSERT_EQ(sqlite3_open(database.path().c_str(), &connection), SQLITE_OK);
    sqlite3_prepare_v2(connection, "UPDATE record SET body = ?1", -1, &statement, nullptr);
    sqlite3_bind_blob(statement, 1, body.data(), static_cast<int>(body.size()), SQLITE_STATIC);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_DONE);
    sqlite3_finalize(statement);
    sqlite3_close(connection);
  }
  std::int32_t attributes() {
    const Held rec(tavbfindrec(database.handle(), "ASD", "A", kExact));
    EXPECT_TRUE(rec);
    return tavdsrv_attributecount(rec.get());
  }
  Database database;
};

}  // namespace

TEST_F(Bodies, WholeBodyGivesAllItsAttributes) {
  store(packed(1503, 3, "abc") + packed(1505, 0, "") + packed(1600, 1, "x"));
  EXPECT_EQ(attributes(), 3);
}

TEST_F(Bodies, LengthThatLiesEndsTheRecordInFrontOfIt) {
  const std::string good = packed(1503, 3, "abc");
  for (const std::uint32_t length : {4U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFAU, 0xFFFFFFFFU}) {
    store(good + packed(1505, length, "xyz"));
    EXPECT_EQ(attributes(), 1) << length;
    EXPECT_EQ(stored_text(database.handle(), "ASD", "A", 1503), "abc");
  }
}

TEST_F(Bodies, HeadThatIsCutEndsTheRecord) {
  const std::string good = packed(1503, 3, "abc");
  for (std::size_t length = 1; length < 6; ++length) {
    store(good + packed(1505, 0, "").substr(0, length));
    EXPECT_EQ(attributes(), 1) << length;
  }
}

TEST_F(Bodies, NumbersThatDoNotRiseEndTheRecord) {
  store(packed(1505, 1, "a") + packed(1503, 1, "b"));
  EXPECT_EQ(attributes(), 1);
  store(packed(1505, 1, "a") + packed(1505, 1, "b"));
  EXPECT_EQ(attributes(), 1);
  EXPECT_EQ(stored_text(database.handle(), "ASD", "A", 1505), "a");
}

TEST_F(Bodies, DamagedRecordCanBeChangedAndSaved) {
  store(packed(1503, 3, "abc") + packed(1505, 99, "xyz"));
  tavb_rec rec = tavbfindrec(database.handle(), "ASD", "A", kExact);
  tavbinsertatt(database.handle(), &rec, 1504, "new", 3);
  tavbsaverec(database.handle(), rec);
  tavbreleaserec(rec);
  EXPECT_EQ(attributes(), 2);
}

TEST_F(Bodies, KeyOfAnotherLengthIsAFailureAndNoRecord) {
  Record("ASD", "A").save(database.handle());
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(database.path().c_str(), &connection), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(connection, "UPDATE record SET key = x'41'", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(connection);
  EXPECT_EQ(tavbfindrec(database.handle(), "", "", kAtOrAfter), nullptr);
  EXPECT_STRNE(tavdsrv_lasterror(), "");
}

TEST_F(Bodies, AttributeLongerThanACountHoldsAtTheCountsEnd) {
  store(packed(1102, 70000, std::string(70000, '\1')));
  const Held rec(tavbfindrec(database.handle(), "ASD", "A", kExact));
  std::int16_t items = -1;
  char buffer[4];
  EXPECT_NE(tavbcopyatt(database.handle(), rec.get(), 1102, &items, buffer, 4), nullptr);
  EXPECT_EQ(items, 32767);
}

TEST(Damage, FlippedBytesNeverHurtTheReader) {
  const Folder folder;
  const std::string whole = make_image(folder);
  std::mt19937 random(20240607);
  const fs::path path = folder / "damaged.tavdb";
  for (int round = 0; round < 400; ++round) {
    std::string image = whole;
    const int flips = 1 << round % 6;
    for (int i = 0; i < flips; ++i) {
      // Half of them where pages have their heads and tables of cells, where damage goes deepest.
      std::size_t at = random() % image.size();
      if (i % 2 == 0) at = at / 4096 * 4096 + at % 200;
      // The first hundred bytes only say whether this is a product database.
      if (at < 100) at += 100;
      image[at] = static_cast<char>(random());
    }
    write_file(path, image);
    exercise(path, round % 8 == 0);
    ASSERT_FALSE(testing::Test::HasFailure()) << "round " << round;
    fs::remove(folder / "damaged.tavdb-journal");
  }
}

TEST(Damage, EveryByteOfTheFileHeaderMayBeWrong) {
  const Folder folder;
  const std::string whole = make_image(folder);
  const fs::path path = folder / "damaged.tavdb";
  for (std::size_t at = 0; at < 100; ++at) {
    for (const int value : {0x00, 0x02, 0xFF}) {
      std::string image = whole;
      image[at] = static_cast<char>(value);
      write_file(path, image);
      exercise(path, at % 16 == 0);
      ASSERT_FALSE(testing::Test::HasFailure()) << "byte " << at;
    }
  }
}

TEST(Damage, FileThatIsCutWhileItIsOpenGivesFailuresNotCrashes) {
  const Folder folder;
  const std::string whole = make_image(folder);
  for (std::size_t length = 0; length < whole.size(); length += 3001) {
    const fs::path path = folder / "cut.tavdb";
    write_file(path, whole);
    const std::int16_t db = tavbopendatabase(nullptr, path.string().c_str(), 0);
    ASSERT_GT(db, 0);
    fs::resize_file(path, length);
    EXPECT_LE(read_everything(db), 21);
    tavdsrv_closedatabase(db);
  }
}

TEST(Damage, ReaderSaysWhatIsWrong) {
  const Folder folder;
  std::string image = make_image(folder);
  const fs::path path = folder / "damaged.tavdb";
  for (std::size_t page = 2; page * 4096 < image.size(); ++page) {
    std::memset(image.data() + page * 4096, 0xEE, 100);
  }
  write_file(path, image);
  const std::int16_t db = tavbopendatabase(nullptr, path.string().c_str(), 0);
  ASSERT_GT(db, 0);
  EXPECT_EQ(tavbfindrec(db, "ASD", "PIPE-1", kExact), nullptr);
  EXPECT_NE(std::string(tavdsrv_lasterror()).find(utf8(path)), std::string::npos);
  EXPECT_NE(std::string(tavdsrv_lasterror()).find("malformed"), std::string::npos);
  tavdsrv_closedatabase(db);
}

TEST(DamagedWalk, DamageAheadIsToldWhereTheWalkMeetsIt) {
  constexpr int kRecords = 400, kDamaged = 210;
  const auto id_of = [](int index) { return "R" + std::to_string(10000 + index); };
  const Database database;
  tavdsrv_begin(database.handle());
  for (int i = 0; i < kRecords; ++i)
    Record("ASD", id_of(i).c_str()).text(kMaker, "x").save(database.handle());
  ASSERT_EQ(tavdsrv_commit(database.handle()), 0);
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(database.path().c_str(), &connection), SQLITE_OK);
  const std::string key = "'ASD" + id_of(kDamaged) + "'";
  const std::string spoil = "UPDATE record SET key = CAST(" + key + " AS BLOB) WHERE key = CAST(" + key +
                            " || '" + std::string(24, ' ') + "' AS BLOB)";
  EXPECT_EQ(sqlite3_exec(connection, spoil.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(sqlite3_changes(connection), 1);
  sqlite3_close(connection);

  Held at(tavbfindrec(database.handle(), "ASD", "", kAtOrAfter));
  for (int i = 0; i < kDamaged; ++i, at.go_on(database.handle())) {
    ASSERT_EQ(name_of(at.get()), "ASD:" + id_of(i));
    ASSERT_STREQ(tavdsrv_lasterror(), "");
  }
  EXPECT_EQ(name_of(at.get()), "none");
  EXPECT_STRNE(tavdsrv_lasterror(), "");
}
