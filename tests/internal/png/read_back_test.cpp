// What is written is read back by another hand: libpng, through Cairo, gives the same pixels.
#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "gui/cairo/png.h"

namespace {

constexpr std::uint32_t kColourBits = 0xFFFFFF;
constexpr std::uint32_t kWhite = kColourBits;

struct Picture {
  int width, height;
  std::vector<std::uint32_t> pixels;

  Picture(int across, int down)
      : width(across), height(down), pixels(static_cast<std::size_t>(across * down), kWhite) {}
  std::string png() const {
    std::string bytes;
    const auto* const data = reinterpret_cast<const unsigned char*>(pixels.data());
    const int stride = width * static_cast<int>(sizeof(std::uint32_t));
    EXPECT_TRUE(tavdcairo::write_png({data, stride, width, height}, bytes));
    return bytes;
  }
};

cairo_status_t take(void* from, unsigned char* data, unsigned int length) {
  auto& bytes = *static_cast<std::string_view*>(from);
  if (bytes.size() < length) return CAIRO_STATUS_READ_ERROR;
  bytes.copy(reinterpret_cast<char*>(data), length);
  bytes.remove_prefix(length);
  return CAIRO_STATUS_SUCCESS;
}

// The colours of a file's pixels; none if it cannot be read or is of another size.
std::vector<std::uint32_t> read(const std::string& file, int width, int height) {
  std::string_view bytes = file;
  const std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> image(
      cairo_image_surface_create_from_png_stream(take, &bytes), cairo_surface_destroy);
  if (cairo_image_surface_get_width(image.get()) != width ||
      cairo_image_surface_get_height(image.get()) != height) {
    return {};
  }
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
  const unsigned char* row = cairo_image_surface_get_data(image.get());
  for (auto at = pixels.begin(); at != pixels.end(); at += width) {
    std::memcpy(&*at, row, static_cast<std::size_t>(width) * sizeof(std::uint32_t));
    row += cairo_image_surface_get_stride(image.get());
  }
  for (std::uint32_t& pixel : pixels) pixel &= kColourBits;
  return pixels;
}

void expect_same_read_back(const Picture& picture) {
  std::vector<std::uint32_t> colours = picture.pixels;
  for (std::uint32_t& pixel : colours) pixel &= kColourBits;
  EXPECT_EQ(read(picture.png(), picture.width, picture.height), colours);
}

// What PNG calls 3 is a palette, 2 three bytes a pixel: the byte behind signature, head of the chunk, width,
// height and bits.
int colour_type(const Picture& picture) {
  constexpr std::size_t kPlace = 8 + 8 + 4 + 4 + 1;
  return picture.png().at(kPlace);
}

TEST(Png, GivesThePixelsBackInEverySizeUpToSomeBlocks) {
  std::mt19937 random(1);
  for (int width = 1; width <= 50; ++width) {
    for (const int height : {1, 2, 3, 17}) {
      SCOPED_TRACE(std::to_string(width) + " by " + std::to_string(height));
      Picture picture(width, height);
      for (std::uint32_t& pixel : picture.pixels) {
        if (random() % 8 == 0) pixel = static_cast<std::uint32_t>(random()) % 40 * 0x50607;
      }
      expect_same_read_back(picture);
    }
  }
}

TEST(Png, GivesThePixelsBackWhereRowsDifferByOnePixel) {
  for (int x = 0; x < 40; ++x) {
    SCOPED_TRACE(x);
    Picture picture(40, 3);
    picture.pixels[static_cast<std::size_t>(40 + x)] = 0x123456;
    expect_same_read_back(picture);
  }
}

TEST(Png, LooksAtTheColourOfAPixelAlone) {
  Picture picture(33, 4);
  std::uint32_t other = 0;
  for (std::uint32_t& pixel : picture.pixels) pixel ^= other++ << 24;
  EXPECT_EQ(colour_type(picture), 3);
  expect_same_read_back(picture);
}

// As many colours as pixels, told apart by all three bytes.
Picture colourful(int width, int height) {
  Picture picture(width, height);
  std::uint32_t colour = 0;
  for (std::uint32_t& pixel : picture.pixels) pixel = colour++ * 0x9E3779 & kColourBits;
  return picture;
}

TEST(Png, HasAPaletteOfUpTo256Colours) {
  const Picture picture = colourful(16, 16);
  EXPECT_EQ(colour_type(picture), 3);
  expect_same_read_back(picture);
}

TEST(Png, HasThreeBytesAPixelFromThe257thColourOn) {
  for (Picture picture : {colourful(257, 1), colourful(1, 257), colourful(100, 100)}) {
    EXPECT_EQ(colour_type(picture), 2);
    expect_same_read_back(picture);
    for (std::size_t i = 0; i < picture.pixels.size(); i += 3) picture.pixels[i] = kWhite;
    expect_same_read_back(picture);
  }
}

}  // namespace
