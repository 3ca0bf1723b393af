#include "viewer_remote.h"

#include <psapi.h>

#include <stdexcept>

namespace drive {
namespace {

constexpr int kTextChars = 512;
constexpr DWORD kExitLimitMs = 20000;
constexpr wchar_t kDialogClass[] = L"#32770";
constexpr UINT kNoRow = static_cast<UINT>(-1);

struct Search {
  DWORD process;
  bool dialog;
  HWND found;
};

BOOL CALLBACK look(HWND window, LPARAM search_address) {
  auto& search = *reinterpret_cast<Search*>(search_address);
  DWORD process = 0;
  wchar_t name[64] = {};
  GetWindowThreadProcessId(window, &process);
  GetClassNameW(window, name, 64);
  const bool matches =
      search.dialog ? std::wstring(name) == kDialogClass : std::wstring(name) == L"TavdViewerMain";
  if (process != search.process || !matches || IsWindowVisible(window) == FALSE) return TRUE;
  search.found = window;
  return FALSE;
}

HWND find_window(DWORD process, bool dialog) {
  Search search{process, dialog, nullptr};
  EnumWindows(look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// Memory in the other process, for messages that hand over an address.
class RemoteMemory {
 public:
  RemoteMemory(HANDLE process, std::size_t size)
      : process_(process),
        address_(VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {}
  ~RemoteMemory() { VirtualFreeEx(process_, address_, 0, MEM_RELEASE); }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;

  char* address() const { return static_cast<char*>(address_); }
  void write(const void* data, std::size_t size, std::size_t at = 0) const {
    WriteProcessMemory(process_, address() + at, data, size, nullptr);
  }
  void read(void* data, std::size_t size, std::size_t at = 0) const {
    ReadProcessMemory(process_, address() + at, data, size, nullptr);
  }

 private:
  HANDLE process_;
  void* address_;
};

std::vector<std::wstring> rows(HWND control, UINT count_message, UINT length_message, UINT text_message) {
  std::vector<std::wstring> all;
  const LRESULT count = SendMessageW(control, count_message, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    const auto row = static_cast<WPARAM>(i);
    std::wstring text(static_cast<std::size_t>(SendMessageW(control, length_message, row, 0)) + 1, L'\0');
    SendMessageW(control, text_message, row, reinterpret_cast<LPARAM>(text.data()));
    all.emplace_back(text.c_str());
  }
  return all;
}

UINT row_of(const std::vector<std::wstring>& rows, const std::wstring& text) {
  for (UINT i = 0; i < rows.size(); ++i) {
    if (rows[i] == text) return i;
  }
  return kNoRow;
}

void notify(HWND window, int id, int notification) {
  SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, notification)),
               reinterpret_cast<LPARAM>(GetDlgItem(window, id)));
}

}  // namespace

Viewer::Viewer(const std::wstring& program, const std::wstring& arguments) {
  std::wstring line = L'"' + program + L"\" " + arguments;
  STARTUPINFOW start{};
  start.cb = sizeof start;
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process_) ==
      FALSE) {
    throw std::runtime_error("the viewer does not start");
  }
  const bool there =
      wait_until([&] { return (window_ = find_window(process_.dwProcessId, false)) != nullptr; });
  if (!there) throw std::runtime_error("the viewer shows no window");
}

Viewer::~Viewer() {
  if (is_running()) TerminateProcess(process_.hProcess, 1);
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

bool Viewer::is_running() const {
  return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

SIZE_T Viewer::private_bytes() const {
  PROCESS_MEMORY_COUNTERS_EX counters{};
  counters.cb = sizeof counters;
  GetProcessMemoryInfo(process_.hProcess, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                       sizeof counters);
  return counters.PrivateUsage != 0 ? counters.PrivateUsage : counters.PagefileUsage;
}

HWND Viewer::wait_for_dialog() const {
  HWND dialog = nullptr;
  wait_until([&] { return (dialog = find_window(process_.dwProcessId, true)) != nullptr; });
  return dialog;
}

void Viewer::command(int id) const {
  SendMessageW(window_, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void Viewer::post_command(int id) const {
  PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void Viewer::type(int id, const std::wstring& text) const {
  type_into(control(id), text);
}

bool Viewer::pick_in_list(int id, const std::wstring& row) const {
  const UINT place = row_of(rows_of_list(id), row);
  if (place == kNoRow) return false;
  SendMessageW(control(id), LB_SETCURSEL, place, 0);
  notify(window_, id, LBN_SELCHANGE);
  return true;
}

bool Viewer::pick_in_combo(int id, const std::wstring& row) const {
  return pick_in_combo_of(window_, id, row);
}

std::vector<std::wstring> Viewer::rows_of_list(int id) const {
  return rows(control(id), LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

std::vector<std::wstring> Viewer::rows_of_combo(int id) const {
  return rows_of_combo_of(window_, id);
}

std::vector<HTREEITEM> Viewer::children(int id, HTREEITEM parent) const {
  HWND tree = control(id);
  if (parent != nullptr) TreeView_Expand(tree, parent, TVE_EXPAND);
  HTREEITEM item = parent != nullptr ? TreeView_GetChild(tree, parent) : TreeView_GetRoot(tree);
  std::vector<HTREEITEM> items;
  for (; item != nullptr; item = TreeView_GetNextSibling(tree, item)) items.push_back(item);
  return items;
}

HTREEITEM Viewer::find_branch(int id, HTREEITEM parent, const std::wstring& begin) const {
  for (HTREEITEM item : children(id, parent)) {
    if (branch_text(id, item).starts_with(begin)) return item;
  }
  return nullptr;
}

std::wstring Viewer::branch_text(int id, HTREEITEM item) const {
  const RemoteMemory memory(process_.hProcess, sizeof(TVITEMW) + kTextChars * sizeof(wchar_t));
  TVITEMW asked{};
  asked.mask = TVIF_TEXT;
  asked.hItem = item;
  asked.pszText = reinterpret_cast<wchar_t*>(memory.address() + sizeof asked);
  asked.cchTextMax = kTextChars;
  memory.write(&asked, sizeof asked);
  if (SendMessageW(control(id), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(memory.address())) == 0) return {};
  wchar_t text[kTextChars] = {};
  memory.read(text, sizeof text - sizeof(wchar_t), sizeof asked);
  return text;
}

void Viewer::select_branch(int id, HTREEITEM item) const {
  TreeView_SelectItem(control(id), item);
}

std::vector<std::vector<std::wstring>> Viewer::cells_of(HWND list) const {
  const RemoteMemory memory(process_.hProcess, sizeof(LVITEMW) + kTextChars * sizeof(wchar_t));
  const auto rows = static_cast<WPARAM>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
  const int columns = static_cast<int>(titles_of(list).size());
  std::vector<std::vector<std::wstring>> all(rows);
  for (WPARAM row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      LVITEMW asked{};
      asked.iSubItem = column;
      asked.pszText = reinterpret_cast<wchar_t*>(memory.address() + sizeof asked);
      asked.cchTextMax = kTextChars;
      memory.write(&asked, sizeof asked);
      SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(memory.address()));
      wchar_t text[kTextChars] = {};
      memory.read(text, sizeof text - sizeof(wchar_t), sizeof asked);
      all[row].emplace_back(text);
    }
  }
  return all;
}

std::vector<std::wstring> Viewer::titles_of(HWND list) const {
  const RemoteMemory memory(process_.hProcess, sizeof(LVCOLUMNW) + kTextChars * sizeof(wchar_t));
  std::vector<std::wstring> titles;
  for (WPARAM column = 0;; ++column) {
    LVCOLUMNW asked{};
    asked.mask = LVCF_TEXT;
    asked.pszText = reinterpret_cast<wchar_t*>(memory.address() + sizeof asked);
    asked.cchTextMax = kTextChars;
    memory.write(&asked, sizeof asked);
    if (SendMessageW(list, LVM_GETCOLUMNW, column, reinterpret_cast<LPARAM>(memory.address())) == 0) break;
    wchar_t text[kTextChars] = {};
    memory.read(text, sizeof text - sizeof(wchar_t), sizeof asked);
    titles.emplace_back(text);
  }
  return titles;
}

void Viewer::click_row(HWND list, int row) const {
  const RemoteMemory memory(process_.hProcess, sizeof(RECT));
  RECT rect{};
  rect.left = LVIR_LABEL;
  memory.write(&rect, sizeof rect);
  SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(memory.address()));
  memory.read(&rect, sizeof rect);
  const LPARAM point = MAKELPARAM(rect.left + 4, (rect.top + rect.bottom) / 2);
  PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
  PostMessageW(list, WM_LBUTTONUP, 0, point);
}

void Viewer::change_dpi(int dpi, const RECT& suggested) const {
  const RemoteMemory memory(process_.hProcess, sizeof suggested);
  memory.write(&suggested, sizeof suggested);
  SendMessageW(window_, WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
               reinterpret_cast<LPARAM>(memory.address()));
}

std::optional<DWORD> Viewer::close() {
  PostMessageW(window_, WM_CLOSE, 0, 0);
  DWORD code = 0;
  const bool ended = WaitForSingleObject(process_.hProcess, kExitLimitMs) == WAIT_OBJECT_0 &&
                     GetExitCodeProcess(process_.hProcess, &code) != FALSE;
  return ended ? std::optional(code) : std::nullopt;
}

void type_into(HWND field, const std::wstring& text) {
  SendMessageW(field, EM_SETSEL, 0, -1);
  if (text.empty()) SendMessageW(field, WM_CLEAR, 0, 0);
  for (const wchar_t c : text) SendMessageW(field, WM_CHAR, c, 1);
}

bool pick_in_combo_of(HWND window, int id, const std::wstring& row) {
  const UINT place = row_of(rows_of_combo_of(window, id), row);
  if (place == kNoRow) return false;
  SendMessageW(GetDlgItem(window, id), CB_SETCURSEL, place, 0);
  notify(window, id, CBN_SELCHANGE);
  return true;
}

std::vector<std::wstring> rows_of_combo_of(HWND window, int id) {
  return rows(GetDlgItem(window, id), CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}

std::wstring text_of(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return text.c_str();
}

std::wstring message_of(HWND dialog) {
  std::wstring all;
  for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    wchar_t name[32] = {};
    GetClassNameW(child, name, 32);
    if (lstrcmpiW(name, L"Static") == 0) all += text_of(child);
  }
  return all;
}

void press(HWND dialog, int id) {
  PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
  wait_until([&] { return IsWindow(dialog) == FALSE; });
}

}  // namespace drive
