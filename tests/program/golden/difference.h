// Two recordings, operation by operation.
#pragma once

#include <optional>
#include <string>

namespace golden {

struct Difference {
  std::size_t operation;  // from 1, the number of its line
  std::string expected;   // "(end)" behind the last one
  std::string found;
};

// The first operation that is not the same; none if the recordings are equal byte for byte.
std::optional<Difference> first_difference(const std::string& expected, const std::string& found);

}  // namespace golden
