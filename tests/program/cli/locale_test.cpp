// What the program writes is read by other programs: a decimal comma of the user's locale never gets into it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/decimal_comma.h"
#include "support/program.h"

namespace {

using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;

constexpr const char* kComma = "de_DE.UTF-8";

// Runs the program as a user of that locale.
Outcome run_in(const char* locale, const std::vector<std::string>& arguments) {
  setenv("LC_ALL", locale, 1);
  Outcome outcome = run_program(arguments);
  unsetenv("LC_ALL");
  return outcome;
}

class DecimalComma : public testing::Test {
 protected:
  void SetUp() override {
    const tavdtest::DecimalCommaLocale there_is_one;
    database_ = build("C", "c.tavdb");
  }

  std::string build(const char* locale, const std::string& name) const {
    const std::string file = folder_.file(name);
    EXPECT_EQ(run_in(locale, {"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", file}).exit_code, 0);
    return file;
  }

  // The command's standard output, the same in both locales.
  void expect_same(std::vector<std::string> arguments) const {
    const Outcome with_point = run_in("C", arguments);
    const Outcome with_comma = run_in(kComma, arguments);
    EXPECT_EQ(with_point.exit_code, 0) << with_point.err;
    EXPECT_EQ(with_comma.exit_code, 0) << with_comma.err;
    EXPECT_NE(with_point.out, "");
    EXPECT_EQ(with_comma.out, with_point.out);
  }

  // The file that the command writes, the same in both locales.
  void expect_same_file(std::vector<std::string> arguments, const std::string& ending) const {
    std::string files[2];
    for (int i = 0; i < 2; ++i) {
      std::vector<std::string> whole = arguments;
      const std::string file = folder_.file(std::to_string(i) + ending);
      whole.insert(whole.end(), {"-o", file});
      const Outcome outcome = run_in(i == 0 ? "C" : kComma, whole);
      ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
      files[i] = read_file(file);
    }
    EXPECT_NE(files[0], "") << ending;
    EXPECT_TRUE(files[0] == files[1]) << ending;
  }

  Folder folder_;
  std::string database_;
};

TEST_F(DecimalComma, DoesNotChangeADatabaseOfTheCatalogue) {
  EXPECT_TRUE(read_file(build(kComma, "comma.tavdb")) == read_file(database_));
  expect_same_file({"db", "dump", database_}, ".json");
}

TEST_F(DecimalComma, DoesNotChangeCalculations) {
  const std::vector<std::string> plain = {"calc", database_, "DMP",  "QZDA-160",
                                          "--qv", "50.5",    "--dp", "60.25"};
  std::vector<std::string> as_json = plain;
  as_json.emplace_back("--json");
  expect_same(plain);
  expect_same(as_json);
}

TEST_F(DecimalComma, DoesNotChangeSweeps) {
  for (const char* form : {"--csv", "--json"}) {
    expect_same({"sweep", database_, "DMP", "QZDA-160", "--qv", "20.5:90:3.25", "--dp", "60.5", form});
  }
}

TEST_F(DecimalComma, DoesNotChangeDiagrams) {
  for (const char* ending : {".svg", ".png", ".pdf"}) {
    expect_same_file({"diagram", database_, "DMP", "QZDA-160", "--qv", "50.5", "--dp", "60.25"}, ending);
  }
}

}  // namespace
