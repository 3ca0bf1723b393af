// Sound level marks on the curves of fixed resistances, and kinds that show no sound.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "exported/diagram/soundcurves_fixture.h"
#include "tavd/tavca.h"

namespace {

using tavdtest::flat;
using tavdtest::kLabelFont;
using tavdtest::kRoomdamp;
using tavdtest::kSoundPen;
using tavdtest::Record;
using tavdtest::SoundCurves;
using Strings = std::vector<std::string>;

constexpr char kCurvePen[] = "select pen solid width=10 colour=#000000";

// ---- Marks ------------------------------------------------------------------------------------------------

// The diagonal 0.01 * qv^2 with two rows on it: 40 dB(A) and less lie between 200 and 800 l/s or below.
class SoundMarks : public SoundCurves {
 protected:
  const std::vector<LwPoint> rows_ = {flat(200, 400, 20), flat(800, 6400, 44)};

  void build_marks(const std::vector<LwPoint>& rows) {
    Record product("TST", "PRODUCT");
    build(resistance(product).rows(1653, rows));
  }
  static std::string circle(int px, int py) {
    char line[100];
    std::snprintf(line, sizeof line, "ellipse %d %d %d %d", px - 100, py - 100, px + 100, py + 100);
    return line;
  }
  static Strings marks_at(const std::vector<std::pair<double, double>>& points, const Strings& texts) {
    Strings all;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const int px = x(points[i].first);
      const int py = y(points[i].second);
      char line[100];
      all.push_back(circle(px, py));
      std::snprintf(line, sizeof line, "text %d %d \"%s\"", px + 100, py, texts[i].c_str());
      all.push_back(line);
    }
    return all;
  }
};

TEST_F(SoundMarks, StandOnTheCurveWithTheLabelBehindTheFirst) {
  tavdg_set_LpA_label("dB(A)");
  build_marks(rows_);
  std::vector<std::pair<double, double>> points;
  for (const float L : {20.0F, 25.0F, 30.0F, 35.0F, 40.0F}) {
    const float dp = found(rows_, false, L);
    ASSERT_GT(dp, 100.0F);
    points.emplace_back(std::sqrt(dp / 0.01), dp);
  }
  Strings expected = {kCurvePen,
                      "move 1955 8045",
                      "line 1955 8045 9000 1562",
                      "select stock black-pen",
                      kSoundPen,
                      "select stock ltgray-brush",
                      kLabelFont,
                      "text-colour #FF0000",
                      "align left+top"};
  const Strings marks = marks_at(points, {"20 dB(A)", "25", "30", "35", "40"});
  expected.insert(expected.end(), marks.begin(), marks.end());
  const Strings restored = {"text-colour #000000", "select stock system-font", "select stock white-brush",
                            "select stock black-pen"};
  expected.insert(expected.end(), restored.begin(), restored.end());
  EXPECT_EQ(expected, curves());
}

TEST_F(SoundMarks, LabelCountsFromTheNextDrawingUntilTheNextInit) {
  build_marks(rows_);
  tavdg_set_LpA_label("dB(A)");
  EXPECT_TRUE(curves("text").at(0).ends_with(" \"20 dB(A)\""));
  build_marks(rows_);
  EXPECT_TRUE(curves("text").at(0).ends_with(" \"20 dB(A)\""));
  tavdg_init_empty(tgui_main_module(), db());
  build_marks(rows_);
  EXPECT_TRUE(curves("text").at(0).ends_with(" \"20\""));
}

TEST_F(SoundMarks, WithoutALabelAreNumbersAlone) {
  build_marks(rows_);
  const Strings texts = curves("text");
  ASSERT_EQ(5U, texts.size());
  EXPECT_TRUE(texts[0].ends_with(" \"20\""));
}

TEST_F(SoundMarks, LabelGoesToTheFirstMarkThatIsDrawn) {
  tavdg_set_LpA_label("dB(A)");
  // 20 and 25 dB(A) lie under 100 Pa.
  build_marks({flat(200, 400, 40), flat(800, 6400, 60)});
  const Strings texts = curves("text");
  ASSERT_FALSE(texts.empty());
  EXPECT_LT(texts.size(), 5U);
  EXPECT_TRUE(texts[0].ends_with(" dB(A)\"")) << texts[0];
  for (std::size_t i = 1; i < texts.size(); ++i) {
    EXPECT_FALSE(texts[i].ends_with(" dB(A)\"")) << texts[i];
  }
}

TEST_F(SoundMarks, LieOnTheSquareLawOfTheFirstRowWhateverTheCurve) {
  // Sound was measured at another resistance: 0.04 in the first row.
  const std::vector<LwPoint> rows = {flat(100, 400, 20), flat(800, 6400, 44)};
  build_marks(rows);
  const Strings ellipses = curves("ellipse");
  ASSERT_EQ(4U, ellipses.size());  // 20 dB(A) would stand at 84 l/s
  const double dp = found(rows, false, 40);
  EXPECT_EQ(circle(x(std::sqrt(dp / 0.04)), y(dp)), ellipses.back());
}

TEST_F(SoundMarks, OneRowOfSoundGivesNone) {
  build_marks({flat(200, 400, 20)});
  EXPECT_EQ(Strings(), curves("ellipse"));
  EXPECT_EQ(Strings(), curves("text"));
  EXPECT_EQ(1U, curves("line").size());
}

TEST_F(SoundMarks, RowWithoutFlowOrPressureGivesNone) {
  for (const LwPoint& bad : {flat(0, 400, 30), flat(300, 0, 30), flat(-1, 400, 30), flat(300, -1, 30)}) {
    build_marks({rows_[0], bad, rows_[1]});
    EXPECT_EQ(Strings(), curves("ellipse")) << bad.qv;
    EXPECT_EQ((Strings{kCurvePen, "select stock black-pen"}), curves("select"));
  }
}

TEST_F(SoundMarks, StandWithoutACurve) {
  Record product("TST", "PRODUCT");
  build(limits(product, 110).rows(1653, rows_));
  EXPECT_EQ(5U, curves("ellipse").size());
  EXPECT_EQ(Strings(), curves("line"));
}

// Supply air in a duct of 0.1 m by 0.1 m loses 60 Pa at 100 l/s, so that 0.01 becomes 0.004 * qv^2.
TEST_F(SoundMarks, FollowTheStaticPressure) {
  Record product("ASD", "PRODUCT");
  product.header(110, 100, 100, 100, 1000, 100, 10000).floats(1651, {100, 100}).rows(1653, rows_);
  tavdg_set_dptype(1);
  build(product);
  const Strings ellipses = curves("ellipse");
  ASSERT_EQ(5U, ellipses.size());
  const double dp = found(rows_, false, 40);
  EXPECT_EQ(circle(x(std::sqrt(dp / 0.01)), y(0.4 * dp)), ellipses.back());
}

// In a duct of 80 mm by 80 mm more pressure is lost than there is.
TEST_F(SoundMarks, WithoutAPlaceOnTheAxisAreLeftOut) {
  Record product("ASD", "PRODUCT");
  product.header(110, 80, 80, 100, 1000, 100, 10000).floats(1651, {100, 100}).rows(1653, rows_);
  tavdg_set_dptype(1);
  build(product);
  EXPECT_EQ(Strings(), curves("ellipse"));
  EXPECT_EQ(Strings(), curves("text"));
}

// A stored product of this kind has none: the loader reads it for other kinds.
TEST_F(SoundMarks, OfMeasuredProductsNeedAReferencePoint) {
  Record product("TST", "PRODUCT");
  limits(product, 112)
      .rows(1657, std::vector<QvDpPoint>{{200, 400}, {800, 6400}})
      .floats(1651, {100, 100})
      .rows(1653, rows_);
  build(product);
  EXPECT_EQ(3U, curves("line").size());
  EXPECT_EQ(Strings(), curves("ellipse"));
}

TEST_F(SoundMarks, ComeBetweenTheCurveAndTheOperatingPoint) {
  build_marks(rows_);
  tavdg_set_operation_point(500, 500);
  EXPECT_EQ(8U, curves("ellipse").size());
  const Strings selects = curves("select");
  EXPECT_EQ(kCurvePen, selects.front());
  EXPECT_EQ("select pen solid width=10 colour=#0000FF", selects[selects.size() - 2]);
}

// ---- No sound ---------------------------------------------------------------------------------------------

TEST_F(SoundCurves, FansShowNoSound) {
  Record fan("FAN", "FAN");
  fan.header(140, 0, 0, 0, 1000, 0, 10000)
      .rows(1666, std::vector<FanPoint>{{200, 8000, 0}, {500, 5000, 0}, {900, 1000, 0}})
      .rows(1653, std::vector<LwPoint>{flat(150, 200, 30), flat(150, 5000, 60)});
  build(fan);
  const Strings selects = curves("select");
  EXPECT_EQ(0, std::count(selects.begin(), selects.end(), kSoundPen));
}

TEST_F(SoundCurves, PressureRangesWithoutALawShowNoSound) {
  Record product("TST", "PRODUCT");
  build(limits(product, 113)
            .rows(1653, std::vector<LwPoint>{flat(150, 200, 30), flat(150, 5000, 60), flat(500, 200, 30),
                                             flat(500, 5000, 60)}));
  EXPECT_EQ(Strings(), curves());
}

TEST_F(SoundCurves, RoomDampingLowersTheLevels) {
  Record product("TST", "PRODUCT");
  build(resistance(product).rows(1653, std::vector<LwPoint>{flat(200, 400, 20), flat(800, 6400, 44)}));
  const Strings at_four = curves("ellipse");
  tavca_setroomdamp(8);
  const Strings at_eight = curves("ellipse");
  tavca_setroomdamp(kRoomdamp);
  ASSERT_FALSE(at_four.empty());
  ASSERT_FALSE(at_eight.empty());
  EXPECT_NE(at_four, at_eight);
}

}  // namespace
