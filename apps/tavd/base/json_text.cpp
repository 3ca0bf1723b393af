#include "base/json_text.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"

namespace tavdhost {
namespace {

// Members stand in this order: what something is before what it answers, the question before the answer. One
// that ends in "_" stands for all that begin so and end with a unit. What is not here comes behind, by
// letter.
// clang-format off
constexpr std::string_view kOrder[] = {
    "records", "findings",
    "product", "layer", "class", "id", "number", "attribute", "name", "row", "code", "text", "template", "result",
    "description", "weblink", "installation", "kind", "kind_text", "size", "second_size", "diameter_mm", "width_mm",
    "height_mm", "limits", "parameters", "main_record", "layers", "sizing_mode", "sizing_text", "data_of", "sizes",
    "sizes_not_found", "size_of", "model", "found", "shape", "dimensions_mm", "drawn_as", "product_id",
    "product_code", "answered_by", "holds", "attributes", "value", "hex", "model_records",
    "model_records_not_found", "replaced", "deleted", "expected",
    "operating_point", "qv_min_", "qv_max_", "v_min_", "v_max_", "qv_", "v_", "typed", "position", "dp_min_",
    "dp_max_", "dp_total_", "dp_static_", "dp_dynamic_", "dp_", "check", "flow_in_range", "dp_in_range",
    "pressure_range", "position_stepless", "position_stepped", "fan", "sound", "bands_Hz", "lw_dB", "lw_dBA",
    "room_level_dBA", "room_damping_dB", "end_reflection", "reachable", "attenuation_dB", "throw_length_m"};
// clang-format on

std::size_t place_of(std::string_view name) {
  const auto* const named = std::ranges::find(kOrder, name);
  if (named != std::end(kOrder)) return static_cast<std::size_t>(named - std::begin(kOrder));
  const auto* const begun = std::ranges::find_if(
      kOrder, [&](std::string_view entry) { return entry.back() == '_' && name.starts_with(entry); });
  return static_cast<std::size_t>(begun - std::begin(kOrder));
}

// Of a number that is a float, its shortest digits.
std::string digits(double number) {
  const auto narrow = static_cast<float>(number);
  if (double{narrow} == number) return shortest(narrow);
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, number);
  return {text, result.ptr};
}

void append_escape(std::string& text, char32_t character) {
  text += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += "0123456789abcdef"[(character >> shift) & 0xF];
}

bool is_plain(const Json::Value& value) {
  return !value.isObject() && !value.isArray();
}

class JsonText {
 public:
  explicit JsonText(std::ostream& out) : out_(out) {}

  void write(const Json::Value& value, std::size_t depth = 0) {
    if (value.isObject() && !value.empty()) {
      write_object(value, depth);
    } else if (value.isArray() && !value.empty()) {
      write_array(value, depth);
    } else if (value.isObject()) {
      out_ << "{}";
    } else if (value.isArray()) {
      out_ << "[]";
    } else if (value.isString()) {
      const std::string text = value.asString();
      out_ << json_quoted(utf8::is_valid(text) ? text : printable(text));
    } else if (value.isNull()) {
      out_ << "null";
    } else {
      out_ << (value.isDouble() ? digits(value.asDouble()) : value.asString());
    }
  }

 private:
  void write_object(const Json::Value& object, std::size_t depth) {
    std::vector<std::string> names = object.getMemberNames();
    std::ranges::stable_sort(names, {}, place_of);
    const char* before = "{";
    for (const std::string& name : names) {
      out_ << before;
      before = ",";
      break_line(depth + 1);
      out_ << json_quoted(name) << ": ";
      write(object[name], depth + 1);
    }
    break_line(depth);
    out_ << '}';
  }

  // Numbers and texts stand behind each other, anything else on lines of its own.
  void write_array(const Json::Value& array, std::size_t depth) {
    const bool one_line = std::all_of(array.begin(), array.end(), is_plain);
    const char* before = "[";
    for (const Json::Value& item : array) {
      out_ << before;
      before = one_line ? ", " : ",";
      if (!one_line) break_line(depth + 1);
      write(item, depth + 1);
    }
    if (!one_line) break_line(depth);
    out_ << ']';
  }

  void break_line(std::size_t depth) { out_ << '\n' << std::string(2 * depth, ' '); }

  std::ostream& out_;
};

}  // namespace

std::string json_quoted(std::string_view utf8) {
  std::string text = "\"";
  for (auto at = utf8.begin(); at != utf8.end();) {
    const auto start = at;
    const char32_t character = utf8::next(at, utf8.end());
    if (character == U'"' || character == U'\\') {
      text += '\\';
      text += static_cast<char>(character);
    } else if (character == U'\n') {
      text += "\\n";
    } else if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
      append_escape(text, character);
    } else {
      text.append(start, at);
    }
  }
  return text + '"';
}

Json::Value json_number(float value) {
  if (!std::isfinite(value)) return Json::nullValue;
  const std::string text = shortest(value);
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

Json::Value code_json(int code, const char* text) {
  Json::Value json;
  json["code"] = code;
  json["text"] = text;
  return json;
}

void write_json(std::ostream& out, const Json::Value& value) {
  JsonText(out).write(value);
  out << '\n';
}

}  // namespace tavdhost
