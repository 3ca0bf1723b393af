// The bytes that libFuzzer hands in, taken off piece by piece. Behind their end everything is zero or empty.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace fuzz {

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : at_(data), left_(size) {}

  bool empty() const { return left_ == 0; }

  template <typename Number>
  Number number() {
    Number value{};
    const std::size_t size = std::min(left_, sizeof value);
    if (size > 0) std::memcpy(&value, at_, size);
    skip(size);
    return value;
  }

  // At most `size` bytes.
  std::string bytes(std::size_t size) {
    const std::size_t taken = std::min(left_, size);
    std::string text(reinterpret_cast<const char*>(at_), taken);
    skip(taken);
    return text;
  }

  // A length in one byte, and so many bytes; without NULs, as a text of a host is.
  std::string text() {
    const std::string all = bytes(number<std::uint8_t>());
    return all.substr(0, all.find('\0'));
  }

  std::string rest() { return bytes(left_); }

 private:
  void skip(std::size_t size) {
    at_ += size;
    left_ -= size;
  }

  const std::uint8_t* at_;
  std::size_t left_;
};

// Ends the program as a found fault where something does not hold that must.
inline void require(bool holds) {
  if (!holds) __builtin_trap();
}

}  // namespace fuzz
