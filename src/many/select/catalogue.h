// Products that are ready to be selected from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "many/product.h"
#include "tavd/tavdn_select.h"

namespace tavd {

// Places of one set of parameter values in Candidate::choices.
struct Choices {
  std::uint32_t first, count;
};

// A product of the catalogue. Where two sets of parameter values choose the same of it, it is prepared once.
struct Candidate {
  tavdn_listed listed;
  std::vector<tavd_wchar> texts;  // code and description, each with its terminator
  std::size_t class_index;        // in tavdn_catalogue::classes
  std::vector<std::unique_ptr<const tavdn_product>> variants;
  std::vector<std::uint32_t> choices;  // variants, set by set
  std::vector<Choices> of_set;         // none for a set with a value that its tables do not have

  const FlowData& fd() const { return variants.front()->fd; }
  bool has_size() const { return listed.duct.b != 0; }
};

}  // namespace tavd

struct tavdn_catalogue {
  std::vector<tavd::Candidate> products;  // by class and id
  std::vector<std::string> classes;       // of the products, rising
  std::size_t sets = 0;
};
