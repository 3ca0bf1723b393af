// What a record holds, attribute by attribute, in words.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "catalogue/attributes.h"
#include "catalogue/entry.h"
#include "product/product.h"
#include "product/text_codec.h"

namespace tavdhost {

// One attribute, decoded.
struct Held {
  std::int16_t number;
  std::string name;                  // as the catalogue's text names it, "code.FIN" for a text of a group
  const Attribute* layout;           // null: a number without a name
  std::optional<Json::Value> value;  // as the catalogue's text has it; nothing if the bytes have no such text
  std::string bytes;
};

Held held_attribute(TextCodec& codec, std::int16_t number, const std::string& bytes);

// All attributes of the record, by rising number.
std::vector<Held> held_attributes(TextCodec& codec, const Entry& entry);

// What the attribute is, in words: "Damper settings"; "Attribute 1777" for a number without a name.
std::string title_of(const Held& held);

// The value on one line: numbers behind each other, a text as it stands, bytes in hex where there is no other
// form. Nothing for tables and records of several columns.
std::optional<std::string> line_of(const Held& held);

// The value as a table with a heading, indented by two blanks; of a value that fits a line nothing.
// `flow_unit` is that of the product.
void print_table(std::ostream& out, const Held& held, const std::string& flow_unit);

}  // namespace tavdhost
