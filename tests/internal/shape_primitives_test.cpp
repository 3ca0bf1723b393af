// What sketches are drawn with.
#include "shape/primitives.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "shape/processpicture.h"
#include "support/recording.h"
#include "tavd/tavdshapepic.h"

namespace tavd {
namespace {

using tavdtest::Recording;
using tavdtest::Segment;
using tavdtest::Text;
using Strings = std::vector<std::string>;
using Segments = std::vector<Segment>;

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

class ShapePrimitives : public ::testing::Test {
 protected:
  // Origin 0, 0 and scale 1, so that drawing units are device units.
  void SetUp() override {
    tavdshapepic_init(tgui_main_module(), 0, nullptr, 0);
    shp.pic_origin_y = 0;
    tavdshapepic_create_drawing_tools();
  }
  void TearDown() override {
    tavdshapepic_destroy_drawing_tools();
    tavdshapepic_release();
  }

  ShapeCanvas canvas() { return {shp, recording_.surface()}; }
  Strings lines(const char* word) { return recording_.lines(word); }

  Recording recording_;
};

// ---- Mapping ----

TEST_F(ShapePrimitives, OriginOfThePlaneIsThatOfTheRectangle) {
  tavdshapepic_resize(37, 100, 537, 940);
  EXPECT_EQ(37, pic_x(canvas(), 0));
  EXPECT_EQ(142, pic_y(canvas(), 0));
}

TEST_F(ShapePrimitives, WithScaleOneUnitsAreDeviceUnits) {
  shp.pic_left = 37;
  EXPECT_EQ(37 + 250, pic_x(canvas(), 250));
  EXPECT_EQ(37 - 250, pic_x(canvas(), -250));
  EXPECT_EQ(798, pic_y(canvas(), 798));
}

TEST_F(ShapePrimitives, HalfAUnitIsCutAfterATenthIsAdded) {
  shp.pic_left = 37;
  shp.pic_xscale = 0.5;
  EXPECT_EQ(37 + 1, pic_x(canvas(), 3));   // 1.6
  EXPECT_EQ(37 - 2, pic_x(canvas(), -3));  // -1.4 goes down
  shp.pic_yscale = 0.95;
  EXPECT_EQ(1, pic_y(canvas(), 1));  // 1.05
  EXPECT_EQ(2, pic_y(canvas(), 2));  // 2.0
}

TEST_F(ShapePrimitives, ThirdsReachTheirWholeUnits) {
  tavdshapepic_resize(0, 0, 166, 840);  // 0.332
  EXPECT_EQ(166, pic_x(canvas(), 500));
  for (int third = 0; third <= 300; ++third) {
    shp.pic_xscale = 1.0 / 3.0;
    ASSERT_EQ(third, pic_x(canvas(), 3 * third));
  }
}

TEST_F(ShapePrimitives, ScaleZeroMapsAllToTheOrigin) {
  shp.pic_xscale = 0;
  shp.pic_left = -5;
  for (const int x : {0, 1, -1, kMost, kLeast}) {
    EXPECT_EQ(-5, pic_x(canvas(), x));
  }
}

TEST_F(ShapePrimitives, CoordinatesBeyondAnIntegerAreHeldAtItsEnd) {
  shp.pic_xscale = 1e9;
  EXPECT_EQ(kMost, pic_x(canvas(), 1000));
  EXPECT_EQ(kLeast, pic_x(canvas(), -1000));
  shp.pic_left = kMost;
  EXPECT_EQ(kMost, pic_x(canvas(), 1));
  EXPECT_EQ(-1, pic_x(canvas(), -1000));  // the largest and the least
  shp.pic_xscale = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(kMost, pic_x(canvas(), 7));
}

// ---- Figures ----

TEST_F(ShapePrimitives, RectangleIsAClosedStroke) {
  pic_rect(canvas(), 10, 20, 30, 50);
  EXPECT_EQ((Segments{{10, 20, 30, 20}, {30, 20, 30, 50}, {30, 50, 10, 50}, {10, 50, 10, 20}}),
            recording_.segments());
  EXPECT_EQ(Strings{"move 10 20"}, lines("move"));
}

TEST_F(ShapePrimitives, CircleFollowsBothScales) {
  pic_circle(canvas(), 100, 200, 30);
  shp.pic_xscale = 2;
  shp.pic_yscale = 0.5;
  pic_circle(canvas(), 100, 200, 30);
  EXPECT_EQ((Segments{{70, 170, 130, 230}, {140, 85, 260, 115}}), recording_.figures("ellipse"));
}

TEST_F(ShapePrimitives, CircleWithoutARadiusIsAPoint) {
  pic_circle(canvas(), 100, 200, 0);
  EXPECT_EQ((Segments{{100, 200, 100, 200}}), recording_.figures("ellipse"));
}

TEST_F(ShapePrimitives, ArcKeepsTheOrderOfItsPoints) {
  shp.pic_left = 1000;
  pic_arc(canvas(), 1, 2, 3, 4, 5, 6, 7, 8);
  EXPECT_EQ(Strings{"arc 1001 2 1003 4 1005 6 1007 8"}, lines("arc"));
}

TEST_F(ShapePrimitives, TextKeepsTheAlignment) {
  pic_text(canvas(), 10, 20, "100%");
  EXPECT_EQ((std::vector<Text>{{10, 20, "100%"}}), recording_.texts());
  EXPECT_TRUE(lines("align").empty());
}

TEST_F(ShapePrimitives, FiguresOfAnyCoordinatesOnNoContextAreHarmless) {
  for (const int c : {0, kMost, kLeast}) {
    for (const ShapeCanvas& target : {canvas(), ShapeCanvas{shp, nullptr}}) {
      pic_line(target, c, c, -1, c);
      pic_rect(target, c, c, 1, 1);
      pic_circle(target, c, c, c);
      pic_arc(target, c, c, c, c, c, c, c, c);
      pic_arrow(target, c, c, 3);
      pic_dim(target, c, c, -(c / 2), c, "");
      pic_dim_value(target, c, c, c, c, c);
      pic_dim_number(target, c, c, c, c, c);
      pic_centre(target, c, c);
    }
  }
  Strings written;
  for (const Text& text : recording_.texts()) {
    if (!text.text.empty()) {
      written.push_back(text.text);
    }
  }
  EXPECT_EQ((Strings{"##", "0", "##", "2147483647", "##", "-2147483648"}), written);
  tgui_select(recording_.surface(), tgui_stock_object(TGUI_BLACK_PEN));
}

// ---- Arrows ----

TEST_F(ShapePrimitives, ArrowPointsAsTheClockDoes) {
  const struct {
    int clock;
    Segments head;
  } cases[] = {{3, {{88, 206, 100, 200}, {100, 200, 88, 194}}},
               {6, {{94, 188, 100, 200}, {100, 200, 106, 188}}},
               {9, {{112, 206, 100, 200}, {100, 200, 112, 194}}},
               {12, {{94, 212, 100, 200}, {100, 200, 106, 212}}}};
  for (const auto& c : cases) {
    recording_.clear();
    pic_arrow(canvas(), 100, 200, c.clock);
    EXPECT_EQ(c.head, recording_.segments()) << c.clock;
    EXPECT_EQ(1U, lines("move").size()) << c.clock;  // one stroke
  }
}

TEST_F(ShapePrimitives, ArrowOfAnyOtherHourDrawsNothing) {
  for (const int clock : {0, 1, 2, 4, 5, 7, 8, 10, 11, 13, 15, -3, kMost, kLeast}) {
    pic_arrow(canvas(), 100, 200, clock);
  }
  EXPECT_EQ("", recording_.text());
}

// ---- Dimension lines ----

// The tip of each arrow head, and the barb that it starts from.
struct Heads {
  Segment first, second;
  bool operator==(const Heads&) const = default;
};

class ShapeDimension : public ShapePrimitives {
 protected:
  bool is_across(int x1, int y1, int x2, int y2) {
    recording_.clear();
    pic_dim(canvas(), x1, y1, x2, y2, "t");
    const Strings align = lines("align");
    EXPECT_EQ(1U, align.size());
    const bool across = align.front() == "align center+bottom";
    EXPECT_TRUE(across || align.front() == "align left+bottom") << align.front();
    return across;
  }
  Heads heads() {
    const Segments all = recording_.segments();
    EXPECT_EQ(5U, all.size());  // the line, and two of each head
    return all.size() == 5 ? Heads{all[1], all[3]} : Heads{};
  }
};

TEST_F(ShapeDimension, AcrossHasItsTextOnTheLine) {
  EXPECT_TRUE(is_across(100, 50, 301, 50));
  EXPECT_EQ((Segment{100, 50, 301, 50}), recording_.segments().front());
  EXPECT_EQ((Heads{{112, 56, 100, 50}, {289, 56, 301, 50}}), heads());
  EXPECT_EQ((std::vector<Text>{{200, 50, "t"}}), recording_.texts());
}

TEST_F(ShapeDimension, DownHasItsTextToTheRightPastTheMiddle) {
  EXPECT_FALSE(is_across(100, 50, 100, 251));
  EXPECT_EQ((Segment{100, 50, 100, 251}), recording_.segments().front());
  EXPECT_EQ((Heads{{94, 62, 100, 50}, {94, 239, 100, 251}}), heads());
  EXPECT_EQ((std::vector<Text>{{105, 168, "t"}}), recording_.texts());
}

TEST_F(ShapeDimension, OfNoLengthIsDown) {
  EXPECT_FALSE(is_across(100, 50, 100, 50));
}

TEST_F(ShapeDimension, AsFarAcrossAsDownIsDown) {
  EXPECT_FALSE(is_across(100, 50, 120, 70));
  EXPECT_FALSE(is_across(120, 50, 100, 70));
  EXPECT_TRUE(is_across(100, 50, 121, 70));
  EXPECT_TRUE(is_across(121, 70, 100, 50));
}

TEST_F(ShapeDimension, GivenBackwardItsHeadsStandInward) {
  EXPECT_TRUE(is_across(300, 50, 100, 50));
  EXPECT_EQ((Heads{{312, 56, 300, 50}, {88, 56, 100, 50}}), heads());
}

TEST_F(ShapeDimension, SlopingHasItsTextAtTheHeightOfItsFirstEnd) {
  EXPECT_TRUE(is_across(100, 50, 300, 90));
  EXPECT_EQ((std::vector<Text>{{200, 50, "t"}}), recording_.texts());
}

TEST_F(ShapeDimension, ThinPenStaysSelected) {
  is_across(0, 0, 100, 0);
  tgui_state state{};
  tgui_surface_state(recording_.surface(), &state);
  EXPECT_EQ(shp.pen_thin, state.pen);
  tgui_select(recording_.surface(), tgui_stock_object(TGUI_BLACK_PEN));
}

TEST_F(ShapeDimension, LongerThanAnIntegerIsTold) {
  EXPECT_TRUE(is_across(kLeast, 0, kMost, 0));
  EXPECT_FALSE(is_across(kLeast, kLeast, kMost, kMost));
}

TEST_F(ShapeDimension, NumberIsWrittenWhole) {
  for (const int n : {0, 65534, -65536, kMost, kLeast}) {
    recording_.clear();
    pic_dim_number(canvas(), 0, 0, 100, 0, n);
    EXPECT_EQ(std::to_string(n), recording_.texts().at(0).text);
  }
}

// ---- Values ----

std::string value_text(int i) {
  DimensionText text;
  std::memset(text, 'x', sizeof text);
  pic_value_text(shp, text, i);
  return text;
}

TEST_F(ShapePrimitives, ValueIsWrittenAsItIs) {
  shp.nvalues = 5;
  const std::int16_t values[] = {101, 0, -1, 32767, -32768};
  std::memcpy(shp.values, values, sizeof values);
  EXPECT_EQ("101", value_text(0));
  EXPECT_EQ("0", value_text(1));
  EXPECT_EQ("-1", value_text(2));
  EXPECT_EQ("32767", value_text(3));
  EXPECT_EQ("-32768", value_text(4));
}

TEST_F(ShapePrimitives, ValueThatTheProductDoesNotHaveIsTwoSigns) {
  shp.nvalues = 5;
  for (const int i : {5, 6, 29, 30, 31, kMost, -1, kLeast}) {
    EXPECT_EQ("##", value_text(i)) << i;
  }
  shp.nvalues = 0;
  EXPECT_EQ("##", value_text(0));
  shp.nvalues = -3;
  EXPECT_EQ("##", value_text(0));
}

TEST_F(ShapePrimitives, ValueBehindTheLastIsTwoSignsWhateverTheCount) {
  shp.nvalues = 1000;
  shp.values[29] = 7;
  EXPECT_EQ("7", value_text(29));
  EXPECT_EQ("##", value_text(30));
  EXPECT_EQ("##", value_text(999));
}

TEST_F(ShapePrimitives, DimensionOfTheFirstMissingValueSaysTwoSigns) {
  shp.nvalues = 3;
  shp.values[2] = 250;
  pic_dim_value(canvas(), 0, 0, 100, 0, 2);
  pic_dim_value(canvas(), 0, 0, 100, 0, 3);
  EXPECT_EQ((std::vector<Text>{{50, 0, "250"}, {50, 0, "##"}}), recording_.texts());
}

// ---- Centre marks ----

TEST_F(ShapePrimitives, CentreMarkIsACircleOfTenWithTwoDiagonalsOfSix) {
  pic_centre(canvas(), 100, 200);
  EXPECT_EQ((Segments{{90, 190, 110, 210}}), recording_.figures("ellipse"));
  EXPECT_EQ((Segments{{94, 194, 106, 206}, {94, 206, 106, 194}}), recording_.segments());
  tgui_state state{};
  tgui_surface_state(recording_.surface(), &state);
  EXPECT_EQ(shp.pen_thin, state.pen);
  tgui_select(recording_.surface(), tgui_stock_object(TGUI_BLACK_PEN));
}

TEST_F(ShapePrimitives, CentreMarkGrowsWithTheWidthAndAgainWithTheScale) {
  shp.pic_right = 1079;  // 21 and 13 units, at a scale of 2
  shp.pic_xscale = 2;
  shp.pic_yscale = 2;
  pic_centre(canvas(), 100, 200);
  EXPECT_EQ((Segments{{200 - 42, 400 - 42, 200 + 42, 400 + 42}}), recording_.figures("ellipse"));
  EXPECT_EQ((Segments{{200 - 26, 400 - 26, 200 + 26, 400 + 26}, {200 - 26, 400 + 26, 200 + 26, 400 - 26}}),
            recording_.segments());
  tgui_select(recording_.surface(), tgui_stock_object(TGUI_BLACK_PEN));
}

TEST_F(ShapePrimitives, CentreMarkOfANarrowPictureIsAPoint) {
  shp.pic_right = 49;
  pic_centre(canvas(), 100, 200);
  EXPECT_EQ((Segments{{100, 200, 100, 200}}), recording_.figures("ellipse"));
  EXPECT_EQ((Segments{{100, 200, 100, 200}, {100, 200, 100, 200}}), recording_.segments());
  tgui_select(recording_.surface(), tgui_stock_object(TGUI_BLACK_PEN));
}

}  // namespace
}  // namespace tavd
