// Records as bytes, one after the other: int16 number, uint16 length, `length` bytes of an attribute. Number
// 0 begins a record: its bytes are class id and object id.
#pragma once

#include <cstdint>
#include <string>

namespace fuzz {

inline constexpr std::int16_t kBeginsRecord = 0;

inline std::string little_endian(std::size_t value) {
  return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

inline std::string attribute(std::int16_t number, const std::string& value) {
  return little_endian(static_cast<std::uint16_t>(number)) + little_endian(value.size()) + value;
}

inline std::string begin_record(const std::string& class_id, const std::string& object_id) {
  return attribute(kBeginsRecord, class_id + object_id);
}

}  // namespace fuzz
