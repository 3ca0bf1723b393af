#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/value.h>

#include <cstring>
#include <sstream>

#include "samples.h"
#include "support/program.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace {

using clitest::expect_user_error;
using clitest::Outcome;
using clitest::run_program;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

struct Calc : testing::Test {
  Calc() { clitest::add_samples(database); }

  std::vector<std::string> command(std::vector<std::string> options) const {
    options.insert(options.begin(), {"calc", database.path()});
    return options;
  }

  std::string run(const std::vector<std::string>& options) const {
    const Outcome outcome = run_program(command(options));
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
  }

  Json::Value run_json(std::vector<std::string> options) const {
    options.emplace_back("--json");
    Json::Value json;
    std::istringstream text(run(options));
    std::string errors;
    EXPECT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), text, &json, &errors)) << errors;
    return json;
  }

  std::string fail(const std::vector<std::string>& options) const {
    return expect_user_error(command(options));
  }

  FlowData load(const char* class_id, const char* object_id) const {
    FlowData flow;
    const tavb_rec rec = tavbfindrec(database.handle(), class_id, object_id, 0);
    EXPECT_EQ(tavca_load_flowdata(database.handle(), rec, &flow), 0);
    tavbreleaserec(rec);
    return flow;
  }

  tavdtest::Database database;
};

TEST_F(Calc, TellsTheProductAndItsLimits) {
  const std::string out = run({"ASD", "DAMPER-200", "--qv", "100", "--dp", "150"});
  EXPECT_THAT(out, HasSubstr("ASD DAMPER-200\n"));
  for (const char* line :
       {"Code +Damper 200\n", "Description +Round damper\n", "Size +200 mm\n", "Kind +adjustable damper\n",
        "Flow limits +20 - 200 l/s\n", "Pressure limits +10 - 500 Pa, total\n"}) {
    EXPECT_THAT(out, ContainsRegex(line));
  }
}

// With resistances 0.04, 0.01 and 0.0025: 150 Pa at 100 l/s lies at lg(1.5)/lg(4) = 0.29 from setting 2 to 1.
TEST_F(Calc, TellsPressureRangeAndPositionsOfADamper) {
  const std::string out = run({"ASD", "DAMPER-200", "--qv", "100", "--dp", "150"});
  EXPECT_THAT(out, HasSubstr("At 100 l/s and 150 Pa\n"));
  for (const char* line : {"Lowest pressure +25.0 Pa\n", "Highest pressure +400.0 Pa\n",
                           "Position, stepless +1.71 +in range\n", "  Pressure there +150.0 Pa\n",
                           "Position, stepped +2.00 +in range\n", "  Pressure there +100.0 Pa\n"}) {
    EXPECT_THAT(out, ContainsRegex(line));
  }
}

TEST_F(Calc, TellsInWordsWhichEndOfTheDamperIsPassed) {
  EXPECT_THAT(run({"ASD", "DAMPER-200", "--qv", "100", "--dp", "500"}),
              ContainsRegex("Position, stepless +1.00 +more throttled than the first setting\n"));
  EXPECT_THAT(run({"ASD", "DAMPER-200", "--qv", "100", "--dp", "20"}),
              ContainsRegex("Position, stepless +3.00 +more open than the last setting\n"));
}

// Half way on all three logarithms: 54 dB on the first curve, 51 dB on the second, 52.5 dB between them; the
// A-weighted sum of eight bands of 0 dB is 6.99 dB, the room takes 4 dB.
TEST_F(Calc, TellsSoundPowerInEightBandsAndTheLevelInTheRoom) {
  const std::string out = run({"ASD", "DAMPER-200", "--qv", "100", "--dp", "200"});
  EXPECT_THAT(out, ContainsRegex("Sound level in the room +55.5 dB.A.\n"));
  EXPECT_THAT(out, ContainsRegex("Octave band, Hz +63 +125 +250 +500 +1000 +2000 +4000 +8000\n"));
  EXPECT_THAT(out, ContainsRegex("Sound power, dB( +52.5){8}\n"));
}

TEST_F(Calc, WithoutAPressureThereIsNoPosition) {
  const std::string out = run({"ASD", "DAMPER-200", "--qv", "100"});
  EXPECT_THAT(out, ContainsRegex("Highest pressure +400.0 Pa\n"));
  EXPECT_THAT(out, Not(HasSubstr("Position")));
  EXPECT_THAT(out, Not(HasSubstr("Sound")));
}

TEST_F(Calc, FlowOutsideTheLimitsIsToldSo) {
  EXPECT_THAT(run({"ASD", "DAMPER-200", "--qv", "400", "--dp", "450"}),
              HasSubstr("At 400 l/s and 450 Pa, outside the product's flow limits\n"));
}

TEST_F(Calc, PressureOutsideTheLimitsIsToldSo) {
  EXPECT_THAT(run({"ASD", "DAMPER-200", "--qv", "150", "--dp", "501"}),
              HasSubstr("At 150 l/s and 501 Pa, outside the product's pressure limits\n"));
  EXPECT_THAT(run({"ASD", "DAMPER-200", "--qv", "201", "--dp", "501"}),
              HasSubstr("At 201 l/s and 501 Pa, outside the product's flow and pressure limits\n"));
  EXPECT_THAT(run({"ASD", "DAMPER-200", "--qv", "150", "--dp", "500"}), HasSubstr("At 150 l/s and 500 Pa\n"));
}

TEST_F(Calc, JsonTellsWhetherThePointLiesWithinTheLimits) {
  const Json::Value inside = run_json({"ASD", "DAMPER-200", "--qv", "200", "--dp", "10"})["operating_point"];
  EXPECT_TRUE(inside["flow_in_range"].asBool());
  EXPECT_TRUE(inside["dp_in_range"].asBool());
  const Json::Value above = run_json({"ASD", "DAMPER-200", "--qv", "200", "--dp", "510"})["operating_point"];
  EXPECT_TRUE(above["flow_in_range"].asBool());
  ASSERT_TRUE(above["dp_in_range"].isBool());
  EXPECT_FALSE(above["dp_in_range"].asBool());
  EXPECT_FALSE(run_json({"ASD", "DAMPER-200", "--qv", "200"})["operating_point"].isMember("dp_in_range"));
}

struct AttenuationRow {
  AttenuationRow(float position, unsigned char level) : pos(position) { std::memset(dlw, level, sizeof dlw); }
  float pos;
  unsigned char dlw[8];
};

// 10 dB at 100 l/s and 20 dB at 200 l/s.
TEST_F(Calc, AttenuationThatGoesByFlowNeedsNoPressure) {
  tavdtest::Record("XYZ", "RANGE-200")
      .header(130, 200, 0, 20, 200, 10, 500)
      .rows<AttenuationRow>(1655, {{100, 10}, {200, 20}})
      .save(database.handle());
  EXPECT_THAT(run({"XYZ", "RANGE-200", "--qv", "150"}), ContainsRegex("Attenuation, dB( +15.0){8}\n"));
}

TEST_F(Calc, AttenuationByDamperPositionNeedsAPressure) {
  tavdtest::Record("XYZ", "DAMPER-100")
      .header(120, 100, 0, 20, 200, 10, 500)
      .floats(1652, {1, 100, 400, 2, 100, 100})
      .rows<AttenuationRow>(1655, {{1, 10}, {2, 20}})
      .save(database.handle());
  EXPECT_THAT(run({"XYZ", "DAMPER-100", "--qv", "100"}), Not(HasSubstr("Attenuation")));
  EXPECT_THAT(run({"XYZ", "DAMPER-100", "--qv", "100", "--dp", "200"}),
              ContainsRegex("Attenuation, dB( +15.0){8}\n"));
}

// Rows by position mean nothing to a product without positions.
TEST_F(Calc, AttenuationThatAProductCannotFollowIsLeftOut) {
  tavdtest::Record("XYZ", "FIXED-100")
      .header(110, 100, 0, 20, 200, 10, 500)
      .floats(1651, {100, 100})
      .rows<AttenuationRow>(1655, {{1, 10}, {2, 20}})
      .save(database.handle());
  EXPECT_THAT(run({"XYZ", "FIXED-100", "--qv", "100", "--dp", "100"}), Not(HasSubstr("Attenuation")));
}

TEST_F(Calc, VelocityProductsUseMetresPerSecond) {
  const std::string out = run({"AEX", "GRILLE-400x200", "--qv", "2"});
  EXPECT_THAT(out, HasSubstr("At 2 m/s\n"));
  EXPECT_THAT(out, ContainsRegex("Flow limits +1 - 10 m/s\n"));
  EXPECT_THAT(out, ContainsRegex("Lowest pressure +25.0 Pa\n"));
  EXPECT_THAT(run_json({"AEX", "GRILLE-400x200", "--qv", "2"})["operating_point"]["v_m_s"].asFloat(), 2.0F);
}

// 150 l/s lies half way between 400 and 300 Pa; through a duct of 315 mm it is 1.925 m/s, 2.2 Pa.
TEST_F(Calc, FanTellsItsPressuresAndWhetherItServesThePoint) {
  const std::string out = run({"FAN", "FAN-315", "--qv", "150", "--dp", "360"});
  for (const char* line : {"Fan, total pressure +350.0 Pa +on the fan curve\n",
                           "Fan, static pressure +347.8 Pa\n", "Fan, dynamic pressure +2.2 Pa\n",
                           "Fan, operating point +pressure above the fan curve at this flow\n"}) {
    EXPECT_THAT(out, ContainsRegex(line));
  }
  EXPECT_THAT(run({"FAN", "FAN-315", "--qv", "150", "--dp", "340"}),
              HasSubstr("the fan can serve this point\n"));
}

// 0.0025 Pa/(l/s)2 half way between 200 and 300: 25 Pa at 100 l/s.
TEST_F(Calc, ParameterValuesActBetweenTheRowsOfTheirTable) {
  const std::string out = run({"ASD", "DAMPER-200", "--qv", "100", "--dp", "225", "--param", "blade=250"});
  EXPECT_THAT(out, ContainsRegex("Parameter blade +250\n"));
  EXPECT_THAT(out, ContainsRegex("Lowest pressure +50.0 Pa\n"));
  EXPECT_THAT(out, ContainsRegex("Position, stepless +1.50 +in range\n"));
}

TEST_F(Calc, ParameterNamesAndLabelsAreFoundInAnyCase) {
  EXPECT_THAT(run({"ASD", "FIXED-100", "--qv", "100", "--param", "COLOUR=b"}),
              ContainsRegex("Lowest pressure +200.0 Pa\n"));
}

TEST_F(Calc, JsonEqualsTheLibrarysAnswersExactly) {
  const Json::Value json =
      run_json({"ASD", "DAMPER-200", "--qv", "77.7", "--dp", "123.4", "--param", "blade=133"});
  FlowData flow = load("ASD", "DAMPER-200");
  ASSERT_EQ(tavca_param_setvalue(&flow, "blade", "133"), 0);
  const float qv = 77.7F;
  const float dp = 123.4F;
  float lowest = -1;
  float highest = -1;
  ASSERT_EQ(tavca_minmaxdptot(&flow, qv, &lowest, &highest), 0);
  EXPECT_EQ(json["pressure_range"]["code"].asInt(), 0);
  EXPECT_EQ(json["pressure_range"]["dp_min_Pa"].asFloat(), lowest);
  EXPECT_EQ(json["pressure_range"]["dp_max_Pa"].asFloat(), highest);
  float position = -1;
  EXPECT_EQ(json["position_stepless"]["code"].asInt(), tavca_damper_pos(&flow, qv, dp, &position));
  EXPECT_EQ(json["position_stepless"]["position"].asFloat(), position);
  EXPECT_EQ(json["position_stepless"]["dp_Pa"].asFloat(), tavca_dptot_damperpos(&flow, qv, position));
  EXPECT_EQ(json["position_stepped"]["code"].asInt(), tavca_damper_pos_fixed(&flow, qv, dp, &position));
  EXPECT_EQ(json["position_stepped"]["position"].asFloat(), position);
  const DuctSize duct{0, 200, 200};
  float lw[8];
  ASSERT_EQ(tavca_lw(&flow, qv, dp, lw, &duct), 0);
  ASSERT_EQ(json["sound"]["lw_dB"].size(), 8u);
  for (unsigned band = 0; band < 8; ++band)
    EXPECT_EQ(json["sound"]["lw_dB"][band].asFloat(), lw[band]) << band;
  EXPECT_EQ(json["sound"]["room_level_dBA"].asFloat(), tavca_LpA(lw));
  EXPECT_EQ(json["product"]["parameters"]["blade"].asString(), "133");
}

TEST_F(Calc, JsonNumbersAreTheShortestThatReadBackAsTheSameFloat) {
  EXPECT_THAT(run({"ASD", "DAMPER-200", "--qv", "77.7", "--dp", "0.1", "--json"}),
              testing::AllOf(HasSubstr("\"qv_l_s\": 77.7,"), HasSubstr("\"dp_Pa\": 0.1,")));
}

TEST_F(Calc, EndReflectionIsTakenOffOnRequest) {
  tavdtest::Record("XYZ", "BOX-200")
      .header(110, 200, 0, 20, 200, 10, 500)
      .floats(1651, {100, 100})
      .rows<clitest::SoundRow>(1653, {{50, 25, 40}, {100, 100, 52}})
      .save(database.handle());
  const Json::Value plain = run_json({"XYZ", "BOX-200", "--qv", "100"});
  const Json::Value taken_off = run_json({"XYZ", "BOX-200", "--qv", "100", "--end-reflection"});
  EXPECT_EQ(plain["sound"]["lw_dB"][0].asFloat(), 52.0F);
  FlowData flow = load("XYZ", "BOX-200");
  tavca_check_end_reflection(&flow);
  const DuctSize duct{0, 200, 200};
  float lw[8];
  ASSERT_EQ(tavca_lw(&flow, 100, 0, lw, &duct), 0);
  EXPECT_LT(lw[0], 52.0F);
  for (unsigned band = 0; band < 8; ++band)
    EXPECT_EQ(taken_off["sound"]["lw_dB"][band].asFloat(), lw[band]) << band;
}

TEST_F(Calc, IdMayHaveTrailingBlanks) {
  EXPECT_THAT(run({"ASD", "DAMPER-200   ", "--qv", "100"}), HasSubstr("ASD DAMPER-200\n"));
}

TEST_F(Calc, UnknownIdIsNamedWithIdsThatComeNear) {
  const std::string error = fail({"ASD", "DAMPR-200", "--qv", "100"});
  EXPECT_THAT(error, HasSubstr("no product \"DAMPR-200\" of class \"ASD\" in " + database.path()));
  EXPECT_THAT(error, HasSubstr("near it: DAMPER-200\n"));
}

TEST_F(Calc, BeginningOfAnIdFindsWhatBeginsLikeIt) {
  EXPECT_THAT(fail({"ASD", "fix", "--qv", "100"}), HasSubstr("near it: FIXED-100\n"));
}

TEST_F(Calc, IdLikeNoOtherIsToldWhereToLook) {
  EXPECT_THAT(fail({"ASD", "qqqqqqqq", "--qv", "100"}), HasSubstr("tavd list shows what there is"));
}

TEST_F(Calc, IdLongerThanAnyIdIsNotFoundByItsBeginning) {
  EXPECT_THAT(fail({"ASD", "DAMPER-200" + std::string(20, ' ') + "X", "--qv", "100"}),
              HasSubstr("no product"));
}

TEST_F(Calc, UnknownClassIsNamed) {
  EXPECT_THAT(fail({"ABC", "DAMPER-200", "--qv", "100"}), HasSubstr("no class \"ABC\""));
}

TEST_F(Calc, ClassOfMoreThanThreeCharactersIsUnknown) {
  EXPECT_THAT(fail({"ASDX", "DAMPER-200", "--qv", "100"}), HasSubstr("no class \"ASDX\""));
}

TEST_F(Calc, NumbersThatAreNoneAreNamed) {
  for (const char* number : {"fast", "", "12x", "0", "-5", "nan", "inf", "1e99", "1,5"}) {
    const std::string error = fail({"ASD", "DAMPER-200", "--qv=" + std::string(number)});
    EXPECT_THAT(error, HasSubstr("--qv")) << number;
    EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--dp=" + std::string(number)}), HasSubstr("--dp"))
        << number;
  }
}

TEST_F(Calc, MissingFlowIsAskedFor) {
  EXPECT_THAT(fail({"ASD", "DAMPER-200"}), HasSubstr("--qv is required"));
}

TEST_F(Calc, RecordWithoutFlowDataCannotBeCalculated) {
  EXPECT_THAT(fail({"TVM", "MODEL", "--qv", "50"}),
              HasSubstr("TVM MODEL in " + database.path() + " has no flow data"));
}

TEST_F(Calc, UnknownParameterNamesTheParametersThereAre) {
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--param", "angle=3"}),
              HasSubstr("the product has no parameter \"angle\"; it has blade\n"));
  EXPECT_THAT(fail({"FAN", "FAN-315", "--qv", "50", "--param", "angle=3"}), HasSubstr("it has none\n"));
}

TEST_F(Calc, UnknownParameterValueNamesTheValuesThereAre) {
  EXPECT_THAT(fail({"ASD", "FIXED-100", "--qv", "50", "--param", "colour=C"}),
              HasSubstr("parameter colour has no value \"C\"; it has A, B\n"));
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--param", "blade=wide"}),
              HasSubstr("it has 100, 200, 300\n"));
}

TEST_F(Calc, ParameterWithoutAValueIsExplained) {
  EXPECT_THAT(fail({"ASD", "DAMPER-200", "--qv", "50", "--param", "blade"}),
              HasSubstr("expected NAME=VALUE"));
}

}  // namespace
