// tavd show: everything that a database holds of a product.
#include <json/reader.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "base/json_text.h"
#include "base/sheet.h"
#include "base/text.h"
#include "catalogue/contents.h"
#include "catalogue/entry.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "product/families.h"
#include "product/product.h"
#include "tavd/attributes.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

// The repair may write ten words whatever the number of words is.
constexpr std::int16_t kShapeRoom = int{TAVD_SHAPE_ITEMS} + int{TAVDF_SHAPE_MIN_WORDS};
// Shown in the head of the sheet, in better words than their bare value.
constexpr std::int16_t kShownBefore[] = {TAVD_ATT_SHAPE_DATA, TAVD_ATT_SIZING_MODE, TAVD_ATT_MODEL_ID,
                                         TAVD_ATT_MEMBER_IDS, TAVD_ATT_MODEL_ID_SECOND};

struct ShowOptions {
  ProductChoice product;
  bool json = false;
};

// A product with everything that the database holds of it.
struct Shown {
  Product product;
  Entry entry;
  std::string weblink;
  Family family;
  std::vector<std::string> families;  // that it belongs to
  std::string model;                  // object id of its model record
  bool model_found = false;
  std::vector<std::int16_t> shape;        // as stored
  std::vector<std::int16_t> drawn_shape;  // as it is drawn for the product's size
};

std::vector<std::int16_t> drawn_shape(const Database& database, const Record& record, const DuctSize& size) {
  std::int16_t words[kShapeRoom] = {};
  const std::int16_t count =
      tavdf_load_shapedata(database.handle(), record.get(), &size, words, TAVD_SHAPE_ITEMS);
  return {words, words + std::max<int>(count, 0)};
}

std::vector<std::int16_t> stored_shape(const Database& database, const Record& record) {
  std::int16_t words[TAVD_SHAPE_ITEMS] = {};
  std::int16_t count = 0;
  tavbcopyatt(database.handle(), record.get(), TAVD_ATT_SHAPE_DATA, &count, words, sizeof words);
  return {words, words + std::clamp<int>(count, 0, TAVD_SHAPE_ITEMS)};
}

Shown read_shown(const Database& database, const ProductChoice& choice) {
  const Record record = database.product(choice.class_id, choice.object_id);
  Shown shown{load_product(database, record), stored_entry(database, record), {}, {}, {}, {}, {}, {}, {}};
  shown.weblink = web_link(database, record);
  shown.family = read_family(database, record);
  shown.families = families_of(database, shown.product.key);
  shown.model = model_id(database, record);
  shown.model_found = static_cast<bool>(database.find(kModelClass, shown.model));
  shown.shape = stored_shape(database, record);
  shown.drawn_shape = drawn_shape(database, record, shown.product.size);
  return shown;
}

// ---- As text ---------------------------------------------------------------

std::string shape_text(const std::vector<std::int16_t>& shape) {
  std::string text = "number " + std::to_string(shape.front());
  for (std::size_t i = 1; i < shape.size(); ++i) {
    text += (i == 1 ? ", dimensions " : ", ") + std::to_string(shape[i]);
  }
  return shape.size() > 1 ? text + " mm" : text;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + printable(name);
  return text;
}

// What the pressures of the tables are, which are shown as they are stored.
std::string stored_pressures(const Shown& shown) {
  const auto header = shown.entry.attributes.find(TAVD_ATT_FLOW_HEADER);
  if (header == shown.entry.attributes.end() || header->second.size() < sizeof(std::int16_t)) {
    return shown.entry.attributes.contains(TAVD_ATT_OLD_HEADER) ? "total, kPa" : "";
  }
  std::int16_t kind = 0;
  header->second.copy(reinterpret_cast<char*>(&kind), sizeof kind);
  return kind >= TAVD_KIND_TOTAL_PRESSURE ? "total" : "static";
}

void add_family(Sheet& sheet, const Shown& shown) {
  const Family& family = shown.family;
  sheet.text("Sizing", sizing_text(family.mode));
  if (family.mode == TAVD_SIZING_PATTERN || family.mode == TAVD_SIZING_LIST) {
    std::vector<std::string> ids;
    for (const FamilySize& size : family.sizes) ids.push_back(size.key.object_id);
    sheet.text("Sizes", ids.empty() ? "none" : joined(ids));
    if (!family.missing.empty()) sheet.text("Sizes not found", joined(family.missing));
  }
  if (!shown.families.empty()) sheet.text("Size of", joined(shown.families));
}

void print_head(const Shown& shown) {
  const Product& product = shown.product;
  std::cout << printable(product.key.class_id) << ' ' << printable(product.key.object_id) << '\n';
  Sheet sheet;
  sheet.text("Code", product.code);
  if (!product.description.empty()) sheet.text("Description", product.description);
  if (!shown.weblink.empty()) sheet.text("Web link", shown.weblink);
  if (product.size.b != 0) sheet.text("Size", size_text(product.size) + " mm");
  sheet.text("Kind", kind_text(product.flow));
  if (product.flow.nhdd != 0) {
    sheet.text("Flow limits", flow_limits_text(product.flow));
    sheet.text("Pressure limits", pressure_limits_text(product.flow));
    sheet.text("Stored pressures", stored_pressures(shown));
  }
  add_family(sheet, shown);
  if (!shown.model.empty()) {
    sheet.text("Model record", printable(shown.model) + (shown.model_found ? "" : ", not in the database"));
  }
  if (!shown.shape.empty()) sheet.text("Shape", shape_text(shown.shape));
  if (shown.drawn_shape != shown.shape) sheet.text("  drawn as", shape_text(shown.drawn_shape));
  if (shown.entry.ahm) sheet.text("Attached block", std::to_string(shown.entry.ahm->size()) + " bytes");
  sheet.print(std::cout);
}

// What fits a line and is not in the head; texts of groups and tables follow on their own.
void print_lines(const std::vector<Held>& all) {
  Sheet sheet;
  bool any = false;
  for (const Held& held : all) {
    const bool shown = std::ranges::find(kShownBefore, held.number) != std::end(kShownBefore) && held.value;
    const bool of_group = held.value && held.name.find('.') != std::string::npos;
    const auto line = line_of(held);
    if (shown || of_group || !line) continue;
    sheet.text(title_of(held) + (held.layout == nullptr || !held.value ? "" : " (" + held.name + ")"), *line);
    any = true;
  }
  if (!any) return;
  std::cout << "\nOther attributes\n";
  sheet.print(std::cout);
}

void print_group(const std::vector<Held>& all, const TextGroup& group, const char* title) {
  Sheet sheet;
  bool any = false;
  for (const GroupText& text : group.texts) {
    const auto held = std::ranges::find(all, text.number, &Held::number);
    if (held == all.end() || !held->value) continue;
    sheet.text(text.key, line_of(*held).value_or(""));
    any = true;
  }
  if (!any) return;
  std::cout << '\n' << title << " (" << group.name << ")\n";
  sheet.print(std::cout);
}

void print_text(const Database& database, const Shown& shown) {
  TextCodec codec(database.handle());
  const std::vector<Held> all = held_attributes(codec, shown.entry);
  print_head(shown);
  print_lines(all);
  print_group(all, *find_text_group("code"), "Product codes");
  print_group(all, *find_text_group("description"), "Descriptions");
  print_group(all, *find_text_group("weblink"), "Web links");
  for (const Held& held : all) print_table(std::cout, held, flow_unit(shown.product.flow));
}

// ---- As JSON ---------------------------------------------------------------

Json::Value shape_json(const std::vector<std::int16_t>& shape) {
  Json::Value json;
  if (shape.empty()) return json;
  json["number"] = int{shape.front()};
  json["dimensions_mm"] = Json::Value(Json::arrayValue);
  for (std::size_t i = 1; i < shape.size(); ++i) json["dimensions_mm"].append(int{shape[i]});
  return json;
}

Json::Value names_json(const std::vector<std::string>& names) {
  Json::Value json(Json::arrayValue);
  for (const std::string& name : names) json.append(printable(name));
  return json;
}

// The attributes as the text of the catalogue has them.
Json::Value attributes_json(const Database& database, const Entry& entry) {
  TextCodec codec(database.handle());
  Json::Value json;
  std::string errors;
  std::istringstream text(entry_text(codec, entry));
  if (!Json::parseFromStream(Json::CharReaderBuilder(), text, &json, &errors)) {
    throw std::runtime_error("a record makes no JSON: " + errors);
  }
  json.removeMember("class");
  json.removeMember("id");
  return json;
}

Json::Value shown_json(const Database& database, const Shown& shown) {
  Json::Value json = product_json(shown.product);
  json["weblink"] = shown.weblink;
  json["sizing_mode"] = shown.family.mode;
  json["sizing_text"] = sizing_text(shown.family.mode);
  if (shown.family.mode == TAVD_SIZING_PATTERN || shown.family.mode == TAVD_SIZING_LIST) {
    json["sizes"] = Json::Value(Json::arrayValue);
    for (const FamilySize& size : shown.family.sizes) json["sizes"].append(printable(size.key.object_id));
    json["sizes_not_found"] = names_json(shown.family.missing);
  }
  json["size_of"] = names_json(shown.families);
  if (!shown.model.empty()) {
    json["model"]["id"] = printable(shown.model);
    json["model"]["found"] = shown.model_found;
  }
  json["shape"] = shape_json(shown.shape);
  if (shown.drawn_shape != shown.shape) json["shape"]["drawn_as"] = shape_json(shown.drawn_shape);
  json["attributes"] = attributes_json(database, shown.entry);
  return json;
}

// ---- The command -----------------------------------------------------------

void run_show(const ShowOptions& options) {
  const Database database(options.product.path, Database::Open::kExisting, options.product.texts);
  const Shown shown = read_shown(database, options.product);
  if (options.json) {
    write_json(std::cout, shown_json(database, shown));
  } else {
    print_text(database, shown);
  }
}

}  // namespace

void add_show_command(CLI::App& app) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* command = app.add_subcommand("show", "Shows everything that the database holds of a product");
  add_product_arguments(*command, options->product);
  command->add_flag("--json", options->json, "As JSON, the attributes as in the catalogue's text");
  add_text_options(*command, options->product.texts);
  command->footer("Example: tavd show catalogue.tavdb DMP QZDA-160 --market FIN --language en");
  command->callback([options] { run_show(*options); });
}

}  // namespace tavdhost
