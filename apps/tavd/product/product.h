// What the commands show of a product before anything is calculated.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "product/database.h"
#include "product/shown_units.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavdhost {

struct Product {
  RecordKey key;
  std::string code;         // UTF-8
  std::string description;  // UTF-8, empty if the product has none in the language
  DuctSize size;            // all zero: not known
  FlowData flow;            // nhdd 0: the product has no flow data
};

Product load_product(const Database& database, const Record& record);

// The web link of the chosen market, UTF-8; empty if the product has none.
std::string web_link(const Database& database, const Record& record);

// The kind of product in words, such as "adjustable damper"; "no flow data" for a record without any.
std::string kind_text(const FlowData& flow);

// "125" for a round duct, "400x200" for a rectangular one, in mm; empty if the size is not known.
std::string size_text(const DuctSize& size);

// "l/s", or "m/s" where the product's flows are air velocities; and the same as it ends a key in JSON:
// "qv_min_l_s" and "dp_min_Pa" for "_min".
const char* flow_unit(const FlowData& flow);
std::string flow_key(const FlowData& flow, const std::string& which = "", const ShownUnits& units = {});
std::string pressure_key(const std::string& which = "", const ShownUnits& units = {});

// "16 - 160 l/s" and "5 - 300 Pa, total".
std::string flow_limits_text(const FlowData& flow, const ShownUnits& units = {});
std::string pressure_limits_text(const FlowData& flow, const ShownUnits& units = {});

// The size as JSON: diameter_mm, or width_mm and height_mm; null if it is not known.
Json::Value size_json(const DuctSize& size);

// The product as JSON: class, id, code, description, kind, size and limits.
Json::Value product_json(const Product& product, const ShownUnits& units = {});

// Chooses the values of parameters, each written NAME=VALUE. Throws UserError for a parameter that the
// product does not have and for a value that its table does not know.
void set_parameters(FlowData& flow, const std::vector<std::string>& choices);

// The chosen parameters as name and value, in the order of the product's tables.
std::vector<std::pair<std::string, std::string>> chosen_parameters(const FlowData& flow);

}  // namespace tavdhost
