// `tavd compare`: products side by side.
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
using clitest::run_text;
using clitest::Table;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

struct Compare : testing::Test {
  Compare() { clitest::add_samples(database); }

  std::vector<std::string> command(std::vector<std::string> options) const {
    options.insert(options.begin(), {"compare", database.path()});
    return options;
  }
  // The cells behind the name of a line.
  std::vector<std::string> line(std::vector<std::string> options, const std::string& name) const {
    options.emplace_back("--csv");
    for (const std::string& text : lines_of(run_text(command(options)))) {
      if (!text.starts_with(name + ",")) continue;
      std::vector<std::string> cells = clitest::split_cells(text.substr(name.size() + 1));
      return cells;
    }
    return {};
  }

  tavdtest::Database database;
};

const std::vector<std::string> kBoth = {"ASD", "DAMPER-200", "FIXED-100", "--qv", "100", "--dp", "150"};

TEST_F(Compare, PutsProductsSideBySide) {
  const std::vector<std::string> lines = lines_of(run_text(command(kBoth)));
  EXPECT_THAT(lines.at(0), ContainsRegex("^QUANTITY +UNIT +DAMPER-200 +FIXED-100$"));
  EXPECT_THAT(lines, testing::Contains(ContainsRegex("^Position, stepless +1.71 +-$")));
  EXPECT_THAT(lines, testing::Contains(ContainsRegex("^Lowest pressure +Pa +25.0 +100.0$")));
}

TEST_F(Compare, AsCsvIsTheSameTable) {
  EXPECT_THAT(line(kBoth, "Lowest pressure"), ElementsAre("Pa", "25.0", "100.0"));
  EXPECT_THAT(line(kBoth, "Highest pressure"), ElementsAre("Pa", "400.0", "100.0"));
  EXPECT_THAT(line(kBoth, "Point can be reached"), ElementsAre("", "yes", "no"));
}

TEST_F(Compare, LeavesOutWhatNoneAnswers) {
  EXPECT_THAT(run_text(command(kBoth)), Not(HasSubstr("Throw length")));
  EXPECT_THAT(run_text(command({"ASD", "FIXED-100", "--qv", "100"})), Not(HasSubstr("Sound")));
}

TEST_F(Compare, TellsWhatAFlowWentThrough) {
  EXPECT_THAT(run_text(command({"AEX", "GRILLE-400x200", "--qv", "160l/s"})),
              ContainsRegex("Flow as typed +160 l/s through its size, 400x200 mm\n"));
}

TEST_F(Compare, IsInTheUnitsAskedFor) {
  std::vector<std::string> options = kBoth;
  options.insert(options.end(), {"--units", "m3/h,kPa"});
  EXPECT_THAT(line(options, "Flow"), ElementsAre("", "360 m3/h", "360 m3/h"));
  EXPECT_THAT(line(options, "Highest pressure"), ElementsAre("kPa", "0.4000", "0.1000"));
}

TEST_F(Compare, InJsonIsWhatCalcAnswers) {
  std::vector<std::string> calc = kBoth;
  calc.insert(calc.begin(), {"calc", database.path()});
  EXPECT_EQ(run_json(command(kBoth)), run_json(calc));
  EXPECT_TRUE(run_json(command({"ASD", "FIXED-100", "--qv", "100"})).isArray());
}

TEST_F(Compare, RefusesAProductThatDoesNotExist) {
  EXPECT_THAT(expect_user_error(command({"ASD", "DAMPER-200", "NONE", "--qv", "100"})),
              HasSubstr("no product \"NONE\" of class \"ASD\""));
}

}  // namespace
