// Pictures as enhanced metafiles: the drawing operations themselves, to be enlarged and printed.
#include <windows.h>

#include <optional>

#include "base/paths.h"
#include "drawing/win32/memory_metafile.h"
#include "drawing/win32/surface.h"

namespace tavdhost {
namespace {

class Metafile : public Surface {
 public:
  explicit Metafile(PictureSize size) : size_(size) {}

  void describe(const std::string& title) override { title_ = title; }
  void draw(const Recorded& drawing, const Placed& placed) override {
    drawing.draw(begun().hdc(), placed, {0, 0}, 1);
  }
  std::string bytes() override { return begun().finish(); }

 private:
  // The description stands in the head of the file, so that this begins with the first drawing.
  MemoryMetafile& begun() {
    if (!file_) {
      const std::wstring end(1, L'\0');
      file_.emplace(size_, L"tavd" + end + to_path(title_).wstring() + end);
    }
    return *file_;
  }

  PictureSize size_;
  std::string title_;
  std::optional<MemoryMetafile> file_;
};

}  // namespace

std::unique_ptr<Surface> metafile_surface(PictureSize size) {
  return std::make_unique<Metafile>(size);
}

}  // namespace tavdhost
