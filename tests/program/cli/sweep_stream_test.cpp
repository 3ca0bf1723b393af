// The forms of `tavd sweep` as a stream: JSON, memory, and an output that ends early.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/value.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "support/sanitized.h"
#include "sweep_fixture.h"

namespace {

using clitest::Outcome;
using clitest::run_program;
using clitest::Sweep;
using ::testing::EndsWith;
using ::testing::HasSubstr;

Json::Value parse_json(const std::string& text) {
  Json::Value json;
  std::istringstream stream(text);
  std::string errors;
  EXPECT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), stream, &json, &errors)) << errors;
  return json;
}

// Takes out what a sweep does not repeat at every point. "20" and "20.0" are the same number.
void normalise(Json::Value& json) {
  if (json.isNumeric()) json = json.asDouble();
  if (json.isArray()) {
    for (Json::Value& item : json) normalise(item);
  }
  if (!json.isObject()) return;
  json.removeMember("product");
  json.removeMember("text");
  for (const char* same : {"bands_Hz", "room_damping_dB", "end_reflection"}) json.removeMember(same);
  for (const std::string& name : json.getMemberNames()) normalise(json[name]);
}

TEST_F(Sweep, JsonObjectsAreThoseOfCalcWithoutProductAndTexts) {
  const std::vector<std::vector<std::string>> products = {
      {"ASD", "DAMPER-200"}, {"ASD", "FIXED-100"}, {"FAN", "FAN-315"}, {"AEX", "GRILLE-400x200"}};
  for (const std::vector<std::string>& product : products) {
    Json::Value points =
        parse_json(run({product[0], product[1], "--qv", "30:330:100", "--dp", "60:560:250"}, "--json"));
    ASSERT_TRUE(points.isArray());
    ASSERT_EQ(points.size(), 12u) << product[1];
    for (const Json::ArrayIndex i : {0u, 4u, 11u}) {
      const std::string qv = std::to_string(30 + i / 3 * 100);
      const std::string dp = std::to_string(60 + i % 3 * 250);
      const Outcome calc =
          run_program({"calc", database.path(), product[0], product[1], "--qv", qv, "--dp", dp, "--json"});
      ASSERT_EQ(calc.exit_code, 0) << calc.err;
      Json::Value expected = parse_json(calc.out);
      normalise(expected);
      normalise(points[i]);
      EXPECT_EQ(points[i].toStyledString(), expected.toStyledString())
          << product[1] << " at " << qv << ", " << dp;
    }
  }
}

TEST_F(Sweep, JsonOfOnePointIsAnArray) {
  const Json::Value points = parse_json(run({"ASD", "FIXED-100", "--qv", "100"}, "--json"));
  ASSERT_TRUE(points.isArray());
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(points[0]["pressure_range"]["dp_min_Pa"].asFloat(), 100.0F);
}

struct Usage {
  int exit_code;
  long peak_kb;  // resident memory
  std::size_t bytes, lines;
};

// Runs the program, counts what it writes to standard output, and tells what it took.
Usage measure(const std::vector<std::string>& arguments) {
  std::vector<char*> argv{const_cast<char*>(TAVD_PROGRAM)};
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return {-1, 0, 0, 0};
  const pid_t process = fork();
  if (process == 0) {
    if (dup2(ends[1], STDOUT_FILENO) < 0) _exit(127);
    close(ends[0]);
    close(ends[1]);
    setenv("LSAN_OPTIONS", "print_suppressions=0:suppressions=" TAVD_SOURCE_DIR "/tests/support/leaks.supp",
           1);
    execv(TAVD_PROGRAM, argv.data());
    _exit(127);
  }
  close(ends[1]);
  Usage usage{};
  std::array<char, 65536> chunk;
  for (ssize_t got = 0; (got = read(ends[0], chunk.data(), chunk.size())) > 0;) {
    usage.bytes += static_cast<std::size_t>(got);
    usage.lines += static_cast<std::size_t>(std::count(chunk.data(), chunk.data() + got, '\n'));
  }
  close(ends[0]);
  int status = 0;
  rusage resources{};
  const bool ended = wait4(process, &status, 0, &resources) == process && WIFEXITED(status);
  usage.exit_code = ended ? WEXITSTATUS(status) : -1;
  usage.peak_kb = resources.ru_maxrss;
  return usage;
}

constexpr int kManyPoints = often(1'000'000);
constexpr int kPressures = kManyPoints / 1000;  // at each of a thousand flows
const std::vector<std::string> kManyPointsGrid = {
    "ASD", "DAMPER-200", "--qv", "20:119.9:0.1", "--dp", "10:" + std::to_string(9 + kPressures) + ":1"};

// Collected in memory a million points would take more than 100 MB as text, and 4 MB for each number that is
// calculated.
TEST_F(Sweep, ManyPointsTakeNoMoreMemoryThanTenThousand) {
  constexpr long kAllowedGrowthKb = 3 * 1024;
  for (const char* form : {"--csv", "--json"}) {
    const std::size_t beside_rows = std::string(form) == "--csv" ? 1 : 2;  // lines
    const Usage small =
        measure(command({"ASD", "DAMPER-200", "--qv", "20:29.9:0.1", "--dp", "10:109:1"}, form));
    const Usage large = measure(command(kManyPointsGrid, form));
    ASSERT_EQ(small.exit_code, 0);
    ASSERT_EQ(large.exit_code, 0);
    EXPECT_EQ(small.lines, 10'000 + beside_rows);
    EXPECT_EQ(large.lines, kManyPoints + beside_rows);
    EXPECT_GT(large.bytes, 100u * kManyPoints) << form;
    EXPECT_LT(large.peak_kb, small.peak_kb + kAllowedGrowthKb) << form;
  }
}

TEST_F(Sweep, ShowsOnATerminalHowFarItIsAndWipesThat) {
  const clitest::Terminal terminal =
      clitest::run_on_terminal(command(kManyPointsGrid, "--csv"), "", "/dev/null");
  EXPECT_EQ(terminal.exit_code, 0);
  EXPECT_THAT(terminal.shown, HasSubstr("\rCalculating [##########"));
  EXPECT_THAT(terminal.shown, HasSubstr("..] "));
  EXPECT_THAT(terminal.shown, HasSubstr(" of " + std::to_string(kManyPoints) + "\x1b[K"));
  EXPECT_THAT(terminal.shown, EndsWith("\x1b[K\r\x1b[K"));
}

TEST_F(Sweep, ShowsNothingOfThatWhereErrorsGoToAFile) {
  const Outcome outcome = clitest::run_program_into("/dev/null", command(kManyPointsGrid, "--csv"));
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.err, "");
}

TEST_F(Sweep, EndsAsSoonAsItsOutputCannotBeWritten) {
  const Outcome outcome = clitest::run_program_into(
      "/dev/full", command({"ASD", "DAMPER-200", "--qv", "1:100000:1", "--dp", "1:10000:1"}, "--csv"));
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(outcome.err, "tavd: cannot write to standard output: No space left on device\n");
}

}  // namespace
