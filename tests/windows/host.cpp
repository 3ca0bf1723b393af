#include "host.h"

#include <initializer_list>

namespace tavdtest {

namespace {

constexpr WORD kListBoxAtom = 0x83;
constexpr WORD kComboBoxAtom = 0x85;

// A DLGTEMPLATE and its items, word by word.
class Template {
 public:
  Template() {
    dword(WS_POPUP | WS_CAPTION | WS_VISIBLE);
    dword(0);
    words({2, 10, 10, 200, 120, 0, 0, 0});  // two items; place; no menu, class, title
  }

  void item(DWORD style, WORD y, WORD height, int id, WORD atom) {
    if (words_.size() % 2 != 0) words_.push_back(0);
    dword(WS_CHILD | WS_VISIBLE | style);
    dword(0);
    words({5, y, 150, height, static_cast<WORD>(id), 0xFFFF, atom, 0, 0});
  }

  LPCDLGTEMPLATE get() const { return reinterpret_cast<LPCDLGTEMPLATE>(words_.data()); }

 private:
  void dword(DWORD value) { words({LOWORD(value), HIWORD(value)}); }
  void words(std::initializer_list<WORD> values) { words_.insert(words_.end(), values); }
  std::vector<WORD> words_;
};

int CALLBACK note(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM drawn) {
  auto* all = reinterpret_cast<Drawn*>(drawn);
  const auto* bytes = reinterpret_cast<const unsigned char*>(record);
  if (record->iType == EMR_EXTTEXTOUTW) {
    const auto* text = reinterpret_cast<const EMREXTTEXTOUTW*>(record);
    all->texts.emplace_back(reinterpret_cast<const wchar_t*>(bytes + text->emrtext.offString),
                            text->emrtext.nChars);
  } else if (record->iType == EMR_LINETO || record->iType == EMR_MOVETOEX) {
    const POINTL to = reinterpret_cast<const EMRLINETO*>(record)->ptl;
    all->lines.push_back((record->iType == EMR_LINETO ? "line " : "move ") + std::to_string(to.x) + ' ' +
                         std::to_string(to.y));
  }
  return 1;
}

}  // namespace

Dialog::Dialog(Characters characters) {
  Template built;
  built.item(LBS_NOTIFY | WS_VSCROLL, 5, 60, kList, kListBoxAtom);
  built.item(CBS_DROPDOWNLIST, 70, 60, kCombo, kComboBoxAtom);
  const auto create =
      characters == Characters::wide ? CreateDialogIndirectParamW : CreateDialogIndirectParamA;
  window_ =
      create(GetModuleHandleA(nullptr), built.get(), nullptr, procedure, reinterpret_cast<LPARAM>(this));
}

Dialog::~Dialog() {
  DestroyWindow(window_);
}

void Dialog::choose(int id, int row) const {
  send(id, id == kList ? LB_SETCURSEL : CB_SETCURSEL, static_cast<WPARAM>(row));
  const WORD notification = id == kList ? WORD{LBN_SELCHANGE} : WORD{CBN_SELCHANGE};
  SendMessageA(window_, WM_COMMAND, MAKEWPARAM(id, notification),
               reinterpret_cast<LPARAM>(GetDlgItem(window_, id)));
}

std::vector<std::wstring> Dialog::rows(int id) const {
  const bool list = id == kList;
  std::vector<std::wstring> all;
  const LRESULT count = send(id, list ? LB_GETCOUNT : CB_GETCOUNT);
  for (LRESULT row = 0; row < count; ++row) {
    wchar_t text[256] = L"";
    send(id, list ? LB_GETTEXT : CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
    all.emplace_back(text);
  }
  return all;
}

INT_PTR CALLBACK Dialog::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrA(window, DWLP_USER, lparam);
    return TRUE;
  }
  static_assert(LBN_SELCHANGE == CBN_SELCHANGE);
  if (message == WM_COMMAND && HIWORD(wparam) == LBN_SELCHANGE && lparam != 0) {
    const auto* self = reinterpret_cast<const Dialog*>(GetWindowLongPtrA(window, DWLP_USER));
    if (self->selected) self->selected(LOWORD(wparam));
    return TRUE;
  }
  return FALSE;
}

Drawn drawn(const std::function<void(HDC)>& draw) {
  HDC hdc = CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
  draw(hdc);
  HENHMETAFILE file = CloseEnhMetaFile(hdc);
  Drawn all;
  EnumEnhMetaFile(nullptr, file, note, &all, nullptr);
  DeleteEnhMetaFile(file);
  return all;
}

}  // namespace tavdtest
