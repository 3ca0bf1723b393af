// `tavd family`: the sizes of a product.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "families.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::lines_of;
using clitest::run_json;
using clitest::run_text;
using clitest::texts_of;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct Family : testing::Test {
  Family() { clitest::add_families(database); }

  std::vector<std::string> command(const char* id, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"family", database.path(), "FAM", id});
    return options;
  }

  tavdtest::Database database;
};

TEST_F(Family, ByPatternListsTheSizesInRecordOrder) {
  EXPECT_THAT(lines_of(run_text(command("F-*"))),
              ElementsAre("FAM F-*: main record of a family, by the * in its id, 2 sizes",
                          "ID     SIZE mm  SHAPE  CODE     DESCRIPTION  INSTALLATION",
                          "F-100  100      140    Hundred               Wall",
                          "F-125  125             F-125                 Duct"));
}

TEST_F(Family, ByListKeepsTheOrderOfTheListAndNamesWhatIsMissing) {
  EXPECT_THAT(lines_of(run_text(command("F"))),
              ElementsAre("FAM F: main record of a family, by its list of members, 2 sizes",
                          StartsWith("ID "), StartsWith("F-125  "), StartsWith("F-100  "),
                          "named by the main record, but not in the database: GONE"));
}

TEST_F(Family, ASizeTellsTheFamiliesThatItBelongsTo) {
  EXPECT_THAT(lines_of(run_text(command("F-125"))),
              ElementsAre("FAM F-125: single product, 1 size", StartsWith("ID "), StartsWith("F-125  125"),
                          "belongs to the family of F", "belongs to the family of F-*"));
}

TEST_F(Family, JsonHoldsTheSame) {
  const Json::Value json = run_json(command("F"));
  EXPECT_EQ(json["class"].asString(), "FAM");
  EXPECT_EQ(json["id"].asString(), "F");
  EXPECT_EQ(json["sizing_mode"].asInt(), 2);
  ASSERT_EQ(json["sizes"].size(), 2u);
  const Json::Value& hundred = json["sizes"][1];
  EXPECT_EQ(hundred["id"].asString(), "F-100");
  EXPECT_EQ(hundred["code"].asString(), "Hundred");
  EXPECT_EQ(hundred["installation"].asString(), "Wall");
  EXPECT_EQ(hundred["size"]["diameter_mm"].asInt(), 100);
  ASSERT_EQ(hundred["shape"].size(), 1u);
  EXPECT_EQ(hundred["shape"][0].asInt(), 140);
  EXPECT_THAT(texts_of(json["sizes_not_found"]), ElementsAre("GONE"));
  EXPECT_THAT(texts_of(json["size_of"]), IsEmpty());
}

TEST_F(Family, CsvHoldsTheSizesAlone) {
  EXPECT_THAT(lines_of(run_text(command("F", {"--csv"}))),
              ElementsAre("id,size_mm,shape,code,description,installation", "F-125,125,,F-125,,",
                          "F-100,100,140,Hundred,,Wall"));
}

TEST_F(Family, JsonArraysBeginBehindTheirKey) {
  EXPECT_THAT(run_text(command("F-*", {"--json"})),
              testing::AllOf(HasSubstr("\"sizes\": [\n    {\n      \"id\": \"F-100\","),
                             HasSubstr("\"shape\": [140]"), HasSubstr("\"size_of\": []")));
}

TEST_F(Family, TextsFollowMarketAndLanguage) {
  tavdtest::Record("FAM", "F-125")
      .header(110, 125, 0, 16, 160, 5, 200)
      .text(9501, "Kod 125")
      .text(9551,
            "L\xE5"
            "da")
      .save(database.handle());
  EXPECT_THAT(run_text(command("F-*", {"--market", "SWE"})), HasSubstr("Kod 125  L\xC3\xA5"
                                                                       "da"));
  EXPECT_THAT(run_text(command("F-*", {"--language", "sv"})), HasSubstr("F-125    L\xC3\xA5"
                                                                        "da"));
}

TEST_F(Family, WithoutASizeSaysSo) {
  tavdtest::Record("FAM", "EMPTY-*").words(clitest::kSizingMode, {1}).save(database.handle());
  EXPECT_EQ(run_text(command("EMPTY-*")),
            "FAM EMPTY-*: main record of a family, by the * in its id, 0 sizes\n");
  tavdtest::Record("FAM", "NONE").words(clitest::kSizingMode, {-1}).save(database.handle());
  EXPECT_EQ(run_text(command("NONE")), "FAM NONE: no product of its own, sizing mode -1, 0 sizes\n");
}

TEST_F(Family, OfAProductThatDoesNotExistIsRefused) {
  EXPECT_THAT(expect_user_error(command("F-200")), HasSubstr("no product \"F-200\" of class \"FAM\""));
  EXPECT_THAT(expect_user_error({"family", database.path(), "XXX", "F"}), HasSubstr("no class \"XXX\""));
  EXPECT_THAT(expect_user_error({"family", "/nowhere", "FAM", "F"}), HasSubstr("no database \"/nowhere\""));
}

}  // namespace
