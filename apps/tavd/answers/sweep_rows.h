// Calculated points as rows of text.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "answers/calculated.h"

namespace tavdhost {

// Writes answers of products, point by point, behind what a text already holds. Numbers stand in the shortest
// digits that read back as the same float, with a decimal point, whatever the locale.
class SweepRows {
 public:
  virtual ~SweepRows() = default;

  virtual void begin(std::string& out) = 0;
  virtual void add(std::string& out, const Chosen& chosen, const OperatingPoint& point) = 0;
  virtual void end(std::string& out) = 0;
};

// What the rows of some products tell: whatever any of them can answer.
struct RowColumns {
  bool names_product;         // class, id and what else tells products apart
  bool by_flow, by_velocity;  // how they are measured
  bool with_dp;
  Answers answers;
};

RowColumns columns_of(const std::vector<const Product*>& products, bool with_dp, bool names_product);

// Comma-separated: a header line with the columns, named with their units, and a line per point. What is not
// known at a point is an empty cell.
std::unique_ptr<SweepRows> csv_rows(const RowColumns& columns, const AnswerForm& form);

// One JSON array with an object per point, a line each. Its keys are those of `tavd calc --json`, without the
// product, the texts of the codes and what is the same at each point; with `names_product` it begins with
// class and id. What is not known at a point is left out.
std::unique_ptr<SweepRows> json_rows(bool names_product, const AnswerForm& form);

}  // namespace tavdhost
