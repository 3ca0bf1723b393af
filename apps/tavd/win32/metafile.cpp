// Enhanced metafiles: the drawing operations themselves, to be enlarged and printed.
#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "surface.h"

namespace tavdhost {
namespace {

constexpr LONG kHundredths = 100;  // of a millimetre, which a metafile's frame is told in

// The frame in which so many of the screen's pixels fit.
RECT frame_of(HDC screen, PictureSize size) {
  return {0, 0,
          MulDiv(size.width, GetDeviceCaps(screen, HORZSIZE) * kHundredths, GetDeviceCaps(screen, HORZRES)),
          MulDiv(size.height, GetDeviceCaps(screen, VERTSIZE) * kHundredths, GetDeviceCaps(screen, VERTRES))};
}

// A metafile in memory, to be drawn into. Null if none can be made.
HDC new_metafile(PictureSize size, const wchar_t* description) {
  const HDC screen = GetDC(nullptr);
  const RECT frame = frame_of(screen, size);
  const HDC hdc = CreateEnhMetaFileW(screen, nullptr, &frame, description);
  ReleaseDC(nullptr, screen);
  return hdc;
}

class Metafile : public Surface {
 public:
  explicit Metafile(PictureSize size) : size_(size) {}
  ~Metafile() override {
    if (hdc_ != nullptr) DeleteEnhMetaFile(CloseEnhMetaFile(hdc_));
  }
  Metafile(const Metafile&) = delete;
  Metafile& operator=(const Metafile&) = delete;

  void describe(const std::string& title) override { title_ = title; }
  void draw(const Placed& placed) override;
  std::string bytes() override;

 private:
  // The description goes into the head of the file, so that it begins with the first drawing.
  void begin();

  PictureSize size_;
  std::string title_;
  HDC hdc_ = nullptr;
};

void Metafile::begin() {
  if (hdc_ != nullptr) return;
  // Program and title, each terminated, and an empty text.
  std::wstring description = L"tavd";
  description += L'\0' + std::filesystem::path(title_).wstring() + L'\0';
  hdc_ = new_metafile(size_, description.c_str());
  if (hdc_ == nullptr) throw std::runtime_error("no metafile can be made");
}

void Metafile::draw(const Placed& placed) {
  begin();
  placed.drawing.create_tools();
  draw_placed(hdc_, placed, {0, 0}, 1);
  placed.drawing.destroy_tools();
}

std::string Metafile::bytes() {
  begin();
  const HENHMETAFILE file = CloseEnhMetaFile(std::exchange(hdc_, nullptr));
  std::string bytes(GetEnhMetaFileBits(file, 0, nullptr), '\0');
  GetEnhMetaFileBits(file, static_cast<UINT>(bytes.size()), reinterpret_cast<BYTE*>(bytes.data()));
  DeleteEnhMetaFile(file);
  if (bytes.empty()) throw std::runtime_error("the metafile cannot be read back");
  return bytes;
}

int CALLBACK is_no_line(HDC /*hdc*/, HANDLETABLE* /*objects*/, const ENHMETARECORD* record, int /*count*/,
                        LPARAM /*context*/) {
  return record->iType == EMR_LINETO ? 0 : 1;
}

}  // namespace

std::unique_ptr<Surface> metafile_surface(PictureSize size) {
  return std::make_unique<Metafile>(size);
}

bool has_lines(const LibraryDrawing& drawing) {
  const HDC hdc = new_metafile({drawing.plane_width, drawing.plane_height}, nullptr);
  if (hdc == nullptr) throw std::runtime_error("no metafile can be made");
  drawing.create_tools();
  drawing.draw(hdc);
  const HENHMETAFILE file = CloseEnhMetaFile(hdc);
  drawing.destroy_tools();
  // The walk ends with 0 at the first line.
  const bool found = EnumEnhMetaFile(nullptr, file, is_no_line, nullptr, nullptr) == FALSE;
  DeleteEnhMetaFile(file);
  return found;
}

}  // namespace tavdhost
