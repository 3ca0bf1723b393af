// Random product records and operating points, the same for the same seed on every machine.
#pragma once

#include <cstdint>
#include <vector>

#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace reference {

// A small generator of our own (SplitMix64), so that a seed means the same numbers with every standard
// library.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t bits();
  int below(int n);                                // 0 to n-1
  int between(int lowest, int highest);            // both included
  bool one_in(int n) { return below(n) == 0; }     // true once in n
  float uniform(float lowest, float highest);      // evenly between
  float logarithmic(float lowest, float highest);  // evenly on a logarithmic axis

 private:
  std::uint64_t state_;
};

enum class Shape {
  sorted,    // tables as a measurement gives them, in order
  full,      // the same, every table filled to its last row
  shuffled,  // rows in any order
  hostile,   // numbers overwritten by 0, negative ones, not-a-number and infinity; counts that lie
};

struct Product {
  FlowData fd;
  // Choices for the parameters and throw lines: numbers on, between, below and above the rows, labels,
  // nonsense.
  std::vector<const char*> values;
};

Product random_product(Random& random, std::int16_t kind, Shape shape);

struct Point {
  float qv;   // l/s or m/s
  float dp;   // Pa
  float pos;  // damper position
  DuctSize duct;
};

// Inside the product's range, around it, exactly on a row or a limit, or one float beside it; sometimes
// nonsense.
Point random_point(Random& random, const FlowData& fd, bool hostile);

}  // namespace reference
