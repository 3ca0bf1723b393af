// What a diagram does not mark of what it was asked to mark: told on standard error, and not claimed by the
// picture.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samples.h"
#include "support/program.h"

namespace {

using clitest::Outcome;
using clitest::run_program;
using ::testing::HasSubstr;
using ::testing::Not;

struct Marks : testing::Test {
  // DAMPER-200 and FIXED-100: 20 to 200 l/s, 10 to 500 Pa; FAN-315: 0 to 400 l/s, 0 to 500 Pa.
  Marks() {
    clitest::add_samples(database);
    // 100 to 1000 l/s; the throw axis goes from 1 m to 11 m, the line to 1.1 m.
    tavdtest::Record("ASD", "TERMINAL")
        .header(110, 160, 0, 100, 1000, 10, 500)
        .floats(1651, {100, 50})
        .floats(1659, {100, 1})
        .save(database.handle());
    // The axis is made of the first row, 10 m at most; the line rises faster, to 1000 m.
    tavdtest::Record("ASD", "STEEP")
        .header(110, 160, 0, 100, 1000, 10, 500)
        .floats(1651, {100, 50})
        .floats(1659, {100, 1, 200, 8})
        .save(database.handle());
  }

  Outcome draw(const std::vector<std::string>& arguments) const {
    std::vector<std::string> all = arguments;
    all.insert(all.begin() + 1, database.path());
    all.insert(all.end(), {"-o", "-", "--format", "svg"});
    Outcome outcome = run_program(all);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("</svg>"));
    return outcome;
  }
  Outcome flow(const char* class_id, const char* id, const std::vector<std::string>& options) const {
    std::vector<std::string> all = {"diagram", class_id, id};
    all.insert(all.end(), options.begin(), options.end());
    return draw(all);
  }
  Outcome throw_length(const char* id, const char* qv) const {
    return draw({"throw", "ASD", id, "--qv", qv});
  }

  tavdtest::Database database;
};

void expect_unmarked(const Outcome& outcome, const std::string& line) {
  EXPECT_EQ(outcome.err, "tavd: " + line + "\n");
  EXPECT_THAT(outcome.out, Not(HasSubstr("Marked")));
}

void expect_marked(const Outcome& outcome, const std::string& claim) {
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(outcome.out, HasSubstr("Marked: " + claim + ".</desc>"));
}

TEST_F(Marks, PointInsideTheAxesIsMarkedAndToldSo) {
  expect_marked(flow("ASD", "DAMPER-200", {"--qv", "50", "--dp", "60"}), "50 l/s and 60 Pa");
  expect_marked(flow("ASD", "DAMPER-200", {"--qv", "50"}), "50 l/s");
}

TEST_F(Marks, FanHasNone) {
  expect_unmarked(flow("FAN", "FAN-315", {"--qv", "100", "--dp", "200"}),
                  "100 l/s and 200 Pa not marked: the diagram of a fan shows its curve alone");
}

TEST_F(Marks, FlowOutsideTheAxisHasNone) {
  for (const char* qv : {"20", "200", "300"}) {
    expect_unmarked(flow("ASD", "FIXED-100", {"--qv", qv, "--dp", "60"}),
                    std::string(qv) + " l/s and 60 Pa not marked: the flow axis is 20 - 200 l/s");
  }
}

TEST_F(Marks, PressureOutsideTheAxisLeavesTheFlowAlone) {
  const Outcome outcome = flow("ASD", "FIXED-100", {"--qv", "50", "--dp", "600"});
  EXPECT_EQ(outcome.err,
            "tavd: 600 Pa not marked, the line shows 50 l/s alone: the pressure axis is 10 - 500 Pa\n");
  EXPECT_THAT(outcome.out, HasSubstr("Marked: 50 l/s.</desc>"));
}

TEST_F(Marks, AreTheSameInOtherUnits) {
  expect_marked(flow("ASD", "FIXED-100", {"--qv", "50", "--dp", "60", "--units", "m3/h,kPa"}),
                "50 l/s and 60 Pa");
}

TEST_F(Marks, VelocityIsNamedAsOne) {
  expect_unmarked(flow("AEX", "GRILLE-400x200", {"--qv", "20"}),
                  "20 m/s not marked: the flow axis is 1 - 10 m/s");
}

TEST_F(Marks, LimitOutsideTheAxisIsTold) {
  EXPECT_EQ(flow("ASD", "FIXED-100", {"--limits", "40,80"}).err, "");
  EXPECT_EQ(flow("ASD", "FIXED-100", {"--limits", "10,80"}).err,
            "tavd: limit 10 l/s not marked: the flow axis is 20 - 200 l/s\n");
  EXPECT_EQ(flow("ASD", "FIXED-100", {"--limits", "40,800"}).err,
            "tavd: limit 800 l/s not marked: the flow axis is 20 - 200 l/s\n");
  EXPECT_EQ(flow("ASD", "FIXED-100", {"--limits", "10,800"}).err,
            "tavd: limits 10 and 800 l/s not marked: the flow axis is 20 - 200 l/s\n");
  EXPECT_EQ(flow("FAN", "FAN-315", {"--limits", "100,200"}).err,
            "tavd: limits 100 and 200 l/s not marked: the diagram of a fan shows its curve alone\n");
}

TEST_F(Marks, ThrowInsideTheChartIsMarked) {
  expect_marked(throw_length("TERMINAL", "300"), "300 l/s");
}

TEST_F(Marks, ThrowOutsideTheFlowAxisIsNot) {
  expect_unmarked(throw_length("TERMINAL", "99"), "99 l/s not marked: the flow axis is 100 - 1000 l/s");
}

TEST_F(Marks, ThrowBeyondItsAxisLeavesTheFlowAlone) {
  const Outcome outcome = throw_length("STEEP", "900");
  EXPECT_EQ(outcome.err,
            "tavd: throw length not marked, the line shows 900 l/s alone: it is beyond the axis\n");
  EXPECT_THAT(outcome.out, HasSubstr("Marked: 900 l/s.</desc>"));
}

}  // namespace
