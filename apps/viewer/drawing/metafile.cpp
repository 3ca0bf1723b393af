#include "drawing/metafile.h"

#include <cstring>
#include <utility>

#include "model/database.h"

namespace viewer {
namespace {

constexpr int kHundredths = 100;           // of a millimetre, the unit of frames
constexpr SIZE kDiagramSize = {160, 120};  // mm
constexpr SIZE kSketchSize = {100, 168};
constexpr SIZE kPageSize = {180, 260};  // A4 within its margins
constexpr wchar_t kDescription[] = L"Product viewer\0Product drawing\0";

// A metafile of a size in mm. `draw` gets its context, and its rectangle in units of the screen that it
// refers to.
template <typename Draw>
Metafile record(SIZE size, Draw draw) {
  HDC screen = GetDC(nullptr);
  const RECT frame = {0, 0, size.cx * kHundredths, size.cy * kHundredths};
  const RECT area = {
      0, 0,
      MulDiv(static_cast<int>(size.cx), GetDeviceCaps(screen, HORZRES), GetDeviceCaps(screen, HORZSIZE)),
      MulDiv(static_cast<int>(size.cy), GetDeviceCaps(screen, VERTRES), GetDeviceCaps(screen, VERTSIZE))};
  HDC hdc = CreateEnhMetaFileW(screen, nullptr, &frame, kDescription);
  ReleaseDC(nullptr, screen);
  if (hdc == nullptr) throw UserError(L"The picture could not be recorded.");
  draw(hdc, area);
  Metafile recorded(CloseEnhMetaFile(hdc));
  if (recorded.handle() == nullptr) throw UserError(L"The picture could not be recorded.");
  return recorded;
}

class Clipboard {
 public:
  explicit Clipboard(HWND owner) {
    if (OpenClipboard(owner) == FALSE) throw UserError(L"Another program is using the clipboard. Try again.");
    EmptyClipboard();
  }
  ~Clipboard() { CloseClipboard(); }
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;
};

}  // namespace

Metafile::~Metafile() {
  if (handle_ != nullptr) DeleteEnhMetaFile(handle_);
}

HENHMETAFILE Metafile::release() {
  return std::exchange(handle_, nullptr);
}

Metafile recorded(Drawing drawing) {
  const SIZE size = library_drawing(drawing).keeps_proportions ? kSketchSize : kDiagramSize;
  return record(size, [&](HDC hdc, const RECT& area) { draw(drawing, hdc, area); });
}

Metafile recorded(const PageContents& contents) {
  return record(kPageSize, [&](HDC hdc, const RECT& area) { draw_page(hdc, area, contents); });
}

void copy_to_clipboard(HWND owner, Metafile&& metafile) {
  const Clipboard clipboard(owner);
  if (SetClipboardData(CF_ENHMETAFILE, metafile.handle()) == nullptr) {
    throw UserError(L"The picture could not be put on the clipboard.");
  }
  metafile.release();  // the clipboard's from now on
}

void save(const Metafile& metafile, const std::wstring& path) {
  HENHMETAFILE file = CopyEnhMetaFileW(metafile.handle(), path.c_str());
  if (file == nullptr)
    throw UserError(L"Cannot write \"" + path + L"\". Is the folder there, and may it be written to?");
  DeleteEnhMetaFile(file);  // the handle; the file stays
}

void copy_text_to_clipboard(HWND owner, const std::wstring& text) {
  const Clipboard clipboard(owner);
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
  void* memory = block != nullptr ? GlobalLock(block) : nullptr;
  if (memory == nullptr) throw UserError(L"There is not enough memory for the clipboard.");
  std::memcpy(memory, text.c_str(), size);
  GlobalUnlock(block);
  if (SetClipboardData(CF_UNICODETEXT, block) == nullptr) GlobalFree(block);
}

}  // namespace viewer
