// Each helper is one template over the character type; the exported names pick narrow or wide.
#include "base/gwtext.h"

#include <algorithm>

namespace tavd {
namespace {

template <typename Char>
std::int32_t trimlen(const Char* s, std::int32_t n) {
  if (s == nullptr) return 0;
  std::int32_t length = 0;
  while (length < n && s[length] != 0) ++length;
  while (length > 0 && s[length - 1] == ' ') --length;
  return length;
}

template <typename Char>
Char* trimcpy(Char* dest, const Char* s, std::int32_t n) {
  if (dest == nullptr || n < 0) return dest;
  const std::int32_t length = trimlen(s, n);
  // The copy runs before the zeroing of the rest, so that a text may be trimmed onto itself.
  if (length > 0 && dest != s) std::copy_n(s, length, dest);
  std::fill_n(dest + length, n + 1 - length, Char{});
  return dest;
}

template <typename Char>
void rtrim(Char* s) {
  if (s == nullptr) return;
  Char* end = s;
  while (*end != 0) ++end;
  Char* cut = end;
  while (cut != s && cut[-1] == ' ') --cut;
  if (cut != end) *cut = 0;
}

template <typename Char>
int isnumber(const Char* s) {
  if (s == nullptr) return 0;
  while (*s == ' ') ++s;
  bool digit = false;
  bool point = false;
  bool trailing = false;
  for (; *s != 0; ++s) {
    if (*s >= '0' && *s <= '9') {
      if (trailing) return 0;
      digit = true;
    } else if (*s == '.') {
      if (point || trailing) return 0;
      point = true;
    } else if (*s == ' ') {
      trailing = true;
    } else {
      return 0;
    }
  }
  return digit ? 1 : 0;
}

// `size` counts characters, the terminator included.
template <typename Char>
const Char* field(Char* dest, const Char* s, Char sep, std::int32_t index, std::int32_t size) {
  if (dest == nullptr) return nullptr;
  *dest = 0;
  if (s == nullptr || index < 0 || size < 1) return nullptr;
  for (; index > 0; --index) {
    while (*s != 0 && *s != sep) ++s;
    if (*s == 0) return nullptr;
    ++s;
  }
  if (*s == 0) return nullptr;
  std::int32_t length = 0;
  while (*s != 0 && *s != sep && length < size - 1) dest[length++] = *s++;
  dest[length] = 0;
  while (*s != 0 && *s != sep) ++s;
  return *s == 0 ? s : s + 1;
}

template <typename Char>
void cpyfield(Char* to, const Char* s, std::int32_t size) {
  if (to == nullptr || size < 1) return;
  std::int32_t length = 0;
  if (s != nullptr) {
    for (; length < size - 1 && s[length] != 0; ++length) to[length] = s[length];
  }
  to[length] = 0;
}

int foldedbyte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte;
}

}  // namespace

std::int32_t gwstrtrimlen(const char* s, std::int32_t n) {
  return trimlen(s, n);
}
std::int32_t gwwcstrimlen(const tavd_wchar* s, std::int32_t n) {
  return trimlen(s, n);
}

char* gwstrtrimcpy(char* dest, const char* s, std::int32_t n) {
  return trimcpy(dest, s, n);
}
tavd_wchar* gwwcstrimcpy(tavd_wchar* dest, const tavd_wchar* s, std::int32_t n) {
  return trimcpy(dest, s, n);
}

void gwrtrim(char* s) {
  rtrim(s);
}
void gwrtrimw(tavd_wchar* s) {
  rtrim(s);
}

int gwisnumber(const char* s) {
  return isnumber(s);
}
int gwisnumberw(const tavd_wchar* s) {
  return isnumber(s);
}

const char* gwstrfield(char* dest, const char* s, char sep, std::int32_t index, std::int32_t size) {
  return field(dest, s, sep, index, size);
}

const tavd_wchar* gwwcsfield(tavd_wchar* dest, const tavd_wchar* s, tavd_wchar sep, std::int32_t index,
                             std::int32_t size) {
  return field(dest, s, sep, index, size / static_cast<std::int32_t>(sizeof(tavd_wchar)));
}

char gwtoupper(char c) {
  switch (static_cast<unsigned char>(c)) {
    case 0xE4:
      return static_cast<char>(0xC4);
    case 0xF6:
      return static_cast<char>(0xD6);
    case 0xE5:
      return static_cast<char>(0xC5);
    default:
      return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
}

std::int32_t gwmaxlinelen(const char* s) {
  std::int32_t longest = 0;
  std::int32_t line = 0;
  for (; s != nullptr && *s != 0; ++s) {
    if (*s == '\r') {
      line = 0;
    } else if (static_cast<unsigned char>(*s) >= 0x20) {
      longest = std::max(longest, ++line);
    }
  }
  return longest;
}

int gwstricmp(const char* a, const char* b) {
  if (a == nullptr) a = "";
  if (b == nullptr) b = "";
  for (;; ++a, ++b) {
    const int difference = foldedbyte(*a) - foldedbyte(*b);
    if (difference != 0 || *a == 0) return difference;
  }
}

void gwstrcpyfield(char* field, const char* s, std::int32_t size) {
  cpyfield(field, s, size);
}
void gwwcscpyfield(tavd_wchar* field, const tavd_wchar* s, std::int32_t size) {
  cpyfield(field, s, size);
}

}  // namespace tavd
