#include "service/record.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace tavdsrv {

namespace {

constexpr std::size_t kNumberBytes = sizeof(std::int16_t);
constexpr std::size_t kLengthBytes = sizeof(std::uint32_t);
constexpr std::size_t kHeadBytes = kNumberBytes + kLengthBytes;
constexpr std::int16_t kEnd = 0;  // number of the place that stands for the end, where it says nothing
constexpr std::size_t kUsualAttributes = 32;
constexpr std::size_t kUsualBytes = 1024;

struct Head {
  std::int16_t number;
  std::uint32_t length;
};

Head head_at(const std::vector<unsigned char>& body, std::size_t place) {
  Head head;
  std::memcpy(&head.number, &body[place], kNumberBytes);
  std::memcpy(&head.length, &body[place + kNumberBytes], kLengthBytes);
  return head;
}

void append(std::vector<unsigned char>& body, Bytes bytes) {
  body.insert(body.end(), bytes.begin(), bytes.end());
}

void append(std::vector<unsigned char>& body, std::int16_t number, Bytes value) {
  const auto length = static_cast<std::uint32_t>(value.size());
  unsigned char head[kHeadBytes];
  std::memcpy(head, &number, kNumberBytes);
  std::memcpy(head + kNumberBytes, &length, kLengthBytes);
  append(body, head);
  append(body, value);
}

}  // namespace

Bytes Record::packed() const {
  return Bytes(body_).first(places().back().begin);
}

std::optional<Bytes> Record::find(std::int16_t number) const {
  const Place place = first_from(number);
  const bool found = place.number == number && place.begin != places().back().begin;
  return found ? std::optional(attribute_at(place).value) : std::nullopt;
}

void Record::insert(std::int16_t number, Bytes value) {
  const Place place = first_from(number);
  const Bytes whole = packed();
  if (place.begin == whole.size()) return append_attribute(number, value);
  const std::size_t replaced = place.number == number ? kHeadBytes + attribute_at(place).value.size() : 0;

  std::vector<unsigned char> body;
  body.reserve(whole.size() + kHeadBytes + value.size());
  append(body, whole.first(place.begin));
  append(body, number, value);
  append(body, whole.subspan(place.begin + replaced));
  body_.swap(body);
  places_.clear();
}

// Records are mostly filled by rising number, so this is to be quick.
void Record::append_attribute(std::int16_t number, Bytes value) {
  const Bytes whole = packed();
  const std::size_t size = whole.size() + kHeadBytes + value.size();
  if (whole.size() == body_.size() && size <= body_.capacity()) {
    append(body_, number, value);
  } else {
    // `value` may lie in the body, which must stay until it has been copied.
    std::vector<unsigned char> body;
    body.reserve(std::max({size, 2 * whole.size(), kUsualBytes}));
    append(body, whole);
    append(body, number, value);
    body_.swap(body);
  }
  places_.back().number = number;
  places_.push_back({kEnd, static_cast<std::uint32_t>(size)});
}

// Walks the body up to what cannot be read: a head or a value that does not fit, or a number that is not
// above the one before.
const std::vector<Record::Place>& Record::places() const {
  if (!places_.empty()) return places_;
  places_.reserve(kUsualAttributes);
  std::int32_t former = std::numeric_limits<std::int32_t>::min();
  std::size_t at = 0;
  while (body_.size() - at >= kHeadBytes) {
    const Head head = head_at(body_, at);
    if (head.number <= former || head.length > body_.size() - at - kHeadBytes) break;
    places_.push_back({head.number, static_cast<std::uint32_t>(at)});
    former = head.number;
    at += kHeadBytes + head.length;
  }
  places_.push_back({kEnd, static_cast<std::uint32_t>(at)});
  return places_;
}

Record::Attribute Record::attribute_at(Place place) const {
  const Head head = head_at(body_, place.begin);
  return {head.number, Bytes(body_).subspan(place.begin + kHeadBytes, head.length)};
}

// The place of the first attribute with this number or a higher one, or the end.
Record::Place Record::first_from(std::int16_t number) const {
  const std::vector<Place>& all = places();
  return *std::lower_bound(all.begin(), all.end() - 1, number,
                           [](Place place, std::int16_t wanted) { return place.number < wanted; });
}

}  // namespace tavdsrv
