// Values of attributes between the catalogue's text and the bytes of a database.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/attributes.h"
#include "catalogue/source.h"
#include "product/text_codec.h"

namespace tavdhost {

// Where a value that is being read stands, for messages: the source, and the product as far as it is known.
struct ReadContext {
  const TextCodec& codec;
  const Source& source;
  Faults& faults;
  Faults* remarks;  // what is allowed but hardly meant; null: not asked for
  std::string product;

  // "file:line:column: product: field: text".
  void fault(const Json::Value& at, const std::string& field, const std::string& text) const;
  // The same where nothing is refused.
  void remark(const Json::Value& at, const std::string& field, const std::string& text) const;
  // "... expected this, found that".
  void expected(const Json::Value& found, const std::string& field, const std::string& what) const;
};

// The bytes of an attribute's value; nothing if it was found wrong, and the context's faults say why.
// `number` decides the charset of a text, `field` names the value in messages.
std::optional<std::string> encode_value(const ReadContext& context, const Attribute& layout, int number,
                                        const Json::Value& value, const std::string& field);

// Bytes written as hex.
std::optional<std::string> encode_hex(const ReadContext& context, const Json::Value& value,
                                      const std::string& field, std::size_t most);

// The value as JSON; rows of tables stand on lines of their own, indented by `indent` blanks, and the closing
// bracket by two less. Nothing if these bytes have no text that gives exactly them again.
std::optional<std::string> decode_value(TextCodec& codec, const Attribute& layout, int number,
                                        std::string_view bytes, std::size_t indent);

}  // namespace tavdhost
