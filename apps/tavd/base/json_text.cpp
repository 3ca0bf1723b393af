#include "base/json_text.h"

#include <json/writer.h>

#include <charconv>
#include <cmath>
#include <memory>
#include <string>

#include "base/numbers.h"

namespace tavdhost {
namespace {

constexpr int kFloatDigits = 9;  // significant digits that tell any two floats apart

}  // namespace

Json::Value json_number(float value) {
  if (!std::isfinite(value)) return Json::nullValue;
  const std::string digits = shortest(value);
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

void write_json(std::ostream& out, const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "  ";
  builder["enableYAMLCompatibility"] = true;  // no blank in front of the colon
  builder["emitUTF8"] = true;
  builder["precision"] = kFloatDigits;
  const std::unique_ptr<Json::StreamWriter> writer(builder.newStreamWriter());
  writer->write(value, &out);
  out << '\n';
}

}  // namespace tavdhost
