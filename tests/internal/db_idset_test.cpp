// Matching of ids against patterns, and the order of two items, with signs of any kind.
#include "db/idset.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using tavd::idset_compare;
using tavd::idset_is_separator;
using tavd::idset_is_wildchar;
using tavd::idset_match;

class SetWithSigns {
 public:
  explicit SetWithSigns(const char* wildchars = "*", const char* separators = "-+") {
    tavdidset_init(&set);
    EXPECT_EQ(tavdidset_set_wildchars(&set, wildchars), 0);
    EXPECT_EQ(tavdidset_set_separators(&set, separators), 0);
  }
  ~SetWithSigns() { tavdidset_release(&set); }
  SetWithSigns(const SetWithSigns&) = delete;
  SetWithSigns& operator=(const SetWithSigns&) = delete;

  int match(const char* code, const char* pattern) const { return idset_match(&set, code, pattern); }
  int compare(const char* a, const char* b, bool a_matches = true, bool b_matches = true) const {
    const IdSetItem first = item(a, a_matches);
    const IdSetItem second = item(b, b_matches);
    return idset_compare(&set, &first, &second);
  }
  static IdSetItem item(const char* id, bool matches) {
    IdSetItem item = {};
    std::strncpy(item.id, id, sizeof item.id - 1);
    item.matches = matches ? 1 : 0;
    return item;
  }

  IdSet set;
};

TEST(IdSetSigns, EndOfTextIsNoSign) {
  const SetWithSigns set;
  EXPECT_EQ(idset_is_wildchar(&set.set, '\0'), 0);
  EXPECT_EQ(idset_is_separator(&set.set, '\0'), 0);
  EXPECT_NE(idset_is_wildchar(&set.set, '*'), 0);
  EXPECT_NE(idset_is_separator(&set.set, '-'), 0);
  EXPECT_NE(idset_is_separator(&set.set, '+'), 0);
  EXPECT_EQ(idset_is_separator(&set.set, '*'), 0);
  EXPECT_EQ(idset_is_wildchar(&set.set, '-'), 0);
}

TEST(IdSetSigns, FieldWithoutTerminatorIsReadNoFurther) {
  SetWithSigns set;
  std::memset(set.set.wildchars, '*', sizeof set.set.wildchars);
  std::memcpy(set.set.separators, "/", 2);
  EXPECT_EQ(idset_is_wildchar(&set.set, '/'), 0);
}

struct Match {
  const char* code;
  const char* pattern;
  int fits;
};

TEST(IdSetMatch, WildcardStandsForOneField) {
  const SetWithSigns set;
  const Match matches[] = {
      {"ABC-100-20", "ABC-*-20", 1},
      {"ABC-100-20", "ABC-*-30", 0},
      {"ABC-100-20", "ABC-*", 0},  // the wildcard ends at the next separator
      {"ABC-100-20", "ABC-*-*", 1},
      {"ABC-100-20", "ABC-100-20", 1},
      {"ABC-100-20", "*-*-*", 1},
      {"ABC-100-20", "*-100-*", 1},
      {"ABC-100-20", "*", 0},
      {"ABC", "*", 1},
      {"ABC", "**", 0},
      // A plain text must be whole.
      {"ABC-100-20", "ABC-100", 0},
      {"ABC-100", "ABC-100-20", 0},
      {"ABC-100", "ABC-10", 0},
      // Empty fields, but not at the end.
      {"ABC--20", "ABC-*-20", 1},
      {"ABC---20", "ABC-*-*-20", 1},
      {"ABC--", "ABC-*-", 1},
      {"ABC-", "ABC-*", 0},
      {"ABC--", "ABC-*-*", 0},
      // Separators must be the same.
      {"ABC-100+20", "ABC-*-20", 0},
      {"ABC-100+20", "ABC-*+20", 1},
      {"ABC.100-20", "*-20", 1},  // a point is none of these separators
      // The field may begin with plain characters; a wildcard takes its rest.
      {"ABC-100-20", "ABC-1*-20", 1},
      {"ABC-1-20", "ABC-1*-20", 1},
      {"ABC-200-20", "ABC-1*-20", 0},
      {"ABC-100-20", "ABC-*0-20", 0},  // nothing is left of the field for the plain character
      // Case counts.
      {"ABC-100", "abc-100", 0},
      {"abc-100", "abc-*", 1},
      // A wildcard in the code is a character as any other.
      {"ABC-*", "ABC-*", 1},
      {"ABC-*", "ABC-1", 0},
      // Bytes of any value.
      {"\xC4-\xFF", "\xC4-*", 1},
      {"\xC4-\xFF", "\xC4-\xFF", 1},
  };
  for (const Match& match : matches) {
    EXPECT_EQ(set.match(match.code, match.pattern), match.fits) << match.code << ' ' << match.pattern;
  }
}

TEST(IdSetMatch, EmptyFieldInFrontEndsTheScan) {
  const SetWithSigns set;
  EXPECT_EQ(set.match("-100", "*"), 1);
  EXPECT_EQ(set.match("-100", "*-100"), 0);
  EXPECT_EQ(set.match("-", "*-"), 0);
  EXPECT_EQ(set.match("-100", "-*"), 1) << "a plain separator in front is no wildcard";
}

TEST(IdSetMatch, NullAndEmptyTextsFitNothing) {
  const SetWithSigns set;
  EXPECT_EQ(set.match(nullptr, "*"), 0);
  EXPECT_EQ(set.match("A", nullptr), 0);
  EXPECT_EQ(set.match("", "*"), 0);
  EXPECT_EQ(set.match("A", ""), 0);
  EXPECT_EQ(set.match("", ""), 0);
}

TEST(IdSetMatch, OwnSignsReplaceTheUsualOnes) {
  const SetWithSigns set("#", "/");
  EXPECT_EQ(set.match("A/1-2/3", "A/#/3"), 1);
  EXPECT_EQ(set.match("A/1/3", "A/*/3"), 0);
  EXPECT_EQ(set.match("A-1", "A#"), 1) << "the minus belongs to the field";
  EXPECT_EQ(set.match("A-1/2", "A#"), 0);
}

TEST(IdSetMatch, WithoutSeparatorsAWildcardTakesTheRest) {
  const SetWithSigns set("*", "");
  EXPECT_EQ(set.match("ABC-100-20", "A*"), 1);
  EXPECT_EQ(set.match("ABC-100-20", "A*0"), 0);
}

TEST(IdSetMatch, WithoutWildcardsOnlyEqualTextsFit) {
  const SetWithSigns set("", "-");
  EXPECT_EQ(set.match("A-1", "A-*"), 0);
  EXPECT_EQ(set.match("A-*", "A-*"), 1);
}

TEST(IdSetCompare, MatchingItemsComeFirst) {
  const SetWithSigns set;
  EXPECT_GT(set.compare("A-1", "A-*", false, true), 0);
  EXPECT_LT(set.compare("A-*", "A-1", true, false), 0);
  EXPECT_GT(set.compare("A-1", "A-1", false, false), 0) << "of two that do not match each is behind";
}

TEST(IdSetCompare, EqualIdsAreEqual) {
  const SetWithSigns set;
  EXPECT_EQ(set.compare("A-*", "A-*"), 0);
}

TEST(IdSetCompare, IdsWithoutWildcardsHaveNoOrder) {
  const SetWithSigns set;
  EXPECT_EQ(set.compare("AB", "ABC"), 0);
  EXPECT_EQ(set.compare("ABC", "AB"), 0);
}

struct Pair {
  const char* first;
  const char* second;
};

TEST(IdSetCompare, MoreSpecificPatternsComeFirst) {
  const SetWithSigns set;
  const Pair pairs[] = {
      {"A-1-1", "A-*-1"},          // fewer wildcards
      {"A-1-*", "A-*-*"},          //
      {"A-1-*", "A-*-1"},          // one wildcard each, further back
      {"A-*-1-*", "A-*-*-1"},      // sums 1 + 3 and 1 + 2
      {"A-1-*-*-1", "A-*-1-1-*"},  // sums 5 and 5: the first place where one is wild
      {"A-1-*", "*-1-1-1"},        // 2 and 0
      {"A+1+*", "A+*+1"},          // any separator counts
      {"A1-*", "A-*"},             // one wildcard and sum 1 each: at place 2 the second is wild
  };
  for (const Pair& pair : pairs) {
    EXPECT_LT(set.compare(pair.first, pair.second), 0) << pair.first << ' ' << pair.second;
    EXPECT_GT(set.compare(pair.second, pair.first), 0) << pair.first << ' ' << pair.second;
  }
}

TEST(IdSetCompare, PatternsWithWildcardsInTheSamePlacesAreEqual) {
  const SetWithSigns set;
  EXPECT_EQ(set.compare("A-*-1", "B-*-22"), 0);
  EXPECT_EQ(set.compare("A-1", "A-22"), 0);
}

TEST(IdSetCompare, SeparatorThatIsAWildcardCountsItself) {
  const SetWithSigns set("*+", "-+");
  EXPECT_LT(set.compare("A+", "A*"), 0) << "sums 1 and 0";
}

TEST(IdSetCompare, IdsWithoutTerminatorAreReadNoFurther) {
  const SetWithSigns set;
  IdSetItem a = SetWithSigns::item("A", true);
  IdSetItem b = a;
  std::memset(a.id, '*', sizeof a.id);
  std::memset(b.id, '*', sizeof b.id);
  b.id[30] = 'x';
  EXPECT_GT(idset_compare(&set.set, &a, &b), 0) << "31 wildcards and 30";
}

TEST(IdSetCompare, BehindThirtyCharactersNothingTellsTwoIdsApart) {
  const SetWithSigns set;
  IdSetItem a = SetWithSigns::item("A", true);
  IdSetItem b = a;
  std::memset(a.id, 'A', sizeof a.id);
  std::memset(b.id, 'A', sizeof b.id);
  b.id[30] = 'B';
  EXPECT_EQ(idset_compare(&set.set, &a, &b), 0);
}

}  // namespace
