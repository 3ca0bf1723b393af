#include <gtest/gtest.h>

#include "drawing.h"
#include "windows.h"

namespace {

class Painting : public testing::Test {
 protected:
  Painting() { tgui_set_surface(window, surface.get()); }
  ~Painting() override { tgui_destroy_window(window); }

  WatchedClass watched;
  SurfaceOwner surface = recording();
  tgui_window* window = watched.window();
};

TEST_F(Painting, BeginsWithAFreshStateAndBringsTheFormerBack) {
  tgui_object* const pen = tgui_create_pen(0, 3, 0);
  tgui_select(surface.get(), pen);
  tgui_set_map_mode(surface.get(), TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface.get(), 100, 100);
  tgui_save(surface.get());
  tgui_recording_clear(surface.get());

  EXPECT_EQ(tgui_begin_paint(window), surface.get());
  EXPECT_EQ(tgui_is_invalid(window), 0);
  EXPECT_EQ(state_of(surface.get()).pen, tgui_stock_object(TGUI_BLACK_PEN));
  EXPECT_EQ(state_of(surface.get()).map_mode, TGUI_MM_TEXT);
  EXPECT_EQ(tgui_restore(surface.get(), -1), 0);
  tgui_set_text_align(surface.get(), 6);
  EXPECT_EQ(tgui_save(surface.get()), 1);
  tgui_end_paint(window);

  EXPECT_EQ(state_of(surface.get()).pen, pen);
  EXPECT_EQ(state_of(surface.get()).map_mode, TGUI_MM_ANISOTROPIC);
  EXPECT_EQ(state_of(surface.get()).window_ext[0], 100);
  EXPECT_EQ(state_of(surface.get()).text_align, 0U);
  EXPECT_EQ(taken(surface.get()), "align center+top\nsave 1\n");
  EXPECT_EQ(tgui_restore(surface.get(), -1), 1);
  EXPECT_EQ(tgui_restore(surface.get(), -1), 0);
  tgui_delete_object(pen);
}

TEST_F(Painting, AnswersNullWithoutASurfaceAndUnmarksTheWindow) {
  tgui_set_surface(window, nullptr);
  EXPECT_EQ(tgui_is_invalid(window), 1);
  EXPECT_EQ(tgui_begin_paint(window), nullptr);
  EXPECT_EQ(tgui_is_invalid(window), 0);
  tgui_end_paint(window);
  tgui_invalidate(window);
  EXPECT_EQ(tgui_is_invalid(window), 1);
}

TEST_F(Painting, EndingTwiceOrWithoutBeginningChangesNothing) {
  tgui_set_text_colour(surface.get(), 5);
  tgui_end_paint(window);
  EXPECT_EQ(state_of(surface.get()).text_colour, 5U);
  tgui_begin_paint(window);
  tgui_end_paint(window);
  tgui_set_text_colour(surface.get(), 6);
  tgui_end_paint(window);
  EXPECT_EQ(state_of(surface.get()).text_colour, 6U);
}

TEST_F(Painting, BeginningTwiceStillBringsTheFirstFormerStateBack) {
  tgui_set_text_colour(surface.get(), 5);
  tgui_begin_paint(window);
  tgui_set_text_colour(surface.get(), 6);
  tgui_begin_paint(window);
  EXPECT_EQ(state_of(surface.get()).text_colour, 0U);
  tgui_end_paint(window);
  EXPECT_EQ(state_of(surface.get()).text_colour, 5U);
}

TEST_F(Painting, WindowsOnOneSurfacePaintInsideOneAnother) {
  tgui_window* const inner = watched.window(2, window);
  tgui_set_surface(inner, surface.get());
  tgui_begin_paint(window);
  tgui_set_text_colour(surface.get(), 7);
  tgui_begin_paint(inner);
  EXPECT_EQ(state_of(surface.get()).text_colour, 0U);
  tgui_end_paint(inner);
  EXPECT_EQ(state_of(surface.get()).text_colour, 7U);
  tgui_end_paint(window);
  EXPECT_EQ(state_of(surface.get()).text_colour, 0U);
}

TEST_F(Painting, AWindowThatGoesWhilePaintingGivesTheSurfaceBack) {
  tgui_set_text_colour(surface.get(), 5);
  tgui_begin_paint(window);
  tgui_set_text_colour(surface.get(), 6);
  tgui_destroy_window(window);
  EXPECT_EQ(state_of(surface.get()).text_colour, 5U);
}

TEST_F(Painting, ASurfaceThatGoesIsNotPaintedOn) {
  tgui_begin_paint(window);
  surface.reset();
  tgui_end_paint(window);
  EXPECT_EQ(tgui_begin_paint(window), nullptr);
}

TEST_F(Painting, AnotherSurfaceTakesOverAtTheNextPainting) {
  const SurfaceOwner second = recording();
  tgui_set_text_colour(surface.get(), 5);
  tgui_begin_paint(window);
  tgui_set_surface(window, second.get());
  tgui_end_paint(window);
  EXPECT_EQ(state_of(surface.get()).text_colour, 5U);
  EXPECT_EQ(tgui_begin_paint(window), second.get());
  tgui_end_paint(window);
}

}  // namespace
