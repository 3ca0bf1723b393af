// Which sub records of a set fit an id, and in which order they are asked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>

#include "exported/db/idset_fixture.h"

namespace {

using tavdtest::kMain;
using tavdtest::kSub;
using testing::ElementsAre;

class IdSetOrder : public tavdtest::IdSetTest {
 protected:
  // A set of these patterns under a main record, adjusted to an id.
  void adjust_to(const char* id, const char* main, std::initializer_list<const char*> patterns) {
    save(main, kMain);
    for (const char* pattern : patterns) save(pattern, kSub);
    ASSERT_EQ(read(id), 0);
    ASSERT_EQ(adjust(id), 0);
  }
};

// Ids are unique, so the main record writes its wildcards in another way than the sub record of the same
// fields.
TEST_F(IdSetOrder, FewerWildcardsComeFirstAndThenThoseFurtherBack) {
  ASSERT_EQ(tavdidset_set_wildchars(&set_, "*#"), 0);
  adjust_to("ABC-100-20", "ABC-#-#", {"ABC-*-*", "ABC-*-20", "ABC-100-*"});
  EXPECT_THAT(order(), ElementsAre("ABC-100-*", "ABC-*-20", "ABC-*-*"));
  EXPECT_EQ(layer(), "ABC-100-*");
}

TEST_F(IdSetOrder, PatternWithoutWildcardComesFirst) {
  adjust_to("ABC-1-2-3", "ABC-*-*-*", {"ABC-1-2-*", "ABC-1-2-3", "ABC-*-2-3"});
  EXPECT_THAT(order(), ElementsAre("ABC-1-2-3", "ABC-1-2-*", "ABC-*-2-3"));
}

TEST_F(IdSetOrder, PatternsThatDoNotFitComeLast) {
  adjust_to("ABC-1-2", "ABC-*-*", {"ABC-*-2", "ABC-1-1", "ABC-1-*", "ABC-2-*", "ABC-1"});
  ASSERT_EQ(order().size(), 6U);
  EXPECT_EQ(order()[0], "ABC-1-*");
  EXPECT_EQ(order()[1], "ABC-*-2");
  EXPECT_EQ(order()[2], "|");
  ASSERT_EQ(adjust("ABC-2-5"), 0);
  EXPECT_EQ(order()[0], "ABC-2-*");
  EXPECT_EQ(order()[1], "|");
}

TEST_F(IdSetOrder, EqualSumsAreToldApartByTheFirstPlaceThatIsPlain) {
  // Wildcards behind 1 and 4 separators, and behind 2 and 3: both sums are 5.
  adjust_to("ABC-1-2-3-4", "ABC-*-*-*-*", {"ABC-*-2-3-*", "ABC-1-*-*-4"});
  EXPECT_THAT(order(), ElementsAre("ABC-1-*-*-4", "ABC-*-2-3-*"));
}

TEST_F(IdSetOrder, SeparatorThatIsAWildcardCountsForItself) {
  ASSERT_EQ(tavdidset_set_wildchars(&set_, "*+#"), 0);
  adjust_to("AB-1", "AB-#", {"AB-*", "AB-+"});
  EXPECT_THAT(order(), ElementsAre("AB-+", "AB-*")) << "behind two separators, its own and the minus";
}

// All patterns of four fields that are plain or wild, among some that do not fit, against an independent
// sort: by wildcards, then by the sum of the separators before them, then by the earlier plain field.
TEST_F(IdSetOrder, AllPatternsOfFourFieldsAreSorted) {
  save("A-#-#-#-#", kMain);
  std::vector<std::string> patterns;
  for (unsigned wild = 0; wild < 16; ++wild) {
    std::string pattern = "A";
    for (unsigned field = 0; field < 4; ++field) pattern += (wild >> field & 1U) != 0 ? "-*" : "-1";
    save(pattern.c_str(), kSub);
    patterns.push_back(pattern);
  }
  for (const char* other : {"A-*-*-*-2", "A-1-2-1-1", "A-*", "A-2-*-*-*"}) save(other, kSub);
  ASSERT_EQ(tavdidset_set_wildchars(&set_, "*#"), 0);
  ASSERT_EQ(read("A-1-1-1-1"), 0);
  ASSERT_EQ(adjust("A-1-1-1-1"), 0);
  const auto rank = [](const std::string& pattern) {
    int wildcards = 0;
    int sum = 0;
    for (int field = 1; field <= 4; ++field) {
      if (pattern.at(2 * static_cast<std::size_t>(field)) != '*') continue;
      ++wildcards;
      sum += field;
    }
    std::string places = pattern;
    std::replace(places.begin(), places.end(), '*', '~');  // behind every plain character
    return std::make_tuple(wildcards, -sum, places);
  };
  std::sort(patterns.begin(), patterns.end(),
            [&](const std::string& a, const std::string& b) { return rank(a) < rank(b); });
  std::vector<std::string> sorted = order();
  ASSERT_EQ(sorted.size(), 16U + 1 + 4);
  EXPECT_EQ(sorted[16], "|");
  sorted.resize(16);
  EXPECT_EQ(sorted, patterns);
}

TEST_F(IdSetOrder, LongestIdsFit) {
  const std::string id = "ABC-" + std::string(26, 'x');
  ASSERT_EQ(id.size(), 30U);
  save("ABC-*", kMain);
  save(id.c_str(), kSub);
  ASSERT_EQ(read(id.c_str()), 0);
  ASSERT_EQ(adjust((id + "behind the id").c_str()), 0);
  EXPECT_EQ(std::string(set_.curId), id);
  EXPECT_EQ(order(), std::vector<std::string>{id});
}

TEST_F(IdSetOrder, CodeThatBeginsWithASeparatorEndsAtAWildcard) {
  // The step back from the first field leads in front of the code: nothing may follow in the pattern.
  save("-*", kMain);
  ASSERT_EQ(read("-1"), 0);
  EXPECT_EQ(adjust("-1"), 0) << "the separator itself is plain";
  tavdidset_reset(&set_);
  ASSERT_EQ(tavdidset_set_wildchars(&set_, "-"), 0);
  save("-*", 0);
  save("-", kMain);
  save("-1", kSub);
  ASSERT_EQ(read("-1"), 0);
  EXPECT_EQ(adjust("-1"), 0);
  EXPECT_THAT(order(), ElementsAre("|", "-1")) << "behind the wildcard the scan is at its end";
}

}  // namespace
