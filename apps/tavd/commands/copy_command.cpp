// tavd copy: products from one database into another.
#include <filesystem>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/paths.h"
#include "base/text.h"
#include "catalogue/database.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "drafts/drafts.h"
#include "product/families.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

struct CopyOptions {
  ProductChoice product;  // in the source
  std::string target;
  bool json = false;
};

// What a copy takes along.
struct Load {
  RecordKey product;
  std::vector<RecordKey> sizes;
  std::set<std::string> models;          // object ids of the model records
  std::set<std::string> missing_models;  // named, but not in the source
  std::size_t replaced = 0;              // records of product and sizes that the target held before
};

// How texts without a charset of their own are stored: 1 in UTF-8, 0 in windows-1252, else as they stand.
int text_encoding(const Database& database) {
  std::int16_t encoding = 0;
  const Record header = database.find(kFileHeaderClass, kFileHeaderId);
  tavbcopyatt(database.handle(), header.get(), TAVD_ATT_USES_UTF8, nullptr, &encoding, sizeof encoding);
  return encoding == 2 ? 0 : encoding;
}

std::string encoding_text(int encoding) {
  if (encoding == 0) return "windows-1252";
  return encoding == 1 ? "UTF-8" : "of the unknown encoding " + std::to_string(encoding);
}

void refuse_what_is_no_product(const ProductChoice& choice) {
  if (hosts::is_product_class(choice.class_id)) return;
  throw UserError(in_quotes(choice.class_id) + " is the class of " +
                  (choice.class_id == kModelClass ? "model records, which go along with their products"
                                                  : "the file header") +
                  "; expected the class of a product");
}

// A size takes the main record's model, if that has one.
void add_model(const Database& source, const Record& record, const std::string& handed_down, Load& load) {
  const std::string id = handed_down.empty() ? model_id(source, record) : handed_down;
  if (id.empty()) return;
  (source.find(kModelClass, id) ? load.models : load.missing_models).insert(id);
}

Load load_of(const Database& source, const Record& record) {
  Load load;
  load.product = source.key(record);
  const std::string model = model_id(source, record);
  add_model(source, record, model, load);
  const Family family = read_family(source, record);
  if (family.mode != TAVD_SIZING_PATTERN && family.mode != TAVD_SIZING_LIST) return load;
  for (const FamilySize& size : family.sizes) {
    load.sizes.push_back(size.key);
    add_model(source, source.find(size.key.class_id, size.key.object_id), model, load);
  }
  return load;
}

// An empty database takes over how the source stores its texts; in any other that must be the same.
void settle_encoding(const Database& source, const Database& target) {
  if (!target.first()) {
    if (const Record header = source.find(kFileHeaderClass, kFileHeaderId)) {
      tavbsaverec(target.handle(), header.get());
      check_service();
    }
    return;
  }
  const int from = text_encoding(source);
  const int into = text_encoding(target);
  if (from == into) return;
  throw UserError("the texts of " + source.path() + " are " + encoding_text(from) + ", those of " +
                  target.path() + " " + encoding_text(into) + "; expected the same encoding");
}

void copy_product(const Database& source, const Database& target, Load& load) {
  for (const RecordKey& key : load.sizes) load.replaced += target.find(key.class_id, key.object_id) ? 1 : 0;
  load.replaced += target.find(load.product.class_id, load.product.object_id) ? 1 : 0;
  Transaction transaction(target);
  settle_encoding(source, target);
  if (tavdf_copy_recs(source.handle(), target.handle(), load.product.class_id.c_str(),
                      load.product.object_id.c_str()) != 0) {
    throw std::runtime_error("the product vanished while it was copied");
  }
  transaction.commit();
}

// A target that is made for the copy appears with it. Another process that makes it meanwhile may win: then
// the copy goes into its file.
void copy_into(const std::string& target, const Database& source, Load& load) {
  const auto copy = [&](const Database& database) { copy_product(source, database, load); };
  if (is_on_server(target)) return copy(Database(target, Database::Open::kCreate));
  std::error_code problem;
  if (!std::filesystem::exists(to_path(target), problem) && add_database(target, copy)) return;
  drafts::clear(to_path(target));
  copy(Database(target));
}

std::string counted(std::size_t count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

void print_load(const Load& load, const std::string& target) {
  std::cout << printable(load.product.class_id) << ' ' << printable(load.product.object_id);
  if (!load.sizes.empty()) std::cout << " with " << counted(load.sizes.size(), "size");
  std::cout << " copied to " << target;
  if (load.replaced > 0) std::cout << ", " << counted(load.replaced, "record") << " replaced";
  std::cout << '\n';
  for (const std::string& id : load.models) std::cout << "model record " << printable(id) << " copied\n";
  for (const std::string& id : load.missing_models) {
    std::cout << "model record " << printable(id) << " is not in the source, not copied\n";
  }
}

void print_json(const Load& load) {
  Json::Value json;
  json["class"] = printable(load.product.class_id);
  json["id"] = printable(load.product.object_id);
  for (const char* list : {"sizes", "model_records", "model_records_not_found"}) {
    json[list] = Json::Value(Json::arrayValue);
  }
  for (const RecordKey& key : load.sizes) json["sizes"].append(printable(key.object_id));
  for (const std::string& id : load.models) json["model_records"].append(printable(id));
  for (const std::string& id : load.missing_models) json["model_records_not_found"].append(printable(id));
  json["replaced"] = Json::UInt64{load.replaced};
  write_json(std::cout, json);
}

void run_copy(const CopyOptions& options) {
  const ProductChoice& choice = options.product;
  refuse_what_is_no_product(choice);
  const Database source(choice.path);
  Load load = load_of(source, source.product(choice.class_id, choice.object_id));
  std::error_code problem;
  if (choice.path == options.target ||
      std::filesystem::equivalent(to_path(choice.path), to_path(options.target), problem)) {
    throw UserError(shown_name(options.target) +
                    " is the source itself, expected another database to copy to");
  }
  copy_into(options.target, source, load);
  if (options.json) {
    print_json(load);
  } else {
    print_load(load, shown_name(options.target));
  }
}

}  // namespace

void add_copy_command(CLI::App& app) {
  auto options = std::make_shared<CopyOptions>();
  CLI::App* command =
      app.add_subcommand("copy", "Copies a product with its sizes and model records into another database");
  command->add_option("SOURCE_DB", options->product.path, "Product database to copy from")->required();
  command->add_option("CLASS", options->product.class_id, "Class of the product, 3 characters")->required();
  command->add_option("ID", options->product.object_id, "Object id of the product")->required();
  command->add_option("TARGET_DB", options->target, "Product database to copy to, made if it is missing")
      ->required();
  command->add_flag("--json", options->json, "What was copied, as JSON");
  command->footer(
      "Maker and model record of a main record are handed down to the copies of its sizes.\n"
      "Example: tavd copy catalogue.tavdb DMP 'QZDA-*' dampers.tavdb");
  command->callback([options] { run_copy(*options); });
}

}  // namespace tavdhost
