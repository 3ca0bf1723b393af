#include "viewer_pixels.h"

#include <objidl.h>

// GDI+ has its names from windows.h, and its own min and max from whoever includes it.
#include <algorithm>
#include <cmath>
namespace Gdiplus {
using std::max;  // NOLINT(misc-unused-using-decls): its headers use them
using std::min;  // NOLINT(misc-unused-using-decls)
}  // namespace Gdiplus
#include <gdiplus.h>

namespace drive {
namespace {

constexpr int kColumns = 40;  // of the grid
constexpr int kRows = 30;
constexpr std::size_t kCells = std::size_t{kColumns} * kRows;
constexpr int kWhite = 250;  // and lighter
const CLSID kPngEncoder = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

double darkness(Colour colour) {
  return 1.0 - std::min({colour.red, colour.green, colour.blue}) / 255.0;
}

// Place in a field of rows.
std::size_t place(int x, int y, int width) {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
}

std::size_t cell_of(int x, int y, const Picture& picture) {
  return place(x * kColumns / picture.width, y * kRows / picture.height, kColumns);
}

// Mean darkness of the cells.
std::vector<double> grid_of(const Picture& picture) {
  std::vector<double> sum(kCells, 0.0);
  std::vector<double> count(kCells, 0.0);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      sum[cell_of(x, y, picture)] += darkness(picture.at(x, y));
      count[cell_of(x, y, picture)] += 1;
    }
  }
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] /= std::max(count[i], 1.0);
  return sum;
}

// Each cell with its neighbours, so that a line just over a cell's border counts for both.
std::vector<double> softened(const std::vector<double>& grid) {
  std::vector<double> soft(grid.size(), 0.0);
  for (int y = 0; y < kRows; ++y) {
    for (int x = 0; x < kColumns; ++x) {
      for (int j = std::max(0, y - 1); j <= std::min(kRows - 1, y + 1); ++j) {
        for (int i = std::max(0, x - 1); i <= std::min(kColumns - 1, x + 1); ++i) {
          soft[place(x, y, kColumns)] += grid[place(i, j, kColumns)];
        }
      }
    }
  }
  return soft;
}

// What `paint` leaves in a context of this size.
template <typename Paint>
Picture painted(SIZE size, Paint paint) {
  Picture picture;
  picture.width = static_cast<int>(size.cx);
  picture.height = static_cast<int>(size.cy);
  HDC memory = CreateCompatibleDC(nullptr);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = picture.width;
  info.bmiHeader.biHeight = -picture.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ former = SelectObject(memory, bitmap);
  paint(memory);
  GdiFlush();
  const auto* begin = static_cast<const std::uint32_t*>(bits);
  picture.pixels.assign(begin, begin + static_cast<std::ptrdiff_t>(picture.width) * picture.height);
  SelectObject(memory, former);
  DeleteObject(bitmap);
  DeleteDC(memory);
  return picture;
}

double mean_of(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values) sum += value;
  return sum / static_cast<double>(values.size());
}

bool is_like(Colour seen, Colour colour, int slack) {
  return std::abs(seen.red - colour.red) <= slack && std::abs(seen.green - colour.green) <= slack &&
         std::abs(seen.blue - colour.blue) <= slack;
}

struct Middle {
  double x = 0, y = 0;  // shares of the width
  int count = 0;        // of pixels
};

Middle middle_of(const Picture& picture, Colour colour, int slack) {
  Middle middle;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      if (!is_like(picture.at(x, y), colour, slack)) continue;
      middle.x += x;
      middle.y += y;
      ++middle.count;
    }
  }
  const double scale = std::max(1, middle.count) * static_cast<double>(picture.width);
  return {middle.x / scale, middle.y / scale, middle.count};
}

}  // namespace

Colour Picture::at(int x, int y) const {
  const std::uint32_t pixel = pixels[place(x, y, width)];
  return {static_cast<int>(pixel >> 16 & 0xFF), static_cast<int>(pixel >> 8 & 0xFF),
          static_cast<int>(pixel & 0xFF)};
}

Picture Picture::part(const RECT& rect) const {
  Picture cut;
  const int right = std::min(width, static_cast<int>(rect.right));
  const int bottom = std::min(height, static_cast<int>(rect.bottom));
  const int left = std::max(0, static_cast<int>(rect.left));
  const int top = std::max(0, static_cast<int>(rect.top));
  cut.width = std::max(0, right - left);
  cut.height = std::max(0, bottom - top);
  for (int y = 0; y < cut.height; ++y) {
    const auto row = pixels.begin() + static_cast<std::ptrdiff_t>(place(left, top + y, width));
    cut.pixels.insert(cut.pixels.end(), row, row + cut.width);
  }
  return cut;
}

Picture screen(const RECT& rect) {
  const SIZE size = {rect.right - rect.left, rect.bottom - rect.top};
  return painted(size, [&](HDC hdc) {
    HDC source = GetDC(nullptr);
    BitBlt(hdc, 0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy), source,
           static_cast<int>(rect.left), static_cast<int>(rect.top), SRCCOPY);
    ReleaseDC(nullptr, source);
  });
}

Picture played(HENHMETAFILE metafile, SIZE size) {
  return painted(size, [&](HDC hdc) {
    const RECT all = {0, 0, size.cx, size.cy};
    FillRect(hdc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    PlayEnhMetaFile(hdc, metafile, &all);
  });
}

PictureFiles::PictureFiles() {
  const Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&token_, &input, nullptr);
}

PictureFiles::~PictureFiles() {
  Gdiplus::GdiplusShutdown(token_);
}

bool save_png(const Picture& picture, const std::wstring& path) {
  std::vector<std::uint32_t> copy = picture.pixels;
  Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppRGB,
                         reinterpret_cast<BYTE*>(copy.data()));
  return bitmap.Save(path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
}

Picture load_png(const std::wstring& path) {
  Gdiplus::Bitmap bitmap(path.c_str());
  Picture picture;
  if (bitmap.GetLastStatus() != Gdiplus::Ok) return picture;
  picture.width = static_cast<int>(bitmap.GetWidth());
  picture.height = static_cast<int>(bitmap.GetHeight());
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      Gdiplus::Color colour;
      bitmap.GetPixel(x, y, &colour);
      picture.pixels.push_back(colour.GetValue() & 0xFFFFFF);
    }
  }
  return picture;
}

int count_of(const Picture& picture, Colour colour, int slack) {
  return middle_of(picture, colour, slack).count;
}

double distance_of(const Picture& a, const Picture& b, Colour colour, int slack) {
  const Middle first = middle_of(a, colour, slack);
  const Middle second = middle_of(b, colour, slack);
  return first.count > 0 && second.count > 0 ? std::hypot(first.x - second.x, first.y - second.y) : 1;
}

double ink_share(const Picture& picture) {
  if (picture.pixels.empty()) return 0;
  int ink = 0;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const Colour seen = picture.at(x, y);
      ink += std::min({seen.red, seen.green, seen.blue}) < kWhite;
    }
  }
  return static_cast<double>(ink) / static_cast<double>(picture.pixels.size());
}

double likeness(const Picture& a, const Picture& b) {
  if (a.pixels.empty() || b.pixels.empty()) return -1;
  const std::vector<double> first = softened(grid_of(a));
  const std::vector<double> second = softened(grid_of(b));
  const double mean_a = mean_of(first);
  const double mean_b = mean_of(second);
  double product = 0;
  double square_a = 0;
  double square_b = 0;
  for (std::size_t i = 0; i < first.size(); ++i) {
    product += (first[i] - mean_a) * (second[i] - mean_b);
    square_a += (first[i] - mean_a) * (first[i] - mean_a);
    square_b += (second[i] - mean_b) * (second[i] - mean_b);
  }
  return square_a > 0 && square_b > 0 ? product / std::sqrt(square_a * square_b) : -1;
}

}  // namespace drive
