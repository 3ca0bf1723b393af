#include "record.h"

#include <algorithm>
#include <cstring>

namespace tavdsrv {

namespace {

constexpr std::size_t kNumberBytes = sizeof(std::int16_t);
constexpr std::size_t kLengthBytes = sizeof(std::uint32_t);
constexpr std::size_t kHeadBytes = kNumberBytes + kLengthBytes;

void append(std::vector<unsigned char>& body, Bytes bytes) {
  body.insert(body.end(), bytes.begin(), bytes.end());
}

void append_attribute(std::vector<unsigned char>& body, std::int16_t number, Bytes value) {
  const auto length = static_cast<std::uint32_t>(value.size());
  unsigned char head[kHeadBytes];
  std::memcpy(head, &number, kNumberBytes);
  std::memcpy(head + kNumberBytes, &length, kLengthBytes);
  append(body, head);
  append(body, value);
}

}  // namespace

Record::Record(const Key& key, Bytes packed) : key_(key), body_(packed.begin(), packed.end()) {
  find_places();
}

Record::Attribute Record::at(std::size_t index) const {
  const Place& place = places_[index];
  return {place.number, Bytes(body_).subspan(place.offset, place.length)};
}

std::optional<Bytes> Record::find(std::int16_t number) const {
  const auto place = place_of(number);
  if (place == places_.end() || place->number != number) return std::nullopt;
  return Bytes(body_).subspan(place->offset, place->length);
}

void Record::insert(std::int16_t number, Bytes value) {
  const auto place = place_of(number);
  const bool replaces = place != places_.end() && place->number == number;
  const std::size_t head_end = place == places_.end() ? body_.size() : place->offset - kHeadBytes;
  const std::size_t tail_begin = replaces ? place->offset + place->length : head_end;

  std::vector<unsigned char> body;
  body.reserve(body_.size() + kHeadBytes + value.size());
  append(body, Bytes(body_).first(head_end));
  append_attribute(body, number, value);
  append(body, Bytes(body_).subspan(tail_begin));
  body_.swap(body);
  find_places();
}

std::vector<Record::Place>::const_iterator Record::place_of(std::int16_t number) const {
  return std::lower_bound(places_.begin(), places_.end(), number,
                          [](const Place& place, std::int16_t wanted) { return place.number < wanted; });
}

// Walks the body and cuts off what cannot be read: a head or a value that does not fit, or a number that is
// not above the one before.
void Record::find_places() {
  constexpr std::size_t kUsualAttributes = 32;
  places_.clear();
  places_.reserve(kUsualAttributes);
  std::size_t offset = 0;
  while (body_.size() - offset >= kHeadBytes) {
    std::int16_t number = 0;
    std::uint32_t length = 0;
    std::memcpy(&number, &body_[offset], kNumberBytes);
    std::memcpy(&length, &body_[offset + kNumberBytes], kLengthBytes);
    const bool rises = places_.empty() || number > places_.back().number;
    if (!rises || length > body_.size() - offset - kHeadBytes) break;
    places_.push_back({number, offset + kHeadBytes, length});
    offset += kHeadBytes + length;
  }
  body_.resize(offset);
}

}  // namespace tavdsrv
