// Lines of text are kept from picture to picture: what is drawn must not depend on what was drawn before.
#include <cairo.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/decimal_comma.h"
#include "tavdgui/tavdcairo.h"

// Only there under AddressSanitizer.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace {

namespace fs = std::filesystem;

using Draw = std::function<void(tgui_surface*)>;

enum class Format { kPng, kSvg, kPdf };
constexpr Format kFormats[] = {Format::kPng, Format::kSvg, Format::kPdf};

// The bytes of a picture of 300 by 200; in points on a page, so that texts are as large as in the others.
std::string picture(Format format, const Draw& draw) {
  constexpr double kPoint = 25.4 / 72;  // mm
  const fs::path path = fs::temp_directory_path() / ("tavd-shaped-" + std::to_string(getpid()));
  tgui_surface* surface = format == Format::kPng ? tgui_cairo_png(path.c_str(), 300, 200)
                          : format == Format::kSvg
                              ? tgui_cairo_svg(path.c_str(), 300, 200)
                              : tgui_cairo_pdf(path.c_str(), 300, 200, 300 * kPoint, 200 * kPoint);
  draw(surface);
  EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  fs::remove(path);
  return bytes.str();
}

tgui_font font(int height) {
  tgui_font font = {};
  font.height = height;
  font.weight = 400;
  std::strcpy(font.face, "Arial");
  return font;
}

// Several scripts, of which some need shaping and fonts of their own, in a cell whose width and height count.
void write(tgui_surface* surface, const tgui_font& font, int x, int y, const std::u16string& text) {
  tgui_object* const object = tgui_create_font(&font);
  tgui_object* const former = tgui_select(surface, object);
  tgui_set_text_align(surface, TGUI_TA_CENTER + TGUI_TA_BOTTOM);
  tgui_set_background_mode(surface, TGUI_OPAQUE);
  tgui_textw(surface, x, y, text.data(), static_cast<int>(text.size()));
  tgui_select(surface, former);
  tgui_delete_object(object);
}

const std::u16string kText = u"fi 12 Zaz\u0301 Привет 你好 مرحبا";

// The same text in looks that differ in one thing each.
std::vector<Draw> looks() {
  const auto look = [](const std::function<void(tgui_font&)>& change) {
    return [change](tgui_surface* surface) {
      tgui_font changed = font(-14);
      change(changed);
      write(surface, changed, 150, 100, kText);
    };
  };
  return {
      look([](tgui_font&) {}),
      look([](tgui_font& f) { f.height = -15; }),
      look([](tgui_font& f) { f.height = 14; }),
      look([](tgui_font& f) { f.escapement = 900; }),
      look([](tgui_font& f) { f.escapement = -900; }),
      look([](tgui_font& f) { f.escapement = 1; }),
      look([](tgui_font& f) { f.weight = 700; }),
      look([](tgui_font& f) { f.italic = 1; }),
      look([](tgui_font& f) { f.underline = 1; }),
      look([](tgui_font& f) { f.strikeout = 1; }),
      look([](tgui_font& f) { std::strcpy(f.face, "DejaVu Serif"); }),
      [](tgui_surface* surface) { write(surface, font(-14), 150, 100, kText + u"."); },
  };
}

// More lines, fonts or turns than are kept at a time.
void write_many(tgui_surface* surface) {
  for (int i = 0; i < 1100; ++i) {
    const std::string number = std::to_string(i);
    write(surface, font(-10), 20 + i % 250, 20 + i % 170, std::u16string(number.begin(), number.end()));
  }
}
void write_in_many_fonts(tgui_surface* surface) {
  for (int i = 0; i < 150; ++i) write(surface, font(-10 - i), 150, 100, u"8");
}
void write_in_many_directions(tgui_surface* surface) {
  for (int i = 0; i < 100; ++i) {
    tgui_font turned = font(-10);
    turned.escapement = 36 * i;
    write(surface, turned, 150, 100, u"spoke");
  }
}
void write_much(tgui_surface* surface) {
  for (int i = 0; i < 5; ++i) {
    write(surface, font(-10), i, 100, std::u16string(20000, static_cast<char16_t>(u'a' + i)));
  }
}

const std::vector<Draw> kMany = {write_many, write_in_many_fonts, write_in_many_directions, write_much};

TEST(ShapedText, NoTwoLooksAreTakenForEachOther) {
  for (const Format format : kFormats) {
    std::set<std::string> different;
    for (const Draw& draw : looks()) different.insert(picture(format, draw));
    EXPECT_EQ(different.size(), looks().size()) << "format " << static_cast<int>(format);
  }
}

TEST(ShapedText, SecondPictureEqualsTheFirstWhateverStoodBetween) {
  for (const Format format : kFormats) {
    std::vector<Draw> draws = looks();
    std::vector<std::string> first;
    first.reserve(draws.size());
    for (const Draw& draw : draws) first.push_back(picture(format, draw));
    std::reverse(draws.begin(), draws.end());
    std::reverse(first.begin(), first.end());
    for (std::size_t i = 0; i < draws.size(); ++i) {
      for (const Format other : kFormats) picture(other, draws[i == 0 ? 1 : 0]);
      EXPECT_TRUE(picture(format, draws[i]) == first[i])
          << "look " << i << " from the end, format " << static_cast<int>(format);
    }
  }
}

TEST(ShapedText, LooksInOnePictureStandAsInPicturesOfTheirOwn) {
  // Each look in a quarter of its own, far enough apart: the pixels of the whole are those of the parts.
  constexpr std::size_t kPixels = std::size_t{400} * 400;
  const auto pixels = [](const std::vector<std::pair<int, int>>& quarters) {
    cairo_surface_t* image = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 400, 400);
    cairo_t* cairo = cairo_create(image);
    cairo_set_source_rgb(cairo, 1, 1, 1);
    cairo_paint(cairo);
    tgui_surface* surface = tgui_cairo_context(cairo, 400, 400);
    for (const auto& [x, y] : quarters) {
      tgui_font turned = font(-20);
      turned.escapement = x == 100 ? 0 : 900;
      turned.italic = y == 100 ? 0 : 1;
      write(surface, turned, x, y, u"12 fi");
    }
    EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
    cairo_surface_flush(image);
    const auto* data = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(image));
    std::vector<std::uint32_t> result(data, data + kPixels);
    for (std::uint32_t& pixel : result) pixel &= 0xFFFFFF;
    cairo_destroy(cairo);
    cairo_surface_destroy(image);
    return result;
  };
  const std::vector<std::pair<int, int>> quarters = {{100, 100}, {300, 100}, {100, 300}, {300, 300}};
  std::vector<std::uint32_t> parts(kPixels, 0xFFFFFF);
  for (const auto& quarter : quarters) {
    const std::vector<std::uint32_t> part = pixels({quarter});
    EXPECT_LT(std::count(part.begin(), part.end(), 0xFFFFFFU), std::ptrdiff_t{kPixels});
    for (std::size_t i = 0; i < parts.size(); ++i) parts[i] &= part[i];
  }
  EXPECT_TRUE(pixels(quarters) == parts);
}

TEST(ShapedText, PictureStaysTheSameWhenMoreWasDrawnThanIsKept) {
  const auto all = [] {
    std::vector<std::string> pictures;
    for (const Format format : kFormats) {
      for (const Draw& draw : looks()) pictures.push_back(picture(format, draw));
    }
    return pictures;
  };
  const std::vector<std::string> before = all();
  for (const Draw& many : kMany) {
    picture(Format::kPng, many);
    EXPECT_TRUE(all() == before);
  }
}

TEST(ShapedText, PictureOfManyTextsIsTheSameTwice) {
  for (const Draw& many : kMany) {
    EXPECT_TRUE(picture(Format::kPng, many) == picture(Format::kPng, many));
  }
}

// A host's own contexts may scale the same text differently, and look at fonts differently.
TEST(ShapedText, ContextsOfTheHostDoNotMix) {
  const auto pixels = [](double scale, cairo_format_t format) {
    cairo_surface_t* image = cairo_image_surface_create(format, 300, 200);
    cairo_t* cairo = cairo_create(image);
    cairo_scale(cairo, scale, scale);
    tgui_surface* surface = tgui_cairo_context(cairo, 300, 200);
    write(surface, font(-14), 100, 60, kText);
    EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
    cairo_surface_flush(image);
    std::string result(reinterpret_cast<const char*>(cairo_image_surface_get_data(image)),
                       static_cast<std::size_t>(cairo_image_surface_get_stride(image)) * 200);
    cairo_destroy(cairo);
    cairo_surface_destroy(image);
    return result;
  };
  const std::string plain = pixels(1, CAIRO_FORMAT_ARGB32);
  const std::string larger = pixels(1.5, CAIRO_FORMAT_ARGB32);
  const std::string grey = pixels(1, CAIRO_FORMAT_A8);
  EXPECT_NE(plain, larger);
  EXPECT_TRUE(pixels(1, CAIRO_FORMAT_ARGB32) == plain);
  EXPECT_TRUE(pixels(1, CAIRO_FORMAT_A8) == grey);
  EXPECT_TRUE(pixels(1.5, CAIRO_FORMAT_ARGB32) == larger);
}

TEST(ShapedText, PictureIsTheSameUnderADecimalComma) {
  const auto lines_and_text = [](tgui_surface* surface) {
    tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
    tgui_set_window_ext(surface, 7, 7);
    tgui_move_to(surface, 10, 10);
    tgui_line_to(surface, 501, 303);
    tgui_font turned = font(-80);
    turned.escapement = 333;
    write(surface, turned, 1003, 701, u"1.5 Pa");
  };
  for (const Format format : kFormats) {
    const std::string expected = picture(format, lines_and_text);
    const tavdtest::DecimalCommaLocale locale;
    EXPECT_TRUE(picture(format, lines_and_text) == expected) << "format " << static_cast<int>(format);
  }
}

// Bytes that the process holds: the sanitizer's own count of what is allocated where it keeps freed memory
// for a while, otherwise what is resident.
std::size_t memory_held() {
  if (__sanitizer_get_current_allocated_bytes != nullptr) return __sanitizer_get_current_allocated_bytes();
  std::size_t all = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> all >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// One text in `count` sizes from `from` up, each a hundredth of a device unit above the last.
void write_in_sizes(int from, int count) {
  constexpr int kLogical = 100;  // per device unit
  cairo_surface_t* image = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 300, 200);
  cairo_t* cairo = cairo_create(image);
  tgui_surface* surface = tgui_cairo_context(cairo, 300, 200);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, kLogical, kLogical);
  for (int i = 0; i < count; ++i) {
    const tgui_font sized = font(-(from * kLogical + i));
    tgui_object* const object = tgui_create_font(&sized);
    tgui_object* const former = tgui_select(surface, object);
    tgui_text(surface, 100 * kLogical, 100 * kLogical, "12 Pa", 5);
    tgui_select(surface, former);
    tgui_delete_object(object);
  }
  EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
  cairo_destroy(cairo);
  cairo_surface_destroy(image);
}

TEST(ShapedText, MemoryDoesNotGrowWithTheNumberOfSizes) {
  // A font that is kept takes 20 KB and more. Under the sanitizer, where each takes longer, fewer do.
  constexpr std::size_t kMostGrowth = 4096;  // bytes per size
  const int sizes = __sanitizer_get_current_allocated_bytes != nullptr ? 512 : 2000;
  write_in_sizes(20, 300);  // until every cache is as full as it gets
  const std::size_t before = memory_held();
  write_in_sizes(23, sizes);
  const std::size_t after = memory_held();
  EXPECT_LT(after, before + kMostGrowth * static_cast<std::size_t>(sizes));
}

}  // namespace
