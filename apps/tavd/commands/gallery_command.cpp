// tavd gallery: all drawings of a database as one page, and as sheets.
#include <memory>
#include <string>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/parallel.h"
#include "base/paths.h"
#include "base/whole_file.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "drawing/picture.h"
#include "gallery/gallery.h"

namespace tavdhost {
namespace {

struct GalleryOptions {
  std::string path;    // empty: no database
  std::string folder;  // empty: none
  std::string sheet;   // empty: none
  bool shapes = false;
  std::string shape_size = "375x630";
  std::string threads;  // empty: as many as the machine runs at once
  TextChoice texts;
};

constexpr int kMostThreads = 256;

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

unsigned thread_count(const GalleryOptions& options) {
  if (options.threads.empty()) return threads_of_machine();
  return static_cast<unsigned>(whole_number("--threads", options.threads, 1, kMostThreads));
}

void run_gallery(const GalleryOptions& options) {
  check_options(options);
  const unsigned threads = thread_count(options);
  if (options.shapes) draw_shapes(to_path(options.folder), picture_size(options.shape_size));
  if (options.path.empty()) return;
  const Database database(options.path, Database::Open::kExisting, options.texts);
  if (!options.folder.empty()) draw_products(database, options.folder, threads);
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
  command
      ->add_option("--threads", options->threads,
                   "Threads that draw the products (as many as the machine runs at once)")
      ->type_name("NUMBER");
  add_text_options(*command, options->texts);
  command->footer("Example: tavd gallery catalogue.tavdb -o gallery");
  command->callback([options] { run_gallery(*options); });
}

}  // namespace tavdhost
