// Finding records by key and walking them in their order.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "reading.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

using namespace tavdtest;

namespace {

// Asks with ids in fields of exactly their width, on the heap, so that a sanitizer sees a read behind them.
std::string found_by_fields(std::int16_t db, const std::string& class_id, const std::string& object_id,
                            std::int16_t mode) {
  const std::vector<char> class_field(class_id.begin(), class_id.end());
  const std::vector<char> object_field(object_id.begin(), object_id.end());
  return found(db, class_field.data(), object_field.data(), mode);
}

std::string padded(std::string text, std::size_t width, char pad) {
  text.resize(width, pad);
  return text;
}

class Finding : public testing::Test {
 protected:
  void save(const char* class_id, const char* object_id) {
    Record(class_id, object_id).save(database.handle());
  }
  std::string exact(const std::string& class_id, const std::string& object_id) {
    return found_by_fields(database.handle(), class_id + '\0', object_id + '\0', kExact);
  }
  std::string first(const std::string& class_id, const std::string& object_id) {
    return found_by_fields(database.handle(), class_id + '\0', object_id + '\0', kAtOrAfter);
  }
  // All records from the key on, in order.
  std::string walk(const char* class_id, const char* object_id) {
    std::string names;
    Held at(tavbfindrec(database.handle(), class_id, object_id, kAtOrAfter));
    for (; at; at.go_on(database.handle())) names += name_of(at.get()) + " ";
    return names;
  }
  Database database;
};

}  // namespace

TEST_F(Finding, ExactModeFindsOnlyTheVeryRecord) {
  save("ASD", "PIPE-100");
  EXPECT_EQ(exact("ASD", "PIPE-100"), "ASD:PIPE-100");
  EXPECT_EQ(exact("ASD", "PIPE-10"), "none");
  EXPECT_EQ(exact("ASD", "PIPE-1000"), "none");
  EXPECT_EQ(exact("AOD", "PIPE-100"), "none");
}

TEST_F(Finding, ObjectIdsCompareByteForByte) {
  save("ASD", "Pipe");
  save("ASD", "PIPE");
  save("ASD", "R\xD6R");
  EXPECT_EQ(exact("ASD", "pipe"), "none");
  EXPECT_EQ(exact("ASD", "Pipe"), "ASD:Pipe");
  EXPECT_EQ(walk("ASD", ""), "ASD:PIPE ASD:Pipe ASD:R\xD6R ");
}

TEST_F(Finding, BytesAbove127SortBehindLetters) {
  save("ASD", "\xC4");
  save("ASD", "Z");
  save("ASD", "z");
  EXPECT_EQ(walk("ASD", ""), "ASD:Z ASD:z ASD:\xC4 ");
}

TEST_F(Finding, AllFourFormsOfAnObjectIdFindTheSameRecord) {
  save("000", "FILEHEADER");
  const std::string cls("000");
  const std::int16_t db = database.handle();
  EXPECT_EQ(found_by_fields(db, cls, padded("FILEHEADER", 30, ' ') + "followed by other data", kExact),
            "000:FILEHEADER");
  EXPECT_EQ(found_by_fields(db, cls, std::string("FILEHEADER") + '\0', kExact), "000:FILEHEADER");
  EXPECT_EQ(found_by_fields(db, cls, padded("FILEHEADER", 32, ' '), kExact), "000:FILEHEADER");
  EXPECT_EQ(found_by_fields(db, cls, padded("FILEHEADER", 32, '\0'), kExact), "000:FILEHEADER");
}

TEST_F(Finding, NothingBehindTheThirtiethByteIsRead) {
  const std::string id = padded("X", 30, 'x');
  save("ASD", id.c_str());
  EXPECT_EQ(found_by_fields(database.handle(), "ASD", id, kExact), "ASD:" + id);
  EXPECT_EQ(found_by_fields(database.handle(), "ASD", id + "tail", kExact), "ASD:" + id);
}

TEST_F(Finding, ClassIdIsReadAsThreeBytesWithoutTerminator) {
  save("TVM", "M1");
  EXPECT_EQ(found_by_fields(database.handle(), "TVM", std::string("M1") + '\0', kExact), "TVM:M1");
  EXPECT_EQ(found_by_fields(database.handle(), "TVMASD", std::string("M1") + '\0', kExact), "TVM:M1");
}

TEST_F(Finding, ShortClassIdEndsAtItsTerminator) {
  save("AB", "1");
  EXPECT_EQ(exact("AB", "1"), "AB :1");
  EXPECT_EQ(exact("AB ", "1"), "AB :1");
  EXPECT_EQ(exact("A", "1"), "none");
}

TEST_F(Finding, LeadingBlanksOfAnIdCount) {
  save("ASD", " A");
  EXPECT_EQ(exact("ASD", "A"), "none");
  EXPECT_EQ(exact("ASD", " A"), "ASD: A");
}

TEST_F(Finding, PrefixFindsTheFirstIdThatStartsWithIt) {
  for (const char* id : {"DUCT-9", "PIPE-200", "PIPE-100", "PIPE", "PIPF"}) save("ASD", id);
  EXPECT_EQ(first("ASD", "PIPE"), "ASD:PIPE");
  EXPECT_EQ(first("ASD", "PIPE-"), "ASD:PIPE-100");
  EXPECT_EQ(first("ASD", padded("PIPE-", 32, ' ')), "ASD:PIPE-100");
  EXPECT_EQ(first("ASD", padded("PIPE-", 32, '\0')), "ASD:PIPE-100");
  EXPECT_EQ(first("ASD", "PIPE-101"), "ASD:PIPE-200");
  EXPECT_EQ(first("ASD", ""), "ASD:DUCT-9");
}

TEST_F(Finding, KeyPastAClassFindsTheNextClass) {
  save("AED", "A");
  save("ASD", "A");
  EXPECT_EQ(first("AED", "B"), "ASD:A");
  EXPECT_EQ(first("AEE", ""), "ASD:A");
}

TEST_F(Finding, KeyPastTheLastRecordFindsNothing) {
  save("ASD", "A");
  EXPECT_EQ(first("ASD", "B"), "none");
  EXPECT_EQ(first("ZZZ", ""), "none");
}

TEST_F(Finding, EmptyDatabaseHasNoRecord) {
  EXPECT_EQ(first("", ""), "none");
  EXPECT_EQ(exact("000", "FILEHEADER"), "none");
}

TEST_F(Finding, WalkGoesThroughAllClassesInOrder) {
  save("TVM", "M");
  save("000", "FILEHEADER");
  save("ASD", "B");
  save("ASD", "A-1");
  save("ASD", "A");
  save("AED", "Z");
  EXPECT_EQ(walk("", ""), "000:FILEHEADER AED:Z ASD:A ASD:A-1 ASD:B TVM:M ");
}

TEST_F(Finding, NextAfterTheLastOfAClassIsTheFirstOfTheNextAndTheRecordStaysValid) {
  Record("AED", "LAST").text(1503, "maker").save(database.handle());
  save("ASD", "FIRST");
  const Held last(tavbfindrec(database.handle(), "AED", "LAST", kExact));
  const Held next(tavbnextrec(database.handle(), last.get()));
  EXPECT_EQ(name_of(next.get()), "ASD:FIRST");
  EXPECT_EQ(name_of(last.get()), "AED:LAST");
  EXPECT_EQ(text_of(last.get(), 1503), "maker");
  const Held end(tavbnextrec(database.handle(), next.get()));
  EXPECT_FALSE(end);
}

TEST_F(Finding, WalkGoesOnFromARecordThatHasBeenDeleted) {
  for (const char* id : {"A", "B", "C"}) save("ASD", id);
  const Held b(tavbfindrec(database.handle(), "ASD", "B", kExact));
  tavbdeleterec(database.handle(), "ASD", "B");
  const Held next(tavbnextrec(database.handle(), b.get()));
  EXPECT_EQ(name_of(next.get()), "ASD:C");
}

TEST_F(Finding, WalkSeesARecordThatWasSavedMeanwhile) {
  save("ASD", "A");
  save("ASD", "C");
  const Held a(tavbfindrec(database.handle(), "ASD", "A", kExact));
  save("ASD", "B");
  const Held next(tavbnextrec(database.handle(), a.get()));
  EXPECT_EQ(name_of(next.get()), "ASD:B");
}

TEST_F(Finding, RecordThatWasNeverStoredHasAPlaceInTheOrder) {
  save("ASD", "B");
  const Record a("ASD", "A");
  const Held next(tavbnextrec(database.handle(), a.rec()));
  EXPECT_EQ(name_of(next.get()), "ASD:B");
}

TEST_F(Finding, NextOfNoRecordIsNone) {
  save("ASD", "A");
  EXPECT_EQ(tavbnextrec(database.handle(), nullptr), nullptr);
}

TEST_F(Finding, NullIdsCountAsEmpty) {
  save("ASD", "A");
  EXPECT_EQ(found(database.handle(), nullptr, nullptr, kExact), "none");
  EXPECT_EQ(found(database.handle(), nullptr, nullptr, kAtOrAfter), "ASD:A");
  tavbdeleterec(database.handle(), nullptr, nullptr);
  EXPECT_EQ(exact("ASD", "A"), "ASD:A");
}

TEST_F(Finding, TenThousandRecordsCanBeOpenWhileOthersAreSavedAndFound) {
  for (const char* id : {"A", "B"}) Record("ASD", id).text(1503, id).save(database.handle());
  std::vector<tavb_rec> open;
  for (int i = 0; i < 10000; ++i) {
    open.push_back(tavbfindrec(database.handle(), "ASD", i % 2 == 0 ? "A" : "B", kExact));
    if (i == 5000) {
      save("ASD", "C");
      tavbdeleterec(database.handle(), "ASD", "C");
    }
  }
  for (std::size_t i = 0; i < open.size(); ++i) {
    ASSERT_EQ(text_of(open[i], 1503), i % 2 == 0 ? "A" : "B");
    tavbreleaserec(open[i]);
  }
}

TEST(Ids, GetIdWritesClassWithTerminatorAndThirtyRawCharacters) {
  const Record record("ASD", "PIPE");
  char class_id[8];
  char object_id[32];
  std::memset(class_id, '#', sizeof class_id);
  std::memset(object_id, '#', sizeof object_id);
  tavbgetID(0, record.rec(), class_id, object_id);
  EXPECT_STREQ(class_id, "ASD");
  EXPECT_EQ(std::string(class_id + 4, 4), "####");
  EXPECT_EQ(std::string(object_id, 30), padded("PIPE", 30, ' '));
  EXPECT_EQ(std::string(object_id + 30, 2), "##");
}

TEST(Ids, GetIdLeavesOutANullDestination) {
  const Record record("ASD", "PIPE");
  char class_id[8] = "#######";
  char object_id[32] = "###############################";
  tavbgetID(0, record.rec(), class_id, nullptr);
  EXPECT_STREQ(class_id, "ASD");
  tavbgetID(0, record.rec(), nullptr, object_id);
  EXPECT_EQ(std::string(object_id, 30), padded("PIPE", 30, ' '));
  tavbgetID(0, record.rec(), nullptr, nullptr);
}

TEST(Ids, GetIdOfNoRecordGivesAnEmptyClassAndABlankId) {
  char class_id[8] = "#######";
  char object_id[32] = "###############################";
  tavbgetID(0, nullptr, class_id, object_id);
  EXPECT_STREQ(class_id, "");
  EXPECT_EQ(std::string(object_id, 30), std::string(30, ' '));
}

TEST(Ids, TextFormHasNoTrailingBlanks) {
  char text[31];
  std::memset(text, '#', sizeof text);
  tavbobjIDtosz(0, padded("A B", 30, ' ').c_str(), text);
  EXPECT_STREQ(text, "A B");
  tavbobjIDtosz(0, padded("A B", 32, '\0').c_str(), text);
  EXPECT_STREQ(text, "A B");
  tavbobjIDtosz(0, padded("", 30, ' ').c_str(), text);
  EXPECT_STREQ(text, "");
}

TEST(Ids, TextFormOfAFullIdIsThirtyCharactersAndReadsNoFurther) {
  const std::string id = padded("X", 30, 'y');
  const std::vector<char> field(id.begin(), id.end());
  char text[31];
  std::memset(text, '#', sizeof text);
  tavbobjIDtosz(0, field.data(), text);
  EXPECT_EQ(text, id);
}

TEST(Ids, TextFormCanBeMadeInPlaceAndOfNothing) {
  char id[32] = "PIPE                         ";
  tavbobjIDtosz(0, id, id);
  EXPECT_STREQ(id, "PIPE");
  tavbobjIDtosz(0, nullptr, id);
  EXPECT_STREQ(id, "");
  tavbobjIDtosz(0, "A", nullptr);
}

TEST(Ids, RecordWithoutObjectIdCannotBeMade) {
  EXPECT_EQ(tavdsrv_newrec("ASD", ""), nullptr);
  EXPECT_EQ(tavdsrv_newrec("ASD", "   "), nullptr);
  EXPECT_EQ(tavdsrv_newrec("ASD", nullptr), nullptr);
}
