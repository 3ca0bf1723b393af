// The life of an id set: wildcards and separators, reading, adjusting, asking, releasing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

#include "exported/db/guarded.h"
#include "exported/db/idset_fixture.h"
#include "support/messages.h"

namespace {

using tavdtest::AtPageEnd;
using tavdtest::Guarded;
using tavdtest::handles_out;
using tavdtest::kMain;
using tavdtest::kNameAttribute;
using tavdtest::kSub;
using tavdtest::Messages;
using tavdtest::Record;
using testing::ElementsAre;
using testing::IsEmpty;

class IdSets : public tavdtest::IdSetTest {};

TEST_F(IdSets, InitGivesAnEmptySetWithTheUsualSigns) {
  EXPECT_STREQ(set_.wildchars, "*");
  EXPECT_STREQ(set_.separators, "-+");
  EXPECT_STREQ(set_.mainId, "");
  EXPECT_STREQ(set_.curId, "");
  EXPECT_EQ(set_.mainRec, nullptr);
  EXPECT_EQ(set_.curRec, nullptr);
  EXPECT_EQ(set_.subs.count, 0);
  EXPECT_EQ(set_.subs.itemsize, 40);
  EXPECT_EQ(set_.adjusted, 0);
}

TEST_F(IdSets, SignsBelowTheDigitsAreAccepted) {
  EXPECT_EQ(tavdidset_set_wildchars(&set_, "#"), 0);
  EXPECT_STREQ(set_.wildchars, "#");
  EXPECT_EQ(tavdidset_set_separators(&set_, "/"), 0);
  EXPECT_STREQ(set_.separators, "/");
  EXPECT_EQ(tavdidset_set_separators(&set_, ""), 0);
  EXPECT_STREQ(set_.separators, "");
}

TEST_F(IdSets, OtherSignsAreRefusedAndChangeNothing) {
  EXPECT_EQ(tavdidset_set_wildchars(&set_, "?"), -1);
  EXPECT_EQ(tavdidset_set_wildchars(&set_, "#?"), -1);
  EXPECT_STREQ(set_.wildchars, "*");
  EXPECT_EQ(tavdidset_set_separators(&set_, "_"), -1);
  EXPECT_EQ(tavdidset_set_separators(&set_, "/_"), -1);
  EXPECT_STREQ(set_.separators, "-+");
}

TEST_F(IdSets, EverySignIsJudgedAsASignedByte) {
  for (int byte = 1; byte < 256; ++byte) {
    const char text[] = {static_cast<char>(byte), '\0'};
    const int expected = byte < 0x30 || byte >= 0x80 ? 0 : -1;
    EXPECT_EQ(tavdidset_set_wildchars(&set_, text), expected) << byte;
    EXPECT_EQ(tavdidset_set_separators(&set_, text), expected) << byte;
  }
}

TEST_F(IdSets, LongSignsAreCutInsideTheirField) {
  const std::string many(100, '#');
  EXPECT_EQ(tavdidset_set_wildchars(&set_, many.c_str()), 0);
  EXPECT_EQ(std::string(set_.wildchars), std::string(19, '#'));
  EXPECT_STREQ(set_.separators, "-+");
  EXPECT_EQ(tavdidset_set_separators(&set_, many.c_str()), 0);
  EXPECT_EQ(std::string(set_.separators), std::string(19, '#'));
  EXPECT_EQ(set_.adjusted, 0);
  EXPECT_EQ(tavdidset_set_separators(&set_, (many + "A").c_str()), -1) << "all of the text is judged";
}

TEST_F(IdSets, IdWithoutSeparatorIsNotRead) {
  save_product();
  tavdtest::clear_calls();
  EXPECT_EQ(read("ABC"), -1);
  EXPECT_EQ(read(""), -1);
  EXPECT_THAT(tavdtest::calls(), IsEmpty());
  EXPECT_STREQ(set_.mainId, "");
}

TEST_F(IdSets, SeparatorMustStandInTheFirstThirtyCharacters) {
  const std::string id = std::string(29, 'A') + "-";
  save(id.c_str(), kMain);
  EXPECT_EQ(read(id.c_str()), 0);
  EXPECT_EQ(std::string(set_.mainId), id);
  EXPECT_EQ(read((std::string(30, 'A') + "-").c_str()), -1);
  EXPECT_STREQ(set_.mainId, "") << "the set is reset all the same";
}

TEST_F(IdSets, PrefixIsReadWithItsSeparatorAndNoFurther) {
  save_product();
  save_exact("ABC-100-20");
  save("ABC", kSub);
  save("ABC+1", kSub);
  EXPECT_EQ(read("ABC-100"), 0);
  EXPECT_EQ(std::string(set_.classId, 3), "ASD");
  EXPECT_STREQ(set_.mainId, "ABC-*-*");
  EXPECT_THAT(order(), testing::UnorderedElementsAre("|", "ABC-*-20", "ABC-100-*", "ABC-200-*"));
  EXPECT_EQ(handles_out() - before_, 4U);
  EXPECT_EQ(set_.adjusted, 0);
}

TEST_F(IdSets, RecordsOfOtherSizingModesArePassedOver) {
  for (const int16_t mode : std::initializer_list<int16_t>{-1, 0, 1, 2, 3, 9, 12, 32767}) {
    save(("ABC-" + std::to_string(mode)).c_str(), mode);
  }
  save_exact("ABC-x");
  EXPECT_EQ(read("ABC-1"), 0);
  EXPECT_EQ(set_.subs.count, 0);
  EXPECT_EQ(set_.mainRec, nullptr);
  EXPECT_EQ(handles_out(), before_);
}

TEST_F(IdSets, WalkEndsWithItsClass) {
  save("ABC-1", kMain);
  Record("ASE", "ABC-2").words(1150, {kSub}).save(db());
  Record("ASC", "ABC-3").words(1150, {kSub}).save(db());
  EXPECT_EQ(read("ABC-"), 0);
  EXPECT_EQ(set_.subs.count, 0);
  EXPECT_EQ(handles_out() - before_, 1U);
}

TEST_F(IdSets, ClassAndIdNeedNoTerminator) {
  save_product();
  AtPageEnd<char> class_id({'A', 'S', 'D'});
  const std::string text = "ABC-" + std::string(26, 'x');
  AtPageEnd<char> id(std::vector<char>(text.begin(), text.end()));
  EXPECT_EQ(tavdidset_read(&set_, db(), class_id.data(), id.data()), 0);
  EXPECT_STREQ(set_.mainId, "ABC-*-*");
  EXPECT_EQ(tavdidset_adjust(&set_, db(), id.data()), -3) << "one field too few";
}

TEST_F(IdSets, ShortClassEndsAtItsTerminator) {
  save_product();
  EXPECT_EQ(tavdidset_read(&set_, db(), "AS", "ABC-1"), 0);
  EXPECT_STREQ(set_.classId, "AS");
  EXPECT_STREQ(set_.mainId, "");
}

TEST_F(IdSets, TwoMainRecordsAreToldAndLeaveAnEmptySet) {
  save("ABC-*", kMain);
  save("ABC-1-*", kSub);
  save("ABC-2-*", kMain);
  const Messages messages(0);
  EXPECT_EQ(read("ABC-1"), -1);
  EXPECT_THAT(messages.texts, ElementsAre("Duplicate mainrecord\r\nin product ABC-"));
  EXPECT_THAT(messages.owners, ElementsAre(nullptr));
  EXPECT_STREQ(set_.mainId, "");
  EXPECT_EQ(set_.mainRec, nullptr);
  EXPECT_EQ(set_.subs.count, 0);
  EXPECT_EQ(adjust("ABC-1"), -1);
  // The second main record is lost to the set and to the host.
  EXPECT_EQ(handles_out() - before_, 1U);
  EXPECT_TRUE(tavdtest::release_last_record());
}

TEST_F(IdSets, ReadWithoutMainRecordIsNoErrorBeforeItIsAsked) {
  save("ABC-1-*", kSub);
  EXPECT_EQ(read("ABC-1"), 0);
  EXPECT_EQ(set_.subs.count, 1);
  EXPECT_EQ(adjust("ABC-1-2"), -1);
  EXPECT_EQ(layer(), "-1");
}

TEST_F(IdSets, UnknownProductReadsAsAnEmptySet) {
  save_product();
  EXPECT_EQ(read("XYZ-1"), 0);
  EXPECT_EQ(read("ABC-1", "AOD"), 0);
  EXPECT_EQ(handles_out(), before_);
  EXPECT_EQ(tavdidset_read(&set_, -1, "ASD", "ABC-1"), 0) << "no database";
}

TEST_F(IdSets, ReadingAgainReleasesTheFirstProduct) {
  save_product();
  EXPECT_EQ(read("ABC-1"), 0);
  EXPECT_EQ(adjust("ABC-1-2"), 0);
  EXPECT_EQ(read("ABD-1"), 0);
  EXPECT_STREQ(set_.mainId, "ABD-*");
  EXPECT_EQ(set_.subs.count, 0);
  EXPECT_EQ(set_.adjusted, 0);
  EXPECT_STREQ(set_.curId, "");
  EXPECT_EQ(handles_out() - before_, 1U);
}

TEST_F(IdSets, SetCanBeReadAgainByItsOwnTexts) {
  save_product();
  EXPECT_EQ(read("ABC-1"), 0);
  EXPECT_EQ(tavdidset_read(&set_, db(), set_.classId, set_.mainId), 0);
  EXPECT_STREQ(set_.mainId, "ABC-*-*");
  EXPECT_EQ(adjust("ABC-100-20"), 0);
  EXPECT_EQ(tavdidset_read(&set_, db(), set_.classId, set_.curId), 0);
  EXPECT_EQ(set_.subs.count, 3);
}

TEST_F(IdSets, SetCanBeAdjustedByItsOwnTexts) {
  save("ABC-*", kMain);
  save("ABC-300", kSub);
  save("ABC-100", kSub);
  save("ABC-200", kSub);
  ASSERT_EQ(read("ABC-1"), 0);
  for (const IdSetItem& item : items()) {
    // The text lies in an item, and the sort moves the items.
    const std::string id = item.id;
    auto* stored = static_cast<IdSetItem*>(set_.subs.data);
    const auto* found =
        std::find_if(stored, stored + set_.subs.count, [&](const IdSetItem& one) { return id == one.id; });
    EXPECT_EQ(tavdidset_adjust(&set_, db(), found->id), 0);
    EXPECT_EQ(std::string(set_.curId), id);
    char class_id[8];
    char object_id[32] = {};
    tavbgetID(db(), set_.curRec, class_id, object_id);
    EXPECT_EQ(std::string(object_id, id.size() + 1), id + " ");
    EXPECT_EQ(order().front(), id);
  }
  EXPECT_EQ(tavdidset_adjust(&set_, db(), set_.curId), 0);
  EXPECT_EQ(tavdidset_adjust(&set_, db(), set_.mainId), 0) << "a wildcard is a field as any other";
}

TEST_F(IdSets, AskedTooEarlyTellsWhy) {
  EXPECT_EQ(layer(), "-1") << "an empty set";
  save_product();
  EXPECT_EQ(read("ABC-1"), 0);
  EXPECT_EQ(layer(), "-3") << "not adjusted";
  EXPECT_EQ(adjust("ABC-1-2"), 0);
  EXPECT_EQ(layer(), "ABC-*-*");
  tavdidset_reset(&set_);
  EXPECT_EQ(layer(), "-1");
}

TEST_F(IdSets, IdThatDoesNotFitTheMainRecordAdjustsToNothing) {
  save_product();
  save_exact("ABC-100-20");
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-100-20"), 0);
  ASSERT_NE(set_.curRec, nullptr);
  for (const char* id : {"ABC-100", "ABD-100-20", "abc-100-20", "ABC-100-20-30", "", "ABC-100+20"}) {
    EXPECT_EQ(adjust(id), -3) << id;
    EXPECT_STREQ(set_.curId, "");
    EXPECT_EQ(set_.curRec, nullptr);
    EXPECT_EQ(layer(), "-3");
  }
  EXPECT_EQ(adjust("ABC-100-20"), 0);
  EXPECT_EQ(layer(), "ABC-100-20");
}

TEST_F(IdSets, ExactRecordIsFoundByTheIdAsItWasGiven) {
  save_product();
  save_exact("ABC-100-20");
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-100-20   "), 0);
  EXPECT_EQ(tavdtest::last_key(), "ABC-100-20   ");
  EXPECT_STREQ(set_.curId, "ABC-100-20");
  EXPECT_EQ(layer(), "ABC-100-20");
}

TEST_F(IdSets, ExactRecordGoesBeforeAllLayers) {
  save_product();
  save_exact("ABC-100-20");
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-100-20"), 0);
  EXPECT_EQ(layer(), "ABC-100-20");
  EXPECT_EQ(handles_out() - before_, 5U);
}

TEST_F(IdSets, TrailingBlanksOfAnIdDoNotCount) {
  save_product();
  save_exact("ABC-100-20");
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-100-20   "), 0);
  EXPECT_STREQ(set_.curId, "ABC-100-20");
  EXPECT_EQ(layer(), "ABC-100-20");
}

TEST_F(IdSets, MatchingSubRecordGoesBeforeTheMainRecord) {
  save_product();
  Record("ASD", "ABC-*-*").words(1150, {kMain}).text(1503, "main").text(1505, "main only").save(db());
  Record("ASD", "ABC-200-*").words(1150, {kSub}).text(1503, "sub").save(db());
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-200-7"), 0);
  EXPECT_EQ(find(1503), "sub");
  EXPECT_EQ(find(1505), "main only");
  EXPECT_EQ(find(1507), "-");
  ASSERT_EQ(adjust("ABC-300-7"), 0);
  EXPECT_EQ(find(1503), "main") << "the answer changes with the id";
}

TEST_F(IdSets, LayersWithoutTheAttributeArePassed) {
  save("ABC-*-*", kMain);
  Record("ASD", "ABC-100-*").words(1150, {kSub}).save(db());
  Record("ASD", "ABC-*-20").words(1150, {kSub}).text(1503, "general").save(db());
  save_exact("ABC-100-20");
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-100-20"), 0);
  EXPECT_EQ(find(1503), "general");
}

TEST_F(IdSets, RecordsStayLoadedSoThatAskingNeedsNoStore) {
  save_product();
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-100-20"), 0);
  tavbdeleterec(db(), "ASD", "ABC-100-*");
  tavdtest::clear_calls();
  EXPECT_EQ(layer(), "ABC-100-*");
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1501 64 counted"));
  tavdtest::clear_calls();
  ASSERT_EQ(adjust("ABC-200-20"), 0);
  EXPECT_THAT(tavdtest::calls(), ElementsAre("find ASD 0")) << "adjusting looks for the exact record only";
}

TEST_F(IdSets, LayerThatDoesNotMatchIsNotAsked) {
  save_product();
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-300-30"), 0);
  tavdtest::clear_calls();
  EXPECT_EQ(find(1507), "-");
  EXPECT_THAT(tavdtest::calls(), ElementsAre("att 1507 64 counted")) << "the main record alone";
}

TEST_F(IdSets, NumbersAreCountedAndCutToTheRoom) {
  Record("ASD", "ABC-*").words(1150, {kMain}).words(1110, {101, 1, 2, 3, 4}).save(db());
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-1"), 0);
  Guarded<int16_t> words(3);
  int16_t count = -7;
  EXPECT_EQ(tavdidset_findatt(&set_, db(), 1110, &count, words.data(), 6), 1);
  EXPECT_EQ(count, 5);
  EXPECT_EQ(words[2], 2);
  EXPECT_TRUE(words.intact());
}

TEST_F(IdSets, NoRoomTellsTheCountAndTakesNoBlock) {
  Record("ASD", "ABC-*").words(1150, {kMain}).words(1110, {101, 1, 2, 3, 4}).save(db());
  ASSERT_EQ(read("ABC-1"), 0);
  ASSERT_EQ(adjust("ABC-1"), 0);
  const tavdtest::Balance balance;
  for (const int16_t capacity : std::initializer_list<int16_t>{0, -1, -32768}) {
    Guarded<int16_t> words(3);
    int16_t count = -7;
    EXPECT_EQ(tavdidset_findatt(&set_, db(), 1110, &count, words.data(), capacity), 1);
    EXPECT_EQ(count, 5);
    EXPECT_TRUE(words.untouched_from(0));
  }
  for (const int16_t capacity : std::initializer_list<int16_t>{0, 100}) {
    int16_t count = -7;
    EXPECT_EQ(tavdidset_findatt(&set_, db(), 1110, &count, nullptr, capacity), 1);
    EXPECT_EQ(count, 5);
    EXPECT_EQ(tavdidset_findatt(&set_, db(), 1110, nullptr, nullptr, capacity), 1);
    EXPECT_EQ(tavdidset_findatt(&set_, db(), 1507, nullptr, nullptr, capacity), 0);
  }
}

TEST_F(IdSets, ResetForgetsTheProductAndKeepsTheSigns) {
  ASSERT_EQ(tavdidset_set_wildchars(&set_, "#"), 0);
  ASSERT_EQ(tavdidset_set_separators(&set_, "/"), 0);
  save("ABC/#", kMain);
  save("ABC/1", kSub);
  ASSERT_EQ(read("ABC/1"), 0);
  ASSERT_EQ(adjust("ABC/1"), 0);
  EXPECT_EQ(handles_out() - before_, 3U);
  tavdidset_reset(&set_);
  EXPECT_EQ(handles_out(), before_);
  EXPECT_STREQ(set_.wildchars, "#");
  EXPECT_STREQ(set_.separators, "/");
  EXPECT_EQ(std::string(set_.classId, 3), std::string(3, '\0'));
  EXPECT_STREQ(set_.mainId, "");
  EXPECT_STREQ(set_.curId, "");
  EXPECT_EQ(set_.subs.itemsize, 40);
  EXPECT_EQ(set_.adjusted, 0);
  EXPECT_EQ(read("ABC/1"), 0) << "the set is ready";
  EXPECT_EQ(set_.subs.count, 1);
}

TEST_F(IdSets, ReleasedSetTakesNothing) {
  save_product();
  ASSERT_EQ(read("ABC-1"), 0);
  tavdidset_release(&set_);
  EXPECT_EQ(handles_out(), before_);
  EXPECT_EQ(set_.subs.itemsize, 0);
  EXPECT_EQ(read("ABC-1"), -1);
  EXPECT_EQ(adjust("ABC-1-2"), -1);
  EXPECT_EQ(handles_out(), before_);
  tavdidset_release(&set_);
}

TEST_F(IdSets, MemoryThatRunsOutLeavesAnEmptySetAndNoHandle) {
  save("ABC-*", kMain);
  save("ABC-1", kSub);
  save("ABC-2", kSub);
  // Items that are too large for the array from the second sub record on.
  tavdtest::at_call("next", [&] {
    tavdtest::at_call("next", [&] { set_.subs.itemsize = std::numeric_limits<int32_t>::max(); });
  });
  EXPECT_EQ(read("ABC-1"), -1);
  EXPECT_EQ(handles_out(), before_);
  EXPECT_EQ(set_.subs.count, 0);
  EXPECT_STREQ(set_.mainId, "");
}

TEST_F(IdSets, NullArguments) {
  save_product();
  tavdidset_init(nullptr);
  tavdidset_reset(nullptr);
  tavdidset_release(nullptr);
  EXPECT_EQ(tavdidset_set_wildchars(nullptr, "*"), -1);
  EXPECT_EQ(tavdidset_set_separators(nullptr, "-"), -1);
  EXPECT_EQ(tavdidset_set_wildchars(&set_, nullptr), -1);
  EXPECT_EQ(tavdidset_set_separators(&set_, nullptr), -1);
  EXPECT_STREQ(set_.wildchars, "*");
  EXPECT_EQ(tavdidset_read(nullptr, db(), "ASD", "ABC-1"), -1);
  EXPECT_EQ(tavdidset_adjust(nullptr, db(), "ABC-1"), -1);
  int16_t count = 7;
  EXPECT_EQ(tavdidset_findatt(nullptr, db(), kNameAttribute, &count, nullptr, 0), -1);
  EXPECT_EQ(count, 0);
  ASSERT_EQ(read("ABC-1"), 0);
  EXPECT_EQ(tavdidset_adjust(&set_, db(), nullptr), -3);
  EXPECT_EQ(tavdidset_read(&set_, db(), "ASD", nullptr), -1);
  EXPECT_EQ(handles_out(), before_) << "the set is reset first";
  ASSERT_EQ(read("ABC-1"), 0);
  EXPECT_EQ(tavdidset_read(&set_, db(), nullptr, "ABC-1"), -1);
  EXPECT_EQ(handles_out(), before_);
}

TEST_F(IdSets, ZeroedSetIsEmpty) {
  IdSet zero = {};
  int16_t count = 7;
  char text[8];
  EXPECT_EQ(tavdidset_findatt(&zero, db(), kNameAttribute, &count, text, sizeof text), -1);
  EXPECT_EQ(tavdidset_adjust(&zero, db(), "ABC-1"), -1);
  EXPECT_EQ(tavdidset_read(&zero, db(), "ASD", "ABC-1"), -1);
  tavdidset_reset(&zero);
  tavdidset_release(&zero);
}

}  // namespace
