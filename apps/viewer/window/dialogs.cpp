#include "window/dialogs.h"

#include <commdlg.h>

#include <algorithm>

#include "model/database.h"
#include "tavd/tavd.h"

namespace viewer {
namespace {

constexpr std::size_t kPathChars = 4096;

OPENFILENAMEW request(HWND owner, const wchar_t* filter, std::wstring& path) {
  OPENFILENAMEW asked{};
  asked.lStructSize = sizeof asked;
  asked.hwndOwner = owner;
  asked.lpstrFilter = filter;
  asked.lpstrFile = path.data();
  asked.nMaxFile = static_cast<DWORD>(path.size());
  asked.Flags = OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
  return asked;
}

std::optional<std::wstring> answer(BOOL given, const std::wstring& path) {
  if (given != FALSE) return std::wstring(path.c_str());
  if (CommDlgExtendedError() != 0) throw UserError(L"The dialog for files cannot be shown.");
  return std::nullopt;
}

}  // namespace

std::optional<std::wstring> ask_for_database(HWND owner) {
  std::wstring path(kPathChars, L'\0');
  OPENFILENAMEW asked = request(owner, L"Product databases (*.tavdb)\0*.tavdb\0All files (*.*)\0*.*\0", path);
  asked.lpstrTitle = L"Open a product database";
  asked.Flags |= OFN_FILEMUSTEXIST;
  return answer(GetOpenFileNameW(&asked), path);
}

std::optional<std::wstring> ask_for_metafile(HWND owner, const std::wstring& name) {
  std::wstring path = name.substr(0, kPathChars / 2);
  std::ranges::replace_if(
      path,
      [](wchar_t c) { return c < L' ' || std::wstring_view(L"<>:\"/\\|?*").find(c) != std::wstring::npos; },
      L'_');
  path.resize(kPathChars, L'\0');
  OPENFILENAMEW asked = request(owner, L"Enhanced metafiles (*.emf)\0*.emf\0", path);
  asked.lpstrTitle = L"Save as an enhanced metafile";
  asked.lpstrDefExt = L"emf";
  asked.Flags |= OFN_OVERWRITEPROMPT;
  return answer(GetSaveFileNameW(&asked), path);
}

void tell_error(HWND owner, const std::wstring& text) {
  MessageBoxW(owner, text.c_str(), kProgramName, MB_OK | MB_ICONWARNING);
}

void tell_about(HWND owner) {
  const std::wstring text =
      L"Calculations, diagrams and sketches of ventilation products.\n\nInterface version " +
      std::to_wstring(tavd_version_nmb(TAVD_INTERFACE_VERSION)) + L".";
  MessageBoxW(owner, text.c_str(), kProgramName, MB_OK | MB_ICONINFORMATION);
}

}  // namespace viewer
