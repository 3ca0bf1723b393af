// `tavd report`: data sheets and schedules as documents, looked at with Poppler's tools.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

std::string output_of(const std::string& command) {
  FILE* const pipe = popen(command.c_str(), "r");
  EXPECT_NE(pipe, nullptr);
  std::string text;
  std::array<char, 4096> block;
  while (const std::size_t read = std::fread(block.data(), 1, block.size(), pipe))
    text.append(block.data(), read);
  EXPECT_EQ(pclose(pipe), 0) << command;
  return text;
}

struct Report : testing::Test {
  static void SetUpTestSuite() {
    shared = std::make_unique<clitest::Folder>();
    const Outcome outcome =
        run_program({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", shared->file("catalogue.tavdb")});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
  }
  static void TearDownTestSuite() { shared.reset(); }

  std::string database() const { return shared->file("catalogue.tavdb"); }
  std::string file(const std::string& name) const { return folder.file(name); }

  // Makes a document of the damper or another product.
  Outcome sheet(const std::string& target, std::vector<std::string> options = {},
                const std::string& class_id = "DMP", const std::string& id = "QZDA-160") const {
    options.insert(options.begin(),
                   {"report", database(), class_id, id, "--qv", "50", "--dp", "60", "-o", target});
    return run_program(options);
  }
  std::string schedule(const std::string& text) const {
    std::ofstream(file("rooms.csv"), std::ios::binary) << text;
    return file("rooms.csv");
  }
  std::string text_of(const std::string& pdf) const {
    return output_of("pdftotext -enc UTF-8 -layout '" + pdf + "' -");
  }

  static std::unique_ptr<clitest::Folder> shared;
  clitest::Folder folder;
};
std::unique_ptr<clitest::Folder> Report::shared;

TEST_F(Report, IsAPageOfA4WithTitleLanguageAndTheDatabasesTime) {
  constexpr std::chrono::sys_seconds kChanged{std::chrono::seconds{1741503600}};  // 2025-03-09 07:00 UTC
  std::filesystem::last_write_time(database(), std::chrono::file_clock::from_sys(kChanged));
  ASSERT_EQ(sheet(file("a.pdf"), {"--language", "de"}).exit_code, 0);
  const std::string info = output_of("TZ=UTC pdfinfo '" + file("a.pdf") + "'");
  EXPECT_THAT(info, ContainsRegex("Title: +QZDA-160: Technisches Datenblatt"));
  EXPECT_THAT(info, ContainsRegex("Subject: +Runde Regelklappe"));
  EXPECT_THAT(info, ContainsRegex("CreationDate: +Sun Mar  9 07:00:00 2025"));
  EXPECT_THAT(info, ContainsRegex("Tagged: +yes"));
  EXPECT_THAT(info, ContainsRegex("Pages: +1\n"));
  EXPECT_THAT(info, ContainsRegex("Page size: +595.27[0-9] x 841.89 pts \\(A4\\)"));
  EXPECT_THAT(read_file(file("a.pdf")), HasSubstr("/Lang (de)"));
  EXPECT_THAT(text_of(file("a.pdf")), HasSubstr("catalogue.tavdb, 2025-03-09 07:00 UTC"));
}

// What tavd calc answers for the same point.
TEST_F(Report, TellsAllAnswersWithTheirUnits) {
  ASSERT_EQ(sheet(file("a.pdf")).exit_code, 0);
  const std::string text = text_of(file("a.pdf"));
  for (const char* line :
       {"QZDA-160", "Round control damper", "adjustable damper", "160 mm", "16–160 l/s",
        "Lowest pressure +1.1 +Pa", "Highest pressure +927.6 +Pa", "Position, stepless +5.48 +in range",
        "Position, nearest setting +5.00", "A-weighted +41.4 +dB\\(A\\)", "in the room +37.4 +dB\\(A\\)",
        "not taken off", "40.8 +40.1 +40.4", "8.7 +6.5 +5.3", "Total pressure",
        "The position lies between measured settings", "Page 1 / 1"}) {
    EXPECT_THAT(text, ContainsRegex(line));
  }
}

TEST_F(Report, HasItsFontsEmbedded) {
  for (const char* language : {"en", "ru", "zh", "ar"}) {
    ASSERT_EQ(sheet(file("a.pdf"), {"--language", language}).exit_code, 0);
    const std::vector<std::string> fonts = clitest::lines_of(output_of("pdffonts '" + file("a.pdf") + "'"));
    ASSERT_GT(fonts.size(), 3U);
    for (std::size_t i = 2; i < fonts.size(); ++i) {
      EXPECT_THAT(fonts[i], ContainsRegex("yes yes yes +[0-9]+ +0$"))
          << language;  // embedded, subset, Unicode
      EXPECT_THAT(fonts[i], Not(HasSubstr("Type 3"))) << language;
    }
  }
}

TEST_F(Report, GivesTheSameBytesForTheSameInput) {
  for (const char* ending : {"pdf", "svg", "png"}) {
    const std::string name = std::string("a.") + ending;
    ASSERT_EQ(sheet(file(name)).exit_code, 0);
    ASSERT_EQ(sheet(file("b"), {"--format", ending}).exit_code, 0);
    EXPECT_EQ(read_file(file(name)), read_file(file("b"))) << ending;
  }
  const Outcome outcome = sheet("-", {"--format", "pdf"});
  EXPECT_EQ(outcome.out, read_file(file("a.pdf")));
}

TEST_F(Report, AsPdfTakesAtMost80KB) {
  constexpr std::size_t kMostBytes = 80 * 1024;
  for (const char* language : {"en", "ru", "zh", "ar"}) {
    ASSERT_EQ(sheet(file("a.pdf"), {"--language", language, "--param", "G=30"}, "ASD", "QZSA-160").exit_code,
              0);
    EXPECT_LT(std::filesystem::file_size(file("a.pdf")), kMostBytes) << language;
  }
}

TEST_F(Report, AsSvgHasTitleDescriptionAndTexts) {
  ASSERT_EQ(sheet(file("a.svg"), {"--language", "sv"}).exit_code, 0);
  const std::string svg = read_file(file("a.svg"));
  EXPECT_THAT(svg, HasSubstr("QZDA-160: Produktdatablad</title>"));
  EXPECT_THAT(svg, ContainsRegex("<desc[^>]*>[^<]*Totaltryck: 60 Pa"));
  EXPECT_THAT(svg, ContainsRegex("<text[^>]*>Lägsta tryck"));
  EXPECT_THAT(svg, HasSubstr("width=\"210mm\" height=\"297mm\""));
  EXPECT_EQ(output_of("python3 -c 'import sys, xml.dom.minidom as m; m.parse(sys.argv[1])' '" +
                      file("a.svg") + "'"),
            "");
}

TEST_F(Report, HasDecimalsAndUnitsOfTheLanguageAndTheMarket) {
  ASSERT_EQ(sheet(file("a.pdf"), {"--market", "RUS"}).exit_code, 0);
  EXPECT_THAT(text_of(file("a.pdf")), HasSubstr("180 м³/ч"));
  EXPECT_THAT(text_of(file("a.pdf")), ContainsRegex("927,6 +Па"));
  ASSERT_EQ(sheet(file("a.pdf"), {"--units", "cfm,inwg"}).exit_code, 0);
  EXPECT_THAT(text_of(file("a.pdf")), HasSubstr("106 cfm"));
}

TEST_F(Report, SaysWhatLiesOutsideAndWhatCannotBe) {
  const Outcome outcome = run_program(
      {"report", database(), "GRL", "QZGA-400x200-D+W", "--qv", "700", "--dp", "300", "-o", file("a.pdf")});
  ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
  const std::string text = text_of(file("a.pdf"));
  EXPECT_THAT(text, HasSubstr("The flow lies outside the product's limits, 64–640 l/s."));
  EXPECT_THAT(text, HasSubstr("The pressure lies outside the product's limits, 1–200 Pa."));
  EXPECT_THAT(text, HasSubstr("The product cannot have this pressure at this flow: it takes"));
}

TEST_F(Report, GivesAnswersAndCurvesAsNumbers) {
  const Outcome outcome = sheet(file("a.pdf"), {"--data", file("a.json")}, "ASD", "QZSA-160");
  ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
  const Json::Value data = clitest::parse_json(read_file(file("a.json")));
  const Json::Value calculated = clitest::parse_json(
      run_program({"calc", database(), "ASD", "QZSA-160", "--qv", "50", "--dp", "60", "--json"}).out);
  for (const std::string& name : calculated.getMemberNames()) EXPECT_EQ(data[name], calculated[name]) << name;
  EXPECT_EQ(data["database"]["name"], "catalogue.tavdb");
  const Json::Value& curves = data["curves"]["pressure"]["curves"];
  ASSERT_GT(curves.size(), 6U);
  EXPECT_EQ(curves[0]["family"], "position");
  EXPECT_EQ(curves[0]["value"], 1);
  EXPECT_EQ(curves[0]["x"].size(), curves[0]["y"].size());
  EXPECT_GT(data["curves"]["throw"]["curves"].size(), 0U);
}

TEST_F(Report, OfAScheduleHasATableAndASheetForEachProductAndPoint) {
  const std::string rooms = schedule(
      "room,qv [l/s],dp [Pa],class\nHall,35,40,ASD\nBath,30,60,AEX\nAttic,1,60,AEX\nHall too,35,40,ASD\n");
  const Outcome outcome = run_program({"report", database(), "--duties", rooms, "-o", file("a.pdf")});
  ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("a.pdf: 4 duties, 1 without a product that fits, 3 pages"));
  const std::string text = text_of(file("a.pdf"));
  EXPECT_THAT(text, ContainsRegex("Hall +35 +40 +QZ"));
  EXPECT_THAT(text, ContainsRegex("Attic +1 +60 +no product fits"));
  EXPECT_THAT(text, HasSubstr("Page 3 / 3"));
  EXPECT_THAT(output_of("pdfinfo -dests '" + file("a.pdf") + "'"),
              testing::AllOf(ContainsRegex(" 1 .*\"schedule\""), ContainsRegex(" 2 .*\"sheet-1\""),
                             ContainsRegex(" 3 .*\"sheet-2\"")));
  // Bookmarks with the pages that they lead to, and links from the table to the sheets and back.
  const std::string pages = output_of("pdftohtml -xml -i -stdout '" + file("a.pdf") + "'");
  EXPECT_THAT(pages, ContainsRegex("<item page=\"1\">Product schedule</item>"));
  EXPECT_THAT(pages, ContainsRegex("<item page=\"2\">QZ"));
  EXPECT_THAT(pages, ContainsRegex("<item page=\"3\">QZ"));
  for (const char* page : {"#1\"", "#2\"", "#3\""})
    EXPECT_THAT(pages, ContainsRegex(std::string("href=\"[^\"]*") + page));
}

TEST_F(Report, OfABadScheduleSaysWhereAndLeavesTheFileAlone) {
  const std::string rooms = schedule("room,qv [l/s],dp [Pa]\nHall,many,40\nBath,30,60\n");
  std::ofstream(file("a.pdf")) << "as it was";
  const Outcome outcome = run_program({"report", database(), "--duties", rooms, "-o", file("a.pdf")});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("rooms.csv:2:6: qv is \"many\""));
  EXPECT_EQ(read_file(file("a.pdf")), "as it was");
  EXPECT_THAT(folder.names(), testing::ElementsAre("a.pdf", "rooms.csv"));
  const Outcome skipped =
      run_program({"report", database(), "--duties", rooms, "-o", file("a.pdf"), "--skip-bad"});
  EXPECT_EQ(skipped.exit_code, 0) << skipped.err;
  EXPECT_THAT(skipped.err, HasSubstr("1 line of "));
  EXPECT_THAT(skipped.out, HasSubstr("1 duty, all with a product that fits, 2 pages"));
}

TEST_F(Report, RefusesWhatItCannotDo) {
  const std::string rooms = schedule("room,qv [l/s],dp [Pa]\nHall,50,40\n");
  EXPECT_THAT(expect_user_error({"report", database(), "DMP", "QZDA-160", "--qv", "50", "-o", file("a.jpg")}),
              HasSubstr("expected a name that ends in .pdf, .svg or .png"));
  EXPECT_THAT(expect_user_error({"report", database(), "--duties", rooms, "-o", file("a.svg")}),
              HasSubstr("expected a name that ends in .pdf"));
  EXPECT_THAT(expect_user_error({"report", database(), "DMP", "QZDA-160", "-o", file("a.pdf")}),
              HasSubstr("--qv is required"));
  EXPECT_THAT(expect_user_error({"report", database(), "-o", file("a.pdf")}), HasSubstr("--duties"));
  EXPECT_THAT(expect_user_error({"report", database(), "DMP", "--duties", rooms, "-o", file("a.pdf")}),
              HasSubstr("for one product"));
  EXPECT_THAT(expect_user_error({"report", database(), "--duties", rooms, "-o", rooms, "--format", "pdf"}),
              HasSubstr("is what is read"));
  EXPECT_THAT(folder.names(), testing::ElementsAre("rooms.csv"));
}

// With fonts that have Latin alone.
TEST_F(Report, SaysThatNoFontHasALetter) {
  std::ofstream(file("fonts.conf")) << "<fontconfig><dir>/usr/share/fonts/truetype/liberation</dir><cachedir>"
                                    << file("cache") << "</cachedir></fontconfig>";
  setenv("FONTCONFIG_FILE", file("fonts.conf").c_str(), 1);
  const Outcome chinese = sheet(file("a.pdf"), {"--language", "zh"});
  const Outcome english = sheet(file("b.pdf"));
  unsetenv("FONTCONFIG_FILE");
  EXPECT_EQ(chinese.exit_code, 0);
  EXPECT_THAT(chinese.err,
              ContainsRegex("no installed font has all letters of \".+\" and of [0-9]+ other texts"));
  EXPECT_EQ(english.err, "");
  EXPECT_EQ(sheet(file("c.pdf"), {"--language", "zh"}).err, "");
}

TEST_F(Report, SaysThatALanguageHasNoWords) {
  const Outcome outcome = sheet(file("a.pdf"), {"--language", "pl"});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_THAT(outcome.err, HasSubstr("they are in English"));
  EXPECT_THAT(text_of(file("a.pdf")), HasSubstr("Product data sheet"));
}

}  // namespace
