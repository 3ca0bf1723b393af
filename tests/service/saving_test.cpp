// Saving and deleting records, and the ahm block.
#include <gtest/gtest.h>

#include <cstring>

#include "reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;

class Saving : public testing::Test {
 protected:
  // The ahm block of a record as text, or "none".
  static std::string ahm(std::int16_t db, const char* object_id) {
    const Held rec(tavbfindrec(db, "TVM", object_id, kExact));
    std::int32_t length = -1;
    void* block = tavbgetahm(db, rec.get(), &length);
    const std::string text = block != nullptr ? std::string(static_cast<char*>(block), length) : "none";
    EXPECT_EQ(length, block != nullptr ? static_cast<std::int32_t>(text.size()) : 0);
    tavbreleaseahm(block);
    return text;
  }
  static void save_with_ahm(std::int16_t db, const char* object_id, std::string block) {
    const Record record("TVM", object_id);
    tavbsaverecwithahm(db, record.rec(), block.data(), static_cast<std::int32_t>(block.size()));
  }
  Database one, other;
};

}  // namespace

TEST_F(Saving, SavedRecordReplacesTheOneOfItsId) {
  Record("ASD", "A").text(kMaker, "old").text(1505, "only in the old one").save(one.handle());
  Record("ASD", "A").text(kMaker, "new").save(one.handle());
  EXPECT_EQ(stored_text(one.handle(), "ASD", "A", kMaker), "new");
  EXPECT_EQ(stored_text(one.handle(), "ASD", "A", 1505), "absent");
}

TEST_F(Saving, RecordCanBeSavedIntoAnotherDatabase) {
  Record("ASD", "A").text(kMaker, "maker").save(one.handle());
  const Held rec(tavbfindrec(one.handle(), "ASD", "A", kExact));
  tavbsaverec(other.handle(), rec.get());
  EXPECT_EQ(stored_text(other.handle(), "ASD", "A", kMaker), "maker");
  EXPECT_EQ(stored_text(one.handle(), "ASD", "A", kMaker), "maker");
}

TEST_F(Saving, RecordWithoutAttributesIsARecord) {
  Record("ASD", "A").save(one.handle());
  EXPECT_EQ(found(one.handle(), "ASD", "A", kExact), "ASD:A");
}

TEST_F(Saving, RecordInMemoryOutlivesItsDatabaseAndItsDeletion) {
  Record("ASD", "A").text(kMaker, "maker").save(one.handle());
  const Held rec(tavbfindrec(one.handle(), "ASD", "A", kExact));
  tavbdeleterec(one.handle(), "ASD", "A");
  EXPECT_EQ(found(one.handle(), "ASD", "A", kExact), "none");
  tavdsrv_closedatabase(one.handle());
  EXPECT_EQ(text_of(rec.get(), kMaker), "maker");
  tavbsaverec(other.handle(), rec.get());
  EXPECT_EQ(stored_text(other.handle(), "ASD", "A", kMaker), "maker");
}

TEST_F(Saving, DeletingWhatIsNotThereChangesNothing) {
  Record("ASD", "A").save(one.handle());
  tavbdeleterec(one.handle(), "ASD", "B");
  tavbdeleterec(one.handle(), "AOD", "A");
  EXPECT_EQ(found(one.handle(), "ASD", "A", kExact), "ASD:A");
}

TEST_F(Saving, DeletingTakesARawIdFollowedByOtherData) {
  Record("ASD", "A").save(one.handle());
  tavbdeleterec(one.handle(), "ASDxyz", "A                             and more");
  EXPECT_EQ(found(one.handle(), "ASD", "A", kExact), "none");
}

TEST_F(Saving, SavingNoRecordDoesNothing) {
  tavbsaverec(one.handle(), nullptr);
  char block[] = "x";
  tavbsaverecwithahm(one.handle(), nullptr, block, 1);
  EXPECT_EQ(found(one.handle(), "", "", kAtOrAfter), "none");
}

TEST_F(Saving, AhmBlockGoesThereAndBackWithAllItsBytes) {
  const std::string block("a\0b\xFF", 4);
  save_with_ahm(one.handle(), "M", block);
  EXPECT_EQ(ahm(one.handle(), "M"), block);
}

TEST_F(Saving, LargeAhmBlockGoesThereAndBack) {
  const std::string block(3'000'000, 'z');
  save_with_ahm(one.handle(), "M", block);
  EXPECT_EQ(ahm(one.handle(), "M"), block);
}

TEST_F(Saving, RecordWithoutAhmBlockGivesNullAndLengthZero) {
  Record("TVM", "M").save(one.handle());
  EXPECT_EQ(ahm(one.handle(), "M"), "none");
}

TEST_F(Saving, AhmOfNoRecordIsNullAndALengthNeedNotBeAsked) {
  std::int32_t length = 77;
  EXPECT_EQ(tavbgetahm(one.handle(), nullptr, &length), nullptr);
  EXPECT_EQ(length, 0);
  save_with_ahm(one.handle(), "M", "block");
  const Held rec(tavbfindrec(one.handle(), "TVM", "M", kExact));
  void* block = tavbgetahm(one.handle(), rec.get(), nullptr);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::memcmp(block, "block", 5), 0);
  tavbreleaseahm(block);
}

TEST_F(Saving, AhmBlockIsCopiedToAnotherDatabaseWithItsRecord) {
  save_with_ahm(one.handle(), "M", "block");
  const Held rec(tavbfindrec(one.handle(), "TVM", "M", kExact));
  std::int32_t length = 0;
  void* block = tavbgetahm(one.handle(), rec.get(), &length);
  tavbsaverecwithahm(other.handle(), rec.get(), block, length);
  tavbreleaseahm(block);
  EXPECT_EQ(ahm(other.handle(), "M"), "block");
}

TEST_F(Saving, PlainSavingLeavesTheStoredAhmBlock) {
  save_with_ahm(one.handle(), "M", "block");
  Record("TVM", "M").text(kMaker, "new").save(one.handle());
  EXPECT_EQ(ahm(one.handle(), "M"), "block");
  EXPECT_EQ(stored_text(one.handle(), "TVM", "M", kMaker), "new");
}

TEST_F(Saving, PlainSavingTakesNoAhmBlockToAnotherDatabase) {
  save_with_ahm(one.handle(), "M", "block");
  const Held rec(tavbfindrec(one.handle(), "TVM", "M", kExact));
  tavbsaverec(other.handle(), rec.get());
  EXPECT_EQ(ahm(other.handle(), "M"), "none");
}

TEST_F(Saving, AhmBlockIsReplacedAndRemoved) {
  save_with_ahm(one.handle(), "M", "first");
  save_with_ahm(one.handle(), "M", "second one");
  EXPECT_EQ(ahm(one.handle(), "M"), "second one");
  save_with_ahm(one.handle(), "M", "");
  EXPECT_EQ(ahm(one.handle(), "M"), "none");
  EXPECT_EQ(found(one.handle(), "TVM", "M", kExact), "TVM:M");
  for (const std::int32_t length : {5, -1}) {
    save_with_ahm(one.handle(), "M", "again");
    char block[] = "block";
    const Record record("TVM", "M");
    tavbsaverecwithahm(one.handle(), record.rec(), length < 0 ? block : nullptr, length);
    EXPECT_EQ(ahm(one.handle(), "M"), "none");
  }
}

TEST_F(Saving, DeletingARecordDeletesItsAhmBlock) {
  save_with_ahm(one.handle(), "M", "block");
  tavbdeleterec(one.handle(), "TVM", "M");
  Record("TVM", "M").save(one.handle());
  EXPECT_EQ(ahm(one.handle(), "M"), "none");
}

TEST_F(Saving, AhmBlockOfAnotherClassIsItsOwn) {
  save_with_ahm(one.handle(), "M", "block");
  const Record record("ASD", "M");
  EXPECT_EQ(tavbgetahm(one.handle(), record.rec(), nullptr), nullptr);
}
