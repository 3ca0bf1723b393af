#include "product/text_codec.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

#include "tavd/attributes.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

// Any text attribute serves: the charset is named at each read.
constexpr std::int16_t kScratchAttribute = TAVD_ATT_CODE_DEFAULT;

using WideText = std::basic_string<tavd_wchar>;

constexpr std::size_t kBytesPerUnit = 4;  // at most, in any charset of the service
constexpr char kHexDigits[] = "0123456789abcdef";

bool is_ascii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::optional<WideText> widen(const std::string& utf8) {
  WideText wide;
  try {
    utf8::utf8to16(utf8.begin(), utf8.end(), std::back_inserter(wide));
  } catch (const utf8::exception&) {
    return std::nullopt;
  }
  return wide;
}

constexpr int kNoDigit = -1;

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return kNoDigit;
}

}  // namespace

TextCodec::TextCodec(std::int16_t db) : db_(db), scratch_(tavdsrv_newrec(TAVD_FILEHEADER_CLASS, "TEXT")) {}

std::optional<std::string> TextCodec::encode(int charset, const std::string& utf8) const {
  const auto wide = widen(utf8);
  if (!wide || wide->find(tavd_wchar{0}) != WideText::npos) return std::nullopt;
  std::string bytes(wide->size() * kBytesPerUnit + 1, '\0');
  const std::int32_t length =
      tavdsrv_encodetext(db_, charset, wide->c_str(), bytes.data(), static_cast<std::int32_t>(bytes.size()));
  if (length < 0) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

std::optional<std::string> TextCodec::decode(int charset, std::string_view bytes) {
  if (bytes.empty()) return std::string();
  if (bytes.find('\0') != std::string_view::npos || bytes.size() > INT16_MAX) return std::nullopt;
  tavbinsertatt(db_, scratch_.address(), kScratchAttribute, bytes.data(),
                static_cast<std::int16_t>(bytes.size()));
  WideText wide(bytes.size() + 1, tavd_wchar{0});
  const auto capacity = static_cast<std::int32_t>(bytes.size() * sizeof(tavd_wchar));
  if (tavbcopywsz(db_, scratch_.get(), kScratchAttribute, wide.data(), capacity, charset) == nullptr) {
    return std::nullopt;
  }
  wide.resize(wide.find(tavd_wchar{0}));
  std::string utf8;
  try {
    utf8::utf16to8(wide.begin(), wide.end(), std::back_inserter(utf8));
  } catch (const utf8::exception&) {
    return std::nullopt;
  }
  return utf8;
}

std::optional<std::string> TextCodec::encode_field(const std::string& utf8, std::size_t size) const {
  std::optional<std::string> bytes = is_ascii(utf8) ? utf8 : encode(0, utf8);
  if (!bytes || bytes->size() > size) return std::nullopt;
  bytes->resize(size, ' ');
  return bytes;
}

std::optional<std::string> TextCodec::decode_field(std::string_view bytes) {
  const std::string_view trimmed = bytes.substr(0, bytes.find_last_not_of(' ') + 1);
  if (is_ascii(trimmed)) return std::string(trimmed);
  return decode(0, trimmed);
}

std::string TextCodec::misfit(int charset, const std::string& utf8) const {
  for (auto at = utf8.begin(); at != utf8.end();) {
    auto next = at;
    utf8::next(next, utf8.end());
    std::string character(at, next);
    if (!encode(charset, character)) return character;
    at = next;
  }
  return {};
}

const char* charset_name(int charset) {
  switch (charset) {
    case 0:
      return "the file's own charset (windows-1252, or UTF-8 if usesUTF8 is 1)";
    case 1:
      return "UTF-8";
    case 6:
      return "windows-1257";
    case 7:
      return "windows-1250";
    case 8:
      return "windows-1251";
    default:
      return "its charset";
  }
}

std::size_t utf16_length(const std::string& utf8) {
  const auto wide = widen(utf8);
  return wide ? wide->size() : 0;
}

std::string to_hex(std::string_view bytes) {
  std::string hex;
  hex.reserve(bytes.size() * 2);
  for (char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    hex += kHexDigits[byte >> 4];
    hex += kHexDigits[byte & 0xF];
  }
  return hex;
}

std::optional<std::string> from_hex(std::string_view hex) {
  if (hex.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  bytes.reserve(hex.size() / 2);
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    const int high = hex_value(hex[i]);
    const int low = hex_value(hex[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
  }
  return bytes;
}

}  // namespace tavdhost
