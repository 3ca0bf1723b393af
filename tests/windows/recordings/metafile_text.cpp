#include "metafile_text.h"

#include <array>
#include <cstdio>

namespace recordings {
namespace {

// The name at a place of a table, or the number where the table has none.
template <std::size_t N>
std::string name_at(const std::array<const char*, N>& names, DWORD number) {
  const char* const name = number < N ? names[number] : nullptr;
  return name != nullptr ? name : std::to_string(number);
}

template <class... Arguments>
std::string printed(const char* format, Arguments... arguments) {
  std::array<char, 128> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, arguments...);
  return buffer.data();
}

std::string utf8(std::wstring_view text) {
  std::array<char, 8> bytes{};
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  return {bytes.data(), static_cast<std::size_t>(length)};
}

bool begins_pair(std::wstring_view text) {
  return text.size() > 1 && IS_SURROGATE_PAIR(text[0], text[1]);
}

std::string quoted_unit(wchar_t unit) {
  switch (unit) {
    case L'"':
      return "\\\"";
    case L'\\':
      return "\\\\";
    case L'\n':
      return "\\n";
    case L'\r':
      return "\\r";
    case L'\t':
      return "\\t";
    default:
      break;
  }
  const bool control = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
  const bool half = unit >= 0xD800 && unit < 0xE000;
  return control || half ? printed("\\u%04X", static_cast<unsigned>(unit)) : utf8({&unit, 1});
}

}  // namespace

std::string words(const char* name, std::initializer_list<LONG> numbers) {
  std::string line = name;
  for (const LONG number : numbers) line += ' ' + std::to_string(number);
  return line;
}

std::string stock_name(DWORD number) {
  static constexpr std::array<const char*, 14> kNames = {
      "white-brush", "ltgray-brush", "gray-brush",    "dkgray-brush", "black-brush",
      "null-brush",  "white-pen",    "black-pen",     "null-pen",     nullptr,
      nullptr,       nullptr,        "ansi-var-font", "system-font"};
  return name_at(kNames, number);
}

std::string colour_text(COLORREF colour) {
  return printed("#%02X%02X%02X", GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

std::string pen_text(UINT style, LONG width, COLORREF colour) {
  static constexpr std::array<const char*, 6> kStyles = {"solid", "dash", "dot", "dashdot", nullptr, "null"};
  return "pen " + name_at(kStyles, style) + " width=" + std::to_string(width) +
         " colour=" + colour_text(colour);
}

std::string brush_text(UINT style, COLORREF colour) {
  return (style == BS_SOLID ? "brush solid" : "brush " + std::to_string(style)) +
         " colour=" + colour_text(colour);
}

// What is 0 in every font of the library, and not told by recordings of surfaces, is told where it is not 0.
std::string font_text(const LOGFONTW& font) {
  std::string line =
      printed("font height=%ld weight=%ld escapement=%ld charset=%d italic=%d underline=%d strikeout=%d",
              font.lfHeight, font.lfWeight, font.lfEscapement, font.lfCharSet, font.lfItalic,
              font.lfUnderline, font.lfStrikeOut);
  const struct {
    const char* name;
    LONG value;
  } seldom[] = {{"width", font.lfWidth},
                {"orientation", font.lfOrientation},
                {"out-precision", font.lfOutPrecision},
                {"clip-precision", font.lfClipPrecision},
                {"quality", font.lfQuality},
                {"pitch", font.lfPitchAndFamily}};
  for (const auto& [name, value] : seldom) {
    if (value != 0) line += printed(" %s=%ld", name, value);
  }
  const std::wstring_view face(font.lfFaceName, wcsnlen(font.lfFaceName, LF_FACESIZE));
  return line + " face=" + quoted(face);
}

std::string align_text(DWORD align) {
  static constexpr const char* kHorizontal[] = {"left", "right", nullptr, "center"};
  static constexpr const char* kVertical[] = {"top", "bottom", nullptr, "baseline"};
  const char* const horizontal = kHorizontal[align >> 1 & 3];
  const char* const vertical = kVertical[align >> 3 & 3];
  if (horizontal == nullptr || vertical == nullptr || (align & ~0x1EU) != 0) return printed("0x%lX", align);
  return std::string(horizontal) + '+' + vertical;
}

std::string background_text(DWORD mode) {
  return mode == TRANSPARENT ? "background transparent" : "background opaque";
}

std::string map_text(DWORD mode) {
  switch (mode) {
    case MM_TEXT:
      return "map text";
    case MM_ANISOTROPIC:
      return "map anisotropic";
    default:
      return "map " + std::to_string(mode);
  }
}

std::string quoted(std::wstring_view text) {
  std::string line = "\"";
  while (!text.empty()) {
    const bool pair = begins_pair(text);
    line += pair ? utf8(text.substr(0, 2)) : quoted_unit(text[0]);
    text.remove_prefix(pair ? 2 : 1);
  }
  return line + '"';
}

std::wstring wide(std::string_view text) {
  const auto length = static_cast<int>(text.size());
  std::wstring result(text.size(), L'\0');  // no code page has more units than bytes
  const int units = MultiByteToWideChar(CP_ACP, 0, text.data(), length, result.data(), length);
  result.resize(static_cast<std::size_t>(units));
  return result;
}

}  // namespace recordings
