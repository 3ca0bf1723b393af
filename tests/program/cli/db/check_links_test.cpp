// `tavd db check`: records that name others, and templates.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "check_fixture.h"
#include "families.h"

namespace {

using clitest::Check;
using clitest::member_ids;
using tavdtest::Record;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(Check, MembersThatAreNotThereOrTwiceAreFound) {
  Record("FAM", "A").save(database.handle());
  Record("FAM", "L").words(1150, {2}).text(1604, member_ids({"A", "GONE", "A", "L"})).save(database.handle());
  EXPECT_THAT(findings(),
              ElementsAre("FAM L: memberids (1604): expected only ids that are in the database, found "
                          "\"GONE\"",
                          "FAM L: memberids (1604): expected each id once, found \"A\" twice",
                          "FAM L: memberids (1604): expected ids of sizes, found the main record "
                          "itself"));
}

TEST_F(Check, FamiliesWithoutSizesAreFound) {
  Record("FAM", "L").words(1150, {2}).save(database.handle());
  Record("FAM", "N").words(1150, {1}).save(database.handle());
  Record("FAM", "P-*").words(1150, {1}).save(database.handle());
  Record("FAM", "X").words(1150, {3}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("FAM L: memberids (1604): expected ids of the sizes, found none",
                  "FAM N: sizingmode (1150): expected a * in the id of a main record with sizing mode 1, "
                  "found N",
                  "FAM P-*: sizingmode (1150): expected records whose ids fit that of the main record, "
                  "found none",
                  "FAM X: sizingmode (1150): expected 0, 1, 2, 10 or 11, found 3"));
}

TEST_F(Check, LayersWithoutTheirMainRecordAreFound) {
  Record("LAY", "P-10").words(1150, {11}).save(database.handle());
  Record("LAY", "Q").words(1150, {10}).save(database.handle());
  Record("LAY", "R-*-*").words(1150, {10}).save(database.handle());
  Record("LAY", "R-*-A").words(1150, {11}).save(database.handle());
  Record("LAY", "R-10").words(1150, {11}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("LAY P-10: sizingmode (1150): expected a main record, sizing mode 10, whose id begins "
                  "with \"P-\", found none",
                  "LAY Q: sizingmode (1150): expected an id with \"-\" or \"+\" between its fields, found Q",
                  "LAY R-10: sizingmode (1150): expected an id that fits that of the main record, "
                  "\"R-*-*\", found R-10"));
}

TEST_F(Check, TwoMainRecordsOfALayeredProductAreFound) {
  Record("LAY", "R-*").words(1150, {10}).save(database.handle());
  Record("LAY", "R-*-*").words(1150, {10}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("LAY R-*: sizingmode (1150): expected one main record whose id begins with \"R-\", found "
                  "two",
                  "LAY R-*-*: sizingmode (1150): expected one main record whose id begins with \"R-\", "
                  "found two"));
}

TEST_F(Check, ModelRecordsThatAreNamedInVainOrByNobodyAreFound) {
  Record("FAM", "A").text(1525, "MODEL-1").save(database.handle());
  Record("FAM", "B").text(1525, "").text(1669, "GONE").save(database.handle());
  Record("FAM", "C").text(1525, std::string(31, 'X')).save(database.handle());
  Record("TVM", "MODEL-1").save(database.handle());
  Record("TVM", "MODEL-2").save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("FAM B: tvmAtt2 (1669): expected the id of a model record, class TVM, found \"GONE\", "
                  "which is not there",
                  "FAM C: tvmAtt (1525): expected an object id of at most 30 characters, found 31 "
                  "characters",
                  "TVM MODEL-2: expected a product that names this model record, found none"));
}

TEST_F(Check, TheTextEncodingStandsOnTheFileHeaderAlone) {
  Record("000", "FILEHEADER").words(1049, {3}).save(database.handle());
  Record("TST", "X").words(1049, {1}).save(database.handle());
  EXPECT_THAT(
      findings(),
      ElementsAre("000 FILEHEADER: usesUTF8 (1049): expected 0 or 2 for windows-1252, or 1 for UTF-8, found "
                  "3",
                  "TST X: usesUTF8 (1049): expected this on the file header only, found 1"));
}

TEST_F(Check, TemplatesThatDoNotSuitTheProductsSizeAreFound) {
  EXPECT_THAT(
      found(13, [](Record& r) { r.text(1511, "A-{B}").text(9500, "{D:4}"); }),
      ElementsAre(HasSubstr("szStruct (1511): expected a template that suits a size of 100 mm, found "
                            "\"A-{B}\": a letter does not suit the duct"),
                  "code.FIN (9500): expected a template that suits a size of 100 mm, found \"{D:4}\": where "
                  "a unit must stand is neither mm nor cm nor dm"));
  EXPECT_THAT(found(13, [](Record& r) { r.text(1511, "{D}-{B2}x{H2}").text(9500, "{D2}"); }), IsEmpty());
}

TEST_F(Check, ProductIdsThatAreTooLongAreFound) {
  EXPECT_THAT(found(13, [](Record& r) { r.text(1511, std::string(28, 'A') + "{D}"); }),
              ElementsAre("szStruct (1511): expected a product id of at most 30 bytes, found \"" +
                          std::string(28, 'A') + "100\""));
}

}  // namespace
