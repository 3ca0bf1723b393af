// The points of a sweep as text.
#pragma once

#include <memory>
#include <string>

#include "product/operating_point.h"

namespace tavdhost {

// Writes the answers of one product, point by point, behind what a text already holds. Numbers stand in the
// shortest digits that read back as the same float, with a decimal point, whatever the locale.
class SweepRows {
 public:
  virtual ~SweepRows() = default;

  virtual void begin(std::string& out) = 0;
  virtual void add(std::string& out, const OperatingPoint& point) = 0;
  virtual void end(std::string& out) = 0;
};

// Comma-separated: a header line with the columns that the product can answer, named with their units, and a
// line per point. What is not known at a point is an empty cell.
std::unique_ptr<SweepRows> csv_rows(const Product& product, const Answers& answers, bool with_dp);

// One JSON array with an object per point, a line each. Its keys are those of `tavd calc --json`, without the
// product and the texts of the codes; what is not known at a point is left out.
std::unique_ptr<SweepRows> json_rows(const Product& product);

}  // namespace tavdhost
