// Writes down what the calculations answer, bit for bit: one line per call,
//   function|product|arguments|results
// with every float as the eight hexadecimal digits of its bits.
#pragma once

#include <cstdio>
#include <string>

#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace numbers {

class Calls {
 public:
  explicit Calls(std::FILE* out) : out_(out) {}

  void of_product(std::string name) { product_ = std::move(name); }

  // What depends on the record alone, on the flow, on flow and pressure, and on a damper's position.
  void record(const FlowData& fd);
  void flow(const FlowData& fd, float qv);
  void point(const FlowData& fd, float qv, float dp, const DuctSize& duct);
  void position(const FlowData& fd, float qv, float pos);
  // `value` chooses the line of the throw table.
  void throw_length(const FlowData& fd, float qv, const char* value);
  void size(const DuctSize& ds, float qv);

 private:
  void line(const char* function, const std::string& arguments, const std::string& results);
  std::FILE* out_;
  std::string product_;
};

// The functions of the C library that the calculations stand on, over their arguments. They are counted and
// not expected to be equal; their names begin with "libm.".
void math_functions(std::FILE* out);

}  // namespace numbers
