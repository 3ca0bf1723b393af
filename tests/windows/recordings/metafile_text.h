// The words of docs/recording.md for what GDI's records hold.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace recordings {

std::string words(const char* name, std::initializer_list<LONG> numbers);
std::string stock_name(DWORD number);
std::string colour_text(COLORREF colour);
std::string pen_text(UINT style, LONG width, COLORREF colour);
std::string brush_text(UINT style, COLORREF colour);
std::string font_text(const LOGFONTW& font);
std::string align_text(DWORD align);
std::string background_text(DWORD mode);
std::string map_text(DWORD mode);

// Texts between quotes. Narrow text is of the system's code page.
std::string quoted(std::wstring_view text);
std::wstring wide(std::string_view text);
inline std::wstring_view wide(std::wstring_view text) {
  return text;
}

}  // namespace recordings
