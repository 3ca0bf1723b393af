// The attributes of a product record as the catalogue's text names them: number, name and layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavdhost {

// What one column of an attribute's item is in the database.
enum class ColumnType {
  kInt16,  // 2 bytes, little-endian
  kFloat,  // 4 bytes, IEEE
  kBands,  // 8 bytes, one per octave band, whole dB
  kValue,  // 6 characters, blank-padded: a parameter value
  kId      // 30 characters, blank-padded: an object id
};

// Bytes that a column takes.
std::size_t column_size(ColumnType type);

struct Column {
  const char* name;
  ColumnType type;
};

// How an attribute is written in the text.
enum class Form {
  kSingle,  // one item of one column: the bare value
  kRecord,  // one item of several columns: an object, a member per column
  kList,    // items of one column: an array of values
  kRows,    // items of several columns: an array of rows, each an array in column order
  kText,    // a text, stored in the charset that it has, no longer than `limit` bytes
  kWide     // a text that is read as UTF-16, no longer than `limit` units
};

struct Attribute {
  std::int16_t number;
  const char* name;
  Form form;
  std::span<const Column> columns;  // empty for texts
  std::size_t fewest;               // items
  std::size_t limit;                // most items, bytes of a text or UTF-16 units, by `form`
  const char* expected;             // in words, for messages
};

// All attributes that have a name of their own, by rising number.
std::span<const Attribute> attributes();

// Null if there is none of that name or number.
const Attribute* find_attribute(std::string_view name);
const Attribute* find_attribute(int number);

// Bytes of one item; 0 for texts.
std::size_t item_size(const Attribute& attribute);

// Texts that a product has once per market or once per language are members of one object in the catalogue's
// text, "code", "weblink" or "description".
struct GroupText {
  std::int16_t number;
  const char* key;  // market area code, name of the language, or "default"
};

struct TextGroup {
  const char* name;
  const char* keys;  // what its members are called, for messages
  std::span<const GroupText> texts;
};

std::span<const TextGroup> text_groups();
// The names that a product's members may have besides "class", "id" and "ahm": attributes and groups.
std::vector<std::string_view> member_names();
const TextGroup* find_text_group(std::string_view name);

// The number of an attribute that a user names: by its name ("damperpoints"), as a member of a group
// ("code.FIN", "description.English"), or by the number itself. Nothing if it is none of these.
std::optional<std::int16_t> attribute_number(std::string_view name);

// "damperpoints", "code.FIN", or the number where there is no name.
std::string attribute_name(std::int16_t number);

// How the attribute is written in the text; null for a number without a name.
const Attribute* attribute_layout(std::int16_t number);

// Layout of all the texts in the groups.
const Attribute& group_text_layout();

}  // namespace tavdhost
