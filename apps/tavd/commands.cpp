#include "commands.h"

#include "errors.h"
#include "tavd/tavca.h"
#include "text.h"
#include "version.h"

namespace tavdhost {
namespace {

constexpr const char* kVersion = "tavd " TAVD_VERSION_TEXT;

}  // namespace

void add_commands(CLI::App& app) {
  app.require_subcommand(1);
  app.set_version_flag("--version", kVersion);
  add_list_command(app);
  add_calc_command(app);
  add_sweep_command(app);
  add_diagram_command(app);
  add_picture_command(app);
  add_gallery_command(app);
  add_throw_command(app);
  add_show_command(app);
  add_family_command(app);
  add_code_command(app);
  add_find_attribute_command(app);
  add_copy_command(app);
  add_delete_command(app);
}

void add_text_options(CLI::App& command, TextChoice& texts) {
  command
      .add_option("--market", texts.market, "Market area whose product codes are shown, such as FIN or SWE")
      ->type_name("CODE");
  command
      .add_option(
          "--language", texts.language,
          "Language of the descriptions: en, GBR, English or 1512 (the market's own language, or English)")
      ->type_name("LANGUAGE");
}

void add_product_arguments(CLI::App& command, ProductChoice& choice) {
  command.add_option("DB", choice.path, "Product database")->required();
  command.add_option("CLASS", choice.class_id, "Class of the product, 3 characters")->required();
  command.add_option("ID", choice.object_id, "Object id of the product")->required();
}

void add_product_options(CLI::App& command, ProductChoice& choice) {
  command.add_option("--param", choice.parameters, "Value of a parameter, once for each parameter")
      ->type_name("NAME=VALUE")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  command.add_flag("--end-reflection", choice.end_reflection,
                   "Take the end reflection of the duct off the sound table, as the diagram does");
  add_text_options(command, choice.texts);
}

Product chosen_product(const ProductChoice& choice) {
  const Database database(choice.path, Database::Open::kExisting, choice.texts);
  const Record record = database.product(choice.class_id, choice.object_id);
  Product product = load_product(database, record);
  if (product.flow.nhdd == 0) {
    throw UserError(printable(choice.class_id) + " " + printable(choice.object_id) + " in " + choice.path +
                    " has no flow data to calculate with");
  }
  set_parameters(product.flow, choice.parameters);
  if (choice.end_reflection) tavca_check_end_reflection(&product.flow);
  return product;
}

}  // namespace tavdhost
