// What `tavd db build` refuses, and with which words.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "support/program.h"
#include "tavd/tavdsrv.h"

namespace {

using clitest::Folder;
using clitest::lines_of;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

void write(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// A folder with a source and a target that stands there from before.
struct Build : testing::Test {
  Build() { write(target, "old"); }

  Outcome run() const { return run_program({"db", "build", source, "-o", target}); }

  // The faults that are told for this source, without the file's name; the target must not change.
  std::vector<std::string> faults_of(const std::string& text) const {
    write(source, text);
    const Outcome outcome = run();
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(read_file(target), "old");
    EXPECT_THAT(folder.names(), ElementsAre("a.json", "target"));
    std::vector<std::string> faults;
    for (std::string line : lines_of(outcome.err)) {
      if (line.starts_with(source + ':')) line.erase(0, source.size() + 1);
      faults.push_back(line);
    }
    if (faults.empty()) return faults;
    const std::size_t told = faults.size() - 1;
    EXPECT_EQ(faults[0], "tavd: " + std::to_string(told) + (told == 1 ? " fault" : " faults") +
                             " in the sources, " + target + " is left as it is");
    faults.erase(faults.begin());
    return faults;
  }

  // The one fault of a product whose third line is this member.
  std::string fault_of(const std::string& member) const {
    const std::vector<std::string> faults =
        faults_of("{\n  \"class\": \"TST\", \"id\": \"X-1\",\n  " + member + "\n}");
    EXPECT_THAT(faults, SizeIs(1));
    return faults.empty() ? "" : faults[0];
  }

  Folder folder;
  std::string source = folder.file("a.json");
  std::string target = folder.file("target");
};

TEST_F(Build, UnknownFieldIsRefused) {
  EXPECT_EQ(fault_of("\"flowheadr\": 1"),
            "3:16: TST X-1: flowheadr: unknown field (did you mean \"flowheader\"?); expected the name of an "
            "attribute, or its number with the value in hex");
  EXPECT_EQ(fault_of("\"colour\": 1"),
            "3:13: TST X-1: colour: unknown field; expected the name of an attribute, or its number with the "
            "value in hex");
}

TEST_F(Build, MembersThatAreNearAKnownOneAreToldSo) {
  EXPECT_THAT(fault_of("\"damperPoint\": []"), HasSubstr("(did you mean \"damperpoints\"?)"));
  EXPECT_THAT(
      fault_of("\"qvdpref\": {\"qref\": 1, \"qvref\": 1, \"dpref\": 2}"),
      HasSubstr("qvdpref.qref: unknown (did you mean \"qvref\"?); expected an object with qvref, dpref"));
  EXPECT_THAT(fault_of("\"description\": {\"english\": \"A\"}"),
              HasSubstr("description.english: unknown (did you mean \"English\"?); expected"));
  EXPECT_THAT(fault_of("\"code\": {\"FI\": \"A\"}"), HasSubstr("code.FI: unknown (did you mean \"FIN\"?)"));
}

TEST_F(Build, AllMarketsAndLanguagesAreListedForAnUnknownOne) {
  EXPECT_EQ(
      fault_of("\"weblink\": {\"XX\": \"A\"}"),
      "3:21: TST X-1: weblink.XX: unknown; expected a market area code or \"default\": default, FIN, SWE, "
      "GBR, DEU, NOR, FRA, ESP, ITA, POL, DNK, CZE, PRT, HUN, NLD, ISL, EST, LTU, LVA, RUS, SVK, BGR, ROU, "
      "BIH, HRV, SVN, CHN, JPN, TUR, CHE, UKR, AUT, BEL");
  EXPECT_THAT(
      fault_of("\"description\": {\"Latin\": \"A\"}"),
      HasSubstr("unknown; expected the English name of a language: Finnish, Swedish, English, German, "));
}

TEST_F(Build, WrongTypesAreRefused) {
  EXPECT_EQ(fault_of("\"lwsizecoef\": \"3\""), "3:17: TST X-1: lwsizecoef: expected a number, found \"3\"");
  EXPECT_EQ(fault_of("\"sizingmode\": 1.5"),
            "3:17: TST X-1: sizingmode: expected a whole number from -32768 to 32767, found 1.5");
  EXPECT_EQ(fault_of("\"szManu\": 5"), "3:13: TST X-1: szManu: expected a text, found 5");
  EXPECT_EQ(fault_of("\"damperpoints\": {}"),
            "3:19: TST X-1: damperpoints: expected an array of rows [pos, qv, dp], found {}");
  EXPECT_EQ(fault_of("\"damperpoints\": [[1, 2, 3], 4]"),
            "3:31: TST X-1: damperpoints[2]: expected a row of an array of rows [pos, qv, dp], found 4");
  EXPECT_EQ(fault_of("\"qvdpref\": [1, 2]"),
            "3:14: TST X-1: qvdpref: expected an object with qvref, dpref, found [1, 2]");
  EXPECT_EQ(
      fault_of("\"code\": \"X\""),
      "3:11: TST X-1: code: expected an object, its members named by a market area code or \"default\", "
      "found \"X\"");
  EXPECT_EQ(fault_of("\"lwsizecoef\": null"), "3:17: TST X-1: lwsizecoef: expected a number, found null");
  EXPECT_EQ(fault_of("\"lwsizecoef\": true"), "3:17: TST X-1: lwsizecoef: expected a number, found true");
}

TEST_F(Build, NumbersOutOfTheRangeOfTheirTypeAreRefused) {
  EXPECT_EQ(fault_of("\"sizingmode\": 32768"),
            "3:17: TST X-1: sizingmode: expected a whole number from -32768 to 32767, found 32768");
  EXPECT_EQ(fault_of("\"lwsizecoef\": 1e39"),
            "3:17: TST X-1: lwsizecoef: expected a number in the range of a 32-bit float, found 1e39");
  EXPECT_EQ(fault_of("\"dlw\": [1, 2, 3, 4, 5, 6, 7, 256]"),
            "3:32: TST X-1: dlw[8]: expected a whole number of dB from 0 to 255, found 256");
  EXPECT_EQ(fault_of("\"dlw\": [-1, 2, 3, 4, 5, 6, 7, 8]"),
            "3:11: TST X-1: dlw[1]: expected a whole number of dB from 0 to 255, found -1");
}

TEST_F(Build, SeveralBadBandsAreOneFault) {
  EXPECT_EQ(
      fault_of("\"dlw\": [1.5, 2, -3, 4, 5, 6, 7, 256]"),
      "3:11: TST X-1: dlw: expected a whole number of dB from 0 to 255 in each band, found 1.5, -3, 256");
  EXPECT_EQ(
      fault_of("\"lwpoints\": [[1, 2, [1.5, 1.5, 1.5, 1.5, 1.5, 1.5, 1.5, 1.5]]]"),
      "3:24: TST X-1: lwpoints[1].lw: expected a whole number of dB from 0 to 255 in each band, found 1.5, "
      "1.5, 1.5, 1.5, 1.5, 1.5, 1.5, 1.5");
}

TEST_F(Build, RowsOfTheWrongShapeAreRefused) {
  EXPECT_EQ(
      fault_of("\"damperpoints\": [[1, 2]]"),
      "3:20: TST X-1: damperpoints[1]: expected 3 values, an array of rows [pos, qv, dp], found [1, 2]");
  EXPECT_EQ(fault_of("\"lwpoints\": [[1, 2, [1, 2]]]"),
            "3:23: TST X-1: lwpoints[1].lw: expected an array of 8 bands, 63 Hz to 8 kHz, found [1, 2]");
  EXPECT_EQ(fault_of("\"intpair\": [1]"), "3:14: TST X-1: intpair: expected 2 values, found 1");
  EXPECT_EQ(fault_of("\"qvdpref\": {\"qvref\": 1}"),
            "3:14: TST X-1: qvdpref.dpref: missing; expected an object with qvref, dpref");
  EXPECT_EQ(fault_of("\"qvdpref\": {\"qvref\": 1, \"dpref\": 2, \"k\": 3}"),
            "3:44: TST X-1: qvdpref.k: unknown; expected an object with qvref, dpref");
}

TEST_F(Build, TooManyRowsAreRefused) {
  std::string rows = "[1, 2, 3]";
  for (int i = 1; i < 21; ++i) rows += ", [1, 2, 3]";
  EXPECT_EQ(fault_of("\"damperpoints\": [" + rows + "]"),
            "3:19: TST X-1: damperpoints: expected at most 20 rows, found 21");
}

TEST_F(Build, IdsAndClassesOfTheWrongLengthAreRefused) {
  EXPECT_THAT(faults_of("{\"class\": \"TEST\", \"id\": \"X\"}"),
              ElementsAre("1:11: TEST X: class: expected a text of exactly 3 characters, found \"TEST\""));
  EXPECT_THAT(faults_of("{\"class\": \"TS\", \"id\": \"X\"}"),
              ElementsAre("1:11: TS X: class: expected a text of exactly 3 characters, found \"TS\""));
  const std::string id(31, 'x');
  EXPECT_THAT(
      faults_of("{\"class\": \"TST\", \"id\": \"" + id + "\"}"),
      ElementsAre("1:24: TST " + id + ": id: expected a text of 1 to 30 characters, found \"" + id + "\""));
  EXPECT_THAT(faults_of("{\"class\": \"TST\", \"id\": \"  \"}"),
              ElementsAre(HasSubstr("id: expected a text of 1 to 30 characters")));
  EXPECT_THAT(faults_of("{\"class\": \"TST\", \"id\": {\"hex\": \"410042\"}}"),
              ElementsAre(HasSubstr("id: expected a text of 1 to 30 characters")));
  EXPECT_THAT(faults_of("{}"), ElementsAre("1:1: class: missing; expected a text of exactly 3 characters",
                                           "1:1: id: missing; expected a text of 1 to 30 characters"));
}

TEST_F(Build, ThirtyCharactersAreNotTooMany) {
  write(source, "{\"class\": \"TST\", \"id\": \"" + std::string(30, 'x') + "\"}");
  EXPECT_EQ(run().exit_code, 0);
}

TEST_F(Build, AProductThatStandsTwiceIsRefused) {
  EXPECT_THAT(
      faults_of("[{\"class\": \"TST\", \"id\": \"X\"},\n {\"class\": \"TST\", \"id\": \"X  \"}]"),
      ElementsAre("2:2: TST X: duplicate; expected each class and id once, first found at " + source + ":1"));
}

TEST_F(Build, AnAttributeThatStandsTwiceIsRefused) {
  EXPECT_EQ(fault_of("\"sizingmode\": 1, \"1150\": \"0100\""),
            "3:17: TST X-1: sizingmode: attribute 1150 stands twice in this product");
  EXPECT_THAT(fault_of("\"sizingmode\": 1, \"sizingmode\": 2"), HasSubstr("Duplicate key: 'sizingmode'"));
}

TEST_F(Build, TextsThatTheirCharsetCannotHoldAreRefused) {
  EXPECT_EQ(
      fault_of("\"description\": {\"Estonian\": \"ab\u0416\"}"),
      "3:31: TST X-1: description.Estonian: expected characters of windows-1257; it has no \"\u0416\", found "
      "\"ab\u0416\"");
  EXPECT_THAT(fault_of("\"szManu\": \"\u0416\""), HasSubstr("3:13: TST X-1: szManu: expected characters of"));
  EXPECT_THAT(fault_of("\"szManu\": \"a\\u0000b\""), HasSubstr("a text without NUL"));
}

TEST_F(Build, TheFileHeaderDecidesWhatATextCanHold) {
  write(source,
        "[{\"class\": \"AAA\", \"id\": \"X\", \"szManu\": \"\u0416\"}, "
        "{\"class\": \"000\", \"id\": \"FILEHEADER\", \"usesUTF8\": 1}]");
  EXPECT_EQ(run().exit_code, 0);
  const std::int16_t db = tavbopendatabase(nullptr, target.c_str(), 0);
  char text[8] = {};
  tavbfindatt(db, "AAA", "X", 1503, nullptr, text, sizeof text);
  tavdsrv_closedatabase(db);
  EXPECT_STREQ(text, "\u0416");
}

TEST_F(Build, TextsLongerThanIsReadAreRefused) {
  EXPECT_EQ(fault_of("\"szManu\": \"" + std::string(100, 'x') + "\""),
            "3:13: TST X-1: szManu: expected at most 99 bytes, found 100");
  EXPECT_EQ(fault_of("\"code\": {\"FIN\": \"" + std::string(256, 'x') + "\"}"),
            "3:19: TST X-1: code.FIN: expected at most 255 characters, found 256");
  EXPECT_THAT(fault_of("\"par1table\": [[\"1234567\", 0, 0, 0, 1]]"),
              HasSubstr("par1table[1].value: expected a text of at most 6 characters"));
}

TEST_F(Build, WrongHexIsRefused) {
  EXPECT_THAT(fault_of("\"1652\": \"0g\""), HasSubstr("3:11: TST X-1: 1652: expected a text of hex digits"));
  EXPECT_THAT(fault_of("\"1652\": \"000\""), HasSubstr("expected a text of hex digits"));
  EXPECT_THAT(fault_of("\"1652\": \"" + std::string(65536, '0') + "\""), HasSubstr("at most 32767 bytes"));
  EXPECT_THAT(fault_of("\"01652\": \"00\""), HasSubstr("unknown field"));
  EXPECT_THAT(fault_of("\"40000\": \"00\""), HasSubstr("unknown field"));
}

TEST_F(Build, WhatIsNoJsonIsRefusedWithItsPlace) {
  EXPECT_THAT(faults_of("{\n  \"class\" \"TST\"\n}"),
              ElementsAre("2:11: Missing ':' after object member name"));
  EXPECT_THAT(faults_of("[]\n x"), ElementsAre(HasSubstr("2:2: Extra non-whitespace after JSON value.")));
  EXPECT_THAT(faults_of("[\n\"\xFF\"]"), ElementsAre("2:2: expected UTF-8, found a byte that is none"));
  EXPECT_THAT(faults_of(std::string(5000, '[')), SizeIs(1));
  EXPECT_THAT(faults_of("[1]"), ElementsAre("1:2: expected an object for each product, found 1"));
}

TEST_F(Build, WhatJsonHasNotIsNamed) {
  EXPECT_EQ(fault_of("\"lwsizecoef\": NaN"), "3:17: expected a number, found NaN");
  EXPECT_EQ(fault_of("\"lwsizecoef\": -Infinity"), "3:17: expected a number, found -Infinity");
  EXPECT_EQ(fault_of("\"d\": [1, 2, /* , */ ]"),
            "3:23: trailing comma; expected a value behind it, or none in front of \"]\"");
  EXPECT_EQ(fault_of("\"code\": {\"FIN\": \"\u0416]\", }"),
            "3:25: trailing comma; expected a value behind it, or none in front of \"}\"");
  EXPECT_EQ(fault_of("'d': [1]"), "3:3: expected double quotes around texts and names, found single ones");
}

TEST_F(Build, CommentsAndAByteOrderMarkAreAllowed) {
  write(source, "\xEF\xBB\xBF// one\n{ /* two */ \"class\": \"TST\", // three\n \"id\": \"X\" }\n// four\n");
  const Outcome outcome = run();
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.out, target + ": 1 record, 1 finding\n");  // it has no file header
}

TEST_F(Build, ColumnsCountCharactersAndLinesEndInAnyWay) {
  EXPECT_THAT(faults_of("{\"class\": \"TST\", \"id\": \"X\",\r\n /* \u0416\u0416 */ \"dlw\": 1}"),
              ElementsAre("2:18: TST X: dlw: expected an array of 8 bands, 63 Hz to 8 kHz, found 1"));
}

// Characters are counted in blocks: the places lie in several, some of them behind characters of two bytes
// that stand across the end of a block.
TEST_F(Build, ColumnsOfALongLineAreRight) {
  std::string text = "[";
  std::vector<std::string> expected;
  for (int i = 0; i < 9; ++i) {
    std::string filler;
    for (int j = 0; j < 97 + 211 * i; ++j) filler += "\u00C4";
    text += "{\"class\": \"TST\", \"id\": \"X" + std::to_string(i) + "\", /* " + filler + " */ \"d\": ";
    const auto column =
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }) + 1;
    expected.push_back("1:" + std::to_string(column) + ": TST X" + std::to_string(i) + ": d: ");
    text += "1},";
  }
  text.back() = ']';
  const std::vector<std::string> faults = faults_of(text);
  ASSERT_THAT(faults, SizeIs(expected.size()));
  for (std::size_t i = 0; i < faults.size(); ++i) EXPECT_THAT(faults[i], testing::StartsWith(expected[i]));
}

TEST_F(Build, AllFaultsAreToldUpToTwenty) {
  std::string text = "[";
  for (int i = 0; i < 23; ++i) {
    text += std::string(i == 0 ? "" : ",") + "\n{\"class\": \"TST\", \"id\": \"X" + std::to_string(i) +
            "\", \"d\": 1}";
  }
  write(source, text + "]");
  const Outcome outcome = run();
  EXPECT_EQ(outcome.exit_code, 2);
  const std::vector<std::string> lines = lines_of(outcome.err);
  ASSERT_THAT(lines, SizeIs(22));
  EXPECT_EQ(lines[0], "tavd: 23 faults in the sources, " + target + " is left as it is");
  EXPECT_THAT(lines[1], HasSubstr("a.json:2:35: TST X0: d: "));
  EXPECT_THAT(lines[20], HasSubstr("a.json:21:36: TST X19: d: "));
  EXPECT_EQ(lines[21], "and 3 more");
  EXPECT_EQ(read_file(target), "old");
}

TEST_F(Build, FaultsOfSeveralFilesAreToldInTheOrderOfTheFiles) {
  write(source, "{\"class\": \"TST\", \"id\": \"X\", \"d\": 1}");
  write(folder.file("b.json"), "{\"class\": \"TST\", \"id\": \"X\",\n\"d\": [1]}");
  write(folder.file("c.txt"), "not a source");
  const Outcome outcome = run_program({"db", "build", folder.file(""), "-o", target});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(
      lines_of(outcome.err),
      ElementsAre("tavd: 2 faults in the sources, " + target + " is left as it is",
                  HasSubstr("a.json:1:34: TST X: d: expected an array"),
                  HasSubstr("b.json:1:1: TST X: duplicate; expected each class and id once, first found")));
}

TEST_F(Build, AGoodSourceReplacesTheTargetAndLeavesNothingElse) {
  write(source, "{\"class\": \"TST\", \"id\": \"X\"}");
  EXPECT_EQ(run().exit_code, 0);
  EXPECT_THAT(folder.names(), ElementsAre("a.json", "target"));
  const std::int16_t db = tavbopendatabase(nullptr, target.c_str(), 0);
  EXPECT_GE(db, 0);
  tavb_rec rec = tavbfindrec(db, "TST", "X", 0);
  EXPECT_NE(rec, nullptr);
  tavbreleaserec(rec);
  tavdsrv_closedatabase(db);
}

TEST_F(Build, TheSameCatalogueGivesTheSameFile) {
  write(source, "[{\"class\": \"TST\", \"id\": \"X\"}, {\"class\": \"TST\", \"id\": \"A\"}]");
  EXPECT_EQ(run().exit_code, 0);
  const std::string first = read_file(target);
  write(source, "[{\"class\": \"TST\", \"id\": \"A\"}, {\"class\": \"TST\", \"id\": \"X\"}]");
  EXPECT_EQ(run().exit_code, 0);
  EXPECT_EQ(read_file(target), first);
}

TEST_F(Build, SourcesAndTargetsThatCannotBeAreRefused) {
  const auto error = [](const std::vector<std::string>& arguments) {
    return clitest::expect_user_error(arguments);
  };
  EXPECT_EQ(error({"db", "build", folder.file("none"), "-o", target}),
            "tavd: " + folder.file("none") + ": no such file or folder, expected a source\n");
  EXPECT_EQ(error({"db", "build", folder.file(""), "-o", target}),
            "tavd: " + folder.file("") + ": no *.json in this folder, expected the catalogue's sources\n");
  write(source, "{\"class\": \"TST\", \"id\": \"X\"}");
  EXPECT_EQ(error({"db", "build", source, "-o", source}),
            "tavd: " + source + " is one of the sources, expected another name for the database\n");
  EXPECT_EQ(error({"db", "build", source, "-o", folder.file("")}),
            "tavd: " + folder.file("") + " is a folder, expected the name of a file\n");
  EXPECT_THAT(error({"db", "build", source, "-o", folder.file("no/where")}), HasSubstr("there is no folder"));
  EXPECT_THAT(folder.names(), ElementsAre("a.json", "target"));
  EXPECT_EQ(read_file(target), "old");
}

TEST_F(Build, AJournalBesideTheTargetIsNotTakenOver) {
  write(source, "{\"class\": \"TST\", \"id\": \"X\"}");
  write(target + "-journal", "left by a crash");
  EXPECT_THAT(clitest::expect_user_error({"db", "build", source, "-o", target}), HasSubstr("target-journal"));
  EXPECT_EQ(read_file(target), "old");
  EXPECT_THAT(folder.names(), ElementsAre("a.json", "target", "target-journal"));
}

// Escape sequences, line breaks and 90 KB in names and values, as JSON writes them or as they stand.
TEST_F(Build, NamesAndValuesInMessagesAreCutAndClean) {
  const std::string name = "q\\u001b[31m\\nx\u009b" + std::string(90'000, 'z');
  for (const std::string& member :
       {'"' + name + "\": 1", "\"description\": {\"" + name + "\": \"1\"}", "\"lwsizecoef\": \"" + name + '"',
        "\"d\": 1, \"" + name + "\": 1, \"" + name + "\": 2"}) {
    for (const std::string& fault : faults_of("{\"class\": \"TST\", \"id\": \"X\", " + member + '}')) {
      EXPECT_THAT(fault, SizeIs(testing::Lt(500u)));
      EXPECT_THAT(fault, Not(HasSubstr("\x1b")));
      EXPECT_THAT(fault, Not(HasSubstr("\u009b")));
      EXPECT_THAT(fault, testing::MatchesRegex("1:[0-9]+: .*"));
    }
  }
  EXPECT_THAT(faults_of("{\"class\": \"TST\", \"id\": \"" + std::string(90'000, 'x') + "\"}"),
              ElementsAre(SizeIs(testing::Lt(300u))));
}

TEST_F(Build, ANumberOf2MegabytesIsToldInPart) {
  const std::string number(2'000'000, '9');
  for (const char* field : {"sizingmode", "lwsizecoef"}) {
    EXPECT_THAT(fault_of('"' + std::string(field) + "\": " + number), SizeIs(testing::Lt(300u)));
  }
}

TEST_F(Build, APipeAmongTheSourcesOfAFolderIsRefused) {
  write(source, "{\"class\": \"TST\", \"id\": \"X\"}");
  const std::string pipe = folder.file("x.json");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(clitest::expect_user_error({"db", "build", folder.file(""), "-o", target}),
            "tavd: " + pipe + ": a pipe, a socket or a device, expected a file with a source\n");
}

TEST_F(Build, WhatIsTooLargeOrNoTextIsToldBeforeItIsRead) {
  write(source, "");
  std::filesystem::resize_file(source, 20'000'000'000);
  EXPECT_EQ(clitest::expect_user_error({"db", "build", source, "-o", target}),
            "tavd: " + source + ": 20000000000 bytes, expected a source of at most 4294967296\n");
  std::filesystem::resize_file(source, 100'000'000);
  EXPECT_EQ(clitest::expect_user_error({"db", "build", source, "-o", target}),
            "tavd: " + source + ": byte 1 is NUL, expected UTF-8 text\n");
}

// No catalogue can make such a record, and no function of the service: the bytes are changed in the file.
TEST_F(Build, AnIdWithANulIsToldByTheDump) {
  write(source, "{\"class\": \"TST\", \"id\": \"AXXB\"}");
  EXPECT_EQ(run().exit_code, 0);
  std::string bytes = read_file(target);
  std::size_t changed = 0;
  for (std::size_t at = bytes.find("TSTAXXB"); at != std::string::npos;
       at = bytes.find("TSTAXXB"), ++changed) {
    bytes[at + 4] = '\0';
  }
  ASSERT_GE(changed, 2u);  // table and index
  write(target, bytes);
  const std::string dump = folder.file("dump");
  const std::string error = clitest::expect_user_error({"db", "dump", target, "-o", dump});
  EXPECT_THAT(error,
              HasSubstr("target: the record \"TST A XB\" (41005842) has a NUL byte in its class or id"));
  EXPECT_FALSE(std::filesystem::exists(dump));
}

TEST(Arguments, AreToldInPartWhereTheyAreLong) {
  const std::string text = "\x1b[31m" + std::string(100'000, 'x');
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{text},
                                                    {"db", text},
                                                    {"db", "dump", text},
                                                    {"db", "dump", "a", text},
                                                    {"db", "build", text, "-o", "a"},
                                                    {"db", "dump", "a", "--" + text},
                                                    {"show", text, "A", "B"},
                                                    {"db", "synth", "a", "--records", text}}) {
    const std::string error = clitest::expect_user_error(arguments);
    EXPECT_THAT(error, SizeIs(testing::Lt(6000u)));
    EXPECT_THAT(error, Not(HasSubstr("\x1b")));
  }
  EXPECT_THAT(clitest::expect_user_error({"db", "synth", "a", "--records", text}), SizeIs(testing::Lt(300u)));
}

TEST(Dump, WhatIsNoDatabaseIsRefused) {
  const Folder folder;
  EXPECT_THAT(clitest::expect_user_error({"db", "dump", folder.file("none")}),
              HasSubstr(folder.file("none")));
  write(folder.file("text"), "text");
  EXPECT_THAT(clitest::expect_user_error({"db", "dump", folder.file("text")}),
              HasSubstr("not a product database"));
  EXPECT_EQ(read_file(folder.file("text")), "text");
}

TEST(Help, EveryCommandOfTheDatabaseHasItsHelp) {
  for (const std::vector<std::string>& command :
       {std::vector<std::string>{"db", "--help"}, {"db", "build", "--help"}, {"db", "dump", "--help"}}) {
    const Outcome outcome = run_program(command);
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_THAT(outcome.out, HasSubstr("Usage: tavd db"));
  }
  EXPECT_EQ(run_program({"db"}).exit_code, 2);
  EXPECT_EQ(run_program({"db", "build"}).exit_code, 2);
}

}  // namespace
