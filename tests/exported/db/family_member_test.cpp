// Which ids belong to a family.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "tavd/tavfm.h"

namespace {

// Lists as tavfm_read leaves them, on both sides of the border between narrow and wide.
template <typename List>
List list_of(const std::string& pattern, char padding) {
  List list = {};
  std::memset(list.objId, padding, sizeof list.objId);
  std::copy(pattern.begin(), pattern.end(), list.objId);
  list.idLen = static_cast<int16_t>(pattern.size());
  list.wildPos = static_cast<int16_t>(std::min(pattern.find('*'), pattern.size()));
  return list;
}

std::string raw(const std::string& id, char padding) {
  return id + std::string(30 - id.size(), padding);
}

// The answer for `id`, the same for narrow and wide lists and for every padding.
int32_t is_member(const std::string& pattern, const std::string& id) {
  const FamilyList first = list_of<FamilyList>(pattern, ' ');
  const int32_t answer = tavfm_is_member(&first, raw(id, ' ').c_str());
  for (const char list_padding : {' ', '\0'}) {
    const auto narrow = list_of<FamilyList>(pattern, list_padding);
    const auto wide = list_of<FamilyListW>(pattern, list_padding);
    for (const char padding : {' ', '\0'}) {
      EXPECT_EQ(tavfm_is_member(&narrow, raw(id, padding).c_str()), answer) << pattern << " " << id;
      EXPECT_EQ(tavfm_is_memberw(&wide, raw(id, padding).c_str()), answer) << pattern << " " << id;
    }
  }
  return answer;
}

TEST(FamilyMembership, FieldsBehindTheWildOneDecide) {
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125-10"), 0);
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125-11"), -1);
  EXPECT_EQ(is_member("ABC-*-10", "ABD-125-10"), 1);
  EXPECT_EQ(is_member("ABC-*-10", "ABC-*-10"), -1) << "the main record itself";
}

TEST(FamilyMembership, PlainFieldNeedOnlyBeAPrefix) {
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125-100"), 0);
}

TEST(FamilyMembership, TrailingFieldsAreNotLookedAt) {
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125-10-X"), 0);
}

TEST(FamilyMembership, SeparatorRightAtTheWildFieldIsPassedOver) {
  EXPECT_EQ(is_member("ABC*", "ABC-100"), 0);
  EXPECT_EQ(is_member("ABC*", "ABC100"), 0);
  EXPECT_EQ(is_member("ABC*", "ABC"), 0);
}

TEST(FamilyMembership, SeparatorsMustBeTheSame) {
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125+10"), -1);
  for (const char separator : {'+', '-', '.', '/', ' '}) {
    const std::string s(1, separator);
    EXPECT_EQ(is_member("ABC-*" + s + "10", "ABC-125" + s + "10"), 0) << s;
    EXPECT_EQ(is_member("ABC-*" + s + "10", "ABC-125_10"), -1) << s;
  }
}

TEST(FamilyMembership, CandidateThatEndsEarlyIsNoMember) {
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125"), -1);
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125-1"), -1);
  EXPECT_EQ(is_member("ABC-*-10", "ABC-125-"), -1);
  EXPECT_EQ(is_member("ABC-*-10", "ABC-"), -1);
}

TEST(FamilyMembership, SeveralWildFields) {
  EXPECT_EQ(is_member("A-*-*-L", "A-1-2-L"), 0);
  EXPECT_EQ(is_member("A-*-*-L", "A-1-2-R"), -1);
  EXPECT_EQ(is_member("A-*-B-*", "A-1-B-2"), 0);
  EXPECT_EQ(is_member("A-*-B-*", "A-1-C-2"), -1);
}

TEST(FamilyMembership, StarInsideAFieldIsOnlyACharacterBehindTheFirst) {
  EXPECT_EQ(is_member("A-*-B*", "A-1-B2"), -1);
  EXPECT_EQ(is_member("A-*-B*", "A-1-B*2"), 0);
}

TEST(FamilyMembership, PatternThatEndsInASeparatorHasAnEmptyLastFieldThatMatches) {
  EXPECT_EQ(is_member("ABC-*-", "ABC-125-10"), 0);
  EXPECT_EQ(is_member("ABC-*-", "ABC-125-"), 0);
  EXPECT_EQ(is_member("ABC-*-", "ABC-125"), -1);
  EXPECT_EQ(is_member("ABC-*-", "ABC-125+10"), -1);
}

TEST(FamilyMembership, WithoutStarNothingIsAMember) {
  EXPECT_EQ(is_member("ABC-10", "ABC-10"), -1);
  EXPECT_EQ(is_member("ABC-10", "ABC-10-X"), -1);
  EXPECT_EQ(is_member("ABC-10", "ABC-11"), 1);
  EXPECT_EQ(is_member("ABC-10", "ABC"), 1);
}

TEST(FamilyMembership, StarAloneTakesEverything) {
  EXPECT_EQ(is_member("*", "ABC"), 0);
  EXPECT_EQ(is_member("*", "-"), 0);
  EXPECT_EQ(is_member("*", ""), 0);
}

TEST(FamilyMembership, IdsOfThirtyCharactersAreReadNoFurther) {
  // 30 characters without padding; what follows in memory would make each answer another one.
  const std::string pattern = "ABCDEFGHIJKLMNOPQRSTUVWX-*-10-";
  ASSERT_EQ(pattern.size(), 30U);
  FamilyList list = list_of<FamilyList>(pattern, ' ');
  std::memset(list.pcode, '*', sizeof list.pcode);
  const std::string member = "ABCDEFGHIJKLMNOPQRSTUVWX-1-10-";
  EXPECT_EQ(tavfm_is_member(&list, (member + "-----").c_str()), 0);
  const std::string other = "ABCDEFGHIJKLMNOPQRSTUVWX-12-10";
  EXPECT_EQ(tavfm_is_member(&list, (other + "-----").c_str()), -1) << "the 31st character is not the id's";
}

TEST(FamilyMembership, ShorterTerminatedIdIsNotReadPastItsEnd) {
  const FamilyList list = list_of<FamilyList>("ABC-*-10", ' ');
  EXPECT_EQ(tavfm_is_member(&list, std::string("ABC-125-10").c_str()), 0);
  EXPECT_EQ(tavfm_is_member(&list, std::string("A").c_str()), 1);
}

TEST(FamilyMembership, LengthsOutsideTheIdAreHeldInside) {
  FamilyList list = list_of<FamilyList>("ABC-*-10", ' ');
  const std::string id = raw("ABC-125-10", ' ');
  list.idLen = 32767;
  list.wildPos = 32767;
  EXPECT_EQ(tavfm_is_member(&list, id.c_str()), 1);
  list.idLen = -5;
  list.wildPos = -5;
  EXPECT_EQ(tavfm_is_member(&list, id.c_str()), -1) << "an empty pattern equals the start of any id";
}

TEST(FamilyMembership, NullArgumentsAreNoMembers) {
  const FamilyList list = list_of<FamilyList>("*", ' ');
  EXPECT_EQ(tavfm_is_member(nullptr, "ABC"), -1);
  EXPECT_EQ(tavfm_is_member(&list, nullptr), -1);
  EXPECT_EQ(tavfm_is_memberw(nullptr, "ABC"), -1);
}

TEST(FamilyMembership, FiveCharactersAreSeparators) {
  for (int c = -128; c <= 127; ++c) {
    const bool expected = c == ' ' || c == '+' || c == '-' || c == '.' || c == '/';
    EXPECT_EQ(tavfm_is_codeparam_separator(static_cast<char>(c)), expected ? 1 : 0) << c;
  }
}

}  // namespace
