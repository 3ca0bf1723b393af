// Values as the catalogue's text has them, checked and turned into the bytes of the database.
#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <vector>

#include "base/json_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "catalogue/values.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

class ValueEncoder {
 public:
  ValueEncoder(const ReadContext& context, const Attribute& layout) : context_(context), layout_(layout) {}

  bool table(const Json::Value& value, const std::string& field);
  bool item(const Json::Value& value, const std::string& field);
  bool text(const Json::Value& value, const std::string& field, int charset);

  std::string bytes;

 private:
  bool row(const Json::Value& value, const std::string& field);
  bool members(const Json::Value& value, const std::string& field);
  bool column(ColumnType type, const Json::Value& value, const std::string& field);
  bool integer(const Json::Value& value, const std::string& field);
  bool number(const Json::Value& value, const std::string& field);
  bool bands(const Json::Value& value, const std::string& field);
  void stated_level(const Json::Value& bands, const Json::Value& stated, const std::string& field);
  bool fixed_text(ColumnType type, const Json::Value& value, const std::string& field);

  bool refuse(const Json::Value& found, const std::string& field, const std::string& what) {
    context_.expected(found, field, what);
    return false;
  }
  // The whole number that the value's characters are.
  std::optional<long> whole(const Json::Value& value) const;
  bool has_column(const std::string& name) const;
  std::vector<std::string_view> column_names() const;
  // Whether a row may tell the A-weighted level of its bands behind them.
  bool takes_stated_level() const { return layout_.number == TAVD_ATT_LW_POINTS; }

  const ReadContext& context_;
  const Attribute& layout_;
};

constexpr std::size_t kNameCharacters = 60;  // of products and fields in messages
constexpr const char* kBandExpected = "a whole number of dB from 0 to 255";

// A sound row may state the A-weighted level of its bands, dB(A), as the maker's table has it. It is compared
// and not stored.
constexpr const char* kStatedLevel = "LwA";
constexpr double kLevelTolerance = 1.5;  // dB; bands and level are rounded to whole dB
constexpr float kRoomDamping = 4;        // dB, the library's as it stands before a host sets another

// "product: field: ", as far as they are known.
std::string named(const std::string& product, const std::string& field) {
  std::string line = product.empty() ? "" : shortened(product, kNameCharacters) + ": ";
  if (!field.empty()) line += shortened_inside(field, kNameCharacters) + ": ";
  return line;
}

std::string indexed(const std::string& field, Json::ArrayIndex index) {
  return field + '[' + std::to_string(index + 1) + ']';
}

std::string member_of(const std::string& field, std::string_view name) {
  std::string whole = field;
  return whole.append(1, '.').append(name);
}

// An array of items, one column each or several.
bool ValueEncoder::table(const Json::Value& value, const std::string& field) {
  if (!value.isArray()) return refuse(value, field, layout_.expected);
  if (value.size() > layout_.limit || value.size() < layout_.fewest) {
    const std::string most = std::to_string(layout_.limit);
    const std::string items = layout_.form == Form::kRows ? " rows" : " values";
    const std::string bound = layout_.fewest == layout_.limit ? most : "at most " + most;
    context_.fault(value, field, "expected " + bound + items + ", found " + std::to_string(value.size()));
    return false;
  }
  bool good = true;
  for (Json::ArrayIndex i = 0; i < value.size(); ++i) good &= item(value[i], indexed(field, i));
  return good;
}

bool ValueEncoder::item(const Json::Value& value, const std::string& field) {
  if (layout_.columns.size() == 1) return column(layout_.columns[0].type, value, field);
  if (value.isObject()) return members(value, field);
  if (value.isArray() && layout_.form == Form::kRows) return row(value, field);
  if (layout_.form == Form::kRecord) return refuse(value, field, layout_.expected);
  return refuse(value, field, "a row of " + std::string(layout_.expected));
}

// A row by the order of its columns.
bool ValueEncoder::row(const Json::Value& value, const std::string& field) {
  const auto columns = static_cast<Json::ArrayIndex>(layout_.columns.size());
  const bool stated = takes_stated_level() && value.size() == columns + 1;
  if (value.size() != columns && !stated) {
    return refuse(value, field, std::to_string(columns) + " values, " + layout_.expected);
  }
  bool good = true;
  for (Json::ArrayIndex i = 0; i < columns; ++i) {
    const Column& wanted = layout_.columns[i];
    good &= column(wanted.type, value[i], member_of(field, wanted.name));
  }
  if (good && stated) stated_level(value[columns - 1], value[columns], field);
  return good;
}

// An item by the names of its columns; none may be left out.
bool ValueEncoder::members(const Json::Value& value, const std::string& field) {
  bool good = true;
  for (const std::string& name : value.getMemberNames()) {
    if (has_column(name) || (takes_stated_level() && name == kStatedLevel)) continue;
    context_.fault(
        value[name], member_of(field, name),
        "unknown" + did_you_mean(name, column_names()) + "; expected " + std::string(layout_.expected));
    good = false;
  }
  for (const Column& wanted : layout_.columns) {
    if (value.isMember(wanted.name)) {
      good &= column(wanted.type, value[wanted.name], member_of(field, wanted.name));
    } else {
      context_.fault(value, member_of(field, wanted.name),
                     "missing; expected " + std::string(layout_.expected));
      good = false;
    }
  }
  if (good && value.isMember(kStatedLevel)) stated_level(value["lw"], value[kStatedLevel], field);
  return good;
}

bool ValueEncoder::column(ColumnType type, const Json::Value& value, const std::string& field) {
  switch (type) {
    case ColumnType::kInt16:
      return integer(value, field);
    case ColumnType::kFloat:
      return number(value, field);
    case ColumnType::kBands:
      return bands(value, field);
    case ColumnType::kValue:
    case ColumnType::kId:
      return fixed_text(type, value, field);
  }
  return false;
}

bool ValueEncoder::integer(const Json::Value& value, const std::string& field) {
  const auto found = whole(value);
  if (!found || *found < INT16_MIN || *found > INT16_MAX) {
    return refuse(value, field, "a whole number from -32768 to 32767");
  }
  const auto word = static_cast<std::int16_t>(*found);
  bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
  return true;
}

// The nearest float to what is written; by way of a double it could be the second nearest.
bool ValueEncoder::number(const Json::Value& value, const std::string& field) {
  if (!value.isNumeric()) return refuse(value, field, "a number");
  const std::string_view text = context_.source.literal(value);
  float single = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), single);
  if (error == std::errc::result_out_of_range) {
    return refuse(value, field, "a number in the range of a 32-bit float");
  }
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(single)) {
    return refuse(value, field, "a number");
  }
  bytes.append(reinterpret_cast<const char*>(&single), sizeof single);
  return true;
}

bool ValueEncoder::bands(const Json::Value& value, const std::string& field) {
  const std::size_t count = column_size(ColumnType::kBands);
  if (!value.isArray() || value.size() != count) {
    return refuse(value, field, "an array of 8 bands, 63 Hz to 8 kHz");
  }
  std::vector<Json::ArrayIndex> wrong;
  for (Json::ArrayIndex i = 0; i < count; ++i) {
    const auto found = whole(value[i]);
    if (found && *found >= 0 && *found <= UINT8_MAX) {
      bytes += static_cast<char>(static_cast<unsigned char>(*found));
    } else {
      wrong.push_back(i);
    }
  }
  if (wrong.empty()) return true;
  const Json::Value& first = value[wrong[0]];
  if (wrong.size() == 1) return refuse(first, indexed(field, wrong[0]), kBandExpected);
  std::string found;
  for (const Json::ArrayIndex i : wrong)
    found += (found.empty() ? "" : ", ") + context_.source.excerpt(value[i]);
  context_.fault(first, field, std::string("expected ") + kBandExpected + " in each band, found " + found);
  return false;
}

// The level that a table states must be the sum of its bands, A-weighted.
void ValueEncoder::stated_level(const Json::Value& bands, const Json::Value& stated,
                                const std::string& field) {
  const std::string name = member_of(field, kStatedLevel);
  if (!stated.isNumeric()) {
    context_.remark(stated, name, "expected a number, found " + context_.source.excerpt(stated));
    return;
  }
  float levels[TAVD_BANDS];
  for (Json::ArrayIndex i = 0; i < TAVD_BANDS; ++i) levels[i] = bands[i].asFloat();
  const float sum = tavca_LpA(levels) + kRoomDamping;
  if (std::abs(double{sum} - stated.asDouble()) <= kLevelTolerance) return;
  context_.remark(stated, name,
                  "expected about " + fixed(sum, 1) + " dB(A), the sum of the bands, found " +
                      context_.source.excerpt(stated));
}

bool ValueEncoder::fixed_text(ColumnType type, const Json::Value& value, const std::string& field) {
  const std::size_t size = column_size(type);
  const std::string what = "a text of at most " + std::to_string(size) + " characters";
  if (!value.isString() || !utf8::is_valid(value.asString())) return refuse(value, field, what);
  const auto stored = context_.codec.encode_field(value.asString(), size);
  if (!stored) return refuse(value, field, what);
  bytes += *stored;
  return true;
}

bool ValueEncoder::text(const Json::Value& value, const std::string& field, int charset) {
  if (!value.isString()) return refuse(value, field, layout_.expected);
  const std::string utf8 = value.asString();
  if (!utf8::is_valid(utf8) || utf8.find('\0') != std::string::npos) {
    return refuse(value, field, "a text without NUL or half surrogate pairs");
  }
  const auto stored = context_.codec.encode(charset, utf8);
  if (!stored) {
    return refuse(value, field,
                  "characters of " + std::string(charset_name(charset)) + "; it has no " +
                      json_quoted(context_.codec.misfit(charset, utf8)));
  }
  const bool wide = layout_.form == Form::kWide;
  const std::size_t length = wide ? utf16_length(utf8) : stored->size();
  if (length > layout_.limit) {
    context_.fault(value, field,
                   "expected at most " + std::to_string(layout_.limit) + (wide ? " characters" : " bytes") +
                       ", found " + std::to_string(length));
    return false;
  }
  bytes = *stored;
  return true;
}

std::optional<long> ValueEncoder::whole(const Json::Value& value) const {
  if (!value.isNumeric()) return std::nullopt;
  const std::string_view text = context_.source.literal(value);
  long found = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), found);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return found;
}

bool ValueEncoder::has_column(const std::string& name) const {
  return std::ranges::find(layout_.columns, name, &Column::name) != layout_.columns.end();
}

std::vector<std::string_view> ValueEncoder::column_names() const {
  std::vector<std::string_view> names;
  for (const Column& column : layout_.columns) names.emplace_back(column.name);
  return names;
}

}  // namespace

void ReadContext::fault(const Json::Value& at, const std::string& field, const std::string& text) const {
  faults.add(source, source.place(at.getOffsetStart()), named(product, field) + text);
}

void ReadContext::remark(const Json::Value& at, const std::string& field, const std::string& text) const {
  if (remarks != nullptr)
    remarks->add(source, source.place(at.getOffsetStart()), named(product, field) + text);
}

void ReadContext::expected(const Json::Value& found, const std::string& field,
                           const std::string& what) const {
  fault(found, field, "expected " + what + ", found " + source.excerpt(found));
}

std::optional<std::string> encode_value(const ReadContext& context, const Attribute& layout, int number,
                                        const Json::Value& value, const std::string& field) {
  ValueEncoder encoder(context, layout);
  bool good = false;
  switch (layout.form) {
    case Form::kSingle:
    case Form::kRecord:
      good = encoder.item(value, field);
      break;
    case Form::kList:
    case Form::kRows:
      good = encoder.table(value, field);
      break;
    case Form::kText:
    case Form::kWide:
      good = encoder.text(value, field, tavdf_charsetId(static_cast<std::int16_t>(number)));
      break;
  }
  if (!good) return std::nullopt;
  return encoder.bytes;
}

std::optional<std::string> encode_hex(const ReadContext& context, const Json::Value& value,
                                      const std::string& field, std::size_t most) {
  std::optional<std::string> bytes;
  if (value.isString()) bytes = from_hex(value.asString());
  if (!bytes || bytes->size() > most) {
    const std::string what = "a text of hex digits, two per byte, at most " + std::to_string(most) + " bytes";
    context.expected(value, field, what);
    return std::nullopt;
  }
  return bytes;
}

}  // namespace tavdhost
