#include "drawing/win32/memory_metafile.h"

#include <stdexcept>
#include <utility>

namespace tavdhost {
namespace {

constexpr int kHundredths = 100;  // of a millimetre, the unit of a metafile's frame

// The frame in which so many of the screen's pixels fit.
RECT frame_of(HDC screen, PictureSize size) {
  return {0, 0,
          MulDiv(size.width, GetDeviceCaps(screen, HORZSIZE) * kHundredths, GetDeviceCaps(screen, HORZRES)),
          MulDiv(size.height, GetDeviceCaps(screen, VERTSIZE) * kHundredths, GetDeviceCaps(screen, VERTRES))};
}

}  // namespace

MemoryMetafile::MemoryMetafile(PictureSize size, const std::wstring& description) {
  const HDC screen = GetDC(nullptr);
  const RECT frame = frame_of(screen, size);
  // The texts end with an empty one, by the string's own terminator.
  hdc_ = CreateEnhMetaFileW(screen, nullptr, &frame, description.empty() ? nullptr : description.c_str());
  ReleaseDC(nullptr, screen);
  if (hdc_ == nullptr) throw std::runtime_error("no metafile can be made");
}

MemoryMetafile::~MemoryMetafile() {
  if (hdc_ != nullptr) DeleteEnhMetaFile(CloseEnhMetaFile(hdc_));
}

std::string MemoryMetafile::finish() {
  const HENHMETAFILE file = CloseEnhMetaFile(std::exchange(hdc_, nullptr));
  std::string bytes(GetEnhMetaFileBits(file, 0, nullptr), '\0');
  GetEnhMetaFileBits(file, static_cast<UINT>(bytes.size()), reinterpret_cast<BYTE*>(bytes.data()));
  DeleteEnhMetaFile(file);
  if (bytes.size() < sizeof(ENHMETAHEADER)) throw std::runtime_error("the metafile cannot be read back");
  return bytes;
}

}  // namespace tavdhost
