// The contact sheet of all shapes.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/paths.h"
#include "base/platform.h"
#include "base/text.h"
#include "drawing/picture.h"
#include "gallery/gallery.h"
#include "tavd/attributes.h"
#include "tavd/tavdshapepic.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

// What stands about a picture on the contact sheet.
constexpr int kMargin = 15;                  // about each picture, pixels
constexpr Area kFrame = {-8, -8, 508, 848};  // in the plane's units
constexpr std::uint32_t kPaleGrey = 0xD0D0D0;
constexpr int kShapesInRow = 8;

constexpr int kFirstNumber = 101;
constexpr int kLastNumber = 192;

// One picture of the sheet: a shape number with the values that choose among its drawings.
struct Variant {
  int number;
  std::string remark;  // behind the number
  std::vector<std::pair<int, std::int16_t>> values;
  int count = 30;  // words of the shape
};

// The variants of a shape; most have one.
std::vector<Variant> variants_of(int number) {
  switch (number) {
    case 107:
      return {{number, " 1", {{1, 1}}, 6},
              {number, " 2", {{1, 2}}, 6},
              {number, " 3", {{1, 3}}, 6},
              {number, " full 1", {{1, 1}, {12, 0}}},
              {number, " full 2", {{1, 2}, {12, 1}}},
              {number, " full 3", {{1, 3}, {12, 2}}}};
    case 160:
      return {{number, " 1", {{4, 1}}}, {number, " 2", {{4, 2}}}, {number, " 3", {{4, 3}}}};
    case 164:
      return {{number, " narrow", {{3, 180}}}, {number, " wide", {{3, 260}}}};
    case 180:
      return {{number, " 0", {{4, 0}}}, {number, " 1", {{4, 1}}}, {number, " 2", {{4, 2}}},
              {number, " 3", {{4, 3}}}, {number, " 4", {{4, 4}}}, {number, " 5", {{4, 5}}},
              {number, " 6", {{4, 6}}}};
    default:
      return {{number, "", {}}};
  }
}

// Sizes of a product as it might be sold.
struct Sizes {
  int number;
  std::int16_t b, h;                 // connection, mm
  std::vector<std::int16_t> values;  // from value 1 on, mm
};

// Values behind the last one that a shape gives are 0.
const Sizes& sizes_of(int number) {
  static const std::vector<Sizes> kSizes = {
      {101, 160, 160, {160, 425, 290, 65}},
      {102, 125, 125, {345, 215, 375, 205, 95, 95, 375}},
      {103, 250, 250, {248, 595, 190, 90, 600}},
      {104, 125, 125, {300, 220, 250, 345, 65, 250}},
      {105, 125, 125, {1000, 205, 190, 235, 265}},
      {106, 160, 160, {525, 325, 475, 250, 285}},
      {107, 200, 200, {1, 600, 250, 500, 200, 600, 0, 150, 460, 375, 275, 0, 675, 150, 125, 125}},
      {109, 400, 200, {180, 510}},
      {110, 160, 160, {270, 390, 300, 190, 180, 210, 160}},
      {111, 200, 200, {200, 535, 360, 80}},
      {112, 125, 125, {125, 165, 60}},
      {113, 200, 200, {320, 125, 190, 200}},
      {114, 160, 160, {160, 270, 110, 12}},
      {115, 125, 125, {1800, 595, 210, 240, 80, 60, 1500}},
      {116, 160, 160, {250, 395, 200, 395, 270, 295, 50, 16}},
      {117, 160, 160, {545, 570, 285, 570, 300, 595, 50, 24}},
      {118, 160, 160, {345, 395, 200, 395, 270, 395, 50, 350}},
      {119, 125, 125, {60, 1000, 500, 160, 260, 110, 40, 1040, 2}},
      {120, 200, 200, {600, 900, 300, 200, 100}},
      {121, 200, 200, {700, 1000, 200, 200, 60, 100}},
      {122, 200, 200, {600, 1000, 300, 200, 60, 100}},
      {123, 250, 250, {450, 250, 1200, 100}},
      {124, 160, 160, {500, 1200, 160, 785, 0, 100}},
      {125, 400, 400, {900, 400, 1500, 500, 200, 2255, 100}},
      {126, 200, 200, {600, 250, 200, 1000, 180, 60, 575, 0, 0, 100}},
      {127, 200, 200, {800, 1200, 200, 1885, 100}},
      {128, 400, 400, {1200, 300, 800, 400, 150, 1150, 0, 0, 100}},
      {129, 200, 200, {800, 1000, 0, 200, 830, 100}},
      {130, 200, 200, {0, 200, 345}},
      {131, 400, 400, {1000, 600, 900}},
      {132, 160, 160, {0, 160, 90}},
      {133, 400, 400, {0, 450, 550, 250, 300}},
      {140, 250, 250, {250}},
      {141, 400, 400, {400, 400, 600}},
      {150, 250, 250, {250}},
      {151, 400, 400, {400, 400, 600}},
      {160, 200, 200, {595, 450, 305, 1, 595, 275}},
      {163, 125, 125, {1500, 225, 180, 60, 270, 45, 115}},
      {164, 100, 100, {220, 220, 185, 0, 0, 220, 40, 110}},
      {165, 160, 160, {165, 330, 390, 0, 90}},
      {170, 160, 160, {305, 455, 250, 360, 430, 125}},
      {180, 315, 315, {1000, 450, 1000}},
      {181, 315, 315, {1000, 110, 110}},
      {182, 315, 315, {1000, 650}},
      {183, 315, 315, {1000, 130}},
      {191, 160, 160, {160, 350, 180}},
      {192, 200, 200, {440, 355, 480, 200, 315, 0, 75}},
  };
  static const Sizes kOther = {0, 160, 160, {400, 300, 250, 200, 150, 100}};
  const auto found = std::ranges::find(kSizes, number, &Sizes::number);
  return found != kSizes.end() ? *found : kOther;
}

// A product of that shape.
Record make_product(const Variant& variant) {
  Record record(tavdsrv_newrec("TST", "SHAPE"));
  const Sizes& sizes = sizes_of(variant.number);
  std::vector<std::int16_t> words = {static_cast<std::int16_t>(variant.number)};
  words.insert(words.end(), sizes.values.begin(), sizes.values.end());
  words.resize(static_cast<std::size_t>(variant.count));
  for (const auto& [index, value] : variant.values) words[static_cast<std::size_t>(index)] = value;
  const std::string title = std::to_string(variant.number) + variant.remark;
  const std::int16_t header[11] = {100, sizes.b, sizes.h};
  const auto insert = [&record](std::int16_t attribute, const void* data, std::size_t bytes) {
    tavbinsertatt(0, record.address(), attribute, data, static_cast<std::int16_t>(bytes));
  };
  insert(TAVD_ATT_SHAPE_DATA, words.data(), words.size() * sizeof words[0]);
  insert(TAVD_ATT_FLOW_HEADER, header, sizeof header);
  insert(TAVD_ATT_CODE_DEFAULT, title.data(), title.size());
  return record;
}

// Whether more than the title is drawn.
bool is_drawn(int number) {
  const Record record = make_product({number, "", {{1, 1}}});
  tavdshapepic_initdata(record.get());
  return strokes(hosts::kShapeDrawing).lines != 0;
}

std::vector<Variant> all_variants() {
  std::vector<Variant> all;
  for (int number = kFirstNumber; number <= kLastNumber; ++number) {
    if (!is_drawn(number)) continue;
    for (Variant& variant : variants_of(number)) all.push_back(std::move(variant));
  }
  return all;
}

int with_margins(int pixels) {
  return pixels + 2 * kMargin;
}

// A picture with a frame in pale grey about it, and nothing of it outside.
void draw_cell(Picture& sheet, int cell, PictureSize size) {
  const int left = cell % kShapesInRow * with_margins(size.width) + kMargin;
  const int top = cell / kShapesInRow * with_margins(size.height) + kMargin;
  sheet.paint(hosts::kShapeDrawing, {{left, top, left + size.width, top + size.height}, kFrame, kPaleGrey});
}

// Of one picture, and of all on a sheet, pixels.
struct SheetSize {
  PictureSize picture, sheet;
};

SheetSize sheet_size(std::size_t pictures, PictureSize size) {
  const int rows = (static_cast<int>(pictures) + kShapesInRow - 1) / kShapesInRow;
  const PictureSize sheet = {kShapesInRow * with_margins(size.width), rows * with_margins(size.height)};
  if (std::max(sheet.width, sheet.height) > kLargestSide) {
    throw UserError("--size is \"" + std::to_string(size.width) + "x" + std::to_string(size.height) +
                    "\", which makes a sheet of " + std::to_string(sheet.width) + "x" +
                    std::to_string(sheet.height) + ", expected no side above " +
                    std::to_string(kLargestSide));
  }
  return {size, sheet};
}

void draw_sheet(const std::string& path, const std::vector<Variant>& variants, const SheetSize& size) {
  Picture sheet(path, size.sheet);
  int cell = 0;
  for (const Variant& variant : variants) {
    const Record record = make_product(variant);
    tavdshapepic_initdata(record.get());
    draw_cell(sheet, cell++, size.picture);
  }
  sheet.finish();
}

}  // namespace

void draw_shapes(const std::filesystem::path& folder, PictureSize each) {
  tavdshapepic_init(program_module(), 0, nullptr, 0);
  const std::vector<Variant> variants = all_variants();
  const SheetSize size = sheet_size(variants.size(), each);
  std::error_code problem;
  std::filesystem::create_directories(folder, problem);
  if (problem) throw UserError("cannot make " + path_in_quotes(to_text(folder)) + ": " + problem.message());
  for (const char* ending : {".png", kPictureForms.vector_ending}) {
    const std::string path = to_text(folder / "shapes") + ending;
    draw_sheet(path, variants, size);
    std::cout << path << ": " << variants.size() << " drawings\n";
  }
  tavdshapepic_release();
}

}  // namespace tavdhost
