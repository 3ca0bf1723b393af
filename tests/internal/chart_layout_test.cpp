// How a chart is created and laid out.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "diagram/chart.h"
#include "support/wide.h"

namespace tavd {
namespace {

struct Destroy {
  void operator()(Chart* chart) const { chart_destroy(chart); }
};
using ChartPtr = std::unique_ptr<Chart, Destroy>;

ChartPtr make(const char* x, const char* y, const char* title) {
  return ChartPtr(chart_create({0, 10, 2, 5, 0, false}, {0, 100, 25, 5, 0, false}, x, y, title));
}

TEST(ChartLayout, DefaultRectangleWithFiveCharacterLabels) {
  const ChartPtr c = make("x", "y", "t");
  EXPECT_EQ(0, c->rect_left);
  EXPECT_EQ(0, c->rect_top);
  EXPECT_EQ(10000, c->rect_right);
  EXPECT_EQ(10000, c->rect_bottom);
  EXPECT_EQ(625, c->title_font);
  EXPECT_EQ(500, c->axis_font);
  EXPECT_EQ(400, c->tick_font);
  EXPECT_EQ(100, c->title_gap);
  EXPECT_EQ(50, c->xlabel_gap);
  EXPECT_EQ(50, c->ylabel_gap);
  EXPECT_EQ(10, c->pen_width);
  EXPECT_EQ(1205, c->xblock);
  EXPECT_EQ(1205, c->yblock);
  int plot[4] = {-1, -1, -1, -1};
  chart_get_plot_rect(c.get(), plot);
  EXPECT_EQ(1955, plot[0]);
  EXPECT_EQ(1562, plot[1]);
  EXPECT_EQ(9000, plot[2]);
  EXPECT_EQ(8045, plot[3]);
}

TEST(ChartLayout, RectangleAwayFromTheOriginAndUnequalLabels) {
  const ChartPtr c(chart_create({0, 10, 2, 3, 0, false}, {0, 100, 25, 7, 2, false}, "", "", ""));
  chart_resize(c.get(), 1000, 2000, 4999, 3999);  // 4000 by 2000
  EXPECT_EQ(4, c->pen_width);
  EXPECT_EQ(125, c->title_font);
  EXPECT_EQ(100, c->axis_font);
  EXPECT_EQ(80, c->tick_font);
  EXPECT_EQ(20, c->title_gap);
  EXPECT_EQ(20, c->ylabel_gap);
  EXPECT_EQ(10, c->xlabel_gap);
  EXPECT_EQ(7 + 40 * 8, c->yblock);
  EXPECT_EQ(3 + 40 * 4, c->xblock);
  EXPECT_EQ(1000 + 150 + 327, c->plot_left);
  EXPECT_EQ(2000 + 312, c->plot_top);
  EXPECT_EQ(4999 - 40 * 3, c->plot_right);
  EXPECT_EQ(3999 - 150 - 163, c->plot_bottom);
}

TEST(ChartLayout, RightMarginFollowsTheXLabelWidth) {
  const ChartPtr narrow(chart_create({0, 1, 1, 3, 0, false}, {0, 1, 1, 9, 0, false}, "", "", ""));
  const ChartPtr wide(chart_create({0, 1, 1, 9, 0, false}, {0, 1, 1, 3, 0, false}, "", "", ""));
  EXPECT_EQ(10000 - 600, narrow->plot_right);
  EXPECT_EQ(10000 - 1800, wide->plot_right);
}

TEST(ChartLayout, FortyNineUnitsLeaveTheLayoutFiftyAreTaken) {
  const ChartPtr c = make("", "", "");
  chart_resize(c.get(), 0, 0, 48, 999);
  EXPECT_EQ(10000, c->rect_right);
  EXPECT_EQ(625, c->title_font);
  chart_resize(c.get(), 0, 0, 999, 48);
  EXPECT_EQ(10000, c->rect_bottom);
  EXPECT_EQ(1955, c->plot_left);
  chart_resize(c.get(), 0, 0, 49, 49);
  EXPECT_EQ(49, c->rect_right);
  EXPECT_EQ(3, c->title_font);
  EXPECT_EQ(2, c->axis_font);
  EXPECT_EQ(2, c->tick_font);
}

TEST(ChartLayout, PenIsOneWideUpToFifteenHundredUnits) {
  const ChartPtr c = make("", "", "");
  const auto pen = [&c](int width) {
    chart_resize(c.get(), 0, 0, width - 1, 999);
    return c->pen_width;
  };
  EXPECT_EQ(1, pen(999));
  EXPECT_EQ(1, pen(1500));
  EXPECT_EQ(1, pen(1501));
  EXPECT_EQ(1, pen(1999));
  EXPECT_EQ(2, pen(2000));
  EXPECT_EQ(32, pen(32000));
}

TEST(ChartLayout, CoordinatesBeyondSixteenBitsAreHeld) {
  const ChartPtr c = make("", "", "");
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  chart_resize(c.get(), kLowest, kLowest, kHighest, kHighest);
  EXPECT_EQ(-32768, c->rect_left);
  EXPECT_EQ(32767, c->rect_bottom);
  EXPECT_EQ(32767, c->title_font);
  EXPECT_EQ(32767, c->pen_width);
  EXPECT_EQ(32767, c->plot_right);
}

TEST(ChartLayout, InvertedRectangleIsIgnored) {
  const ChartPtr c = make("", "", "");
  chart_resize(c.get(), 1000, 0, 0, 1000);
  EXPECT_EQ(10000, c->rect_right);
}

TEST(ChartLayout, ResizingBackToTheDefault) {
  const ChartPtr c = make("", "", "");
  chart_resize(c.get(), 10, 10, 600, 500);
  EXPECT_NE(1955, c->plot_left);
  chart_resize_default(c.get());
  EXPECT_EQ(1955, c->plot_left);
  EXPECT_EQ(8045, c->plot_bottom);
}

TEST(ChartLayout, LinearScalesArePlotOverRange) {
  const ChartPtr c = make("", "", "");
  EXPECT_EQ(704.5F, c->xscale);
  EXPECT_EQ(6483.0F / 100.0F, c->yscale);
}

TEST(ChartLayout, LogarithmicScalesAreUnitsPerDecade) {
  const ChartPtr c(chart_create({10, 1000, 0, 5, 0, true}, {1, 10, 0, 5, 0, true}, "", "", ""));
  EXPECT_EQ(7045.0F / 2.0F, c->xscale);
  EXPECT_EQ(6483.0F, c->yscale);
  // The logarithms become float before they are subtracted.
  const ChartPtr odd(chart_create({3, 700, 0, 5, 0, true}, {1, 10, 0, 5, 0, true}, "", "", ""));
  const auto lo = static_cast<float>(std::log10(3.0));
  const auto hi = static_cast<float>(std::log10(700.0));
  EXPECT_EQ(7045.0F / (hi - lo), odd->xscale);
}

TEST(ChartTexts, LongestThatFitAreKeptWhole) {
  const std::string axis(19, 'a');
  const std::string title(79, 't');
  const ChartPtr c = make(axis.c_str(), axis.c_str(), title.c_str());
  EXPECT_EQ(axis, c->szX);
  EXPECT_EQ(axis, c->szY);
  EXPECT_EQ(title, c->title);
}

TEST(ChartTexts, OneCharacterMoreDropsTheTextWhole) {
  const std::string axis(20, 'a');
  const std::string title(80, 't');
  const ChartPtr c = make(axis.c_str(), axis.c_str(), title.c_str());
  EXPECT_STREQ("", c->szX);
  EXPECT_STREQ("", c->szY);
  EXPECT_STREQ("", c->title);
}

TEST(ChartTexts, WideTextsHaveTheSameLimits) {
  const tavdtest::Wide fits(19, WIDE('a'));
  const tavdtest::Wide too_long(20, WIDE('a'));
  const tavdtest::Wide title(80, WIDE('t'));
  const ChartPtr c(chart_createw({0, 1, 1, 3, 0, false}, {0, 1, 1, 3, 0, false}, fits.c_str(),
                                 too_long.c_str(), title.c_str()));
  EXPECT_EQ(fits, c->szXw);
  EXPECT_EQ(0, c->szYw[0]);
  EXPECT_EQ(0, c->titlew[0]);
}

TEST(ChartTexts, OnlyOneSetIsFilled) {
  const ChartPtr narrow = make("x", "y", "t");
  EXPECT_EQ(0, narrow->szXw[0]);
  EXPECT_EQ(0, narrow->titlew[0]);
  const ChartPtr wide(
      chart_createw({0, 1, 1, 3, 0, false}, {0, 1, 1, 3, 0, false}, WIDE("x"), WIDE("y"), WIDE("t")));
  EXPECT_STREQ("", wide->szX);
  EXPECT_STREQ("", wide->title);
  EXPECT_EQ(WIDE('t'), wide->titlew[0]);
  EXPECT_EQ(0, wide->titlew[1]);
}

TEST(ChartTexts, NullTextsCountAsEmpty) {
  const ChartPtr c = make(nullptr, nullptr, nullptr);
  ASSERT_NE(nullptr, c);
  EXPECT_STREQ("", c->szX);
  EXPECT_STREQ("", c->title);
}

TEST(ChartRanges, AreCopiedOutAndNullLeavesThemUntouched) {
  const ChartPtr c(chart_create({1, 3, 0, 5, 0, true}, {2, 4, 0, 5, 0, true}, "", "", ""));
  float r[4] = {-1, -1, -1, -1};
  chart_get_ranges(nullptr, &r[0], &r[1], &r[2], &r[3]);
  EXPECT_EQ(-1, r[0]);
  EXPECT_EQ(-1, r[3]);
  chart_get_ranges(c.get(), &r[0], &r[1], &r[2], &r[3]);
  EXPECT_EQ(1, r[0]);
  EXPECT_EQ(2, r[1]);
  EXPECT_EQ(3, r[2]);
  EXPECT_EQ(4, r[3]);
  int plot[4] = {-1, -2, -3, -4};
  chart_get_plot_rect(nullptr, plot);
  EXPECT_EQ(-1, plot[0]);
  EXPECT_EQ(-4, plot[3]);
}

TEST(ChartDestroy, NullIsAllowed) {
  chart_destroy(nullptr);
  chart_resize(nullptr, 0, 0, 100, 100);
}

}  // namespace
}  // namespace tavd
