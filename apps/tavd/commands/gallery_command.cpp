// tavd gallery: all drawings of a database as one page, and as sheets.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/paths.h"
#include "base/progress.h"
#include "base/whole_file.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
#include "drawing/levels.h"
#include "drawing/picture.h"
#include "drawing/units.h"
#include "gallery/gallery.h"
#include "tavd/tavdshapepic.h"

namespace tavdhost {
namespace {

struct GalleryOptions {
  std::string path;    // empty: no database
  std::string folder;  // empty: none
  std::string sheet;   // empty: none
  bool shapes = false;
  std::string shape_size = "375x630";
  TextChoice texts;
};

constexpr PictureSize kDiagramSize = {800, 600};
constexpr PictureSize kShapeSize = {TAVDSHAPEPIC_WIDTH, TAVDSHAPEPIC_HEIGHT};
constexpr const char* kPage = "index.html";

std::vector<Record> product_records(const Database& database) {
  std::vector<Record> records;
  for (Record record = database.first(); record;) {
    Record next = database.next(record);
    if (hosts::is_product_class(database.key(record).class_id)) records.push_back(std::move(record));
    record = std::move(next);
  }
  check_service();
  return records;
}

// Draws the drawings of one database into a folder.
class Drawer {
 public:
  Drawer(const Database& database, GalleryFolder& folder) : database_(database), folder_(folder) {}

  GalleryItem draw(const Record& record);

  std::size_t flows = 0, throws = 0, shapes = 0;  // drawn so far

 private:
  template <typename Drawing>
  std::string save(Drawing& drawing, const std::string& name, const DrawingText& text, PictureSize size) {
    Picture picture(folder_.place(name), size);
    picture.describe(text);
    drawing.paint(picture);
    picture.finish();
    return name;
  }
  void draw_flow(const Record& record, const std::string& name, GalleryItem& item);
  void draw_throw(const Record& record, const std::string& name, GalleryItem& item);

  const Database& database_;
  GalleryFolder& folder_;
  GalleryNames names_;
};

GalleryItem Drawer::draw(const Record& record) {
  GalleryItem item{load_product(database_, record), "", "", ""};
  const std::string name = names_.name(item.product.key);
  if (item.product.flow.nhdd != 0) draw_flow(record, name, item);
  if (item.product.flow.nhdd != 0 && has_throw_data(item.product.flow)) draw_throw(record, name, item);
  if (has_shape(database_, record)) {
    ShapePicture shape(database_, record);
    item.shape = save(shape, name + "-picture" + kPictureForms.page_ending, shape_picture_text(item.product),
                      kShapeSize);
    ++shapes;
  }
  return item;
}

// A product whose limits make no diagram has none; the page says so.
void Drawer::draw_flow(const Record& record, const std::string& name, GalleryItem& item) {
  const Levels levels = legible_levels(database_, record, item.product, kDiagramSize);
  FlowDiagram diagram(database_, record, item.product,
                      {.size = kDiagramSize, .lpmin = levels.lowest, .lpstep = levels.step}, false);
  if (!diagram.is_drawable()) return;
  item.flow = save(diagram, name + "-flow" + kPictureForms.page_ending, flow_diagram_text(item.product),
                   kDiagramSize);
  ++flows;
}

void Drawer::draw_throw(const Record& record, const std::string& name, GalleryItem& item) {
  const std::string value = first_throw_value(item.product.flow);
  ThrowDiagram diagram(database_, record, item.product, 0, throw_flow_unit_number("l/s"), value);
  if (!diagram.is_drawable()) return;
  item.throw_length = save(diagram, name + "-throw" + kPictureForms.page_ending,
                           throw_diagram_text(item.product, "", value), kDiagramSize);
  ++throws;
}

// All drawings and the page; returns the number of products.
std::size_t draw_all(const Database& database, Drawer& drawer, GalleryFolder& folder) {
  const std::vector<Record> records = product_records(database);
  std::vector<GalleryItem> items;
  {
    Progress progress("Drawing", records.size());
    for (const Record& record : records) {
      items.push_back(drawer.draw(record));
      progress.step();
    }
  }
  write_output(folder.place(kPage), gallery_page(to_text(to_path(database.path()).filename()), items));
  return items.size();
}

void draw_products(const Database& database, const std::string& folder_name) {
  GalleryFolder folder(to_path(folder_name));
  Drawer drawer(database, folder);
  std::size_t products = 0;
  try {
    products = draw_all(database, drawer, folder);
  } catch (const UserError& error) {
    throw folder.named_in_place(error);
  }
  folder.finish();
  std::cout << to_text(to_path(folder_name) / kPage) << ": " << products << " products, " << drawer.flows
            << " flow diagrams, " << drawer.throws << " throw diagrams, " << drawer.shapes << " pictures\n";
}

void check_options(const GalleryOptions& options) {
  if (options.path.empty() && !options.shapes) {
    throw UserError("nothing to draw, expected a database or --shapes");
  }
  if (options.path.empty() && !options.sheet.empty()) {
    throw UserError("--sheet is given without a database to draw");
  }
  if (is_standard_output(options.folder)) {
    throw UserError("a gallery is a folder and cannot be written to standard output");
  }
  if (options.folder.empty() && (options.shapes || options.sheet.empty())) {
    throw UserError("nowhere to draw, expected --output with a folder" +
                    std::string(options.shapes ? "" : " or --sheet with a file"));
  }
}

void run_gallery(const GalleryOptions& options) {
  check_options(options);
  if (options.shapes) draw_shapes(to_path(options.folder), picture_size(options.shape_size));
  if (options.path.empty()) return;
  const Database database(options.path, Database::Open::kExisting, options.texts);
  if (!options.folder.empty()) draw_products(database, options.folder);
  if (!options.sheet.empty()) draw_diagram_sheet(database, options.sheet);
}

}  // namespace

void add_gallery_command(CLI::App& app) {
  auto options = std::make_shared<GalleryOptions>();
  CLI::App* command = app.add_subcommand("gallery", "Draws every product of a database, as " +
                                                        std::string(kPictureForms.page_name) +
                                                        " with a page that shows them");
  command->add_option("DB", options->path, "Product database");
  command
      ->add_option("-o,--output", options->folder,
                   "Folder to write into, made if it is missing; its other files stay")
      ->type_name("DIR");
  command
      ->add_option(
          "--sheet", options->sheet,
          "One picture with a small diagram of each kind of product, " + std::string(kPictureForms.sheet))
      ->type_name("FILE");
  command->add_flag("--shapes", options->shapes,
                    "Draw every shape with its number, as products of plausible sizes");
  command->add_option("--size", options->shape_size, "Size in pixels of each picture of --shapes")
      ->type_name("WIDTHxHEIGHT")
      ->capture_default_str();
  add_text_options(*command, options->texts);
  command->footer("Example: tavd gallery catalogue.tavdb -o gallery");
  command->callback([options] { run_gallery(*options); });
}

}  // namespace tavdhost
