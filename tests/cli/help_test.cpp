#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
  for (const char* command : {"list", "calc", "diagram", "db"}) EXPECT_THAT(outcome.out, HasSubstr(command));
}

TEST(Help, EveryCommandHasAnExample) {
  for (const char* command : {"list", "calc", "diagram"}) {
    const Outcome outcome = run_program({command, "--help"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_THAT(outcome.out, HasSubstr("Example: tavd " + std::string(command) + " ")) << command;
  }
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
              HasSubstr("no command \"paint\"; there are list, calc, diagram, db "));
}

TEST(Arguments, UnknownOptionIsNamed) {
  EXPECT_THAT(expect_user_error({"list", "x.tavdb", "--colour"}), HasSubstr("--colour"));
}

TEST(Arguments, MissingArgumentIsNamed) {
  EXPECT_THAT(expect_user_error({"list"}), HasSubstr("DB is required"));
  EXPECT_THAT(expect_user_error({"calc", "x.tavdb", "--qv", "3"}), HasSubstr("CLASS is required"));
}

}  // namespace
