// Products that are stored in layers: one main record, sub records by pattern, exact records.
#pragma once

#include <string>
#include <vector>

#include "product/database.h"
#include "tavd/tavdidset.h"

namespace tavdhost {

// One record that takes part in answering for a variant.
struct Layer {
  enum class Kind { kExact, kSub, kMain };
  Kind kind;
  std::string object_id;
  tavb_rec record;  // the set's
};

// The records of one product, released at the end.
class Layers {
 public:
  // Reads the product that `object_id` is a variant or a record of. Throws UserError if the id has no
  // separator or the product has two main records.
  Layers(const Database& database, const std::string& class_id, const std::string& object_id);
  ~Layers();
  Layers(const Layers&) = delete;
  Layers& operator=(const Layers&) = delete;

  // Object id of the main record, empty without one.
  std::string main_id() const { return set_.mainId; }
  // Turns to one variant: false if its id does not fit the main record's, or there is none.
  bool adjust(const std::string& object_id);
  // The records that are asked for the variant, in the order in which they are.
  std::vector<Layer> asked() const;
  // Whether any of them holds the attribute, as the library answers.
  bool holds(std::int16_t attribute);

 private:
  const Database& database_;
  IdSet set_;
};

// Whether the id can be one of a layered product at all: it has a separator, "-" or "+".
bool has_separator(const std::string& object_id);

const char* layer_text(Layer::Kind kind);

}  // namespace tavdhost
