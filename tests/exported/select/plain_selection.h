// Selection as one writes it with the single functions of libtavd: every product is asked everything, one
// call after the other, and what fits is sorted. Slow, and without anything of libtavdn.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tavd/tavdn_select.h"

namespace selecttest {

struct PlainProduct {
  std::string class_id, object_id;
  DuctSize duct;
  FlowData loaded;
};

// The products of a database, by class and id.
std::vector<PlainProduct> plain_products(std::int16_t db, bool without_end_reflection);

// Name and value; null: every value of the table.
using PlainValues = std::vector<std::pair<std::string, const char*>>;

struct PlainHit {
  tavdn_hit hit;    // without `variant`
  FlowData chosen;  // what it was calculated with
  bool has_key;
  float key;
};

struct PlainAnswer {
  std::vector<PlainHit> hits;  // all that fit, the best first
  std::vector<unsigned char> reasons;
};

PlainAnswer plain_select(const std::vector<PlainProduct>& products, const PlainValues& values,
                         const tavdn_duty& duty);

}  // namespace selecttest
