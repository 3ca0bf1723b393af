// tavd code: product code and product id of a size.
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/sheet.h"
#include "base/text.h"
#include "catalogue/entry.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "product/codes_text.h"
#include "product/product.h"
#include "product/record_layout.h"
#include "product/size.h"
#include "product/text_codec.h"
#include "tavd/attributes.h"
#include "tavd/codes.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

constexpr std::int32_t kRoom = 256;  // of a code or product id, wide characters

struct CodeOptions {
  ProductChoice product;
  std::optional<std::string> size, second_size;
  bool json = false;
};

struct Codes {
  Product product;
  DuctSize size;
  std::optional<DuctSize> second_size;
  BuiltText product_id;
  BuiltText code;  // of the chosen market
};

// The template of the product id, as text. The library falls back to the record's own id if the template
// cannot be used.
BuiltText build_product_id(const Database& database, const Record& record, const DuctSize& size,
                           const DuctSize* second) {
  BuiltText built;
  const Entry entry = stored_entry(database, record);
  if (const auto found = entry.attributes.find(TAVD_ATT_ID_TEMPLATE); found != entry.attributes.end()) {
    TextCodec codec(database.handle());
    built.made_from = printable(codec.decode(0, found->second).value_or(found->second));
    const DuctSize none = {};
    char ignored[kRoom];
    built.result = tavd_build_code_ds2(ignored, sizeof ignored, found->second.c_str(), &size,
                                       second != nullptr ? second : &none);
  }
  tavd_wchar id[kRoom] = {};
  tavd_build_productId_dsw2(database.handle(), id, kRoom, record.get(), &size, second);
  built.text = printable(to_utf8(id, kRoom));
  return built;
}

Codes build_codes(const CodeOptions& options) {
  Codes codes{};
  if (options.size) codes.size = parse_size("--ds", *options.size);
  if (options.second_size) codes.second_size = parse_size("--ds2", *options.second_size);
  const ProductChoice& choice = options.product;
  const Database database(choice.path, Database::Open::kExisting, choice.texts);
  const Record record = database.product(choice.class_id, choice.object_id);
  codes.product = load_product(database, record);
  if (!options.size) codes.size = codes.product.size;
  const DuctSize* second = codes.second_size ? &*codes.second_size : nullptr;
  codes.product_id = build_product_id(database, record, codes.size, second);
  codes.code = build_code(codes.product.code, codes.size, second);
  return codes;
}

void add_built(Sheet& sheet, const std::string& name, const BuiltText& built, const char* after_failure) {
  if (!built.made_from.empty()) sheet.text("Template of the " + name, built.made_from);
  if (built.result != 0) sheet.text("  error " + std::to_string(built.result), template_text(built.result));
  sheet.text(static_cast<char>(name[0] - 'a' + 'A') + name.substr(1),
             built.text + (built.result != 0 ? after_failure : ""));
}

std::string described(const DuctSize& size) {
  return size.b == 0 ? "not known" : size_text(size) + " mm";
}

void print_codes(const Codes& codes) {
  const RecordKey& key = codes.product.key;
  std::cout << printable(key.class_id) << ' ' << printable(key.object_id) << '\n';
  Sheet sheet;
  sheet.text("Size", described(codes.size));
  if (codes.second_size) sheet.text("Second connection", described(*codes.second_size));
  add_built(sheet, "product id", codes.product_id, ", the record's own id in place of the template's");
  add_built(sheet, "product code", codes.code, ", as far as it was built");
  sheet.print(std::cout);
}

Json::Value built_json(const BuiltText& built) {
  Json::Value json;
  json["text"] = built.text;
  json["template"] = built.made_from.empty() ? Json::Value() : Json::Value(built.made_from);
  if (built.made_from.empty()) return json;
  json["result"]["code"] = built.result;
  json["result"]["text"] = template_text(built.result);
  return json;
}

void print_json(const Codes& codes) {
  Json::Value json;
  json["class"] = printable(codes.product.key.class_id);
  json["id"] = printable(codes.product.key.object_id);
  json["size"] = size_json(codes.size);
  if (codes.second_size) json["second_size"] = size_json(*codes.second_size);
  json["product_id"] = built_json(codes.product_id);
  json["product_code"] = built_json(codes.code);
  write_json(std::cout, json);
}

void run_code(const CodeOptions& options) {
  const Codes codes = build_codes(options);
  if (options.json) {
    print_json(codes);
  } else {
    print_codes(codes);
  }
}

}  // namespace

void add_code_command(CLI::App& app) {
  auto options = std::make_shared<CodeOptions>();
  CLI::App* command = app.add_subcommand("code", "Builds product code and product id for a size");
  add_product_arguments(*command, options->product);
  command->add_option("--ds", options->size, "Size of the connection, mm: 160 or 400x200 (the product's own)")
      ->type_name("SIZE");
  command->add_option("--ds2", options->second_size, "Size of the second connection, mm")->type_name("SIZE");
  command->add_flag("--json", options->json, "As JSON");
  add_text_options(*command, options->product.texts);
  command->footer("Example: tavd code catalogue.tavdb DMP 'QZDA-*' --ds 200");
  command->callback([options] { run_code(*options); });
}

}  // namespace tavdhost
