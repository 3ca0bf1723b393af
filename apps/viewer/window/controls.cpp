#include "window/controls.h"

#include <commctrl.h>

#include "drawing/drawings.h"
#include "window/resource.h"

namespace viewer {
namespace {

struct Control {
  int id;
  const wchar_t* window_class;
  const wchar_t* text;
  DWORD style, extended_style;
};

constexpr DWORD kLabel = SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS;
constexpr DWORD kMnemonicLabel = SS_LEFT;
constexpr DWORD kTree = TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | WS_TABSTOP;
constexpr DWORD kList = LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP;
constexpr DWORD kNumber = ES_AUTOHSCROLL | WS_TABSTOP;
constexpr DWORD kCombo = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP;
constexpr DWORD kText =
    ES_MULTILINE | ES_READONLY | ES_AUTOHSCROLL | ES_AUTOVSCROLL | WS_HSCROLL | WS_VSCROLL | WS_TABSTOP;

// In the order of the Tab key; a label goes before what its letter reaches.
constexpr Control kControls[] = {
    {IDC_PRODUCTS_LABEL, WC_STATICW, L"&Products", kMnemonicLabel, 0},
    {IDC_PRODUCTS, WC_TREEVIEWW, L"", kTree, WS_EX_CLIENTEDGE},
    {IDC_SIZES_LABEL, WC_STATICW, L"Si&zes", kMnemonicLabel, 0},
    {IDC_SIZES, WC_LISTBOXW, L"", kList, WS_EX_CLIENTEDGE},
    {IDC_FLOW_LABEL, WC_STATICW, L"F&low", kMnemonicLabel, 0},
    {IDC_FLOW, WC_EDITW, L"", kNumber, WS_EX_CLIENTEDGE},
    {IDC_FLOW_UNIT, WC_COMBOBOXW, L"", kCombo, 0},
    {IDC_PRESSURE_LABEL, WC_STATICW, L"Pre&ssure", kMnemonicLabel, 0},
    {IDC_PRESSURE, WC_EDITW, L"", kNumber, WS_EX_CLIENTEDGE},
    {IDC_PRESSURE_UNIT, WC_COMBOBOXW, L"", kCombo, 0},
    {IDC_FIRST_VALUE_LABEL, WC_STATICW, L"", kMnemonicLabel | SS_RIGHT, 0},
    {IDC_FIRST_VALUE, WC_COMBOBOXW, L"", kCombo, 0},
    {IDC_SECOND_VALUE_LABEL, WC_STATICW, L"", kMnemonicLabel | SS_RIGHT, 0},
    {IDC_SECOND_VALUE, WC_COMBOBOXW, L"", kCombo, 0},
    {IDC_RESULTS_LABEL, WC_STATICW, L"&Results", kMnemonicLabel, 0},
    {IDC_RESULTS, WC_EDITW, L"", kText, WS_EX_CLIENTEDGE},
    {IDC_FIRST_CAPTION, WC_STATICW, L"", kLabel, 0},
    {IDC_FIRST_CAPTION + 1, WC_STATICW, L"", kLabel, 0},
    {IDC_FIRST_CAPTION + 2, WC_STATICW, L"", kLabel, 0},
    {IDC_STATUS, STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, 0},
};

// Quarters of the font's mean character width, where the cells of the results begin: the first behind the
// widest label, then one for each octave band.
constexpr UINT kFirstStop = 88;
constexpr UINT kBandStop = 19;
constexpr std::size_t kStops = 8;

// In a window that is no dialog, a field of many lines would keep the Tab key, and Escape in it would close
// the window.
LRESULT CALLBACK leave_keys(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR) {
  const LRESULT answer = DefSubclassProc(hwnd, message, wparam, lparam);
  return message == WM_GETDLGCODE ? answer & ~LRESULT{DLGC_WANTTAB | DLGC_WANTALLKEYS | DLGC_HASSETSEL}
                                  : answer;
}

BOOL CALLBACK set_child_font(HWND child, LPARAM font) {
  SendMessageW(child, WM_SETFONT, static_cast<WPARAM>(font), TRUE);
  return TRUE;
}

}  // namespace

void create_controls(HWND host, HINSTANCE module) {
  for (const Control& control : kControls) {
    const auto id = static_cast<std::intptr_t>(control.id);
    CreateWindowExW(control.extended_style, control.window_class, control.text,
                    control.style | WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, host,
                    reinterpret_cast<HMENU>(id), module, nullptr);
  }
  SetWindowSubclass(GetDlgItem(host, IDC_RESULTS), leave_keys, 0, 0);
}

void set_font(HWND host, HFONT font) {
  EnumChildWindows(host, set_child_font, reinterpret_cast<LPARAM>(font));
  UINT stops[kStops];
  for (UINT i = 0; i < kStops; ++i) stops[i] = kFirstStop + i * kBandStop;
  SendDlgItemMessageW(host, IDC_RESULTS, EM_SETTABSTOPS, kStops, reinterpret_cast<LPARAM>(stops));
}

std::wstring text_of(HWND host, int id) {
  HWND control = GetDlgItem(host, id);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
  return text;
}

void set_text(HWND host, int id, const std::wstring& text) {
  if (text_of(host, id) != text) SetDlgItemTextW(host, id, text.c_str());
}

void list_units(HWND host, int id, std::span<const Unit> units, int selected) {
  SendDlgItemMessageW(host, id, CB_RESETCONTENT, 0, 0);
  for (const Unit& unit : units) {
    SendDlgItemMessageW(host, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(sign_of(unit).c_str()));
  }
  SendDlgItemMessageW(host, id, CB_SETCURSEL, static_cast<WPARAM>(selected), 0);
}

}  // namespace viewer
