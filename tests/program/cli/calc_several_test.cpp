// `tavd calc` and `tavd sweep` on several products, main records and layered products.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "families.h"
#include "support/json.h"
#include "support/program.h"
#include "sweep_fixture.h"

namespace {

using clitest::expect_user_error;
using clitest::run_json;
using clitest::run_text;
using clitest::Table;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Several : testing::Test {
  Several() {
    clitest::add_samples(database);
    clitest::add_families(database);
    add_layered();
  }

  // 20 Pa at 50 l/s; 40 Pa for the width 10; a sound table for the colour A.
  void add_layered() const {
    tavdtest::Record("LAY", "Q-*-*")
        .words(clitest::kSizingMode, {10})
        .header(110, 100, 0, 10, 100, 5, 200)
        .floats(1651, {50, 20})
        .text(clitest::kCode, "Q main")
        .save(database.handle());
    tavdtest::Record("LAY", "Q-10-*")
        .words(clitest::kSizingMode, {11})
        .floats(1651, {50, 40})
        .save(database.handle());
    tavdtest::Record("LAY", "Q-*-A")
        .words(clitest::kSizingMode, {11})
        .rows<clitest::SoundRow>(1653, {{25, 10, 30}, {50, 40, 42}})
        .save(database.handle());
  }

  std::vector<std::string> command(const char* name, std::vector<std::string> options) const {
    options.insert(options.begin(), {name, database.path()});
    return options;
  }
  std::string calc(const std::vector<std::string>& options) const {
    return run_text(command("calc", options));
  }
  Table csv(const char* name, std::vector<std::string> options) const {
    options.emplace_back("--csv");
    return Table(run_text(command(name, options)));
  }
  static std::vector<std::string> cells(const Table& table, const std::string& name) {
    std::vector<std::string> values;
    for (std::size_t row = 0; row < table.rows.size(); ++row) values.push_back(table.cell(row, name));
    return values;
  }

  tavdtest::Database database;
};

TEST_F(Several, IdsGiveALineEach) {
  const Table table = csv("calc", {"FAM", "F-125", "F-100", "--qv", "80"});
  EXPECT_THAT(cells(table, "class"), ElementsAre("FAM", "FAM"));
  EXPECT_THAT(cells(table, "id"), ElementsAre("F-125", "F-100"));
  EXPECT_THAT(cells(table, "code"), ElementsAre("F-125", "Hundred"));
  EXPECT_THAT(cells(table, "size_mm"), ElementsAre("125", "100"));
  EXPECT_THAT(cells(table, "dp_min_Pa"), ElementsAre("20", "51.2"));
}

TEST_F(Several, ColumnsAreThoseOfAllOfThem) {
  const Table table = csv("calc", {"ASD", "*", "--qv", "100", "--dp", "150"});
  EXPECT_THAT(cells(table, "id"), ElementsAre("DAMPER-200", "FIXED-100"));
  EXPECT_NE(table.cell(0, "position_stepless"), "");
  EXPECT_EQ(table.cell(1, "position_stepless"), "");
  EXPECT_EQ(table.cell(1, "lw_dBA"), "");
  EXPECT_THAT(cells(table, "reachable"), ElementsAre("1", "0"));
}

TEST_F(Several, FlowsAndVelocitiesHaveColumnsOfTheirOwn) {
  tavdtest::Record("AEX", "BOX")
      .header(110, 100, 0, 10, 100, 5, 200)
      .floats(1651, {50, 20})
      .save(database.handle());
  const Table table = csv("calc", {"AEX", "*", "--qv", "160l/s"});
  EXPECT_THAT(cells(table, "id"), ElementsAre("BOX", "GRILLE-400x200"));
  EXPECT_THAT(cells(table, "qv_l_s"), ElementsAre("160", ""));
  EXPECT_THAT(cells(table, "v_m_s"), ElementsAre("", "2"));
}

TEST_F(Several, PatternTakesProductsAndNoRecordsThatStandForSeveral) {
  EXPECT_THAT(cells(csv("calc", {"FAM", "F*", "--qv", "80"}), "id"), ElementsAre("F-100", "F-125"));
  EXPECT_THAT(cells(csv("calc", {"FAM", "F-1?5", "--qv", "80"}), "id"), ElementsAre("F-125"));
  EXPECT_THAT(cells(csv("calc", {"LAY", "*", "--qv", "80"}), "id"), ElementsAre("P-10-A"));
}

TEST_F(Several, PatternLikeNothingIsRefused) {
  EXPECT_THAT(expect_user_error(command("calc", {"FAM", "G*", "--qv", "80"})),
              HasSubstr("no product of class \"FAM\" in " + database.path() + " is like \"G*\""));
  EXPECT_THAT(expect_user_error(command("calc", {"XXX", "G*", "--qv", "80"})), HasSubstr("no class \"XXX\""));
}

TEST_F(Several, FamilyGivesItsSizesInTheirOrder) {
  EXPECT_THAT(cells(csv("calc", {"FAM", "F-*", "--family", "--qv", "80"}), "id"),
              ElementsAre("F-100", "F-125"));
  EXPECT_THAT(cells(csv("calc", {"FAM", "F", "--family", "--qv", "80"}), "id"),
              ElementsAre("F-125", "F-100"));
  tavdtest::Record("FAM", "EMPTY-*").words(clitest::kSizingMode, {1}).save(database.handle());
  EXPECT_THAT(expect_user_error(command("calc", {"FAM", "EMPTY-*", "--family", "--qv", "80"})),
              HasSubstr("FAM EMPTY-* in " + database.path() + " has no sizes"));
}

TEST_F(Several, AreAnArrayInJsonAndOneIsAnObject) {
  const Json::Value two = run_json(command("calc", {"FAM", "F-100", "F-125", "--qv", "80"}));
  ASSERT_TRUE(two.isArray());
  ASSERT_EQ(two.size(), 2u);
  EXPECT_EQ(two[1]["product"]["id"].asString(), "F-125");
  EXPECT_TRUE(run_json(command("calc", {"FAM", "F-1?5", "--qv", "80"})).isArray());
  EXPECT_TRUE(run_json(command("calc", {"FAM", "F-125", "--qv", "80"})).isObject());
}

TEST_F(Several, StandUnderEachOtherAsText) {
  EXPECT_THAT(calc({"FAM", "F-100", "F-125", "--qv", "80"}),
              testing::AllOf(testing::StartsWith("FAM F-100\n"), HasSubstr("\n\nFAM F-125\n")));
}

TEST_F(Several, ParameterThatOneDoesNotHaveNamesIt) {
  EXPECT_THAT(expect_user_error(
                  command("calc", {"ASD", "DAMPER-200", "FIXED-100", "--qv", "80", "--param", "blade=100"})),
              HasSubstr("ASD FIXED-100: the product has no parameter \"blade\"; it has colour"));
}

TEST_F(Several, ProductsWithoutFlowDataHaveALineWithoutAnswers) {
  tavdtest::Record("FAM", "F-BARE").text(clitest::kCode, "Bare, \"empty\"").save(database.handle());
  const std::string header = "class,id,code,kind,size_mm,data_of\n";
  EXPECT_EQ(run_text(command("calc", {"FAM", "F-BAR?", "--qv", "80", "--csv"})),
            header + "FAM,F-BARE,\"Bare, \"\"empty\"\"\",no flow data,,\n");
}

TEST_F(Several, SweepNamesTheProductInEachRow) {
  const Table table = csv("sweep", {"FAM", "F-*", "--family", "--qv", "50:100:50"});
  EXPECT_THAT(cells(table, "id"), ElementsAre("F-100", "F-100", "F-125", "F-125"));
  EXPECT_THAT(cells(table, "qv_l_s"), ElementsAre("50", "100", "50", "100"));
  EXPECT_THAT(cells(table, "dp_min_Pa"), ElementsAre("20", "80", "7.8125", "31.25"));
  const Json::Value json = run_json(command("sweep", {"FAM", "F-*", "--family", "--qv", "50:100:50"}));
  ASSERT_EQ(json.size(), 4u);
  EXPECT_EQ(json[2]["class"].asString(), "FAM");
  EXPECT_EQ(json[2]["id"].asString(), "F-125");
}

TEST_F(Several, SweepLeavesOutWhatHasNoFlowDataAndSaysSo) {
  tavdtest::Record("FAM", "F-BARE").text(clitest::kCode, "Bare").save(database.handle());
  const clitest::Outcome outcome =
      clitest::run_program(command("sweep", {"FAM", "F-*?", "--qv", "50", "--csv"}));
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(outcome.err, "tavd: FAM F-BARE has no flow data to calculate with and is left out\n");
  EXPECT_THAT(cells(Table(outcome.out), "id"), ElementsAre("F-100", "F-125"));
}

TEST_F(Several, SweepConvertsARangeWithAUnit) {
  const Table table =
      csv("sweep", {"FAM", "F-100", "--qv", "180:360:90m3/h", "--dp", "0.02kPa", "--units", "m3/h,kPa"});
  EXPECT_THAT(cells(table, "qv_m3_h"), ElementsAre("180", "270", "360"));
  EXPECT_THAT(cells(table, "dp_kPa"), ElementsAre("0.02", "0.02", "0.02"));
  EXPECT_THAT(cells(table, "dp_min_kPa"), ElementsAre("0.02", "0.045", "0.08"));
  EXPECT_THAT(cells(table, "reachable"), ElementsAre("1", "0", "0"));
  for (const char* range : {"180m3/h:360:90", "180:360:90gpm", "180:360:90Pa", "180:360:m3/h"}) {
    EXPECT_THAT(expect_user_error(command("sweep", {"FAM", "F-100", "--csv", "--qv", range})),
                HasSubstr("--qv"))
        << range;
  }
}

TEST_F(Several, SweepTellsWhatFlowsGoThrough) {
  const clitest::Outcome outcome =
      clitest::run_program(command("sweep", {"AEX", "GRILLE-400x200", "--qv", "160:320:160l/s", "--csv"}));
  EXPECT_EQ(outcome.err, "tavd: AEX GRILLE-400x200: l/s to m/s through its size, 400x200 mm\n");
  EXPECT_THAT(cells(Table(outcome.out), "v_m_s"), ElementsAre("2", "4"));
}

// Its data are those of F-100, whose code is "Hundred".
TEST_F(Several, MainRecordSaysThatItIsOneAndWhoseDataItShows) {
  const std::string out = calc({"FAM", "F-*", "--qv", "50"});
  EXPECT_THAT(out, ContainsRegex("Record +main record of a family, by the . in its id, 2 sizes\n"));
  EXPECT_THAT(out, ContainsRegex("Data of +F-100\n"));
  EXPECT_THAT(out, ContainsRegex("Code +Hundred\n"));
  const Json::Value product = run_json(command("calc", {"FAM", "F-*", "--qv", "50"}))["product"];
  EXPECT_EQ(product["code"].asString(), "Hundred");
  EXPECT_EQ(product["main_record"]["data_of"].asString(), "F-100");
  EXPECT_EQ(product["main_record"]["sizes"].asInt(), 2);
  EXPECT_EQ(csv("calc", {"FAM", "F-*", "F-125", "--qv", "50"}).cell(0, "data_of"), "F-100");
}

TEST_F(Several, MainRecordWithDataLikeNoSizeSaysSo) {
  tavdtest::Record("FAM", "F-100")
      .header(110, 100, 0, 10, 100, 5, 200)
      .floats(1651, {50, 21})
      .save(database.handle());
  EXPECT_THAT(calc({"FAM", "F-*", "--qv", "50"}),
              ContainsRegex("Data of +the main record, like those of none of its sizes\n"));
  EXPECT_TRUE(
      run_json(command("calc", {"FAM", "F-*", "--qv", "50"}))["product"]["main_record"]["data_of"].isNull());
}

TEST_F(Several, TemplateOfACodeIsFilledInForTheSize) {
  tavdtest::Record("XYZ", "T-160")
      .header(110, 160, 0, 10, 100, 5, 200)
      .floats(1651, {50, 20})
      .text(clitest::kCode, "T-{D:4mm}")
      .save(database.handle());
  tavdtest::Record("XYZ", "T-BAD")
      .header(110, 160, 0, 10, 100, 5, 200)
      .floats(1651, {50, 20})
      .text(clitest::kCode, "T-{B:4mm}")
      .save(database.handle());
  EXPECT_THAT(calc({"XYZ", "T-160", "--qv", "50"}), ContainsRegex("Code +T-0160\n"));
  EXPECT_THAT(calc({"XYZ", "T-BAD", "--qv", "50"}), ContainsRegex("Code +T-.B:4mm.\n"));
}

TEST_F(Several, VariantOfALayeredProductFollowsItsLayers) {
  const std::string ten = calc({"LAY", "Q-10-A", "--qv", "50"});
  EXPECT_THAT(ten, ContainsRegex("Record +variant of a layered product\n"));
  EXPECT_THAT(ten, ContainsRegex("Data of the sub record +Q-10-.: qvdpref\n"));
  EXPECT_THAT(ten, ContainsRegex("Data of the sub record +Q-.-A: lwpoints\n"));
  EXPECT_THAT(ten, ContainsRegex("Data of the main record +Q-.-.: flowheader\n"));
  EXPECT_THAT(ten, ContainsRegex("Code +Q main\n"));
  EXPECT_THAT(ten, ContainsRegex("Lowest pressure +40.0 Pa\n"));
  EXPECT_THAT(ten, ContainsRegex("Sound power, dB( +42.0){8}\n"));
  EXPECT_THAT(calc({"LAY", "Q-20-B", "--qv", "50"}), ContainsRegex("Lowest pressure +20.0 Pa\n"));
}

TEST_F(Several, LayersAreToldInJsonAndCsv) {
  const Json::Value layers = run_json(command("calc", {"LAY", "Q-10-B", "--qv", "50"}))["product"]["layers"];
  ASSERT_EQ(layers.size(), 2u);
  EXPECT_EQ(layers[0]["layer"].asString(), "sub record");
  EXPECT_EQ(layers[0]["id"].asString(), "Q-10-*");
  EXPECT_THAT(clitest::texts_of(layers[0]["attributes"]), ElementsAre("qvdpref"));
  EXPECT_THAT(clitest::texts_of(layers[1]["attributes"]), ElementsAre("flowheader"));
  EXPECT_EQ(csv("calc", {"LAY", "Q-10-B", "Q-20-B", "--qv", "50"}).cell(0, "data_of"), "Q-*-*");
}

TEST_F(Several, VariantThatFitsNoLayeredProductIsNotFound) {
  EXPECT_THAT(expect_user_error(command("calc", {"LAY", "Q-10", "--qv", "50"})),
              HasSubstr("no product \"Q-10\""));
  EXPECT_THAT(expect_user_error(command("calc", {"LAY", "R-10-A", "--qv", "50"})),
              HasSubstr("no product \"R-10-A\""));
  EXPECT_THAT(expect_user_error(command("calc", {"LAYX", "Q-10-A", "--qv", "50"})),
              HasSubstr("no class \"LAYX\""));
}

}  // namespace
