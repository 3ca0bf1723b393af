// tavd family: the members of a family.
#include <iostream>
#include <memory>
#include <string>

#include "base/csv.h"
#include "base/json_text.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "product/families.h"
#include "product/product.h"

namespace tavdhost {
namespace {

struct FamilyOptions {
  ProductChoice product;
  bool csv = false;
  bool json = false;
};

std::string shape_number(const FamilySize& size) {
  return size.shape.empty() ? "" : std::to_string(size.shape.front());
}

void print_family(const RecordKey& key, const Family& family, const std::vector<std::string>& families) {
  std::cout << printable(key.class_id) << ' ' << printable(key.object_id) << ": " << sizing_text(family.mode)
            << ", " << family.sizes.size() << (family.sizes.size() == 1 ? " size\n" : " sizes\n");
  if (!family.sizes.empty()) {
    Columns columns;
    columns.add({"ID", "SIZE mm", "SHAPE", "CODE", "DESCRIPTION", "INSTALLATION"});
    for (const FamilySize& size : family.sizes) {
      columns.add({printable(size.key.object_id), size_text(size.size), shape_number(size), size.code,
                   size.description, size.installation});
    }
    columns.print(std::cout);
  }
  for (const std::string& id : family.missing) {
    std::cout << "named by the main record, but not in the database: " << printable(id) << '\n';
  }
  for (const std::string& id : families) std::cout << "belongs to the family of " << printable(id) << '\n';
}

void print_family_csv(const Family& family) {
  std::string text = "id,size_mm,shape,code,description,installation\n";
  for (const FamilySize& size : family.sizes) {
    CsvLine line(text);
    for (const std::string& cell : {printable(size.key.object_id), size_text(size.size), shape_number(size),
                                    size.code, size.description, size.installation}) {
      line.text(cell);
    }
    line.end();
  }
  std::cout << text;
}

Json::Value size_member_json(const FamilySize& member) {
  Json::Value json;
  json["id"] = printable(member.key.object_id);
  json["code"] = member.code;
  json["description"] = member.description;
  json["installation"] = member.installation;
  json["size"] = size_json(member.size);
  json["shape"] = Json::Value(Json::arrayValue);
  for (const std::int16_t word : member.shape) json["shape"].append(int{word});
  return json;
}

Json::Value family_json(const RecordKey& key, const Family& family,
                        const std::vector<std::string>& families) {
  Json::Value json;
  json["class"] = printable(key.class_id);
  json["id"] = printable(key.object_id);
  json["sizing_mode"] = family.mode;
  json["sizing_text"] = sizing_text(family.mode);
  for (const char* list : {"sizes", "sizes_not_found", "size_of"}) json[list] = Json::Value(Json::arrayValue);
  for (const FamilySize& size : family.sizes) json["sizes"].append(size_member_json(size));
  for (const std::string& id : family.missing) json["sizes_not_found"].append(printable(id));
  for (const std::string& id : families) json["size_of"].append(printable(id));
  return json;
}

void run_family(const FamilyOptions& options) {
  const ProductChoice& choice = options.product;
  const Database database(choice.path, Database::Open::kExisting, choice.texts);
  const Record record = database.product(choice.class_id, choice.object_id);
  const RecordKey key = database.key(record);
  const Family family = read_family(database, record);
  const std::vector<std::string> families = families_of(database, key);
  if (options.json) {
    write_json(std::cout, family_json(key, family, families));
  } else if (options.csv) {
    print_family_csv(family);
  } else {
    print_family(key, family, families);
  }
}

}  // namespace

void add_family_command(CLI::App& app) {
  auto options = std::make_shared<FamilyOptions>();
  CLI::App* command = app.add_subcommand("family", "Lists the sizes that a product comes in");
  add_product_arguments(*command, options->product);
  CLI::Option* csv = command->add_flag("--csv", options->csv, "The sizes alone, comma-separated");
  command->add_flag("--json", options->json, "As JSON")->excludes(csv);
  add_text_options(*command, options->product.texts);
  command->footer("Example: tavd family catalogue.tavdb DMP 'QZDA-*'");
  command->callback([options] { run_family(*options); });
}

}  // namespace tavdhost
