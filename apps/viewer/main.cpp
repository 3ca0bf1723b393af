// tavdviewer [DATABASE]: shows the products of a database.
#include <windows.h>

#include <shellapi.h>

#include <exception>
#include <string>

#include "tavd/tavd.h"
#include "window/dialogs.h"
#include "window/main_window.h"

namespace {

constexpr int kFailed = 1;

// The first argument, empty if there is none.
std::wstring path_argument() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  std::wstring path = arguments != nullptr && count > 1 ? arguments[1] : L"";
  LocalFree(arguments);
  return path;
}

int run(HINSTANCE module, int show) {
  if (tavd_version_nmb(TAVD_INTERFACE_VERSION) != TAVD_INTERFACE_VERSION) {
    viewer::tell_error(nullptr, L"tavd.dll beside this program has another interface version.");
    return kFailed;
  }
  viewer::MainWindow window(module);
  if (!window.create(show)) {
    viewer::tell_error(nullptr, L"The main window cannot be made.");
    return kFailed;
  }
  const std::wstring path = path_argument();
  if (!path.empty()) window.open(path);
  return window.run();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE module, HINSTANCE, PWSTR, int show) {
  try {
    return run(module, show);
  } catch (const std::exception&) {
    viewer::tell_error(nullptr, L"There is not enough memory to go on.");
    return kFailed;
  }
}
