#include "commands/product_choice.h"

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

}  // namespace tavdhost
