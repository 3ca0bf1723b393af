// `tavd db new-entry`, and the entries that docs/catalogue.md shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::Folder;
using clitest::read_file;
using clitest::run_program;
using clitest::run_text;
using ::testing::HasSubstr;

// What `tavd calc` answers, as the entries' own comments ask it.
struct Answer {
  const char* word;
  const char* kind;
  std::vector<std::string> product;  // class and id
  std::vector<std::string> point;
  float pressure;  // Pa, lowest at the point
  float level;     // of the sound power at 250 Hz, dB
};

// The pressures follow from the entries' points by hand: 2.5 m/s is 2.5/3 of the reference, and so on. The
// levels lie between those of the rows around the point.
const std::vector<Answer>& answers() {
  static const std::vector<Answer> kAnswers = {
      {"resistance", "10", {"ASD", "MY-TERMINAL-160"}, {"--qv", "60"}, 30.7F * 60 * 60 / (80.4F * 80.4F), 28},
      {"resistance-by-velocity",
       "11",
       {"LVR", "MY-LOUVRE-600x400"},
       {"--qv", "2.5"},
       75.6F * 2.5F * 2.5F / 9,
       41.5F},
      {"curve", "12", {"AEX", "MY-VALVE-125"}, {"--qv", "40"}, 32.2F, 33},
      {"throttle", "13", {"VLV", "MY-THROTTLE-125"}, {"--qv", "40", "--dp", "60"}, 5, 41},
      {"damper",
       "20",
       {"DMP", "MY-DAMPER-160"},
       {"--qv", "60", "--dp", "60"},
       25.0F * 60 * 60 / (120 * 120),
       41},
      {"damper-by-velocity",
       "22",
       {"MLD", "MY-LEAVES-600x400"},
       {"--qv", "3", "--dp", "50"},
       25.0F * 9 / 36,
       50},
      {"range", "30", {"VAV", "MY-BOX-160"}, {"--qv", "60", "--dp", "100"}, 20, 46},
      {"fan", "40", {"FAN", "MY-FAN-160"}, {"--qv", "80", "--dp", "150"}, 0, 67.7F},
  };
  return kAnswers;
}

TEST(NewEntry, OfEachKindIsBuiltAsItStandsAndAnswers) {
  const Folder folder;
  for (const Answer& answer : answers()) {
    SCOPED_TRACE(answer.word);
    const std::string source = folder.file("my.json");
    const std::string database = folder.file("my.tavdb");
    std::ofstream(source, std::ios::binary) << run_text({"db", "new-entry", "--kind", answer.word});
    EXPECT_EQ(run_text({"db", "build", source, "-o", database, "--strict"}),
              database + ": 2 records, no findings\n");
    std::vector<std::string> calc = {"calc", database, answer.product[0], answer.product[1]};
    calc.insert(calc.end(), answer.point.begin(), answer.point.end());
    const Json::Value json = clitest::run_json(calc);
    EXPECT_NEAR(json["pressure_range"]["dp_min_Pa"].asFloat(), answer.pressure, 0.05F);
    EXPECT_EQ(json["sound"]["code"].asInt(), 0);
    ASSERT_EQ(json["sound"]["lw_dB"].size(), 8u);
    EXPECT_NEAR(json["sound"]["lw_dB"][2].asFloat(), answer.level, 1);
  }
}

TEST(NewEntry, TakesTheNumberOfAKindAndAFile) {
  const Folder folder;
  for (const Answer& answer : answers()) {
    const std::string text = run_text({"db", "new-entry", "--kind", answer.word});
    EXPECT_EQ(run_text({"db", "new-entry", "--kind", answer.kind}), text);
    EXPECT_EQ(run_text({"db", "new-entry", "--kind", "1" + std::string(answer.kind), "-o", folder.file("a")}),
              "");
    EXPECT_EQ(read_file(folder.file("a")), text);
  }
}

TEST(NewEntry, OfAnUnknownKindIsRefusedWithAllKinds) {
  const std::string error = clitest::expect_user_error({"db", "new-entry", "--kind", "dampr"});
  EXPECT_THAT(
      error,
      HasSubstr("--kind is \"dampr\", expected resistance (10), resistance-by-velocity (11), curve (12), "
                "throttle (13), damper (20), damper-by-velocity (22), range (30), fan (40)"));
}

TEST(NewEntry, StandsInTheDocumentAsItIsWritten) {
  const std::string document = read_file(TAVD_SOURCE_DIR "/docs/catalogue.md");
  for (const Answer& answer : answers()) {
    const std::string text = run_text({"db", "new-entry", "--kind", answer.word});
    EXPECT_THAT(document, HasSubstr(std::string(answer.kind) + ", `" + answer.word + "`\n\n```json\n" + text +
                                    "```\n"));
    EXPECT_THAT(document, HasSubstr("| `" + std::string(answer.word) + "` | " + answer.kind + " |"));
  }
}

TEST(NewEntry, OfAllKindsStandsInOneDatabase) {
  const Folder folder;
  std::vector<std::string> build = {"db", "build", "--strict", "-o", folder.file("all.tavdb")};
  for (const Answer& answer : answers()) {
    const std::string source = folder.file(answer.word);
    run_text({"db", "new-entry", "--kind", answer.word, "-o", source});
    build.push_back(source);
  }
  EXPECT_EQ(run_text(build), folder.file("all.tavdb") + ": 9 records, no findings\n");
}

}  // namespace
