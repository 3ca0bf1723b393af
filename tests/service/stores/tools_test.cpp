// What the service offers to tools that make and list databases.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "service/reading.h"
#include "support/database.h"
#include "support/wide.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;
using testing::HasSubstr;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;

class Groups : public testing::Test {
 protected:
  void save(const char* object_id, const char* text) {
    Record("ASD", object_id).text(kMaker, text).save(database.handle());
  }
  std::string stored(const char* object_id) {
    return stored_text(database.handle(), "ASD", object_id, kMaker);
  }
  Database database;
};

class Encoding : public testing::Test {
 protected:
  std::int32_t encode(const tavd_wchar* text, std::int32_t charset, std::int32_t capacity = 64) {
    buffer.fill('#');
    return tavdsrv_encodetext(database.handle(), charset, text, buffer.data(), capacity);
  }
  std::string bytes(std::int32_t length) const { return {buffer.data(), static_cast<std::size_t>(length)}; }
  Database database;
  std::array<char, 64> buffer{};
};

}  // namespace

TEST_F(Groups, CommittedChangesAreThere) {
  save("OLD", "x");
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  save("A", "a");
  save("B", "b");
  tavbdeleterec(database.handle(), "ASD", "OLD");
  EXPECT_EQ(stored("A"), "a") << "a group sees its own changes";
  ASSERT_EQ(tavdsrv_commit(database.handle()), 0);
  EXPECT_EQ(stored("A"), "a");
  EXPECT_EQ(stored("B"), "b");
  EXPECT_EQ(stored("OLD"), "absent");
}

TEST_F(Groups, AnotherHandleSeesThemOnlyAfterTheCommit) {
  const std::int16_t other = tavbopendatabase(nullptr, database.path().c_str(), 0);
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  save("A", "a");
  EXPECT_EQ(stored_text(other, "ASD", "A", kMaker), "absent");
  ASSERT_EQ(tavdsrv_commit(database.handle()), 0);
  EXPECT_EQ(stored_text(other, "ASD", "A", kMaker), "a");
  tavdsrv_closedatabase(other);
}

TEST_F(Groups, RollbackDropsWhatCameSinceBegin) {
  save("A", "old");
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  save("A", "new");
  save("B", "b");
  ASSERT_EQ(tavdsrv_rollback(database.handle()), 0);
  EXPECT_EQ(stored("A"), "old");
  EXPECT_EQ(stored("B"), "absent");
}

TEST_F(Groups, ClosingDropsAnOpenGroup) {
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  save("A", "a");
  tavdsrv_closedatabase(database.handle());
  const std::int16_t again = tavbopendatabase(nullptr, database.path().c_str(), 0);
  EXPECT_EQ(stored_text(again, "ASD", "A", kMaker), "absent");
  tavdsrv_closedatabase(again);
}

TEST_F(Groups, RollbackOfTheEncodingFlagIsNoticed) {
  Record record("ASD", "A");
  record.text(kMaker, "\xC3\x85");
  tavd_wchar wide[8] = {};
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  Record("000", "FILEHEADER").words(1049, {1}).save(database.handle());
  tavbcopywsz(database.handle(), record.rec(), kMaker, wide, sizeof wide, 0);
  EXPECT_EQ(tavdtest::Wide(wide), WIDE("\u00C5"));
  ASSERT_EQ(tavdsrv_rollback(database.handle()), 0);
  tavbcopywsz(database.handle(), record.rec(), kMaker, wide, sizeof wide, 0);
  EXPECT_EQ(tavdtest::Wide(wide), WIDE("\u00C3\u2026"));
}

TEST_F(Groups, OutOfTurnCallsAreRefused) {
  EXPECT_EQ(tavdsrv_commit(database.handle()), -1);
  EXPECT_EQ(tavdsrv_rollback(database.handle()), -1);
  EXPECT_EQ(tavdsrv_begin(database.handle()), 0);
  EXPECT_EQ(tavdsrv_begin(database.handle()), -1);
  EXPECT_THAT(tavdsrv_lasterror(), HasSubstr(database.path()));
  EXPECT_EQ(tavdsrv_commit(database.handle()), 0);
  EXPECT_EQ(tavdsrv_commit(database.handle()), -1);
  for (const std::int16_t db : {std::int16_t{-1}, std::int16_t{32767}}) {
    EXPECT_EQ(tavdsrv_begin(db), -1);
    EXPECT_EQ(tavdsrv_commit(db), -1);
    EXPECT_EQ(tavdsrv_rollback(db), -1);
  }
}

TEST_F(Groups, FailedChangeDropsTheWholeGroup) {
  save("A", "old");
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  save("A", "new");
  // A block longer than the store takes makes this one save fail before a byte of it is read.
  const std::string block(1, 'x');
  const Record record("TVM", "M");
  tavbsaverecwithahm(database.handle(), record.rec(), const_cast<char*>(block.data()), 2'000'000'000);
  ASSERT_STRNE(tavdsrv_lasterror(), "");
  save("B", "b");
  EXPECT_STRNE(tavdsrv_lasterror(), "");
  EXPECT_EQ(tavdsrv_commit(database.handle()), -1);
  EXPECT_EQ(stored("A"), "old");
  EXPECT_EQ(stored("B"), "absent");
  EXPECT_EQ(found(database.handle(), "TVM", "M", kExact), "none");
  save("B", "b");
  EXPECT_EQ(stored("B"), "b") << "the database goes on after the group";
}

TEST_F(Groups, FirstReasonIsToldByLaterChangesAndTheCommit) {
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  char block = 'x';
  const Record record("TVM", "M");
  tavbsaverecwithahm(database.handle(), record.rec(), &block, 2'000'000'000);
  const std::string reason = tavdsrv_lasterror();
  EXPECT_THAT(reason, HasSubstr(database.path() + ": "));
  const std::string told = reason + "; the group's changes are dropped";
  save("A", "a");
  EXPECT_EQ(tavdsrv_lasterror(), told);
  tavbdeleterec(database.handle(), "ASD", "A");
  EXPECT_EQ(tavdsrv_lasterror(), told);
  EXPECT_EQ(tavdsrv_commit(database.handle()), -1);
  EXPECT_EQ(tavdsrv_lasterror(), told);
  ASSERT_EQ(tavdsrv_begin(database.handle()), 0);
  save("A", "a");
  EXPECT_STREQ(tavdsrv_lasterror(), "") << "the next group knows nothing of it";
  EXPECT_EQ(tavdsrv_commit(database.handle()), 0);
}

TEST(AttributeList, TellsAttributesByRisingNumber) {
  Record record("ASD", "A");
  EXPECT_EQ(tavdsrv_attributecount(record.rec()), 0);
  record.text(kMaker, "maker").words(1110, {1}).text(9500, "");
  ASSERT_EQ(tavdsrv_attributecount(record.rec()), 3);
  const std::array<std::pair<int, std::string>, 3> expected = {
      {{1110, {"\1\0", 2}}, {kMaker, "maker"}, {9500, ""}}};
  for (std::int32_t i = 0; i < 3; ++i) {
    std::int16_t attribute = -1;
    const void* data = nullptr;
    std::int32_t length = -1;
    ASSERT_EQ(tavdsrv_attributeat(record.rec(), i, &attribute, &data, &length), 0);
    const auto& [number, value] = expected[static_cast<std::size_t>(i)];
    EXPECT_EQ(attribute, number);
    EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<std::size_t>(length)), value);
  }
  EXPECT_EQ(tavdsrv_attributeat(record.rec(), 0, nullptr, nullptr, nullptr), 0);
}

TEST(AttributeList, OutsideThereIsNothing) {
  Record record("ASD", "A");
  record.text(kMaker, "maker");
  std::int16_t attribute = 77;
  for (const std::int32_t index : {-1, 1, 2147483647}) {
    EXPECT_EQ(tavdsrv_attributeat(record.rec(), index, &attribute, nullptr, nullptr), -1);
  }
  EXPECT_EQ(tavdsrv_attributeat(nullptr, 0, &attribute, nullptr, nullptr), -1);
  EXPECT_EQ(tavdsrv_attributecount(nullptr), 0);
  EXPECT_EQ(attribute, 77);
}

TEST(AttributeList, AttributeCanBeCopiedWithinItsOwnRecord) {
  Record record("ASD", "A");
  record.text(kMaker, "maker");
  const void* data = nullptr;
  std::int32_t length = 0;
  ASSERT_EQ(tavdsrv_attributeat(record.rec(), 0, nullptr, &data, &length), 0);
  record.bytes(1, data, static_cast<std::size_t>(length));
  EXPECT_EQ(text_of(record.rec(), kMaker), "maker");
  char copy[8] = {};
  tavbcopyatt(0, record.rec(), 1, nullptr, copy, 8);
  EXPECT_STREQ(copy, "maker");
}

TEST_F(Encoding, EachCharsetHasItsBytes) {
  EXPECT_EQ(bytes(encode(WIDE("\u00C5\u20AC"), 0)), "\xC5\x80");
  EXPECT_EQ(bytes(encode(WIDE("\u00C5\u20AC"), 1)), "\xC3\x85\xE2\x82\xAC");
  EXPECT_EQ(bytes(encode(WIDE("\u0104\u0161"), 6)), "\xC0\xF0");
  EXPECT_EQ(bytes(encode(WIDE("\u0141\u0151"), 7)), "\xA3\xF5");
  EXPECT_EQ(bytes(encode(WIDE("\u0416\u0439"), 8)), "\xC6\xE9");
  Record("000", "FILEHEADER").words(1049, {1}).save(database.handle());
  EXPECT_EQ(bytes(encode(WIDE("\u00C5\u20AC"), 0)), "\xC3\x85\xE2\x82\xAC");
}

TEST_F(Encoding, WhatIsEncodedReadsBackTheSame) {
  const std::array<std::pair<std::int32_t, tavdtest::Wide>, 5> texts = {
      {{0, WIDE("Gr\u00F6\u00DFe \u20AC 5")},
       {1, WIDE("\u98A8 \u0626 \U0001F600")},
       {6, WIDE("\u0160vie\u017Eias oras")},
       {7, WIDE("T\u0142umik \u0159ez")},
       {8, WIDE("\u0412\u043E\u0437\u0434\u0443\u0445")}}};
  for (const auto& [charset, text] : texts) {
    const std::int32_t length = encode(text.c_str(), charset);
    ASSERT_GT(length, 0);
    Record record("ASD", "A");
    record.bytes(9500, buffer.data(), static_cast<std::size_t>(length));
    tavd_wchar wide[64] = {};
    EXPECT_NE(tavbcopywsz(database.handle(), record.rec(), 9500, wide, sizeof wide, charset), nullptr);
    EXPECT_EQ(tavdtest::Wide(wide), text);
  }
}

TEST_F(Encoding, CharacterWithoutPlaceIsRefused) {
  EXPECT_EQ(encode(WIDE("\u0416"), 0), -1);
  EXPECT_EQ(encode(WIDE("\u00C5"), 8), -1);
  EXPECT_EQ(encode(WIDE("\U0001F600"), 7), -1);
  const tavd_wchar lone[] = {0xD800, 0};
  EXPECT_EQ(encode(lone, 1), -1);
  EXPECT_EQ(bytes(4), "####");
}

TEST_F(Encoding, BufferMustTakeTheWholeText) {
  EXPECT_EQ(encode(WIDE("abc"), 0, 3), 3);
  EXPECT_EQ(bytes(4), "abc#");
  EXPECT_EQ(encode(WIDE("abc"), 0, 2), -2);
  EXPECT_EQ(encode(WIDE("\u20AC"), 1, 2), -2);
  EXPECT_EQ(encode(WIDE("abc"), 0, -5), -2);
  EXPECT_EQ(bytes(4), "####");
  EXPECT_EQ(encode(WIDE(""), 0, 0), 0);
  EXPECT_EQ(tavdsrv_encodetext(database.handle(), 0, WIDE("abc"), nullptr, 0), -2);
}

TEST_F(Encoding, BadArgumentsAreRefused) {
  EXPECT_EQ(encode(nullptr, 0), -1);
  EXPECT_EQ(tavdsrv_encodetext(-1, 0, WIDE("abc"), buffer.data(), 64), -1);
  EXPECT_EQ(tavdsrv_encodetext(-1, 7, WIDE("abc"), buffer.data(), 64), 3) << "charset 7 asks no database";
}

TEST(LastError, TellsTheLastCallAndIsForgottenByTheNext) {
  const Database database;
  EXPECT_EQ(tavbopendatabase(nullptr, "/nonexistent/x.tavdb", 0), -1);
  EXPECT_STREQ(tavdsrv_lasterror(), "/nonexistent/x.tavdb: no such file");
  EXPECT_EQ(tavbfindrec(database.handle(), "ASD", "A", kExact), nullptr);
  EXPECT_STREQ(tavdsrv_lasterror(), "") << "a record that is not there is no failure";
  EXPECT_EQ(tavbfindrec(-1, "ASD", "A", kExact), nullptr);
  EXPECT_STREQ(tavdsrv_lasterror(), "-1 is no open database");
}

// Which is told differently where there are no servers, on Windows.
TEST(LastError, TellsOfAServerThatIsNotReachedAndNoFileIsMade) {
  for (const std::string name : {"postgresql:products", "host=nowhere.invalid dbname=products"}) {
    for (const std::int32_t mode : {0, 1}) {
      EXPECT_EQ(tavbopendatabase(nullptr, name.c_str(), mode), -1);
      EXPECT_THAT(tavdsrv_lasterror(), testing::StartsWith(name + ": "));
      EXPECT_EQ(tavbopendatabasew(nullptr, std::filesystem::path(name).string<tavd_wchar>().c_str(), mode),
                -1);
      EXPECT_THAT(tavdsrv_lasterror(), testing::StartsWith(name + ": "));
    }
    EXPECT_FALSE(std::filesystem::exists(name));
  }
}
