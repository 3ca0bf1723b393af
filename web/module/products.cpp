// Questions about a database and its products.
#include <cstring>
#include <iterator>

#include "base/json_text.h"
#include "base/text.h"
#include "drawing/drawings.h"
#include "product/families.h"
#include "product/languages.h"
#include "questions.h"
#include "shared/records.h"
#include "shared/selection.h"
#include "shared/units.h"
#include "tavd/tavd.h"
#include "version.h"

namespace tavdweb {
namespace {

using tavdhost::Product;
using tavdhost::Record;

Json::Value units_json(hosts::Quantity quantity) {
  Json::Value list(Json::arrayValue);
  const std::size_t on_axes = hosts::axis_units(quantity).size();
  for (const hosts::Unit& unit : hosts::units_of(quantity)) {
    Json::Value json;
    json["name"] = unit.name;
    json["sign"] = unit.sign;
    json["key"] = unit.key;
    json["in_base"] = unit.in_base;
    json["decimals"] = unit.decimals;
    json["on_axes"] = list.size() < on_axes;
    list.append(json);
  }
  return list;
}

std::string value_of(const char* text, std::size_t room) {
  return tavdhost::printable(tavdhost::trim_end({text, strnlen(text, room)}));
}

// The parameters that can be chosen, with the values of their tables.
Json::Value parameters_json(const FlowData& flow) {
  Json::Value list(Json::arrayValue);
  for (int i = 0; i < flow.npar; ++i) {
    const ParTable& table = flow.par[i];
    Json::Value json;
    json["name"] = tavdhost::printable(table.name);
    json["values"] = Json::Value(Json::arrayValue);
    for (int row = 0; row < table.count; ++row) {
      json["values"].append(value_of(table.table[row].value, sizeof table.table[row].value));
    }
    list.append(json);
  }
  return list;
}

// The values of the throw table, each run of rows once.
Json::Value throw_values_json(const FlowData& flow) {
  Json::Value list(Json::arrayValue);
  for (int row = 0; row < flow.nparL2; ++row) {
    const std::string value = value_of(flow.parL2[row].value, sizeof flow.parL2[row].value);
    if (list.empty() || list[list.size() - 1] != value) list.append(value);
  }
  return list;
}

Json::Value sizes_json(const tavdhost::Database& database, const Record& record) {
  Json::Value list(Json::arrayValue);
  for (const tavdhost::FamilySize& size : tavdhost::read_family(database, record).sizes) {
    Json::Value json;
    json["id"] = tavdhost::printable(size.key.object_id);
    json["size"] = tavdhost::size_json(size.size);
    list.append(json);
  }
  return list;
}

}  // namespace

Json::Value about(Session& /*session*/, const Json::Value& /*question*/) {
  Json::Value json;
  json["version"] = TAVD_VERSION_TEXT;
  json["interface"] = TAVD_INTERFACE_VERSION;
  json["flow_units"] = units_json(hosts::Quantity::kFlow);
  json["velocity_units"] = units_json(hosts::Quantity::kVelocity);
  json["pressure_units"] = units_json(hosts::Quantity::kPressure);
  for (const tavdhost::Language& language : tavdhost::languages()) {
    Json::Value each;
    each["language"] = language.iso;
    each["market"] = language.code;
    each["name"] = language.name;
    json["languages"].append(each);
  }
  for (const hosts::DutyWord& ranking : hosts::rankings()) json["rankings"].append(ranking.name);
  return json;
}

Json::Value open_database(Session& session, const Json::Value& question) {
  session.open(text(question, "path"), {text(question, "market"), text(question, "language")});
  Json::Value json;
  json["classes"] = Json::Value(Json::arrayValue);
  for (const std::string& name : session.database().classes()) {
    if (hosts::is_product_class(name)) json["classes"].append(tavdhost::printable(name));
  }
  return json;
}

Json::Value list_products(Session& session, const Json::Value& /*question*/) {
  const tavdhost::Database& database = session.database();
  Json::Value list(Json::arrayValue);
  for (Record record = database.first(); record; record = database.next(record)) {
    if (!hosts::is_product_class(database.key(record).class_id)) continue;
    const Product product = tavdhost::load_product(database, record);
    Json::Value json = tavdhost::product_json(product);
    const int mode = hosts::sizing_mode(database.handle(), record);
    json["family"] = mode == TAVD_SIZING_PATTERN || mode == TAVD_SIZING_LIST;
    list.append(json);
  }
  tavdhost::check_service();
  return list;
}

Json::Value show_product(Session& session, const Json::Value& question) {
  const tavdhost::Database& database = session.database();
  const tavdhost::Chosen chosen = chosen_product(session, question);
  const Product& product = chosen.product;
  const Record record = database.find(product.key.class_id, product.key.object_id);
  Json::Value json = tavdhost::product_json(product, shown_units(question));
  json["by_velocity"] = product.flow.isvelocity != 0;
  json["parameters"] = parameters_json(product.flow);
  json["has_throw"] = tavdhost::has_throw_data(product.flow);
  json["throw_values"] = throw_values_json(product.flow);
  json["has_sketch"] = record && tavdhost::has_shape(database, record);
  json["sizes"] =
      chosen.origin.is_main_record() ? sizes_json(database, record) : Json::Value(Json::arrayValue);
  json["weblink"] = record ? tavdhost::web_link(database, record) : "";
  return json;
}

}  // namespace tavdweb
