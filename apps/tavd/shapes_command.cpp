#include <cstdint>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "errors.h"
#include "picture.h"
#include "tavd/tavdshapepic.h"
#include "tavd/tavdsrv.h"
#include "tavdgui/tavdgui.h"
#include "text.h"

namespace tavdhost {
namespace {

struct GalleryOptions {
  std::string folder;
  bool shapes = false;
};

// The plane of a picture, and its cell on the contact sheet.
constexpr int kPlaneWidth = 500;
constexpr int kPlaneHeight = 840;
constexpr int kCellWidth = 300;  // pixels
constexpr int kCellHeight = 504;
constexpr int kColumns = 8;

constexpr int kFirstNumber = 101;
constexpr int kLastNumber = 192;
constexpr std::int16_t kShapeData = 1110;
constexpr std::int16_t kCode = 1562;
constexpr std::int16_t kFlowHeader = 1650;

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
              {number, " full 1", {{1, 1}, {7, 0}, {12, 0}}},
              {number, " full 2", {{1, 2}, {12, 1}}},
              {number, " full 3", {{1, 3}, {12, 2}}}};
    case 160:
      return {{number, " 1", {{4, 1}}}, {number, " 2", {{4, 2}}}, {number, " 3", {{4, 3}}}};
    case 180:
      return {{number, " 0", {{4, 0}}}, {number, " 1", {{4, 1}}}, {number, " 2", {{4, 2}}},
              {number, " 3", {{4, 3}}}, {number, " 4", {{4, 4}}}, {number, " 5", {{4, 5}}},
              {number, " 6", {{4, 6}}}};
    case 181:
      return {{number, " 0", {{4, 0}}}};
    case 182:
    case 183:
      return {{number, " 0", {{3, 0}}}};
    default:
      return {{number, "", {}}};
  }
}

// A product of that shape. Value i is 100 + i, so that the picture shows what stands where.
Record make_product(const Variant& variant) {
  Record record(tavdsrv_newrec("TST", "SHAPE"));
  std::vector<std::int16_t> words(static_cast<std::size_t>(variant.count));
  for (std::size_t i = 0; i < words.size(); ++i) words[i] = static_cast<std::int16_t>(100 + i);
  words[0] = static_cast<std::int16_t>(variant.number);
  for (const auto& [index, value] : variant.values) words[static_cast<std::size_t>(index)] = value;
  const std::string title = std::to_string(variant.number) + variant.remark;
  const std::int16_t header[11] = {100, 125, 80};
  const auto insert = [&record](std::int16_t attribute, const void* data, std::size_t bytes) {
    tavbinsertatt(0, record.address(), attribute, data, static_cast<std::int16_t>(bytes));
  };
  insert(kShapeData, words.data(), words.size() * sizeof words[0]);
  insert(kFlowHeader, header, sizeof header);
  insert(kCode, title.data(), title.size());
  return record;
}

void draw(tgui_surface* surface) {
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
  tavdshapepic_create_drawing_tools();
  tavdshapepic_draw(surface);
  tavdshapepic_destroy_drawing_tools();
}

// Whether more than the title is drawn.
bool is_drawn(int number) {
  const Record record = make_product({number, "", {{1, 1}}});
  tavdshapepic_initdata(record.get());
  tgui_surface* recording = tgui_recording_create(kPlaneWidth, kPlaneHeight);
  draw(recording);
  const bool drawn = std::string(tgui_recording_text(recording)).find("\nline ") != std::string::npos;
  tgui_surface_destroy(recording);
  return drawn;
}

std::vector<Variant> all_variants() {
  std::vector<Variant> all;
  for (int number = kFirstNumber; number <= kLastNumber; ++number) {
    if (!is_drawn(number)) continue;
    for (Variant& variant : variants_of(number)) all.push_back(std::move(variant));
  }
  return all;
}

void draw_cell(tgui_surface* surface, int cell) {
  const int saved = tgui_save(surface);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, kPlaneWidth, kPlaneHeight);
  tgui_set_viewport_org(surface, cell % kColumns * kCellWidth, cell / kColumns * kCellHeight);
  tgui_set_viewport_ext(surface, kCellWidth, kCellHeight);
  draw(surface);
  tgui_restore(surface, saved);
}

void draw_sheet(const std::string& path, const std::vector<Variant>& variants) {
  const int rows = (static_cast<int>(variants.size()) + kColumns - 1) / kColumns;
  Picture sheet(path, {kColumns * kCellWidth, rows * kCellHeight});
  int cell = 0;
  for (const Variant& variant : variants) {
    const Record record = make_product(variant);
    tavdshapepic_initdata(record.get());
    draw_cell(sheet.surface(), cell++);
  }
  sheet.finish();
}

void run_gallery(const GalleryOptions& options) {
  if (!options.shapes) throw UserError("nothing to draw, expected --shapes");
  std::error_code problem;
  std::filesystem::create_directories(options.folder, problem);
  if (problem) throw UserError("cannot make " + in_quotes(options.folder) + ": " + problem.message());
  tavdshapepic_init(tgui_main_module(), 0, nullptr, 0);
  const std::vector<Variant> variants = all_variants();
  for (const char* name : {"shapes.png", "shapes.svg"}) {
    const std::string path = (std::filesystem::path(options.folder) / name).string();
    draw_sheet(path, variants);
    std::cout << path << ": " << variants.size() << " drawings\n";
  }
  tavdshapepic_release();
}

}  // namespace

void add_gallery_command(CLI::App& app) {
  auto options = std::make_shared<GalleryOptions>();
  CLI::App* command = app.add_subcommand("gallery", "Draws contact sheets into a folder");
  command
      ->add_flag("--shapes", options->shapes,
                 "Draw every shape with its number; value i of the shape is 100 + i, the size of the "
                 "connection 125x80")
      ->required();
  command->add_option("-o,--output", options->folder, "Folder to write into, made if it is missing")
      ->required()
      ->type_name("DIR");
  command->callback([options] { run_gallery(*options); });
}

}  // namespace tavdhost
