// tavd delete: a product and its family taken out of a database.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/platform.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "product/families.h"
#include "tavd/attributes.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

struct DeleteOptions {
  ProductChoice product;
  bool yes = false;
  bool json = false;
};

// The records that go, the main record first.
std::vector<RecordKey> doomed_records(const Database& database, const Record& record) {
  std::vector<RecordKey> keys{database.key(record)};
  const Family family = read_family(database, record);
  if (family.mode != TAVD_SIZING_PATTERN && family.mode != TAVD_SIZING_LIST) return keys;
  for (const FamilySize& size : family.sizes) {
    if (size.key != keys.front()) keys.push_back(size.key);
  }
  return keys;
}

std::string described(const std::vector<RecordKey>& keys) {
  const std::size_t sizes = keys.size() - 1;
  std::string text = printable(keys.front().class_id) + ' ' + printable(keys.front().object_id);
  if (sizes > 0) text += " and its " + std::to_string(sizes) + (sizes == 1 ? " size" : " sizes");
  return text;
}

// Asks whoever sits at the terminal. Without one only --yes will do.
void confirm(const std::vector<RecordKey>& keys, const std::string& path) {
  if (!is_terminal(Stream::kInput)) {
    throw UserError("deleting " + described(keys) + " from " + path +
                    " needs a yes: there is no terminal to ask on, expected --yes");
  }
  std::cerr << "Delete " << described(keys) << " from " << path << "? [y/N] " << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  if (!same_letters(answer, "y") && !same_letters(answer, "yes")) {
    throw UserError("nothing was deleted, as the answer was not yes");
  }
}

void delete_product(const Database& database, const RecordKey& key) {
  Transaction transaction(database);
  if (tavdf_delete_recs(database.handle(), key.class_id.c_str(), key.object_id.c_str()) != 0) {
    throw std::runtime_error("the product vanished before it was deleted");
  }
  transaction.commit();
}

void run_delete(const DeleteOptions& options) {
  const ProductChoice& choice = options.product;
  const Database database(choice.path);
  const Record record = database.product(choice.class_id, choice.object_id);
  if (choice.class_id == kFileHeaderClass) {
    throw UserError(in_quotes(choice.class_id) +
                    " is the class of the file header, which every database needs; expected a product");
  }
  const std::vector<RecordKey> keys = doomed_records(database, record);
  if (!options.yes) confirm(keys, choice.path);
  delete_product(database, keys.front());
  if (!options.json) {
    std::cout << described(keys) << " deleted from " << choice.path << '\n';
    return;
  }
  Json::Value json;
  for (const RecordKey& key : keys) {
    Json::Value gone;
    gone["class"] = printable(key.class_id);
    gone["id"] = printable(key.object_id);
    json["deleted"].append(gone);
  }
  write_json(std::cout, json);
}

}  // namespace

void add_delete_command(CLI::App& app) {
  auto options = std::make_shared<DeleteOptions>();
  CLI::App* command = app.add_subcommand("delete", "Deletes a product with its sizes; model records stay");
  add_product_arguments(*command, options->product);
  command->add_flag("--yes", options->yes, "Do not ask; needed where there is no terminal to ask on");
  command->add_flag("--json", options->json, "What was deleted, as JSON");
  command->footer("Example: tavd delete catalogue.tavdb DMP QZDA-160 --yes");
  command->callback([options] { run_delete(*options); });
}

}  // namespace tavdhost
