#include "base/sink.h"

#include <cerrno>
#include <cstdio>
#include <iostream>
#include <system_error>

namespace tavdhost {

SinkBuffer::int_type SinkBuffer::overflow(int_type character) {
  if (sync() != 0) return traits_type::eof();
  if (!traits_type::eq_int_type(character, traits_type::eof())) sputc(traits_type::to_char_type(character));
  return traits_type::not_eof(character);
}

int SinkBuffer::sync() {
  const bool good = take({pbase(), static_cast<std::size_t>(pptr() - pbase())});
  setp(bytes_.data(), bytes_.data() + bytes_.size());
  return good ? 0 : -1;
}

StandardOutput::StandardOutput() : former_(std::cout.rdbuf(this)) {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
}

StandardOutput::~StandardOutput() {
  std::cout.flush();
  std::cout.rdbuf(former_);
}

bool StandardOutput::take(std::string_view bytes) {
  if (!reason_.empty()) return false;
  errno = 0;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size()) return true;
  reason_ = std::generic_category().message(errno);
  return false;
}

}  // namespace tavdhost
