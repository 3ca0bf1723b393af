#include "program/golden/difference.h"

#include <algorithm>
#include <vector>

namespace golden {
namespace {

// With their line feeds, so that equal lines are equal bytes.
std::vector<std::string> operations_of(const std::string& recording) {
  std::vector<std::string> operations;
  for (std::size_t from = 0; from < recording.size();) {
    const std::size_t feed = recording.find('\n', from);
    const std::size_t next = feed == std::string::npos ? recording.size() : feed + 1;
    operations.push_back(recording.substr(from, next - from));
    from = next;
  }
  return operations;
}

std::string shown(const std::vector<std::string>& operations, std::size_t index) {
  if (index >= operations.size()) return "(end)";
  const std::string& line = operations[index];
  return line.ends_with('\n') ? line.substr(0, line.size() - 1) : line + "(no line feed)";
}

}  // namespace

std::optional<Difference> first_difference(const std::string& expected, const std::string& found) {
  const std::vector<std::string> wanted = operations_of(expected);
  const std::vector<std::string> drawn = operations_of(found);
  const auto [at, other] = std::ranges::mismatch(wanted, drawn);
  if (at == wanted.end() && other == drawn.end()) return std::nullopt;
  const auto index = static_cast<std::size_t>(at - wanted.begin());
  return Difference{index + 1, shown(wanted, index), shown(drawn, index)};
}

}  // namespace golden
