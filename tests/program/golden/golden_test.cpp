// Everything that the library draws of the sample catalogue, against the recordings that were looked at.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "program/golden/cases.h"
#include "program/golden/difference.h"
#include "support/json.h"

namespace golden {

// How a failed test names its case.
void PrintTo(const Case& drawn, std::ostream* out) {
  *out << drawn.class_id << ' ' << drawn.object_id << ", setting " << drawn.setting;
}

namespace {

using Names = std::set<std::string>;

constexpr const char* kRecordings = TAVD_SOURCE_DIR "/tests/program/golden/recordings";
constexpr const char* kEnding = ".txt";

const std::vector<Case>& all_cases() {
  static const std::vector<Case> kCases = read_cases(TAVD_SOURCE_DIR "/tests/program/golden/cases.txt");
  return kCases;
}

Names all_classes() {
  Names classes;
  for (const Case& drawn : all_cases()) classes.insert(drawn.class_id);
  return classes;
}

std::string in_recordings(const Case& drawn) {
  return std::string(kRecordings) + "/" + drawn.path() + kEnding;
}

::testing::AssertionResult is_recorded(const Catalogue& catalogue, const Case& drawn) {
  const clitest::Folder folder;
  const std::string file = folder.file("found.txt");
  catalogue.draw(drawn, file);
  const std::string expected = clitest::read_file(in_recordings(drawn));
  const auto difference = first_difference(expected, clitest::read_file(file));
  // An empty file is what cannot be read, on either side.
  if (!difference && !expected.empty()) return ::testing::AssertionSuccess();
  auto failure = ::testing::AssertionFailure() << ::testing::PrintToString(drawn);
  if (!difference) return failure << ": neither recorded nor drawn";
  return failure << ", operation " << difference->operation << "\n  expected: " << difference->expected
                 << "\n  found:    " << difference->found;
}

Names without(const Names& all, const Names& taken) {
  Names left;
  std::ranges::set_difference(all, taken, std::inserter(left, left.end()));
  return left;
}

class Recordings : public ::testing::TestWithParam<std::string> {};

// All products of one class in all their settings.
TEST_P(Recordings, AreWhatIsDrawn) {
  const Catalogue catalogue;
  int compared = 0;
  for (const Case& drawn : all_cases()) {
    if (drawn.class_id != GetParam()) continue;
    EXPECT_TRUE(is_recorded(catalogue, drawn));
    ++compared;
  }
  EXPECT_GT(compared, 0);
}

INSTANTIATE_TEST_SUITE_P(Golden, Recordings, ::testing::ValuesIn(all_classes()),
                         [](const auto& info) { return info.param; });

TEST(RecordingsTable, HoldsThePlainDiagramOfEachProductThatHasOne) {
  const Catalogue catalogue;
  Names plain;
  for (const Case& drawn : all_cases()) {
    if (drawn.setting == "plain") plain.insert(drawn.class_id + " " + drawn.object_id);
  }
  Names drawable;
  for (const Json::Value& product : clitest::run_json({"list", catalogue.database("utf8")})) {
    if (!product["limits"].isNull()) {
      drawable.insert(product["class"].asString() + " " + product["id"].asString());
    }
  }
  EXPECT_EQ(Names(), without(drawable, plain)) << "are not in the table";
  EXPECT_EQ(Names(), without(plain, drawable)) << "have no diagram";
}

TEST(RecordingsTable, HasNoLineTwiceAndNoRecordingIsLeftOver) {
  Names expected;
  for (const Case& drawn : all_cases()) {
    EXPECT_TRUE(expected.insert(in_recordings(drawn)).second) << ::testing::PrintToString(drawn);
  }
  Names found;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(kRecordings)) {
    if (entry.is_regular_file()) found.insert(entry.path());
  }
  EXPECT_EQ(Names(), without(expected, found)) << "are missing";
  EXPECT_EQ(Names(), without(found, expected)) << "are not in the table";
}

TEST(FirstDifference, IsNoneOfEqualRecordings) {
  EXPECT_FALSE(first_difference("move 1 2\nline 1 2 3 4\n", "move 1 2\nline 1 2 3 4\n").has_value());
}

TEST(FirstDifference, TellsTheOperationThatChanged) {
  const auto difference =
      first_difference("move 1 2\nline 1 2 3 4\nmove 5 6\n", "move 1 2\nline 1 2 3 5\nmove 5 7\n");
  ASSERT_TRUE(difference.has_value());
  EXPECT_EQ(2U, difference->operation);
  EXPECT_EQ("line 1 2 3 4", difference->expected);
  EXPECT_EQ("line 1 2 3 5", difference->found);
}

TEST(FirstDifference, TellsAMissingAndASurplusOperation) {
  const auto missing = first_difference("move 1 2\nmove 3 4\n", "move 1 2\n");
  ASSERT_TRUE(missing.has_value());
  EXPECT_EQ(2U, missing->operation);
  EXPECT_EQ("move 3 4", missing->expected);
  EXPECT_EQ("(end)", missing->found);
  const auto surplus = first_difference("move 1 2\n", "move 1 2\nmove 3 4\n");
  ASSERT_TRUE(surplus.has_value());
  EXPECT_EQ("(end)", surplus->expected);
  EXPECT_EQ("move 3 4", surplus->found);
}

TEST(FirstDifference, TellsALineFeedThatIsMissing) {
  EXPECT_TRUE(first_difference("move 1 2\n", "move 1 2").has_value());
}

}  // namespace
}  // namespace golden
