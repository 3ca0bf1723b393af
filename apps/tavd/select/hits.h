// Products that fit, as tables, CSV and JSON.
#pragma once

#include <json/value.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "product/shown_units.h"
#include "select/catalogue.h"
#include "shared/selection.h"

namespace tavdhost {

using hosts::nearest_reason;
using hosts::reason_text;
using hosts::select_one;
using hosts::Selected;

// A hit beside the product that it is of, with its texts in UTF-8.
struct ShownHit {
  ShownHit(const tavdn_catalogue* catalogue, const tavdn_hit& hit);

  const tavdn_hit& hit;
  const FlowData& flow;
  std::string class_id, object_id, code, description, size;
  std::string parameters;  // those that are chosen: "PLATE=75 G=45"
};

// A table for reading; behind it, with `explain`, why each of the others does not fit, and where nothing fits
// how many products each reason excludes.
void print_hits(std::ostream& out, const SelectCatalogue& catalogue, const Request& request,
                const Selected& selected, bool explain, const ShownUnits& units);

Json::Value hits_json(const SelectCatalogue& catalogue, const Request& request, const Selected& selected,
                      bool explain, const ShownUnits& units);

// Comma-separated: a line of headings, and one for each duty and rank. `own` is what a line begins with.
class HitLines {
 public:
  explicit HitLines(const ShownUnits& units) : units_(units) {}

  void heading(const std::vector<std::string>& own, std::string& out) const;
  // A duty that nothing fits has one line, without rank and product; `why_not` may be empty.
  void add(const std::vector<std::string>& own, const tavdn_catalogue* catalogue, const tavdn_duty& duty,
           const Selected& selected, const std::string& why_not, std::string& out) const;

 private:
  ShownUnits units_;
};

}  // namespace tavdhost
