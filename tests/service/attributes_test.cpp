// Attributes of a record in memory: copying, counting, inserting.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <vector>

#include "reading.h"
#include "support/database.h"

using namespace tavdtest;

namespace {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr std::int16_t kMaker = 1503;      // text
constexpr std::int16_t kShape = 1110;      // int16 items
constexpr std::int16_t kMembers = 1604;    // items of 30 bytes
constexpr std::int16_t kUnknown = 7;       // no attribute of the catalogue
constexpr std::int16_t kNonsense = -4711;  // what counts hold before a call

class Attributes : public testing::Test {
 protected:
  // Number of items that a call for `attribute` tells.
  std::int16_t count(std::int16_t attribute) {
    std::int16_t items = kNonsense;
    tavbcopyatt(0, record.rec(), attribute, &items, buffer.data(), 0);
    return items;
  }
  void* copy(std::int16_t attribute, std::int16_t capacity) {
    buffer.fill('#');
    return tavbcopyatt(0, record.rec(), attribute, nullptr, buffer.data(), capacity);
  }
  std::string buffer_text(std::size_t length) const { return {buffer.data(), length}; }

  Record record{"ASD", "PIPE"};
  std::array<char, 64> buffer{};
};

}  // namespace

TEST_F(Attributes, AbsentAttributeStoresCountZeroAndLeavesTheBuffer) {
  std::int16_t items = kNonsense;
  buffer.fill('#');
  EXPECT_EQ(tavbcopyatt(0, record.rec(), kShape, &items, buffer.data(), 64), nullptr);
  EXPECT_EQ(items, 0);
  EXPECT_EQ(buffer_text(64), std::string(64, '#'));
}

TEST_F(Attributes, NoRecordHasNoAttributes) {
  std::int16_t items = kNonsense;
  EXPECT_EQ(tavbcopyatt(0, nullptr, kShape, &items, buffer.data(), 64), nullptr);
  EXPECT_EQ(items, 0);
}

TEST_F(Attributes, SmallBufferGetsCapacityBytesAndTheAttributeCountsAsFound) {
  record.text(kMaker, "abcdef");
  EXPECT_NE(copy(kMaker, 4), nullptr);
  EXPECT_EQ(buffer_text(6), "abcd##");
}

TEST_F(Attributes, CountTellsStoredItemsNotCopiedOnes) {
  record.words(kShape, {1, 2, 3, 4, 5});
  std::int16_t items = kNonsense;
  buffer.fill('#');
  EXPECT_NE(tavbcopyatt(0, record.rec(), kShape, &items, buffer.data(), 4), nullptr);
  EXPECT_EQ(items, 5);
  EXPECT_EQ(buffer_text(5), std::string("\1\0\2\0#", 5));
}

TEST_F(Attributes, TextGetsATerminatorWhereThereIsRoom) {
  record.text(kMaker, "abc");
  EXPECT_NE(copy(kMaker, 64), nullptr);
  EXPECT_EQ(buffer_text(5), std::string("abc\0#", 5));
  EXPECT_NE(copy(kMaker, 4), nullptr);
  EXPECT_EQ(buffer_text(5), std::string("abc\0#", 5));
  EXPECT_NE(copy(kMaker, 3), nullptr);
  EXPECT_EQ(buffer_text(5), "abc##");
}

TEST_F(Attributes, EmptyTextIsThereAndTerminated) {
  record.text(kMaker, "");
  EXPECT_NE(copy(kMaker, 64), nullptr);
  EXPECT_EQ(buffer_text(2), std::string("\0#", 2));
  EXPECT_EQ(count(kMaker), 1);
}

TEST_F(Attributes, NumbersAndUnknownAttributesGetNoTerminator) {
  record.words(kShape, {1}).bytes(kUnknown, "ab", 2);
  EXPECT_NE(copy(kShape, 64), nullptr);
  EXPECT_EQ(buffer_text(3), std::string("\1\0#", 3));
  EXPECT_NE(copy(kUnknown, 64), nullptr);
  EXPECT_EQ(buffer_text(3), "ab#");
}

TEST_F(Attributes, NegativeAndZeroCapacityCopyNothing) {
  record.text(kMaker, "abc");
  for (const int capacity : {0, -1, static_cast<int>(std::numeric_limits<std::int16_t>::min())}) {
    EXPECT_NE(copy(kMaker, static_cast<std::int16_t>(capacity)), nullptr);
    EXPECT_EQ(buffer_text(4), "####");
  }
}

TEST_F(Attributes, NullBufferWithoutCapacityGivesABlockWithTheWholeValue) {
  const std::string ids = "MEMBER-1                      MEMBER-2                      ";
  record.text(kMembers, ids);
  std::int16_t items = kNonsense;
  void* block = tavbcopyatt(0, record.rec(), kMembers, &items, nullptr, 0);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(items, 2);
  EXPECT_STREQ(static_cast<char*>(block), ids.c_str());
  tavbreleaseatt(block);
}

TEST_F(Attributes, BlockOfATextIsTerminatedAndBlocksOutliveTheRecord) {
  tavb_rec rec = nullptr;
  {
    Database database;
    Record("ASD", "A").text(kMaker, "maker").save(database.handle());
    rec = tavbfindrec(database.handle(), "ASD", "A", kExact);
  }
  void* block = tavbcopyatt(0, rec, kMaker, nullptr, nullptr, 0);
  tavbreleaserec(rec);
  ASSERT_NE(block, nullptr);
  EXPECT_STREQ(static_cast<char*>(block), "maker");
  tavbreleaseatt(block);
}

TEST_F(Attributes, BlockOfAnAbsentAttributeIsNull) {
  EXPECT_EQ(tavbcopyatt(0, record.rec(), kMembers, nullptr, nullptr, 0), nullptr);
}

TEST_F(Attributes, NullBufferWithCapacityOnlyTellsThatTheAttributeIsThere) {
  record.words(kShape, {1, 2});
  std::int16_t items = kNonsense;
  void* answer = tavbcopyatt(0, record.rec(), kShape, &items, nullptr, 10);
  EXPECT_NE(answer, nullptr);
  EXPECT_EQ(items, 2);
  tavbreleaseatt(answer);
  EXPECT_NE(tavbcopyatt(0, record.rec(), kShape, nullptr, nullptr, -1), nullptr);
  EXPECT_EQ(tavbcopyatt(0, record.rec(), kMembers, nullptr, nullptr, 10), nullptr);
}

TEST_F(Attributes, EachCatalogueNumberCountsItemsOfItsOwnSize) {
  // Three items and one byte less than a fourth.
  const std::vector<std::pair<int, int>> sizes = {
      {1049, 2},  {1102, 2},  {1110, 2},  {1150, 2},  {1302, 4},  {1604, 30}, {1649, 20}, {1650, 22},
      {1651, 8},  {1652, 12}, {1653, 16}, {1654, 8},  {1655, 12}, {1657, 8},  {1658, 16}, {1659, 8},
      {1660, 14}, {1661, 18}, {1662, 18}, {1666, 12}, {1670, 4},  {1671, 8}};
  const std::array<char, 128> payload{};
  for (const auto& [attribute, size] : sizes) {
    record.bytes(attribute, payload.data(), static_cast<std::size_t>(4 * size - 1));
    EXPECT_EQ(count(static_cast<std::int16_t>(attribute)), 3) << attribute;
  }
}

TEST_F(Attributes, PartOfAnItemIsNoItem) {
  record.bytes(1652, "12345678901", 11);
  EXPECT_EQ(count(1652), 0);
}

TEST_F(Attributes, TextsAndUnknownNumbersCountAsOneItem) {
  for (const int attribute : {1501, 1505, 1511, 1513, 1514, 1525, 1562, 1669, 1674, 8500, 8533, 9500, 9533,
                              9550, 9594, 7, -3, 32767}) {
    record.text(attribute, "four");
    EXPECT_EQ(count(static_cast<std::int16_t>(attribute)), 1) << attribute;
  }
}

TEST_F(Attributes, LongestAttributeGoesThereAndBack) {
  std::vector<char> value(32767);
  for (std::size_t i = 0; i < value.size(); ++i) value[i] = static_cast<char>(i * 7);
  Database database;
  record.bytes(kShape, value.data(), value.size()).save(database.handle());
  const Held back(tavbfindrec(database.handle(), "ASD", "PIPE", kExact));
  std::vector<char> copy(value.size());
  std::int16_t items = kNonsense;
  ASSERT_NE(tavbcopyatt(0, back.get(), kShape, &items, copy.data(), 32767), nullptr);
  EXPECT_EQ(items, 16383);
  EXPECT_EQ(copy, value);
}

TEST_F(Attributes, InsertReplacesWhatTheRecordHolds) {
  record.text(1500, "in front").text(kMaker, "a long old text").text(1505, "behind");
  record.text(kMaker, "new");
  EXPECT_EQ(text_of(record.rec(), kMaker), "new");
  EXPECT_EQ(text_of(record.rec(), 1505), "behind");
  record.text(kMaker, "and a longer one than the first");
  EXPECT_EQ(text_of(record.rec(), kMaker), "and a longer one than the first");
  EXPECT_EQ(text_of(record.rec(), 1505), "behind");
}

TEST_F(Attributes, InsertDoesNotTouchTheStore) {
  Database database;
  record.text(kMaker, "stored").save(database.handle());
  tavb_rec rec = tavbfindrec(database.handle(), "ASD", "PIPE", kExact);
  tavbinsertatt(database.handle(), &rec, kMaker, "changed", 7);
  EXPECT_EQ(stored_text(database.handle(), "ASD", "PIPE", kMaker), "stored");
  tavbsaverec(database.handle(), rec);
  EXPECT_EQ(stored_text(database.handle(), "ASD", "PIPE", kMaker), "changed");
  tavbreleaserec(rec);
}

TEST_F(Attributes, InsertGivesAHandleThatIsValidAfterwards) {
  Database database;
  record.text(kMaker, "a").save(database.handle());
  tavb_rec rec = tavbfindrec(database.handle(), "ASD", "PIPE", kExact);
  const std::string big(30000, 'x');
  for (std::int16_t attribute = 1; attribute <= 20; ++attribute) {
    tavbinsertatt(database.handle(), &rec, attribute, big.data(), static_cast<std::int16_t>(big.size()));
    ASSERT_NE(rec, nullptr);
  }
  EXPECT_EQ(name_of(rec), "ASD:PIPE");
  EXPECT_EQ(text_of(rec, kMaker), "a");
  tavbreleaserec(rec);
}

TEST_F(Attributes, EmptyAttributeIsThere) {
  record.bytes(kMaker, nullptr, 0);
  EXPECT_EQ(text_of(record.rec(), kMaker), "");
  record.bytes(kShape, nullptr, 0);
  EXPECT_EQ(count(kShape), 0);
  EXPECT_NE(copy(kShape, 64), nullptr);
}

TEST_F(Attributes, BadInsertsChangeNothing) {
  record.text(kMaker, "kept");
  tavb_rec rec = record.rec();
  tavb_rec none = nullptr;
  tavbinsertatt(0, &rec, kMaker, "x", -1);
  tavbinsertatt(0, &rec, kMaker, nullptr, 5);
  tavbinsertatt(0, &none, kMaker, "x", 1);
  tavbinsertatt(0, nullptr, kMaker, "x", 1);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(text_of(record.rec(), kMaker), "kept");
}

TEST_F(Attributes, AnyNumberCanBeAnAttribute) {
  Database database;
  for (const int attribute : {32767, -32768, 0, -1, 1}) record.text(attribute, std::to_string(attribute));
  record.save(database.handle());
  const Held back(tavbfindrec(database.handle(), "ASD", "PIPE", kExact));
  for (const int attribute : {32767, -32768, 0, -1, 1}) {
    char text[16] = {};
    EXPECT_NE(tavbcopyatt(0, back.get(), static_cast<std::int16_t>(attribute), nullptr, text, 15), nullptr);
    EXPECT_EQ(text, std::to_string(attribute));
  }
}

TEST_F(Attributes, FindAttCopiesWithoutAHandle) {
  Database database;
  Record("000", "FILEHEADER").words(1049, {1}).save(database.handle());
  std::int16_t flag = 0;
  std::int16_t items = kNonsense;
  tavbfindatt(database.handle(), "000", "FILEHEADER", 1049, &items, &flag, 2);
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(items, 1);
}

TEST_F(Attributes, FindAttWithoutTheAttributeOrTheRecordLeavesTheBufferAtZero) {
  Database database;
  std::int16_t flag = 0;
  std::int16_t items = kNonsense;
  tavbfindatt(database.handle(), "000", "FILEHEADER", 1049, &items, &flag, 2);
  EXPECT_EQ(flag, 0);
  EXPECT_EQ(items, 0);
  Record("000", "FILEHEADER").text(kMaker, "x").save(database.handle());
  items = kNonsense;
  EXPECT_EQ(tavbfindatt(database.handle(), "000", "FILEHEADER", 1049, &items, &flag, 2), nullptr);
  EXPECT_EQ(flag, 0);
  EXPECT_EQ(items, 0);
}

TEST_F(Attributes, ReleasingNothingIsAllowed) {
  tavbreleaseatt(nullptr);
  tavbreleaseahm(nullptr);
  tavbreleaserec(nullptr);
}
