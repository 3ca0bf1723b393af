// Pictures of pixels in the memory that others left, and in progress beside others.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>

#include "tavdgui/tavdcairo.h"

namespace {

constexpr std::int32_t kWidth = 120;
constexpr std::int32_t kHeight = 80;

tgui_surface* begun(std::int32_t width = kWidth) {
  return tgui_cairo_png("x.png", width, kHeight);
}

void draw_frame(tgui_surface* surface) {
  tgui_move_to(surface, 10, 10);
  for (const auto& [x, y] : {std::array{100, 10}, {100, 70}, {10, 70}, {10, 10}}) tgui_line_to(surface, x, y);
}

std::string ended(tgui_surface* surface) {
  const auto keep = [](void* kept, const void* bytes, std::size_t length) {
    static_cast<std::string*>(kept)->assign(static_cast<const char*>(bytes), length);
    return 0;
  };
  std::string bytes;
  EXPECT_EQ(tgui_cairo_finish_into(surface, keep, &bytes, nullptr, 0), 0);
  return bytes;
}

std::string frame(std::int32_t width = kWidth) {
  tgui_surface* const surface = begun(width);
  draw_frame(surface);
  return ended(surface);
}

}  // namespace

TEST(Workplace, HasNothingOfThePictureBefore) {
  const std::string empty = ended(begun());
  const std::string with_frame = frame();
  EXPECT_NE(with_frame, empty);
  EXPECT_EQ(ended(begun()), empty);
  for (const std::int32_t width : {kWidth + 1, 4 * kWidth, kWidth - 10, 2000}) frame(width);
  EXPECT_EQ(ended(begun()), empty);
  EXPECT_EQ(frame(), with_frame);
}

TEST(Workplace, OneThreadHasSeveralPicturesInProgress) {
  const std::string alone = frame();
  std::array<tgui_surface*, 5> surfaces = {};
  for (tgui_surface*& surface : surfaces) surface = begun();
  for (tgui_surface* const surface : surfaces) draw_frame(surface);
  for (tgui_surface* const surface : surfaces) EXPECT_EQ(ended(surface), alone);
}

TEST(Workplace, PicturesAreEndedByOtherThreadsThanBeganThem) {
  const std::string alone = frame();
  tgui_surface* first = nullptr;
  tgui_surface* second = nullptr;
  std::thread([&] {
    first = begun();
    second = begun();
    draw_frame(first);
  }).join();
  EXPECT_EQ(ended(first), alone);
  tgui_surface_destroy(second);
  EXPECT_EQ(frame(), alone);
}

TEST(Workplace, PicturesThatAreKeptHoldUpNobody) {
  const std::string alone = frame();
  std::array<tgui_surface*, 8> kept = {};
  for (tgui_surface*& surface : kept) std::thread([&] { surface = begun(); }).join();
  std::array<std::thread, 8> threads;
  for (std::thread& thread : threads) {
    thread = std::thread([&] {
      for (int picture = 0; picture < 20; ++picture) EXPECT_EQ(frame(), alone);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (tgui_surface* const surface : kept) {
    draw_frame(surface);
    EXPECT_EQ(ended(surface), alone);
  }
}
