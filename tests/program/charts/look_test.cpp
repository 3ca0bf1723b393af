// What a chart shows: numbers on the axes, a grid below the curves, families that differ without colour.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "program/charts/scenes.h"
#include "sheet/chart/axis.h"
#include "sheet/chart/look.h"
#include "sheet/portable/svg_painter.h"
#include "sheet/recording_painter.h"
#include "support/products.h"

namespace {

using tavdhost::Axis;
using tavdhost::ChartDuty;
using tavdhost::ChartUnit;
using tavdhost::CurveFamily;
using tavdhost::flow_curves;
using tavdhost::LineStyle;
using tavdhost::PagePoint;
using tavdhost::RecordingPainter;
using tavdhost::Scale;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr float kRoomDamping = 4;  // dB

std::vector<std::string> labels(const Axis& axis, const char* unit, char decimal = '.') {
  std::vector<std::string> texts;
  const ChartUnit shown = {hosts::find_unit(unit), unit};
  for (const tavdhost::Tick& tick : ticks_of(axis, shown, decimal, [](const std::string&) { return 4.0; })) {
    if (tick.is_major()) texts.push_back(tick.label);
  }
  return texts;
}

TEST(ChartAxis, HasPlainNumbersAt1235OfEachDecade) {
  EXPECT_THAT(labels({Scale::kLogarithmic, 0.9, 1200, 0, 100}, "Pa"),
              ElementsAre("1", "2", "3", "5", "10", "20", "30", "50", "100", "200", "300", "500", "1000"));
  EXPECT_THAT(labels({Scale::kLogarithmic, 0.009, 0.11, 0, 100}, "Pa", ','),
              ElementsAre("0,01", "0,02", "0,03", "0,05", "0,1"));
}

TEST(ChartAxis, HasFewerNumbersWhereThereIsNoRoomAndMoreWhereItIsShort) {
  EXPECT_THAT(labels({Scale::kLogarithmic, 0.9, 1200, 0, 16}, "Pa"), ElementsAre("1", "10", "100", "1000"));
  EXPECT_THAT(labels({Scale::kLogarithmic, 0.9, 1200, 0, 12}, "Pa"), ElementsAre("1", "100"));
  EXPECT_THAT(labels({Scale::kLogarithmic, 19, 41, 0, 100}, "Pa"), ElementsAre("20", "25", "30", "35", "40"));
  EXPECT_THAT(labels({Scale::kLinear, 0, 315, 0, 80}, "Pa"), ElementsAre("0", "100", "200", "300"));
}

// 100 m3/h are 27.8 l/s.
TEST(ChartAxis, HasItsNumbersOfAnotherUnitWhereTheyBelong) {
  const Axis axis(Scale::kLogarithmic, 10, 100, 0, 90);
  const ChartUnit hourly = {hosts::find_unit("m3/h"), "m3/h"};
  for (const tavdhost::Tick& tick : ticks_of(axis, hourly, '.', [](const std::string&) { return 4.0; })) {
    if (tick.label != "100") continue;
    EXPECT_NEAR(tick.place, axis.place(100 / 3.6), 1e-9);
  }
  EXPECT_THAT(labels(axis, "m3/h"), ElementsAre("50", "100", "200", "300"));
}

unsigned darkness(std::uint32_t colour) {
  return 3 * 255 - ((colour & 0xFF) + (colour >> 8 & 0xFF) + (colour >> 16 & 0xFF));
}

TEST(ChartLook, HasAGridLighterAndThinnerThanAnyCurve) {
  EXPECT_LT(tavdhost::kMinorGrid.width, tavdhost::kMajorGrid.width);
  EXPECT_LT(darkness(tavdhost::kMinorGrid.colour), darkness(tavdhost::kMajorGrid.colour));
  for (const CurveFamily family : {CurveFamily::kResistance, CurveFamily::kPosition, CurveFamily::kLevel,
                                   CurveFamily::kFan, CurveFamily::kFanLimit, CurveFamily::kThrow}) {
    for (const bool is_minor : {false, true}) {
      const LineStyle style = line_of(family, is_minor);
      EXPECT_GT(style.width, tavdhost::kMajorGrid.width);
      EXPECT_GT(darkness(style.colour), 2 * darkness(tavdhost::kMajorGrid.colour));
    }
  }
}

// Those that stand in one chart.
TEST(ChartLook, TellsFamiliesApartWithoutColour) {
  const auto without_colour = [](const LineStyle& style) {
    return std::pair(std::lround(style.width * 100),
                     std::vector<double>(style.dashes.begin(), style.dashes.end()));
  };
  std::set<std::vector<double>> dashes;
  for (const LineStyle& style :
       {line_of(CurveFamily::kPosition, false), line_of(CurveFamily::kLevel, false), tavdhost::kLimitLine,
        tavdhost::kDutyLine, line_of(CurveFamily::kFanLimit, false)}) {
    dashes.insert(without_colour(style).second);
  }
  EXPECT_EQ(dashes.size(), 5U);
  EXPECT_NE(without_colour(line_of(CurveFamily::kPosition, false)).first,
            without_colour(line_of(CurveFamily::kPosition, true)).first);
}

FlowData damper() {
  FlowData flow = tavdtest::damper_product({{1, 20, 200}, {2, 40, 100}, {3, 80, 50}});
  flow.qvmin = 10;
  flow.qvmax = 200;
  flow.dpmin = 5;
  flow.dpmax = 300;
  return flow;
}

std::string recorded(const FlowData& flow, const ChartDuty& duty, const tavdhost::ChartForm& form) {
  RecordingPainter painter;
  draw_flow_chart(painter, {15, 166, 104, 78}, flow_curves(flow, nullptr, kRoomDamping), duty, form);
  return painter.recording();
}

TEST(FlowChart, HasSymbolsUnitsOnBothSidesAndTheValuesOfTheDuty) {
  ChartDuty duty;
  duty.qv = 50;
  duty.dp = 60;
  duty.level = 34.2F;
  duty.position = 2.5F;
  const std::string chart = recorded(damper(), duty, charts::english());
  for (const char* text :
       {"\"Flow\"", "\"q\"", "\"v\"", "\"l/s\"", "\"m³/h\"", "\"Δp\"", "\"Pa\"", "\"50 l/s\"", "\"60 Pa\"",
        "\"34.2 dB(A)\"", "\"position 2.5\"", "\"limits\"", "\"duty\""}) {
    EXPECT_THAT(chart, HasSubstr(text));
  }
  EXPECT_EQ(chart, recorded(damper(), duty, charts::english()));
}

TEST(FlowChart, SaysWhatAProductWithoutCurvesIs) {
  FlowData flow = damper();
  flow.kind = 30;
  EXPECT_THAT(recorded(flow, {}, charts::english()), HasSubstr("any pressure within the limits"));
  flow.qvmax = INFINITY;
  EXPECT_THAT(recorded(flow, {}, charts::english()), HasSubstr("no data"));
  flow.qvmax = 0;
  EXPECT_THAT(recorded(flow, {}, charts::english()), HasSubstr("no data"));
}

// Words from the right, and the axes as ever.
TEST(FlowChart, HasWordsFromTheRightButNoMirroredAxes) {
  tavdhost::ChartForm form = charts::english();
  const auto place_of = [&form](const std::string& text) {
    RecordingPainter painter;
    painter.keep_texts();
    draw_flow_chart(painter, {15, 166, 104, 78}, flow_curves(damper(), nullptr, kRoomDamping), {}, form);
    const auto found = std::ranges::find(painter.texts(), text, &tavdhost::PlacedText::text);
    return found->corners[0].x;
  };
  EXPECT_LT(place_of("Flow"), place_of("l/s"));
  EXPECT_LT(place_of("20"), place_of("100"));
  form.right_to_left = true;
  EXPECT_GT(place_of("Flow"), place_of("l/s"));
  EXPECT_LT(place_of("20"), place_of("100"));
}

// Collects what a chart draws.
class Lines : public RecordingPainter {
 public:
  using RecordingPainter::area;
  void line(std::span<const PagePoint> points, const LineStyle& style) override {
    if (style.width == line_of(CurveFamily::kPosition, false).width && points.size() > 1) {
      curves.emplace_back(points.begin(), points.end());
    }
  }
  std::vector<tavdhost::Polyline> curves;
};

TEST(FlowChart, HasNoCurveThroughALabel) {
  Lines painter;
  const tavdhost::ChartLayout layout = draw_flow_chart(
      painter, {15, 166, 104, 78}, flow_curves(damper(), nullptr, kRoomDamping), {}, charts::english());
  ASSERT_EQ(layout.labels.size(), 3U);
  ASSERT_GT(painter.curves.size(), 3U);  // each is cut in two
  for (const tavdhost::LabelLayout& label : layout.labels) {
    for (const tavdhost::Polyline& curve : painter.curves) {
      for (std::size_t i = 1; i < curve.size(); ++i)
        EXPECT_FALSE(crosses(label.cell, curve[i - 1], curve[i]));
    }
  }
}

TEST(SvgPage, KeepsTextsAsTextsWithATitleAndADescription) {
  tavdhost::SvgPainter painter({210, 297, "de", "Blatt <1>", "Volumenstrom & Druck"});
  painter.text("Größe 160", {2.5, true}, {{10, 20}, tavdhost::Along::kRight, tavdhost::Across::kMiddle, 90},
               {});
  painter.embed({10, 10, 50, 50},
                "<?xml version=\"1.0\"?>\n<svg width=\"9\" viewBox=\"0 0 9 9\"><path/></svg>\n");
  const std::string svg = painter.finish();
  EXPECT_THAT(svg, HasSubstr("<title id=\"title\">Blatt &lt;1&gt;</title>"));
  EXPECT_THAT(svg, HasSubstr("<desc id=\"desc\">Volumenstrom &amp; Druck</desc>"));
  EXPECT_THAT(svg, HasSubstr("text-anchor=\"end\" font-weight=\"700\""));
  EXPECT_THAT(svg, HasSubstr(">Größe 160</text>"));
  EXPECT_THAT(svg, HasSubstr("rotate(-90)"));
  EXPECT_THAT(
      svg, HasSubstr("<svg x=\"10\" y=\"10\" width=\"50\" height=\"50\" viewBox=\"0 0 9 9\"><path/></svg>"));
  EXPECT_THAT(svg, Not(HasSubstr("<?xml version=\"1.0\"?>")));
}

}  // namespace
