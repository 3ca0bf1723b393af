// `tavd db check` on a database with nothing but its file header, to be filled with faults.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/database.h"
#include "support/json.h"
#include "support/program.h"

namespace clitest {

inline constexpr int kFoundSomething = 3;  // exit code

struct Check : testing::Test {
  Check() { tavdtest::Record("000", "FILEHEADER").words(1049, {0}).save(database.handle()); }

  Outcome run(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"db", "check", database.path()});
    return run_program(options);
  }
  // The findings, a line each; the exit code fits their number.
  std::vector<std::string> findings() const {
    const Outcome outcome = run();
    EXPECT_EQ(outcome.err, "");
    std::vector<std::string> lines = lines_of(outcome.out);
    if (lines.empty()) {
      ADD_FAILURE() << "no summary";
      return lines;
    }
    const std::string count = lines.size() == 1 ? "no" : std::to_string(lines.size() - 1);
    EXPECT_EQ(lines.back().compare(0, count.size() + 9, count + " finding" + (lines.size() == 2 ? " " : "s")),
              0)
        << lines.back();
    EXPECT_EQ(outcome.exit_code, lines.size() == 1 ? 0 : kFoundSomething);
    lines.pop_back();
    return lines;
  }
  // What is found in one product "TST X" with good limits and these attributes beside.
  template <typename Fill>
  std::vector<std::string> found(std::int16_t kind, Fill fill) const {
    tavdtest::Record record("TST", "X");
    record.header(static_cast<std::int16_t>(kind + 100), 100, 0, 10, 100, 5, 500);
    fill(record);
    record.save(database.handle());
    std::vector<std::string> lines = findings();
    for (std::string& line : lines) {
      EXPECT_EQ(line.compare(0, 7, "TST X: "), 0) << line;
      line.erase(0, 7);
    }
    return lines;
  }

  tavdtest::Database database;
};

}  // namespace clitest
