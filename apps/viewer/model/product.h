// One product with its numbers, ready to calculate.
#pragma once

#include <string>
#include <vector>

#include "model/database.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace viewer {

struct Product {
  Listed listed;
  FlowData flow;  // sound levels freed of the duct end reflection, as the diagram shows them
  DuctSize size;  // all zero: not known
};

Product load_product(const Database& database, const Record& record);

bool has_flow_data(const Product& product);

// Whether throw lines are chosen by a value, which parameter "G" gives where the product has that one.
bool has_throw_lines(const Product& product);

// "ø160 mm", "300 × 200 mm"; empty if the size is not known.
std::wstring size_text(const DuctSize& size);

// "adjustable damper"; "no flow data" for a product without any.
std::wstring kind_text(const Product& product);

// A choice of a parameter's value, in the database's bytes.
struct Choice {
  std::string name, value;
};

void choose(Product& product, const std::vector<Choice>& choices);

}  // namespace viewer
