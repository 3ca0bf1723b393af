// Questions and messages to the user.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace viewer {

inline constexpr wchar_t kProgramName[] = L"Product Viewer";

std::optional<std::wstring> ask_for_database(HWND owner);

// A file for an enhanced metafile; `name` is suggested, made fit for a file's name.
std::optional<std::wstring> ask_for_metafile(HWND owner, const std::wstring& name);

void tell_error(HWND owner, const std::wstring& text);
void tell_about(HWND owner);

}  // namespace viewer
