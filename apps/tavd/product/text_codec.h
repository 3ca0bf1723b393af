// Texts on their way between UTF-8 and the bytes of a database.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "product/database.h"

namespace tavdhost {

// Converts as the database service does for one database: charset 0 follows that database's file header.
class TextCodec {
 public:
  explicit TextCodec(std::int16_t db);

  // The bytes of a text, or nothing if a character of it has no place in the charset.
  std::optional<std::string> encode(int charset, const std::string& utf8) const;

  // The text of the bytes, or nothing if they are no text of that charset, or one with a NUL inside. Bytes
  // that give a text need not be the only ones that do.
  std::optional<std::string> decode(int charset, std::string_view bytes);

  // A field of `size` bytes in charset 0, blank-padded; nothing if the text is longer or has no place. ASCII
  // text may hold NULs.
  std::optional<std::string> encode_field(const std::string& utf8, std::size_t size) const;
  std::optional<std::string> decode_field(std::string_view bytes);

  // The first character of the text that has no place in the charset; empty if all have.
  std::string misfit(int charset, const std::string& utf8) const;

 private:
  std::int16_t db_;
  Record scratch_;  // conversions go through an attribute of a record
};

// Name of a charset by its number, for messages.
const char* charset_name(int charset);

// Number of UTF-16 units of valid UTF-8.
std::size_t utf16_length(const std::string& utf8);

// Two lower-case digits per byte, and back; nothing if the text is no hex.
std::string to_hex(std::string_view bytes);
std::optional<std::string> from_hex(std::string_view hex);

}  // namespace tavdhost
