// Drawing through libtavdgui, whose operations have the meaning and the numbers that GDI gives them.
#include "base/gwgdi.h"

#include "base/gwtext.h"
#include "tavdgui/tavdgui.h"

namespace tavd {
namespace {

constexpr unsigned char kDefaultCharset = 1;
constexpr unsigned char kAnsiCharset = 0;
constexpr std::int32_t kUpward = 900;  // tenths of a degree

tgui_object* object_of(gwobject object) {
  return static_cast<tgui_object*>(object);
}

tgui_font font_of(std::int16_t height, const char* face) {
  tgui_font font{};
  // Negative: the height of the characters, not of their cells.
  font.height = -std::int32_t{height};
  gwstrcpyfield(font.face, face, static_cast<std::int32_t>(sizeof font.face));
  return font;
}

}  // namespace

gwobject gwcreatepen(int style, int width, std::uint32_t colour) {
  return tgui_create_pen(style, width, colour);
}

gwobject gwcreatefont(std::int16_t height, std::int32_t weight, unsigned char italic, unsigned char underline,
                      const char* face) {
  tgui_font font = font_of(height, face);
  font.weight = weight;
  font.italic = italic != 0 ? 1 : 0;
  font.underline = underline != 0 ? 1 : 0;
  font.charset = kDefaultCharset;
  return tgui_create_font(&font);
}

gwobject gwcreatefont_upward(std::int16_t height, const char* face) {
  tgui_font font = font_of(height, face);
  font.weight = kWeightNormal;
  font.escapement = kUpward;
  font.charset = kAnsiCharset;
  return tgui_create_font(&font);
}

gwobject gwcreatebrush(std::uint32_t colour) {
  return tgui_create_brush(colour);
}

gwobject gwstockobject(int index) {
  return tgui_stock_object(index);
}

gwobject gwselect(tavd_hdc hdc, gwobject object) {
  return object != nullptr ? tgui_select(hdc, object_of(object)) : nullptr;
}

int gwdelete(gwobject object) {
  return object != nullptr ? tgui_delete_object(object_of(object)) : 0;
}

// What is selected is deleted as soon as it no longer is.
void gwletgo(tavd_hdc /*hdc*/) {}

unsigned gwtextalign(tavd_hdc hdc, unsigned align) {
  return tgui_set_text_align(hdc, align);
}

std::uint32_t gwtextcolour(tavd_hdc hdc, std::uint32_t colour) {
  return tgui_set_text_colour(hdc, colour);
}

int gwbkmode(tavd_hdc hdc, int mode) {
  return tgui_set_background_mode(hdc, mode);
}

void gwmoveto(tavd_hdc hdc, int x, int y) {
  tgui_move_to(hdc, x, y);
}

void gwlineto(tavd_hdc hdc, int x, int y) {
  tgui_line_to(hdc, x, y);
}

void gwellipse(tavd_hdc hdc, int left, int top, int right, int bottom) {
  tgui_ellipse(hdc, left, top, right, bottom);
}

void gwarc(tavd_hdc hdc, int left, int top, int right, int bottom, int xs, int ys, int xe, int ye) {
  tgui_arc(hdc, left, top, right, bottom, xs, ys, xe, ye);
}

void gwtextoutn(tavd_hdc hdc, int x, int y, const char* text, int length) {
  tgui_text(hdc, x, y, text, length);
}

void gwtextoutw(tavd_hdc hdc, int x, int y, const tavd_wchar* text, int length) {
  tgui_textw(hdc, x, y, text, length);
}

void gwmapmode(tavd_hdc hdc, int mode) {
  tgui_set_map_mode(hdc, mode);
}

void gwwindoworg(tavd_hdc hdc, int x, int y) {
  tgui_set_window_org(hdc, x, y);
}

void gwwindowext(tavd_hdc hdc, int x, int y) {
  tgui_set_window_ext(hdc, x, y);
}

void gwviewportorg(tavd_hdc hdc, int x, int y) {
  tgui_set_viewport_org(hdc, x, y);
}

void gwviewportext(tavd_hdc hdc, int x, int y) {
  tgui_set_viewport_ext(hdc, x, y);
}

int gwsavedc(tavd_hdc hdc) {
  return tgui_save(hdc);
}

void gwrestoredc(tavd_hdc hdc, int saved) {
  tgui_restore(hdc, saved);
}

}  // namespace tavd
