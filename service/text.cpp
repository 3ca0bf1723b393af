#include "service/text.h"

#include <algorithm>
#include <array>
#include <limits>

#include "codepage/codepage.h"
#include "tavd/tavb.h"

namespace tavdsrv {

namespace {

struct Charset {
  std::int32_t number;
  codepage::Page page;
};

constexpr std::array kCharsets = std::to_array<Charset>({
    {TAVB_CHARSET_UTF8, codepage::kUtf8},
    {TAVB_CHARSET_BALTIC, codepage::kWindows1257},
    {TAVB_CHARSET_CENTRAL_EUROPEAN, codepage::kWindows1250},
    {TAVB_CHARSET_CYRILLIC, codepage::kWindows1251},
});

const Charset* find_charset(std::int32_t number) {
  const auto* found = std::find_if(kCharsets.begin(), kCharsets.end(),
                                   [number](const Charset& charset) { return charset.number == number; });
  return found != kCharsets.end() ? found : nullptr;
}

}  // namespace

bool depends_on_database(std::int32_t charset) {
  return find_charset(charset) == nullptr;
}

unsigned code_page(std::int32_t charset, bool database_is_utf8) {
  const Charset* found = find_charset(charset);
  if (found != nullptr) return found->page;
  return database_is_utf8 ? codepage::kUtf8 : codepage::kDefault;
}

void write_wide(Bytes text, unsigned page, tavd_wchar* buffer, std::size_t capacity) {
  const auto end = std::find(text.begin(), text.end(), '\0');
  const auto length = static_cast<std::size_t>(end - text.begin());
  const std::size_t written =
      codepage::widen(page, reinterpret_cast<const char*>(text.data()), length, buffer, capacity);
  if (written < capacity) buffer[written] = 0;
}

bool encode(const tavd_wchar* text, unsigned page, std::string& encoded) {
  constexpr std::size_t kMostBytesPerUnit = 3;  // UTF-8; a pair of units takes 4
  const std::size_t length = codepage::length(text, std::numeric_limits<std::int32_t>::max());
  encoded.resize(length * kMostBytesPerUnit);
  bool lost = false;
  encoded.resize(codepage::narrow(page, text, length, encoded.data(), encoded.size(), &lost));
  return !lost;
}

}  // namespace tavdsrv
