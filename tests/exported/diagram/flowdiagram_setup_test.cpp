// Setting up and building the flow diagram.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "exported/diagram/flowdiagram_fixture.h"

namespace {

using tavdtest::Record;
using tavdtest::Text;
using Strings = std::vector<std::string>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class FlowDiagramSetup : public tavdtest::FlowDiagram {
 protected:
  // The title of the x axis is the text after the diagram's, the title of the y axis the one after that.
  std::string x_title() { return titles()[1]; }
  std::string y_title() { return titles()[2]; }
  Strings titles() {
    Strings some;
    for (const Text& t : draw().texts()) {
      some.push_back(t.text);
    }
    some.resize(std::max<std::size_t>(some.size(), 3));
    return some;
  }
  // Tick labels of x, which follow their alignment and end with that of y.
  Strings x_labels() {
    Strings some;
    const Strings all = draw().lines();
    auto line = std::find(all.begin(), all.end(), "align right+top");
    for (; line != all.end() && *line != "align right+bottom"; ++line) {
      if (line->starts_with("text ")) {
        const std::size_t quote = line->find('"');
        some.push_back(line->substr(quote + 1, line->size() - quote - 2));
      }
    }
    return some;
  }
  std::string last_x_label() {
    const Strings labels = x_labels();
    return labels.empty() ? "none" : labels.back();
  }

  Record product_{"TST", "PRODUCT"};
};

TEST_F(FlowDiagramSetup, InitWithAProductAndNoListBuildsAtOnce) {
  resistance(product_).text(1501, "CODE-1");
  EXPECT_EQ(0, tavdg_init(tgui_main_module(), db(), product_.rec(), 0, 0, 0));
  EXPECT_EQ("CODE-1", titles()[0]);
}

TEST_F(FlowDiagramSetup, InitWithAListWaitsForTheList) {
  resistance(product_);
  EXPECT_EQ(0, tavdg_init(tgui_main_module(), db(), product_.rec(), 7, 0, 0));
  EXPECT_EQ("", draw().text());
}

TEST_F(FlowDiagramSetup, InitWithoutAProductBuildsNothing) {
  EXPECT_EQ(0, tavdg_init(tgui_main_module(), db(), nullptr, 0, 0, 0));
  EXPECT_EQ("", draw().text());
}

TEST_F(FlowDiagramSetup, InitTellsThatTheProductHasNoUsableLimits) {
  product_.header(110, 0, 0, 100, 1000, 0, 10000);
  EXPECT_EQ(-1, tavdg_init(tgui_main_module(), db(), product_.rec(), 0, 0, 0));
  EXPECT_EQ("", draw().text());
}

TEST_F(FlowDiagramSetup, InitEmptyLeavesTheProductToTheBuild) {
  EXPECT_EQ(0, tavdg_init_empty(nullptr, db()));
  EXPECT_EQ("", draw().text());
  EXPECT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  EXPECT_NE("", draw().text());
}

TEST_F(FlowDiagramSetup, BuildingWithoutARecordTakesTheFormerDiagramAway) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  EXPECT_EQ(-1, tavdg_initdiagramdata(nullptr));
  EXPECT_EQ("", draw().text());
}

TEST_F(FlowDiagramSetup, ReleasingTakesTheDiagramAwayAndMayBeRepeated) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  tavdg_release();
  EXPECT_EQ("", draw().text());
  tavdg_release();
}

TEST_F(FlowDiagramSetup, InitOverALivingDiagramStartsAfresh) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  tavdg_set_xunit(3);
  tavdg_init_empty(tgui_main_module(), db());
  EXPECT_EQ("", draw().text());
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("qv [l/s]", x_title());
}

TEST_F(FlowDiagramSetup, AxesAreTheProductsOwnLimits) {
  limits(product_, 130);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ((Strings{"100", "200", "300", "500", "1000"}), x_labels());
  EXPECT_EQ((tavdtest::Segment{1955, 1562, 9000, 1562}), recording_.segments()[0]);
  EXPECT_EQ((tavdtest::Segment{9000, 8045, 1955, 8045}), recording_.segments()[2]);
}

TEST_F(FlowDiagramSetup, EachFlowUnitHasItsTitleAndFactor) {
  limits(product_, 130);
  const struct {
    int unit;
    const char* title;
    const char* last;  // 1000 l/s, or the last of 1, 2, 3, 5 and 10 below it
  } units[] = {{0, "qv [l/s]", "1000"},
               {1, "qv [l/h]", "3000000"},
               {2, "qv [m3/s]", "1.0"},
               {3, "qv [m3/h]", "3000"},
               {4, "qv [cfm]", "2000"}};
  for (const auto& u : units) {
    tavdg_set_xunit(u.unit);
    ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
    EXPECT_EQ(u.title, x_title());
    EXPECT_EQ(u.last, last_x_label());
  }
}

TEST_F(FlowDiagramSetup, UnknownUnitsChangeNothing) {
  limits(product_, 130);
  tavdg_set_xunit(3);
  tavdg_set_yunit(1);
  for (const int unit : {5, -1, 1000}) {
    tavdg_set_xunit(unit);
    tavdg_set_yunit(unit == 5 ? 4 : unit);
  }
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("qv [m3/h]", x_title());
  EXPECT_EQ("dpt [kPa]", y_title());
}

TEST_F(FlowDiagramSetup, UnitsTakeEffectAtTheNextBuild) {
  limits(product_, 130);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  tavdg_set_xunit(3);
  EXPECT_EQ("qv [l/s]", x_title());
}

TEST_F(FlowDiagramSetup, EachPressureUnitHasItsTitle) {
  limits(product_, 130);
  const char* titles[] = {"dpt [Pa]", "dpt [kPa]", "dpt [\\\"WC]", "dpt [in wg]"};
  for (int unit = 0; unit < 4; ++unit) {
    tavdg_set_yunit(unit);
    ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
    EXPECT_EQ(titles[unit], y_title());
  }
}

TEST_F(FlowDiagramSetup, StaticPressureIsTitledSo) {
  limits(product_, 130);
  tavdg_set_dptype(1);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("dpst [Pa]", y_title());
  tavdg_set_dptype(2);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("dpt [Pa]", y_title());
}

TEST_F(FlowDiagramSetup, VelocityProductsShowMetresPerSecondAndTheUnitStays) {
  tavdg_set_xunit(3);
  for (const std::int16_t kind : {std::int16_t{111}, std::int16_t{122}}) {
    Record velocity("TST", "VELOCITY");
    limits(velocity, kind);
    ASSERT_EQ(0, tavdg_initdiagramdata(velocity.rec()));
    EXPECT_EQ("v [m/s]", x_title());
    EXPECT_EQ("1000", last_x_label());
  }
  limits(product_, 130);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("qv [m3/h]", x_title());
  EXPECT_EQ("3000", last_x_label());
}

TEST_F(FlowDiagramSetup, TitleChangesAtTheNextBuild) {
  resistance(product_).text(1501, "CODE-1");
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  tavdg_set_title("Mine");
  EXPECT_EQ("CODE-1", titles()[0]);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("Mine", titles()[0]);
  tavdg_set_title("");
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("CODE-1", titles()[0]);
}

TEST_F(FlowDiagramSetup, LongTitleIsCutAndNullIsEmpty) {
  resistance(product_).text(1501, "CODE-1");
  tavdg_set_title(std::string(500, 't').c_str());
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ(std::string(79, 't'), titles()[0]);
  tavdg_set_title(nullptr);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("CODE-1", titles()[0]);
}

TEST_F(FlowDiagramSetup, Utf8DatabasesGiveAWideChartWithTheProductCode) {
  Record("000", "FILEHEADER").words(1049, {1}).save(db());
  limits(product_, 130).text(1501, "CODE-\xC3\xA4");
  tavdg_set_title("Mine");
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  Strings wide;
  for (const Text& t : draw().texts("textw")) {
    wide.push_back(t.text);
  }
  EXPECT_EQ((Strings{"CODE-\xC3\xA4", "qv [l/s]", "dpt [Pa]"}), wide);
}

TEST_F(FlowDiagramSetup, CodePageDatabasesGiveANarrowChart) {
  Record("000", "FILEHEADER").words(1049, {2}).save(db());
  limits(product_, 130).text(1501, "CODE-1");
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ("CODE-1", titles()[0]);
}

TEST_F(FlowDiagramSetup, UnknownTextKindGivesANarrowChartWithTheTitleAsItStands) {
  limits(product_, 130).text(1501, "CODE-1");
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  Record("000", "FILEHEADER").words(1049, {3}).save(db());
  Record other("TST", "OTHER");
  limits(other, 130).text(1501, "CODE-2");
  tavdg_set_title("Mine");
  ASSERT_EQ(0, tavdg_initdiagramdata(other.rec()));
  EXPECT_EQ("CODE-1", titles()[0]);
}

TEST_F(FlowDiagramSetup, OtherDatabaseIsReadAfterSetTavb) {
  const tavdtest::Database other;
  Record("000", "FILEHEADER").words(1049, {1}).save(other.handle());
  limits(product_, 130);
  tavdg_set_tavb(other.handle());
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_FALSE(draw().texts("textw").empty());
}

TEST_F(FlowDiagramSetup, FanWithZeroLimitsIsValid) {
  product_.header(140, 0, 0, 0, 500, 0, 1200);
  EXPECT_EQ(0, tavdg_initdiagramdata(product_.rec()));
}

TEST_F(FlowDiagramSetup, FanAxesAreLinearAndWholeFromZero) {
  product_.header(140, 0, 0, 0, 600, 0, 1200);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ((Strings{"0", "100", "200", "300", "400", "500", "600"}), x_labels());
}

TEST_F(FlowDiagramSetup, FanAxisAboveZeroKeepsItsDecimals) {
  product_.header(140, 0, 0, 0.5F, 3, 10, 1200);
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ((Strings{"0.5", "1.0", "1.5", "2.0", "2.5", "3.0"}), x_labels());
}

TEST_F(FlowDiagramSetup, ZeroLowerLimitsFailForEveryOtherKind) {
  for (const int kind : {10, 11, 12, 13, 20, 22, 30}) {
    const auto kind100 = static_cast<std::int16_t>(kind + 100);
    Record flow("TST", "FLOW");
    flow.header(kind100, 0, 0, 0, 1000, 100, 10000);
    EXPECT_EQ(-1, tavdg_initdiagramdata(flow.rec())) << kind;
    Record pressure("TST", "PRESSURE");
    pressure.header(kind100, 0, 0, 100, 1000, 0, 10000);
    EXPECT_EQ(-1, tavdg_initdiagramdata(pressure.rec())) << kind;
    Record good("TST", "GOOD");
    EXPECT_EQ(0, tavdg_initdiagramdata(limits(good, kind100).rec())) << kind;
  }
}

TEST_F(FlowDiagramSetup, LimitsThatDoNotRiseFail) {
  const float cases[][4] = {{100, 100, 100, 1000},  {100, 50, 100, 1000},   {100, 1000, 100, 100},
                            {100, 1000, 100, 50},   {-1, 1000, 100, 1000},  {kNaN, 1000, 100, 1000},
                            {100, kNaN, 100, 1000}, {100, 1000, 100, kNaN}, {100, 1000, -1, 1000}};
  for (const std::int16_t kind : {std::int16_t{110}, std::int16_t{140}}) {
    for (const auto& c : cases) {
      Record bad("TST", "BAD");
      bad.header(kind, 0, 0, c[0], c[1], c[2], c[3]);
      EXPECT_EQ(-1, tavdg_initdiagramdata(bad.rec())) << c[0] << ' ' << c[1] << ' ' << c[2] << ' ' << c[3];
      EXPECT_EQ("", draw().text());
    }
  }
}

TEST_F(FlowDiagramSetup, RecordWithoutFlowDataFails) {
  product_.text(1501, "CODE-1");
  EXPECT_EQ(-1, tavdg_initdiagramdata(product_.rec()));
}

TEST_F(FlowDiagramSetup, GoodProductAfterAFailedOneIsDrawn) {
  Record bad("TST", "BAD");
  bad.header(110, 0, 0, 1, 1, 1, 1);
  ASSERT_EQ(-1, tavdg_initdiagramdata(bad.rec()));
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  EXPECT_NE("", draw().text());
}

TEST_F(FlowDiagramSetup, EndlessAndHugeLimitsAreDrawnToAnEnd) {
  const float cases[][4] = {{100, kInfinity, 100, kInfinity},
                            {1e-38F, 3e38F, 1e-38F, 3e38F},
                            {1e30F, 3e38F, 1e30F, 3e38F},
                            {1e9F, 1000000064.0F, 1e9F, 1000000064.0F}};
  for (const std::int16_t kind :
       {std::int16_t{110}, std::int16_t{120}, std::int16_t{130}, std::int16_t{140}}) {
    for (const auto& c : cases) {
      for (int unit = 0; unit < 5; ++unit) {
        Record hostile("TST", "HOSTILE");
        hostile.header(kind, 0, 0, c[0], c[1], c[2], c[3]).floats(1651, {c[0], c[2]});
        tavdg_set_xunit(unit);
        tavdg_set_operation_point(c[1], c[3]);
        EXPECT_EQ(0, tavdg_initdiagramdata(hostile.rec()));
        EXPECT_LT(draw().lines().size(), 6000U);
      }
    }
  }
}

TEST_F(FlowDiagramSetup, ResizingLaysTheDiagramOutAnew) {
  tavdg_resize(0, 0, 999, 999);  // nothing to lay out yet
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  EXPECT_EQ("select pen solid width=10 colour=#000000", draw().lines().front());
  tavdg_resize(0, 0, 20000, 4000);
  EXPECT_EQ("select pen solid width=20 colour=#000000", draw().lines().front());
  tavdg_resize_default();
  EXPECT_EQ((tavdtest::Segment{1955, 1562, 9000, 1562}), draw().segments()[0]);
}

TEST_F(FlowDiagramSetup, ResizingWithoutADiagramLeavesTheToolsAtTheirDefault) {
  tavdg_resize(0, 0, 2000, 2000);
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  EXPECT_EQ("select pen solid width=10 colour=#000000", curves("select").front());
}

// Both ends count: 0 to 49 is 50 units.
TEST_F(FlowDiagramSetup, RectanglesUnderFiftyUnitsOrReversedLeaveTheLayout) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  const Strings lines = draw().lines("line");
  const Strings texts = draw().lines("text");
  const int rectangles[][4] = {
      {0, 0, 48, 9999}, {0, 0, 9999, 48}, {9999, 0, 0, 9999}, {0, 9999, 9999, 0}, {9999, 9999, 0, 0}};
  for (const auto& r : rectangles) {
    tavdg_resize(r[0], r[1], r[2], r[3]);
    EXPECT_EQ(lines, draw().lines("line")) << r[0] << ' ' << r[1] << ' ' << r[2] << ' ' << r[3];
    EXPECT_EQ(texts, draw().lines("text")) << r[0] << ' ' << r[1] << ' ' << r[2] << ' ' << r[3];
  }
  tavdg_resize(0, 0, 49, 49);
  EXPECT_NE(lines, draw().lines("line"));
}

TEST_F(FlowDiagramSetup, ToolsAndMarksFollowEveryRectangle) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  tavdg_set_operation_point(300, 1000);
  tavdg_resize(9999, 9999, 4999, 0);  // 5000 units to the left, upside down
  EXPECT_EQ("select pen solid width=1 colour=#000000", curves("select").front());
  const tavdtest::Segment mark = draw().figures("ellipse").front();
  EXPECT_EQ(-200, mark[2] - mark[0]);  // a circle of that size either way
  EXPECT_EQ(-200, mark[3] - mark[1]);
}

TEST_F(FlowDiagramSetup, BuildLaysOutTheDefaultRectangleWithToolsOfTheFormerOne) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  const Strings lines = draw().lines("line");
  tavdg_resize(0, 0, 5000, 2500);
  ASSERT_NE(lines, draw().lines("line"));
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ(lines, draw().lines("line"));
  EXPECT_EQ("select pen solid width=2 colour=#000000", curves("select").front());
}

// The axis stays in l/s; the point at 300 l/s is 1080 m3/h and so lies beyond its end.
TEST_F(FlowDiagramSetup, UnitsSetBehindABuildMoveWhatIsDrawnOverTheFormerAxis) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  tavdg_set_operation_point(300, 1000);
  EXPECT_EQ(3U, draw().figures("ellipse").size());
  tavdg_set_xunit(3);
  EXPECT_EQ(0U, draw().figures("ellipse").size());
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ(3U, draw().figures("ellipse").size());
}

TEST_F(FlowDiagramSetup, OperatingPointCountsFromTheNextDrawingUntilTheNextInit) {
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  EXPECT_EQ(0U, draw().figures("ellipse").size());
  tavdg_set_operation_point(300, 1000);
  EXPECT_EQ(3U, draw().figures("ellipse").size());
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));  // another build leaves it
  EXPECT_EQ(3U, draw().figures("ellipse").size());
  tavdg_init_empty(tgui_main_module(), db());
  ASSERT_EQ(0, tavdg_initdiagramdata(product_.rec()));
  EXPECT_EQ(0U, draw().figures("ellipse").size());
}

TEST_F(FlowDiagramSetup, ParametersAreAppliedToEachProductAndSurviveAnInit) {
  // k = 0.01 of the product; each parameter's value 1 adds 0.03, so that the curve starts at 400 Pa, or 700
  // with both.
  ParEntry row{{'1', ' ', ' ', ' ', ' ', ' '}, 0.03F, 0, 0, 0};
  resistance(product_).text(1514, "A,B").rows<ParEntry>(1661, {row}).rows<ParEntry>(1662, {row});
  const auto start = [this] {
    EXPECT_EQ(0, tavdg_initdiagramdata(product_.rec()));
    const Strings moves = curves("move");
    return moves.empty() ? "" : moves.front();
  };
  const std::string none = "move 1955 8045";
  const std::string one = "move 1955 6093";   // 8045 - 3241.5 * lg 4 = 6093.4
  const std::string both = "move 1955 5305";  // 8045 - 3241.5 * lg 7 = 5305.6
  EXPECT_EQ(none, start());
  tavdg_set_parameter("A", "1");
  EXPECT_EQ(one, start());
  tavdg_init_empty(tgui_main_module(), db());
  EXPECT_EQ(one, start());
  tavdg_set_parameter("B", "1");
  EXPECT_EQ(both, start());
  // A third name replaces the second, never the first.
  tavdg_set_parameter("C", "1");
  EXPECT_EQ(one, start());
  tavdg_set_parameter("b", "1");
  EXPECT_EQ(both, start());
  // The same name takes its slot, whatever its case and its trailing blanks.
  tavdg_set_parameter("a   ", "");
  EXPECT_EQ(one, start());
  tavdg_reset_parameters();
  EXPECT_EQ(none, start());
}

TEST_F(FlowDiagramSetup, NullTextsCountAsEmpty) {
  tavdg_set_parameter(nullptr, nullptr);
  tavdg_set_LpA_label(nullptr);
  tavdg_set_damperpos_label(nullptr);
  tavdg_set_a_label(1, nullptr);
  ASSERT_EQ(0, tavdg_initdiagramdata(resistance(product_).rec()));
  EXPECT_NE("", draw().text());
}

}  // namespace
