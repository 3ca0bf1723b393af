#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "program.h"

namespace {

using clitest::expect_user_error;
using clitest::Outcome;
using clitest::run_program;
using ::testing::HasSubstr;

TEST(Help, ListsTheCommands) {
  const Outcome outcome = run_program({"--help"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.err, "");
  for (const char* command : {"list", "calc", "sweep", "diagram", "throw", "db"})
    EXPECT_THAT(outcome.out, HasSubstr(command));
}

TEST(Help, EveryCommandHasAnExample) {
  for (const char* command : {"list", "calc", "sweep", "diagram", "throw"}) {
    const Outcome outcome = run_program({command, "--help"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_THAT(outcome.out, HasSubstr("Example: tavd " + std::string(command) + " ")) << command;
  }
}

// The arguments of the example in a command's help.
std::vector<std::string> example_of(const std::string& command) {
  const std::string start = "Example: tavd ";
  std::vector<std::string> words;
  for (const std::string& line : clitest::lines_of(run_program({command, "--help"}).out)) {
    if (line.rfind(start, 0) != 0) continue;
    std::istringstream stream(line.substr(start.size()));
    for (std::string word; stream >> word;) words.push_back(word);
  }
  return words;
}

TEST(Help, ExamplesWorkWithTheSampleCatalogue) {
  const clitest::Folder folder;
  const std::string database = folder.file("catalogue.tavdb");
  const Outcome built = run_program({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", database});
  ASSERT_EQ(built.exit_code, 0) << built.err;
  for (const char* command : {"list", "calc", "sweep", "diagram", "throw"}) {
    std::vector<std::string> example = example_of(command);
    ASSERT_GT(example.size(), 2u) << command;
    std::replace(example.begin(), example.end(), std::string("catalogue.tavdb"), database);
    for (const char* picture : {"damper.svg", "throw.svg"}) {
      std::replace(example.begin(), example.end(), std::string(picture), folder.file(picture));
    }
    const Outcome outcome = run_program(example);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
  }
  EXPECT_THAT(folder.names(), testing::ElementsAre("catalogue.tavdb", "damper.svg", "throw.svg"));
}

TEST(Version, IsTold) {
  const Outcome outcome = run_program({"--version"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.out, "tavd 1.90.0\n");
}

TEST(Arguments, NoCommandIsAnError) {
  EXPECT_THAT(expect_user_error({}), HasSubstr("tavd --help tells more"));
}

TEST(Arguments, UnknownCommandIsNamed) {
  EXPECT_THAT(expect_user_error({"paint"}),
              HasSubstr("no command \"paint\"; there are list, calc, sweep, diagram, throw, db "));
}

TEST(Arguments, UnknownOptionIsNamed) {
  EXPECT_THAT(expect_user_error({"list", "x.tavdb", "--colour"}), HasSubstr("--colour"));
}

TEST(Arguments, MissingArgumentIsNamed) {
  EXPECT_THAT(expect_user_error({"list"}), HasSubstr("DB is required"));
  EXPECT_THAT(expect_user_error({"calc", "x.tavdb", "--qv", "3"}), HasSubstr("CLASS is required"));
}

}  // namespace
