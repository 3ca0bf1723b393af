// Lines of equal sound level through fields of flow and pressure.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "exported/diagram/soundcurves_fixture.h"

namespace {

using tavdtest::flat;
using tavdtest::kLabelFont;
using tavdtest::kSoundPen;
using tavdtest::Record;
using tavdtest::Segment;
using tavdtest::SoundCurves;
using Strings = std::vector<std::string>;
using Levels = std::vector<int>;

// ---- Lines by flow ----------------------------------------------------------------------------------------

// Two flows, each with levels from `low` to `high` over four decades of pressure, 1 to 10^6 Pa shown.
class RangeLines : public SoundCurves {
 protected:
  void build_range(int low, int high) {
    Record product("TST", "PRODUCT");
    product.header(130, 0, 0, 100, 1000, 1, 1e6F)
        .rows(1653, std::vector<LwPoint>{flat(150, 10, low), flat(150, 1e5F, high), flat(700, 10, low),
                                         flat(700, 1e5F, high)});
    build(product);
  }
};

TEST_F(RangeLines, SpanOfTwentyHasStepsOfFive) {
  build_range(30, 46);  // 32.99 and 48.99 dB(A): 30 to 50
  EXPECT_EQ((Levels{30, 35, 40, 45, 50}), labels());
}

TEST_F(RangeLines, SpanOfTwentyFiveHasStepsOfTen) {
  build_range(30, 51);  // 53.99: 30 to 55
  EXPECT_EQ((Levels{30, 40, 50}), labels());
}

TEST_F(RangeLines, HighestLevelIsSixty) {
  build_range(20, 67);  // 69.99: 70
  EXPECT_EQ((Levels{20, 30, 40, 50, 60}), labels());
}

TEST_F(RangeLines, LowestLevelIsTwenty) {
  build_range(5, 35);  // 7.99 and 37.99
  EXPECT_EQ((Levels{20, 25, 30, 35, 40}), labels());
}

TEST_F(RangeLines, QuietTableHasTwentyAndTwentyFive) {
  // 14.99 dB(A) at most, and 15 is under 20 + 5.
  Record product("TST", "PRODUCT");
  product.header(130, 0, 0, 100, 1000, 1, 1e6F)
      .rows(1653,
            std::vector<LwPoint>{flat(150, 10, 2), flat(150, 100, 12), flat(700, 10, 2), flat(700, 100, 12)});
  build(product);
  EXPECT_EQ((Levels{20, 25}), labels());
}

TEST_F(RangeLines, LoudTableHasItsOwnLowestLevelAlone) {
  build_range(64, 80);  // from 65, and not over 60: 70 exceeds 61
  EXPECT_EQ((Levels{65}), labels());
}

TEST_F(RangeLines, EqualOverridesGiveOneLevel) {
  tavdg_set_lpmin_lpmax_lpstep(30, 30, 5);
  build_range(20, 67);
  EXPECT_EQ((Levels{30}), labels());
}

TEST_F(RangeLines, OverridesReplaceEachOnItsOwn) {
  tavdg_set_lpmin_lpmax_lpstep(35, 0, 0);
  build_range(20, 67);
  EXPECT_EQ((Levels{35, 45, 55}), labels());
  tavdg_set_lpmin_lpmax_lpstep(0, 47, -1);
  EXPECT_EQ((Levels{35, 45}), labels());
  tavdg_set_lpmin_lpmax_lpstep(0, 0, 4);
  EXPECT_EQ((Levels{35, 39, 43, 47}), labels());
}

TEST_F(RangeLines, LevelOneAboveTheHighestIsStillDrawn) {
  tavdg_set_lpmin_lpmax_lpstep(30, 39, 5);
  build_range(20, 67);
  EXPECT_EQ((Levels{30, 35, 40}), labels());
}

TEST_F(RangeLines, TenLevelsAreTheMost) {
  tavdg_set_lpmin_lpmax_lpstep(21, 60, 1);
  build_range(20, 67);
  EXPECT_EQ((Levels{21, 22, 23, 24, 25, 26, 27, 28, 29, 30}), labels());
}

TEST_F(RangeLines, FirstLabelBearsTheText) {
  tavdg_set_LpA_label("dB(A)");
  build_range(30, 46);
  const Strings texts = curves("text");
  ASSERT_EQ(5U, texts.size());
  EXPECT_TRUE(texts[0].ends_with(" \"30 dB(A)\"")) << texts[0];
  EXPECT_TRUE(texts[1].ends_with(" \"35\"")) << texts[1];
}

TEST_F(RangeLines, SelectPenAndFontOnceAndWriteInRed) {
  build_range(30, 46);
  const Strings all = curves();
  ASSERT_GT(all.size(), 8U);
  EXPECT_EQ((Strings{kSoundPen, kLabelFont, "text-colour #FF0000", "align left+top"}),
            Strings(all.begin(), all.begin() + 4));
  EXPECT_EQ((Strings{"text-colour #000000", "select stock system-font", "select stock black-pen"}),
            Strings(all.end() - 3, all.end()));
}

TEST_F(RangeLines, LabelStandsAtTheLastPointEvenBeyondTheFlows) {
  Record product("TST", "PRODUCT");
  const std::vector<LwPoint> low = {flat(150, 200, 30), flat(150, 5000, 60)};
  const std::vector<LwPoint> high = {flat(2000, 200, 35), flat(2000, 5000, 65)};
  build(limits(product, 130).rows(1653, std::vector<LwPoint>{low[0], low[1], high[0], high[1]}));
  tavdg_set_lpmin_lpmax_lpstep(50, 50, 5);
  const double dp = found(high, false, 50);
  char expected[60];
  std::snprintf(expected, sizeof expected, "text %d %d \"50\"", x(2000) + 50, y(dp));
  EXPECT_EQ((Strings{expected}), curves("text"));
  // The line itself ends at the right edge.
  EXPECT_EQ(9000, segments().back()[2]);
}

TEST_F(RangeLines, LastPointOutsideThePressuresHasNoLabel) {
  Record product("TST", "PRODUCT");
  build(limits(product, 130)
            .rows(1653, std::vector<LwPoint>{flat(150, 200, 30), flat(150, 5000, 60), flat(700, 200, 70),
                                             flat(700, 5000, 95)}));
  tavdg_set_lpmin_lpmax_lpstep(50, 50, 5);
  EXPECT_NE(Strings(), curves("line"));
  EXPECT_EQ(Strings(), curves("text"));
}

TEST_F(RangeLines, PassThroughThePointsOfAllFlows) {
  Record product("TST", "PRODUCT");
  std::vector<LwPoint> rows;
  std::vector<std::vector<LwPoint>> groups;
  for (const float qv : {150.0F, 300.0F, 500.0F, 900.0F}) {
    groups.push_back({flat(qv, 150, 25 + static_cast<int>(qv / 50)), flat(qv + 0.05F, 8000, 70)});
    rows.insert(rows.end(), groups.back().begin(), groups.back().end());
  }
  build(limits(product, 130).rows(1653, rows));
  tavdg_set_lpmin_lpmax_lpstep(50, 50, 5);
  const std::vector<Segment> lines = segments();
  ASSERT_EQ(3 * 4U, lines.size());
  for (std::size_t g = 0; g < groups.size(); ++g) {
    const double dp = found(groups[g], false, 50);
    const Segment& s = lines[g == 0 ? 0 : 4 * g - 1];
    EXPECT_NEAR(x(groups[g][0].qv), g == 0 ? s[0] : s[2], 1) << g;
    EXPECT_NEAR(y(dp), g == 0 ? s[1] : s[3], 1) << g;
  }
}

TEST_F(RangeLines, OneFlowHasNoLine) {
  Record product("TST", "PRODUCT");
  build(limits(product, 130)
            .rows(1653,
                  std::vector<LwPoint>{flat(150, 200, 30), flat(150.05F, 1000, 45), flat(150, 5000, 60)}));
  EXPECT_EQ(Strings(), curves("line"));
  EXPECT_EQ(Strings(), curves("text"));
}

TEST_F(RangeLines, FlowWithASingleRowLeavesEveryLevelOut) {
  Record product("TST", "PRODUCT");
  build(limits(product, 130)
            .rows(1653, std::vector<LwPoint>{flat(150, 200, 30), flat(150, 5000, 60), flat(700, 200, 70)}));
  EXPECT_EQ(Strings(), curves("line"));
}

TEST_F(RangeLines, ThirtyFlowsAreTwentyGroupsAndTheRestOfTheRows) {
  Record product("TST", "PRODUCT");
  std::vector<LwPoint> rows;
  for (int flow = 0; flow < 30; ++flow) {
    const auto qv = static_cast<float>(100 + 10 * flow);
    rows.insert(rows.end(), {flat(qv, 200, 30), flat(qv, 5000, 60)});
  }
  build(limits(product, 130).rows(1653, rows));
  tavdg_set_lpmin_lpmax_lpstep(50, 50, 5);
  EXPECT_EQ(19 * 4U, segments().size());
}

// ---- Lines by damper setting ------------------------------------------------------------------------------

// Settings of 0.1, 0.01 and 0.0001 Pa/(l/s)^2, two rows each.
class DamperLevelLines : public SoundCurves {
 protected:
  static std::vector<LwPoint> setting(float k, int low, int high) {
    return {flat(std::sqrt(200 / k), 200, low), flat(std::sqrt(5000 / k), 5000, high)};
  }
  static std::vector<LwPoint> joined(const std::vector<std::vector<LwPoint>>& settings) {
    std::vector<LwPoint> rows;
    for (const auto& s : settings) {
      rows.insert(rows.end(), s.begin(), s.end());
    }
    return rows;
  }
  void build_settings(const std::vector<LwPoint>& rows, std::int16_t kind = 120) {
    Record product("TST", "PRODUCT");
    build(limits(product, kind)
              .rows(1652, std::vector<DamperPoint>{{1, 100, 1000}, {2, 100, 100}, {3, 1000, 1000}})
              .rows(1653, rows));
  }
  // Without the damper lines and their labels.
  Strings level_lines(std::string_view word) {
    const Strings all = curves();
    auto from = std::find(all.begin(), all.end(), kSoundPen);
    Strings some;
    for (; from != all.end(); ++from) {
      if (from->starts_with(std::string(word) + ' ')) {
        some.push_back(*from);
      }
    }
    return some;
  }

  const std::vector<LwPoint> rows_ =
      joined({setting(0.1F, 30, 60), setting(0.01F, 35, 65), setting(0.0001F, 40, 70)});
};

TEST_F(DamperLevelLines, RunFromSettingToSetting) {
  tavdg_set_lpmin_lpmax_lpstep(50, 50, 5);
  tavdg_set_LpA_label("dB(A)");
  build_settings(rows_);
  EXPECT_EQ(3U, curves("text").size() - level_lines("text").size());  // of the damper lines
  const Strings lines = level_lines("line");
  ASSERT_FALSE(lines.empty());
  const double dp = found({rows_[2], rows_[3]}, false, 50);
  // The middle setting's point ends the fourth segment, or the third if the first is cut away.
  bool met = false;
  for (const std::string& line : lines) {
    Segment s{};
    std::sscanf(line.c_str(), "line %d %d %d %d", &s[0], &s[1], &s[2], &s[3]);
    met = met || (std::abs(s[2] - x(std::sqrt(dp / 0.01))) <= 1 && std::abs(s[3] - y(dp)) <= 1);
  }
  EXPECT_TRUE(met);
}

// The last setting's point lies beyond 1000 l/s, so that the first one is labelled.
TEST_F(DamperLevelLines, LabelStandsAtTheLastPointOrElseAtTheFirst) {
  tavdg_set_lpmin_lpmax_lpstep(50, 50, 5);
  char expected[60];
  build_settings(rows_);
  const double first = found({rows_[0], rows_[1]}, false, 50);
  std::snprintf(expected, sizeof expected, "text %d %d \"50\"", x(std::sqrt(first / 0.1)) + 50, y(first));
  EXPECT_EQ((Strings{expected}), level_lines("text"));

  const std::vector<LwPoint> near_rows = joined({setting(0.1F, 30, 60), setting(0.01F, 35, 65)});
  build_settings(near_rows);
  const double last = found({near_rows[2], near_rows[3]}, false, 50);
  std::snprintf(expected, sizeof expected, "text %d %d \"50\"", x(std::sqrt(last / 0.01)) + 50, y(last));
  EXPECT_EQ((Strings{expected}), level_lines("text"));
}

TEST_F(DamperLevelLines, LineWithBothEndsOutsideHasNoLabel) {
  tavdg_set_lpmin_lpmax_lpstep(50, 50, 5);
  // 50 dB(A) lie above 10 kPa at the first setting, and beyond 1000 l/s at the last.
  build_settings(joined({setting(0.1F, 20, 40), setting(0.0001F, 35, 65)}));
  EXPECT_EQ(Strings(), level_lines("text"));
  EXPECT_NE(Strings(), level_lines("line"));
}

TEST_F(DamperLevelLines, ByVelocityAreDrawnToo) {
  build_settings(rows_, 122);
  EXPECT_NE(Strings(), level_lines("line"));
}

TEST_F(DamperLevelLines, RowsWithinTenPerCentAreOneSetting) {
  // Resistances of 0.01 and 0.0109 join; the third row opens a group of its own with the fourth.
  std::vector<LwPoint> rows = {flat(200, 400, 30), flat(300, 981, 45), flat(100, 1000, 40),
                               flat(150, 2250, 55)};
  tavdg_set_lpmin_lpmax_lpstep(40, 40, 5);
  build_settings(rows);
  EXPECT_NE(Strings(), level_lines("line"));
  // 0.0112 does not: the first group keeps a single row.
  rows[1] = flat(300, 1008, 45);
  build_settings(rows);
  EXPECT_EQ(Strings(), level_lines("line"));
}

TEST_F(DamperLevelLines, FirstSettingOfASingleRowLeavesTheLevelsOutAndTheDamperLinesStand) {
  std::vector<LwPoint> rows = rows_;
  rows.erase(rows.begin());
  build_settings(rows);
  EXPECT_EQ(3U, curves("line").size());
  EXPECT_EQ(Strings(), level_lines("select"));
}

TEST_F(DamperLevelLines, LastSettingOfASingleRowReachesNoLevel) {
  std::vector<LwPoint> rows = rows_;
  rows.pop_back();
  build_settings(rows);
  EXPECT_EQ(Strings(), level_lines("line"));
  // The tools are taken up all the same.
  EXPECT_NE(Strings(), level_lines("select"));
}

TEST_F(DamperLevelLines, RowWithoutFlowOrPressureLeavesTheLevelsOut) {
  for (const LwPoint& bad : {flat(0, 400, 30), flat(300, 0, 30), flat(-1, 400, 30)}) {
    std::vector<LwPoint> rows = rows_;
    rows.push_back(bad);
    build_settings(rows);
    EXPECT_EQ(Strings(), level_lines("line")) << bad.qv;
    EXPECT_EQ(3U, curves("line").size());
  }
}

TEST_F(DamperLevelLines, StandWithoutADamperTable) {
  Record product("TST", "PRODUCT");
  build(limits(product, 120).rows(1653, rows_));
  EXPECT_NE(Strings(), curves("line"));
}

TEST_F(DamperLevelLines, FinerResolutionDrawsMoreSegments) {
  tavdg_set_lpmin_lpmax_lpstep(40, 40, 5);
  std::size_t former = 0;
  for (const int resolution : {0, 2, 4, 6}) {
    tavdg_setcurveresolution(resolution);
    build_settings(rows_);
    const std::size_t now = level_lines("line").size();
    EXPECT_GT(now, former) << resolution;
    former = now;
  }
}

}  // namespace
