// Pictures of pixels. GDI draws without shades, so everything is drawn several times as large, band by band,
// and scaled down; GDI+ writes the result as PNG.
#include <windows.h>

#include <gdiplus.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "drawing/win32/surface.h"

namespace tavdhost {
namespace {

constexpr int kFineness = 4;                   // drawn pixels to one of the picture, each way: 17 shades
constexpr std::int64_t kBandPixels = 1 << 25;  // drawn at once, 128 MiB
constexpr double kResolution = 96;             // dots per inch, as a PNG says
constexpr std::size_t kChannels = 3;           // blue, green, red
constexpr std::size_t kDrawnChannels = 4;      // and one that means nothing
constexpr unsigned kWhite = 255;

// What GDI draws on: pixels in memory, row by row from the top.
class Band {
 public:
  Band(int width, int height) : width_(width), height_(height), hdc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 8 * kDrawnChannels;
    info.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    bitmap_ = CreateDIBSection(hdc_, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    if (bitmap_ == nullptr) {
      DeleteDC(hdc_);
      throw std::bad_alloc();
    }
    pixels_ = static_cast<unsigned char*>(pixels);
    former_ = SelectObject(hdc_, bitmap_);
  }
  ~Band() {
    SelectObject(hdc_, former_);
    DeleteObject(bitmap_);
    DeleteDC(hdc_);
  }
  Band(const Band&) = delete;
  Band& operator=(const Band&) = delete;

  HDC hdc() const { return hdc_; }
  void wipe() {
    std::memset(pixels_, kWhite,
                kDrawnChannels * static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
  }
  const unsigned char* row(int y) const {
    return pixels_ + kDrawnChannels * static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
  }

 private:
  int width_, height_;
  HDC hdc_;
  HBITMAP bitmap_;
  HGDIOBJ former_;
  unsigned char* pixels_;
};

// Mean of one channel over the drawn pixels of one pixel of the picture.
unsigned mean(const Band& band, int x, int y, std::size_t channel) {
  unsigned sum = 0;
  for (int dy = 0; dy < kFineness; ++dy) {
    const unsigned char* at =
        band.row(y * kFineness + dy) + kDrawnChannels * static_cast<std::size_t>(x * kFineness) + channel;
    for (int dx = 0; dx < kFineness; ++dx, at += kDrawnChannels) sum += *at;
  }
  constexpr unsigned kCount = kFineness * kFineness;
  return (sum + kCount / 2) / kCount;
}

class Pixels : public Surface {
 public:
  explicit Pixels(PictureSize size)
      : size_(size),
        // GDI+ wants rows of whole 32-bit words.
        stride_((kChannels * static_cast<std::size_t>(size.width) + 3) / 4 * 4),
        pixels_(stride_ * static_cast<std::size_t>(size.height), static_cast<unsigned char>(kWhite)) {}

  void draw(const Recorded& drawing, const Placed& placed) override;
  std::string bytes() override;

 private:
  void take_in(const Band& band, const Area& area);

  PictureSize size_;
  std::size_t stride_;
  std::vector<unsigned char> pixels_;
};

void Pixels::draw(const Recorded& drawing, const Placed& placed) {
  const Area area = drawing.covered(placed, size_);
  const int width = area.right - area.left;
  if (width <= 0 || area.bottom <= area.top) return;
  const std::int64_t row_pixels = std::int64_t{width} * kFineness * kFineness;
  const int rows = std::clamp(static_cast<int>(kBandPixels / row_pixels), 1, area.bottom - area.top);
  Band band(width * kFineness, rows * kFineness);
  for (int top = area.top; top < area.bottom; top += rows) {
    band.wipe();
    drawing.draw(band.hdc(), placed, {area.left, top}, kFineness);
    GdiFlush();
    take_in(band, {area.left, top, area.right, std::min(top + rows, area.bottom)});
  }
}

// Ink on ink grows darker, as where two drawings meet.
void Pixels::take_in(const Band& band, const Area& area) {
  for (int y = area.top; y < area.bottom; ++y) {
    unsigned char* at = pixels_.data() + stride_ * static_cast<std::size_t>(y) +
                        kChannels * static_cast<std::size_t>(area.left);
    for (int x = area.left; x < area.right; ++x) {
      for (std::size_t channel = 0; channel < kChannels; ++channel, ++at) {
        *at = static_cast<unsigned char>(*at * mean(band, x - area.left, y - area.top, channel) / kWhite);
      }
    }
  }
}

// GDI+ runs while it lives.
class GdiPlus {
 public:
  GdiPlus() {
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok) {
      throw std::runtime_error("GDI+ does not start");
    }
  }
  ~GdiPlus() { Gdiplus::GdiplusShutdown(token_); }
  GdiPlus(const GdiPlus&) = delete;
  GdiPlus& operator=(const GdiPlus&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

struct Release {
  void operator()(IStream* stream) const { stream->Release(); }
};

std::string read_whole(IStream* stream) {
  STATSTG state = {};
  stream->Stat(&state, STATFLAG_NONAME);
  std::string bytes(static_cast<std::size_t>(state.cbSize.QuadPart), '\0');
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  ULONG read = 0;
  stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
  if (bytes.empty() || read != bytes.size()) throw std::runtime_error("the PNG cannot be read back");
  return bytes;
}

std::string Pixels::bytes() {
  // GDI+'s encoder of PNG.
  constexpr CLSID kPng = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
  const GdiPlus running;
  Gdiplus::Bitmap bitmap(size_.width, size_.height, static_cast<INT>(stride_), PixelFormat24bppRGB,
                         pixels_.data());
  bitmap.SetResolution(kResolution, kResolution);
  IStream* made = nullptr;
  if (CreateStreamOnHGlobal(nullptr, TRUE, &made) != S_OK) throw std::bad_alloc();
  const std::unique_ptr<IStream, Release> stream(made);
  if (bitmap.Save(stream.get(), &kPng, nullptr) != Gdiplus::Ok)
    throw std::runtime_error("GDI+ makes no PNG of it");
  return read_whole(stream.get());
}

}  // namespace

std::unique_ptr<Surface> pixel_surface(PictureSize size) {
  return std::make_unique<Pixels>(size);
}

}  // namespace tavdhost
