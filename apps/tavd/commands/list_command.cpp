// tavd list: the products of a database, a line each.
#include <iostream>
#include <memory>
#include <string>

#include "base/csv.h"
#include "base/errors.h"
#include "base/json_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/product_choice.h"
#include "product/product.h"

namespace tavdhost {
namespace {

struct ListOptions {
  std::string path;
  std::string class_id;  // empty: all products
  bool csv = false;
  bool json = false;
  TextChoice texts;
};

std::string range(float lowest, float highest, const char* unit) {
  return brief(lowest) + " - " + brief(highest) + " " + unit;
}

std::vector<std::string> row_of(const Product& product) {
  const FlowData& flow = product.flow;
  const bool known = flow.nhdd != 0;
  return {printable(product.key.class_id),
          printable(product.key.object_id),
          kind_text(flow),
          size_text(product.size),
          known ? range(flow.qvmin, flow.qvmax, flow_unit(flow)) : "",
          known ? range(flow.dpmin, flow.dpmax, "Pa") : "",
          product.code,
          product.description};
}

bool is_wanted(const std::string& record_class, const std::string& wanted) {
  return wanted.empty() ? hosts::is_product_class(record_class) : trim_end(record_class) == trim_end(wanted);
}

std::vector<Product> read_products(const Database& database, const std::string& wanted_class) {
  std::vector<Product> products;
  for (Record record = database.first(); record; record = database.next(record)) {
    if (is_wanted(database.key(record).class_id, wanted_class)) {
      products.push_back(load_product(database, record));
    }
  }
  return products;
}

void print_table(const std::vector<Product>& products) {
  Columns columns;
  columns.add({"CLASS", "ID", "KIND", "SIZE mm", "FLOW", "TOTAL PRESSURE", "CODE", "DESCRIPTION"});
  for (const Product& product : products) columns.add(row_of(product));
  columns.print(std::cout);
}

// Numbers in full and a column for each unit.
void print_csv(const std::vector<Product>& products) {
  std::string text =
      "class,id,kind,size_mm,qv_min_l_s,qv_max_l_s,v_min_m_s,v_max_m_s,dp_min_Pa,dp_max_Pa,code,"
      "description\n";
  for (const Product& product : products) {
    const FlowData& flow = product.flow;
    const bool known = flow.nhdd != 0;
    const bool by_velocity = flow.isvelocity != 0;
    CsvLine line(text);
    const auto number = [&](bool given, float value) { given ? line.number(value) : line.empty(); };
    line.text(printable(product.key.class_id));
    line.text(printable(product.key.object_id));
    line.text(kind_text(flow));
    line.text(size_text(product.size));
    for (const bool column_by_velocity : {false, true}) {
      number(known && by_velocity == column_by_velocity, flow.qvmin);
      number(known && by_velocity == column_by_velocity, flow.qvmax);
    }
    number(known, flow.dpmin);
    number(known, flow.dpmax);
    line.text(product.code);
    line.text(product.description);
    line.end();
  }
  std::cout << text;
}

void print_json(const std::vector<Product>& products) {
  Json::Value list(Json::arrayValue);
  for (const Product& product : products) list.append(product_json(product));
  write_json(std::cout, list);
}

void run_list(const ListOptions& options) {
  const Database database(options.path, Database::Open::kExisting, options.texts);
  const std::vector<Product> products = read_products(database, options.class_id);
  if (products.empty() && !options.class_id.empty()) throw database.unknown_class(options.class_id);
  if (options.json) {
    print_json(products);
  } else if (options.csv) {
    print_csv(products);
  } else if (products.empty()) {
    std::cout << "no products\n";
  } else {
    print_table(products);
  }
}

}  // namespace

void add_list_command(CLI::App& app) {
  auto options = std::make_shared<ListOptions>();
  CLI::App* command = app.add_subcommand("list", "Lists the products of a database");
  command->add_option("DB", options->path, "Product database")->required();
  command->add_option("--class", options->class_id, "Only this class, 3 characters")->type_name("CLASS");
  CLI::Option* csv = command->add_flag("--csv", options->csv, "Comma-separated, numbers in full");
  command->add_flag("--json", options->json, "As JSON")->excludes(csv);
  add_text_options(*command, options->texts);
  command->footer(
      "File header and model records are left out; --class 000 and --class TVM show them.\n"
      "Example: tavd list catalogue.tavdb --class DMP --language en");
  command->callback([options] { run_list(*options); });
}

}  // namespace tavdhost
