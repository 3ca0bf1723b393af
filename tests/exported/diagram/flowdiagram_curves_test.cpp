// What the flow diagram draws over its chart. Pixels by hand: x = 1955 + 7045 * lg(qv / 100) and
// y = 8045 - 3241.5 * lg(dp / 100), in the plot from 1955, 1562 to 9000, 8045.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "exported/diagram/flowdiagram_fixture.h"

namespace {

using tavdtest::Record;
using Strings = std::vector<std::string>;

constexpr float kMiddleFlow = 316.2278F;  // halfway along the decade: x 5477
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

constexpr char kCurvePen[] = "select pen solid width=10 colour=#000000";
constexpr char kMinorPen[] = "select pen solid width=10 colour=#808080";
constexpr char kPointPen[] = "select pen solid width=10 colour=#0000FF";
constexpr char kLimitPen[] = "select pen solid width=40 colour=#FF0000";
constexpr char kLabelFont[] =
    "select font height=-400 weight=400 escapement=0 charset=1 italic=0 underline=0 strikeout=0 "
    "face=\"Microsoft Sans Serif\"";
constexpr char kFormerPen[] = "select stock black-pen";
constexpr char kFormerFont[] = "select stock system-font";

class FlowDiagramCurves : public tavdtest::FlowDiagram {
 protected:
  void build(Record& product) { ASSERT_EQ(0, tavdg_initdiagramdata(product.rec())); }
  void build_limits(std::int16_t kind) {
    Record product("TST", "PRODUCT");
    build(limits(product, kind));
  }
  void build_resistance() {
    Record product("TST", "PRODUCT");
    build(resistance(product));
  }
  void build_dampers(const std::vector<DamperPoint>& rows, std::int16_t kind = 120) {
    Record product("TST", "PRODUCT");
    build(limits(product, kind).rows(1652, rows));
  }
};

TEST_F(FlowDiagramCurves, ReferenceCurveIsOneLineOfTheSquareLaw) {
  build_resistance();
  EXPECT_EQ((Strings{kCurvePen, "move 1955 8045", "line 1955 8045 9000 1562", kFormerPen}), curves());
}

TEST_F(FlowDiagramCurves, ReferenceCurveByVelocityIsTheSame) {
  Record product("TST", "PRODUCT");
  build(limits(product, 111).floats(1651, {100, 100}));
  EXPECT_EQ((Strings{"line 1955 8045 9000 1562"}), curves("line"));
}

TEST_F(FlowDiagramCurves, ReferenceCurveAboveOrBelowTheChartIsNotDrawn) {
  for (const float dpref : {1.001e4F, 0.99F}) {
    Record product("TST", "PRODUCT");
    build(limits(product, 110).floats(1651, {100, dpref}));
    EXPECT_EQ(Strings(), curves()) << dpref;
  }
}

TEST_F(FlowDiagramCurves, ReferenceFlowMustBeAboveATinyBound) {
  for (const float qvref : {1e-05F, 0.0F, -100.0F, kNaN}) {
    Record product("TST", "PRODUCT");
    build(limits(product, 110).floats(1651, {qvref, 100}));
    EXPECT_EQ(Strings(), curves()) << qvref;
  }
}

TEST_F(FlowDiagramCurves, MissingReferencePointLeavesTheChart) {
  build_limits(110);
  EXPECT_EQ(Strings(), curves());
}

TEST_F(FlowDiagramCurves, KindsWithLimitsAloneShowTheChartWithItsMarks) {
  for (const std::int16_t kind : {std::int16_t{113}, std::int16_t{130}}) {
    build_limits(kind);
    tavdg_set_operation_point(kMiddleFlow, 1000);
    tavdg_set_qvlimits(kMiddleFlow, 0);
    EXPECT_EQ(3U, curves("ellipse").size());
    EXPECT_EQ(2U, curves("line").size());
  }
}

// A duct of 0.01 m2: 100 l/s are 10 m/s or 60 Pa, 1000 l/s 100 m/s or 6000 Pa.
class FlowDiagramStatic : public FlowDiagramCurves {
 protected:
  Strings curve(const char* class_id, std::int16_t b, int dptype) {
    Record product(class_id, "PRODUCT");
    product.header(110, b, b, 100, 1000, 100, 10000).floats(1651, {100, 100});
    tavdg_set_dptype(dptype);
    build(product);
    return curves("line");
  }
};

TEST_F(FlowDiagramStatic, SupplyAirLosesTheDynamicPressure) {
  // From 40 Pa (y 9334) to 4000 Pa (y 2851), cut at the lower edge.
  for (const char* class_id : {"ASD", "AOD", "CCB"}) {
    EXPECT_EQ((Strings{"line 3355 8045 9000 2851"}), curve(class_id, 100, 1)) << class_id;
  }
}

TEST_F(FlowDiagramStatic, ExtractAirGainsIt) {
  // From 160 Pa (y 7383) to 16000 Pa (y 900), cut at the upper edge.
  for (const char* class_id : {"AEX", "AED"}) {
    EXPECT_EQ((Strings{"line 1955 7383 8280 1562"}), curve(class_id, 100, 1)) << class_id;
  }
}

TEST_F(FlowDiagramStatic, OtherClassesStayUnderTheStaticTitle) {
  EXPECT_EQ((Strings{"line 1955 8045 9000 1562"}), curve("TST", 100, 1));
  EXPECT_TRUE(is_drawn("dpst [Pa]"));
}

TEST_F(FlowDiagramStatic, TotalPressureHasNoCorrection) {
  EXPECT_EQ((Strings{"line 1955 8045 9000 1562"}), curve("ASD", 100, 0));
}

TEST_F(FlowDiagramStatic, UnknownDuctAreaHasNoCorrection) {
  EXPECT_EQ((Strings{"line 1955 8045 9000 1562"}), curve("ASD", 10, 1));
}

TEST_F(FlowDiagramStatic, VelocityProductsTakeTheFlowAsVelocity) {
  // 10 to 100 m/s and 100 to 10000 Pa; the dynamic pressure is 60 and 6000 Pa.
  Record product("AEX", "PRODUCT");
  product.header(111, 0, 0, 10, 100, 100, 10000).floats(1651, {10, 100});
  tavdg_set_dptype(1);
  build(product);
  ASSERT_EQ(1U, curves("move").size());
  // The y axis has labels of five characters, the x axis of four: a plot to 9200, 8246. 160 Pa lie at
  // 8246 - 3342 * lg 1.6 = 7563.8.
  EXPECT_EQ("move 1955 7563", curves("move").front().substr(0, 14));
}

TEST_F(FlowDiagramStatic, CurveThatFallsToZeroHasNoPlaceOnTheAxis) {
  // 100 Pa less 0.6 * (100 / 1000 / 0.0064)^2 = 146 Pa are negative.
  EXPECT_EQ(Strings(), curve("ASD", 80, 1));
}

TEST_F(FlowDiagramCurves, DamperLinesRunAcrossThePlotWithLabelsWhereTheyLeaveIt) {
  build_dampers({{1, 100, 1000}, {1.5F, 100, 316.2278F}, {2, 100, 100}, {3, 1000, 100}, {4, 1000, 50}});
  const Strings expected = {
      kLabelFont, kCurvePen,
      // From 31.6 l/s on the lower edge to 316 l/s on the upper one; the first label stands right-aligned.
      kCurvePen, "move 1955 4803", "line 1955 4803 5477 1562", "align center+bottom", "align right+bottom",
      "text 5477 1542 \" 1\"",
      // A setting between whole numbers is grey and has no label. It starts at 193, 8045 and falls 6483 over
      // 7045: 1762 units on, at the left edge, it stands at 8045 - 1621.4.
      kMinorPen, "move 1955 6423", "line 1955 6423 7238 1562", "align center+bottom",
      // Leaves in the corner, which counts as the right side.
      kCurvePen, "move 1955 8045", "line 1955 8045 9000 1562", "align left+bottom", "text 9050 1762 \"2\"",
      // Enters in the corner.
      kCurvePen, "move 9000 8045", "line 9000 8045 9000 8045", "align left+bottom", "text 9050 8245 \"3\"",
      // Misses the plot.
      kCurvePen, kFormerPen, kFormerFont};
  EXPECT_EQ(expected, curves());
}

TEST_F(FlowDiagramCurves, DamperPositionLabelStandsBeforeTheFirst) {
  tavdg_set_damperpos_label("Pos.");
  build_dampers({{1.5F, 100, 1000}, {2, 100, 100}});
  EXPECT_EQ((Strings{"text 5477 1542 \"Pos. 2\"", "text 9050 1762 \"2\""}), curves("text"));
}

TEST_F(FlowDiagramCurves, WholePositionsAreThoseWithinAThousandthAbove) {
  build_dampers({{1, 100, 1000}, {2.0005F, 100, 500}, {2.002F, 100, 400}, {2.9995F, 100, 300}});
  EXPECT_EQ((Strings{"text 5477 1542 \" 1\""}), Strings({curves("text").front()}));
  EXPECT_EQ(2U, curves("text").size());
  Strings pens;
  for (const std::string& line : curves("select")) {
    if (line.starts_with("select pen")) {
      pens.push_back(line);
    }
  }
  EXPECT_EQ((Strings{kCurvePen, kCurvePen, kCurvePen, kMinorPen, kMinorPen}), pens);
}

TEST_F(FlowDiagramCurves, DamperRowsWithoutFlowOrPressureAreSkipped) {
  build_dampers({{1, 0, 1000},
                 {2, 1e-06F, 1000},
                 {3, 100, 0},
                 {4, 100, -5},
                 {5, kNaN, 100},
                 {6, 100, kNaN},
                 {7, 100, 100}});
  EXPECT_EQ((Strings{"line 1955 8045 9000 1562"}), curves("line"));
  EXPECT_EQ((Strings{"text 9050 1762 \"7\""}), curves("text"));
}

TEST_F(FlowDiagramCurves, HostileDamperRowsEnd) {
  build_dampers({{kNaN, 100, 100},
                 {kInfinity, 100, 200},
                 {1e30F, 1e-05F, 1e38F},
                 {-1e30F, 1e38F, 1e-38F},
                 {1, kInfinity, 1},
                 {2, 1, kInfinity},
                 {3, 1e-05F, 1e-38F},
                 {4, 3e38F, 3e38F}});
  EXPECT_LT(curves().size(), 100U);
}

TEST_F(FlowDiagramCurves, DamperByVelocityIsDrawnToo) {
  build_dampers({{2, 100, 100}}, 122);
  EXPECT_EQ((Strings{"line 1955 8045 9000 1562"}), curves("line"));
}

TEST_F(FlowDiagramCurves, ALabelsReplaceThePositionAndTheLastOneWins) {
  tavdg_set_a_label(2, "first");
  tavdg_set_a_label(2.0005F, "second");
  tavdg_set_a_label(2, "");
  tavdg_set_a_label(2.002F, "elsewhere");
  build_dampers({{1, 100, 1000}, {2, 100, 100}});
  EXPECT_EQ((Strings{"text 5477 1542 \" 1\"", "text 9050 1762 \"second\""}), curves("text"));
}

TEST_F(FlowDiagramCurves, ALabelOfTheFirstRowStandsWhereTheLineLeaves) {
  tavdg_set_a_label(1, "open");
  build_dampers({{1, 100, 1000}});
  EXPECT_EQ((Strings{"align center+bottom"}), curves("align"));
  EXPECT_EQ((Strings{"text 5477 1542 \"open\""}), curves("text"));
}

TEST_F(FlowDiagramCurves, ALabelNamesAGreyLine) {
  tavdg_set_a_label(1.5F, "half");
  build_dampers({{1, 100, 1000}, {1.5F, 100, 100}});
  EXPECT_EQ("text 9050 1762 \"half\"", curves("text").back());
}

TEST_F(FlowDiagramCurves, ALabelBeyondTheTwoHundredthIsDropped) {
  for (int i = 0; i < 199; ++i) {
    tavdg_set_a_label(1000, "other");
  }
  tavdg_set_a_label(2, "last");
  tavdg_set_a_label(2, "dropped");
  build_dampers({{1, 100, 1000}, {2, 100, 100}});
  EXPECT_EQ("text 9050 1762 \"last\"", curves("text").back());
}

TEST_F(FlowDiagramCurves, PercentSignsInALabelsAreReadAsFormatsOfNothing) {
  const struct {
    const char* label;
    const char* drawn;
  } cases[] = {{"50%%", "50%"},   {"a%db", "ab"},  {"a%-5.2fb", "ab"}, {"%s%nx", "x"},   {"100%", "100%"},
               {"5%!", "5%!"},    {"%5%%", "%5%"}, {"%%d", "%d"},      {"a% 3db", "ab"}, {"%lld|%hhx", "|"},
               {"a%*.*fb", "ab"}, {"%.", "%."},    {"%y", "%y"},       {"%%%%", "%%"}};
  for (const auto& c : cases) {
    tavdg_init_empty(tgui_main_module(), db());
    tavdg_set_a_label(1, c.label);
    build_dampers({{1, 100, 1000}});
    EXPECT_EQ((Strings{std::string("text 5477 1542 \"") + c.drawn + '"'}), curves("text")) << c.label;
  }
}

TEST_F(FlowDiagramCurves, ALabelOfConversionsAloneDrawsNothing) {
  tavdg_set_a_label(1, "%d%s");
  build_dampers({{1, 100, 1000}});
  EXPECT_EQ(Strings(), curves("text"));
}

TEST_F(FlowDiagramCurves, LongLabelsAreCutAt149Characters) {
  const std::string endless(100000, 'x');
  tavdg_set_a_label(1, endless.c_str());
  tavdg_set_damperpos_label(endless.c_str());
  tavdg_set_LpA_label(endless.c_str());
  build_dampers({{1, 100, 1000}});
  EXPECT_EQ((Strings{"text 5477 1542 \"" + std::string(149, 'x') + '"'}), curves("text"));
  tavdg_init_empty(tgui_main_module(), db());
  tavdg_set_damperpos_label(endless.c_str());
  build_dampers({{1, 100, 1000}});
  EXPECT_EQ((Strings{"text 5477 1542 \"" + std::string(149, 'x') + " 1\""}), curves("text"));
}

TEST_F(FlowDiagramCurves, OperatingPointIsThreeCirclesOfHalfRadius) {
  build_limits(130);
  tavdg_set_operation_point(kMiddleFlow, 1000);
  EXPECT_EQ((Strings{kPointPen, "ellipse 5277 4603 5677 5003", "ellipse 5377 4703 5577 4903",
                     "ellipse 5427 4753 5527 4853", kFormerPen}),
            curves());
}

TEST_F(FlowDiagramCurves, OperatingPointOfInitIsShown) {
  Record product("TST", "PRODUCT");
  ASSERT_EQ(0, tavdg_init(tgui_main_module(), db(), limits(product, 130).rec(), 0, kMiddleFlow, 1000));
  EXPECT_EQ(3U, curves("ellipse").size());
}

TEST_F(FlowDiagramCurves, PressureOnTheLimitGivesTheVerticalLine) {
  build_limits(130);
  for (const float dp : {100.0F, 10000.0F, 0.0F, 1e30F, -1.0F, kNaN}) {
    tavdg_set_operation_point(kMiddleFlow, dp);
    EXPECT_EQ((Strings{kPointPen, "move 5477 8045", "line 5477 8045 5477 1562", kFormerPen}), curves()) << dp;
  }
}

TEST_F(FlowDiagramCurves, FlowOnOrOutsideTheLimitsShowsNoPoint) {
  build_limits(130);
  for (const float qv : {100.0F, 1000.0F, 0.0F, 5000.0F, kNaN}) {
    tavdg_set_operation_point(qv, 1000);
    EXPECT_EQ(Strings(), curves()) << qv;
  }
}

TEST_F(FlowDiagramCurves, OperatingPointIsInBaseUnitsWhateverTheAxesShow) {
  // l/h: labels of six characters, a plot from 2155 to 8600; the middle of the decade is 5377.5.
  tavdg_set_xunit(1);
  build_limits(130);
  tavdg_set_operation_point(kMiddleFlow, 1e30F);
  ASSERT_EQ(1U, curves("line").size());
  const tavdtest::Segment plot = draw().segments()[0];
  const tavdtest::Segment line = recording_.segments().back();
  EXPECT_NEAR((plot[0] + plot[2]) / 2.0, line[0], 1);
}

TEST_F(FlowDiagramCurves, FlowLimitsAreBracketsOpeningTowardEachOther) {
  build_limits(130);
  tavdg_set_qvlimits(kMiddleFlow, 500);
  EXPECT_EQ((Strings{kLimitPen, "move 5477 8040", "line 5477 8040 5477 8055", "move 5477 8055",
                     "line 5477 8055 5482 8055", "move 6879 8040", "line 6879 8040 6879 8055",
                     "move 6879 8055", "line 6879 8055 6874 8055", kFormerPen}),
            curves());
}

TEST_F(FlowDiagramCurves, FlowLimitsOutsideTheProductsAreNotMarked) {
  build_limits(130);
  tavdg_set_qvlimits(100, 500);
  EXPECT_EQ((Strings{"line 6879 8040 6879 8055", "line 6879 8055 6874 8055"}), curves("line"));
  tavdg_set_qvlimits(kMiddleFlow, 1000);
  EXPECT_EQ(2U, curves("line").size());
}

TEST_F(FlowDiagramCurves, FirstLimitOfZeroShowsNeither) {
  build_limits(130);
  tavdg_set_qvlimits(0, 500);
  EXPECT_EQ(Strings(), curves());
}

TEST_F(FlowDiagramCurves, CurveThenPointThenLimits) {
  build_resistance();
  tavdg_set_operation_point(kMiddleFlow, 1000);
  tavdg_set_qvlimits(500, 0);
  EXPECT_EQ((Strings{kCurvePen, kFormerPen, kPointPen, kFormerPen, kLimitPen, kFormerPen}), curves("select"));
}

TEST_F(FlowDiagramCurves, FanIgnoresOperatingPointAndLimits) {
  Record fan("TST", "FAN");
  fan.header(140, 0, 0, 100, 1000, 100, 10000);
  build(fan);
  tavdg_set_operation_point(kMiddleFlow, 1000);
  tavdg_set_qvlimits(kMiddleFlow, 500);
  EXPECT_NE("", draw().text());
  EXPECT_EQ(Strings(), curves());
}

TEST_F(FlowDiagramCurves, FormerObjectsAreSelectedAgain) {
  build_dampers({{1, 100, 1000}, {1.5F, 100, 300}});
  tavdg_set_operation_point(kMiddleFlow, 1000);
  tavdg_set_qvlimits(kMiddleFlow, 500);
  tgui_state before{};
  tgui_surface_state(recording_.surface(), &before);
  draw();
  tgui_state after{};
  tgui_surface_state(recording_.surface(), &after);
  EXPECT_EQ(before.pen, after.pen);
  EXPECT_EQ(before.brush, after.brush);
  EXPECT_EQ(before.font, after.font);
}

}  // namespace
