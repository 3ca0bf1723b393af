// Class ids, object ids and the key that they make together.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstring>

namespace tavdsrv {

inline constexpr std::size_t kClassLength = 3;
inline constexpr std::size_t kObjectLength = 30;
inline constexpr std::size_t kKeyLength = kClassLength + kObjectLength;

// Class id and object id, blank-padded, one behind the other. Keys compare as unsigned bytes: that is the
// order of the records.
struct Key {
  std::array<char, kKeyLength> bytes;

  const char* class_id() const { return bytes.data(); }
  const char* object_id() const { return bytes.data() + kClassLength; }
  bool has_object_id() const;

  friend bool operator==(const Key&, const Key&) = default;
  friend std::strong_ordering operator<=>(const Key& a, const Key& b) {
    return std::memcmp(a.bytes.data(), b.bytes.data(), kKeyLength) <=> 0;
  }
};

// Reads ids as callers hand them over: at most 3 and 30 bytes, ending early at a NUL, so that nothing behind
// a field of that width is touched. Null counts as empty.
Key make_key(const char* class_id, const char* object_id);

// Writes the text form of a raw object id, terminated: at most 31 bytes. `text` may be the raw id's buffer.
void write_object_text(const char* object_id, char* text);

}  // namespace tavdsrv
