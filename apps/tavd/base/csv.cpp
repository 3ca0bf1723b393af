#include "base/csv.h"

#include <cmath>

#include "base/numbers.h"

namespace tavdhost {

void CsvLine::number(float value) {
  separate();
  if (std::isfinite(value)) append_shortest(out_, value);
}

void CsvLine::whole(int value) {
  separate();
  append_whole(out_, value);
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
