#include "commands/product_choice.h"

#include "base/errors.h"
#include "base/text.h"
#include "tavd/tavca.h"

namespace tavdhost {

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
