#include "base/csv.h"

#include <charconv>
#include <cmath>

namespace tavdhost {
namespace {

constexpr std::size_t kShortestChars = 32;  // more than the shortest digits of any float or int take

template <typename Number>
void append_number(std::string& out, Number value) {
  char text[kShortestChars];
  const auto result = std::to_chars(text, text + sizeof text, value);
  out.append(text, result.ptr);
}

}  // namespace

void CsvLine::number(float value) {
  separate();
  if (std::isfinite(value)) append_number(out_, value);
}

void CsvLine::whole(int value) {
  separate();
  append_number(out_, value);
}

void CsvLine::text(std::string_view value) {
  separate();
  if (value.find_first_of(",\"\r\n") == std::string_view::npos) {
    out_ += value;
    return;
  }
  out_ += '"';
  for (const char c : value) out_ += c == '"' ? std::string("\"\"") : std::string(1, c);
  out_ += '"';
}

}  // namespace tavdhost
