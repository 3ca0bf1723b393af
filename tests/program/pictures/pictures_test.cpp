// All pictures of the sample catalogue, in all their forms: nothing of them is cut. They are made in this
// process, through what the program's commands are made of.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "drawing/drawings.h"
#include "drawing/levels.h"
#include "drawing/own_drawings.h"
#include "drawing/units.h"
#include "product/database.h"
#include "product/product.h"
#include "program/pictures/measured.h"
#include "shared/kinds.h"
#include "support/program.h"

namespace {

using pictures::Box;
using pictures::Part;
using tavdhost::Database;
using tavdhost::Picture;
using tavdhost::PictureSize;
using tavdhost::Record;
using testing::IsEmpty;

constexpr double kPointsPerMillimetre = 72 / 25.4;
constexpr double kMargin = 15;      // of a page, mm
constexpr double kRounding = 0.02;  // of the numbers in an SVG, pixels

bool lies_within(const Box& inner, const Box& outer, double tolerance) {
  return inner.left >= outer.left - tolerance && inner.top >= outer.top - tolerance &&
         inner.right <= outer.right + tolerance && inner.bottom <= outer.bottom + tolerance;
}

std::string told(const std::string& name, const Part& part) {
  return name + ": \"" + part.what + "\" from " + std::to_string(part.box.left) + ", " +
         std::to_string(part.box.top) + " to " + std::to_string(part.box.right) + ", " +
         std::to_string(part.box.bottom);
}

struct CataloguePictures : testing::Test {
  static void SetUpTestSuite() {
    folder = std::make_unique<clitest::Folder>();
    const std::string path = folder->file("catalogue.tavdb");
    const clitest::Outcome outcome =
        clitest::run_program({"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", path});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    database = std::make_unique<Database>(path);
  }
  static void TearDownTestSuite() {
    database.reset();
    folder.reset();
  }

  // Makes a picture of each drawing of the catalogue at these sizes; `use` gets its name and its file.
  using Use = std::function<void(const std::string& name, const std::string& file)>;
  static void for_each(const std::vector<PictureSize>& diagrams, const std::vector<PictureSize>& sketches,
                       const std::string& ending, const Use& use);

  static std::unique_ptr<clitest::Folder> folder;
  static std::unique_ptr<Database> database;
};
std::unique_ptr<clitest::Folder> CataloguePictures::folder;
std::unique_ptr<Database> CataloguePictures::database;

template <typename Drawing>
void save(Drawing& drawing, const std::string& file, PictureSize size) {
  Picture picture(file, size);
  drawing.paint(picture);
  picture.finish();
}

// All drawings of a product; `save_as` takes the drawing, its name and a size.
template <typename SaveAs>
void draw_product(const Database& database, const Record& record, const std::vector<PictureSize>& diagrams,
                  const std::vector<PictureSize>& sketches, SaveAs save_as) {
  const tavdhost::Product product = tavdhost::load_product(database, record);
  const std::string name = product.key.class_id + " " + product.key.object_id;
  for (const PictureSize& size : diagrams) {
    tavdhost::FlowDiagram flow(database, record, product, {.size = size}, false);
    if (flow.is_drawable()) save_as(flow, name + ", flow", size);
    if (!tavdhost::has_throw_data(product.flow)) continue;
    tavdhost::ThrowDiagram throws(database, record, product, product.flow.qvmax, 0,
                                  tavdhost::first_throw_value(product.flow));
    if (throws.is_drawable()) save_as(throws, name + ", throw", size);
  }
  if (!tavdhost::has_shape(database, record)) return;
  for (const PictureSize& size : sketches) {
    tavdhost::ShapePicture sketch(database, record);
    save_as(sketch, name + ", sketch", size);
  }
}

void CataloguePictures::for_each(const std::vector<PictureSize>& diagrams,
                                 const std::vector<PictureSize>& sketches, const std::string& ending,
                                 const Use& use) {
  int number = 0;
  const auto save_as = [&](auto& drawing, const std::string& name, PictureSize size) {
    const std::string file = folder->file(std::to_string(number++) + ending);
    save(drawing, file, size);
    use(name + " " + std::to_string(size.width) + "x" + std::to_string(size.height), file);
    if (ending != ".pdf") std::filesystem::remove(file);
  };
  for (Record record = database->first(); record; record = database->next(record)) {
    if (hosts::is_product_class(database->key(record).class_id)) {
      draw_product(*database, record, diagrams, sketches, save_as);
    }
  }
  // 83 flow diagrams, 15 throw diagrams and 86 sketches when this was written.
  EXPECT_GT(number, 150);
}

// The sizes that the program draws unasked and others: small, upright, wide, square.
const std::vector<PictureSize> kDiagramSizes = {{1200, 900}, {800, 600},  {600, 450}, {320, 240},
                                                {600, 900},  {1600, 500}, {500, 500}};
const std::vector<PictureSize> kSketchSizes = {{500, 840}, {300, 504}, {200, 600}, {800, 400}};

TEST_F(CataloguePictures, SvgHasNoInkAndNoTextOutside) {
  std::vector<std::string> outside;
  for_each(kDiagramSizes, kSketchSizes, ".svg", [&](const std::string& name, const std::string& file) {
    const pictures::Svg svg = pictures::read_svg(clitest::read_file(file));
    EXPECT_GT(svg.parts.size(), 5U) << name;
    for (const Part& part : svg.parts) {
      if (!lies_within(part.box, {0, 0, svg.width, svg.height}, kRounding))
        outside.push_back(told(name, part));
    }
  });
  EXPECT_THAT(outside, IsEmpty());
}

TEST_F(CataloguePictures, PngHasNoInkOnItsEdges) {
  std::vector<std::string> cut;
  for_each({{800, 600}, {240, 320}}, {{300, 504}, {100, 400}}, ".png",
           [&](const std::string& name, const std::string& file) {
             const pictures::PngInk ink = pictures::read_png(file);
             EXPECT_TRUE(ink.anywhere) << name;
             if (ink.on_edge) cut.push_back(name);
           });
  EXPECT_THAT(cut, IsEmpty());
}

TEST_F(CataloguePictures, PdfIsA4WithNothingInItsMargins) {
  std::vector<std::string> names;
  std::vector<std::string> files;
  for_each({{1200, 900}}, {{500, 840}}, ".pdf", [&](const std::string& name, const std::string& file) {
    names.push_back(name);
    files.push_back(file);
  });
  const std::string folder_path = std::filesystem::path(files.at(0)).parent_path();
  const std::vector<pictures::Page> pages = pictures::read_pages(files, folder_path);
  ASSERT_EQ(pages.size(), names.size());
  std::vector<std::string> outside;
  constexpr double kPage = kMargin * kPointsPerMillimetre;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const pictures::Page& page = pages[i];
    EXPECT_NEAR(page.width * page.height, 210 * 297 * kPointsPerMillimetre * kPointsPerMillimetre, 10)
        << names[i];
    EXPECT_THAT(page.words, testing::Not(IsEmpty())) << names[i];
    for (const Part& word : page.words) {
      if (!lies_within(word.box, {kPage, kPage, page.width - kPage, page.height - kPage}, 1)) {
        outside.push_back(told(names[i], word));
      }
    }
  }
  for (const int page : pictures::pages_with_ink_in_margins(files, folder_path, kMargin)) {
    outside.push_back(names[static_cast<std::size_t>(page)] + ": ink in the margin");
  }
  EXPECT_THAT(outside, IsEmpty());
}

// Levels stand in red, upright. Above and below their figures a sixth of the cell is for accents and
// descenders.
bool is_level_on_text(const Part& level, const Part& text) {
  const double free = (level.box.bottom - level.box.top) / 6;
  return level.colour == "#ff0000" && !text.colour.empty() && level.box.left < text.box.right &&
         text.box.left < level.box.right && level.box.top + free < text.box.bottom &&
         text.box.top < level.box.bottom - free;
}

// At the levels that a gallery shows. With those of the diagrams themselves some do.
TEST_F(CataloguePictures, NoLevelOfADamperStandsOnAnotherTextInAGallery) {
  constexpr PictureSize kSize = {800, 600};
  std::vector<std::string> found;
  int dampers = 0;
  for (Record record = database->first(); record; record = database->next(record)) {
    const tavdhost::Product product = tavdhost::load_product(*database, record);
    if (!hosts::is_damper(product.flow)) continue;
    ++dampers;
    tavdhost::OwnFlowDiagram diagram(tavdhost::DrawingSource(*database, record, product.flow));
    diagram.set_levels(tavdhost::legible_levels(diagram, kSize));
    save(diagram, folder->file("damper.svg"), kSize);
    const pictures::Svg svg = pictures::read_svg(clitest::read_file(folder->file("damper.svg")));
    for (const Part& level : svg.parts) {
      for (const Part& text : svg.parts) {
        if (&level != &text && is_level_on_text(level, text)) {
          found.push_back(product.key.object_id + ": " + level.what + " on " + text.what);
        }
      }
    }
    const auto is_level = [](const Part& part) { return part.what.find("dB(A)") != std::string::npos; };
    EXPECT_TRUE(std::ranges::any_of(svg.parts, is_level)) << product.key.object_id;
  }
  EXPECT_GT(dampers, 10);
  EXPECT_THAT(found, IsEmpty());
}

}  // namespace
