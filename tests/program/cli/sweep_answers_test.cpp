// What `tavd sweep` answers at each point, column by column.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "sweep_fixture.h"
#include "tavd/tavca.h"

namespace {

using clitest::Sweep;
using clitest::Table;

constexpr const char* kBands[] = {"63", "125", "250", "500", "1000", "2000", "4000", "8000"};

std::string band_columns(const std::string& what) {
  std::string names;
  for (const char* hz : kBands) names += "," + what + "_" + hz + "Hz_dB";
  return names;
}

using DamperSolver = decltype(tavca_damper_pos);

void expect_position(const Table& table, std::size_t row, const std::string& name, DamperSolver* solve,
                     const FlowData& flow, float qv, float dp) {
  float position = -1;
  EXPECT_EQ(table.cell(row, name + "_code"), std::to_string(solve(&flow, qv, dp, &position)));
  EXPECT_EQ(table.number(row, name), position);
  EXPECT_EQ(table.number(row, name + "_dp_Pa"), tavca_dptot_damperpos(&flow, qv, position));
}

void expect_damper_row(const Table& table, std::size_t row, const FlowData& flow, float qv, float dp) {
  EXPECT_EQ(table.number(row, "qv_l_s"), qv);
  EXPECT_EQ(table.number(row, "dp_Pa"), dp);
  EXPECT_EQ(table.number(row, "dp_min_Pa"), tavca_dptotmin(&flow, qv));
  EXPECT_EQ(table.number(row, "dp_max_Pa"), tavca_dptotmax(&flow, qv));
  expect_position(table, row, "position_stepless", tavca_damper_pos, flow, qv, dp);
  expect_position(table, row, "position_stepped", tavca_damper_pos_fixed, flow, qv, dp);
  const DuctSize duct{0, 200, 200};
  float lw[8];
  ASSERT_EQ(tavca_lw(&flow, qv, dp, lw, &duct), 0);
  EXPECT_EQ(table.cell(row, "lw_code"), "0");
  for (int band = 0; band < 8; ++band) {
    EXPECT_EQ(table.number(row, std::string("lw_") + kBands[band] + "Hz_dB"), lw[band]) << band;
  }
  EXPECT_EQ(table.number(row, "room_level_dBA"), tavca_LpA(lw));
}

TEST_F(Sweep, EveryPointEqualsTheLibrarysAnswersExactlyAllPressuresAtOneFlowAfterTheOther) {
  const Table table =
      csv({"ASD", "DAMPER-200", "--qv", "20.3:200:33.7", "--dp", "10:500:70.7", "--param", "blade=133"});
  FlowData flow = load("ASD", "DAMPER-200");
  ASSERT_EQ(tavca_param_setvalue(&flow, "blade", "133"), 0);
  std::size_t row = 0;
  for (const double qv : {20.3, 54.0, 87.7, 121.4, 155.1, 188.8, 200.0}) {
    for (const double dp : {10.0, 80.7, 151.4, 222.1, 292.8, 363.5, 434.2, 500.0}) {
      expect_damper_row(table, row++, flow, static_cast<float>(qv), static_cast<float>(dp));
    }
  }
  EXPECT_EQ(table.rows.size(), row);
}

TEST_F(Sweep, HeaderNamesWhatADamperAnswers) {
  EXPECT_EQ(header({"ASD", "DAMPER-200", "--qv", "50", "--dp", "60"}),
            "qv_l_s,dp_Pa,reachable,dp_min_Pa,dp_max_Pa,position_stepless,position_stepless_code,position_"
            "stepless_dp_Pa,"
            "position_stepped,position_stepped_code,position_stepped_dp_Pa" +
                band_columns("lw") + ",lw_code,lw_dBA,room_level_dBA");
}

TEST_F(Sweep, WithoutPressuresADamperHasNoColumnsOfPositionsAndSound) {
  EXPECT_EQ(header({"ASD", "DAMPER-200", "--qv", "50"}), "qv_l_s,dp_min_Pa,dp_max_Pa");
}

TEST_F(Sweep, HeaderOfAVelocityProductHasMetresPerSecond) {
  EXPECT_EQ(header({"AEX", "GRILLE-400x200", "--qv", "2"}), "v_m_s,dp_min_Pa,dp_max_Pa");
}

TEST_F(Sweep, ProductWithoutAReferencePointHasNoPressureColumns) {
  tavdtest::Record("XYZ", "NOTHING").header(110, 100, 0, 20, 200, 10, 500).save(database.handle());
  EXPECT_EQ(run({"XYZ", "NOTHING", "--qv", "50:60:10"}, "--csv"), "qv_l_s\n50\n60\n");
}

TEST_F(Sweep, FanTellsItsPressuresAndWhetherItServesThePoint) {
  const Table table = csv({"FAN", "FAN-315", "--qv", "50:350:100", "--dp", "320"});
  const FlowData flow = load("FAN", "FAN-315");
  ASSERT_EQ(table.rows.size(), 4u);
  for (std::size_t row = 0; row < 4; ++row) {
    const float qv = table.number(row, "qv_l_s");
    float total = -1;
    float fan_static = -1;
    float dynamic = -1;
    EXPECT_EQ(table.cell(row, "fan_code"),
              std::to_string(tavca_fan_dp(&flow, qv, &total, &fan_static, &dynamic)));
    EXPECT_EQ(table.number(row, "fan_dp_total_Pa"), total);
    EXPECT_EQ(table.number(row, "fan_dp_static_Pa"), fan_static);
    EXPECT_EQ(table.number(row, "fan_dp_dynamic_Pa"), dynamic);
    EXPECT_EQ(table.cell(row, "fan_check_code"), std::to_string(tavca_fan_op_check(&flow, qv, 320)));
  }
  EXPECT_EQ(table.cell(0, "fan_code"), "-100");
  EXPECT_EQ(table.cell(1, "fan_check_code"), "0");
  EXPECT_EQ(table.cell(3, "fan_code"), "-200");
  EXPECT_EQ(header({"FAN", "FAN-315", "--qv", "50"}),
            "qv_l_s,dp_min_Pa,dp_max_Pa,fan_dp_total_Pa,fan_dp_static_Pa,fan_dp_dynamic_Pa,fan_code");
}

TEST_F(Sweep, AnswersThatAPointDoesNotHaveAreEmptyBesideTheirCode) {
  const Table table = csv({"ASD", "DAMPER-200", "--qv", "0.0005", "--dp", "1e-7"});
  EXPECT_EQ(table.cell(0, "position_stepless"), "");
  EXPECT_EQ(table.cell(0, "position_stepless_code"), "-4");
  EXPECT_EQ(table.cell(0, "position_stepless_dp_Pa"), "");
  EXPECT_EQ(table.cell(0, "position_stepped_code"), "-4");
  EXPECT_EQ(table.cell(0, "lw_63Hz_dB"), "");
  EXPECT_EQ(table.cell(0, "lw_code"), "-1");
  EXPECT_EQ(table.cell(0, "room_level_dBA"), "");
}

// The levels at 50 and 100 l/s stand in the table; 7 and 3 dB are taken off at all points.
TEST_F(Sweep, TellsSoundAttenuationAndThrowOfAnAirTerminal) {
  const unsigned char attenuation[8] = {7, 3, 0, 0, 0, 0, 0, 1};
  tavdtest::Record("ASD", "TERMINAL-125")
      .header(110, 125, 0, 20, 200, 10, 500)
      .floats(1651, {100, 100})
      .rows<clitest::SoundRow>(1653, {{50, 25, 40}, {100, 100, 52}})
      .bytes(1654, attenuation, sizeof attenuation)
      .floats(1659, {50, 2, 100, 4})
      .save(database.handle());
  const Table table = csv({"ASD", "TERMINAL-125", "--qv", "50:100:25"});
  EXPECT_EQ(header({"ASD", "TERMINAL-125", "--qv", "50"}),
            "qv_l_s,dp_min_Pa,dp_max_Pa" + band_columns("lw") + ",lw_code,lw_dBA,room_level_dBA" +
                band_columns("attenuation") + ",throw_length_m");
  ASSERT_EQ(table.rows.size(), 3u);
  EXPECT_EQ(table.number(0, "lw_500Hz_dB"), 40);
  EXPECT_EQ(table.number(2, "lw_8000Hz_dB"), 52);
  const FlowData flow = load("ASD", "TERMINAL-125");
  for (std::size_t row = 0; row < 3; ++row) {
    EXPECT_EQ(table.number(row, "attenuation_63Hz_dB"), 7);
    EXPECT_EQ(table.number(row, "attenuation_125Hz_dB"), 3);
    EXPECT_EQ(table.number(row, "attenuation_8000Hz_dB"), 1);
    const float length = tavca_L2_isothermal(&flow, table.number(row, "qv_l_s"), nullptr);
    EXPECT_GT(length, 0);
    EXPECT_EQ(table.number(row, "throw_length_m"), length);
  }
}

TEST_F(Sweep, EndReflectionIsTakenOffOnRequest) {
  tavdtest::Record("XYZ", "BOX-200")
      .header(110, 200, 0, 20, 200, 10, 500)
      .floats(1651, {100, 100})
      .rows<clitest::SoundRow>(1653, {{50, 25, 40}, {100, 100, 52}})
      .save(database.handle());
  EXPECT_EQ(csv({"XYZ", "BOX-200", "--qv", "100"}).number(0, "lw_63Hz_dB"), 52);
  EXPECT_LT(csv({"XYZ", "BOX-200", "--qv", "100", "--end-reflection"}).number(0, "lw_63Hz_dB"), 52);
}

}  // namespace
