// `tavd select --duties`: a schedule in, a selection out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "samples.h"
#include "support/program.h"
#include "sweep_fixture.h"

namespace {

using clitest::lines_of;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using clitest::Table;
using ::testing::HasSubstr;

struct SelectSchedule : testing::Test {
  SelectSchedule() { clitest::add_samples(database); }

  std::string schedule(const std::string& text) const {
    const std::string path = folder.file("rooms.csv");
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  Outcome run(const std::string& text, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"select", database.path(), "--duties", schedule(text), "-o", target});
    return run_program(options);
  }
  Table answer(const std::string& text, const std::vector<std::string>& options = {}) const {
    const Outcome outcome = run(text, options);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    return Table(read_file(target));
  }
  // What a schedule that cannot be used says: nothing is written, and nothing lies about.
  std::string refused(const std::string& text, const std::vector<std::string>& options = {}) const {
    std::ofstream(target) << "as it was";
    const Outcome outcome = run(text, options);
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(read_file(target), "as it was");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"rooms.csv", "selection.csv"}));
    return outcome.err;
  }

  tavdtest::Database database;
  clitest::Folder folder;
  std::string target = folder.file("selection.csv");
};

TEST_F(SelectSchedule, WritesALineForEachDutyAndRank) {
  const Table table = answer(
      "room,terminal,qv [l/s],dp [Pa],class\n"
      "Hall,\"S \"\"1\"\"\",100,100,ASD\n"
      "\n"
      "Bath,E1,5,100,ASD\n");
  ASSERT_EQ(table.rows.size(), 3U);
  EXPECT_EQ(table.rows[0][0], "Hall");
  EXPECT_EQ(table.rows[0][1], "\"S \"\"1\"\"\"");
  EXPECT_EQ(table.cell(0, "line"), "2");
  EXPECT_EQ(table.cell(0, "rank"), "1");
  EXPECT_EQ(table.cell(1, "rank"), "2");
  EXPECT_EQ(table.cell(2, "room"), "Bath");
  EXPECT_EQ(table.cell(2, "line"), "4");
  EXPECT_EQ(table.cell(2, "fitting"), "0");
  EXPECT_EQ(table.cell(2, "id"), "");
}

TEST_F(SelectSchedule, AnswersWhatTheSingleCommandAnswers) {
  const Table table =
      answer("qv [l/s];dp [Pa];lp max [dB(A)];rank;top;param blade\n100;100;;pressure;2;200\n");
  const Outcome one = run_program({"select", database.path(), "--qv", "100", "--dp", "100", "--rank",
                                   "pressure", "--top", "2", "--param", "blade=200", "--csv"});
  const Table single(one.out);
  ASSERT_EQ(table.rows.size(), single.rows.size());
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    EXPECT_EQ(std::vector<std::string>(table.rows[i].begin() + 1, table.rows[i].end()), single.rows[i]);
  }
}

TEST_F(SelectSchedule, ReadsWhatSpreadsheetsWrite) {
  const std::string expected = [&] {
    answer("qv [l/s],dp [Pa]\n100,100.5\n", {"--top", "3"});
    return read_file(target);
  }();
  for (const char* text :
       {"\xEF\xBB\xBFqv [m3/h];dp [Pa]\r\n360;100,5\r\n", "\"QV [M3/H]\"\tDP (kPa)\n360\t0,1005\n",
        "Flow [m³/h];pressure [Pa];;\n\"360\";100,5;;\n"}) {
    answer(text, {"--top", "3"});
    EXPECT_EQ(read_file(target), expected) << text;
  }
}

TEST_F(SelectSchedule, OptionsAreWhatALineDoesNotSay) {
  const Table table =
      answer("qv [l/s];class\n100;\n350;FAN\n", {"--dp", "100", "--class", "ASD", "--top", "1"});
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_EQ(table.cell(0, "class"), "ASD");
  EXPECT_EQ(table.cell(1, "fitting"), "0");
}

TEST_F(SelectSchedule, LimitsBandsOfSoundPower) {
  const Table table = answer(
      "qv [l/s];dp [Pa];class;lw max [dB]\n"
      "100;100;ASD;- - - 45 - - - -\n"
      "100;100;ASD;- - - 44 - - - -\n",
      {"--explain"});
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_EQ(table.cell(0, "id"), "DAMPER-200");
  EXPECT_EQ(table.cell(0, "lw_500Hz_dB"), "45");
  EXPECT_EQ(table.cell(1, "why_not"), "it has too much sound power in a band: 1 product");
  EXPECT_THAT(refused("qv [l/s];dp [Pa];lw max [dB]\n100;100;45\n"),
              HasSubstr(":2:9: lw max is \"45\", expected 8 levels"));
}

TEST_F(SelectSchedule, TellsWhereAndWhatAndWritesNothing) {
  const std::string told = refused(
      "room;qv [l/s];dp [Pa];class\n"
      "a;100;100;ASD\n"
      "b;-1;100;ASD\n"
      "c;100;x;ASD\n"
      "d;100;100;XYZ\n"
      "e;100;;ASD\n"
      "f;1.5;100;ASD\n"
      "g;1,5;100;ASD\n"
      "h;100;100;ASD;9\n");
  const std::string path = folder.file("rooms.csv");
  EXPECT_THAT(told, HasSubstr("lines of " + path + " not as expected, nothing is written"));
  EXPECT_THAT(told, HasSubstr(path + ":3:3: qv is \"-1\", expected a number above 0"));
  EXPECT_THAT(told, HasSubstr(path + ":4:7: dp is \"x\", expected a number above 0"));
  EXPECT_THAT(told, HasSubstr(path + ":6:1: a line without a pressure, expected one"));
  EXPECT_THAT(told,
              HasSubstr(path + ":8:3: found \"1,5\", expected a number with \".\" as its decimal sign"));
  EXPECT_THAT(told, HasSubstr(path + ":9:15: more cells than the heading has, expected 4"));
}

TEST_F(SelectSchedule, UnknownClassesAreToldWithTheirLine) {
  const std::string told = refused("qv [l/s];dp [Pa];class\n100;100;ASD\n100;100;XYZ\n");
  EXPECT_THAT(told, HasSubstr("rooms.csv:3:1: no class \"XYZ\""));
}

TEST_F(SelectSchedule, LeavesBadLinesOutIfThatIsAsked) {
  const Outcome outcome = run("qv [l/s];dp [Pa];class\n100;100;ASD\n-1;100;ASD\n100;100;XYZ\n100;100;ASD\n",
                              {"--skip-bad", "--top", "1"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.err, HasSubstr("2 lines of "));
  EXPECT_THAT(outcome.err, HasSubstr("left out\n"));
  EXPECT_THAT(outcome.out, HasSubstr("selection.csv: 2 duties, all with a product that fits"));
  const Table table{read_file(target)};
  ASSERT_EQ(table.rows.size(), 2U);
  EXPECT_EQ(table.cell(0, "line"), "2");
  EXPECT_EQ(table.cell(1, "line"), "5");
}

TEST_F(SelectSchedule, RefusesHeadingsAndEmptySchedules) {
  EXPECT_THAT(refused(""), HasSubstr("an empty schedule, expected a heading and lines"));
  EXPECT_THAT(refused("\n \r\n\n"), HasSubstr("an empty schedule"));
  EXPECT_THAT(refused("qv [l/s],dp [Pa]\n"), HasSubstr("no lines below the heading"));
  EXPECT_THAT(refused("qv,dp [Pa]\n1,2\n"),
              HasSubstr(":1:1: no unit in \"qv\", expected qv [l/s] or qv [m3/h]"));
  EXPECT_THAT(refused("qv [Pa],dp [Pa]\n1,2\n"), HasSubstr(":1:1: an unknown unit in \"qv [Pa]\""));
  EXPECT_THAT(refused("lp max [m],qv [l/s],dp [Pa]\n1,2,3\n"), HasSubstr("expected lp max [dB(A)]"));
  EXPECT_THAT(refused("qv [l/s],flow [l/s],dp [Pa]\n1,2,3\n"),
              HasSubstr(":1:10: \"flow [l/s]\" is a second column"));
  EXPECT_THAT(refused("qv [l/s],dp [Pa],clas\n1,2,3\n"),
              HasSubstr("unknown column \"clas\" (did you mean \"class\"?)"));
  EXPECT_THAT(refused("qv [l/s]\n1\n"),
              HasSubstr("no column of pressures, expected one such as dp [Pa], or --dp"));
  EXPECT_THAT(refused("qv [l/s],dp [Pa]\n1,\xFF\n"), HasSubstr("expected UTF-8"));
  EXPECT_THAT(refused("qv [l/s],dp [Pa],param plate\n100,100,5\n"), HasSubstr("has a parameter \"plate\""));
}

// What a spreadsheet may hold at worst: a clear message, or an answer.
TEST_F(SelectSchedule, BearsLargeAndStrangeSchedules) {
  std::string wide =
      "qv [l/s],dp [Pa]" + std::string(9998, ',') + "\n100,100" + std::string(9998, ',') + "\n";
  EXPECT_EQ(answer(wide, {"--top", "1"}).rows.size(), 1U);
  std::string unknown = "qv [l/s],dp [Pa]";
  for (int i = 0; i < 10000; ++i) unknown += ",c" + std::to_string(i);
  const std::string told = refused(unknown + "\n");
  EXPECT_THAT(told, HasSubstr("unknown column \"c0\""));
  EXPECT_LT(lines_of(told).size(), 25U);
  std::string open_quote = "room,qv [l/s],dp [Pa]\n\"a,100,100\n";
  for (int i = 0; i < 120000; ++i) open_quote += "b,100,100\n";
  EXPECT_THAT(refused(open_quote), HasSubstr(":2:1: a line of more than 1048576 bytes"));
  std::ostringstream many;
  many << "room,qv [l/s],dp [Pa]\n";
  for (int i = 0; i < 5000; ++i) many << "r" << i << "," << 1 + i % 300 << ".5,90\n";
  const Table table = answer(many.str(), {"--top", "1", "--threads", "3"});
  ASSERT_EQ(table.rows.size(), 5000U);
  for (std::size_t i = 0; i < table.rows.size(); ++i) EXPECT_EQ(table.rows[i][0], "r" + std::to_string(i));
}

TEST_F(SelectSchedule, TellsWhyNothingFits) {
  const Table table = answer("qv [l/s],dp [Pa],class\n9999,100,ASD\n", {"--explain"});
  EXPECT_EQ(table.cell(0, "why_not"), "the flow is above its limits: 2 products");
}

TEST_F(SelectSchedule, WritesToStandardOutput) {
  const Outcome outcome = run_program(
      {"select", database.path(), "--duties", schedule("qv [l/s],dp [Pa]\n100,100\n"), "--top", "1"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(Table(outcome.out).rows.size(), 1U);
}

TEST_F(SelectSchedule, DoesNotWriteOverWhatItReads) {
  const std::string path = schedule("qv [l/s],dp [Pa]\n100,100\n");
  for (const std::string& read : {path, database.path()}) {
    const std::string before = read_file(read);
    const Outcome outcome = run_program({"select", database.path(), "--duties", path, "-o", read});
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_THAT(outcome.err, HasSubstr("is what is read"));
    EXPECT_EQ(read_file(read), before);
  }
}

TEST_F(SelectSchedule, RefusesOptionsThatDoNotGoTogether) {
  EXPECT_THAT(refused("qv [l/s],dp [Pa]\n100,100\n", {"--json"}), HasSubstr("--json is for one duty"));
  EXPECT_THAT(refused("qv [l/s],dp [Pa]\n100,100\n", {"--threads", "0"}), HasSubstr("--threads is \"0\""));
  EXPECT_THAT(run_program({"select", database.path(), "--duties", folder.file("none.csv")}).err,
              HasSubstr("cannot be opened"));
}

}  // namespace
