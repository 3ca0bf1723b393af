#include "service/ids.h"

#include <algorithm>

namespace tavdsrv {

namespace {

// Copies a field of `width` bytes that may end early at a NUL, padded with blanks.
void copy_padded(char* dest, const char* field, std::size_t width) {
  const std::size_t length = field != nullptr ? strnlen(field, width) : 0;
  if (length > 0) std::memcpy(dest, field, length);
  std::fill(dest + length, dest + width, ' ');
}

}  // namespace

bool Key::has_object_id() const {
  return std::any_of(bytes.begin() + kClassLength, bytes.end(), [](char c) { return c != ' '; });
}

Key make_key(const char* class_id, const char* object_id) {
  Key key;
  copy_padded(key.bytes.data(), class_id, kClassLength);
  copy_padded(key.bytes.data() + kClassLength, object_id, kObjectLength);
  return key;
}

void write_object_text(const char* object_id, char* text) {
  std::size_t length = strnlen(object_id, kObjectLength);
  while (length > 0 && object_id[length - 1] == ' ') --length;
  std::memmove(text, object_id, length);
  text[length] = '\0';
}

}  // namespace tavdsrv
