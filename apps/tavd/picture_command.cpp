#include <memory>
#include <stdexcept>
#include <string>

#include "commands.h"
#include "errors.h"
#include "picture.h"
#include "tavd/tavdf.h"
#include "tavd/tavdshapepic.h"
#include "tavdgui/tavdgui.h"
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

constexpr const char* kWindowClass = "TAVDSHAPE";

// The shape picture of the process, released at the end.
class ShapePicture {
 public:
  ShapePicture(const Database& database, const Record& record) {
    tavdshapepic_init(tgui_main_module(), database.handle(), record.get(), 0);
  }
  ~ShapePicture() { tavdshapepic_release(); }
  ShapePicture(const ShapePicture&) = delete;
  ShapePicture& operator=(const ShapePicture&) = delete;

  void paint(const Picture& picture);
};

void ShapePicture::paint(const Picture& picture) {
  const auto [width, height] = picture.size();
  tgui_window* window =
      tgui_create_window(kWindowClass, "", 0, 0, 0, width, height, nullptr, 0, tgui_main_module());
  if (window == nullptr) throw std::runtime_error("no window for the picture could be made");
  tgui_set_surface(window, picture.surface());
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  tgui_destroy_window(window);
}

void require_shape(const Database& database, const Record& record) {
  std::int16_t shape[TAVDF_SHAPE_MIN_WORDS] = {};
  if (tavdf_load_shapedata(database.handle(), record.get(), nullptr, shape, TAVDF_SHAPE_MIN_WORDS) > 0)
    return;
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
  put_title(database, record, options.title);
  ShapePicture shape(database, record);
  Picture picture(options.output, size);
  shape.paint(picture);
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
