// Pictures are checked by what is in them: PNG files are read back pixel by pixel, SVG and PDF as text.
#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tavdgui/tavdcairo.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

constexpr std::uint32_t kRed = 0x0000FF;  // 0x00BBGGRR
constexpr std::uint32_t kBlue = 0xFF0000;

std::string contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string output_of(const std::string& command) {
  std::string text;
  std::FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 256> piece;
  while (std::fgets(piece.data(), piece.size(), pipe) != nullptr) {
    text += piece.data();
  }
  pclose(pipe);
  return text;
}

// Pixels of a PNG file.
class Pixels {
 public:
  explicit Pixels(const fs::path& path) : surface_(cairo_image_surface_create_from_png(path.c_str())) {}
  ~Pixels() { cairo_surface_destroy(surface_); }
  Pixels(const Pixels&) = delete;
  Pixels& operator=(const Pixels&) = delete;

  int width() const { return cairo_image_surface_get_width(surface_); }
  int height() const { return cairo_image_surface_get_height(surface_); }
  // 0xRRGGBB
  std::uint32_t at(int x, int y) const {
    std::uint32_t value;
    std::memcpy(&value,
                cairo_image_surface_get_data(surface_) + y * cairo_image_surface_get_stride(surface_) + x * 4,
                4);
    return value & 0xFFFFFF;
  }
  struct Box {
    int left, top, right, bottom;
  };
  // The smallest box around everything that is not white.
  Box ink() const {
    Box box = {width(), height(), -1, -1};
    for (int y = 0; y < height(); ++y) {
      for (int x = 0; x < width(); ++x) {
        if (at(x, y) != 0xFFFFFF) {
          box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                 std::max(box.bottom, y)};
        }
      }
    }
    return box;
  }

 private:
  cairo_surface_t* surface_;
};

class Picture : public testing::Test {
 protected:
  Picture() { fs::create_directories(folder_); }
  ~Picture() override { fs::remove_all(folder_); }

  fs::path path(const std::string& name) const { return folder_ / name; }

  // Draws to a PNG file of 200 by 100 pixels and reads it back.
  Pixels png(const std::function<void(tgui_surface*)>& draw) {
    tgui_surface* surface = tgui_cairo_png(path("picture.png").c_str(), 200, 100);
    draw(surface);
    EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
    return Pixels(path("picture.png"));
  }

  fs::path folder_ = fs::temp_directory_path() / ("tavd-picture-" + std::to_string(getpid()));
};

void select_pen(tgui_surface* surface, int style, int width, std::uint32_t colour) {
  tgui_select(surface, tgui_create_pen(style, width, colour));
}

void line(tgui_surface* surface, int x1, int y1, int x2, int y2) {
  tgui_move_to(surface, x1, y1);
  tgui_line_to(surface, x2, y2);
}

void select_font(tgui_surface* surface, int height, int escapement = 0) {
  tgui_font font = {};
  font.height = height;
  font.escapement = escapement;
  font.weight = 400;
  std::strcpy(font.face, "Arial");
  tgui_select(surface, tgui_create_font(&font));
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
}

void text(tgui_surface* surface, int x, int y, const char* characters) {
  tgui_text(surface, x, y, characters, static_cast<int>(std::strlen(characters)));
}

template <std::size_t N>
void textw(tgui_surface* surface, int x, int y, const char16_t (&characters)[N]) {
  tgui_textw(surface, x, y, characters, N - 1);
}

void text_at_origin(tgui_surface* surface, const char* characters) {
  text(surface, 0, 0, characters);
}

// A little of everything.
void draw_all(tgui_surface* surface) {
  select_pen(surface, TGUI_PEN_SOLID, 3, kRed);
  line(surface, 10, 10, 190, 90);
  tgui_line_to(surface, 190, 10);
  select_pen(surface, TGUI_PEN_DOT, 1, kBlue);
  tgui_ellipse(surface, 20, 20, 80, 80);
  tgui_arc(surface, 100, 20, 160, 80, 160, 50, 130, 20);
  select_font(surface, -20);
  text(surface, 10, 10, "\xC4ly <&\"> 100");
  textw(surface, 10, 40, u"Zażółć Привет 你好 مرحبا");
  select_font(surface, -12, 900);
  text(surface, 5, 90, "upward");
}

TEST_F(Picture, PngIsWhiteAndOfTheSizeAskedFor) {
  const Pixels pixels = png([](tgui_surface*) {});
  EXPECT_EQ(pixels.width(), 200);
  EXPECT_EQ(pixels.height(), 100);
  EXPECT_EQ(pixels.ink().right, -1);
}

TEST_F(Picture, ThinLineAlongAnAxisFillsOneRowOfPixels) {
  const Pixels pixels = png([](tgui_surface* surface) { line(surface, 20, 30, 180, 30); });
  EXPECT_EQ(pixels.at(100, 29), 0xFFFFFF);
  EXPECT_EQ(pixels.at(100, 30), 0x000000);
  EXPECT_EQ(pixels.at(100, 31), 0xFFFFFF);
}

TEST_F(Picture, PenOfTwoFillsTwoRowsOfPixels) {
  const Pixels pixels = png([](tgui_surface* surface) {
    select_pen(surface, TGUI_PEN_SOLID, 2, kBlue);
    line(surface, 20, 30, 180, 30);
  });
  EXPECT_EQ(pixels.at(100, 28), 0xFFFFFF);
  EXPECT_EQ(pixels.at(100, 29), 0x0000FF);
  EXPECT_EQ(pixels.at(100, 30), 0x0000FF);
  EXPECT_EQ(pixels.at(100, 31), 0xFFFFFF);
}

TEST_F(Picture, PenWidthIsInLogicalUnitsAndAtLeastOnePixel) {
  const auto drawn = [](int width) {
    return [width](tgui_surface* surface) {
      tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
      tgui_set_window_ext(surface, 10000, 10000);
      tgui_set_viewport_ext(surface, 200, 100);
      select_pen(surface, TGUI_PEN_SOLID, width, 0);
      line(surface, 5000, 2000, 5000, 8000);
    };
  };
  EXPECT_EQ(png(drawn(250)).ink().right - png(drawn(250)).ink().left + 1, 5);  // 250 of 10000 on 200 pixels
  EXPECT_EQ(png(drawn(1)).ink().right - png(drawn(1)).ink().left + 1, 1);
}

TEST_F(Picture, NullPenDrawsNothing) {
  const Pixels pixels = png([](tgui_surface* surface) {
    select_pen(surface, TGUI_PEN_NULL, 1, 0);
    line(surface, 20, 30, 180, 30);
  });
  EXPECT_EQ(pixels.ink().right, -1);
}

TEST_F(Picture, DottedLineHasGaps) {
  const Pixels pixels = png([](tgui_surface* surface) {
    select_pen(surface, TGUI_PEN_DOT, 1, 0);
    line(surface, 20, 30, 180, 30);
  });
  int black = 0;
  int white = 0;
  for (int x = 25; x < 175; ++x) {
    black += pixels.at(x, 30) == 0x000000 ? 1 : 0;
    white += pixels.at(x, 30) == 0xFFFFFF ? 1 : 0;
  }
  EXPECT_GT(black, 30);
  EXPECT_GT(white, 30);
}

TEST_F(Picture, EllipseIsFilledWithTheBrushOverWhatIsThere) {
  const Pixels pixels = png([](tgui_surface* surface) {
    line(surface, 0, 50, 200, 50);
    tgui_ellipse(surface, 50, 20, 150, 80);  // the stock brush is white
    tgui_select(surface, tgui_stock_object(TGUI_NULL_BRUSH));
    tgui_ellipse(surface, 160, 40, 180, 60);
    tgui_select(surface, tgui_stock_object(TGUI_LTGRAY_BRUSH));
    tgui_ellipse(surface, 2, 2, 22, 22);
  });
  EXPECT_EQ(pixels.at(100, 50), 0xFFFFFF);
  EXPECT_EQ(pixels.at(170, 50), 0x000000);
  EXPECT_EQ(pixels.at(12, 12), 0xC0C0C0);
}

TEST_F(Picture, ArcRunsCounterClockwiseFromStartToEnd) {
  const Pixels pixels = png([](tgui_surface* surface) {
    select_pen(surface, TGUI_PEN_SOLID, 3, 0);
    tgui_arc(surface, 60, 10, 140, 90, 140, 50, 100, 10);  // from the right to the top: one quarter
  });
  const Pixels::Box ink = pixels.ink();
  EXPECT_GE(ink.left, 97);
  EXPECT_LE(ink.bottom, 53);
  EXPECT_NEAR(ink.right, 141, 2);
  EXPECT_NEAR(ink.top, 9, 2);
}

TEST_F(Picture, ArcWithEqualRaysIsTheWholeEllipse) {
  const Pixels::Box ink =
      png([](tgui_surface* surface) { tgui_arc(surface, 60, 10, 140, 90, 140, 50, 140, 50); }).ink();
  EXPECT_NEAR(ink.left, 60, 1);
  EXPECT_NEAR(ink.right, 140, 1);
  EXPECT_NEAR(ink.bottom, 90, 1);
}

TEST_F(Picture, TextStandsWhereItsAlignmentSays) {
  const auto ink = [this](unsigned align) {
    return png([align](tgui_surface* surface) {
             select_font(surface, -20);
             tgui_set_text_align(surface, align);
             text(surface, 100, 50, "HHHH");
           })
        .ink();
  };
  const Pixels::Box left = ink(TGUI_TA_LEFT);
  EXPECT_NEAR(left.left, 100, 3);
  EXPECT_GE(left.top, 50);  // the reference point is the top of the cell
  EXPECT_LE(left.bottom, 75);
  const Pixels::Box right = ink(TGUI_TA_RIGHT + TGUI_TA_BOTTOM);
  EXPECT_NEAR(right.right, 100, 3);
  EXPECT_LE(right.bottom, 50);  // and now its bottom
  const Pixels::Box centre = ink(TGUI_TA_CENTER + TGUI_TA_BASELINE);
  EXPECT_NEAR((centre.left + centre.right) / 2.0, 100, 1.5);
  EXPECT_NEAR(centre.bottom, 49, 1);
  EXPECT_NEAR(centre.bottom - centre.top + 1, 20 * 0.72,
              2);  // capitals are some 0.72 of the character height
}

TEST_F(Picture, EscapementOfNinetyDegreesRunsUpward) {
  const Pixels::Box ink = png([](tgui_surface* surface) {
                            select_font(surface, -20, 900);
                            text(surface, 100, 90, "HHHH");
                          }).ink();
  EXPECT_GE(ink.left, 100);
  EXPECT_LE(ink.right, 125);
  EXPECT_NEAR(ink.bottom, 90, 3);
  EXPECT_LT(ink.top, 50);
}

TEST_F(Picture, TextKeepsItsShapeWhenTheAxesAreStretchedUnevenly) {
  const auto width = [this](int viewport_width) {
    const Pixels::Box ink = png([viewport_width](tgui_surface* surface) {
                              tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
                              tgui_set_window_ext(surface, 1000, 1000);
                              tgui_set_viewport_ext(surface, viewport_width, 100);
                              select_font(surface, -200);
                              text(surface, 0, 0, "HH");
                            }).ink();
    return ink.right - ink.left;
  };
  EXPECT_EQ(width(100), width(200));
}

TEST_F(Picture, TextColourAndOpaqueBackground) {
  const Pixels pixels = png([](tgui_surface* surface) {
    select_pen(surface, TGUI_PEN_SOLID, 60, 0);
    line(surface, 0, 50, 200, 50);
    select_font(surface, -30);
    tgui_set_background_mode(surface, TGUI_OPAQUE);
    tgui_set_text_colour(surface, kRed);
    text(surface, 20, 30, "H");
  });
  int red = 0;
  int white = 0;
  for (int x = 20; x < 45; ++x) {
    red += pixels.at(x, 45) == 0xFF0000 ? 1 : 0;
    white += pixels.at(x, 55) == 0xFFFFFF ? 1 : 0;
  }
  EXPECT_GT(red, 2);
  EXPECT_GT(white, 5);
  EXPECT_EQ(pixels.at(150, 45), 0x000000);
}

// The drawing on a cairo context of our own shows which pixels the file must have.
class PngPixels : public Picture {
 protected:
  struct Result {
    std::size_t colours;
    int colour_type;  // of the file's header
  };
  // Draws the same to a file and to an image, compares all pixels, and tells what the file is made of.
  Result compare(int width, int height, const std::function<void(tgui_surface*)>& draw) {
    tgui_surface* to_file = tgui_cairo_png(path("a.png").c_str(), width, height);
    draw(to_file);
    EXPECT_EQ(tgui_cairo_finish(to_file, nullptr, 0), 0);
    const Pixels pixels(path("a.png"));
    EXPECT_EQ(pixels.width(), width);
    EXPECT_EQ(pixels.height(), height);

    cairo_surface_t* image = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    cairo_t* cairo = cairo_create(image);
    cairo_set_source_rgb(cairo, 1, 1, 1);
    cairo_paint(cairo);
    tgui_surface* to_image = tgui_cairo_context(cairo, width, height);
    draw(to_image);
    EXPECT_EQ(tgui_cairo_finish(to_image, nullptr, 0), 0);
    cairo_surface_flush(image);
    std::set<std::uint32_t> colours;
    int different = 0;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        std::uint32_t pixel;
        std::memcpy(&pixel,
                    cairo_image_surface_get_data(image) + y * cairo_image_surface_get_stride(image) + x * 4,
                    4);
        colours.insert(pixel & 0xFFFFFF);
        different += pixels.at(x, y) == (pixel & 0xFFFFFF) ? 0 : 1;
      }
    }
    EXPECT_EQ(different, 0);
    cairo_destroy(cairo);
    cairo_surface_destroy(image);
    constexpr std::size_t kColourType = 25;  // place in the file
    return {colours.size(), contents(path("a.png"))[kColourType]};
  }
};

// Upright stripes of two pixels, each in a colour of its own, from edge to edge.
void draw_stripes(tgui_surface* surface, int n) {
  for (int i = 0; i < n; ++i) {
    select_pen(surface, TGUI_PEN_SOLID, 2, static_cast<std::uint32_t>(i * 7 + (i % 200) * 0x010000));
    line(surface, 2 * i + 1, -10, 2 * i + 1, 20);
  }
}

constexpr int kTrueColour = 2;
constexpr int kPalette = 3;

TEST_F(PngPixels, LinesAndTextOfFewColoursComeBackExactlyFromAPalette) {
  const Result result = compare(201, 100, [](tgui_surface* surface) {
    tgui_move_to(surface, 5, 5);
    tgui_line_to(surface, 190, 77);
    tgui_line_to(surface, 180, 13);
    select_font(surface, -20);
    text(surface, 10, 40, "100 Pa");
  });
  EXPECT_GT(result.colours, 10u);
  EXPECT_EQ(result.colour_type, kPalette);
}

TEST_F(PngPixels, EverythingInManyColoursComesBackExactlyFromTrueColour) {
  const Result result = compare(1300, 300, [](tgui_surface* surface) {
    draw_stripes(surface, 640);
    select_pen(surface, TGUI_PEN_DOT, 3, kRed);
    line(surface, 10, 30, 1190, 270);
    tgui_ellipse(surface, 20, 120, 80, 180);
    tgui_arc(surface, 100, 120, 160, 180, 160, 150, 130, 120);
    select_font(surface, -30);
    textw(surface, 10, 240, u"Zażółć Привет 你好 مرحبا");
  });
  EXPECT_GT(result.colours, 600u);
  EXPECT_EQ(result.colour_type, kTrueColour);
}

TEST_F(PngPixels, PaletteTakesTwoHundredAndFiftySixColoursAndNoMore) {
  for (const int n : {1, 2, 255, 256, 257}) {
    const Result result = compare(2 * n, 3, [n](tgui_surface* surface) { draw_stripes(surface, n); });
    EXPECT_EQ(result.colours, static_cast<std::size_t>(n));
    EXPECT_EQ(result.colour_type, n <= 256 ? kPalette : kTrueColour) << n << " colours";
  }
}

TEST_F(PngPixels, OnePixelAndAnEmptyPictureAreWhite) {
  EXPECT_EQ(compare(1, 1, [](tgui_surface*) {}).colours, 1u);
  EXPECT_EQ(compare(300, 2, [](tgui_surface*) {}).colours, 1u);
}

TEST_F(Picture, SvgKeepsTextAsText) {
  tgui_surface* surface = tgui_cairo_svg(path("a.svg").c_str(), 200, 100);
  draw_all(surface);
  ASSERT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
  const std::string svg = contents(path("a.svg"));
  EXPECT_THAT(svg, HasSubstr(">Äly &lt;&amp;&quot;&gt; 100</text>"));
  EXPECT_THAT(svg, HasSubstr(">Zażółć Привет 你好 مرحبا</text>"));
  EXPECT_THAT(svg, HasSubstr("rotate(-90)"));
  EXPECT_THAT(svg, HasSubstr("<ellipse cx=\"50\" cy=\"50\" rx=\"30\" ry=\"30\" fill=\"#ffffff\""));
  EXPECT_THAT(svg, HasSubstr("<path d=\"M10 10L190 90\" stroke=\"#ff0000\" stroke-width=\"3\"/>"));
}

// An SVG drawn so.
std::string svg(const fs::path& path, const std::function<void(tgui_surface*)>& draw) {
  tgui_surface* surface = tgui_cairo_svg(path.c_str(), 200, 100);
  draw(surface);
  EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
  return contents(path);
}

TEST_F(Picture, SvgHasTitleAndDescriptionForScreenReaders) {
  const std::string text = svg(path("a.svg"), [](tgui_surface* surface) {
    tgui_cairo_describe(surface, "An earlier one", "");
    tgui_cairo_describe(surface, "Äly <1>", "16 - 160 l/s & more\n");
  });
  EXPECT_THAT(text, HasSubstr(" role=\"img\" aria-labelledby=\"title desc\">\n"
                              "<title id=\"title\">Äly &lt;1&gt;</title>\n"
                              "<desc id=\"desc\">16 - 160 l/s &amp; more </desc>\n"));
  EXPECT_THAT(text, Not(HasSubstr("earlier")));
}

TEST_F(Picture, SvgWithoutDescriptionHasNeitherTitleNorRole) {
  const std::string text =
      svg(path("a.svg"), [](tgui_surface* surface) { tgui_cairo_describe(surface, nullptr, ""); });
  EXPECT_THAT(text, Not(HasSubstr("<title")));
  EXPECT_THAT(text, Not(HasSubstr("<desc")));
  EXPECT_THAT(text, Not(HasSubstr("role=")));
}

TEST_F(Picture, TitleAloneLabelsTheSvg) {
  const std::string text =
      svg(path("a.svg"), [](tgui_surface* surface) { tgui_cairo_describe(surface, "T", nullptr); });
  EXPECT_THAT(text, HasSubstr("aria-labelledby=\"title\""));
  EXPECT_THAT(text, Not(HasSubstr("<desc")));
}

TEST_F(Picture, DescriptionThatIsNoUtf8StaysReadable) {
  const std::string text =
      svg(path("a.svg"), [](tgui_surface* surface) { tgui_cairo_describe(surface, "a\xC4z", nullptr); });
  EXPECT_THAT(text, HasSubstr(">a\uFFFDz</title>"));
}

TEST_F(Picture, PensOfOneLookTakeTheirNamesInTheOrderInWhichTheyDraw) {
  tgui_object* const axes = tgui_create_pen(TGUI_PEN_SOLID, 1, 0);
  tgui_object* const curve = tgui_create_pen(TGUI_PEN_SOLID, 1, 0);
  tgui_object* const sound = tgui_create_pen(TGUI_PEN_SOLID, 2, kRed);
  const std::string text = svg(path("a.svg"), [&](tgui_surface* surface) {
    tgui_cairo_name_pen(surface, 0, 1, "Axes");
    tgui_cairo_name_pen(surface, 0, 1, "Curves of a <product>");
    tgui_cairo_name_pen(surface, kRed, 2, "Sound level");
    tgui_cairo_name_pen(surface, kRed, 1, "Never drawn");
    tgui_select(surface, axes);
    line(surface, 0, 0, 9, 0);
    tgui_select(surface, curve);
    line(surface, 0, 1, 8, 5);
    tgui_line_to(surface, 9, 7);
    tgui_select(surface, sound);
    tgui_ellipse(surface, 0, 0, 4, 4);
    tgui_select(surface, axes);
    select_font(surface, -10);
    text_at_origin(surface, "label");
  });
  const std::string groups = text.substr(text.find("<g id="));
  const auto place = [&](const char* piece) {
    EXPECT_THAT(groups, HasSubstr(piece));
    return groups.find(piece);
  };
  const std::vector<std::size_t> places = {
      place("<g id=\"axes\"><title>Axes</title>\n<path d=\"M0 0L9 0\""),
      place("</g>\n<g id=\"curves-of-a-product\"><title>Curves of a &lt;product&gt;</title>\n"
            "<path d=\"M0 1L8 5L9 7\""),
      place("</g>\n<g id=\"sound-level\"><title>Sound level</title>\n<ellipse "),
      place("</g>\n<g id=\"axes-2\"><title>Axes</title>\n<g transform"),
      place(">label</text></g>\n</g>\n</g>\n</svg>\n")};
  EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
  EXPECT_THAT(text, Not(HasSubstr("Never drawn")));
  for (tgui_object* pen : {axes, curve, sound}) tgui_delete_object(pen);
}

TEST_F(Picture, LinesThatMeetStandEachInTheGroupOfItsPen) {
  tgui_object* const first = tgui_create_pen(TGUI_PEN_SOLID, 1, 0);
  tgui_object* const second = tgui_create_pen(TGUI_PEN_SOLID, 1, 0);
  const std::string text = svg(path("a.svg"), [&](tgui_surface* surface) {
    tgui_cairo_name_pen(surface, 0, 1, "1");
    tgui_cairo_name_pen(surface, 0, 1, "Title");
    tgui_select(surface, first);
    line(surface, 0, 0, 3, 4);
    tgui_select(surface, second);
    tgui_line_to(surface, 9, 7);
  });
  EXPECT_THAT(text, HasSubstr("<g id=\"group-1\"><title>1</title>\n<path d=\"M0 0L3 4\""));
  EXPECT_THAT(text, HasSubstr("<g id=\"title-2\"><title>Title</title>\n<path d=\"M3 4L9 7\""));
  for (tgui_object* pen : {first, second}) tgui_delete_object(pen);
}

TEST_F(Picture, WhatPensWithoutANameDrawStandsOutsideTheGroups) {
  tgui_object* const named = tgui_create_pen(TGUI_PEN_SOLID, 1, kRed);
  const std::string text = svg(path("a.svg"), [&](tgui_surface* surface) {
    tgui_cairo_name_pen(surface, kRed, 1, "Red");
    tgui_cairo_name_pen(surface, 0, 1, "");
    tgui_cairo_name_pen(surface, 0, 1, nullptr);
    tgui_object* const former = tgui_select(surface, named);
    line(surface, 0, 0, 9, 0);
    tgui_select(surface, former);
    line(surface, 0, 1, 9, 1);
  });
  EXPECT_THAT(text, HasSubstr("stroke-width=\"1\"/>\n</g>\n<path d=\"M0 1L9 1\""));
  tgui_delete_object(named);
}

TEST_F(Picture, NamesAndDescriptionsLeaveOtherPicturesAsTheyAre) {
  const auto described = [](tgui_surface* surface) {
    tgui_cairo_describe(surface, "title", "description");
    tgui_cairo_name_pen(surface, kRed, 3, "Red");
    draw_all(surface);
  };
  const auto bytes = [this](const std::function<void(tgui_surface*)>& draw) {
    png(draw);
    return contents(path("picture.png"));
  };
  EXPECT_TRUE(bytes(draw_all) == bytes(described));
  tgui_surface* recording = tgui_recording_create(10, 10);
  tgui_cairo_describe(recording, "title", "description");
  tgui_cairo_name_pen(recording, 0, 1, "name");
  EXPECT_STREQ(tgui_recording_text(recording), "");
  tgui_surface_destroy(recording);
  tgui_cairo_describe(nullptr, "title", "description");
  tgui_cairo_name_pen(nullptr, 0, 1, "name");
}

TEST_F(Picture, PdfKeepsTextAsTextAndTellsNoTime) {
  tgui_surface* surface = tgui_cairo_pdf(path("a.pdf").c_str(), 200, 100, 297, 148.5);
  draw_all(surface);
  ASSERT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
  const std::string words = output_of("pdftotext -enc UTF-8 '" + path("a.pdf").string() + "' -");
  EXPECT_THAT(words, HasSubstr("Äly <&\"> 100"));
  EXPECT_THAT(words, HasSubstr("Zażółć Привет 你好"));
  EXPECT_THAT(contents(path("a.pdf")), Not(HasSubstr("CreationDate")));
  EXPECT_THAT(output_of("pdfinfo '" + path("a.pdf").string() + "'"),
              HasSubstr("841.89 x 420.9"));  // 297 mm wide
}

TEST_F(Picture, PdfTellsWhatItShows) {
  const auto properties = [this](const char* title, const char* description) {
    tgui_surface* surface = tgui_cairo_pdf(path("a.pdf").c_str(), 200, 100, 297, 148.5);
    tgui_cairo_describe(surface, title, description);
    EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
    return output_of("pdfinfo -enc UTF-8 '" + path("a.pdf").string() + "'");
  };
  const std::string told = properties("Äly Привет", "16 - 160 l/s");
  EXPECT_THAT(told, ContainsRegex("Title: +Äly Привет\n"));
  EXPECT_THAT(told, ContainsRegex("Subject: +16 - 160 l/s\n"));
  EXPECT_THAT(properties(nullptr, ""), Not(ContainsRegex("Title|Subject")));
}

TEST_F(Picture, SameDrawingGivesTheSameBytes) {
  const auto make = [this](int kind, const std::string& name) {
    const std::string target = path(name);
    tgui_surface* surface = kind == 0   ? tgui_cairo_png(target.c_str(), 200, 100)
                            : kind == 1 ? tgui_cairo_svg(target.c_str(), 200, 100)
                                        : tgui_cairo_pdf(target.c_str(), 200, 100, 200, 100);
    draw_all(surface);
    EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
    return contents(target);
  };
  for (int kind = 0; kind < 3; ++kind) {
    const std::string first = make(kind, "first");
    EXPECT_FALSE(first.empty());
    if (kind == 2) {
      sleep(1);  // a time in the file would now differ
    }
    EXPECT_TRUE(first == make(kind, "second")) << "kind " << kind;
  }
}

TEST_F(Picture, FileThatCannotBeWrittenSaysWhyAndLeavesNothing) {
  const std::string target = path("no such folder/a.png");
  tgui_surface* surface = tgui_cairo_png(target.c_str(), 10, 10);
  std::array<char, 300> reason;
  reason.fill('x');
  EXPECT_EQ(tgui_cairo_finish(surface, reason.data(), reason.size()), -1);
  EXPECT_THAT(reason.data(), HasSubstr(target));
  EXPECT_THAT(reason.data(), HasSubstr("No such file or directory"));
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(Picture, TargetThatIsAFolderStaysAndNothingIsLeftBesideIt) {
  fs::create_directories(path("folder.png") / "inside");
  tgui_surface* surface = tgui_cairo_png(path("folder.png").c_str(), 10, 10);
  EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), -1);
  EXPECT_TRUE(fs::exists(path("folder.png") / "inside"));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
}

TEST_F(Picture, ReasonIsCutToItsBuffer) {
  tgui_surface* surface = tgui_cairo_png(path("none/a.png").c_str(), 10, 10);
  std::array<char, 8> reason;
  reason.fill('x');
  EXPECT_EQ(tgui_cairo_finish(surface, reason.data(), 5), -1);
  EXPECT_EQ(std::strlen(reason.data()), 4u);
  EXPECT_EQ(reason[5], 'x');
}

TEST_F(Picture, LabelAndLineDrawnTwiceInARowShowOnce) {
  const auto tick = [](tgui_surface* surface) {
    select_font(surface, -20);
    text(surface, 30, 30, "100");
    select_pen(surface, TGUI_PEN_SOLID, 1, 0);
    line(surface, 10, 10, 190, 77);
  };
  const Pixels once = png(tick);
  const Pixels twice = png([&](tgui_surface* surface) {
    tick(surface);
    tick(surface);
  });
  for (int y = 0; y < once.height(); ++y) {
    for (int x = 0; x < once.width(); ++x) {
      ASSERT_EQ(once.at(x, y), twice.at(x, y)) << x << ", " << y;
    }
  }
}

TEST_F(Picture, SameLineAfterSomethingElseCoveredItIsDrawnAgain) {
  const Pixels pixels = png([](tgui_surface* surface) {
    line(surface, 0, 50, 200, 50);
    tgui_ellipse(surface, 50, 20, 150, 80);
    line(surface, 0, 50, 200, 50);
  });
  EXPECT_EQ(pixels.at(100, 50), 0x000000);
}

TEST_F(Picture, DestroyedWithoutFinishingItLeavesNoFile) {
  tgui_surface_destroy(tgui_cairo_png(path("a.png").c_str(), 10, 10));
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(Picture, SurfaceOfAnotherKindIsRefused) {
  tgui_surface* recording = tgui_recording_create(10, 10);
  std::array<char, 80> reason;
  EXPECT_EQ(tgui_cairo_finish(recording, reason.data(), reason.size()), -1);
  EXPECT_STREQ(reason.data(), "not a picture of this library");
  tgui_surface_destroy(recording);
  EXPECT_EQ(tgui_cairo_finish(nullptr, nullptr, 0), -1);
}

TEST_F(Picture, SizesOutsideTheRangeAreRefused) {
  EXPECT_EQ(tgui_cairo_png(path("a").c_str(), 0, 10), nullptr);
  EXPECT_EQ(tgui_cairo_png(path("a").c_str(), 10, 16385), nullptr);
  EXPECT_EQ(tgui_cairo_svg(path("a").c_str(), -1, 10), nullptr);
  EXPECT_EQ(tgui_cairo_pdf(path("a").c_str(), 10, 10, 0.5, 10), nullptr);
  EXPECT_EQ(tgui_cairo_pdf(path("a").c_str(), 10, 10, 10, 5001), nullptr);
  EXPECT_EQ(tgui_cairo_png(nullptr, 10, 10), nullptr);
  EXPECT_EQ(tgui_cairo_context(nullptr, 10, 10), nullptr);
}

TEST_F(Picture, DrawsOnAContextOfTheHost) {
  cairo_surface_t* image = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 40, 40);
  cairo_t* cairo = cairo_create(image);
  tgui_surface* surface = tgui_cairo_context(cairo, 40, 40);
  select_pen(surface, TGUI_PEN_SOLID, 4, kRed);
  line(surface, 0, 20, 40, 20);
  EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
  cairo_surface_flush(image);
  std::uint32_t pixel;
  std::memcpy(&pixel,
              cairo_image_surface_get_data(image) + 20 * cairo_image_surface_get_stride(image) + 20 * 4, 4);
  EXPECT_EQ(pixel & 0xFFFFFF, 0xFF0000u);
  cairo_destroy(cairo);
  cairo_surface_destroy(image);
}

TEST_F(Picture, CoordinatesAtTheEndsOfTheIntegersAreHarmless) {
  for (const int kind : {0, 1, 2}) {
    const std::string target = path("far");
    tgui_surface* surface = kind == 0   ? tgui_cairo_png(target.c_str(), 50, 50)
                            : kind == 1 ? tgui_cairo_svg(target.c_str(), 50, 50)
                                        : tgui_cairo_pdf(target.c_str(), 50, 50, 50, 50);
    line(surface, INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX);
    tgui_ellipse(surface, INT32_MIN, 0, INT32_MAX, 10);
    tgui_arc(surface, 0, 0, 0, 0, 1, 1, 2, 2);
    select_font(surface, INT32_MIN);
    text(surface, INT32_MAX, 0, "far");
    EXPECT_EQ(tgui_cairo_finish(surface, nullptr, 0), 0);
    EXPECT_FALSE(contents(target).empty());
  }
}

}  // namespace
