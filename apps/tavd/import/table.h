// Products read from tables: their measured points in the units of the catalogue.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/source.h"
#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavdhost {

// What a row of a table tells; what stands in no column or in an empty cell is not there.
struct MeasuredPoint {
  const Source* source;
  Source::Place place;
  std::optional<float> setting;
  std::optional<float> qv;  // l/s, or m/s by velocity
  std::optional<float> dp;  // Pa
  std::optional<std::array<int, TAVD_BANDS>> lw;
  std::optional<float> level;  // dB(A), as the table states it
  std::optional<float> L2;     // m
  std::optional<float> aux;
};

struct MeasuredProduct {
  std::string id;
  std::string description;
  DuctSize size;  // all zero: not told
  std::vector<MeasuredPoint> points;
};

// Reads tables of products of one kind, by velocity or not. `first` has what the rows do not tell themselves.
class TableReader {
 public:
  TableReader(bool by_velocity, MeasuredProduct first, Faults& faults)
      : by_velocity_(by_velocity), first_(std::move(first)), faults_(faults) {}

  void read(const Source& source);
  // In the order in which the tables name them.
  const std::vector<MeasuredProduct>& products() const { return products_; }

 private:
  bool by_velocity_;
  MeasuredProduct first_;
  Faults& faults_;
  std::vector<MeasuredProduct> products_;
};

}  // namespace tavdhost
