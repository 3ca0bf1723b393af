// Copying and deleting whole products.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "exported/db/service_spy.h"
#include "support/database.h"
#include "tavd/tavdf.h"

namespace {

using tavdtest::Balance;
using tavdtest::Database;
using tavdtest::Record;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

// One stored record: its attributes by number, and its ahm block as number -1.
using Content = std::map<int, std::string>;

constexpr int kAhm = -1;

// The attributes that these tests store, and the bytes of one item; 0 for a terminated text.
constexpr std::pair<int16_t, std::size_t> kAttributes[] = {{1150, 2},  {1501, 0}, {1503, 0}, {1525, 0},
                                                           {1604, 30}, {1669, 0}, {9500, 0}, {9501, 0}};

Content content_of(int16_t db, tavb_rec rec) {
  Content content;
  for (const auto& [number, item_size] : kAttributes) {
    int16_t count = -1;
    char value[256] = {};  // more than any of them needs
    if (tavbcopyatt(db, rec, number, &count, value, sizeof value - 1) == nullptr) continue;
    content[number] =
        item_size == 0 ? std::string(value) : std::string(value, static_cast<std::size_t>(count) * item_size);
  }
  int32_t length = 0;
  void* block = tavbgetahm(db, rec, &length);
  if (block != nullptr)
    content[kAhm] = std::string(static_cast<const char*>(block), static_cast<std::size_t>(length));
  tavbreleaseahm(block);
  return content;
}

// All that a database holds, by class and id.
std::map<std::string, Content> all_of(int16_t db) {
  std::map<std::string, Content> records;
  tavb_rec rec = tavbfindrec(db, "   ", "", 1);
  while (rec != nullptr) {
    char class_id[8] = {};
    char object_id[32] = {};
    tavbgetID(db, rec, class_id, object_id);
    std::string id(object_id, 30);
    id.resize(id.find_last_not_of(' ') + 1);
    records[std::string(class_id, 3) + " " + id] = content_of(db, rec);
    tavb_rec next = tavbnextrec(db, rec);
    tavbreleaserec(rec);
    rec = next;
  }
  return records;
}

std::vector<std::string> keys_of(int16_t db) {
  std::vector<std::string> keys;
  for (const auto& [key, content] : all_of(db)) keys.push_back(key);
  return keys;
}

std::string word(int16_t value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

std::string raw(const std::string& id) {
  return id + std::string(30 - id.size(), ' ');
}

class CopyRecords : public testing::Test {
 protected:
  void save_model(const char* id, const std::string& block) {
    Record model("TVM", id);
    model.text(1501, id);
    std::string bytes = block;
    tavbsaverecwithahm(from(), model.rec(), bytes.data(), static_cast<int32_t>(bytes.size()));
  }

  // A family by pattern: a main record with maker and model, two members with models of their own, and a
  // neighbour that is no member.
  void save_family() {
    Record("ASD", "ABC-*").words(1150, {1}).text(1503, "Maker").text(1525, "MODEL").save(from());
    Record("ASD", "ABC-100").text(1503, "old").text(1525, "OLD").text(9500, "c100").save(from());
    Record("ASD", "ABC-200").text(9500, "c200").save(from());
    Record("ASD", "ABD-100").text(9500, "d100").save(from());
    save_model("MODEL", "block");
    save_model("OLD", "old block");
  }

  int32_t copy(const char* id, const char* class_id = "ASD") {
    const Balance balance;
    return tavdf_copy_recs(from(), to(), class_id, id);
  }

  int16_t from() const { return source_.handle(); }
  int16_t to() const { return destination_.handle(); }

  Database source_;
  Database destination_;
};

TEST_F(CopyRecords, MissingRecordGivesMinusOneAndWritesNothing) {
  save_family();
  EXPECT_EQ(copy("NONE"), -1);
  EXPECT_EQ(copy("ABC-100", "AOD"), -1);
  EXPECT_THAT(all_of(to()), IsEmpty());
}

TEST_F(CopyRecords, SingleProductTakesItsModelAlong) {
  save_family();
  for (const int16_t mode : std::initializer_list<int16_t>{0, 3}) {
    Record("ASD", "ABC-*").words(1150, {mode}).text(1503, "Maker").text(1525, "MODEL").save(from());
    EXPECT_EQ(copy("ABC-*"), 0);
    EXPECT_THAT(
        all_of(to()),
        UnorderedElementsAre(Pair("ASD ABC-*", Content{{1150, word(mode)}, {1503, "Maker"}, {1525, "MODEL"}}),
                             Pair("TVM MODEL", Content{{1501, "MODEL"}, {kAhm, "block"}})));
  }
}

TEST_F(CopyRecords, FamilyGetsMakerAndModelOfItsMainRecord) {
  save_family();
  const auto before = all_of(from());
  EXPECT_EQ(copy("ABC-*"), 0);
  EXPECT_THAT(
      all_of(to()),
      UnorderedElementsAre(Pair("ASD ABC-*", Content{{1150, word(1)}, {1503, "Maker"}, {1525, "MODEL"}}),
                           Pair("ASD ABC-100", Content{{1503, "Maker"}, {1525, "MODEL"}, {9500, "c100"}}),
                           Pair("ASD ABC-200", Content{{1503, "Maker"}, {1525, "MODEL"}, {9500, "c200"}}),
                           Pair("TVM MODEL", Content{{1501, "MODEL"}, {kAhm, "block"}})));
  EXPECT_EQ(all_of(from()), before) << "the source is not changed";
}

TEST_F(CopyRecords, NamedFamilyIsCopied) {
  Record("ASD", "MAIN")
      .words(1150, {2})
      .text(1604, raw("A") + raw("MISSING") + raw("B"))
      .text(1503, "Maker")
      .save(from());
  Record("ASD", "A").save(from());
  Record("ASD", "B").save(from());
  Record("ASD", "C").save(from());
  EXPECT_EQ(copy("MAIN"), 0);
  const auto records = all_of(to());
  EXPECT_THAT(keys_of(to()), ElementsAre("ASD A", "ASD B", "ASD MAIN"));
  EXPECT_EQ(records.at("ASD A"), (Content{{1503, "Maker"}}));
}

TEST_F(CopyRecords, OlderModelAttributeIsHandedDownUnderTheNewerNumber) {
  save_family();
  Record("ASD", "ABC-*").words(1150, {1}).text(1669, "MODEL").save(from());
  EXPECT_EQ(copy("ABC-*"), 0);
  const auto records = all_of(to());
  EXPECT_EQ(records.at("ASD ABC-*"), (Content{{1150, word(1)}, {1669, "MODEL"}}));
  EXPECT_EQ(records.at("ASD ABC-200"), (Content{{1525, "MODEL"}, {9500, "c200"}}));
  EXPECT_EQ(records.at("ASD ABC-100"), (Content{{1503, "old"}, {1525, "MODEL"}, {9500, "c100"}}));
  EXPECT_EQ(records.at("TVM MODEL").at(kAhm), "block");
}

TEST_F(CopyRecords, EmptyModelAttributeGivesWayToTheOlderOneForMembersOnly) {
  save_family();
  Record("ASD", "ABC-*").words(1150, {1}).text(1525, "").text(1669, "MODEL").save(from());
  EXPECT_EQ(copy("ABC-*"), 0);
  EXPECT_EQ(all_of(to()).at("ASD ABC-200").at(1525), "MODEL");
}

TEST_F(CopyRecords, FamilyWithoutMakerAndModelIsCopiedAsItStands) {
  save_family();
  Record("ASD", "ABC-*").words(1150, {1}).save(from());
  EXPECT_EQ(copy("ABC-*"), 0);
  const auto source = all_of(from());
  auto expected = source;
  expected.erase("ASD ABD-100");
  expected.erase("TVM MODEL");
  EXPECT_EQ(all_of(to()), expected) << "members keep their own maker and model";
}

TEST_F(CopyRecords, LongTextsAreHandedDownCut) {
  save_family();
  Record("ASD", "ABC-*")
      .words(1150, {1})
      .text(1503, std::string(150, 'm'))
      .text(1525, std::string(60, 't'))
      .save(from());
  EXPECT_EQ(copy("ABC-*"), 0);
  const auto records = all_of(to());
  EXPECT_EQ(records.at("ASD ABC-200").at(1503), std::string(99, 'm'));
  EXPECT_EQ(records.at("ASD ABC-200").at(1525), std::string(30, 't'));
  EXPECT_EQ(records.at("ASD ABC-*").at(1503), std::string(150, 'm')) << "the main record's own is whole";
}

TEST_F(CopyRecords, ModelIdLosesItsTrailingBlanks) {
  save_family();
  Record("ASD", "ABC-*").words(1150, {1}).text(1525, "MODEL     ").save(from());
  EXPECT_EQ(copy("ABC-*"), 0);
  EXPECT_EQ(all_of(to()).at("ASD ABC-200").at(1525), "MODEL");
  EXPECT_EQ(all_of(to()).at("TVM MODEL").at(kAhm), "block");
}

TEST_F(CopyRecords, ModelIdOfThirtyCharactersFindsItsModel) {
  const std::string id = "MODEL-WITH-A-NAME-OF-THIRTY-CH";
  ASSERT_EQ(id.size(), 30U);
  save_model(id.c_str(), "block");
  Record("ASD", "A").text(1525, id).save(from());
  EXPECT_EQ(copy("A"), 0);
  EXPECT_EQ(all_of(to()).at("TVM " + id).at(kAhm), "block");
}

TEST_F(CopyRecords, MissingModelIsSkipped) {
  Record("ASD", "A").text(1525, "NOWHERE").save(from());
  EXPECT_EQ(copy("A"), 0);
  EXPECT_THAT(keys_of(to()), ElementsAre("ASD A"));
}

TEST_F(CopyRecords, ModelWithoutBlockIsCopied) {
  Record("TVM", "BARE").text(1501, "bare").save(from());
  Record("ASD", "A").text(1525, "BARE").save(from());
  EXPECT_EQ(copy("A"), 0);
  EXPECT_EQ(all_of(to()).at("TVM BARE"), (Content{{1501, "bare"}}));
}

TEST_F(CopyRecords, CopyReplacesWhatIsThere) {
  Record("ASD", "A").text(9500, "old").text(9501, "gone").save(to());
  Record("ASD", "A").text(9500, "new").save(from());
  EXPECT_EQ(copy("A"), 0);
  EXPECT_EQ(all_of(to()).at("ASD A"), (Content{{9500, "new"}}));
}

TEST_F(CopyRecords, CopyOntoItselfChangesOnlyWhatIsHandedDown) {
  save_family();
  auto expected = all_of(from());
  for (const char* member : {"ASD ABC-100", "ASD ABC-200"}) {
    expected[member][1503] = "Maker";
    expected[member][1525] = "MODEL";
  }
  {
    const Balance balance;
    EXPECT_EQ(tavdf_copy_recs(from(), from(), "ASD", "ABC-*"), 0);
  }
  EXPECT_EQ(all_of(from()), expected);
}

TEST_F(CopyRecords, SingleProductCopiedOntoItselfStaysAsItIs) {
  save_family();
  Record record("ASD", "ABC-100");
  record.text(1525, "MODEL");
  std::string block = "its own block";
  tavbsaverecwithahm(from(), record.rec(), block.data(), static_cast<int32_t>(block.size()));
  const auto before = all_of(from());
  EXPECT_EQ(tavdf_copy_recs(from(), from(), "ASD", "ABC-100"), 0);
  EXPECT_EQ(all_of(from()), before);
}

TEST_F(CopyRecords, CallsOfAFamilyOfOne) {
  Record("ASD", "MAIN").words(1150, {2}).text(1604, raw("A")).text(1503, "Maker").save(from());
  Record("ASD", "A").save(from());
  tavdtest::clear_calls();
  tavdf_copy_recs(from(), to(), "ASD", "MAIN");
  const std::string save = "save " + std::to_string(to());
  const auto& calls = tavdtest::calls();
  ASSERT_GE(calls.size(), 17U);
  EXPECT_THAT(std::vector<std::string>(calls.begin(), calls.begin() + 9),
              ElementsAre("find ASD 0", "att 1150 2", save, "att 1525 31", "att 1669 31", "att 1503 99",
                          "att 1525 39", "att 1669 39", "release"));
  EXPECT_THAT(std::vector<std::string>(calls.end() - 6, calls.end()),
              ElementsAre("find ASD 0", "insert 1503 5", save, "att 1525 31", "att 1669 31", "release"));
}

TEST_F(CopyRecords, NullIdsAreNotFound) {
  EXPECT_EQ(tavdf_copy_recs(from(), to(), nullptr, "A"), -1);
  EXPECT_EQ(tavdf_copy_recs(from(), to(), "ASD", nullptr), -1);
  EXPECT_EQ(tavdf_delete_recs(from(), nullptr, "A"), -1);
  EXPECT_EQ(tavdf_delete_recs(from(), "ASD", nullptr), -1);
}

class DeleteRecords : public CopyRecords {
 protected:
  int32_t remove(const char* id, const char* class_id = "ASD") {
    const Balance balance;
    return tavdf_delete_recs(from(), class_id, id);
  }
};

TEST_F(DeleteRecords, MissingRecordGivesMinusOneAndDeletesNothing) {
  save_family();
  const auto before = all_of(from());
  EXPECT_EQ(remove("NONE"), -1);
  EXPECT_EQ(remove("ABC-*", "AOD"), -1);
  EXPECT_EQ(all_of(from()), before);
}

TEST_F(DeleteRecords, FamilyGoesAndModelsStay) {
  save_family();
  EXPECT_EQ(remove("ABC-*"), 0);
  EXPECT_THAT(keys_of(from()), ElementsAre("ASD ABD-100", "TVM MODEL", "TVM OLD"));
}

TEST_F(DeleteRecords, MemberGoesAlone) {
  save_family();
  EXPECT_EQ(remove("ABC-100"), 0);
  EXPECT_THAT(keys_of(from()),
              ElementsAre("ASD ABC-*", "ASD ABC-200", "ASD ABD-100", "TVM MODEL", "TVM OLD"));
}

TEST_F(DeleteRecords, OtherSizingModesDeleteTheRecordAlone) {
  for (const int16_t mode : std::initializer_list<int16_t>{-1, 0, 3, 10}) {
    save_family();
    Record("ASD", "ABC-*").words(1150, {mode}).save(from());
    EXPECT_EQ(remove("ABC-*"), 0);
    EXPECT_THAT(keys_of(from()),
                ElementsAre("ASD ABC-100", "ASD ABC-200", "ASD ABD-100", "TVM MODEL", "TVM OLD"))
        << mode;
  }
}

TEST_F(DeleteRecords, FamilyThatNamesItsOwnMainRecordGoesWhole) {
  Record("ASD", "MAIN")
      .words(1150, {2})
      .text(1604, raw("MAIN") + raw("A") + raw("A") + raw("B"))
      .save(from());
  Record("ASD", "A").save(from());
  Record("ASD", "B").save(from());
  Record("ASD", "C").save(from());
  EXPECT_EQ(remove("MAIN"), 0);
  EXPECT_THAT(keys_of(from()), ElementsAre("ASD C"));
}

TEST_F(DeleteRecords, NothingIsReadBehindTheFirstDeletion) {
  save_family();
  tavdtest::clear_calls();
  EXPECT_EQ(tavdf_delete_recs(from(), "ASD", "ABC-*"), 0);
  const auto& calls = tavdtest::calls();
  ASSERT_GE(calls.size(), 3U);
  EXPECT_THAT(std::vector<std::string>(calls.end() - 3, calls.end()),
              ElementsAre("delete ASD", "delete ASD", "delete ASD"));
  EXPECT_THAT(std::vector<std::string>(calls.begin(), calls.end() - 3),
              testing::Not(testing::Contains("delete ASD")));
}

}  // namespace
