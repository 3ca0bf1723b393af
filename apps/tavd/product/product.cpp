#include "product/product.h"

#include <algorithm>
#include <cstring>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "shared/kinds.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

constexpr std::int32_t kTextUnits = 256;  // UTF-16 units that a code or description takes at most

template <typename Copy>
std::string product_text(const Database& database, const Record& record, Copy copy) {
  tavd_wchar wide[kTextUnits] = {};
  copy(database.handle(), record.get(), wide, kTextUnits);
  return printable(to_utf8(wide, kTextUnits));
}

std::string value_text(const ParEntry& row) {
  const std::string_view value(row.value, strnlen(row.value, sizeof row.value));
  return printable(trim_end(value));
}

std::string value_list(const ParTable& table) {
  std::string values;
  for (int i = 0; i < table.count; ++i) values += (i == 0 ? "" : ", ") + value_text(table.table[i]);
  return values;
}

bool is_number(const std::string& value) {
  float number = 0;
  return tavca_param_valuetoreal(value.c_str(), &number) == 0;
}

// Numbers may lie between the rows of a table of numbers; any other value must be one of the rows. The
// library itself quietly takes the first row for a value that it does not find.
bool table_knows(const ParTable& table, const std::string& value) {
  const ParEntry* end = table.table + table.count;
  const bool numbers =
      std::all_of(table.table, end, [](const ParEntry& row) { return is_number(value_text(row)); });
  if (numbers && is_number(value)) return true;
  return std::any_of(table.table, end, [&](const ParEntry& row) {
    return tavca_param_valuecmp(value_text(row).c_str(), value.c_str()) == 0;
  });
}

void set_parameter(FlowData& flow, const std::string& choice) {
  const std::size_t equals = choice.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw UserError("--param is " + in_quotes(choice) + ", expected NAME=VALUE");
  }
  const std::string name = choice.substr(0, equals);
  const std::string value = choice.substr(equals + 1);
  if (tavca_param_setvalue(&flow, name.c_str(), value.c_str()) != 0) {
    std::string known;
    for (int i = 0; i < flow.npar; ++i) known += (i == 0 ? "" : ", ") + printable(flow.par[i].name);
    throw UserError("the product has no parameter " + in_quotes(name) + "; " +
                    (known.empty() ? "it has none" : "it has " + known));
  }
  const ParTable& table = same_letters(name, flow.par[0].name) ? flow.par[0] : flow.par[1];
  if (!value.empty() && !table_knows(table, value)) {
    throw UserError("parameter " + printable(name) + " has no value " + in_quotes(value) + "; it has " +
                    value_list(table));
  }
}

}  // namespace

Product load_product(const Database& database, const Record& record) {
  Product product;
  product.key = database.key(record);
  product.code = product_text(database, record, tavdf_copyproductcodew);
  product.description = product_text(database, record, tavdf_copyproductdescw);
  tavdf_load_ductsize(database.handle(), record.get(), &product.size);
  tavca_load_flowdata(database.handle(), record.get(), &product.flow);
  return product;
}

std::string web_link(const Database& database, const Record& record) {
  return product_text(database, record, tavdf_copyweblinkw);
}

std::string kind_text(const FlowData& flow) {
  if (flow.nhdd == 0) return "no flow data";
  const char* name = hosts::kind_name(flow.kind);
  return name == nullptr ? "kind " + std::to_string(int{flow.kind}) : name;
}

std::string size_text(const DuctSize& size) {
  if (size.b == 0) return "";
  const std::string width = std::to_string(size.b);
  return size.shape == 0 ? width : width + "x" + std::to_string(size.h);
}

const char* flow_unit(const FlowData& flow) {
  return flow.isvelocity ? "m/s" : "l/s";
}

std::string flow_key(const FlowData& flow, const std::string& which, const ShownUnits& units) {
  return (flow.isvelocity != 0 ? "v" : "qv") + which + "_" + units.flow_of(flow).key;
}

std::string pressure_key(const std::string& which, const ShownUnits& units) {
  return "dp" + which + "_" + units.pressure->key;
}

std::string flow_limits_text(const FlowData& flow, const ShownUnits& units) {
  const hosts::Unit& unit = units.flow_of(flow);
  return brief(shown(flow.qvmin, unit)) + " - " + brief(shown(flow.qvmax, unit)) + " " + unit.name;
}

std::string pressure_limits_text(const FlowData& flow, const ShownUnits& units) {
  const hosts::Unit& unit = *units.pressure;
  return brief(shown(flow.dpmin, unit)) + " - " + brief(shown(flow.dpmax, unit)) + " " + unit.name +
         ", total";
}

Json::Value size_json(const DuctSize& size) {
  Json::Value json;
  if (size.b != 0 && size.shape == 0) {
    json["diameter_mm"] = int{size.b};
  } else if (size.b != 0) {
    json["width_mm"] = int{size.b};
    json["height_mm"] = int{size.h};
  }
  return json;
}

Json::Value product_json(const Product& product, const ShownUnits& units) {
  const FlowData& flow = product.flow;
  Json::Value json;
  json["class"] = printable(product.key.class_id);
  json["id"] = printable(product.key.object_id);
  json["code"] = product.code;
  json["description"] = product.description;
  json["kind"] = flow.nhdd == 0 ? Json::Value() : Json::Value(int{flow.kind});
  json["kind_text"] = kind_text(flow);
  json["size"] = size_json(product.size);
  json["limits"] = Json::nullValue;
  if (flow.nhdd != 0) {
    const hosts::Unit& unit = units.flow_of(flow);
    json["limits"][flow_key(flow, "_min", units)] = json_number(shown(flow.qvmin, unit));
    json["limits"][flow_key(flow, "_max", units)] = json_number(shown(flow.qvmax, unit));
    json["limits"][pressure_key("_min", units)] = json_number(shown(flow.dpmin, *units.pressure));
    json["limits"][pressure_key("_max", units)] = json_number(shown(flow.dpmax, *units.pressure));
  }
  return json;
}

void set_parameters(FlowData& flow, const std::vector<std::string>& choices) {
  for (const std::string& choice : choices) set_parameter(flow, choice);
}

std::vector<std::pair<std::string, std::string>> chosen_parameters(const FlowData& flow) {
  std::vector<std::pair<std::string, std::string>> chosen;
  for (int i = 0; i < flow.npar; ++i) {
    const ParTable& table = flow.par[i];
    if (table.value[0] != '\0') chosen.emplace_back(table.name, table.value);
  }
  return chosen;
}

}  // namespace tavdhost
