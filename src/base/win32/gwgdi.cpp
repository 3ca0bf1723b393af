// Drawing through GDI.
#include "base/gwgdi.h"

#include <windows.h>

#include "base/gwtext.h"

namespace tavd {
namespace {

constexpr LONG kUpward = 900;  // tenths of a degree

LOGFONTA font_of(std::int16_t height, const char* face) {
  LOGFONTA font{};
  // Negative: the height of the characters, not of their cells.
  font.lfHeight = -LONG{height};
  gwstrcpyfield(font.lfFaceName, face, LF_FACESIZE);
  return font;
}

}  // namespace

gwobject gwcreatepen(int style, int width, std::uint32_t colour) {
  return CreatePen(style, width, colour);
}

gwobject gwcreatefont(std::int16_t height, std::int32_t weight, unsigned char italic, unsigned char underline,
                      const char* face) {
  LOGFONTA font = font_of(height, face);
  font.lfWeight = weight;
  font.lfItalic = italic != 0 ? 1 : 0;
  font.lfUnderline = underline != 0 ? 1 : 0;
  font.lfCharSet = DEFAULT_CHARSET;
  return CreateFontIndirectA(&font);
}

gwobject gwcreatefont_upward(std::int16_t height, const char* face) {
  LOGFONTA font = font_of(height, face);
  font.lfWeight = kWeightNormal;
  font.lfEscapement = kUpward;
  font.lfCharSet = ANSI_CHARSET;
  return CreateFontIndirectA(&font);
}

gwobject gwcreatebrush(std::uint32_t colour) {
  return CreateSolidBrush(colour);
}

gwobject gwstockobject(int index) {
  return GetStockObject(index);
}

gwobject gwselect(tavd_hdc hdc, gwobject object) {
  return object != nullptr ? SelectObject(hdc, object) : nullptr;
}

int gwdelete(gwobject object) {
  return object != nullptr ? DeleteObject(object) : 0;
}

void gwletgo(tavd_hdc hdc) {
  if (hdc == nullptr) return;
  SelectObject(hdc, GetStockObject(BLACK_PEN));
  SelectObject(hdc, GetStockObject(SYSTEM_FONT));
}

unsigned gwtextalign(tavd_hdc hdc, unsigned align) {
  return SetTextAlign(hdc, align);
}

std::uint32_t gwtextcolour(tavd_hdc hdc, std::uint32_t colour) {
  return SetTextColor(hdc, colour);
}

int gwbkmode(tavd_hdc hdc, int mode) {
  return SetBkMode(hdc, mode);
}

void gwmoveto(tavd_hdc hdc, int x, int y) {
  MoveToEx(hdc, x, y, nullptr);
}

void gwlineto(tavd_hdc hdc, int x, int y) {
  LineTo(hdc, x, y);
}

void gwellipse(tavd_hdc hdc, int left, int top, int right, int bottom) {
  Ellipse(hdc, left, top, right, bottom);
}

void gwarc(tavd_hdc hdc, int left, int top, int right, int bottom, int xs, int ys, int xe, int ye) {
  Arc(hdc, left, top, right, bottom, xs, ys, xe, ye);
}

void gwtextoutn(tavd_hdc hdc, int x, int y, const char* text, int length) {
  if (text != nullptr) TextOutA(hdc, x, y, text, length);
}

void gwtextoutw(tavd_hdc hdc, int x, int y, const tavd_wchar* text, int length) {
  if (text != nullptr) TextOutW(hdc, x, y, text, length);
}

void gwmapmode(tavd_hdc hdc, int mode) {
  SetMapMode(hdc, mode);
}

void gwwindoworg(tavd_hdc hdc, int x, int y) {
  SetWindowOrgEx(hdc, x, y, nullptr);
}

void gwwindowext(tavd_hdc hdc, int x, int y) {
  SetWindowExtEx(hdc, x, y, nullptr);
}

void gwviewportorg(tavd_hdc hdc, int x, int y) {
  SetViewportOrgEx(hdc, x, y, nullptr);
}

void gwviewportext(tavd_hdc hdc, int x, int y) {
  SetViewportExtEx(hdc, x, y, nullptr);
}

int gwsavedc(tavd_hdc hdc) {
  return SaveDC(hdc);
}

void gwrestoredc(tavd_hdc hdc, int saved) {
  RestoreDC(hdc, saved);
}

}  // namespace tavd
