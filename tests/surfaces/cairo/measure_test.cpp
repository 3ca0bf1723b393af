// Measuring: what a drawing covers is told before it is painted, and agrees with the pixels of its picture.
#include <cairo.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>

#include "tavdgui/tavdcairo.h"

namespace {

constexpr int kSide = 200;

void select_pen(tgui_surface* surface, int width) {
  tgui_select(surface, tgui_create_pen(TGUI_PEN_SOLID, width, 0));
}

void line(tgui_surface* surface, int x1, int y1, int x2, int y2) {
  tgui_move_to(surface, x1, y1);
  tgui_line_to(surface, x2, y2);
}

void write(tgui_surface* surface, int height, int escapement, std::uint32_t align, int x, int y,
           const char* text) {
  tgui_font font = {};
  font.height = height;
  font.escapement = escapement;
  font.weight = 400;
  std::strcpy(font.face, "Arial");
  tgui_select(surface, tgui_create_font(&font));
  tgui_set_text_align(surface, align);
  tgui_text(surface, x, y, text, static_cast<std::int32_t>(std::strlen(text)));
}

using Draw = std::function<void(tgui_surface*)>;

struct Destroy {
  void operator()(tgui_surface* surface) const { tgui_surface_destroy(surface); }
};
using Measuring = std::unique_ptr<tgui_surface, Destroy>;

Measuring measuring(const Draw& draw) {
  Measuring surface(tgui_cairo_measure(kSide, kSide));
  draw(surface.get());
  return surface;
}

tgui_box extent(const Draw& draw) {
  tgui_box box = {-1, -1, -1, -1};
  EXPECT_EQ(tgui_cairo_extent(measuring(draw).get(), &box), 0);
  return box;
}

// The box of the ink as cairo sees it, which has no notion of cells of texts.
tgui_box ink(const Draw& draw) {
  cairo_surface_t* recording = cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr);
  cairo_t* cairo = cairo_create(recording);
  tgui_surface* surface = tgui_cairo_context(cairo, kSide, kSide);
  draw(surface);
  tgui_cairo_finish(surface, nullptr, 0);
  double x = 0, y = 0, width = 0, height = 0;
  cairo_recording_surface_ink_extents(recording, &x, &y, &width, &height);
  cairo_destroy(cairo);
  cairo_surface_destroy(recording);
  return {x, y, x + width, y + height};
}

void expect_near(const tgui_box& actual, const tgui_box& expected, double most) {
  EXPECT_NEAR(actual.left, expected.left, most);
  EXPECT_NEAR(actual.top, expected.top, most);
  EXPECT_NEAR(actual.right, expected.right, most);
  EXPECT_NEAR(actual.bottom, expected.bottom, most);
}

TEST(Measure, LinesCountWithTheirWidthsWhereverTheyEnd) {
  const auto draw = [](tgui_surface* surface) {
    select_pen(surface, 10);
    line(surface, -50, 20, 250, 60);
  };
  expect_near(extent(draw), {-55, 15, 255, 65}, 1e-9);
  expect_near(extent(draw), ink(draw), 1);
}

TEST(Measure, LineThatIsStillBeingDrawnCounts) {
  const Measuring surface = measuring([](tgui_surface* at) { line(at, 10, 20, 30, 40); });
  tgui_box box = {};
  ASSERT_EQ(tgui_cairo_extent(surface.get(), &box), 0);
  expect_near(box, {9.5, 19.5, 30.5, 40.5}, 1e-9);
  line(surface.get(), 30, 40, 50, 60);
  ASSERT_EQ(tgui_cairo_extent(surface.get(), &box), 0);
  expect_near(box, {9.5, 19.5, 50.5, 60.5}, 1e-9);
}

TEST(Measure, EllipsesCountWithTheirOutlines) {
  const auto draw = [](tgui_surface* surface) {
    select_pen(surface, 4);
    tgui_ellipse(surface, 20, 30, 60, 90);
  };
  expect_near(extent(draw), {18, 28, 62, 92}, 1e-9);
  expect_near(extent(draw), ink(draw), 1);
}

// From the right against the clock to the top, and from the top round to the right.
TEST(Measure, ArcsCountAsFarAsTheyGo) {
  const auto quarter = [](tgui_surface* surface) { tgui_arc(surface, 0, 0, 100, 100, 100, 50, 50, 0); };
  const auto rest = [](tgui_surface* surface) { tgui_arc(surface, 0, 0, 100, 100, 50, 0, 100, 50); };
  expect_near(extent(quarter), {49.5, -0.5, 100.5, 50.5}, 1e-6);
  expect_near(extent(rest), {-0.5, -0.5, 100.5, 100.5}, 1e-6);
  expect_near(extent(quarter), ink(quarter), 1);
  expect_near(extent(rest), ink(rest), 1);
}

TEST(Measure, TextsCountWithTheirCells) {
  for (const int escapement : {0, 900, 450}) {
    for (const std::uint32_t align : {TGUI_TA_LEFT + 0, TGUI_TA_CENTER + TGUI_TA_BOTTOM, TGUI_TA_RIGHT + 0}) {
      const auto draw = [&](tgui_surface* surface) {
        write(surface, -40, escapement, align, 100, 100, "Mg");
      };
      const tgui_box cell = extent(draw);
      const tgui_box letters = ink(draw);
      EXPECT_LE(cell.left, letters.left + 1) << escapement << ' ' << align;
      EXPECT_LE(cell.top, letters.top + 1) << escapement << ' ' << align;
      EXPECT_GE(cell.right, letters.right - 1) << escapement << ' ' << align;
      EXPECT_GE(cell.bottom, letters.bottom - 1) << escapement << ' ' << align;
      EXPECT_LT(cell.right - cell.left, 120) << escapement << ' ' << align;
      EXPECT_LT(cell.bottom - cell.top, 120) << escapement << ' ' << align;
    }
  }
}

TEST(Measure, HasTheBoxOfEachText) {
  const Measuring surface = measuring([](tgui_surface* at) {
    write(at, -20, 0, TGUI_TA_LEFT, 10, 10, "first");
    line(at, 0, 0, 100, 100);
    write(at, -20, 0, TGUI_TA_LEFT, 10, 150, "second");
  });
  EXPECT_EQ(tgui_cairo_text_count(surface.get()), 2);
  tgui_box box = {};
  EXPECT_EQ(tgui_cairo_text_extent(surface.get(), 1, &box), 0);
  EXPECT_DOUBLE_EQ(box.left, 10);
  EXPECT_DOUBLE_EQ(box.top, 150);
  for (const int index : {-1, 2}) {
    EXPECT_EQ(tgui_cairo_text_extent(surface.get(), index, &box), -1);
    EXPECT_EQ(box.right, 0);
  }
  EXPECT_EQ(tgui_cairo_text_extent(surface.get(), 0, nullptr), 0);
}

TEST(Measure, FollowsTheMapping) {
  const auto draw = [](tgui_surface* surface) {
    tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
    tgui_set_window_ext(surface, 1000, 1000);
    tgui_set_viewport_org(surface, 7, 9);
    tgui_set_viewport_ext(surface, 100, 200);
    select_pen(surface, 1);
    line(surface, 0, 0, 1000, 1000);
  };
  expect_near(extent(draw), {6.5, 8.5, 107.5, 209.5}, 1e-9);
}

TEST(Measure, NothingDrawnHasNoExtent) {
  const Measuring surface = measuring([](tgui_surface*) {});
  tgui_box box = {1, 1, 1, 1};
  EXPECT_EQ(tgui_cairo_extent(surface.get(), &box), -1);
  EXPECT_EQ(box.right, 0);
  EXPECT_EQ(tgui_cairo_text_count(surface.get()), 0);
}

TEST(Measure, HasNoBytes) {
  tgui_surface* surface = tgui_cairo_measure(1, 1);
  char reason[100] = {};
  EXPECT_EQ(tgui_cairo_finish(surface, reason, sizeof reason), -1);
  EXPECT_STREQ(reason, "a surface that measures has no bytes");
}

TEST(Measure, OtherSurfacesAndSizesAreRefused) {
  EXPECT_EQ(tgui_cairo_measure(0, 1), nullptr);
  EXPECT_EQ(tgui_cairo_measure(1, 16385), nullptr);
  tgui_surface* svg = tgui_cairo_svg("", 10, 10);
  line(svg, 0, 0, 5, 5);
  tgui_box box = {};
  EXPECT_EQ(tgui_cairo_extent(svg, &box), -1);
  EXPECT_EQ(tgui_cairo_text_extent(svg, 0, &box), -1);
  EXPECT_EQ(tgui_cairo_text_count(svg), 0);
  tgui_surface_destroy(svg);
  EXPECT_EQ(tgui_cairo_extent(nullptr, &box), -1);
  EXPECT_EQ(tgui_cairo_text_count(nullptr), 0);
}

}  // namespace
