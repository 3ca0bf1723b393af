#include <gtest/gtest.h>

#include <climits>

#include "drawing.h"

namespace {

class Surface : public testing::Test {
 protected:
  tgui_surface* get() const { return owner_.get(); }
  tgui_state state() const { return state_of(get()); }

 private:
  SurfaceOwner owner_ = recording();
};

testing::AssertionResult is_pair(const std::int32_t (&pair)[2], std::int32_t x, std::int32_t y) {
  return pair[0] == x && pair[1] == y ? testing::AssertionSuccess()
                                      : testing::AssertionFailure() << pair[0] << ", " << pair[1];
}

TEST_F(Surface, StartsAsAFreshDeviceContext) {
  const tgui_state state = this->state();
  EXPECT_EQ(state.pen, tgui_stock_object(TGUI_BLACK_PEN));
  EXPECT_EQ(state.brush, tgui_stock_object(TGUI_WHITE_BRUSH));
  EXPECT_EQ(state.font, tgui_stock_object(TGUI_SYSTEM_FONT));
  EXPECT_EQ(state.text_align, 0U);
  EXPECT_EQ(state.text_colour, 0U);
  EXPECT_EQ(state.background_mode, TGUI_OPAQUE);
  EXPECT_EQ(state.map_mode, TGUI_MM_TEXT);
  EXPECT_TRUE(is_pair(state.window_org, 0, 0));
  EXPECT_TRUE(is_pair(state.window_ext, 1, 1));
  EXPECT_TRUE(is_pair(state.viewport_org, 0, 0));
  EXPECT_TRUE(is_pair(state.viewport_ext, 1, 1));
  EXPECT_TRUE(is_pair(state.position, 0, 0));
}

TEST_F(Surface, SettersAnswerTheFormerValue) {
  EXPECT_EQ(tgui_set_text_align(get(), TGUI_TA_RIGHT | TGUI_TA_BOTTOM), 0U);
  EXPECT_EQ(tgui_set_text_align(get(), 0), 10U);
  EXPECT_EQ(tgui_set_text_colour(get(), 0xFF0000), 0U);
  EXPECT_EQ(tgui_set_text_colour(get(), 0xAA000001), 0xFF0000U);
  EXPECT_EQ(state().text_colour, 1U);
  EXPECT_EQ(tgui_set_background_mode(get(), TGUI_TRANSPARENT), TGUI_OPAQUE);
  EXPECT_EQ(tgui_set_background_mode(get(), TGUI_TRANSPARENT), TGUI_TRANSPARENT);
  EXPECT_EQ(tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC), TGUI_MM_TEXT);
  EXPECT_EQ(tgui_set_map_mode(get(), TGUI_MM_TEXT), TGUI_MM_ANISOTROPIC);
}

TEST_F(Surface, UnknownModesAreRefused) {
  EXPECT_EQ(tgui_set_background_mode(get(), 0), 0);
  EXPECT_EQ(tgui_set_background_mode(get(), 3), 0);
  EXPECT_EQ(tgui_set_map_mode(get(), 0), 0);
  EXPECT_EQ(tgui_set_map_mode(get(), 7), 0);
  EXPECT_EQ(state().background_mode, TGUI_OPAQUE);
  EXPECT_EQ(state().map_mode, TGUI_MM_TEXT);
  EXPECT_EQ(tgui_recording_count(get()), 0);
}

TEST_F(Surface, SelectingReplacesTheObjectOfItsKindOnly) {
  tgui_object* const white = tgui_stock_object(TGUI_WHITE_PEN);
  EXPECT_EQ(tgui_select(get(), white), tgui_stock_object(TGUI_BLACK_PEN));
  EXPECT_EQ(state().pen, white);
  EXPECT_EQ(state().brush, tgui_stock_object(TGUI_WHITE_BRUSH));
  EXPECT_EQ(tgui_select(get(), nullptr), nullptr);
  EXPECT_EQ(state().pen, white);
}

TEST_F(Surface, LinesMoveThePositionAndFiguresDoNot) {
  tgui_move_to(get(), 3, 4);
  tgui_line_to(get(), INT_MIN, INT_MAX);
  EXPECT_TRUE(is_pair(state().position, INT_MIN, INT_MAX));
  tgui_ellipse(get(), 1, 2, 3, 4);
  tgui_arc(get(), 1, 2, 3, 4, 5, 6, 7, 8);
  tgui_text(get(), 1, 2, "a", 1);
  EXPECT_TRUE(is_pair(state().position, INT_MIN, INT_MAX));
}

TEST_F(Surface, ExtentsHaveNoEffectUnderMapModeText) {
  tgui_set_window_ext(get(), 100, 100);
  tgui_set_viewport_ext(get(), 50, 50);
  EXPECT_TRUE(is_pair(state().window_ext, 1, 1));
  EXPECT_TRUE(is_pair(state().viewport_ext, 1, 1));
  EXPECT_EQ(tgui_recording_count(get()), 0);
}

TEST_F(Surface, GoingBackToMapModeTextResetsExtentsAndKeepsOrigins) {
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(get(), 100, -200);
  tgui_set_viewport_ext(get(), 50, 60);
  tgui_set_window_org(get(), 5, 6);
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  EXPECT_TRUE(is_pair(state().window_ext, 100, -200));
  tgui_set_map_mode(get(), TGUI_MM_TEXT);
  EXPECT_TRUE(is_pair(state().window_ext, 1, 1));
  EXPECT_TRUE(is_pair(state().viewport_ext, 1, 1));
  EXPECT_TRUE(is_pair(state().window_org, 5, 6));
}

TEST_F(Surface, AnExtentOfZeroIsRefused) {
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(get(), 10, 20);
  tgui_set_window_ext(get(), 0, 5);
  tgui_set_window_ext(get(), 5, 0);
  tgui_set_viewport_ext(get(), 0, 0);
  EXPECT_TRUE(is_pair(state().window_ext, 10, 20));
  EXPECT_TRUE(is_pair(state().viewport_ext, 1, 1));
}

TEST_F(Surface, MapsLogicalToDeviceUnits) {
  double x = -99;
  double y = -99;
  tgui_set_window_org(get(), 10, 20);
  tgui_set_viewport_org(get(), 1, 2);
  tgui_to_device(get(), 15.5, 25, &x, &y);
  EXPECT_EQ(x, 6.5);
  EXPECT_EQ(y, 7.0);
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(get(), 10000, 10000);
  tgui_set_viewport_ext(get(), 500, -250);
  tgui_to_device(get(), 5010, 5020, &x, &y);
  EXPECT_EQ(x, 251.0);
  EXPECT_EQ(y, -123.0);
}

TEST_F(Surface, MappingIntegerExtremesStaysFinite) {
  double x = 0;
  double y = 0;
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  tgui_set_window_org(get(), INT_MIN, INT_MIN);
  tgui_set_viewport_org(get(), INT_MAX, INT_MIN);
  tgui_set_window_ext(get(), 1, -1);
  tgui_set_viewport_ext(get(), INT_MAX, INT_MIN);
  tgui_to_device(get(), INT_MAX, INT_MAX, &x, &y);
  EXPECT_EQ(x, 4294967295.0 * INT_MAX + INT_MAX);
  EXPECT_EQ(y, 4294967295.0 * INT_MIN / -1 + INT_MIN);
  tgui_to_device(get(), 0, 0, nullptr, nullptr);
}

TEST_F(Surface, RestoringBringsTheWholeStateBack) {
  tgui_object* const font = tgui_stock_object(TGUI_ANSI_VAR_FONT);
  tgui_select(get(), font);
  tgui_move_to(get(), 8, 9);
  EXPECT_EQ(tgui_save(get()), 1);
  tgui_select(get(), tgui_stock_object(TGUI_SYSTEM_FONT));
  tgui_select(get(), tgui_stock_object(TGUI_NULL_BRUSH));
  tgui_set_text_align(get(), 6);
  tgui_set_text_colour(get(), 7);
  tgui_set_background_mode(get(), TGUI_TRANSPARENT);
  tgui_set_map_mode(get(), TGUI_MM_ANISOTROPIC);
  tgui_set_viewport_org(get(), 1, 2);
  tgui_move_to(get(), 0, 0);
  EXPECT_EQ(tgui_restore(get(), 1), 1);
  EXPECT_EQ(state().font, font);
  EXPECT_EQ(state().brush, tgui_stock_object(TGUI_WHITE_BRUSH));
  EXPECT_EQ(state().text_align, 0U);
  EXPECT_EQ(state().text_colour, 0U);
  EXPECT_EQ(state().background_mode, TGUI_OPAQUE);
  EXPECT_EQ(state().map_mode, TGUI_MM_TEXT);
  EXPECT_TRUE(is_pair(state().viewport_org, 0, 0));
  EXPECT_TRUE(is_pair(state().position, 8, 9));
}

TEST_F(Surface, RestoringAnOlderStateDropsTheYoungerOnes) {
  for (int id = 1; id <= 4; ++id) {
    tgui_set_text_colour(get(), static_cast<std::uint32_t>(id));
    EXPECT_EQ(tgui_save(get()), id);
  }
  EXPECT_EQ(tgui_restore(get(), 2), 1);
  EXPECT_EQ(state().text_colour, 2U);
  EXPECT_EQ(tgui_restore(get(), 2), 0);
  EXPECT_EQ(tgui_restore(get(), 3), 0);
  EXPECT_EQ(tgui_save(get()), 2);
}

TEST_F(Surface, NegativeIdsCountBackFromTheLast) {
  for (std::uint32_t colour = 1; colour <= 3; ++colour) {
    tgui_set_text_colour(get(), colour);
    tgui_save(get());
  }
  EXPECT_EQ(tgui_restore(get(), -4), 0);
  EXPECT_EQ(tgui_restore(get(), -2), 1);
  EXPECT_EQ(state().text_colour, 2U);
  EXPECT_EQ(tgui_restore(get(), -1), 1);
  EXPECT_EQ(state().text_colour, 1U);
  EXPECT_EQ(tgui_restore(get(), -1), 0);
}

TEST_F(Surface, BadIdsRestoreNothing) {
  tgui_save(get());
  EXPECT_EQ(tgui_restore(get(), 0), 0);
  EXPECT_EQ(tgui_restore(get(), 2), 0);
  EXPECT_EQ(tgui_restore(get(), INT_MAX), 0);
  EXPECT_EQ(tgui_restore(get(), INT_MIN), 0);
  EXPECT_EQ(tgui_restore(get(), 1), 1);
}

TEST_F(Surface, TextsWithoutCharactersDrawNothing) {
  tgui_text(get(), 1, 2, "abc", 0);
  tgui_text(get(), 1, 2, "abc", -1);
  tgui_text(get(), 1, 2, nullptr, 3);
  tgui_textw(get(), 1, 2, nullptr, 3);
  tgui_textw(get(), 1, 2, u"abc", 0);
  EXPECT_EQ(tgui_recording_count(get()), 0);
}

// A host's table that counts its calls and looks at the state while it is called.
struct Host {
  int selects = 0;
  int lines = 0;
  int releases = 0;
  const tgui_object* pen_seen = nullptr;
  std::int32_t x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  bool destroy = false;
};

tgui_operations host_operations() {
  tgui_operations table{};
  table.size = sizeof table;
  table.select = [](void* context, tgui_surface* surface, const tgui_object*) {
    auto* const host = static_cast<Host*>(context);
    ++host->selects;
    host->pen_seen = state_of(surface).pen;
  };
  table.line_to = [](void* context, tgui_surface* surface, std::int32_t x1, std::int32_t y1, std::int32_t x2,
                     std::int32_t y2) {
    auto* const host = static_cast<Host*>(context);
    ++host->lines;
    host->x1 = x1;
    host->y1 = y1;
    host->x2 = x2;
    host->y2 = y2;
    if (host->destroy) {
      tgui_surface_destroy(surface);
    }
  };
  table.release = [](void* context) { ++static_cast<Host*>(context)->releases; };
  return table;
}

TEST(HostSurface, EntriesSeeTheStateAfterTheChange) {
  Host host;
  tgui_operations table = host_operations();
  tgui_surface* const surface = tgui_surface_create(&table, &host, 32767, 1);
  table = {};  // the surface has its own copy
  EXPECT_EQ(tgui_surface_context(surface), &host);
  int width = 0;
  int height = 0;
  tgui_surface_size(surface, &width, &height);
  EXPECT_EQ(width, 32767);
  EXPECT_EQ(height, 1);
  tgui_select(surface, tgui_stock_object(TGUI_NULL_PEN));
  EXPECT_EQ(host.selects, 1);
  EXPECT_EQ(host.pen_seen, tgui_stock_object(TGUI_NULL_PEN));
  tgui_move_to(surface, 1, 2);
  tgui_line_to(surface, 3, 4);
  EXPECT_EQ(host.lines, 1);
  EXPECT_EQ(host.x1, 1);
  EXPECT_EQ(host.y1, 2);
  EXPECT_EQ(host.x2, 3);
  EXPECT_EQ(host.y2, 4);
  EXPECT_STREQ(tgui_recording_text(surface), "");
  EXPECT_EQ(tgui_recording_count(surface), 0);
  tgui_recording_clear(surface);
  tgui_surface_destroy(surface);
  EXPECT_EQ(host.releases, 1);
  tgui_surface_destroy(surface);
  EXPECT_EQ(host.releases, 1);
}

TEST(HostSurface, MissingEntriesStillChangeTheState) {
  tgui_operations table{};
  table.size = sizeof table;
  const SurfaceOwner surface(tgui_surface_create(&table, nullptr, 10, 10));
  tgui_set_text_align(surface.get(), 6);
  tgui_set_map_mode(surface.get(), TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface.get(), 3, 4);
  tgui_line_to(surface.get(), 5, 6);
  tgui_text(surface.get(), 1, 2, "a", 1);
  EXPECT_EQ(tgui_save(surface.get()), 1);
  EXPECT_EQ(state_of(surface.get()).text_align, 6U);
  EXPECT_TRUE(is_pair(state_of(surface.get()).window_ext, 3, 4));
  EXPECT_TRUE(is_pair(state_of(surface.get()).position, 5, 6));
}

TEST(HostSurface, AnEntryMayDestroyItsSurface) {
  Host host;
  host.destroy = true;
  const tgui_operations table = host_operations();
  tgui_surface* const surface = tgui_surface_create(&table, &host, 10, 10);
  tgui_line_to(surface, 1, 1);
  EXPECT_EQ(host.releases, 1);
  tgui_line_to(surface, 2, 2);
  EXPECT_EQ(host.lines, 1);
}

TEST(HostSurface, BadTablesAndSizesAreRefused) {
  tgui_operations table{};
  EXPECT_EQ(tgui_surface_create(nullptr, nullptr, 10, 10), nullptr);
  EXPECT_EQ(tgui_surface_create(&table, nullptr, 10, 10), nullptr);
  table.size = sizeof table - sizeof(void*);
  EXPECT_EQ(tgui_surface_create(&table, nullptr, 10, 10), nullptr);
  table.size = sizeof table;
  EXPECT_EQ(tgui_surface_create(&table, nullptr, 0, 10), nullptr);
  EXPECT_EQ(tgui_surface_create(&table, nullptr, 10, -1), nullptr);
  EXPECT_EQ(tgui_surface_create(&table, nullptr, 32768, 10), nullptr);
  EXPECT_EQ(tgui_recording_create(0, 0), nullptr);
}

void expect_answers_zero(tgui_surface* surface) {
  tgui_state state;
  int width = 5;
  int height = 5;
  double x = 5;
  double y = 5;
  EXPECT_EQ(tgui_surface_state(surface, &state), -1);
  EXPECT_EQ(tgui_surface_context(surface), nullptr);
  tgui_surface_size(surface, &width, &height);
  EXPECT_EQ(width + height, 0);
  tgui_to_device(surface, 1, 1, &x, &y);
  EXPECT_EQ(x + y, 0.0);
  EXPECT_EQ(tgui_select(surface, tgui_stock_object(TGUI_BLACK_PEN)), nullptr);
  EXPECT_EQ(tgui_set_text_align(surface, 6), 0U);
  EXPECT_EQ(tgui_set_text_colour(surface, 6), 0U);
  EXPECT_EQ(tgui_set_background_mode(surface, 1), 0);
  EXPECT_EQ(tgui_set_map_mode(surface, 8), 0);
  EXPECT_EQ(tgui_save(surface), 0);
  EXPECT_EQ(tgui_restore(surface, -1), 0);
  EXPECT_STREQ(tgui_recording_text(surface), "");
  EXPECT_EQ(tgui_recording_count(surface), 0);
  tgui_recording_clear(surface);
  tgui_move_to(surface, 1, 1);
  tgui_line_to(surface, 1, 1);
  tgui_ellipse(surface, 1, 1, 2, 2);
  tgui_arc(surface, 1, 1, 2, 2, 3, 3, 4, 4);
  tgui_text(surface, 1, 1, "a", 1);
  tgui_textw(surface, 1, 1, u"a", 1);
  tgui_set_window_org(surface, 1, 1);
  tgui_set_window_ext(surface, 1, 1);
  tgui_set_viewport_org(surface, 1, 1);
  tgui_set_viewport_ext(surface, 1, 1);
  tgui_surface_destroy(surface);
}

TEST(HostSurface, NullAnswersZero) {
  expect_answers_zero(nullptr);
}

TEST(HostSurface, ADestroyedOneAnswersZero) {
  tgui_surface* const surface = tgui_recording_create(10, 10);
  tgui_surface_destroy(surface);
  expect_answers_zero(surface);
}

}  // namespace
