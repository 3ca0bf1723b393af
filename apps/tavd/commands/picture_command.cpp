// tavd picture: the dimensioned sketch of a product as a picture.
#include <cstdint>
#include <memory>
#include <string>

#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/drawing_arguments.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
#include "drawing/picture.h"
#include "drawing/title.h"
#include "product/database.h"

namespace tavdhost {
namespace {

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
  ShapePicture shape(database, record);
  Picture picture(options.output, size, options.format);
  picture.describe(shape_picture_text(product, options.title));
  shape.paint(picture);
  picture.finish();
}

}  // namespace

void add_picture_command(CLI::App& app) {
  auto options = std::make_shared<PictureOptions>();
  CLI::App* command =
      app.add_subcommand("picture", "Draws the dimensioned sketch of a product into a picture file");
  options->size = "500x840";
  add_drawing_arguments(*command, *options);
  add_picture_options(*command, *options);
  command->footer(
      "The sketch keeps its proportions, 500 to 840, in the middle of the picture.\n"
      "Example: tavd picture catalogue.tavdb DMP QZDA-160 -o damper" +
      std::string(kPictureForms.vector_ending));
  command->callback([options] { run_picture(*options); });
}

}  // namespace tavdhost
