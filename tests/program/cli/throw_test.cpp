#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "support/database.h"
#include "support/program.h"
#include "tavd/flowdata.h"

namespace {

using clitest::expect_user_error;
using clitest::Folder;
using clitest::lines_of;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using tavdtest::Record;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
constexpr int kCode = 1562;         // product code for all markets, UTF-8
constexpr int kCodeFinland = 9500;  // windows-1252

ParL2Point throw_row(const char (&value)[7], float qv, float L2) {
  ParL2Point row{};
  std::memcpy(row.value, value, sizeof row.value);
  row.qv = qv;
  row.L2 = L2;
  return row;
}

ParEntry factor_row(const char (&value)[7], float factor) {
  ParEntry row{};
  std::memcpy(row.value, value, sizeof row.value);
  row.factor = factor;
  return row;
}

struct Throw : testing::Test {
  // TERMINAL: 1 m at 100 l/s to 10 m at 1000 l/s, by its parameter "grille" twice as much. VANES: lines for
  // the values 10 (2 m to 9.5 m) and 20 (1.5 m to 4 m). Both from 100 to 1000 l/s.
  Throw() {
    Record("ASD", "TERMINAL")
        .header(110, 0, 0, 100, 1000, 10, 500)
        .rows<QvL2Point>(1659, {{100, 1}})
        .text(1514, "grille")
        .rows<ParEntry>(1661, {factor_row("none  ", 1), factor_row("wide  ", 2)})
        .text(kCode, "Terminal \xC3\xA4")
        .text(kCodeFinland, "P\xE4\xE4telaite")
        .save(database.handle());
    Record("ASD", "VANES")
        .header(110, 0, 0, 100, 1000, 10, 500)
        .rows<ParL2Point>(1660, {throw_row("10    ", 1000, 9.5F), throw_row("10    ", 100, 2),
                                 throw_row("20    ", 1000, 4), throw_row("20    ", 100, 1.5F)})
        .text(1514, "a,b")
        .rows<ParEntry>(1661, {factor_row("1     ", 1), factor_row("2     ", 2)})
        .rows<ParEntry>(1662, {factor_row("1     ", 1), factor_row("2     ", 3)})
        .save(database.handle());
    Record("ASD", "MUTE").header(110, 0, 0, 100, 1000, 10, 500).save(database.handle());
    Record("ASD", "LIMITS")
        .header(110, 0, 0, 100, 100, 10, 500)
        .rows<QvL2Point>(1659, {{100, 1}})
        .save(database.handle());
    Record("ASD", "MODEL").text(kCode, "Model").save(database.handle());
    Record("000", "FILEHEADER").words(1049, {0}).save(database.handle());
  }

  std::vector<std::string> command(const char* id, const std::string& output,
                                   const std::vector<std::string>& options) const {
    std::vector<std::string> all{"throw", database.path(), "ASD", id, "-o", output};
    all.insert(all.end(), options.begin(), options.end());
    return all;
  }
  // Draws into a file of the folder, quietly, and returns the file's bytes.
  std::string draw(const char* id, const std::vector<std::string>& options,
                   const std::string& name = "recording.txt") const {
    const Outcome outcome = run_program(command(id, folder.file(name), options));
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "");
    return read_file(folder.file(name));
  }
  // Refused, with nothing left in the folder.
  std::string fail(const char* id, const std::vector<std::string>& options,
                   const std::string& name = "x.png") const {
    std::string error = expect_user_error(command(id, folder.file(name), options));
    EXPECT_THAT(folder.names(), IsEmpty());
    return error;
  }

  // The throw line of a recording, behind its red pen: x1, y1, x2, y2.
  static std::vector<int> throw_line(const std::string& recording) {
    bool behind_pen = false;
    for (const std::string& line : lines_of(recording)) {
      behind_pen = behind_pen || line == "select pen solid width=20 colour=#FF0000";
      std::vector<int> ends(4);
      if (behind_pen &&
          std::sscanf(line.c_str(), "line %d %d %d %d", &ends[0], &ends[1], &ends[2], &ends[3]) == 4) {
        return ends;
      }
    }
    return {};
  }

  tavdtest::Database database;
  Folder folder;
};

// The throw axis of VANES runs from 1 m to 10 m, from 8045 up to 1562.
TEST_F(Throw, ValueSelectsTheLineAndStandsBesideIt) {
  const std::string ten = draw("VANES", {"--qv", "300", "--value", "10"});
  const std::string twenty = draw("VANES", {"--qv", "300", "--value", "20"});
  EXPECT_EQ(throw_line(ten)[1], 6093);     // 2 m
  EXPECT_EQ(throw_line(twenty)[1], 6903);  // 1.5 m
  EXPECT_THAT(ten, HasSubstr("text 9050 1906 \"10\"\n"));
  EXPECT_THAT(twenty, HasSubstr(" \"20\"\n"));
}

TEST_F(Throw, WithoutAValueTheLineOfTheFirstIsDrawnUnlabelled) {
  const std::string recording = draw("VANES", {"--qv", "300"});
  EXPECT_EQ(throw_line(recording)[1], 6093);
  EXPECT_THAT(recording, Not(HasSubstr("align left+bottom")));
}

TEST_F(Throw, ValueBetweenTwoIsInterpolated) {
  const int start = throw_line(draw("VANES", {"--qv", "300", "--value", "15"}))[1];
  EXPECT_GT(start, 6093);
  EXPECT_LT(start, 6903);
}

TEST_F(Throw, ValueAndBothParametersHoldTogether) {
  // Factors 2 and 3: the chart is from 9 m to 58 m, and the line from 9 m.
  const std::string recording =
      draw("VANES", {"--qv", "300", "--value", "20", "--param", "a=2", "--param", "b=2"});
  EXPECT_THAT(recording, HasSubstr("\"20\"\n"));
  EXPECT_EQ(throw_line(recording)[1], 8045);
  EXPECT_NE(throw_line(recording), throw_line(draw("VANES", {"--qv", "300", "--value", "20"})));
}

TEST_F(Throw, FlowIsMarkedWithCirclesOnlyInsideTheLimits) {
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}), HasSubstr("\nellipse "));
  const std::string file = folder.file("outside.txt");
  ASSERT_EQ(run_program(command("TERMINAL", file, {"--qv", "99"})).exit_code, 0);
  EXPECT_THAT(read_file(file), Not(HasSubstr("\nellipse ")));
}

TEST_F(Throw, EachUnitHasItsTitle) {
  for (const char* unit : {"l/s", "l/h", "m3/s", "m3/h", "cfm", "m3/h/m", "l/s/m"}) {
    EXPECT_THAT(draw("TERMINAL", {"--qv", "300", "--unit", unit}),
                HasSubstr("\"qv [" + std::string(unit) + "]\""));
  }
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}), HasSubstr("\"L02 [m]\""));
}

TEST_F(Throw, ParameterMovesTheChart) {
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}), HasSubstr(" \"1\"\n"));
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300", "--param", "grille=wide"}), HasSubstr(" \"20\"\n"));
}

TEST_F(Throw, TitleIsTheCodeOfTheMarketOrTheOneGiven) {
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}), HasSubstr("\"Terminal \xC3\xA4\""));
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300", "--market", "FIN"}),
              HasSubstr("\"P\xC3\xA4\xC3\xA4telaite\""));
  const std::string titled = draw("TERMINAL", {"--qv", "300", "--market", "FIN", "--title", "Caf\xC3\xA9"});
  EXPECT_THAT(titled, HasSubstr("\"Caf\xC3\xA9\""));
  EXPECT_THAT(titled, Not(HasSubstr("telaite")));
}

TEST_F(Throw, TitleIsReadableInAUtf8DatabaseToo) {
  Record("000", "FILEHEADER").words(1049, {1}).save(database.handle());
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}), HasSubstr("\"Terminal \xC3\xA4\""));
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300", "--title", "Caf\xC3\xA9"}), HasSubstr("\"Caf\xC3\xA9\""));
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300", "--title", "\xE9\xA2\xA8"}), HasSubstr("\"?\""));
}

TEST_F(Throw, WritesEveryForm) {
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}, "x.png"), StartsWith("\x89PNG\r\n\x1A\n"));
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}, "x.svg"), HasSubstr("L02 [m]"));
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300"}, "x.pdf"), StartsWith("%PDF-"));
  EXPECT_THAT(draw("TERMINAL", {"--qv", "300", "--size", "640x480"}), HasSubstr("viewport-ext 640 480\n"));
}

TEST_F(Throw, ValueThatHasNoLineNamesTheOnesThatHave) {
  for (const char* value : {"5", "left"}) {
    EXPECT_THAT(fail("VANES", {"--qv", "300", "--value", value}),
                HasSubstr("--value is \"" + std::string(value) +
                          "\", but the throw lines of ASD VANES are for 10, 20\n"));
  }
  EXPECT_THAT(fail("VANES", {"--qv", "300", "--value", "1234567"}),
              HasSubstr("--value is \"1234567\", expected at most 6 characters"));
}

TEST_F(Throw, ValueForAProductWithOneLineIsRefused) {
  EXPECT_THAT(fail("TERMINAL", {"--qv", "300", "--value", "10"}),
              HasSubstr("ASD TERMINAL has one throw line for all values"));
}

TEST_F(Throw, ProductsThatCannotBeDrawnTellWhy) {
  EXPECT_THAT(fail("MUTE", {"--qv", "300"}), HasSubstr("ASD MUTE has no throw data to draw"));
  EXPECT_THAT(fail("MODEL", {"--qv", "300"}), HasSubstr("ASD MODEL has no flow data to draw"));
  EXPECT_THAT(fail("LIMITS", {"--qv", "100"}),
              HasSubstr("ASD LIMITS has limits that make no diagram: 100 - 100 l/s, 10 - 500 Pa"));
}

TEST_F(Throw, BadOptionsAreRefused) {
  EXPECT_THAT(fail("TERMINAL", {}), HasSubstr("--qv is required"));
  EXPECT_THAT(fail("TERMINAL", {"--qv", "0"}), HasSubstr("--qv"));
  EXPECT_THAT(fail("TERMINAL", {"--qv", "300", "--unit", "gal"}),
              HasSubstr("--unit is \"gal\", expected one of l/s, l/h, m3/s, m3/h, cfm, m3/h/m, l/s/m\n"));
  EXPECT_THAT(fail("TERMINAL", {"--qv", "300", "--size", "big"}), HasSubstr("--size is "));
  EXPECT_THAT(fail("TERMINAL", {"--qv", "300", "--title", std::string(80, 'x')}),
              HasSubstr("--title is 80 characters long"));
  EXPECT_THAT(fail("TERMINAL", {"--qv", "300", "--param", "grille=no"}), HasSubstr("it has none, wide"));
  EXPECT_THAT(fail("TERMINAL", {"--qv", "300"}, "x.gif"), HasSubstr(".png, .svg, .pdf or .txt"));
}

}  // namespace
