// The chart against its plain transcription, operation by operation, over random axes and segments.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "diagram/axis.h"
#include "diagram/chart.h"
#include "oracle/reference/chart_walks.h"
#include "oracle/reference/records.h"
#include "support/recording.h"

namespace tavd {
namespace {

namespace ref = transcription;
using reference::Random;
using tavdtest::Recording;
using Strings = std::vector<std::string>;

struct Destroy {
  void operator()(Chart* chart) const { chart_destroy(chart); }
};
using ChartPtr = std::unique_ptr<Chart, Destroy>;

// What is drawn, without selections.
Strings drawn(const Recording& recording) {
  Strings lines;
  for (const std::string& line : recording.lines()) {
    if (!line.starts_with("select ")) {
      lines.push_back(line);
    }
  }
  return lines;
}

ref::ChartAxis random_axis(Random& random, bool log) {
  ref::ChartAxis axis{};
  axis.log = log;
  if (log) {
    axis.min = random.logarithmic(1e-3F, 1e5F);
    axis.max = axis.min * random.logarithmic(1.02F, 1e5F);
  } else {
    axis.min = random.one_in(2) ? 0 : random.uniform(-100, 1000);
    axis.max = axis.min + random.logarithmic(1e-2F, 1e6F);
  }
  // Round ends stand on ticks and on the frame.
  if (random.one_in(3)) {
    axis.min = std::round(axis.min);
    axis.max = std::round(axis.max) + 2;
    axis.min = log && axis.min < 1 ? 1 : axis.min;
    axis.max = axis.max <= axis.min ? axis.min + 2 : axis.max;
  }
  axis_format(axis.min, axis.max, &axis.len, &axis.des);
  axis_step(axis.min, axis.max, &axis.step);
  if (random.one_in(4)) {
    axis.step = (axis.max - axis.min) / random.uniform(0.5F, 40);
  }
  return axis;
}

struct Case {
  ref::ChartPlot plot;
  ChartPtr chart;
};

Case random_chart(Random& random) {
  const ref::ChartAxis x = random_axis(random, random.one_in(2));
  const ref::ChartAxis y = random_axis(random, random.one_in(2));
  int rect[4] = {0, 0, kDefaultExtent, kDefaultExtent};
  if (random.one_in(3)) {
    rect[0] = random.between(-3000, 3000);
    rect[1] = random.between(-3000, 3000);
    rect[2] = rect[0] + random.between(2000, 12000);
    rect[3] = rect[1] + random.between(2000, 12000);
  }
  Case made;
  made.plot = ref::chart_plot(x, y, rect[0], rect[1], rect[2], rect[3]);
  made.chart.reset(chart_create({x.min, x.max, x.step, x.len, x.des, x.log},
                                {y.min, y.max, y.step, y.len, y.des, y.log}, "", "", ""));
  chart_resize(made.chart.get(), rect[0], rect[1], rect[2], rect[3]);
  return made;
}

TEST(ChartTwice, LaysOutTheSamePlot) {
  Random random(1);
  for (int round = 0; round < 3000; ++round) {
    const Case c = random_chart(random);
    int plot[4] = {-1, -1, -1, -1};
    chart_get_plot_rect(c.chart.get(), plot);
    ASSERT_EQ(c.plot.left, plot[0]);
    ASSERT_EQ(c.plot.top, plot[1]);
    ASSERT_EQ(c.plot.right, plot[2]);
    ASSERT_EQ(c.plot.bottom, plot[3]);
    ASSERT_EQ(c.plot.xscale, c.chart->xscale);
    ASSERT_EQ(c.plot.yscale, c.chart->yscale);
  }
}

TEST(ChartTwice, DrawsTheSameFrameTicksAndGrid) {
  Random random(2);
  Recording recording;
  std::size_t operations = 0;
  for (int round = 0; round < 3000; ++round) {
    const Case c = random_chart(random);
    recording.clear();
    chart_draw(c.chart.get(), recording.surface(), true, true);
    const Strings expected = ref::chart_operations(c.plot);
    operations += expected.size();
    ASSERT_EQ(expected, drawn(recording))
        << "x " << c.plot.x.min << " to " << c.plot.x.max << (c.plot.x.log ? " log" : "") << ", step "
        << c.plot.x.step << "; y " << c.plot.y.min << " to " << c.plot.y.max << (c.plot.y.log ? " log" : "")
        << ", step " << c.plot.y.step;
  }
  EXPECT_GT(operations, 3000U * 40);
}

// A value around the axis: inside, a little outside, or on an end.
float random_value(Random& random, const ref::ChartAxis& axis) {
  switch (random.below(8)) {
    case 0:
      return axis.min;
    case 1:
      return axis.max;
    default:
      break;
  }
  const float far = random.one_in(3) ? 1.5F : 0.1F;
  if (axis.log) {
    const float decades = std::log10(axis.max / axis.min);
    return axis.min * std::pow(10.0F, decades * random.uniform(-far, 1 + far));
  }
  return axis.min + (axis.max - axis.min) * random.uniform(-far, 1 + far);
}

TEST(ChartTwice, ClipsSegmentsAlike) {
  Random random(3);
  Recording recording;
  int visible = 0;
  int hidden = 0;
  for (int round = 0; round < 1500; ++round) {
    const Case c = random_chart(random);
    for (int i = 0; i < 20; ++i) {
      const float x1 = random_value(random, c.plot.x);
      const float x2 = random.one_in(6) ? x1 : random_value(random, c.plot.x);
      const float y1 = random_value(random, c.plot.y);
      const float y2 = random.one_in(6) ? y1 : random_value(random, c.plot.y);
      const Strings expected = ref::clipped_line(c.plot, x1, y1, x2, y2);
      recording.clear();
      chart_clip_line(c.chart.get(), recording.surface(), x1, y1, x2, y2);
      ASSERT_EQ(expected, recording.lines()) << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
      ++(expected.empty() ? hidden : visible);
    }
  }
  EXPECT_GT(visible, 10000);
  EXPECT_GT(hidden, 2000);
}

// A segment that leaves the 16-bit integers is the same segment cut earlier: it may lie a unit beside what an
// exact computation gives, but neither vanish nor turn.
TEST(ChartTwice, SegmentsThatLeaveTheIntegersStayWhereTheyAre) {
  Random random(4);
  Recording recording;
  int visible = 0;
  for (int round = 0; round < 20000; ++round) {
    const ref::ChartAxis axis{false, 0, 10000, 1000, 5, 0};
    const ref::ChartPlot plot = ref::chart_plot(axis, axis, 0, 0, kDefaultExtent, kDefaultExtent);
    const ChartPtr chart(
        chart_create({0, 10000, 1000, 5, 0, false}, {0, 10000, 1000, 5, 0, false}, "", "", ""));
    // Through a point well inside, both ends far out.
    const double x = random.uniform(3000, 7000);
    const double y = random.uniform(3000, 7000);
    const double angle = random.uniform(0, 3.14159F);
    const double far1 = random.logarithmic(1e5F, 1e7F);
    const double far2 = random.logarithmic(1e5F, 1e7F);
    const double dx = std::cos(angle);
    const double dy = std::sin(angle);
    recording.clear();
    chart_clip_line(chart.get(), recording.surface(), static_cast<float>(x - far1 * dx),
                    static_cast<float>(y - far1 * dy), static_cast<float>(x + far2 * dx),
                    static_cast<float>(y + far2 * dy));
    const std::vector<tavdtest::Segment> segments = recording.segments();
    ASSERT_EQ(1U, segments.size()) << x << ' ' << y << ' ' << angle;
    ++visible;
    // The middle point, in device units, lies on the line: floats so far out are good to a unit.
    const tavdtest::Segment& s = segments[0];
    const double length = std::hypot(s[2] - s[0], s[3] - s[1]);
    const double px = plot.left + plot.xscale * x;
    const double py = plot.bottom - plot.yscale * y;
    EXPECT_LT(std::fabs((s[2] - s[0]) * (py - s[1]) - (s[3] - s[1]) * (px - s[0])) / length, 4.0)
        << x << ' ' << y << ' ' << angle;
    for (const int i : {0, 2}) {
      EXPECT_GE(s[i], plot.left);
      EXPECT_LE(s[i], plot.right);
    }
  }
  EXPECT_EQ(20000, visible);
}

}  // namespace
}  // namespace tavd
