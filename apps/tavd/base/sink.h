// Streams into what says why it takes no more.
#pragma once

#include <array>
#include <cstddef>
#include <streambuf>
#include <string>
#include <string_view>

namespace tavdhost {

// Passes on in blocks what is written to a stream, which goes bad with the first block that is not taken.
class SinkBuffer : public std::streambuf {
 protected:
  SinkBuffer() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }
  // False if the bytes could not be taken.
  virtual bool take(std::string_view bytes) = 0;

  int_type overflow(int_type character) override;
  int sync() override;

 private:
  std::array<char, std::size_t{64} * 1024> bytes_;
};

// Stands behind std::cout while it lives: the standard library's own buffer forgets why a write has failed.
class StandardOutput : public SinkBuffer {
 public:
  StandardOutput();
  ~StandardOutput() override;
  StandardOutput(const StandardOutput&) = delete;
  StandardOutput& operator=(const StandardOutput&) = delete;

  // Of the first write that failed; empty if none has.
  const std::string& reason() const { return reason_; }

 protected:
  bool take(std::string_view bytes) override;

 private:
  std::streambuf* former_;
  std::string reason_;
};

}  // namespace tavdhost
