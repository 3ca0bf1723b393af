#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/value.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "program.h"
#include "samples.h"
#include "tavd/tavca.h"

namespace {

using clitest::expect_user_error;
using clitest::Outcome;
using clitest::run_program;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

using Floats = std::vector<float>;

std::vector<std::string> split_cells(const std::string& line) {
  std::vector<std::string> cells(1);
  for (const char c : line) {
    if (c == ',') {
      cells.emplace_back();
    } else {
      cells.back() += c;
    }
  }
  return cells;
}

float to_float(const std::string& text) {
  float value = -999;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  EXPECT_TRUE(error == std::errc() && end == text.data() + text.size()) << "\"" << text << "\"";
  return value;
}

// What a sweep wrote as CSV; every line has as many cells as the header.
struct Table {
  std::vector<std::string> header;
  std::vector<std::vector<std::string>> rows;

  explicit Table(const std::string& text) {
    for (const std::string& line : clitest::lines_of(text)) {
      if (header.empty()) {
        header = split_cells(line);
      } else {
        rows.push_back(split_cells(line));
        EXPECT_EQ(rows.back().size(), header.size()) << line;
      }
    }
  }
  const std::string& cell(std::size_t row, const std::string& name) const {
    static const std::string none = "no such cell";
    for (std::size_t column = 0; column < header.size(); ++column) {
      if (header[column] == name && row < rows.size()) return rows[row].at(column);
    }
    ADD_FAILURE() << none << ": " << name;
    return none;
  }
  float number(std::size_t row, const std::string& name) const { return to_float(cell(row, name)); }
  Floats column(const std::string& name) const {
    Floats values;
    for (std::size_t row = 0; row < rows.size(); ++row) values.push_back(number(row, name));
    return values;
  }
};

struct Sweep : testing::Test {
  Sweep() { clitest::add_samples(database); }

  std::vector<std::string> command(std::vector<std::string> options, const char* form) const {
    options.insert(options.begin(), {"sweep", database.path()});
    options.emplace_back(form);
    return options;
  }

  std::string run(const std::vector<std::string>& options, const char* form) const {
    const Outcome outcome = run_program(command(options, form));
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
  }

  Table csv(const std::vector<std::string>& options) const { return Table(run(options, "--csv")); }
  std::string header(const std::vector<std::string>& options) const {
    return clitest::lines_of(run(options, "--csv")).at(0);
  }
  std::string fail(const std::vector<std::string>& options) const {
    return expect_user_error(command(options, "--csv"));
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

TEST_F(Sweep, HeaderNamesWhatADamperAnswers) {
  EXPECT_EQ(
      header({"ASD", "DAMPER-200", "--qv", "50", "--dp", "60"}),
      "qv_l_s,dp_Pa,dp_min_Pa,dp_max_Pa,position_stepless,position_stepless_code,position_stepless_dp_Pa,"
      "position_stepped,position_stepped_code,position_stepped_dp_Pa" +
          band_columns("lw") + ",lw_code,room_level_dBA");
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
            "qv_l_s,dp_min_Pa,dp_max_Pa" + band_columns("lw") + ",lw_code,room_level_dBA" +
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

Json::Value parse_json(const std::string& text) {
  Json::Value json;
  std::istringstream stream(text);
  std::string errors;
  EXPECT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), stream, &json, &errors)) << errors;
  return json;
}

// Takes out what a sweep does not repeat at every point. "20" and "20.0" are the same number.
void normalise(Json::Value& json) {
  if (json.isNumeric()) json = json.asDouble();
  if (json.isArray()) {
    for (Json::Value& item : json) normalise(item);
  }
  if (!json.isObject()) return;
  json.removeMember("product");
  json.removeMember("text");
  json.removeMember("bands_Hz");
  for (const std::string& name : json.getMemberNames()) normalise(json[name]);
}

TEST_F(Sweep, JsonObjectsAreThoseOfCalcWithoutProductAndTexts) {
  const std::vector<std::vector<std::string>> products = {
      {"ASD", "DAMPER-200"}, {"ASD", "FIXED-100"}, {"FAN", "FAN-315"}, {"AEX", "GRILLE-400x200"}};
  for (const std::vector<std::string>& product : products) {
    Json::Value points =
        parse_json(run({product[0], product[1], "--qv", "30:330:100", "--dp", "60:560:250"}, "--json"));
    ASSERT_TRUE(points.isArray());
    ASSERT_EQ(points.size(), 12u) << product[1];
    for (const Json::ArrayIndex i : {0u, 4u, 11u}) {
      const std::string qv = std::to_string(30 + i / 3 * 100);
      const std::string dp = std::to_string(60 + i % 3 * 250);
      const Outcome calc =
          run_program({"calc", database.path(), product[0], product[1], "--qv", qv, "--dp", dp, "--json"});
      ASSERT_EQ(calc.exit_code, 0) << calc.err;
      Json::Value expected = parse_json(calc.out);
      normalise(expected);
      normalise(points[i]);
      EXPECT_EQ(points[i].toStyledString(), expected.toStyledString())
          << product[1] << " at " << qv << ", " << dp;
    }
  }
}

TEST_F(Sweep, JsonOfOnePointIsAnArray) {
  const Json::Value points = parse_json(run({"ASD", "FIXED-100", "--qv", "100"}, "--json"));
  ASSERT_TRUE(points.isArray());
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(points[0]["pressure_range"]["dp_min_Pa"].asFloat(), 100.0F);
}

struct Usage {
  int exit_code;
  long peak_kb;  // resident memory
};

// Runs the program with standard output going to a file, and tells what it took.
Usage measure(const std::string& out_path, const std::vector<std::string>& arguments) {
  std::vector<char*> argv{const_cast<char*>(TAVD_PROGRAM)};
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  const pid_t process = fork();
  if (process == 0) {
    const int file = open(out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || dup2(file, STDOUT_FILENO) < 0) _exit(127);
    setenv("LSAN_OPTIONS", "print_suppressions=0:suppressions=" TAVD_SOURCE_DIR "/tests/support/leaks.supp",
           1);
    execv(TAVD_PROGRAM, argv.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  if (wait4(process, &status, 0, &usage) != process || !WIFEXITED(status)) return {-1, 0};
  return {WEXITSTATUS(status), usage.ru_maxrss};
}

// Collected in memory the larger sweep would take more than 20 MB as text alone.
TEST_F(Sweep, LongStreamsTakeNoMoreMemoryThanShortOnes) {
  constexpr long kAllowedGrowthKb = 8 * 1024;
  const clitest::Folder folder;
  for (const char* form : {"--csv", "--json"}) {
    const Usage small = measure(folder.file("small"),
                                command({"ASD", "DAMPER-200", "--qv", "20:119:1", "--dp", "10:19:1"}, form));
    const Usage large =
        measure(folder.file("large"),
                command({"ASD", "DAMPER-200", "--qv", "20:119.8:0.2", "--dp", "10:409:1"}, form));
    ASSERT_EQ(small.exit_code, 0);
    ASSERT_EQ(large.exit_code, 0);
    EXPECT_LT(large.peak_kb, small.peak_kb + kAllowedGrowthKb) << form;
    const std::string text = clitest::read_file(folder.file("large"));
    EXPECT_GT(text.size(), 20'000'000u) << form;
    const auto lines = std::count(text.begin(), text.end(), '\n');
    EXPECT_EQ(lines, 200'000 + (std::string(form) == "--csv" ? 1 : 2));
  }
}

TEST_F(Sweep, EndsAsSoonAsItsOutputCannotBeWritten) {
  const Outcome outcome = clitest::run_program_into(
      "/dev/full", command({"ASD", "DAMPER-200", "--qv", "1:100000:1", "--dp", "1:10000:1"}, "--csv"));
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(outcome.err, "tavd: cannot write to standard output\n");
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
