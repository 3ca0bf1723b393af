// The choices of parameter values that a product is prepared for.
#pragma once

#include <string>
#include <vector>

#include "many/select/catalogue.h"

namespace tavd {

struct WantedValue {
  std::string name;
  std::string value;
  bool is_free;
};
using WantedValues = std::vector<WantedValue>;

// Prepares the product for each of the sets. One that no set suits is prepared as it was loaded.
void prepare_variants(const FlowData& loaded, const std::vector<WantedValues>& sets, Candidate& candidate);

}  // namespace tavd
