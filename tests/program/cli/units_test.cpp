// Flows and pressures with a unit behind the number, and the units of answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samples.h"
#include "support/json.h"
#include "support/program.h"

namespace {

using clitest::expect_user_error;
using clitest::run_json;
using clitest::run_text;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;

struct Units : testing::Test {
  Units() { clitest::add_samples(database); }

  std::vector<std::string> calc(std::vector<std::string> options) const {
    options.insert(options.begin(), {"calc", database.path()});
    return options;
  }
  float flow_of(const std::string& qv) const {
    return run_json(calc({"ASD", "DAMPER-200", "--qv", qv}))["operating_point"]["qv_l_s"].asFloat();
  }
  float velocity_of(const std::string& qv) const {
    return run_json(calc({"AEX", "GRILLE-400x200", "--qv", qv}))["operating_point"]["v_m_s"].asFloat();
  }
  float pressure_of(const std::string& dp) const {
    const Json::Value json = run_json(calc({"ASD", "DAMPER-200", "--qv", "80", "--dp", dp}));
    return json["operating_point"]["dp_Pa"].asFloat();
  }

  tavdtest::Database database;
};

// 1 cfm is 0.3048^3 m3 a minute, 0.4719474432 l/s.
TEST_F(Units, FlowsMayHaveAUnit) {
  EXPECT_EQ(flow_of("80"), 80.0F);
  EXPECT_EQ(flow_of("80l/s"), 80.0F);
  EXPECT_EQ(flow_of("288m3/h"), 80.0F);
  EXPECT_EQ(flow_of("0.08m3/s"), 80.0F);
  EXPECT_EQ(flow_of("288000l/h"), 80.0F);
  EXPECT_EQ(flow_of("100cfm"), 47.19474432F);
}

// The conventional inch of water is 249.08891 Pa, the millimetre 9.80665 Pa.
TEST_F(Units, PressuresMayHaveAUnit) {
  EXPECT_EQ(pressure_of("60"), 60.0F);
  EXPECT_EQ(pressure_of("60Pa"), 60.0F);
  EXPECT_EQ(pressure_of("0.06kPa"), 60.0F);
  EXPECT_EQ(pressure_of("0.2in.wg"), 49.817782F);
  EXPECT_EQ(pressure_of("0.2inWC"), 49.817782F);
  EXPECT_EQ(pressure_of("5mmwg"), 49.03325F);
}

// 1 fpm is 0.3048 m a minute, 0.00508 m/s.
TEST_F(Units, VelocitiesMayHaveAUnit) {
  EXPECT_EQ(velocity_of("2m/s"), 2.0F);
  EXPECT_EQ(velocity_of("1000fpm"), 5.08F);
}

TEST_F(Units, AreKnownInAnyCaseWithBlanksDotsAndARaisedThree) {
  for (const char* flow : {"288 m3/h", "288M3/H", "288m\xC2\xB3/h", "288m^3/h", "2.88e2m3/h"}) {
    EXPECT_EQ(flow_of(flow), 80.0F) << flow;
  }
  for (const char* pressure : {"0.2 in. w.g.", "0.2inwg", "0.2 IN WG"}) {
    EXPECT_EQ(pressure_of(pressure), 49.817782F) << pressure;
  }
}

// Nine digits of a float; through double it would be narrowed twice.
TEST_F(Units, NumberWithoutAUnitIsTheFloatThatItIs) {
  EXPECT_EQ(flow_of("77.7000046"), 77.7000046F);
  EXPECT_EQ(pressure_of("0.1"), 0.1F);
}

// 160 l/s through 0.4 m x 0.2 m are 2 m/s; 2 m/s through 200 mm, 0.0314159 m2, are 62.83 l/s.
TEST_F(Units, FlowOfAProductByVelocityGoesThroughItsSizeAndBack) {
  EXPECT_EQ(velocity_of("160l/s"), 2.0F);
  EXPECT_EQ(velocity_of("576m3/h"), 2.0F);
  EXPECT_NEAR(flow_of("2m/s"), 62.83185, 1e-4);
}

TEST_F(Units, AnswerTellsWhatWasTypedAndWhatItWentThrough) {
  EXPECT_THAT(run_text(calc({"AEX", "GRILLE-400x200", "--qv", "576m3/h"})),
              HasSubstr("At 2 m/s (576 m3/h through its size, 400x200 mm)"));
  EXPECT_THAT(run_text(calc({"ASD", "DAMPER-200", "--qv", "288m3/h"})), HasSubstr("At 80 l/s (288 m3/h)"));
  const Json::Value json = run_json(calc({"AEX", "GRILLE-400x200", "--qv", "576m3/h"}));
  EXPECT_EQ(json["operating_point"]["typed"].asString(), "576 m3/h through its size, 400x200 mm");
  EXPECT_FALSE(run_json(calc({"ASD", "DAMPER-200", "--qv", "80"}))["operating_point"].isMember("typed"));
}

TEST_F(Units, FlowThroughAnUnknownSizeIsRefused) {
  tavdtest::Record("XYZ", "SIZELESS")
      .header(111, 0, 0, 1, 10, 5, 800)
      .floats(1651, {4, 100})
      .save(database.handle());
  EXPECT_THAT(expect_user_error(calc({"XYZ", "SIZELESS", "--qv", "160l/s"})),
              HasSubstr("XYZ SIZELESS has no size to convert l/s by, expected m/s, fpm"));
}

TEST_F(Units, UnknownUnitNamesThoseThereAre) {
  EXPECT_THAT(
      expect_user_error(calc({"ASD", "DAMPER-200", "--qv", "80gpm"})),
      HasSubstr("--qv is \"80gpm\", expected a number above 0 such as 50 or 12.5, with one of the units "
                "l/s, l/h, m3/s, m3/h, cfm, m/s, fpm or none"));
  EXPECT_THAT(expect_user_error(calc({"ASD", "DAMPER-200", "--qv", "80", "--dp", "5l/s"})),
              HasSubstr("with one of the units Pa, kPa, inWC, inwg, mmwg or none"));
  EXPECT_THAT(expect_user_error(calc({"ASD", "DAMPER-200", "--qv", "80Pa"})), HasSubstr("--qv is \"80Pa\""));
}

TEST_F(Units, NumberBeforeAUnitIsPositive) {
  for (const char* flow : {"-80l/s", "0m3/h", "l/s", "1e999m3/h", "infl/s", "1e300m3/s"}) {
    EXPECT_THAT(expect_user_error(calc({"ASD", "DAMPER-200", "--qv=" + std::string(flow)})),
                HasSubstr("--qv"))
        << flow;
  }
}

// 80 l/s are 288 m3/h, 20 to 200 l/s 72 to 720; 10 to 500 Pa are 0.01 to 0.5 kPa.
TEST_F(Units, AnswersAreInTheUnitsAskedFor) {
  const std::string out =
      run_text(calc({"ASD", "DAMPER-200", "--qv", "100", "--dp", "150", "--units", "m3/h,kPa"}));
  EXPECT_THAT(out, HasSubstr("At 360 m3/h and 0.15 kPa"));
  EXPECT_THAT(out, ContainsRegex("Flow limits +72 - 720 m3/h\n"));
  EXPECT_THAT(out, ContainsRegex("Pressure limits +0.01 - 0.5 kPa, total\n"));
  EXPECT_THAT(out, ContainsRegex("Lowest pressure +0.0250 kPa\n"));
  EXPECT_THAT(out, ContainsRegex("  Pressure there +0.1500 kPa\n"));
}

TEST_F(Units, KeysOfJsonBearTheUnitsAskedFor) {
  const Json::Value json =
      run_json(calc({"ASD", "DAMPER-200", "--qv", "100", "--dp", "150", "--units", "m3/h,kPa"}));
  EXPECT_EQ(json["operating_point"]["qv_m3_h"].asFloat(), 360.0F);
  EXPECT_EQ(json["operating_point"]["dp_kPa"].asFloat(), 0.15F);
  EXPECT_EQ(json["product"]["limits"]["qv_max_m3_h"].asFloat(), 720.0F);
  EXPECT_EQ(json["product"]["limits"]["dp_max_kPa"].asFloat(), 0.5F);
  EXPECT_NEAR(json["pressure_range"]["dp_min_kPa"].asFloat(), 0.025, 1e-7);
  EXPECT_NEAR(json["position_stepless"]["dp_kPa"].asFloat(), 0.15, 1e-6);
}

TEST_F(Units, ProductByVelocityIsToldInTheUnitOfVelocityAskedFor) {
  const std::string out =
      run_text(calc({"AEX", "GRILLE-400x200", "--qv", "5.08", "--units", "m3/h,fpm,inwg"}));
  EXPECT_THAT(out, HasSubstr("At 1000 fpm"));
  EXPECT_THAT(out, ContainsRegex("Flow limits +197 - 1969 fpm\n"));
}

TEST_F(Units, UnknownUnitOfAnswersNamesThoseThereAre) {
  EXPECT_THAT(
      expect_user_error(calc({"ASD", "DAMPER-200", "--qv", "80", "--units", "gpm"})),
      HasSubstr("--units is \"gpm\", expected units such as m3/h,Pa of l/s, l/h, m3/s, m3/h, cfm; m/s, fpm; "
                "Pa, kPa, inWC, inwg, mmwg"));
}

std::string drawn(const std::vector<std::string>& command) {
  return run_text(command);
}

TEST_F(Units, DiagramMarksAPointInAnyUnit) {
  const std::vector<std::string> draw = {"diagram", database.path(), "ASD", "DAMPER-200", "-o",
                                         "-",       "--format",      "txt"};
  const auto with = [&](std::vector<std::string> options) {
    options.insert(options.begin(), draw.begin(), draw.end());
    return drawn(options);
  };
  EXPECT_EQ(with({"--qv", "288m3/h", "--dp", "0.06kPa", "--limits", "108m3/h,216m3/h"}),
            with({"--qv", "80", "--dp", "60", "--limits", "30,60"}));
  EXPECT_NE(with({"--qv", "288m3/h"}), with({"--qv", "100"}));
}

TEST_F(Units, ThrowDiagramMarksAFlowInAnyUnit) {
  tavdtest::Record("ASD", "THROW-100")
      .header(110, 100, 0, 20, 200, 10, 500)
      .floats(1651, {100, 100})
      .floats(1659, {50, 2, 100, 4})
      .save(database.handle());
  const auto with = [&](const char* qv) {
    return drawn({"throw", database.path(), "ASD", "THROW-100", "-o", "-", "--format", "txt", "--qv", qv});
  };
  EXPECT_EQ(with("216m3/h"), with("60"));
  EXPECT_NE(with("216m3/h"), with("50"));
}

}  // namespace
