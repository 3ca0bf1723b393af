// What the throw length diagram draws: its line, the label of the line, and the operating point.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exported/diagram/throwdiagram_fixture.h"

namespace {

using tavdtest::factor_row;
using tavdtest::Record;
using tavdtest::Recording;
using tavdtest::Segment;
using tavdtest::Text;
using tavdtest::throw_row;
using Strings = std::vector<std::string>;

constexpr char kLabelFont[] =
    "select font height=-400 weight=400 escapement=0 charset=1 italic=0 underline=0 strikeout=0 "
    "face=\"Arial\"";

class ThrowLine : public tavdtest::ThrowDiagram {
 protected:
  // The texts behind the chart: the label of the line.
  std::vector<Text> labels() {
    std::vector<Text> some;
    const std::size_t lines = curves("text").size();
    const std::vector<Text> all = recording_->texts();
    some.assign(all.end() - static_cast<std::ptrdiff_t>(lines), all.end());
    return some;
  }
  Strings figures() {
    Strings some;
    for (const std::string& line : curves()) {
      if (line.starts_with("line ") || line.starts_with("ellipse ") || line.starts_with("text ")) {
        some.push_back(line);
      }
    }
    return some;
  }

  Record product_{"TST", "PRODUCT"};
};

TEST_F(ThrowLine, IsDrawnOperationByOperation) {
  L2dg_set_parameter("G", "20");
  terminal_by_value(product_);
  ASSERT_EQ(0, init(db(), product_.rec(), 1000));
  const std::string y1 = std::to_string(decade_y(1.5));
  const int y2 = decade_y(4);
  const std::string end = std::to_string(y2);
  EXPECT_EQ((Strings{
                "select stock ltgray-brush",
                kLabelFont,
                "select pen solid width=10 colour=#000000",
                "select pen solid width=20 colour=#FF0000",
                "move 1553 " + y1,
                "line 1553 " + y1 + " 9000 " + end,
                "align left+bottom",
                "text 9050 " + std::to_string(y2 + 200) + " \"20\"",
                "select stock white-brush",
                "select pen solid width=10 colour=#0000FF",
                "ellipse 8800 " + std::to_string(y2 - 200) + " 9200 " + std::to_string(y2 + 200),
                "ellipse 8900 " + std::to_string(y2 - 100) + " 9100 " + std::to_string(y2 + 100),
                "ellipse 8950 " + std::to_string(y2 - 50) + " 9050 " + std::to_string(y2 + 50),
                "select pen solid width=20 colour=#FF0000",
            }),
            curves());
}

TEST_F(ThrowLine, WithoutAParameterHasNoLabel) {
  ASSERT_EQ(0, init(db(), terminal(product_).rec(), 0));
  L2dg_set_parameter("G", "20");
  EXPECT_TRUE(curves("text").empty());
  EXPECT_TRUE(curves("align").empty());
}

// 0.220205 * qv^0.678072: 3.125 m at 50 l/s and 12.8 m at 400 l/s, in a chart from 2 m to 21 m.
TEST_F(ThrowLine, GoesThroughBothRowsOverTheWholeFlowAxis) {
  product_.header(110, 0, 0, 50, 400, 10, 100).rows<QvL2Point>(1659, {{100, 5}, {200, 8}});
  ASSERT_EQ(0, init(db(), product_.rec(), 0));
  const auto y = [](double L2) { return 8246 - 6684 * std::log10(L2 / 2) / std::log10(10.5); };
  const Segment line = throw_line();
  EXPECT_EQ(1553, line[0]);
  EXPECT_NEAR(9200, line[2], 1);
  EXPECT_NEAR(y(3.125), line[1], 1);
  EXPECT_NEAR(y(12.8), line[3], 1);
}

TEST_F(ThrowLine, OfOneRowIsTheDiagonalOfItsOwnRange) {
  ASSERT_EQ(0, init(db(), terminal(product_).rec(), 0));
  const Segment line = throw_line();
  EXPECT_EQ((Segment{1553, 8045, 9000, 0}), (Segment{line[0], line[1], line[2], 0}));
  EXPECT_NEAR(8045 - 6483 / std::log10(11), line[3], 1);
}

TEST_F(ThrowLine, ThatLeavesTheChartIsCutAndItsLabelStandsOutside) {
  // From 2 m to 200 m in a chart that ends at 10 m.
  limits(product_).rows<ParL2Point>(1660, {throw_row("10", 1000, 9.5F), throw_row("20", 1000, 200),
                                           throw_row("20", 100, 2), throw_row("30", 100, 1.5F)});
  L2dg_set_parameter("G", "20");
  ASSERT_EQ(0, init(db(), product_.rec(), 0));
  const Segment line = throw_line();
  EXPECT_EQ(1553, line[0]);
  EXPECT_EQ(decade_y(2), line[1]);
  EXPECT_NEAR(decade_x(std::sqrt(5) * 100), line[2], 1);
  EXPECT_EQ(1562, line[3]);
  EXPECT_EQ((std::vector<Text>{{9050, decade_y(200) + 200, "20"}}), labels());
}

TEST_F(ThrowLine, AboveTheChartIsNotDrawnButStillLabelled) {
  limits(product_).rows<ParL2Point>(1660, {throw_row("10", 1000, 9.5F), throw_row("20", 100, 500),
                                           throw_row("20", 1000, 5000), throw_row("30", 100, 1.5F)});
  L2dg_set_parameter("G", "20");
  ASSERT_EQ(0, init(db(), product_.rec(), 0));
  EXPECT_EQ((Strings{"text 9050 " + std::to_string(decade_y(5000) + 200) + " \"20\""}), figures());
}

TEST_F(ThrowLine, LabelIsSixCharactersOfTheValueWithoutTrailingBlanks) {
  limits(product_).rows<ParL2Point>(1660, {throw_row("abcdef", 1000, 9.5F), throw_row("left", 100, 1.5F)});
  L2dg_set_parameter("G", "abcdefghi");
  ASSERT_EQ(0, init(db(), product_.rec(), 0));
  EXPECT_EQ("abcdef", labels().at(0).text);
  L2dg_set_parameter("G", "left  ");
  EXPECT_EQ("left", labels().at(0).text);
}

TEST_F(ThrowLine, PercentSignsOfTheLabelAreDrawnAsTheyStand) {
  limits(product_).rows<ParL2Point>(1660, {throw_row("%s%n%d", 1000, 9.5F), throw_row("x", 100, 1.5F)});
  L2dg_set_parameter("G", "%s%n%d");
  ASSERT_EQ(0, init(db(), product_.rec(), 0));
  EXPECT_EQ("%s%n%d", labels().at(0).text);
}

TEST_F(ThrowLine, ValueShowsAtTheNextDrawing) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 0));
  EXPECT_EQ(decade_y(2), throw_line()[1]);
  L2dg_set_parameter("g", "20");
  EXPECT_EQ(decade_y(1.5), throw_line()[1]);
  L2dg_reset_parameters();
  EXPECT_EQ(decade_y(2), throw_line()[1]);
}

TEST_F(ThrowLine, ValueBetweenTwoLiesBetweenTheirLines) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 0));
  L2dg_set_parameter("G", "15");
  const Segment line = throw_line();
  EXPECT_GT(line[1], decade_y(2));
  EXPECT_LT(line[1], decade_y(1.5));
  EXPECT_EQ("15", labels().at(0).text);
}

TEST_F(ThrowLine, ValueThatTheTableCannotPlaceLeavesTheGridAlone) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 300));
  for (const char* value : {"5", "left"}) {
    L2dg_set_parameter("G", value);
    EXPECT_FALSE(draw().segments().empty());
    EXPECT_TRUE(curves().empty()) << value;
  }
}

TEST_F(ThrowLine, FactorOfAChosenValueMovesLineAndMark) {
  terminal(product_).text(1514, "A").rows<ParEntry>(1661, {factor_row("1", 0.5F), factor_row("2", 1)});
  L2dg_set_parameter("A", "2");
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  const Strings whole = figures();
  L2dg_set_parameter("A", "1");
  ASSERT_EQ(0, init(db(), product_.rec(), 300));
  EXPECT_EQ("0.5", y_labels().front());
  // A chart from 0.5 m to 6 m has its plot further right: its labels have two characters more.
  const Segment line = throw_line();
  EXPECT_EQ(8045, line[1]);
  EXPECT_NEAR(8045 - 6483 / std::log10(12), line[3], 1);
  EXPECT_EQ(3U, curves("ellipse").size());
  EXPECT_NE(whole, figures());
}

TEST_F(ThrowLine, RowWithoutFlowFitsNoLineAndTheThrowGivenIsMarked) {
  limits(product_).rows<QvL2Point>(1659, {{1e-8F, 5}});
  ASSERT_EQ(0, init(db(), product_.rec(), 300, 0.7F));
  EXPECT_TRUE(curves("line").empty());
  EXPECT_EQ("select pen solid width=10 colour=#0000FF", curves().front());
  // The throw axis is its smallest, from 0.5 m to 1 m.
  const Segment circle = draw().figures("ellipse").at(0);
  EXPECT_NEAR(8045 - 6483 * std::log10(1.4) / std::log10(2), (circle[1] + circle[3]) / 2.0, 1);
}

TEST_F(ThrowLine, MarkCountsBothEndsOfTheThrow) {
  limits(product_).rows<QvL2Point>(1659, {{1e-8F, 5}});  // no line; a chart from 0.5 m to 1 m
  const struct {
    float L2;
    std::size_t circles;
  } cases[] = {{0.5F, 3}, {1, 3}, {std::nextafter(0.5F, 0.0F), 0}, {std::nextafter(1.0F, 2.0F), 0}};
  for (const auto& c : cases) {
    ASSERT_EQ(0, init(db(), product_.rec(), 300, c.L2));
    EXPECT_EQ(c.circles, curves("ellipse").size()) << c.L2;
    EXPECT_EQ(c.circles == 0 ? 1U : 0U, curves("line").size()) << c.L2;
  }
}

TEST_F(ThrowLine, ThrowGivenDoesNotCountOnceALineIsDrawn) {
  ASSERT_EQ(0, init(db(), terminal(product_).rec(), 300));
  const Strings without = figures();
  ASSERT_EQ(0, init(db(), product_.rec(), 300, 9));
  EXPECT_EQ(without, figures());
}

TEST_F(ThrowLine, MarkIsOnTheLine) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 1000));
  const Segment circle = draw().figures("ellipse").at(0);
  EXPECT_EQ((Segment{8800, decade_y(9.5) - 200, 9200, decade_y(9.5) + 200}), circle);
}

TEST_F(ThrowLine, MarkCountsBothEndsOfTheFlow) {
  terminal_by_value(product_);
  const struct {
    float qv;
    std::size_t circles;
  } cases[] = {{100, 3}, {1000, 3}, {99.9F, 0}, {1000.1F, 0}, {0, 0}, {-300, 0}};
  for (const auto& c : cases) {
    ASSERT_EQ(0, init(db(), product_.rec(), c.qv));
    EXPECT_EQ(c.circles, curves("ellipse").size()) << c.qv;
    EXPECT_EQ(1U, curves("line").size()) << c.qv;
  }
}

TEST_F(ThrowLine, FlowOutsideTheLimitsIsNotMarkedThoughItsThrowIsOnTheChart) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 1050));
  L2dg_set_parameter("G", "20");  // 4.1 m
  EXPECT_EQ(2U, figures().size());
  EXPECT_TRUE(curves("ellipse").empty());
}

TEST_F(ThrowLine, ThrowAboveTheChartIsABlueLineOverItsWholeHeight) {
  // The square of the flow: 64 m at 800 l/s, in a chart from 1 m to 11 m by the first row alone.
  limits(product_).rows<QvL2Point>(1659, {{100, 1}, {200, 4}});
  ASSERT_EQ(0, init(db(), product_.rec(), 800));
  const Strings all = curves();
  ASSERT_LT(4U, all.size());
  const std::string x = std::to_string(decade_x(800));
  EXPECT_EQ((Strings{"select pen solid width=10 colour=#0000FF", "move " + x + " 8045",
                     "line " + x + " 8045 " + x + " 1562", "select pen solid width=20 colour=#FF0000"}),
            Strings(all.end() - 4, all.end()));
  EXPECT_TRUE(curves("ellipse").empty());
}

TEST_F(ThrowLine, ThrowBelowTheChartIsThatLineToo) {
  // Falls with the square of the flow: 0.06 m at 400 l/s.
  limits(product_).rows<QvL2Point>(1659, {{100, 1}, {200, 0.25F}});
  ASSERT_EQ(0, init(db(), product_.rec(), 400));
  const std::string x = std::to_string(decade_x(400));
  EXPECT_EQ("line " + x + " 8045 " + x + " 1562", curves("line").back());
}

TEST_F(ThrowLine, DrawingWithoutToolsUsesWhatIsSelected) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 300));
  L2dg_set_parameter("G", "20");
  const Strings with_tools = figures();
  recording_->clear();
  const Recording bare;
  L2dg_draw_diagram(bare.surface());
  Strings all = bare.lines();
  const auto chart_end = std::find(all.begin(), all.end(), "select stock black-pen");
  ASSERT_NE(all.end(), chart_end);
  all.erase(all.begin(), chart_end + 1);
  Strings drawn;
  for (const std::string& line : all) {
    EXPECT_FALSE(line.starts_with("select pen") || line.starts_with("select font")) << line;
    if (line.starts_with("line ") || line.starts_with("ellipse ") || line.starts_with("text ")) {
      drawn.push_back(line);
    }
  }
  EXPECT_EQ(with_tools, drawn);
}

TEST_F(ThrowLine, MarkAndLabelFollowTheSizeOfTheDrawing) {
  L2dg_set_parameter("G", "20");
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 1000));
  L2dg_resize(0, 0, 5030, 4000);
  Recording& drawn = draw();
  const std::vector<Segment> circles = drawn.figures("ellipse");
  ASSERT_EQ(3U, circles.size());
  EXPECT_EQ(200, circles[0][2] - circles[0][0]);
  EXPECT_EQ(100, circles[1][2] - circles[1][0]);
  EXPECT_EQ(50, circles[2][2] - circles[2][0]);
  const Segment line = throw_line();
  EXPECT_EQ((std::vector<Text>{{line[2] + 25, line[3] + 80, "20"}}), labels());
}

TEST_F(ThrowLine, ResizingBackGivesTheFormerDrawing) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 1000));
  const std::string before = draw().text();
  L2dg_resize(100, 200, 3000, 4000);
  EXPECT_NE(before, draw().text());
  L2dg_resize_default();
  EXPECT_EQ(before, draw().text());
}

TEST_F(ThrowLine, RectanglesUnderFiftyUnitsOrReversedLeaveTheLayout) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 1000));
  const Strings lines = draw().lines("line");
  const int rectangles[][4] = {{0, 0, 48, 9999}, {0, 0, 9999, 48}, {9999, 0, 0, 9999}, {9999, 9999, 0, 0}};
  for (const auto& r : rectangles) {
    L2dg_resize(r[0], r[1], r[2], r[3]);
    EXPECT_EQ(lines, draw().lines("line")) << r[0] << ' ' << r[1] << ' ' << r[2] << ' ' << r[3];
  }
  L2dg_resize(0, 0, 49, 49);
  EXPECT_NE(lines, draw().lines("line"));
}

TEST_F(ThrowLine, ResizingWithoutADiagramChangesNothing) {
  L2dg_resize(0, 0, 100, 100);
  L2dg_resize_default();
  L2dg_resize(0, 0, 100, 100);
  ASSERT_EQ(0, L2dg_initdiagramdata(terminal_by_value(product_).rec()));
  EXPECT_EQ("select pen solid width=20 colour=#FF0000", curves("select").at(3));
}

TEST_F(ThrowLine, NullContextIsHarmless) {
  ASSERT_EQ(0, init(db(), terminal_by_value(product_).rec(), 300));
  const int objects = tgui_object_count();
  L2dg_create_drawing_tools();
  L2dg_draw_diagram(nullptr);
  L2dg_destroy_drawing_tools();
  EXPECT_EQ(objects, tgui_object_count());
}

}  // namespace
