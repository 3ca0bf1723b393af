#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/value.h>

#include <sstream>

#include "samples.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::lines_of;
using clitest::Outcome;
using clitest::run_program;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

struct List : testing::Test {
  List() { clitest::add_samples(database); }

  std::string run(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"list", database.path()});
    const Outcome outcome = run_program(options);
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
  }

  Json::Value run_json(std::vector<std::string> options = {}) const {
    options.emplace_back("--json");
    Json::Value json;
    std::istringstream text(run(options));
    std::string errors;
    EXPECT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), text, &json, &errors)) << errors;
    return json;
  }

  tavdtest::Database database;
};

TEST_F(List, ShowsProductsInRecordOrderWithoutHeaderAndModelRecords) {
  EXPECT_THAT(lines_of(run()),
              ElementsAre(StartsWith("CLASS  ID"), StartsWith("AEX    GRILLE-400x200  "),
                          StartsWith("ASD    DAMPER-200      "), StartsWith("ASD    FIXED-100       "),
                          StartsWith("FAN    FAN-315         ")));
}

TEST_F(List, TellsKindSizeLimitsCodeAndEnglishDescription) {
  const std::string line = lines_of(run()).at(2);
  for (const char* part :
       {"adjustable damper", "  200  ", "20 - 200 l/s", "10 - 500 Pa", "Damper 200", "Round damper"}) {
    EXPECT_THAT(line, HasSubstr(part));
  }
}

TEST_F(List, ShowsVelocitiesAndRectangularSizes) {
  const std::string line = lines_of(run()).at(1);
  EXPECT_THAT(line, HasSubstr("fixed resistance by air velocity"));
  EXPECT_THAT(line, HasSubstr("400x200"));
  EXPECT_THAT(line, HasSubstr("1 - 10 m/s"));
}

TEST_F(List, LinesUpBehindWideCharacters) {
  const std::vector<std::string> lines = lines_of(run({"--class", "ASD"}));
  const std::size_t heading = lines.at(0).find("DESCRIPTION");
  EXPECT_EQ(lines.at(1).find("Round damper"), heading);
  // Two characters of three bytes each that take two columns each: two bytes more than columns.
  EXPECT_EQ(lines.at(2).find("Fixed"), heading + 2);
}

TEST_F(List, LinesUpBehindLettersOfTwoBytes) {
  const std::vector<std::string> lines =
      lines_of(run({"--class", "ASD", "--market", "fin", "--language", "en"}));
  EXPECT_THAT(lines.at(1), HasSubstr("S\xC3\xA4\xC3\xA4t\xC3\xB6pelti 200"));
  EXPECT_EQ(lines.at(1).find("Round damper"), lines.at(0).find("DESCRIPTION") + 3);
}

TEST_F(List, NoLineEndsInBlanks) {
  for (const std::string& line : lines_of(run())) EXPECT_NE(line.back(), ' ') << line;
}

TEST_F(List, KeepsToTheClassAskedFor) {
  EXPECT_THAT(lines_of(run({"--class", "FAN"})), ElementsAre(StartsWith("CLASS"), StartsWith("FAN  ")));
}

TEST_F(List, ShowsModelRecordsWhenTheirClassIsNamed) {
  EXPECT_THAT(lines_of(run({"--class", "TVM"})),
              ElementsAre(StartsWith("CLASS"),
                          testing::AllOf(StartsWith("TVM    MODEL"), HasSubstr("no flow data"))));
}

TEST_F(List, TakesTheDescriptionInTheLanguageAskedForInEachSpelling) {
  for (const char* language : {"sv", "SWE", "swedish", "1511"}) {
    EXPECT_THAT(run({"--language", language}), HasSubstr("Runt spj\xC3\xA4ll")) << language;
  }
}

TEST_F(List, TakesTheLanguageOfTheMarketWhenNoneIsNamed) {
  EXPECT_THAT(run({"--market", "SWE"}), HasSubstr("Runt spj\xC3\xA4ll"));
}

TEST_F(List, ControlCharactersInTextsDoNotReachTheTerminal) {
  tavdtest::Record("ASD", "EVIL").text(clitest::kCode, "a\x1B[2Jb\nc").save(database.handle());
  const std::string out = run();
  EXPECT_THAT(out, Not(HasSubstr("\x1B")));
  EXPECT_THAT(out, HasSubstr("a [2Jb c"));
}

TEST_F(List, JsonHoldsTheSameWithUnitsInTheKeys) {
  const Json::Value json = run_json();
  ASSERT_EQ(json.size(), 4u);
  const Json::Value& damper = json[1];
  EXPECT_EQ(damper["class"].asString(), "ASD");
  EXPECT_EQ(damper["id"].asString(), "DAMPER-200");
  EXPECT_EQ(damper["kind"].asInt(), 20);
  EXPECT_EQ(damper["kind_text"].asString(), "adjustable damper");
  EXPECT_EQ(damper["size"]["diameter_mm"].asInt(), 200);
  EXPECT_EQ(damper["limits"]["qv_min_l_s"].asFloat(), 20.0F);
  EXPECT_EQ(damper["limits"]["dp_max_Pa"].asFloat(), 500.0F);
  EXPECT_EQ(damper["code"].asString(), "Damper 200");
  EXPECT_EQ(json[0]["size"]["width_mm"].asInt(), 400);
  EXPECT_EQ(json[0]["size"]["height_mm"].asInt(), 200);
  EXPECT_EQ(json[0]["limits"]["v_max_m_s"].asFloat(), 10.0F);
}

TEST_F(List, CsvHoldsTheSameWithUnitsInTheHeading) {
  tavdtest::Record("ASD", "QUOTED").text(clitest::kCode, "a \"b\", c").save(database.handle());
  EXPECT_THAT(
      lines_of(run({"--csv"})),
      ElementsAre("class,id,kind,size_mm,qv_min_l_s,qv_max_l_s,v_min_m_s,v_max_m_s,dp_min_Pa,dp_max_Pa,code,"
                  "description",
                  "AEX,GRILLE-400x200,fixed resistance by air velocity,400x200,,,1,10,5,800,Grille,",
                  "ASD,DAMPER-200,adjustable damper,200,20,200,,,10,500,Damper 200,Round damper",
                  StartsWith("ASD,FIXED-100,fixed resistance,400x200,20,200,,,10,500,"),
                  "ASD,QUOTED,no flow data,,,,,,,,\"a \"\"b\"\", c\",",
                  StartsWith("FAN,FAN-315,fan,315,0,400,")));
}

TEST_F(List, JsonNamesWhatAThingIsFirst) {
  const std::string json = run({"--class", "AEX", "--json"});
  EXPECT_EQ(json,
            "[\n  {\n    \"class\": \"AEX\",\n    \"id\": \"GRILLE-400x200\",\n    \"code\": \"Grille\",\n"
            "    \"description\": \"\",\n    \"kind\": 11,\n"
            "    \"kind_text\": \"fixed resistance by air velocity\",\n    \"size\": {\n"
            "      \"width_mm\": 400,\n      \"height_mm\": 200\n    },\n    \"limits\": {\n"
            "      \"v_min_m_s\": 1,\n      \"v_max_m_s\": 10,\n      \"dp_min_Pa\": 5,\n"
            "      \"dp_max_Pa\": 800\n    }\n  }\n]\n");
}

TEST_F(List, JsonOfARecordWithoutFlowDataHasNullKindAndLimits) {
  const Json::Value json = run_json({"--class", "TVM"});
  ASSERT_EQ(json.size(), 1u);
  EXPECT_TRUE(json[0]["kind"].isNull());
  EXPECT_TRUE(json[0]["limits"].isNull());
  EXPECT_TRUE(json[0]["size"].isNull());
}

TEST(EmptyDatabase, SaysThatThereAreNoProducts) {
  const tavdtest::Database database;
  const Outcome outcome = run_program({"list", database.path()});
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.out, "no products\n");
  EXPECT_EQ(run_program({"list", database.path(), "--json"}).out, "[]\n");
}

TEST_F(List, UnknownClassNamesTheClassesThereAre) {
  const std::string error = expect_user_error({"list", database.path(), "--class", "XXX"});
  EXPECT_THAT(error, HasSubstr("no class \"XXX\" in " + database.path() + "; it has AEX, ASD, FAN\n"));
}

TEST_F(List, UnknownLanguageNamesTheLanguagesThereAre) {
  const std::string error = expect_user_error({"list", database.path(), "--language", "tlh"});
  EXPECT_THAT(error, HasSubstr("no language \"tlh\"; there are fi, sv, en, "));
}

TEST_F(List, UnknownMarketIsRefusedAtAnyLength) {
  EXPECT_THAT(expect_user_error({"list", database.path(), "--market", "XYZ"}),
              HasSubstr("no market area \"XYZ\""));
  EXPECT_THAT(expect_user_error({"list", database.path(), "--market", std::string(500, 'X')}),
              HasSubstr("no market area"));
}

TEST(MissingDatabase, IsNamed) {
  EXPECT_THAT(expect_user_error({"list", "/nowhere/x.tavdb"}), HasSubstr("no database \"/nowhere/x.tavdb\""));
}

TEST(Folder, IsNoDatabase) {
  EXPECT_THAT(expect_user_error({"list", "/tmp"}), HasSubstr("is a folder"));
}

TEST(ForeignFile, IsNoDatabaseAndStaysAsItIs) {
  const std::string source = TAVD_SOURCE_DIR "/CMakeLists.txt";
  const std::string before = clitest::read_file(source);
  EXPECT_THAT(expect_user_error({"list", source}), HasSubstr("as a product database"));
  EXPECT_EQ(clitest::read_file(source), before);
}

TEST_F(List, FullDiskUnderStandardOutputIsAFailure) {
  const Outcome outcome = clitest::run_program_into("/dev/full", {"list", database.path()});
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_THAT(outcome.err, HasSubstr("cannot write to standard output"));
}

}  // namespace
