// The grid of `tavd sweep`: ranges as the user writes them, and those that are refused.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "sweep_fixture.h"

namespace {

using clitest::expect_user_error;
using clitest::Sweep;
using clitest::Table;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST_F(Sweep, BothEndsAreIncluded) {
  EXPECT_THAT(csv({"ASD", "FIXED-100", "--qv", "20:80:30"}).column("qv_l_s"), ElementsAre(20, 50, 80));
}

TEST_F(Sweep, LastStepIsShorterWhereItWouldLeadPastTheEnd) {
  EXPECT_THAT(csv({"ASD", "FIXED-100", "--qv", "20:100:30"}).column("qv_l_s"), ElementsAre(20, 50, 80, 100));
  EXPECT_THAT(csv({"ASD", "FIXED-100", "--qv", "20:30:100"}).column("qv_l_s"), ElementsAre(20, 30));
}

TEST_F(Sweep, DecimalStepsNeitherAddUpErrorsNorRepeatTheEnd) {
  EXPECT_THAT(csv({"ASD", "FIXED-100", "--qv", "0.1:1:0.1"}).column("qv_l_s"),
              ElementsAre(0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F, 0.9F, 1.0F));
}

TEST_F(Sweep, RangeMayFall) {
  EXPECT_THAT(csv({"ASD", "FIXED-100", "--qv", "80:20:-30"}).column("qv_l_s"), ElementsAre(80, 50, 20));
}

TEST_F(Sweep, SingleNumberIsOnePoint) {
  EXPECT_THAT(csv({"ASD", "FIXED-100", "--qv", "77.7"}).column("qv_l_s"), ElementsAre(77.7F));
  EXPECT_THAT(csv({"ASD", "FIXED-100", "--qv", "50:50:5"}).column("qv_l_s"), ElementsAre(50));
}

TEST_F(Sweep, NumbersAreTheShortestThatReadBackAsTheSameFloat) {
  const Table table = csv({"ASD", "FIXED-100", "--qv", "0.1:0.3:0.1"});
  ASSERT_EQ(table.rows.size(), 3u);
  EXPECT_EQ(table.cell(0, "qv_l_s"), "0.1");
  EXPECT_EQ(table.cell(1, "qv_l_s"), "0.2");
  EXPECT_EQ(table.cell(2, "qv_l_s"), "0.3");
  EXPECT_EQ(run({"ASD", "FIXED-100", "--qv", "50"}, "--csv"), "qv_l_s,dp_min_Pa,dp_max_Pa\n50,25,25\n");
}

TEST_F(Sweep, BadRangesAreExplained) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"20:200", "expected FROM:TO:STEP such as 20:200:5, or one number"},
      {"20:200:5:1", "expected FROM:TO:STEP"},
      {"20:200:", "expected FROM:TO:STEP"},
      {"fast", "expected FROM:TO:STEP"},
      {"20:200:x", "expected FROM:TO:STEP"},
      {"1,5:2:1", "expected FROM:TO:STEP"},
      {"20:nan:1", "expected FROM:TO:STEP"},
      {"20:inf:1", "expected FROM:TO:STEP"},
      {"20:200:0", "expected a step other than 0"},
      {"20:20:0", "expected a step other than 0"},
      {"20:200:-5", "expected a step above 0 for a rising range"},
      {"200:20:5", "expected a step below 0 for a falling range"},
      {"0:200:5", "expected numbers above 0"},
      {"-5:200:5", "expected numbers above 0"},
      {"1:1e39:1e38", "expected numbers above 0, at most 3.4e38"},
      {"1:2:1e-10", "expected at most 1000000000 points"},
      {"1:2:1e-320", "expected at most 1000000000 points"},
  };
  for (const auto& [range, expected] : cases) {
    EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv=" + range}),
                HasSubstr("--qv is \"" + range + "\", " + expected));
    EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--dp=" + range}),
                HasSubstr("--dp is \"" + range + "\", " + expected));
  }
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", ""}), HasSubstr("--qv is \"\", expected FROM:TO:STEP"));
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--dp", ""}),
              HasSubstr("--dp is \"\", expected FROM:TO:STEP"));
}

TEST_F(Sweep, TooManyPointsTogetherAreRefused) {
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "1:100000:1", "--dp", "1:10001:1"}),
              HasSubstr("--qv and --dp make 1000100000 points, expected at most 1000000000\n"));
}

TEST_F(Sweep, OneFormMustBeChosen) {
  const std::vector<std::string> neither = {"sweep", database.path(), "ASD", "DAMPER-200", "--qv", "50"};
  EXPECT_THAT(expect_user_error(neither), HasSubstr("--csv or --json is required"));
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--json"}), HasSubstr("excludes"));
}

TEST_F(Sweep, ProductsAndParametersThatDoNotExistAreNamed) {
  EXPECT_THAT(fail({"ASD", "DAMPR-200", "--qv", "50"}), HasSubstr("near it: DAMPER-200\n"));
  EXPECT_THAT(fail({"TVM", "MODEL", "--qv", "50"}), HasSubstr("has no flow data to calculate with\n"));
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--param", "angle=3"}), HasSubstr("it has blade\n"));
  EXPECT_THAT(fail({"ASD", "DAMPER-200"}), HasSubstr("--qv is required"));
}

}  // namespace
