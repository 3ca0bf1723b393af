// The platform by Win32.
#include "base/platform.h"

// windows.h first: the others need it.
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "base/paths.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

constexpr DWORD kUnderstandsEscapes = 0x0004;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING, since Windows 10

HANDLE handle_of(Stream stream) {
  switch (stream) {
    case Stream::kInput:
      return GetStdHandle(STD_INPUT_HANDLE);
    case Stream::kOutput:
      return GetStdHandle(STD_OUTPUT_HANDLE);
    default:
      return GetStdHandle(STD_ERROR_HANDLE);
  }
}

std::string to_narrow(const wchar_t* wide) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  if (size <= 0) return "";
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
  text.pop_back();  // the terminator
  return text;
}

}  // namespace

void set_up_streams() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  if (!is_terminal(Stream::kOutput) && !is_terminal(Stream::kErrors)) return;
  // The code page is the console's, not the program's, and would stay.
  static const UINT former = GetConsoleOutputCP();
  SetConsoleOutputCP(CP_UTF8);
  std::atexit([] { SetConsoleOutputCP(former); });
}

// Those of main() are in the system's code page, and wild cards in them have become names of files.
std::vector<std::string> arguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> wide(CommandLineToArgvW(GetCommandLineW(), &count),
                                                           &LocalFree);
  std::vector<std::string> all;
  for (int i = 0; wide && i < count; ++i) all.push_back(to_narrow(wide.get()[i]));
  return all;
}

bool is_terminal(Stream stream) {
  DWORD mode = 0;
  return GetConsoleMode(handle_of(stream), &mode) != 0;
}

bool can_wipe_lines(Stream stream) {
  const HANDLE handle = handle_of(stream);
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0 && SetConsoleMode(handle, mode | kUnderstandsEscapes) != 0;
}

// "CON" is the console, wherever standard output goes.
bool names_standard_output(const std::string& /*path*/) {
  return false;
}

std::int16_t open_database_file(const std::string& path, std::int32_t mode) {
  return tavdf_open_databasew(to_path(path).c_str(), mode);
}

tavd_hmodule program_module() {
  return GetModuleHandleW(nullptr);
}

}  // namespace tavdhost
