#include "sheet/portable/sketch.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <optional>

#include "base/errors.h"
#include "drawing/picture.h"
#include "drawing/portable/placed.h"
#include "sheet/portable/pdf_document.h"
#include "tavd/tavdshapepic.h"
#include "tavdgui/tavdcairo.h"

namespace tavdhost {
namespace {

constexpr int kUnits = 5;  // device units of the sketch to one of its plane

// The sketch with its place on a plane of device units from 0 on, and how much of that it takes.
class Sketch {
 public:
  explicit Sketch(const DrawingSource& source) : drawing_(untitled(source)) {
    const Area probe = {0, 0, TAVDSHAPEPIC_WIDTH * kUnits, TAVDSHAPEPIC_HEIGHT * kUnits};
    const std::optional<Covered> drawn = covered(drawing_.drawing(), probe);
    if (!drawn) return;
    const auto left = static_cast<std::int32_t>(std::floor(drawn->all.left));
    const auto top = static_cast<std::int32_t>(std::floor(drawn->all.top));
    width_ = static_cast<int>(std::ceil(drawn->all.right)) - left;
    height_ = static_cast<int>(std::ceil(drawn->all.bottom)) - top;
    place_ = {-left, -top, probe.right - left, probe.bottom - top};
  }

  bool is_empty() const { return width_ <= 0 || height_ <= 0; }
  int width() const { return width_; }
  int height() const { return height_; }
  void draw(tgui_surface* surface) const { draw_placed(drawing_.drawing(), surface, place_); }

 private:
  static DrawingSource untitled(const DrawingSource& source) {
    DrawingSource copy = source;
    copy.title = {};
    return copy;
  }

  OwnShapePicture drawing_;
  Area place_ = {};
  int width_ = 0, height_ = 0;
};

std::int32_t append(void* bytes, const void* data, std::size_t length) {
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(data), length);
  return 0;
}

using Surface = std::unique_ptr<tgui_surface, decltype(&tgui_surface_destroy)>;

}  // namespace

void draw_sketch(struct _cairo* context, const Box& box, const DrawingSource& source) {
  const Sketch sketch(source);
  if (sketch.is_empty()) return;
  const double scale = std::min(box.width / sketch.width(), box.height / sketch.height());  // mm
  cairo_save(context);
  cairo_scale(context, kPointsPerMm, kPointsPerMm);
  cairo_translate(context, box.left + (box.width - sketch.width() * scale) / 2,
                  box.top + (box.height - sketch.height() * scale) / 2);
  cairo_scale(context, scale, scale);
  {
    const Surface surface(tgui_cairo_context(context, sketch.width(), sketch.height()), tgui_surface_destroy);
    if (!surface) throw std::bad_alloc();
    sketch.draw(surface.get());
  }
  cairo_restore(context);
}

std::string sketch_svg(const DrawingSource& source) {
  const Sketch sketch(source);
  if (sketch.is_empty()) return {};
  tgui_surface* const surface = tgui_cairo_svg("", sketch.width(), sketch.height());
  if (surface == nullptr) throw std::bad_alloc();
  sketch.draw(surface);
  std::string bytes;
  char reason[300] = {};
  if (tgui_cairo_finish_into(surface, append, &bytes, reason, sizeof reason) != 0) throw UserError(reason);
  return bytes;
}

}  // namespace tavdhost
