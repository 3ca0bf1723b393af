// What a chart draws, in order, and what it leaves behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "diagram/chart.h"
#include "support/recording.h"

namespace tavd {
namespace {

using tavdtest::Recording;
using tavdtest::Text;

struct Destroy {
  void operator()(Chart* chart) const { chart_destroy(chart); }
};
using ChartPtr = std::unique_ptr<Chart, Destroy>;

ChartPtr titled() {
  return ChartPtr(
      chart_create({0, 10, 5, 5, 0, false}, {0, 100, 50, 5, 1, false}, "flow", "pressure", "A 100% title"));
}

// Font heights 625, 500 and 400; plot 1955, 1562 to 9000, 8045; pixels by hand from 704.5 and 64.83 units a
// unit.
constexpr char kWhole[] =
    R"(select pen solid width=10 colour=#000000
move 1955 1562
line 1955 1562 9000 1562
move 9000 1562
line 9000 1562 9000 8045
move 9000 8045
line 9000 8045 1955 8045
move 1955 8045
line 1955 8045 1955 1562
select font height=-625 weight=400 escapement=0 charset=1 italic=0 underline=0 strikeout=0 face="Microsoft Sans Serif"
align center+top
text 5477 100 "A 100% title"
select stock system-font
select font height=-500 weight=400 escapement=0 charset=1 italic=0 underline=0 strikeout=0 face="Microsoft Sans Serif"
align center+top
text 5477 9250 "flow"
select stock system-font
select font height=-500 weight=400 escapement=900 charset=0 italic=0 underline=0 strikeout=0 face="Microsoft Sans Serif"
align center+bottom
text 750 4803 "pressure"
select stock system-font
select font height=-400 weight=400 escapement=900 charset=0 italic=0 underline=0 strikeout=0 face="Microsoft Sans Serif"
align right+top
text 1822 8228 "0"
text 5344 8228 "5"
move 5477 1562
line 5477 1562 5477 8045
text 8867 8228 "10"
select stock system-font
select font height=-400 weight=400 escapement=0 charset=1 italic=0 underline=0 strikeout=0 face="Microsoft Sans Serif"
align right+bottom
text 1905 8245 "0.0"
text 1905 5003 "50.0"
move 1955 4803
line 1955 4803 9000 4803
text 1905 1762 "100.0"
select stock system-font
select stock black-pen
)";

TEST(ChartDraw, WholeChartInOrder) {
  const ChartPtr chart = titled();
  Recording recording;
  chart_draw(chart.get(), recording.surface(), true, true);
  EXPECT_EQ(kWhole, recording.text());
}

TEST(ChartDraw, EmptyTitlesAreSkippedWithTheirFonts) {
  const ChartPtr chart(chart_create({0, 10, 5, 5, 0, false}, {0, 100, 50, 5, 0, false}, "", "", ""));
  Recording recording;
  chart_draw(chart.get(), recording.surface(), false, false);
  EXPECT_TRUE(recording.texts().empty());
  EXPECT_EQ(6U, recording.lines("select").size());  // pen, two tick fonts, and back
}

TEST(ChartDraw, WideTitlesAreWrittenWide) {
  const ChartPtr chart(chart_createw({0, 10, 5, 5, 0, false}, {0, 100, 50, 5, 0, false}, u"flow", u"pressure",
                                     u"\u03A9 title"));
  Recording recording;
  chart_draw(chart.get(), recording.surface(), false, false);
  EXPECT_EQ((std::vector<Text>{{5477, 100, "\u03A9 title"}, {5477, 9250, "flow"}, {750, 4803, "pressure"}}),
            recording.texts("textw"));
  EXPECT_TRUE(recording.texts().empty());
}

TEST(ChartDraw, XLabelsStandTheLongestLabelBelowThePlot) {
  // "1000.00" is 7 characters of 400 units, a sixth of that: 466.
  const ChartPtr chart(chart_create({0, 1000, 500, 5, 2, false}, {0, 1, 1, 5, 0, false}, "", "", ""));
  Recording recording;
  chart_draw(chart.get(), recording.surface(), true, false);
  ASSERT_EQ(3U, recording.texts().size());
  EXPECT_EQ(8045 + 50 + 466, recording.texts()[0].y);
}

TEST(ChartDraw, DrawsInTheRectangleItWasGiven) {
  const ChartPtr chart = titled();
  chart_resize(chart.get(), 1000, 2000, 4999, 3999);
  Recording recording;
  chart_draw(chart.get(), recording.surface(), true, true);
  EXPECT_EQ(2020, recording.texts()[0].y);  // rect_top + title_gap
  EXPECT_EQ("select pen solid width=4 colour=#000000", recording.lines().front());
}

TEST(ChartDraw, LeavesNoObjectAndTheFormerOnesSelected) {
  const ChartPtr chart = titled();
  Recording recording;
  tgui_state before{};
  tgui_surface_state(recording.surface(), &before);
  const int objects = tgui_object_count();
  chart_draw(chart.get(), recording.surface(), true, true);
  EXPECT_EQ(objects, tgui_object_count());
  tgui_state after{};
  tgui_surface_state(recording.surface(), &after);
  EXPECT_EQ(before.pen, after.pen);
  EXPECT_EQ(before.font, after.font);
  EXPECT_EQ(before.brush, after.brush);
}

TEST(ChartDraw, ObjectsThatCannotBeMadeAreSkipped) {
  const ChartPtr chart = titled();
  // In order of creation: pen, title, x title, y title, x labels, y labels.
  constexpr int kCreations = 6;
  const std::vector<std::string> titles = {"A 100% title", "flow", "pressure"};
  for (int failing = 0; failing < kCreations; ++failing) {
    Recording recording;
    const int objects = tgui_object_count();
    tgui_fail_objects(failing, 1);
    chart_draw(chart.get(), recording.surface(), true, true);
    tgui_fail_objects(0, 0);
    EXPECT_EQ(objects, tgui_object_count()) << failing;
    const std::vector<Text> texts = recording.texts();
    EXPECT_EQ(failing >= 1 && failing <= 3 ? 8U : 9U, texts.size()) << failing;
    for (std::size_t i = 0; i < titles.size(); ++i) {
      const bool drawn =
          std::any_of(texts.begin(), texts.end(), [&](const Text& t) { return t.text == titles[i]; });
      EXPECT_EQ(failing != static_cast<int>(i) + 1, drawn) << titles[i];
    }
    EXPECT_EQ(6U, recording.segments().size());
  }
}

TEST(ChartDraw, WithoutAnyObjectFrameGridAndLabelsStand) {
  const ChartPtr chart = titled();
  Recording recording;
  const int objects = tgui_object_count();
  tgui_fail_objects(0, 100);
  chart_draw(chart.get(), recording.surface(), true, true);
  tgui_fail_objects(0, 0);
  EXPECT_EQ(objects, tgui_object_count());
  EXPECT_TRUE(recording.lines("select").empty());
  EXPECT_EQ(6U, recording.texts().size());
  EXPECT_EQ(6U, recording.segments().size());
}

TEST(ChartDraw, NullChartAndNullContextDrawNothing) {
  Recording recording;
  chart_draw(nullptr, recording.surface(), true, true);
  EXPECT_EQ("", recording.text());
  const ChartPtr chart = titled();
  const int objects = tgui_object_count();
  chart_draw(chart.get(), nullptr, true, true);
  EXPECT_EQ(objects, tgui_object_count());
}

}  // namespace
}  // namespace tavd
