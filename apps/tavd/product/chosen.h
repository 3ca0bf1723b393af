// A product to calculate, with what its numbers rest on: the record that they come from, and the end
// reflection of the duct.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "product/layers.h"
#include "product/product.h"

namespace tavdhost {

// A record of a layered product that is asked for a variant, and the attributes of the flow data that it
// answers.
struct AnsweringLayer {
  Layer::Kind kind;
  std::string object_id;
  std::vector<std::int16_t> attributes;  // by rising number
};

// Where the numbers of a product come from.
struct Origin {
  int mode = 0;                        // how the record takes part in a family, TAVD_SIZING_
  std::size_t sizes = 0;               // of the family whose main record it is
  std::string data_of;                 // of a main record: the first size with the same flow data, or empty
  std::vector<AnsweringLayer> layers;  // of a layered product, in the order in which they are asked

  bool is_main_record() const;
};

// How the end reflection of the duct stands in the sound table.
enum class EndReflection {
  kNone,     // there is none to take off: no sound table, no duct, or a class whose table is without it
  kInTable,  // the table is as it was measured
  kTakenOff
};

struct Chosen {
  Product product;
  Origin origin;
  EndReflection end_reflection = EndReflection::kNone;
};

// Finds products to calculate. One that takes part in a layered product is put together from the layers, as
// an attribute of it is found; the name then need not be that of a record. The code of a main record is that
// of the size whose data it has, and a template in it is filled in for the product's own size.
class ProductChooser {
 public:
  explicit ProductChooser(const Database& database) : database_(database) {}

  // Throws UserError if there is no such product.
  Chosen choose(const std::string& class_id, const std::string& object_id);

 private:
  bool follow_layers(const std::string& class_id, const std::string& id, Chosen& chosen);
  Layers& layers_of(const std::string& class_id, const std::string& id);

  const Database& database_;
  // Those of the last product: they are all records that begin like it, which many neighbours share.
  std::string read_for_;
  std::unique_ptr<Layers> layers_;
};

// Takes the end reflection off the sound table if that is asked for, and notes how it stands.
void settle_end_reflection(Chosen& chosen, bool take_off);

// Throws UserError, which names the product and its database, if there is nothing to calculate it with.
void refuse_without_flow_data(const Chosen& chosen, const Database& database);

// Id of the record that gives the flow data, where that is not the product's own: the size that a main record
// has the data of, or the layer with the header; empty otherwise.
std::string data_of(const Chosen& chosen);

}  // namespace tavdhost
