// Shapes that draw what their values decide.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "exported/shape/picture_fixture.h"

namespace {

using tavdtest::Drawing;
using tavdtest::Figure;
using tavdtest::Position;
using tavdtest::Stroke;
using Strings = std::vector<std::string>;
using Words = std::vector<std::int16_t>;

constexpr int kDown = 40;  // device y of drawing unit 0 in the default picture

class ShapeVariant : public tavdtest::ShapePicture {
 protected:
  // A drawing of `count` words: the number, then 501, 502, ..., but for those that are told.
  Drawing drawing_of(int number, int count, const std::vector<std::pair<int, int>>& told = {}, int b = 0,
                     int h = 0) {
    Words words;
    for (int i = 0; i < count; ++i) {
      words.push_back(static_cast<std::int16_t>(500 + i));
    }
    words[0] = static_cast<std::int16_t>(number);
    for (const auto& [i, value] : told) {
      words[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(value);
    }
    show(words, static_cast<std::int16_t>(b), static_cast<std::int16_t>(h));
    return drawing();
  }
};

bool has_line(const Drawing& drawing, Position from, Position to) {
  return std::ranges::any_of(drawing.strokes, [&](const Stroke& stroke) {
    return stroke.points == std::vector{Position{from.x, from.y + kDown}, Position{to.x, to.y + kDown}};
  });
}

bool has_dimension(const Drawing& drawing, Position from, Position to, const std::string& text) {
  return std::ranges::any_of(drawing.dimensions, [&](const auto& each) {
    return each.from == Position{from.x, from.y + kDown} && each.to == Position{to.x, to.y + kDown} &&
           each.label.text == text;
  });
}

bool contains(const Strings& all, const std::string& text) {
  return std::ranges::find(all, text) != all.end();
}

// ---- 120 ----

TEST_F(ShapeVariant, Shape120WithFiveValuesSaysTheHeightAlone) {
  const Drawing drawing = drawing_of(120, 5);
  EXPECT_TRUE(has_dimension(drawing, {410, 40}, {410, 370}, "502"));
  EXPECT_FALSE(has_line(drawing, {70, 329}, {350, 329}));
}

TEST_F(ShapeVariant, Shape120WithSixValuesSaysTheSumAndParts) {
  const Drawing drawing = drawing_of(120, 6);
  EXPECT_TRUE(has_dimension(drawing, {410, 40}, {410, 370}, "1007"));
  EXPECT_TRUE(has_line(drawing, {70, 329}, {350, 329}));
}

TEST_F(ShapeVariant, SumBeyondSixteenBitsIsSaidWhole) {
  EXPECT_TRUE(contains(drawing_of(120, 6, {{2, 32767}, {5, 32767}}).said(), "65534"));
  EXPECT_TRUE(contains(drawing_of(120, 6, {{2, -32768}, {5, -32768}}).said(), "-65536"));
}

// ---- 109 ----

TEST_F(ShapeVariant, Shape109SaysWidthAndHeightOfItsConnection) {
  EXPECT_TRUE(contains(drawing_of(109, 3, {}, 400, 200).said(), "400x200"));
  EXPECT_TRUE(contains(drawing_of(109, 3, {}, 32767, -32768).said(), "32767x-32768"));
  EXPECT_EQ((Strings{"501", "502"}), drawing_of(109, 3).said());
}

// ---- 107 ----

TEST_F(ShapeVariant, Shape107WithSixValuesGoesByItsFirst) {
  for (const int kind : {1, 2, 3}) {
    const Drawing drawing = drawing_of(107, 6, {{1, kind}}, 125);
    EXPECT_EQ((Strings{"502", "503", "504", "505"}), drawing.said()) << kind;
    EXPECT_EQ(kind == 1 ? 0U : 1U, drawing.circles.size()) << kind;
    EXPECT_EQ(2U, drawing.centres.size()) << kind;
  }
  for (const int kind : {0, 4, -1, 32767}) {
    const Drawing drawing = drawing_of(107, 6, {{1, kind}});
    EXPECT_TRUE(drawing.dimensions.empty()) << kind;
    EXPECT_TRUE(drawing.strokes.empty()) << kind;
  }
}

TEST_F(ShapeVariant, Shape107WithSevenValuesIsDrawnInFull) {
  const Drawing drawing = drawing_of(107, 7, {{1, 2}});
  EXPECT_EQ((Strings{"502", "503", "504", "505", "506", "##", "##", "##", "##"}), drawing.said());
}

TEST_F(ShapeVariant, Shape107SaysTheSixthValueWhereTheSeventhIsBelowOne) {
  for (const int seventh : {0, -5}) {
    const Strings said = drawing_of(107, 12, {{1, 1}, {7, seventh}}).said();
    EXPECT_EQ((Strings{"502", "503", "504", "505", "506", "508", "509", "510", "511"}), said) << seventh;
  }
  const Strings said = drawing_of(107, 12, {{1, 1}, {7, 1}}).said();
  EXPECT_EQ((Strings{"502", "503", "504", "505", "1", "508", "509", "510", "511"}), said);
}

TEST_F(ShapeVariant, Shape107SaysMoreFrom14And16Values) {
  EXPECT_EQ(9U, drawing_of(107, 13, {{1, 1}}).said().size());
  EXPECT_EQ("513", drawing_of(107, 14, {{1, 1}}).said().back());
  EXPECT_EQ("513", drawing_of(107, 15, {{1, 1}}).said().back());
  EXPECT_EQ("514", drawing_of(107, 16, {{1, 1}}).said().back());
  EXPECT_EQ("515", drawing_of(107, 16, {{1, 2}}).said().back());
  EXPECT_EQ("##", drawing_of(107, 16, {{1, 3}}).said().back());
  EXPECT_EQ("516", drawing_of(107, 17, {{1, 3}}).said().back());
}

TEST_F(ShapeVariant, Shape107ArrangesItsPipesInBothViews) {
  const auto strokes = [this](int arrangement) {
    std::vector<std::vector<Position>> points;
    for (const Stroke& stroke : drawing_of(107, 17, {{1, 1}, {12, arrangement}}).strokes) {
      points.push_back(stroke.points);
    }
    return points;
  };
  const auto different = [](const auto& a, const auto& b, int from_y, int to_y) {
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (a[i] != b[i] && a[i][0].y >= from_y && a[i][0].y < to_y) {
        return true;
      }
    }
    return false;
  };
  constexpr int kBetweenViews = 400;
  const auto zero = strokes(0);
  const auto one = strokes(1);
  const auto two = strokes(2);
  EXPECT_FALSE(different(zero, one, 0, kBetweenViews));
  EXPECT_TRUE(different(zero, one, kBetweenViews, 1000));
  EXPECT_TRUE(different(zero, two, 0, kBetweenViews));
  EXPECT_FALSE(different(zero, two, kBetweenViews, 1000));
}

TEST_F(ShapeVariant, Shape107InFullHasACircleForRoundConnections) {
  for (const int kind : {1, 2, 3}) {
    const Drawing drawing = drawing_of(107, 17, {{1, kind}});
    EXPECT_EQ(kind == 1 ? 0U : 1U, drawing.circles.size()) << kind;
    EXPECT_EQ(2U, drawing.centres.size()) << kind;
  }
}

// ---- 141 and 151 ----

TEST_F(ShapeVariant, Shape141AloneHasTheDiagonal) {
  EXPECT_TRUE(has_line(drawing_of(141, 4), {120, 730}, {280, 470}));
  EXPECT_FALSE(has_line(drawing_of(151, 4), {120, 730}, {280, 470}));
}

TEST_F(ShapeVariant, Shapes141And151HaveTheirRectangles) {
  for (const int number : {141, 151}) {
    std::vector<Stroke> rectangles;
    for (const Stroke& stroke : drawing_of(number, 4).strokes) {
      if (stroke.points.size() == 5) {
        rectangles.push_back(stroke);
      }
    }
    ASSERT_EQ(2U, rectangles.size());
    EXPECT_EQ((Position{100, 200 + kDown}), rectangles[0].points[0]);
    EXPECT_EQ((Position{300, 400 + kDown}), rectangles[0].points[2]);
    EXPECT_EQ((Position{100, 450 + kDown}), rectangles[1].points[0]);
    EXPECT_EQ((Position{300, 750 + kDown}), rectangles[1].points[2]);
  }
}

// ---- 160 ----

TEST_F(ShapeVariant, Shape160SaysValuesLabelsHalfAndSize) {
  EXPECT_EQ((Strings{"501", "502", "503", "502", "505", "506", "251", "125"}),
            drawing_of(160, 7, {}, 125).said());
  EXPECT_EQ((Strings{"501", "502", "503", "502", "##", "##", "251"}), drawing_of(160, 4).said());
}

TEST_F(ShapeVariant, Shape160GoesByItsFourthValue) {
  const auto strokes = [this](int count, int fourth) {
    const Drawing drawing = count > 4 ? drawing_of(160, count, {{4, fourth}}) : drawing_of(160, count);
    return std::pair(drawing.circles.size(), drawing.strokes.size());
  };
  const auto first = strokes(7, 1);
  EXPECT_EQ(0U, first.first);
  EXPECT_EQ(1U, strokes(7, 2).first);
  EXPECT_EQ(1U, strokes(7, 3).first);
  for (const int other : {0, 4, 9, -1, 32767, -32768}) {
    EXPECT_EQ(first, strokes(7, other)) << other;
  }
  EXPECT_EQ(first, strokes(4, 0));
  EXPECT_NE(drawing_of(160, 7, {{4, 2}}).circles[0].left, drawing_of(160, 7, {{4, 3}}).circles[0].left);
}

// A stored shape that ends inside its fifth word: four values, and a byte that counts as none.
TEST_F(ShapeVariant, Shape160WithFourValuesAndAHalfHasItsDuctBehind) {
  const std::int16_t words[] = {160, 501, 502, 503, 2};
  tavdtest::Record product("TST", "PRODUCT");
  product.bytes(1110, words, sizeof words - 1).text(1501, "CODE");
  tavdshapepic_initdata(product.rec());
  const Drawing halved = drawing();
  EXPECT_EQ((Strings{"501", "502", "503", "502", "##", "##", "251"}), halved.said());
  EXPECT_TRUE(halved.circles.empty());
  EXPECT_EQ(drawing_of(160, 4).strokes.size(), halved.strokes.size());
}

// ---- 163 and 165: to scale ----

// Sizes that give whole drawing units.
const std::vector<std::pair<int, int>> k163 = {{1, 2000}, {2, 120}, {3, 150}, {4, 60}, {5, 210}, {6, 30}};

TEST_F(ShapeVariant, Shape163HasADrawingUnitFor1500Micrometres) {
  auto told = k163;
  told.emplace_back(7, 105);
  const Drawing drawing = drawing_of(163, 8, told, 90);
  EXPECT_EQ((Strings{"2000", "120", "150", "210", "90"}), drawing.said());
  // The circle of 60 across, 70 below the top of the view, which is at y 150.
  ASSERT_EQ(1U, drawing.circles.size());
  const Figure& circle = drawing.circles[0];
  EXPECT_EQ(220, circle.left);
  EXPECT_EQ(280, circle.right);
  EXPECT_EQ(150 + 70 - 30 + kDown, circle.top);
  // The box, 100 wide and 140 high.
  EXPECT_EQ((Position{300, 150 + kDown}), drawing.strokes[0].points[1]);
  EXPECT_EQ((Position{200, 290 + kDown}), drawing.strokes[0].points[3]);
}

TEST_F(ShapeVariant, Shape163HasASecondViewThatIsWiderThanThePicture) {
  const Drawing drawing = drawing_of(163, 8, k163, 90);
  const auto view = std::ranges::find_if(drawing.strokes, [](const Stroke& stroke) {
    return stroke.points.size() == 6 && stroke.points[3].x == -150 && stroke.points[2].x == 650;
  });
  ASSERT_NE(drawing.strokes.end(), view);
  EXPECT_EQ(150 + 200 + 140 + kDown, view->points[0].y);
}

TEST_F(ShapeVariant, Shape163WithoutASeventhValueHasNoCircle) {
  for (const int seventh : {0, -1}) {
    auto told = k163;
    told.emplace_back(7, seventh);
    EXPECT_TRUE(drawing_of(163, 8, told, 90).circles.empty());
  }
  EXPECT_TRUE(drawing_of(163, 7, k163, 90).circles.empty());
}

TEST_F(ShapeVariant, Shape163TruncatesToWholeUnits) {
  auto told = k163;
  told[2] = {3, 149};  // 99.3
  const Drawing drawing = drawing_of(163, 8, told, 90);
  const auto& box = drawing.strokes[0].points;
  EXPECT_EQ(99, box[1].x - box[3].x);
}

TEST_F(ShapeVariant, Shape165PlacesItsCircleBelowTheTop) {
  const auto circle = [this](int fifth, int b) { return drawing_of(165, 6, {{5, fifth}}, b).circles; };
  const auto middle_y = [](const Figure& f) { return (f.top + f.bottom) / 2 - kDown; };
  ASSERT_EQ(1U, circle(0, 100).size());
  EXPECT_EQ(200 + 40, middle_y(circle(0, 100)[0]));
  EXPECT_EQ(200 + 80, middle_y(circle(120, 100)[0]));
  EXPECT_EQ(50, circle(0, 100)[0].right - circle(0, 100)[0].left);  // half of half of 100 on each side
  EXPECT_EQ(250, (circle(0, 100)[0].right + circle(0, 100)[0].left) / 2);
  EXPECT_TRUE(circle(0, 0).empty());
  EXPECT_TRUE(circle(0, -100).empty());
}

TEST_F(ShapeVariant, Shape165SaysItsValuesAndHasTwoArcs) {
  const Drawing drawing = drawing_of(165, 6, {{2, 300}, {3, 240}}, 100);
  EXPECT_EQ((Strings{"501", "300", "240", "100"}), drawing.said());
  EXPECT_EQ(2U, drawing.arcs.size());
  EXPECT_TRUE(drawing.centres.empty());
  EXPECT_EQ(200, drawing.strokes[0].points[1].x - drawing.strokes[0].points[3].x);
  EXPECT_EQ(160, drawing.strokes[0].points[2].y - drawing.strokes[0].points[1].y);
}

// ---- 164 ----

TEST_F(ShapeVariant, Shape164SaysDifferenceOnlyForASeventhValue) {
  EXPECT_EQ((Strings{"501", "502", "503", "506", "-1", "1014", "125"}), drawing_of(164, 9, {}, 125).said());
  EXPECT_EQ((Strings{"501", "502", "503", "506", "1014"}), drawing_of(164, 9, {{7, 0}}).said());
  EXPECT_EQ((Strings{"501", "502", "503", "506", "1014"}), drawing_of(164, 9, {{7, -3}}).said());
}

TEST_F(ShapeVariant, Shape164IsNarrowWhereTheThirdValueIsBelowTheSecond) {
  const auto length_of_third = [this](int third) {
    const auto dimension = drawing_of(164, 9, {{2, 500}, {3, third}}).dimensions[2];
    return dimension.to.y - dimension.from.y;
  };
  EXPECT_EQ(170, length_of_third(499));
  EXPECT_LT(170, length_of_third(500));
  EXPECT_EQ(length_of_third(500), length_of_third(600));
  EXPECT_EQ(1U, drawing_of(164, 9).circles.size());
}

// ---- 180 to 183 ----

TEST_F(ShapeVariant, Shapes180And182SayASizeBesideTheBody) {
  EXPECT_EQ((Strings{"501", "502", "503"}), drawing_of(180, 4).said());
  EXPECT_EQ((Strings{"501", "502"}), drawing_of(181, 4).said());
  EXPECT_EQ((Strings{"501", "502", "502"}), drawing_of(182, 3).said());
  EXPECT_EQ((Strings{"501", "502"}), drawing_of(183, 3).said());
  EXPECT_TRUE(has_dimension(drawing_of(180, 4), {411, 300}, {411, 600}, "503"));
  EXPECT_TRUE(has_dimension(drawing_of(182, 3), {411, 400}, {411, 600}, "502"));
}

TEST_F(ShapeVariant, Shapes180To183HaveTwoRectanglesAndFourCentres) {
  for (const int number : {180, 181, 182, 183}) {
    const Drawing drawing = drawing_of(number, 3);
    EXPECT_EQ(2, drawing.rectangles()) << number;
    EXPECT_EQ(4U, drawing.centres.size()) << number;
    const int top = (number < 182 ? 300 : 400) + kDown;
    EXPECT_TRUE(std::ranges::any_of(drawing.strokes, [top](const Stroke& s) {
      return s.points.size() == 5 && s.points[0] == Position{50, top} &&
             s.points[2] == Position{350, 600 + kDown};
    })) << number;
  }
}

TEST_F(ShapeVariant, Shapes181And183HaveStubsSixtyAboutTheirAxis) {
  for (const auto& [number, axis] : {std::pair{181, 450}, std::pair{183, 500}}) {
    const Drawing drawing = drawing_of(number, 3);
    EXPECT_TRUE(std::ranges::any_of(drawing.strokes, [axis = axis](const Stroke& s) {
      return s.points.size() == 4 && s.points[0] == Position{50, axis - 60 + kDown} &&
             s.points[3] == Position{50, axis + 60 + kDown};
    })) << number;
  }
  for (const int number : {180, 182}) {
    const Drawing drawing = drawing_of(number, 3);
    EXPECT_TRUE(std::ranges::none_of(drawing.strokes, [](const Stroke& s) { return s.points.size() == 4; }));
  }
}

TEST_F(ShapeVariant, Shapes180To183ShowWhatIsInside) {
  for (const int number : {180, 181, 182, 183}) {
    const int index = number < 182 ? 4 : 3;
    const int axis = (number < 182 ? 450 : 500) + kDown;
    const std::size_t empty = drawing_of(number, 6, {{index, 0}}).strokes.size();
    const auto more = [&](int detail) {
      return drawing_of(number, 6, {{index, detail}}).strokes.size() - empty;
    };
    for (const int detail : {1, 2, 3}) {
      const Drawing drawing = drawing_of(number, 6, {{index, detail}});
      ASSERT_EQ(1U, drawing.circles.size()) << number << ' ' << detail;
      EXPECT_EQ(160, drawing.circles[0].left);
      EXPECT_EQ(240, drawing.circles[0].right);
      EXPECT_EQ(axis, (drawing.circles[0].top + drawing.circles[0].bottom) / 2);
    }
    EXPECT_EQ(2U, more(1));
    EXPECT_EQ(1U, more(2));
    EXPECT_EQ(1U, more(3));
    EXPECT_EQ(4U, more(4));
    EXPECT_EQ(2U, more(5));
    EXPECT_EQ(2U, more(6));
    for (const int detail : {0, 4, 5, 6, 7, -1, 32767, -32768}) {
      EXPECT_TRUE(drawing_of(number, 6, {{index, detail}}).circles.empty()) << number << ' ' << detail;
    }
    for (const int detail : {7, -1, 32767, -32768}) {
      EXPECT_EQ(0U, more(detail)) << number << ' ' << detail;
    }
  }
}

}  // namespace
