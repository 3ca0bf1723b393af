// What is drawn of a product, the same on both systems.
#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

#include "tavd/flowdata.h"
#include "tavd/tavb.h"

namespace recordings {

// A record of a database; one that is no product, or has no flow data, is drawn too, for then nothing may be
// drawn.
struct Product {
  std::int16_t db;
  tavb_rec record;
  std::string name;  // class and object id
  FlowData flow;
};

// Writes down the drawings: a line that names it, the result of building, and the operations.
class Report {
 public:
  explicit Report(std::ostream& out) : out_(out) {}

  void add(const std::string& name, const std::string& drawing, int result, const std::string& operations) {
    out_ << "= " << name << " | " << drawing << '\n' << "result " << result << '\n' << operations;
    ++drawings_;
  }
  int drawings() const { return drawings_; }

 private:
  std::ostream& out_;
  int drawings_ = 0;
};

void draw_flow_cases(const Product& product, Report& report);
void draw_throw_cases(const Product& product, Report& report);
void draw_picture_cases(const Product& product, Report& report);

// Pictures of all shape numbers, which no database has all of. `db` is any that is open.
void draw_shapes(std::int16_t db, Report& report);

// A title with letters, a currency sign and an unassigned byte of windows-1252, a quote and a backslash.
inline constexpr char kTitle[] = "\xD8 160 S\xE4\xE4t\xF6 5\x80 \x81 \"a\\b\"";

// Calls `use` with each parameter that a product has, and each of its values.
using UseOfValue = std::function<void(const std::string& parameter, const std::string& value)>;
void for_each_value(const FlowData& flow, const UseOfValue& use);

// The same for the values that select a throw line, which belong to the parameter G.
void for_each_throw_value(const FlowData& flow, const UseOfValue& use);

// Between two limits of a logarithmic axis.
float middle(float lowest, float highest);

}  // namespace recordings
