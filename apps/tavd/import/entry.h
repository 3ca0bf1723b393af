// Measured products as a source of the catalogue.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/source.h"
#include "import/table.h"

namespace tavdhost {

struct LimitPair {
  float low, high;
};

// What tables do not tell, the same for all products.
struct ImportSettings {
  std::int16_t kind;  // TAVD_KIND_
  bool static_pressures;
  std::string class_id;
  std::optional<LimitPair>
      flows;  // l/s, or m/s by velocity; nothing: from the lowest to the highest measured
  std::optional<LimitPair> pressures;  // Pa; likewise
};

// The source that `tavd db build` takes. What is missing for the kind goes into `faults`.
std::string source_text(const std::vector<MeasuredProduct>& products, const ImportSettings& settings,
                        Faults& faults);

}  // namespace tavdhost
