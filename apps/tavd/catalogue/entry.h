// One product of the catalogue: between its text and a record.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "catalogue/source.h"
#include "product/text_codec.h"

namespace tavdhost {

// A record, ready to be stored.
struct Entry {
  std::string class_id;   // 3 bytes
  std::string object_id;  // 1 to 30 bytes, without the blanks that are stored behind it
  std::map<std::int16_t, std::string> attributes;
  std::optional<std::string> ahm;
  Source::Place place{};  // of its text
};

// Reads one product. What is wrong goes into `faults`; the product is then incomplete. Nothing if not even
// its class and id can be read. What is allowed but hardly meant goes into `remarks`, if there are any.
std::optional<Entry> read_entry(const TextCodec& codec, const Source& source, const Json::Value& value,
                                Faults& faults, Faults* remarks = nullptr);

// The record with all that the database holds of it.
Entry stored_entry(const Database& database, const Record& record);

// The product's text, indented by two blanks, without a line end behind it.
std::string entry_text(TextCodec& codec, const Entry& entry);

}  // namespace tavdhost
