#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::Outcome;
using clitest::run_program;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// All but those of `tavd db`, which have commands of their own.
constexpr const char* kCommands[] = {"list",  "calc",    "sweep",   "compare", "diagram",
                                     "throw", "show",    "family",  "code",    "find-attribute",
                                     "copy",  "picture", "gallery", "report",  "delete"};

TEST(Help, ListsTheCommands) {
  const Outcome outcome = run_program({"--help"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.err, "");
  for (const char* command : kCommands) EXPECT_THAT(outcome.out, HasSubstr(command));
  EXPECT_THAT(outcome.out, HasSubstr("  db "));
}

TEST(Help, EveryCommandHasAnExample) {
  for (const char* command : kCommands) {
    const Outcome outcome = run_program({command, "--help"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_THAT(outcome.out, HasSubstr("Example: tavd " + std::string(command) + " ")) << command;
  }
}

// A shell looks for files where a "*" stands without quotes.
TEST(Help, PatternsInExamplesStandInQuotes) {
  for (const char* command : kCommands) {
    std::istringstream words(run_program({command, "--help"}).out);
    for (std::string word; words >> word;) {
      if (word.find('*') == std::string::npos) continue;
      EXPECT_THAT(word, testing::MatchesRegex("'[^']*'[,;]?")) << command;
    }
  }
}

// The arguments of the example in a command's help.
std::vector<std::string> example_of(const std::string& command) {
  const std::string start = "Example: tavd ";
  std::vector<std::string> words;
  for (const std::string& line : clitest::lines_of(run_program({command, "--help"}).out)) {
    if (line.rfind(start, 0) != 0) continue;
    std::istringstream stream(line.substr(start.size()));
    for (std::string word; stream >> word;) {
      std::erase(word, '\'');  // which a shell takes away
      words.push_back(word);
    }
  }
  return words;
}

TEST(Help, ExamplesWorkWithTheSampleCatalogue) {
  const clitest::Folder folder;
  const std::string database = folder.file("catalogue.tavdb");
  const Outcome built = run_program({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", database});
  ASSERT_EQ(built.exit_code, 0) << built.err;
  for (const char* command : kCommands) {
    std::vector<std::string> example = example_of(command);
    ASSERT_GT(example.size(), 2u) << command;
    std::replace(example.begin(), example.end(), std::string("catalogue.tavdb"), database);
    for (const char* file : {"damper.svg", "throw.svg", "dampers.tavdb", "gallery", "sheet.pdf"}) {
      std::replace(example.begin() + 1, example.end(), std::string(file), folder.file(file));
    }
    const Outcome outcome = run_program(example);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
  }
  EXPECT_THAT(folder.names(), testing::ElementsAre("catalogue.tavdb", "damper.svg", "dampers.tavdb",
                                                   "gallery", "sheet.pdf", "throw.svg"));
}

TEST(Version, IsTold) {
  const Outcome outcome = run_program({"--version"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.out, "tavd 1.90.0\n");
}

TEST(Help, ComesWithoutAnyCommand) {
  const Outcome outcome = run_program({});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, run_program({"--help"}).out);
}

TEST(Help, IsACommandToo) {
  EXPECT_EQ(run_program({"help"}).out, run_program({"--help"}).out);
  EXPECT_EQ(run_program({"help", "calc"}).out, run_program({"calc", "--help"}).out);
  EXPECT_EQ(run_program({"help", "db", "build"}).out, run_program({"db", "build", "--help"}).out);
  EXPECT_EQ(run_program({"help", "calc"}).exit_code, 0);
}

TEST(Help, OfAnUnknownCommandIsAnError) {
  EXPECT_THAT(expect_user_error({"help", "paint"}),
              HasSubstr("no command \"paint\"; there are list, calc, "));
}

// What bash completes behind these words, the last of which is being written.
std::vector<std::string> completed(const std::vector<std::string>& words) {
  const clitest::Folder folder;
  const std::string script = folder.file("completion");
  std::ofstream(script) << run_program({"completion", "bash"}).out;
  std::string command =
      "source '" + script + "'; COMP_CWORD=" + std::to_string(words.size()) + "; COMP_WORDS=(tavd";
  for (const std::string& word : words) command += " '" + word + "'";
  command += "); _tavd; printf '%s\\n' \"${COMPREPLY[@]}\"";
  std::ofstream(folder.file("run")) << command;
  const std::string said = folder.file("said");
  EXPECT_EQ(std::system(("bash -u '" + folder.file("run") + "' >'" + said + "'").c_str()), 0);
  return clitest::lines_of(clitest::read_file(said));
}

TEST(Completion, OffersCommands) {
  EXPECT_THAT(completed({"ca"}), ElementsAre("calc"));
  EXPECT_THAT(completed({""}), testing::IsSupersetOf({"list", "calc", "db", "completion", "help"}));
  EXPECT_THAT(completed({"help", "swe"}), ElementsAre("sweep"));
}

TEST(Completion, OffersCommandsInsideACommand) {
  EXPECT_THAT(completed({"db", ""}), testing::IsSupersetOf({"build", "dump", "check", "synth"}));
  EXPECT_THAT(completed({"db", "bu"}), ElementsAre("build"));
}

TEST(Completion, OffersOptionsOfTheCommand) {
  EXPECT_THAT(completed({"calc", "x.tavdb", "DMP", "--q"}), ElementsAre("--qv"));
  EXPECT_THAT(completed({"db", "build", "--out"}), ElementsAre("--output"));
  EXPECT_THAT(completed({"--ver"}), ElementsAre("--version"));
}

// An empty answer: bash offers files then.
TEST(Completion, LeavesFilesToTheShell) {
  EXPECT_THAT(completed({"calc", ""}), ElementsAre(""));
  EXPECT_THAT(completed({"db", "build", ""}), ElementsAre(""));
}

TEST(Completion, IsOfAShellThatItKnows) {
  EXPECT_THAT(expect_user_error({"completion", "fish"}), HasSubstr("bash"));
}

TEST(Arguments, UnknownCommandIsNamed) {
  const std::string error = expect_user_error({"paint"});
  EXPECT_THAT(error, HasSubstr("no command \"paint\"; there are list, calc, "));
  for (const char* command : kCommands) EXPECT_THAT(error, HasSubstr(" " + std::string(command) + ","));
}

TEST(Arguments, UnknownOptionIsNamed) {
  EXPECT_THAT(expect_user_error({"list", "x.tavdb", "--colour"}), HasSubstr("--colour"));
}

TEST(Arguments, MissingArgumentIsNamed) {
  EXPECT_THAT(expect_user_error({"list"}), HasSubstr("DB is required"));
  EXPECT_THAT(expect_user_error({"calc", "x.tavdb", "--qv", "3"}), HasSubstr("CLASS is required"));
}

}  // namespace
