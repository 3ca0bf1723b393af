// Pictures as surfaces of libtavdgui, from their making to their file.
#include <algorithm>
#include <memory>
#include <mutex>
#include <new>
#include <set>
#include <string>
#include <string_view>

#include "gui/cairo/once_canvas.h"
#include "gui/cairo/picture.h"
#include "gui/cairo/picture_file.h"
#include "gui/cairo/utf8.h"
#include "gui/guard.h"
#include "tavdgui/tavdcairo.h"

using tgui::guarded;

namespace tavdcairo {
namespace {

constexpr int kLargestPicture = 16384;                 // device units
constexpr double kLargestPage = 5000;                  // mm
constexpr const char* kNoFile = "";                    // the path of a picture without one
constexpr const char* kOutOfMemory = "out of memory";  // short enough for a string to need none

// Pictures alive, so that a surface of another kind is not taken for one of ours. Threads ask at once.
class Pictures {
 public:
  void add(const Picture* picture) {
    const std::scoped_lock lock(mutex_);
    alive_.insert(picture);
  }
  void remove(const void* picture) {
    const std::scoped_lock lock(mutex_);
    alive_.erase(picture);
  }
  bool has(const void* picture) {
    const std::scoped_lock lock(mutex_);
    return alive_.count(picture) != 0;
  }

 private:
  std::mutex mutex_;
  std::set<const void*> alive_;
};

Pictures& pictures() {
  static Pictures alive;
  return alive;
}

void release(void* context) {
  pictures().remove(context);
  delete static_cast<Picture*>(context);
}

const tgui_operations& operations() {
  static const tgui_operations table = [] {
    tgui_operations entries = {};
    entries.size = sizeof entries;
    entries.release = release;
    add_drawing(entries);
    return entries;
  }();
  return table;
}

bool size_is_good(int width, int height) {
  return width >= 1 && width <= kLargestPicture && height >= 1 && height <= kLargestPicture;
}

// A surface for the canvas that `make` gives, or null: for sizes that no picture has, without a path, and
// where memory runs out.
template <typename Make>
tgui_surface* surface_for(const char* path, int width, int height, Make make) {
  return guarded<tgui_surface*>(nullptr, [&]() -> tgui_surface* {
    if (path == nullptr || !size_is_good(width, height)) {
      return nullptr;
    }
    auto picture = std::make_unique<Picture>();
    std::unique_ptr<Canvas> canvas = make(*picture);
    if (!canvas) {
      return nullptr;
    }
    picture->canvas = make_once_canvas(std::move(canvas));
    picture->path = path;
    pictures().add(picture.get());
    tgui_surface* surface = tgui_surface_create(&operations(), picture.get(), width, height);
    if (surface == nullptr) {
      pictures().remove(picture.get());
      return nullptr;
    }
    static_cast<void>(picture.release());  // the surface's
    return surface;
  });
}

// The file of a picture goes to `take`, which may tell in `reason` why it could not be taken.
template <typename Take>
bool complete(Picture& picture, std::string& reason, Take take) try {
  flush(picture);
  if (picture.lacks_something) {
    reason = kOutOfMemory;
    return false;
  }
  std::string bytes;
  return picture.canvas->finish(bytes, reason) && take(picture, bytes, reason);
} catch (const std::bad_alloc&) {
  reason = kOutOfMemory;
  return false;
} catch (...) {  // of the host's, whose `take` has told before that the bytes were not taken
  return false;
}

// Completes a picture and destroys its surface; `take` gets the bytes.
template <typename Take>
int32_t finish(tgui_surface* surface, char* reason, size_t capacity, Take take) {
  std::string text;
  bool done = false;
  auto* picture = static_cast<Picture*>(tgui_surface_context(surface));
  const bool is_ours = pictures().has(picture);
  if (is_ours) {
    done = complete(*picture, text, take);
    tgui_surface_destroy(surface);
  }
  if (reason != nullptr && capacity > 0) {
    const std::string_view told = is_ours ? std::string_view(text) : "not a picture of this library";
    const std::size_t length = done ? 0 : std::min(told.size(), capacity - 1);
    told.copy(reason, length);
    reason[length] = '\0';
  }
  return done ? 0 : -1;
}

// What was measured so far, the line that is being drawn included; null for other surfaces, and where memory
// ran out.
const Measured* measured_on(const tgui_surface* surface) {
  auto* picture = static_cast<Picture*>(tgui_surface_context(surface));
  if (!pictures().has(picture) || !picture->measured) {
    return nullptr;
  }
  or_lacks(*picture, [picture] { flush(*picture); });
  return picture->lacks_something ? nullptr : picture->measured.get();
}

}  // namespace
}  // namespace tavdcairo

using namespace tavdcairo;

tgui_surface* tgui_cairo_png(const char* path, int32_t width, int32_t height) {
  return surface_for(path, width, height, [&](Picture&) { return make_png_canvas(width, height); });
}

tgui_surface* tgui_cairo_svg(const char* path, int32_t width, int32_t height) {
  return surface_for(path, width, height, [&](Picture&) { return make_svg_canvas(width, height); });
}

tgui_surface* tgui_cairo_pdf(const char* path, int32_t width, int32_t height, double width_mm,
                             double height_mm) {
  const bool page_is_good =
      width_mm >= 1 && width_mm <= kLargestPage && height_mm >= 1 && height_mm <= kLargestPage;
  return surface_for(page_is_good ? path : nullptr, width, height,
                     [&](Picture&) { return make_pdf_canvas(width, height, width_mm, height_mm); });
}

tgui_surface* tgui_cairo_context(struct _cairo* context, int32_t width, int32_t height) {
  return surface_for(context != nullptr ? kNoFile : nullptr, width, height,
                     [&](Picture&) { return make_context_canvas(context); });
}

tgui_surface* tgui_cairo_measure(int32_t width, int32_t height) {
  return surface_for(kNoFile, width, height, [](Picture& picture) {
    picture.measured = std::make_unique<Measured>();
    return make_measuring_canvas(*picture.measured);
  });
}

int32_t tgui_cairo_extent(const tgui_surface* surface, tgui_box* box) {
  const Measured* measured = measured_on(surface);
  const bool is_there = measured != nullptr && measured->ink;
  if (box != nullptr) {
    *box = is_there ? *measured->ink : tgui_box{};
  }
  return is_there ? 0 : -1;
}

int32_t tgui_cairo_text_count(const tgui_surface* surface) {
  const Measured* measured = measured_on(surface);
  return measured != nullptr ? static_cast<int32_t>(measured->texts.size()) : 0;
}

int32_t tgui_cairo_text_extent(const tgui_surface* surface, int32_t index, tgui_box* box) {
  const Measured* measured = measured_on(surface);
  const bool is_there = index >= 0 && index < tgui_cairo_text_count(surface);
  if (box != nullptr) {
    *box = is_there ? measured->texts[static_cast<std::size_t>(index)] : tgui_box{};
  }
  return is_there ? 0 : -1;
}

void tgui_cairo_describe(tgui_surface* surface, const char* title, const char* description) {
  auto* picture = static_cast<Picture*>(tgui_surface_context(surface));
  if (pictures().has(picture)) {
    or_lacks(*picture, [&] { picture->canvas->describe(clean_utf8(title), clean_utf8(description)); });
  }
}

void tgui_cairo_name_pen(tgui_surface* surface, uint32_t colour, int32_t width, const char* name) {
  auto* picture = static_cast<Picture*>(tgui_surface_context(surface));
  if (pictures().has(picture) && name != nullptr && name[0] != '\0') {
    or_lacks(*picture, [&] { picture->named_pens.push_back({colour, width, clean_utf8(name)}); });
  }
}

int32_t tgui_cairo_finish(tgui_surface* surface, char* reason, size_t capacity) {
  return finish(surface, reason, capacity,
                [](const Picture& picture, const std::string& bytes, std::string& text) {
                  return picture.path.empty() || write_whole_file(picture.path, bytes, text);
                });
}

int32_t tgui_cairo_finish_into(tgui_surface* surface, tgui_cairo_writer write, void* context, char* reason,
                               size_t capacity) {
  return finish(surface, reason, capacity,
                [&](const Picture& /*picture*/, const std::string& bytes, std::string& text) {
                  text = "the bytes were not taken";
                  return write != nullptr && write(context, bytes.data(), bytes.size()) == 0;
                });
}
