// Drawing on a device context: the operations that charts, curves and pictures are made of. Above this header
// nothing names a platform. Objects are opaque; every operation takes a null device context and then does
// nothing, and a null object is never handed to the platform.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "tavd/types.h"

namespace tavd {

using gwobject = void*;

// Colours, 0x00BBGGRR.
inline constexpr std::uint32_t kBlack = 0x000000;
inline constexpr std::uint32_t kRed = 0x0000FF;
inline constexpr std::uint32_t kGrey = 0x808080;
inline constexpr std::uint32_t kBlue = 0xFF0000;

inline constexpr int kPenSolid = 0;
inline constexpr int kPenDot = 2;
inline constexpr int kPenDashDot = 3;

// Text alignment.
inline constexpr unsigned kAlignLeftTop = 0;
inline constexpr unsigned kAlignRightTop = 2;
inline constexpr unsigned kAlignCenterTop = 6;
inline constexpr unsigned kAlignLeftBottom = 8;
inline constexpr unsigned kAlignRightBottom = 10;
inline constexpr unsigned kAlignCenterBottom = 14;

inline constexpr int kWeightNormal = 400;
inline constexpr int kWeightBold = 700;

inline constexpr int kLightGreyBrush = 1;  // stock object
inline constexpr int kAnsiVarFont = 12;    // stock object

inline constexpr int kAnisotropic = 8;  // map mode
inline constexpr int kTransparent = 1;  // background mode

// Objects.
gwobject gwcreatepen(int style, int width, std::uint32_t colour);
// `height` is the character height in logical units; `face` is cut to 31 characters; default character set.
gwobject gwcreatefont(std::int16_t height, std::int32_t weight, unsigned char italic, unsigned char underline,
                      const char* face);
// The same, normal weight, with the text line running upward (900 tenths of a degree), character set 0.
gwobject gwcreatefont_upward(std::int16_t height, const char* face);
gwobject gwcreatebrush(std::uint32_t colour);
gwobject gwstockobject(int index);
gwobject gwselect(tavd_hdc hdc, gwobject object);  // the previous object; null selects nothing, answers null
int gwdelete(gwobject object);                     // 0 for null
// Has a surface let go of its pen and font where a platform deletes none that is selected; null has none.
void gwletgo(tavd_hdc hdc);
// Deletes the tools of a picture, in this order, and makes each null.
void gwdiscard(std::initializer_list<gwobject*> tools);

// State; each returns the former value.
unsigned gwtextalign(tavd_hdc hdc, unsigned align);
std::uint32_t gwtextcolour(tavd_hdc hdc, std::uint32_t colour);
int gwbkmode(tavd_hdc hdc, int mode);

// Figures.
void gwmoveto(tavd_hdc hdc, int x, int y);
void gwlineto(tavd_hdc hdc, int x, int y);
void gwline(tavd_hdc hdc, int x1, int y1, int x2, int y2);
void gwellipse(tavd_hdc hdc, int left, int top, int right, int bottom);
void gwcircle(tavd_hdc hdc, int x, int y, int r);
void gwarc(tavd_hdc hdc, int left, int top, int right, int bottom, int xs, int ys, int xe, int ye);

// Text. gwtextout prints into 256 bytes; nothing is drawn if the printed text is empty.
#if defined(__GNUC__)
__attribute__((format(printf, 4, 5)))
#endif
void gwtextout(tavd_hdc hdc, int x, int y, const char* format, ...);
void gwtextoutn(tavd_hdc hdc, int x, int y, const char* text, int length);
void gwtextoutw(tavd_hdc hdc, int x, int y, const tavd_wchar* text, int length);

// Mapping.
void gwmapmode(tavd_hdc hdc, int mode);
void gwwindoworg(tavd_hdc hdc, int x, int y);
void gwwindowext(tavd_hdc hdc, int x, int y);
void gwviewportorg(tavd_hdc hdc, int x, int y);
void gwviewportext(tavd_hdc hdc, int x, int y);
int gwsavedc(tavd_hdc hdc);
void gwrestoredc(tavd_hdc hdc, int saved);

}  // namespace tavd
