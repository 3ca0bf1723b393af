// One record in memory: its key and its attributes, packed as they are stored.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "ids.h"

namespace tavdsrv {

using Bytes = std::span<const unsigned char>;

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
  Record(const Key& key, Bytes packed);

  const Key& key() const { return key_; }
  Bytes packed() const { return body_; }

  std::size_t size() const { return places_.size(); }
  Attribute at(std::size_t index) const;
  std::optional<Bytes> find(std::int16_t number) const;

  // Replaces or adds an attribute. `value` may lie inside this record.
  void insert(std::int16_t number, Bytes value);

 private:
  struct Place {
    std::int16_t number;
    std::size_t offset;  // of the value in body_
    std::size_t length;
  };

  std::vector<Place>::const_iterator place_of(std::int16_t number) const;
  void find_places();

  Key key_;
  std::vector<unsigned char> body_;
  std::vector<Place> places_;
};

}  // namespace tavdsrv
