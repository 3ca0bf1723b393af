// `tavd db import`: tables with units in their headings as sources of the catalogue.
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
using clitest::run_text;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Import : testing::Test {
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(folder.file(name), std::ios::binary) << text;
  }
  Outcome run(const std::string& kind, const std::vector<std::string>& options = {},
              const std::vector<std::string>& tables = {"t.csv"}) const {
    std::vector<std::string> arguments = {"db",      "import", "--kind", kind,
                                          "--class", "TST",    "-o",     folder.file("my.json")};
    for (const std::string& table : tables) arguments.push_back(folder.file(table));
    arguments.insert(arguments.end(), options.begin(), options.end());
    return run_program(arguments);
  }
  // The products that a table of product X, 160 mm, gives; the source is built without a finding.
  Json::Value products(const std::string& table, const std::string& kind,
                       const std::vector<std::string>& options = {"--id", "X", "--size", "160"}) const {
    write("t.csv", table);
    const Outcome outcome = run(kind, options);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    return built();
  }
  Json::Value built() const {
    run_text({"db", "build", folder.file("my.json"), "-o", folder.file("my.tavdb"), "--strict"});
    const Json::Value all = clitest::parse_json(run_text({"db", "dump", folder.file("my.tavdb")}));
    Json::Value products(Json::arrayValue);
    for (const Json::Value& record : all) {
      if (record["class"].asString() == "TST") products.append(record);
    }
    return products;
  }
  // The faults that are told for this table, without the file's name; nothing is written.
  std::vector<std::string> faults_of(const std::string& table, const std::string& kind = "damper",
                                     const std::vector<std::string>& options = {"--id", "X", "--size",
                                                                                "160"}) const {
    write("t.csv", table);
    write("my.json", "old");
    const Outcome outcome = run(kind, options);
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(read_file(folder.file("my.json")), "old");
    EXPECT_THAT(folder.names(), ElementsAre("my.json", "t.csv"));
    std::vector<std::string> lines = lines_of(outcome.err);
    if (lines.empty()) return lines;
    const std::size_t told = lines.size() - 1;
    EXPECT_EQ(lines[0], "tavd: " + std::to_string(told) + (told == 1 ? " fault" : " faults") +
                            " in the tables, nothing is written");
    lines.erase(lines.begin());
    for (std::string& line : lines) {
      if (line.starts_with(folder.file("t.csv:"))) line.erase(0, folder.file("t.csv:").size());
    }
    return lines;
  }

  Folder folder;
};

std::vector<std::vector<float>> rows_of(const Json::Value& table) {
  std::vector<std::vector<float>> rows;
  for (const Json::Value& row : table) {
    rows.emplace_back();
    for (const Json::Value& value : row) {
      if (value.isNumeric()) rows.back().push_back(value.asFloat());
    }
  }
  return rows;
}

constexpr const char* kSettings =
    "pos;qv [m3/h];dp [kPa]\n"
    "1;72;0,15\n"
    "2;144,0;0,1\n"
    "3;288;0,05\n";

TEST_F(Import, UnitsOfTheHeadingAreConverted) {
  const Json::Value product = products(kSettings, "damper")[0];
  EXPECT_THAT(rows_of(product["damperpoints"]),
              ElementsAre(ElementsAre(1, 20, 150), ElementsAre(2, 40, 100), ElementsAre(3, 80, 50)));
  const Json::Value& header = product["flowheader"];
  EXPECT_EQ(header["kind"].asInt(), 120);
  EXPECT_EQ(header["b"].asInt(), 160);
  EXPECT_EQ(header["h"].asInt(), 0);
  EXPECT_FLOAT_EQ(header["qvmin"].asFloat(), 20);
  EXPECT_FLOAT_EQ(header["qvmax"].asFloat(), 80);
  EXPECT_FLOAT_EQ(header["dpmin"].asFloat(), 50);
  EXPECT_FLOAT_EQ(header["dpmax"].asFloat(), 150);
  EXPECT_EQ(product["code"]["default"].asString(), "X");
}

TEST_F(Import, SeparatorsDecimalSignsMarksAndLineEndsAreThoseOfTheTable) {
  const std::vector<std::vector<float>> rows = {{20, 15}, {80.5F, 50}};
  for (const char* table :
       {"qv [l/s];dp [Pa]\n20;15\n80,5;50\n", "qv [l/s],dp [Pa]\n20,15\n80.5,50\n",
        "qv [l/s]\tdp [Pa]\n20\t15\n80,5\t50", "\xEF\xBB\xBFqv [l/s];dp [Pa]\r\n20;15\r\n80.5;50\r\n",
        "\"qv [l/s]\",\"dp [Pa]\"\n20,15\n\"80,5\",50\n", "dp (Pa) ; QV (L/S);\n  15 ; 20 ;\n50;80,5;\n;;\n",
        "qv [m³/h];dp [Pa]\n72;15\n289,8;50\n"}) {
    EXPECT_EQ(rows_of(products(table, "curve", {"--id", "X", "--size", "160"})[0]["qvdppoints"]), rows)
        << table;
  }
}

TEST_F(Import, VelocitiesAndFlowsAreConvertedThroughTheSize) {
  // 0.24 m2, and 0.0314159 m2 of 200 mm.
  const Json::Value face = products("qv [m3/h],dp [Pa]\n864,10\n1728,40\n", "resistance-by-velocity",
                                    {"--id", "X", "--size", "600x400"})[0];
  EXPECT_FLOAT_EQ(face["qvdpref"]["qvref"].asFloat(), 2);
  EXPECT_EQ(face["flowheader"]["kind"].asInt(), 111);
  EXPECT_EQ(face["flowheader"]["h"].asInt(), 400);
  const Json::Value round =
      products("v [m/s],dp [Pa]\n1,10\n2,40\n", "resistance", {"--id", "X", "--size", "200"})[0];
  EXPECT_FLOAT_EQ(round["qvdpref"]["qvref"].asFloat(), 62.831853F);
  EXPECT_FLOAT_EQ(round["qvdpref"]["dpref"].asFloat(), 40);
}

TEST_F(Import, RowsArePutInTheOrderOfTheKind) {
  const std::string heading = "setting,qv [l/s],dp [Pa],63,125,250 Hz,500,1k,2 kHz,4000,8000\n";
  const std::string bands = ",40,40,40,40,40,40,40,40\n";
  const Json::Value product =
      products(heading + "3,80,50" + bands + "3,40,12.5" + bands + "1,40,600" + bands + "1,20,150" + bands,
               "damper")[0];
  EXPECT_THAT(rows_of(product["damperpoints"]), ElementsAre(ElementsAre(1, 40, 600), ElementsAre(3, 80, 50)));
  EXPECT_THAT(rows_of(product["lwpoints"]), ElementsAre(ElementsAre(20, 150), ElementsAre(40, 600),
                                                        ElementsAre(40, 12.5F), ElementsAre(80, 50)));
}

TEST_F(Import, SoundWithoutSettingsIsOrderedByItsResistance) {
  const std::string bands = ",40,40,40,40,40,40,40,40\n";
  const Json::Value product = products("qv [l/s],dp [Pa],63,125,250,500,1k,2k,4k,8k\n80,50" + bands +
                                           "40,600" + bands + "40,13" + bands + "20,150" + bands,
                                       "throttle")[0];
  EXPECT_THAT(rows_of(product["lwpoints"]), ElementsAre(ElementsAre(20, 150), ElementsAre(40, 600),
                                                        ElementsAre(40, 13), ElementsAre(80, 50)));
}

TEST_F(Import, SoundByFlowIsOrderedByFlowAndPressure) {
  const std::string bands = ",40,40,40,40,40,40,40,40\n";
  const Json::Value product = products("qv [l/s],dp [Pa],63,125,250,500,1k,2k,4k,8k\n80,300" + bands +
                                           "80,50" + bands + "20,300" + bands + "20,50" + bands,
                                       "range")[0];
  EXPECT_THAT(rows_of(product["lwpoints"]), ElementsAre(ElementsAre(20, 50), ElementsAre(20, 300),
                                                        ElementsAre(80, 50), ElementsAre(80, 300)));
}

TEST_F(Import, AFansCurveAreTheRowsWithoutBands) {
  const std::string bands = ",40,40,40,40,40,40,40,40\n";
  const Json::Value product = products(
      "qv [l/s],dp [Pa],aux,63,125,250,500,1k,2k,4k,8k\n80,100,60,,,,,,,,\n20,300,40\n"
      "20,150," +
          bands + "20,300," + bands + "80,50," + bands + "80,100," + bands,
      "fan")[0];
  EXPECT_THAT(rows_of(product["fancurve"]), ElementsAre(ElementsAre(20, 300, 40), ElementsAre(80, 100, 60)));
  EXPECT_EQ(product["lwpoints"].size(), 4u);
}

TEST_F(Import, LevelsAreRoundedAndThrowsAreInMetres) {
  const Json::Value product = products(
      "qv [l/s];dp [Pa];63;125;250;500;1000;2000;4000;8000;LwA;throw [cm]\n"
      "20;5;40,4;40,5;40;40;40;40;40;40;47;150\n"
      "40;20;40;40;40;40;40;40;40;40;;300\n",
      "resistance")[0];
  EXPECT_EQ(product["lwpoints"][0][2][0].asInt(), 40);
  EXPECT_EQ(product["lwpoints"][0][2][1].asInt(), 41);
  EXPECT_THAT(rows_of(product["qvL2"]), ElementsAre(ElementsAre(20, 1.5F), ElementsAre(40, 3)));
}

TEST_F(Import, AStatedLevelThatIsWrongIsToldWhenItIsBuilt) {
  write("t.csv",
        "qv [l/s],dp [Pa],63,125,250,500,1000,2000,4000,8000,LwA\n20,5,40,40,40,40,40,40,40,40,47\n"
        "40,20,40,40,40,40,40,40,40,40,43\n");
  EXPECT_EQ(run("resistance", {"--id", "X", "--size", "160"}).exit_code, 0);
  const Outcome outcome =
      run_program({"db", "build", folder.file("my.json"), "-o", folder.file("a"), "--strict"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err,
              HasSubstr("TST X: lwpoints[2].LwA: expected about 47.0 dB(A), the sum of the bands, found 43"));
}

TEST_F(Import, SeveralProductsStandInOneTableAndOneProductInSeveral) {
  const Json::Value two = products(
      "id;size;description;qv [l/s];dp [Pa]\nA;160;Box;20;5\nA;160;;40;20\n"
      "B \"round\";250X200;Löwe;40;5\nB \"round\";;;80;20\n",
      "resistance", {});
  ASSERT_EQ(two.size(), 2u);
  EXPECT_EQ(two[0]["id"].asString(), "A");
  EXPECT_EQ(two[0]["description"]["English"].asString(), "Box");
  EXPECT_EQ(two[1]["id"].asString(), "B \"round\"");
  EXPECT_EQ(two[1]["flowheader"]["h"].asInt(), 200);
  EXPECT_EQ(two[1]["description"]["English"].asString(), "Löwe");

  write("t.csv", kSettings);
  write("u.csv", "L2 [m],qv [m3/h]\n1,72\n4,288\n");
  EXPECT_EQ(run("damper", {"--id", "X", "--size", "160"}, {"t.csv", "u.csv"}).exit_code, 0);
  EXPECT_THAT(rows_of(built()[0]["qvL2"]), ElementsAre(ElementsAre(20, 1), ElementsAre(80, 4)));
}

TEST_F(Import, OptionsTellWhatTablesDoNot) {
  const Json::Value product = products(kSettings, "damper",
                                       {"--id", "X", "--size", "160", "--static", "--description", "Damper",
                                        "--flow-limits", "16,160", "--pressure-limits", "2.5,300"})[0];
  EXPECT_EQ(product["flowheader"]["kind"].asInt(), 20);
  EXPECT_FLOAT_EQ(product["flowheader"]["qvmax"].asFloat(), 160);
  EXPECT_FLOAT_EQ(product["flowheader"]["dpmin"].asFloat(), 2.5F);
  EXPECT_EQ(product["description"]["English"].asString(), "Damper");
}

TEST_F(Import, HeadingsThatAreNotKnownAreToldWithTheirPlace) {
  EXPECT_THAT(
      faults_of("pos;qvv [m3/h];dp;L2 [s];pos\n1;2;3;4;5\n"),
      ElementsAre(
          "1:5: unknown column \"qvv\" (did you mean \"qv\"?), expected id, description, size, pos, qv, v, "
          "dp, the bands 63 to 8000, LwA, L2, aux; a column without a heading is not read",
          "1:16: no unit in \"dp\", expected one such as dp [Pa] or dp [kPa]",
          "1:19: an unknown unit in \"L2 [s]\", expected one such as L2 [m]",
          "1:26: \"pos\" is a second column of its kind, expected one"));
  EXPECT_THAT(
      faults_of("qv [Pa];dp [l/s]\n1;2\n"),
      ElementsAre("1:1: an unknown unit in \"qv [Pa]\", expected one such as qv [l/s], qv [m3/h] or v [m/s]",
                  "1:9: an unknown unit in \"dp [l/s]\", expected one such as dp [Pa] or dp [kPa]"));
}

TEST_F(Import, AColumnWithoutAHeadingIsNotRead) {
  const Json::Value product =
      products("qv [l/s];;dp [Pa];\n20;a note;10;\n40;;40;another\n", "resistance")[0];
  EXPECT_FLOAT_EQ(product["qvdpref"]["dpref"].asFloat(), 40);
}

TEST_F(Import, CellsThatAreNoNumbersAreToldWithTheirPlace) {
  EXPECT_THAT(
      faults_of("pos;qv [m3/h];dp [Pa]\n1;7 2;0,15\n2;Ω;nan\n3;1,5;1.5\n"),
      ElementsAre(
          "2:3: found \"7 2\", expected a number such as 12.5",
          "3:3: found \"Ω\", expected a number such as 12,5",
          "3:5: found \"nan\", expected a number such as 12,5",
          "4:7: found \"1.5\", expected a number with \",\" as its decimal sign, as in the rows before"));
  EXPECT_THAT(
      faults_of("pos,qv [m3/h],dp [Pa]\n1,72,0,15\n"),
      ElementsAre(
          "2:8: more cells than the heading has, expected 3; numbers with a decimal comma need another "
          "separator between the cells"));
  EXPECT_THAT(faults_of("id;qv [l/s];dp [Pa];size\nA;1;2;16O\n", "resistance", {}),
              ElementsAre(HasSubstr("2:7: size is \"16o\", expected a diameter such as 160")));
}

TEST_F(Import, BandsAreAllOrNoneAndLevelsThatCanBeStored) {
  EXPECT_THAT(faults_of("qv [l/s];dp [Pa];63;125;250\n20;5;40;40;\n", "resistance"),
              ElementsAre("2:6: 2 bands, expected all 8 from 63 to 8000 Hz or none in a row"));
  EXPECT_THAT(
      faults_of("qv [l/s];dp [Pa];63;125;250;500;1000;2000;4000;8000\n20;5;-1;256;40;40;40;40;40;40\n",
                "resistance"),
      ElementsAre("2:6: found \"-1\", expected a level from 0 to 255 dB",
                  "2:9: found \"256\", expected a level from 0 to 255 dB"));
}

TEST_F(Import, WhatTheKindNeedsIsMissed) {
  EXPECT_THAT(faults_of("qv [l/s];dp [Pa]\n20;5\n40;20\n"),
              ElementsAre("2:1: X: expected rows with pos, qv and dp, as the product is a damper"));
  EXPECT_THAT(faults_of("qv [l/s];dp [Pa]\n20;5\n", "resistance", {}),
              ElementsAre("2:1: : expected an id, by --id or in a column of that name",
                          "2:1: : expected a size, by --size or in a column of that name",
                          "2:1: : expected different flows in its rows, or --flow-limits LOW,HIGH",
                          "2:1: : expected different pressures in its rows, or --pressure-limits LOW,HIGH"));
  EXPECT_THAT(
      faults_of("v [m/s];dp [Pa]\n20;5\n", "resistance", {"--id", "X"}),
      ElementsAre("2:1: an air velocity where the kind has flows, expected a size to convert it with"));
  std::string rows = "pos;qv [l/s];dp [Pa]\n";
  for (int i = 1; i <= 21; ++i)
    rows += std::to_string(i) + ";" + std::to_string(20 + i) + ";" + std::to_string(100 - i) + '\n';
  EXPECT_THAT(faults_of(rows), ElementsAre("22:1: X: 21 rows for damperpoints, expected at most 20"));
}

TEST_F(Import, NothingInARowIsLeftOutWithoutAWord) {
  EXPECT_THAT(
      faults_of("pos;qv [l/s];dp [Pa];L2 [m];LwA;63;125;250;500;1000;2000;4000;8000\n"
                "1;20;;;;;;;;;;;\n;20;100;;40;;;;;;;;\n;;100;;;;;;;;;;\n;20;;;;;;;;;;;\n"
                ";20;;;;40;40;40;40;40;40;40;40\n"),
      ElementsAre("2:1: a setting or bands, expected qv and dp beside them",
                  "3:1: LwA without bands, expected the bands from 63 to 8000: they are what is stored",
                  "4:1: a row without qv, expected it in each row",
                  "5:1: a row with qv alone, expected dp or L2 beside it",
                  "6:1: a setting or bands, expected qv and dp beside them"));
  EXPECT_THAT(faults_of("pos;qv [l/s];dp [Pa]\n1;20;5\n1;40;20\n", "resistance"),
              ElementsAre("2:1: X: expected no pos, as the kind has no settings"));
  EXPECT_THAT(faults_of("qv [l/s];dp [Pa];aux\n20;5;1\n40;20;2\n", "resistance"),
              ElementsAre("2:1: X: expected no aux, which fans alone have"));
}

TEST_F(Import, PointsOffTheSquareLawAreTold) {
  EXPECT_THAT(
      faults_of("qv [l/s];dp [Pa]\n20;16\n40;40\n80;160\n", "resistance"),
      ElementsAre("2:1: X: expected about 10 Pa, as the square law has it through 160 Pa at 80, found 16 Pa; "
                  "--kind curve takes points of any law"));
  EXPECT_THAT(
      faults_of("pos;qv [l/s];dp [Pa]\n1;20;100\n1;40;300\n2;40;50\n"),
      ElementsAre(
          "3:1: X: expected about 400 Pa, as the square law has it through 100 Pa at 20, found 300 Pa: the "
          "rows of a setting have one resistance"));
  EXPECT_EQ(products("qv [l/s];dp [Pa]\n20;11\n40;44\n80;160\n", "resistance")[0]["qvdpref"]["dpref"].asInt(),
            160);
}

TEST_F(Import, TablesThatAreNoneAreRefused) {
  EXPECT_THAT(faults_of(""), ElementsAre("1:1: an empty table, expected a heading and rows of values"));
  EXPECT_THAT(faults_of("pos;qv [l/s];dp [Pa]\n;;\n"),
              ElementsAre("1:1: no rows below the heading, expected some"));
  EXPECT_THAT(faults_of("pos;qv [m\xB3/h]\n"),
              ElementsAre("1:10: expected UTF-8, found a byte that is none: save the table as CSV in UTF-8"));
  EXPECT_THAT(faults_of("pos;\"qv [l/s];dp [Pa]\n1;2;3\n"),
              ElementsAre("1:5: a quote that is not closed, expected another one"));
  write("t.csv", std::string("q\0v\0", 4));
  EXPECT_THAT(run("damper", {"--id", "X"}).err, HasSubstr("t.csv: byte 2 is NUL, expected UTF-8 text"));
  EXPECT_THAT(run("damper", {"--id", "X"}, {"none.csv"}).err, HasSubstr("none.csv: cannot be opened"));
}

TEST_F(Import, OptionsThatCannotBeAreRefused) {
  write("t.csv", kSettings);
  EXPECT_THAT(run("dampr").err, HasSubstr("--kind is \"dampr\", expected resistance (10)"));
  EXPECT_THAT(run("damper", {"--size", "x"}).err, HasSubstr("--size is \"x\", expected a diameter"));
  EXPECT_THAT(run("damper", {"--flow-limits", "200,20"}).err,
              HasSubstr("--flow-limits is \"200,20\", expected the lower limit first"));
  EXPECT_THAT(run("damper", {"--flow-limits", "20"}).err,
              HasSubstr("--flow-limits is \"\", expected a number above 0"));
  EXPECT_THAT(run("damper", {"--id", std::string(31, 'x'), "--size", "160"}).err,
              HasSubstr("expected an id of at most 30 characters"));
  EXPECT_THAT(run_program({"db", "import", folder.file("t.csv"), "--kind", "20", "--class", "DAMPER"}).err,
              HasSubstr("--class is \"DAMPER\", expected exactly 3 characters"));
  const Outcome outcome = run_program({"db", "import", folder.file("t.csv"), "--kind", "damper", "--class",
                                       "TST", "--id", "X", "--size", "160", "-o", folder.file("t.csv")});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("is one of the tables, expected another name for the source"));
  EXPECT_EQ(read_file(folder.file("t.csv")), kSettings);
}

// The table that the document shows is the damper that it shows as an entry.
TEST_F(Import, TheTableOfTheDocumentIsItsDamper) {
  const std::string document = read_file(TAVD_SOURCE_DIR "/docs/catalogue.md");
  const std::size_t start = document.find("```csv\n");
  ASSERT_NE(start, std::string::npos);
  const std::size_t end = document.find("```\n", start + 7);
  write("table.csv", document.substr(start + 7, end - start - 7));
  EXPECT_THAT(
      document,
      HasSubstr(
          "tavd db import table.csv --kind damper --class DMP --id MY-DAMPER-160 --size 160 -o my.json"));
  run_text({"db", "import", folder.file("table.csv"), "--kind", "damper", "--class", "DMP", "--id",
            "MY-DAMPER-160", "--size", "160", "-o", folder.file("a.json")});
  run_text({"db", "new-entry", "--kind", "damper", "-o", folder.file("b.json")});
  Json::Value tables[2];
  for (const int i : {0, 1}) {
    const std::string source = folder.file(i == 0 ? "a.json" : "b.json");
    run_text({"db", "build", source, "-o", folder.file("my.tavdb"), "--strict"});
    tables[i] = clitest::parse_json(run_text({"db", "dump", folder.file("my.tavdb")}))[1];
  }
  EXPECT_EQ(tables[0]["id"], tables[1]["id"]);
  EXPECT_EQ(tables[0]["damperpoints"], tables[1]["damperpoints"]);
  EXPECT_EQ(tables[0]["lwpoints"], tables[1]["lwpoints"]);
}

}  // namespace
