// Texts of the database as UTF-16.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "reading.h"
#include "support/database.h"
#include "support/wide.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;

namespace {

constexpr std::int16_t kText = 9500;
constexpr tavd_wchar kUntouched = WIDE('#');

class WideText : public testing::Test {
 protected:
  // The text under `charset`, read into a buffer told to hold `capacity` bytes.
  tavdtest::Wide read(const std::string& stored, std::int32_t charset, std::int32_t capacity = 100) {
    Record record("ASD", "A");
    record.text(kText, stored);
    buffer.fill(kUntouched);
    EXPECT_NE(tavbcopywsz(database.handle(), record.rec(), kText, buffer.data(), capacity, charset), nullptr);
    tavdtest::Wide text(buffer.data(), buffer.size());
    return text.substr(0, text.find(WIDE('\0')));
  }
  void set_utf8_flag(std::int16_t value) {
    Record("000", "FILEHEADER").words(1049, {value}).save(database.handle());
  }
  static tavdtest::Wide untouched(std::size_t count) { return tavdtest::Wide(count, kUntouched); }

  Database database;
  std::array<tavd_wchar, 50> buffer{};
};

}  // namespace

TEST_F(WideText, EachCharsetNumberHasItsCodePage) {
  EXPECT_EQ(read("\xC5\x80", 0), WIDE("\u00C5\u20AC"));              // windows-1252
  EXPECT_EQ(read("\xC3\x85\xE2\x82\xAC", 1), WIDE("\u00C5\u20AC"));  // UTF-8
  EXPECT_EQ(read("\xC0\xF0", 6), WIDE("\u0104\u0161"));              // windows-1257
  EXPECT_EQ(read("\xA3\xF5", 7), WIDE("\u0141\u0151"));              // windows-1250
  EXPECT_EQ(read("\xC6\xE9", 8), WIDE("\u0416\u0439"));              // windows-1251
}

TEST_F(WideText, UnknownCharsetNumbersCountAsTheDatabasesOwn) {
  for (const std::int32_t charset : {2, 5, 9, -1, 65001})
    EXPECT_EQ(read("\xC5", charset), WIDE("\u00C5")) << charset;
}

TEST_F(WideText, CharsetZeroIsUtf8WhereTheDatabaseSaysSo) {
  set_utf8_flag(1);
  EXPECT_EQ(read("\xC3\x85", 0), WIDE("\u00C5"));
  set_utf8_flag(2);
  EXPECT_EQ(read("\xC3\x85", 0), WIDE("\u00C3\u2026"));
  set_utf8_flag(1);
  EXPECT_EQ(read("\xC3\x85", 0), WIDE("\u00C5"));
  tavbdeleterec(database.handle(), "000", "FILEHEADER");
  EXPECT_EQ(read("\xC3\x85", 0), WIDE("\u00C3\u2026"));
  set_utf8_flag(1);
  EXPECT_EQ(read("\xC0\xF0", 6), WIDE("\u0104\u0161")) << "the other charsets do not ask the database";
}

TEST_F(WideText, FlagOfAnotherSizeOrValueIsNotUtf8) {
  Record("000", "FILEHEADER").bytes(1049, "\1", 1).save(database.handle());
  EXPECT_EQ(read("\xC5", 0), WIDE("\u00C5"));
  set_utf8_flag(257);
  EXPECT_EQ(read("\xC5", 0), WIDE("\u00C5"));
}

TEST_F(WideText, ChangeThroughAnotherHandleIsSeenAfterTheNextReading) {
  EXPECT_EQ(read("\xC3\x85", 0), WIDE("\u00C3\u2026"));
  const std::int16_t other = tavbopendatabase(nullptr, database.path().c_str(), 0);
  Record("000", "FILEHEADER").words(1049, {1}).save(other);
  tavdsrv_closedatabase(other);
  found(database.handle(), "000", "FILEHEADER", kExact);
  EXPECT_EQ(read("\xC3\x85", 0), WIDE("\u00C5"));
}

TEST_F(WideText, WithoutDatabaseCharsetZeroIsTheDefaultPage) {
  Record record("ASD", "A");
  record.text(kText, "\xC5");
  EXPECT_NE(tavbcopywsz(-1, record.rec(), kText, buffer.data(), 100, 0), nullptr);
  EXPECT_EQ(buffer[0], WIDE('\u00C5'));
}

TEST_F(WideText, AbsentTextLeavesTheBuffer) {
  const Record record("ASD", "A");
  buffer.fill(kUntouched);
  EXPECT_EQ(tavbcopywsz(database.handle(), record.rec(), kText, buffer.data(), 100, 0), nullptr);
  EXPECT_EQ(tavbcopywsz(database.handle(), nullptr, kText, buffer.data(), 100, 0), nullptr);
  EXPECT_EQ(tavdtest::Wide(buffer.data(), 50), untouched(50));
}

TEST_F(WideText, TerminatorFollowsWhereThereIsRoom) {
  EXPECT_EQ(read("abc", 0, 8), WIDE("abc"));
  EXPECT_EQ(buffer[4], kUntouched);
}

TEST_F(WideText, CapacityIsFilledWholeAndNotPassed) {
  EXPECT_EQ(read("abcdef", 0, 6), WIDE("abc") + untouched(47));
  EXPECT_EQ(read("abc", 0, 6), WIDE("abc") + untouched(47));
  EXPECT_EQ(read("abc", 0, 7), WIDE("abc") + untouched(47)) << "half a character is no room";
}

TEST_F(WideText, NoCapacityCopiesNothing) {
  for (const std::int32_t capacity : {1, 0, -1, -2147483647 - 1}) {
    EXPECT_EQ(read("abc", 0, capacity), untouched(50)) << capacity;
  }
  Record record("ASD", "A");
  record.text(kText, "abc");
  EXPECT_NE(tavbcopywsz(database.handle(), record.rec(), kText, nullptr, 100, 0), nullptr);
}

TEST_F(WideText, SurrogatePairIsNeverCut) {
  EXPECT_EQ(read("a\xF0\x9F\x98\x80", 1, 6), WIDE("a\U0001F600") + untouched(47));
  EXPECT_EQ(read("a\xF0\x9F\x98\x80", 1, 4), WIDE("a"));
  EXPECT_EQ(buffer[2], kUntouched);
}

TEST_F(WideText, InvalidUtf8GivesReplacementCharacters) {
  EXPECT_EQ(read("a\xFFz", 1), WIDE("a\uFFFDz"));
  EXPECT_EQ(read("a\xE2\x82", 1), WIDE("a\uFFFD"));
}

TEST_F(WideText, TextEndsAtItsFirstNul) {
  EXPECT_EQ(read(std::string("ab\0cd", 5), 0), WIDE("ab"));
  EXPECT_EQ(buffer[3], kUntouched);
}

TEST_F(WideText, EmptyTextIsATerminator) {
  EXPECT_EQ(read("", 0), WIDE(""));
  EXPECT_EQ(buffer[1], kUntouched);
}
