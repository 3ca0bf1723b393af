// Bytes of the database as the values of the catalogue's text.
#include <cmath>
#include <cstring>

#include "base/json_text.h"
#include "base/numbers.h"
#include "catalogue/values.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

// The shortest digits that read back as the same float; nothing for what JSON has no number for.
std::optional<std::string> float_text(std::string_view bytes) {
  float value = 0;
  std::memcpy(&value, bytes.data(), sizeof value);
  if (!std::isfinite(value)) return std::nullopt;
  return shortest(value);
}

std::string integer_text(std::string_view bytes) {
  std::int16_t value = 0;
  std::memcpy(&value, bytes.data(), sizeof value);
  return std::to_string(value);
}

std::string bands_text(std::string_view bytes) {
  std::string text = "[";
  for (char c : bytes) {
    if (text.size() > 1) text += ", ";
    text += std::to_string(static_cast<unsigned char>(c));
  }
  return text + ']';
}

std::optional<std::string> column_text(TextCodec& codec, ColumnType type, std::string_view bytes) {
  switch (type) {
    case ColumnType::kInt16:
      return integer_text(bytes);
    case ColumnType::kFloat:
      return float_text(bytes);
    case ColumnType::kBands:
      return bands_text(bytes);
    case ColumnType::kValue:
    case ColumnType::kId:
      break;
  }
  const auto text = codec.decode_field(bytes);
  if (!text) return std::nullopt;
  return json_quoted(*text);
}

// The columns of one item, separated by commas; with their names in an object.
std::optional<std::string> item_text(TextCodec& codec, const Attribute& layout, std::string_view bytes) {
  std::string text;
  for (const Column& column : layout.columns) {
    const std::size_t size = column_size(column.type);
    const auto value = column_text(codec, column.type, bytes.substr(0, size));
    if (!value) return std::nullopt;
    bytes.remove_prefix(size);
    if (!text.empty()) text += ", ";
    if (layout.form == Form::kRecord) text += json_quoted(column.name) + ": ";
    text += *value;
  }
  return text;
}

// A list on one line, rows on a line each.
std::optional<std::string> table_text(TextCodec& codec, const Attribute& layout, std::string_view bytes,
                                      std::size_t indent) {
  const std::size_t size = item_size(layout);
  const bool rows = layout.form == Form::kRows;
  std::string text = "[";
  while (!bytes.empty()) {
    const auto item = item_text(codec, layout, bytes.substr(0, size));
    if (!item) return std::nullopt;
    bytes.remove_prefix(size);
    if (text.size() > 1) text += rows ? "," : ", ";
    text += rows ? '\n' + std::string(indent, ' ') + '[' + *item + ']' : *item;
  }
  if (rows && text.size() > 1) text += '\n' + std::string(indent - 2, ' ');
  return text + ']';
}

std::optional<std::string> readable(TextCodec& codec, const Attribute& layout, int number,
                                    std::string_view bytes, std::size_t indent) {
  if (layout.form == Form::kText || layout.form == Form::kWide) {
    const auto text = codec.decode(tavdf_charsetId(static_cast<std::int16_t>(number)), bytes);
    if (!text) return std::nullopt;
    return json_quoted(*text);
  }
  const std::size_t size = item_size(layout);
  const std::size_t items = bytes.size() / size;
  if (bytes.size() % size != 0 || items < layout.fewest || items > layout.limit) return std::nullopt;
  if (layout.form == Form::kList || layout.form == Form::kRows) {
    return table_text(codec, layout, bytes, indent);
  }
  const auto item = item_text(codec, layout, bytes);
  if (!item) return std::nullopt;
  return layout.form == Form::kRecord ? "{" + *item + "}" : *item;
}

}  // namespace

std::optional<std::string> decode_value(TextCodec& codec, const Attribute& layout, int number,
                                        std::string_view bytes, std::size_t indent) {
  auto text = readable(codec, layout, number, bytes, indent);
  if (!text) return std::nullopt;
  // What is readable must also be exact: the text is read as `tavd db build` would read it.
  const Source source("", '[' + *text + ']');
  Faults faults;
  Json::Value root;
  if (!parse(source, root, faults)) return std::nullopt;
  const auto again = encode_value({codec, source, faults, nullptr, {}}, layout, number, root[0], {});
  if (!again || *again != bytes) return std::nullopt;
  return text;
}

}  // namespace tavdhost
