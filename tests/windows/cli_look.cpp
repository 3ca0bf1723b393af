// What a picture file holds, read by other means than it was written:
//   cli_look.exe FILE
//   cli_look.exe FILE.emf FILE.png
// prints "1200x900 ink 4.21" of a PNG, the part of its pixels that are not white in percent, and
// "1200x900 ink 4.21 lines 134 texts 27" of an enhanced metafile, with its size in pixels of its own
// reference device and the ink of GDI's playing it that large. A second name gets what was played, for those
// who look.
#include <windows.h>

#include <gdiplus.h>
#include <shellapi.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace {

constexpr int kFailed = 1;

double ink_of(Gdiplus::Bitmap& bitmap) {
  const UINT width = bitmap.GetWidth();
  const UINT height = bitmap.GetHeight();
  std::uint64_t ink = 0;
  for (UINT y = 0; y < height; ++y) {
    for (UINT x = 0; x < width; ++x) {
      Gdiplus::Color colour;
      bitmap.GetPixel(static_cast<INT>(x), static_cast<INT>(y), &colour);
      if ((colour.GetValue() & 0xFFFFFF) != 0xFFFFFF) ++ink;
    }
  }
  return 100.0 * static_cast<double>(ink) / (static_cast<double>(width) * height);
}

int look_at_pixels(const wchar_t* name) {
  Gdiplus::Bitmap bitmap(name);
  if (bitmap.GetLastStatus() != Gdiplus::Ok) return kFailed;
  std::printf("%ux%u ink %.2f\n", bitmap.GetWidth(), bitmap.GetHeight(), ink_of(bitmap));
  return 0;
}

struct Count {
  int lines = 0, texts = 0;
};

int CALLBACK count(HDC /*hdc*/, HANDLETABLE* /*objects*/, const ENHMETARECORD* record, int /*handles*/,
                   LPARAM context) {
  auto& counted = *reinterpret_cast<Count*>(context);
  if (record->iType == EMR_LINETO) ++counted.lines;
  if (record->iType == EMR_EXTTEXTOUTW || record->iType == EMR_EXTTEXTOUTA) ++counted.texts;
  return 1;
}

int pixels(LONG frame, LONG device_pixels, LONG device_millimetres) {
  constexpr LONG kHundredths = 100;
  return MulDiv(frame, device_pixels, device_millimetres * kHundredths);
}

// GDI's own playing, on white.
double played_ink(HENHMETAFILE file, int width, int height, const wchar_t* copy) {
  const HDC hdc = CreateCompatibleDC(nullptr);
  const HDC screen = GetDC(nullptr);
  const HBITMAP paper = CreateCompatibleBitmap(screen, width, height);
  ReleaseDC(nullptr, screen);
  const HGDIOBJ former = SelectObject(hdc, paper);
  const RECT whole = {0, 0, width, height};
  PatBlt(hdc, 0, 0, width, height, WHITENESS);
  PlayEnhMetaFile(hdc, file, &whole);
  SelectObject(hdc, former);
  Gdiplus::Bitmap bitmap(paper, nullptr);
  constexpr CLSID kPng = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
  if (copy != nullptr) bitmap.Save(copy, &kPng, nullptr);
  const double ink = ink_of(bitmap);
  DeleteObject(paper);
  DeleteDC(hdc);
  return ink;
}

int look_at_metafile(const wchar_t* name, const wchar_t* copy) {
  const HENHMETAFILE file = GetEnhMetaFileW(name);
  ENHMETAHEADER header = {};
  if (file == nullptr || GetEnhMetaFileHeader(file, sizeof header, &header) == 0) return kFailed;
  Count counted;
  EnumEnhMetaFile(nullptr, file, count, &counted, nullptr);
  const RECTL& frame = header.rclFrame;
  const int width = pixels(frame.right - frame.left, header.szlDevice.cx, header.szlMillimeters.cx);
  const int height = pixels(frame.bottom - frame.top, header.szlDevice.cy, header.szlMillimeters.cy);
  std::printf("%dx%d ink %.2f lines %d texts %d\n", width, height, played_ink(file, width, height, copy),
              counted.lines, counted.texts);
  DeleteEnhMetaFile(file);
  return 0;
}

}  // namespace

int main() {
  int arguments = 0;
  LPWSTR* const texts = CommandLineToArgvW(GetCommandLineW(), &arguments);
  if (texts == nullptr || arguments < 2 || arguments > 3) return kFailed;
  const std::wstring name = texts[1];
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) return kFailed;
  const int result =
      name.ends_with(L".emf") ? look_at_metafile(name.c_str(), texts[2]) : look_at_pixels(name.c_str());
  Gdiplus::GdiplusShutdown(token);
  return result;
}
