// What `tavd db build` finds in sources that it does not refuse, and how it tells it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::Folder;
using clitest::lines_of;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr const char* kHeader = R"({"class": "000", "id": "FILEHEADER", "usesUTF8": 1})";

struct Findings : testing::Test {
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(folder.file(name), std::ios::binary) << text;
  }
  Outcome build(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"db", "build", folder.file(""), "-o", folder.file("target")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return run_program(arguments);
  }
  // The warnings for a file header on the first line and these products behind it, without the folder's name.
  std::vector<std::string> warnings_of(const std::string& products) const {
    write("a.json", "[" + std::string(kHeader) + ",\n" + products + "]");
    const Outcome outcome = build();
    EXPECT_EQ(outcome.exit_code, 0);
    std::vector<std::string> lines = lines_of(outcome.err);
    const std::size_t told = lines.empty() ? 0 : lines.size() - 1;
    const std::string count =
        told == 0 ? "no findings" : std::to_string(told) + (told == 1 ? " finding" : " findings");
    EXPECT_THAT(outcome.out, HasSubstr(", " + count + "\n"));
    if (lines.empty()) return lines;
    EXPECT_EQ(lines[0], "tavd: warning: " + count + " in the sources, " + folder.file("target") +
                            " is made all the same");
    lines.erase(lines.begin());
    for (std::string& line : lines) {
      EXPECT_THAT(line, StartsWith(folder.file("a.json:")));
      line.erase(0, folder.file("a.json:").size());
    }
    return lines;
  }
  // The same for a product with good limits and these members on its second line.
  std::vector<std::string> found(const std::string& members, int kind = 113) const {
    return warnings_of(R"({"class": "TST", "id": "X", "flowheader": {"kind": )" + std::to_string(kind) +
                       R"(, "b": 100, "h": 0, "qvmin": 10, "qvmax": 100, "dpmin": 5, "dpmax": 500},)" + "\n" +
                       members + "}");
  }

  Folder folder;
};

TEST_F(Findings, AGoodCatalogueIsSaidToBeGood) {
  write("a.json", kHeader);
  const Outcome outcome = build();
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, folder.file("target") + ": 1 record, no findings\n");
  EXPECT_EQ(build({"--strict"}).exit_code, 0);
}

TEST_F(Findings, TheSampleCatalogueHasNone) {
  const Outcome outcome =
      run_program({"db", "build", "--strict", TAVD_SOURCE_DIR "/catalogue", "-o", folder.file("target")});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(outcome.out, HasSubstr(" records, no findings\n"));
}

TEST_F(Findings, MadeUpDatabasesHaveNone) {
  ASSERT_EQ(run_program({"db", "synth", folder.file("s"), "--records", "3000"}).exit_code, 0);
  EXPECT_EQ(clitest::run_text({"db", "check", folder.file("s")}), "no findings in 3000 records\n");
}

TEST_F(Findings, EachIsToldAtItsPlace) {
  // A row, an object as a row, a member, a text of a group, a number, a product without the member.
  EXPECT_THAT(
      found(R"("qvL2": [[20, 5],
    [40, 3]])"),
      ElementsAre("4:5: TST X: qvL2 (1659) row 2: expected a throw above 5 of the row before, found 3"));
  EXPECT_THAT(found(R"("qvL2": [{"qv": 20, "L2": 5},
    {"qv": 40, "L2": 3}])"),
              ElementsAre(StartsWith("4:5: TST X: qvL2 (1659) row 2: ")));
  EXPECT_THAT(found(R"("qvdpref": {"qvref": 50,
    "dpref": 0})",
                    110),
              ElementsAre(StartsWith("3:12: TST X: qvdpref (1651): expected a pressure above 0, found 0")));
  EXPECT_THAT(found(R"("code": {"FIN": "A",
  "default": ")" + std::string(40, 'x') +
                    "\"}"),
              ElementsAre(StartsWith("4:14: TST X: code.default (1562): expected at most 39 characters")));
  EXPECT_THAT(
      found(R"(  "1659": "0000a0410000a040000020420000404000")"),
      ElementsAre(StartsWith("3:11: TST X: qvL2 (1659): expected whole items of 8 bytes, found 17 bytes"),
                  StartsWith("3:11: TST X: qvL2 (1659) row 2: expected a throw above 5")));
  EXPECT_THAT(found(R"("szManu": "A")", 110),
              ElementsAre(StartsWith("2:1: TST X: qvdpref (1651): expected a reference point")));
}

TEST_F(Findings, AreThoseOfTheDatabasesCheck) {
  EXPECT_THAT(found(R"("qvL2": [[20, 5], [40, 3]], "damperpoints": [[1, 10, 100], [2, 10, 200]])", 120),
              SizeIs(2));
  const Outcome checked = run_program({"db", "check", folder.file("target")});
  EXPECT_EQ(checked.exit_code, 3);
  std::vector<std::string> lines = lines_of(checked.out);
  ASSERT_THAT(lines, SizeIs(3));
  const std::string told = build().err;
  EXPECT_THAT(told, HasSubstr(": " + lines[0] + "\n"));
  EXPECT_THAT(told, HasSubstr(": " + lines[1] + "\n"));
}

TEST_F(Findings, WithoutAPlaceInTheSourcesStandAtTheEnd) {
  write("a.json", R"({"class": "TST", "id": "X", "sizingmode": 7})");
  EXPECT_THAT(
      lines_of(build().err),
      ElementsAre(
          "tavd: warning: 2 findings in the sources, " + folder.file("target") + " is made all the same",
          folder.file("a.json:1:43") + ": TST X: sizingmode (1150): expected 0, 1, 2, 10 or 11, found 7",
          "000 FILEHEADER: expected this record in every database, found none"));
}

TEST_F(Findings, StandInTheOrderOfTheFiles) {
  write("a.json", R"({"class": "ZZZ", "id": "X", "sizingmode": 7})");
  write("b.json", "[" + std::string(kHeader) + R"(, {"class": "AAA", "id": "X", "sizingmode": 7}])");
  EXPECT_THAT(lines_of(build().err), ElementsAre(HasSubstr("2 findings"), HasSubstr("a.json:1:43: ZZZ X: "),
                                                 HasSubstr("b.json:1:97: AAA X: ")));
}

TEST_F(Findings, AreErrorsIfStrict) {
  write("a.json", R"({"class": "TST", "id": "X", "sizingmode": 7})");
  write("target", "old");
  const Outcome outcome = build({"--strict"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(lines_of(outcome.err),
              ElementsAre("tavd: 2 findings in the sources, " + folder.file("target") + " is left as it is",
                          HasSubstr("a.json:1:43: TST X: sizingmode"), StartsWith("000 FILEHEADER")));
  EXPECT_EQ(read_file(folder.file("target")), "old");
  EXPECT_THAT(folder.names(), ElementsAre("a.json", "target"));
}

TEST_F(Findings, AreToldUpToTwenty) {
  std::string products;
  for (int i = 10; i < 33; ++i) {
    products += (i == 10 ? "" : ",\n") + std::string(R"({"class": "TST", "id": "X)") + std::to_string(i) +
                R"(", "sizingmode": 7})";
  }
  write("a.json", "[" + std::string(kHeader) + ",\n" + products + "]");
  const std::vector<std::string> lines = lines_of(build().err);
  ASSERT_THAT(lines, SizeIs(22));
  EXPECT_THAT(lines[0], HasSubstr("23 findings"));
  EXPECT_THAT(lines[20], HasSubstr("a.json:21:"));
  EXPECT_EQ(lines[21], "and 3 more");
}

TEST_F(Findings, BlanksAtTheEndOfAnIdAreTold) {
  EXPECT_THAT(warnings_of(R"({"class": "TST", "id": "X  "})"),
              ElementsAre("2:24: TST X  : id: expected no blanks at the end, found \"X  \""));
  EXPECT_THAT(warnings_of(R"({"class": "TST", "id": "X Y"})"), IsEmpty());
}

TEST_F(Findings, AStatedLevelThatIsNotTheSumOfTheBandsIsTold) {
  // Eight bands of 40 dB have 46.99 dB(A) together: the room level of the sum is 42.99 with a damping of 4
  // dB.
  const std::string bands = "[40, 40, 40, 40, 40, 40, 40, 40]";
  const auto rows = [&](const std::string& stated) {
    return R"("lwpoints": [[10, 10, )" + bands + ", 47], [20, 40, " + bands + "],\n[10, 5, " + bands + ", " +
           stated + R"(], {"qv": 20, "dp": 20, "lw": )" + bands + R"(, "LwA": 46}])";
  };
  EXPECT_THAT(found(rows("48.4")), IsEmpty());
  EXPECT_THAT(found(rows("43")),
              ElementsAre("4:43: TST X: lwpoints[3].LwA: expected about 47.0 dB(A), the sum of the "
                          "bands, found 43"));
  EXPECT_THAT(found(rows("\"43\"")),
              ElementsAre(HasSubstr("lwpoints[3].LwA: expected a number, found \"43\"")));
  EXPECT_EQ(clitest::run_text({"db", "dump", folder.file("target")}).find("LwA"), std::string::npos);
}

TEST_F(Findings, AFileHeaderMayStandInEachSource) {
  write("a.json", "[" + std::string(kHeader) + R"(, {"class": "TST", "id": "X"}])");
  write("b.json", "[" + std::string(kHeader) + R"(, {"class": "TST", "id": "Y"}])");
  EXPECT_EQ(build({"--strict"}).out, folder.file("target") + ": 3 records, no findings\n");
  write("b.json", R"({"class": "000", "id": "FILEHEADER", "usesUTF8": 0})");
  EXPECT_THAT(build().err,
              HasSubstr("b.json:1:1: 000 FILEHEADER: duplicate; expected each class and id once"));
}

}  // namespace
