#include "drawing/printing.h"

#include <cderr.h>
#include <commdlg.h>
#include <winspool.h>

#include "model/database.h"

namespace viewer {
namespace {

constexpr int kMarginMm = 15;
constexpr double kMmOfInch = 25.4;

// What the dialog hands over, given back at the end.
class PrintChoice {
 public:
  explicit PrintChoice(HWND owner) {
    choice_.lStructSize = sizeof choice_;
    choice_.hwndOwner = owner;
    choice_.Flags =
        PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE | PD_NOWARNING;
  }
  ~PrintChoice() {
    if (choice_.hDC != nullptr) DeleteDC(choice_.hDC);
    if (choice_.hDevMode != nullptr) GlobalFree(choice_.hDevMode);
    if (choice_.hDevNames != nullptr) GlobalFree(choice_.hDevNames);
  }
  PrintChoice(const PrintChoice&) = delete;
  PrintChoice& operator=(const PrintChoice&) = delete;

  bool ask() {
    if (PrintDlgW(&choice_) != FALSE) return true;
    switch (CommDlgExtendedError()) {
      case 0:
        return false;
      case PDERR_NODEFAULTPRN:
      case PDERR_NODEVICES:
        throw UserError(L"There is no printer to print on.");
      default:
        throw UserError(L"The printer cannot be used.");
    }
  }
  HDC hdc() const { return choice_.hDC; }

 private:
  PRINTDLGW choice_{};
};

bool has_printer() {
  DWORD needed = 0;
  DWORD count = 0;
  EnumPrintersW(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 4, nullptr, 0, &needed, &count);
  return needed > 0;
}

// The sheet without its margins, in units of the printable part.
RECT printable(HDC hdc) {
  const auto units = [&](int resolution) {
    return static_cast<LONG>(kMarginMm / kMmOfInch * GetDeviceCaps(hdc, resolution));
  };
  const LONG left = units(LOGPIXELSX) - GetDeviceCaps(hdc, PHYSICALOFFSETX);
  const LONG top = units(LOGPIXELSY) - GetDeviceCaps(hdc, PHYSICALOFFSETY);
  return {left, top, left + GetDeviceCaps(hdc, PHYSICALWIDTH) - 2 * units(LOGPIXELSX),
          top + GetDeviceCaps(hdc, PHYSICALHEIGHT) - 2 * units(LOGPIXELSY)};
}

}  // namespace

bool print_page(HWND owner, const PageContents& contents) {
  if (!has_printer()) throw UserError(L"There is no printer to print on.");
  PrintChoice choice(owner);
  if (!choice.ask()) return false;
  HDC hdc = choice.hdc();
  if (hdc == nullptr) throw UserError(L"The printer cannot be used.");
  DOCINFOW document{};
  document.cbSize = sizeof document;
  document.lpszDocName = contents.title.c_str();
  if (StartDocW(hdc, &document) <= 0) throw UserError(L"The printer does not take the page.");
  bool printed = StartPage(hdc) > 0;
  if (printed) {
    draw_page(hdc, printable(hdc), contents);
    printed = EndPage(hdc) > 0;
  }
  if (!printed) {
    AbortDoc(hdc);
    throw UserError(L"Printing failed.");
  }
  EndDoc(hdc);
  return true;
}

}  // namespace viewer
