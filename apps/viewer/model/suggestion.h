// An operating point for a product that the user has typed none for.
#pragma once

#include "model/product.h"

namespace viewer {

// In the middle of the product's limits of flow; 0 without flow data.
float suggested_flow(const Product& product);

// What the product takes or delivers at the flow, in the middle of its limits where it can be set.
float suggested_pressure(const Product& product, float qv);

}  // namespace viewer
