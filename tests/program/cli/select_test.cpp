// `tavd select` for one duty.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "samples.h"
#include "support/json.h"
#include "support/program.h"
#include "sweep_fixture.h"

namespace {

using clitest::expect_user_error;
using clitest::lines_of;
using clitest::run_json;
using clitest::run_program;
using clitest::run_text;
using clitest::Table;
using ::testing::Contains;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Select : testing::Test {
  Select() { clitest::add_samples(database); }

  std::vector<std::string> command(std::vector<std::string> options) const {
    options.insert(options.begin(), {"select", database.path()});
    return options;
  }
  std::vector<std::string> lines(const std::vector<std::string>& options) const {
    return lines_of(run_text(command(options)));
  }
  Table csv(std::vector<std::string> options) const {
    options.emplace_back("--csv");
    return Table(run_text(command(options)));
  }
  std::vector<std::string> ids(const std::vector<std::string>& options) const {
    const Table table = csv(options);
    std::vector<std::string> ids;
    for (std::size_t i = 0; i < table.rows.size(); ++i) ids.push_back(table.cell(i, "id"));
    return ids;
  }

  tavdtest::Database database;
};

TEST_F(Select, ShowsWhatFitsTheBestFirst) {
  const std::vector<std::string> shown =
      lines({"--qv", "100", "--dp", "100", "--rank", "pressure", "--class", "ASD"});
  EXPECT_EQ(shown.at(0), "100 l/s, 100 Pa: 2 of 2 products fit");
  EXPECT_THAT(shown.at(1),
              ContainsRegex("^RANK  CLASS  ID  .* POSITION  PRESSURE Pa  LOWEST Pa  ROOM dB\\(A\\)"));
  EXPECT_THAT(shown.at(2), ContainsRegex("^   1  ASD    DAMPER-200 .* 2\\.00 +100 +25 +"));
  EXPECT_THAT(shown.at(3), ContainsRegex("^   2  ASD    FIXED-100 .* 100 +100 +"));
  EXPECT_EQ(shown.size(), 4U);
}

TEST_F(Select, HasTheNumbersOfCalc) {
  const Table selected = csv({"--qv", "100", "--dp", "100", "--class", "ASD", "--room-damping", "7"});
  const Table calculated(run_text({"calc", database.path(), "ASD", "DAMPER-200", "--qv", "100", "--dp", "100",
                                   "--room-damping", "7", "--csv"}));
  EXPECT_EQ(selected.cell(0, "id"), "DAMPER-200");
  EXPECT_EQ(selected.cell(0, "fitting"), "2");
  EXPECT_EQ(selected.cell(1, "rank"), "2");
  EXPECT_EQ(selected.cell(0, "position_stepless"), calculated.cell(0, "position_stepless"));
  EXPECT_EQ(selected.cell(0, "position_stepped"), calculated.cell(0, "position_stepped"));
  EXPECT_EQ(selected.cell(0, "dp_min_Pa"), calculated.cell(0, "dp_min_Pa"));
  EXPECT_EQ(selected.cell(0, "room_level_dBA"), calculated.cell(0, "room_level_dBA"));
  EXPECT_EQ(selected.cell(0, "lw_1000Hz_dB"), calculated.cell(0, "lw_1000Hz_dB"));
}

TEST_F(Select, TellsWhyTheOthersDoNotFit) {
  const std::vector<std::string> shown = lines({"--qv", "150", "--dp", "24", "--explain"});
  EXPECT_THAT(shown, Contains("Why not the others"));
  EXPECT_THAT(shown, Contains("ASD  DAMPER-200  it takes more pressure than is available"));
  EXPECT_THAT(shown, Contains("FAN  FAN-315     the flow is above its curve, or the pressure below it"));
  const Json::Value json = run_json(command({"--qv", "150", "--dp", "24", "--explain", "--json"}));
  EXPECT_EQ(json["products"].asInt(), 4);
  EXPECT_EQ(json["fitting"].asInt(), 1);
  EXPECT_EQ(json["hits"][0]["id"].asString(), "GRILLE-400x200");
  EXPECT_FLOAT_EQ(json["hits"][0]["dp_Pa"].asFloat(), 21.972656F);  // 100 Pa at 4 m/s, here 1.875 m/s
  ASSERT_EQ(json["rejected"].size(), 3U);
  EXPECT_EQ(json["rejected"][0]["id"].asString(), "DAMPER-200");
  EXPECT_EQ(json["rejected"][0]["text"].asString(), "it takes more pressure than is available");
}

TEST_F(Select, SaysThatNothingFitsAndWhatHinders) {
  const std::vector<std::string> shown =
      lines({"--qv", "100", "--dp", "100", "--class", "ASD", "--throw", "2:4"});
  EXPECT_THAT(shown, ElementsAre("100 l/s, 100 Pa, throw 2 to 4 m: none of 2 products fit",
                                 "2  it has no throw line"));
  const Table table = csv({"--qv", "100", "--dp", "100", "--class", "ASD", "--throw", "2:4"});
  ASSERT_EQ(table.rows.size(), 1U);
  EXPECT_EQ(table.cell(0, "fitting"), "0");
  EXPECT_EQ(table.cell(0, "rank"), "");
  EXPECT_EQ(table.cell(0, "why_not"), "it has no throw line: 2 products");
}

TEST_F(Select, AllowsAnswersToBeUnknown) {
  const std::vector<std::string> asked = {"--qv", "100", "--dp", "100", "--class", "ASD", "--throw", ":4"};
  std::vector<std::string> allowed = asked;
  allowed.insert(allowed.end(), {"--allow-unknown", "throw,sound"});
  const Table table = csv(allowed);
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_THAT(table.cell(0, "unknown"), HasSubstr("throw"));
}

TEST_F(Select, NarrowsDownByClassAndSize) {
  const std::vector<std::string> point = {"--qv", "100", "--dp", "100"};
  const auto with = [&](std::vector<std::string> options) {
    options.insert(options.begin(), point.begin(), point.end());
    return ids(options);
  };
  EXPECT_EQ(with({"--size", "200", "--class", "ASD"}), std::vector<std::string>{"DAMPER-200"});
  EXPECT_EQ(with({"--size", "300x100:500x300", "--class", "ASD"}), std::vector<std::string>{"FIXED-100"});
  EXPECT_EQ(with({"--top", "1", "--rank", "size", "--class", "ASD"}), std::vector<std::string>{"DAMPER-200"});
  EXPECT_EQ(with({"--class", "ASD", "--class", "FAN", "--rank", "pressure"}).size(), 3U);
}

// The window's lower end is for what has no setting.
TEST_F(Select, TakesAWindowOfPressures) {
  EXPECT_THAT(ids({"--qv", "100", "--dp", "90:120", "--rank", "pressure"}), Contains("FIXED-100"));
  EXPECT_THAT(ids({"--qv", "100", "--dp", "0.11:0.12kPa", "--rank", "pressure"}),
              testing::Not(Contains("FIXED-100")));
}

TEST_F(Select, TriesTheValuesOfAParameter) {
  const Table all = csv({"--qv", "100", "--dp", "300", "--class", "ASD", "--param", "colour=*", "--param",
                         "blade=200", "--rank", "pressure"});
  ASSERT_EQ(all.rows.size(), 2U);
  for (std::size_t i = 0; i < all.rows.size(); ++i) {
    EXPECT_THAT(all.cell(i, "parameters"),
                HasSubstr(all.cell(i, "id") == "FIXED-100" ? "colour=" : "blade=200"));
  }
}

TEST_F(Select, TakesAndShowsUnits) {
  const std::vector<std::string> shown =
      lines({"--qv", "360m3/h", "--dp", "0.1kPa", "--units", "m3/h,kPa", "--class", "ASD"});
  EXPECT_EQ(shown.at(0), "360 m3/h, 0.1 kPa: 2 of 2 products fit");
  EXPECT_THAT(shown.at(1), HasSubstr("PRESSURE kPa"));
  EXPECT_EQ(ids({"--qv", "360m3/h", "--dp", "0.1kPa"}), ids({"--qv", "100", "--dp", "100"}));
}

TEST_F(Select, RefusesWhatIsNotAsExpected) {
  struct Case {
    std::vector<std::string> options;
    const char* says;
  };
  const Case cases[] = {
      {{"--dp", "70"}, "--qv is required"},
      {{"--qv", "80"}, "--dp is required"},
      {{"--qv", "-80", "--dp", "70"}, "--qv is \"-80\", expected a number above 0"},
      {{"--qv", "nan", "--dp", "70"}, "--qv is \"nan\", expected a number above 0"},
      {{"--qv", "5m/s", "--dp", "70"}, "expected a flow, in one of the units l/s"},
      {{"--qv", "80", "--dp", "70:40"}, "--dp is \"70:40\", expected the lower end first"},
      {{"--qv", "80", "--dp", "70", "--throw", "4:2"}, "--throw is \"4:2\", expected the lower end first"},
      {{"--qv", "80", "--dp", "70", "--throw", "4"}, "expected FROM:TO in m such as 2:4"},
      {{"--qv", "80", "--dp", "70", "--size", "160:125"}, "expected the lower end first"},
      {{"--qv", "80", "--dp", "70", "--size", "160:125x80"}, "expected two sizes of one shape"},
      {{"--qv", "80", "--dp", "70", "--class", "XYZ"}, "no class \"XYZ\""},
      {{"--qv", "80", "--dp", "70", "--class", "TVM"}, "has no products with flow data"},
      {{"--qv", "80", "--dp", "70", "--rank", "price"}, "expected one of sound, pressure, size, fit"},
      {{"--qv", "80", "--dp", "70", "--allow-unknown", "all"},
       "expected one of size, pressure, sound, throw"},
      {{"--qv", "80", "--dp", "70", "--top", "0"}, "expected a whole number from 1 to 1000"},
      {{"--qv", "80", "--dp", "70", "--max-lw", "40,40"}, "expected 8 levels in dB"},
      {{"--qv", "80", "--dp", "70", "--param", "plate"}, "expected NAME=VALUE"},
      {{"--qv", "80", "--dp", "70", "--param", "plate=1"},
       "has a parameter \"plate\"; there are blade, colour"},
      {{"--qv", "80", "--dp", "70", "-o", "x.csv"}, "-o, --skip-bad and --threads are for --duties"},
  };
  for (const Case& one : cases) EXPECT_THAT(expect_user_error(command(one.options)), HasSubstr(one.says));
}

}  // namespace
