#include <memory>
#include <string>

#include "commands.h"
#include "drawing_text.h"
#include "drawings.h"
#include "errors.h"
#include "picture.h"
#include "text.h"
#include "title.h"

namespace tavdhost {
namespace {

struct PictureOptions {
  std::string path, class_id, object_id;
  std::string output;
  std::string size = "500x840";
  std::string title;
  TextChoice texts;
};

void require_shape(const Database& database, const Record& record) {
  if (has_shape(database, record)) return;
  const RecordKey key = database.key(record);
  throw UserError(printable(key.class_id) + " " + printable(key.object_id) +
                  " has no shape to draw, expected attribute shapedata");
}

void run_picture(const PictureOptions& options) {
  const PictureSize size = picture_size(options.size);
  check_title(options.title);
  const Database database(options.path, Database::Open::kExisting, options.texts);
  Record record = database.product(options.class_id, options.object_id);
  require_shape(database, record);
  const Product product = load_product(database, record);
  put_title(database, record, options.title);
  const ShapePicture shape(database, record);
  Picture picture(options.output, size);
  picture.describe(shape_picture_text(product, options.title));
  shape.paint(picture.surface(), picture.size());
  picture.finish();
}

}  // namespace

void add_picture_command(CLI::App& app) {
  auto options = std::make_shared<PictureOptions>();
  CLI::App* command =
      app.add_subcommand("picture", "Draws the dimensioned sketch of a product into a picture file");
  command->add_option("DB", options->path, "Product database")->required();
  command->add_option("CLASS", options->class_id, "Class of the product, 3 characters")->required();
  command->add_option("ID", options->object_id, "Object id of the product")->required();
  command
      ->add_option("-o,--output", options->output,
                   "File to write: .png, .svg, .pdf, or .txt for the list of drawing operations")
      ->required()
      ->type_name("FILE");
  command->add_option("--size", options->size, "Size in pixels; the sketch keeps its proportions, 500 to 840")
      ->type_name("WIDTHxHEIGHT")
      ->capture_default_str();
  command->add_option("--title", options->title, "Title in place of the product code, up to 79 characters")
      ->type_name("TEXT");
  add_text_options(*command, options->texts);
  command->footer("Example: tavd picture catalogue.tavdb DMP QZDA-160 -o damper.svg");
  command->callback([options] { run_picture(*options); });
}

}  // namespace tavdhost
