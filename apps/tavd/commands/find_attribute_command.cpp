// tavd find-attribute: an attribute of a layered product, and the layer that has it.
#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/text.h"
#include "catalogue/attributes.h"
#include "catalogue/contents.h"
#include "catalogue/entry.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "product/layers.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

struct FindOptions {
  ProductChoice product;
  std::string attribute;
  bool json = false;
};

// A layer of the answer, and whether it holds the attribute.
struct Answer {
  Layer layer;
  bool holds;
};

struct Found {
  std::int16_t number;
  std::vector<Answer> answers;  // in the order in which they are asked; the first that holds it answers
  std::size_t answering;        // its index
  Held held;
};

// A name, "code.FIN", a number; or "code", "description" and "weblink" of the chosen market and language.
std::int16_t asked_number(const std::string& name) {
  if (name == "code") return tavdcore_pcodeAttId();
  if (name == "weblink") return tavdcore_weblinkAttId();
  if (name == "description") return tavdcore_pdescAttId();
  if (const auto number = attribute_number(name)) return *number;
  throw UserError("no attribute " + in_quotes(name) +
                  "; expected a name such as flowheader or code.FIN, or a number such as 1650");
}

bool holds(const Database& database, const Layer& layer, std::int16_t number) {
  char no_room = 0;
  return tavbcopyatt(database.handle(), layer.record, number, nullptr, &no_room, 0) != nullptr;
}

std::string bytes_of(const Layer& layer, std::int16_t number) {
  const std::int32_t count = tavdsrv_attributecount(layer.record);
  for (std::int32_t i = 0; i < count; ++i) {
    std::int16_t at = 0;
    const void* data = nullptr;
    std::int32_t length = 0;
    tavdsrv_attributeat(layer.record, i, &at, &data, &length);
    if (at == number) return {static_cast<const char*>(data), static_cast<std::size_t>(length)};
  }
  return {};
}

std::string joined(const std::vector<Answer>& answers) {
  std::string text;
  for (const Answer& answer : answers) {
    text += (text.empty() ? "" : ", ") + std::string(layer_text(answer.layer.kind)) + ' ' +
            printable(answer.layer.object_id);
  }
  return text;
}

Found find(const Database& database, const ProductChoice& choice, Layers& layers, std::int16_t number) {
  const std::string id(trim_end(choice.object_id));
  if (layers.main_id().empty()) {
    throw UserError("no main record (sizing mode 10) for " + in_quotes(choice.class_id) + " " +
                    in_quotes(id) + " in " + database.path() + "; expected a variant of a layered product");
  }
  if (!layers.adjust(id)) {
    throw UserError(in_quotes(id) + " does not fit the main record, expected an id such as " +
                    in_quotes(layers.main_id()) + " with something for each *");
  }
  Found found{number, {}, 0, {}};
  for (const Layer& layer : layers.asked()) found.answers.push_back({layer, holds(database, layer, number)});
  if (!layers.holds(number)) {
    throw UserError("no layer of " + in_quotes(id) + " holds " + attribute_name(number) + " (" +
                    std::to_string(number) + "); asked were " + joined(found.answers));
  }
  while (!found.answers.at(found.answering).holds) ++found.answering;
  TextCodec codec(database.handle());
  found.held = held_attribute(codec, number, bytes_of(found.answers[found.answering].layer, number));
  return found;
}

void print_found(const ProductChoice& choice, const Found& found) {
  std::cout << printable(choice.class_id) << ' ' << printable(trim_end(choice.object_id)) << ": "
            << attribute_name(found.number) << " (" << found.number << ")\n";
  Columns columns;
  columns.add({"  LAYER", "ID", "HOLDS IT"});
  for (std::size_t i = 0; i < found.answers.size(); ++i) {
    const Answer& answer = found.answers[i];
    const char* holds = !answer.holds ? "no" : i == found.answering ? "yes, answers" : "yes";
    columns.add(
        {"  " + std::string(layer_text(answer.layer.kind)), printable(answer.layer.object_id), holds});
  }
  columns.print(std::cout);
  if (const auto line = line_of(found.held)) {
    std::cout << '\n' << title_of(found.held) << ": " << *line << '\n';
  } else {
    print_table(std::cout, found.held, "l/s or m/s");
  }
}

Json::Value layer_json(const Answer& answer) {
  Json::Value json;
  json["layer"] = layer_text(answer.layer.kind);
  json["id"] = printable(answer.layer.object_id);
  json["holds"] = answer.holds;
  return json;
}

void print_json(const ProductChoice& choice, const Found& found) {
  Json::Value json;
  json["class"] = printable(choice.class_id);
  json["id"] = printable(trim_end(choice.object_id));
  json["attribute"] = int{found.number};
  json["name"] = attribute_name(found.number);
  json["answered_by"] = layer_json(found.answers[found.answering]);
  for (const Answer& answer : found.answers) json["layers"].append(layer_json(answer));
  if (found.held.value) {
    json["value"] = *found.held.value;
  } else {
    json["hex"] = to_hex(found.held.bytes);
  }
  write_json(std::cout, json);
}

void run_find(const FindOptions& options) {
  const ProductChoice& choice = options.product;
  const Database database(choice.path, Database::Open::kExisting, choice.texts);
  const std::vector<std::string> classes = database.classes();
  if (std::ranges::find(classes, choice.class_id) == classes.end())
    throw database.unknown_class(choice.class_id);
  const std::int16_t number = asked_number(options.attribute);
  Layers layers(database, choice.class_id, std::string(trim_end(choice.object_id)));
  const Found found = find(database, choice, layers, number);
  if (options.json) {
    print_json(choice, found);
  } else {
    print_found(choice, found);
  }
}

}  // namespace

void add_find_attribute_command(CLI::App& app) {
  auto options = std::make_shared<FindOptions>();
  CLI::App* command = app.add_subcommand(
      "find-attribute", "Tells which record of a layered product answers for one variant, and the value");
  add_product_arguments(*command, options->product);
  command
      ->add_option("ATTRIBUTE", options->attribute,
                   "Name as in the catalogue's text (flowheader, code.FIN), or number; code, description and "
                   "weblink alone are those of the market and the language")
      ->required();
  command->add_flag("--json", options->json, "As JSON");
  add_text_options(*command, options->product.texts);
  command->footer("Example: tavd find-attribute catalogue.tavdb GRL QZGA-400x200-S+W flowheader");
  command->callback([options] { run_find(*options); });
}

}  // namespace tavdhost
