// `tavd code`: product code and product id from templates.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "families.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::kTemplate;
using clitest::lines_of;
using clitest::run_json;
using clitest::run_text;
using tavdtest::Record;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kUnsuited =
    "a letter does not suit the duct, D a rectangular one or B and H a round one, or the template ends "
    "behind {";

struct Code : testing::Test {
  Code() { clitest::add_families(database); }

  std::vector<std::string> command(const char* id, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"code", database.path(), "FAM", id});
    return options;
  }
  // What the template makes of the size, and the code it answers with.
  Json::Value built(const std::string& text, std::vector<std::string> options) const {
    Record("FAM", "T").text(kTemplate, text).header(110, 125, 0, 10, 100, 5, 200).save(database.handle());
    return run_json(command("T", std::move(options)))["product_id"];
  }

  tavdtest::Database database;
};

TEST_F(Code, TakesTheProductsOwnSizeUnlessAnotherIsAsked) {
  EXPECT_THAT(lines_of(run_text(command("F-*"))),
              ElementsAre("FAM F-*", "  Size                        100 mm",
                          "  Template of the product id  F-{D:3mm}", "  Product id                  F-100",
                          "  Product code                F-*"));
  EXPECT_THAT(
      lines_of(run_text(command("F-*", {"--ds", "80"}))),
      testing::IsSupersetOf({"  Size                        80 mm", "  Product id                  F-080"}));
}

TEST_F(Code, EveryUnitAndBothConnectionsAreFilledIn) {
  EXPECT_EQ(built("A{B:4mm}-{H:3cm}-{b:2dm}", {"--ds", "400x250"})["text"].asString(), "A0400-025-04");
  EXPECT_EQ(built("{D}/{B2:3cm}x{H2}", {"--ds2", "300x200"})["text"].asString(), "125/030x200");
}

TEST_F(Code, ErrorsOfTheTemplateAreToldInWords) {
  const struct {
    const char* text;
    int code;
    const char* words;
  } cases[] = {
      {"X{B}", -1, kUnsuited},
      {"X{", -1, kUnsuited},
      {"X{X}", -2, "a letter is none of D, B and H, or behind it stands none of :, } and the digits 1 to 9"},
      {"X{D:", -3, "the template ends inside a field, or no } follows its unit"},
      {"X{D:4", -4, "the template ends behind the number of digits"},
      {"X{D:4km}", -5, "where a unit must stand is neither mm nor cm nor dm"},
  };
  for (const auto& [text, code, words] : cases) {
    const Json::Value id = built(text, {});
    EXPECT_EQ(id["text"].asString(), "T") << text;
    EXPECT_EQ(id["result"]["code"].asInt(), code) << text;
    EXPECT_EQ(id["result"]["text"].asString(), words) << text;
  }
}

TEST_F(Code, AFailedTemplateFallsBackToTheRecordsOwnId) {
  EXPECT_THAT(lines_of(run_text(command("F-*", {"--ds", "400x200"}))),
              ElementsAre("FAM F-*", "  Size                        400x200 mm",
                          "  Template of the product id  F-{D:3mm}",
                          "    error -1                  " + std::string(kUnsuited),
                          "  Product id                  F-*, the record's own id in place of the template's",
                          "  Product code                F-*"));
}

TEST_F(Code, WithoutATemplateTheIdIsTheRecords) {
  EXPECT_THAT(
      lines_of(run_text(command("F-125"))),
      ElementsAre("FAM F-125", "  Size          125 mm", "  Product id    F-125", "  Product code  F-125"));
  EXPECT_TRUE(run_json(command("F-125"))["product_id"]["template"].isNull());
}

TEST_F(Code, AMarketsProductCodeMayBeATemplate) {
  Record("FAM", "M")
      .header(110, 200, 100, 10, 100, 5, 200)
      .text(1562, "{B}x{H}")
      .text(9500, "\xC4-{B:2cm}{H:2cm}")
      .text(9501, "{D}")
      .save(database.handle());
  EXPECT_THAT(lines_of(run_text(command("M", {"--market", "FIN"}))),
              testing::IsSupersetOf({"  Template of the product code  \xC3\x84-{B:2cm}{H:2cm}",
                                     "  Product code                  \xC3\x84-2010"}));
  EXPECT_EQ(run_json(command("M"))["product_code"]["text"].asString(), "200x100");
  EXPECT_EQ(run_json(command("M", {"--market", "SWE"}))["product_code"]["result"]["code"].asInt(), -1);
  EXPECT_THAT(lines_of(run_text(command("M", {"--market", "SWE"}))),
              Contains("  Product code                  , as far as it was built"));
}

TEST_F(Code, OfAProductWithoutASizeSaysThatItIsNotKnown) {
  EXPECT_THAT(lines_of(run_text(command("F"))), Contains("  Size          not known"));
  EXPECT_TRUE(run_json(command("F"))["size"].isNull());
}

TEST_F(Code, SizesThatAreNoneAreRefused) {
  for (const char* size : {"x", "0", "-5", "400x", "x200", "400x200x100", "32768", "1.5", "400X200"}) {
    for (const char* option : {"--ds", "--ds2"}) {
      EXPECT_THAT(
          expect_user_error(command("F-*", {std::string(option) + "=" + size})),
          HasSubstr(std::string(option) + " is \"" + size +
                    "\", expected a diameter such as 160 or a width and a height such as 400x200, in mm"));
    }
  }
}

TEST_F(Code, ProductThatDoesNotExistIsRefused) {
  EXPECT_THAT(expect_user_error(command("G-*")), HasSubstr("no product \"G-*\""));
}

}  // namespace
