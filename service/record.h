// One record in memory: its key and its attributes, packed as they are stored.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "service/ids.h"

namespace tavdsrv {

using Bytes = std::span<const unsigned char>;

// What is stored of a record, and an ahm block, is no longer than this.
inline constexpr int kMostBytes = 64 * 1024 * 1024;

// The packed form is one item per attribute, by rising number, without padding, little-endian:
//   int16 number, uint32 length, `length` bytes.
class Record {
 public:
  struct Attribute {
    std::int16_t number;
    Bytes value;
  };

  explicit Record(const Key& key) : key_(key) {}
  // Takes over a packed body. One that is damaged gives the attributes in front of the damage.
  Record(const Key& key, Bytes packed) : key_(key), body_(packed.begin(), packed.end()) {}

  const Key& key() const { return key_; }
  Bytes packed() const;

  std::size_t size() const { return places().size() - 1; }
  Attribute at(std::size_t index) const { return attribute_at(places()[index]); }
  std::optional<Bytes> find(std::int16_t number) const;

  // Replaces or adds an attribute. `value` may lie inside this record.
  void insert(std::int16_t number, Bytes value);

 private:
  // An attribute, and where in body_ it begins.
  struct Place {
    std::int16_t number;
    std::uint32_t begin;
  };

  // By rising number; behind them one that stands for the end.
  const std::vector<Place>& places() const;
  Attribute attribute_at(Place place) const;
  Place first_from(std::int16_t number) const;
  void append_attribute(std::int16_t number, Bytes value);

  Key key_;
  std::vector<unsigned char> body_;
  mutable std::vector<Place> places_;  // empty until they are asked for: walks pass by many records
};

}  // namespace tavdsrv
