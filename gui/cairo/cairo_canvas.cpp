// Pictures on a cairo context: PNG, PDF and contexts of a host's.
#include <cairo-pdf.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <numbers>
#include <utility>

#include "gui/cairo/canvas.h"
#include "gui/cairo/png.h"
#include "gui/cairo/shaping.h"
#include "gui/cairo/typeface.h"
#include "gui/cairo/workplace.h"
#include "tavdgui/tavdgui.h"

namespace tavdcairo {

namespace {

constexpr double kPointsPerMm = 72.0 / 25.4;

// What a PDF surface writes into. Cairo forgets that its last bytes were not taken.
struct Written {
  std::string bytes;
  bool lacks_something = false;  // memory ran out
};

cairo_status_t append(void* written, const unsigned char* data, unsigned int length) {
  auto* const to = static_cast<Written*>(written);
  try {
    to->bytes.append(reinterpret_cast<const char*>(data), length);
  } catch (...) {
    to->lacks_something = true;
  }
  return to->lacks_something ? CAIRO_STATUS_NO_MEMORY : CAIRO_STATUS_SUCCESS;
}

struct DestroyContext {
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using Cairo = std::unique_ptr<cairo_t, DestroyContext>;

// Cairo has one store of painted letters for all threads and locks it for the few microseconds in which it
// puts a text on pixels. A thread that sleeps meanwhile comes back late, to caches full of others' pictures,
// so threads take turns before Cairo's lock and wait for them awake. One that waits for longer sleeps:
// whoever has the turn has lost its processor.
std::unique_lock<std::mutex> turn_to_put_letters_on_pixels() {
  constexpr std::chrono::microseconds kAwake{60};  // a text takes some 4
  static std::mutex letters;
  std::unique_lock turn(letters, std::try_to_lock);
  if (turn) {
    return turn;
  }
  for (const auto end = std::chrono::steady_clock::now() + kAwake; std::chrono::steady_clock::now() < end;) {
    if (turn.try_lock()) {
      return turn;
    }
  }
  turn.lock();
  return turn;
}

class CairoCanvas : public Canvas {
 public:
  explicit CairoCanvas(Cairo cairo) : owned_(std::move(cairo)), cairo_(owned_.get()) {}

  void polyline(const std::vector<Point>& points, const Stroke& stroke) override;
  void ellipse(const Ellipse& ellipse, const Paint& paint) override;
  void arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) override;
  void text(const std::string& utf8, Point reference, const TextStyle& style) override;
  bool finish(std::string& bytes, std::string& reason) override;
  bool has_pixels() const override { return false; }

 protected:
  cairo_t* cairo() const { return cairo_; }

 private:
  void colour(std::uint32_t value);
  void ellipse_path(const Ellipse& ellipse, double from, double to);
  void stroke_path(const Stroke& stroke);

  Cairo owned_;
  cairo_t* cairo_;
};

class PngCanvas : public CairoCanvas {
 public:
  using CairoCanvas::CairoCanvas;
  bool finish(std::string& bytes, std::string& reason) override;
  bool has_pixels() const override { return true; }
};

class PdfCanvas : public CairoCanvas {
 public:
  // The surface writes into `written`, which lives as long as the canvas.
  PdfCanvas(Cairo cairo, std::unique_ptr<Written> written)
      : CairoCanvas(std::move(cairo)), written_(std::move(written)) {}
  ~PdfCanvas() override { cairo_surface_finish(cairo_get_target(cairo())); }
  bool finish(std::string& bytes, std::string& reason) override;
  void describe(const std::string& title, const std::string& description) override;

 private:
  std::unique_ptr<Written> written_;
};

// Cairo would set all pixels to zero, to be painted white at once. Throws bad_alloc.
cairo_surface_t* make_white_image(int width, int height) {
  constexpr cairo_format_t kFormat = CAIRO_FORMAT_RGB24;
  constexpr int kWhite = 0xFF;
  static const cairo_user_data_key_t key{};
  const int stride = cairo_format_stride_for_width(kFormat, width);
  const auto size = static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
  auto workplace = std::make_unique<Workplace>(size);
  unsigned char* const pixels = workplace->pixels();
  std::memset(pixels, kWhite, size);
  cairo_surface_t* image = cairo_image_surface_create_for_data(pixels, kFormat, width, height, stride);
  const auto leave = [](void* left) { delete static_cast<Workplace*>(left); };
  if (cairo_surface_set_user_data(image, &key, workplace.get(), leave) != CAIRO_STATUS_SUCCESS) {
    cairo_surface_destroy(image);
    throw std::bad_alloc();
  }
  static_cast<void>(workplace.release());  // the image's from here on
  return image;
}

// glibc hands what is free at the end of a heap back to the kernel as soon as it is more than twice the
// largest block that it ever mapped and saw freed. At first that is about what the streams of a page take
// while they are compressed, so that where a heap ends unluckily each page has its memory cleared by the
// kernel anew: sixteen threads took a quarter longer. A picture's pixels raise the limit by themselves; a
// page has to.
void keep_memory_of_pages() {
  constexpr std::size_t kBlock = 1 << 20;  // bytes
  [[maybe_unused]] static const bool is_raised = [] {
    auto* const block = static_cast<volatile char*>(std::malloc(kBlock));
    if (block != nullptr) {
      block[0] = 0;  // else the compiler leaves out a block that nobody uses
    }
    std::free(const_cast<char*>(block));
    return true;
  }();
}

}  // namespace

std::unique_ptr<Canvas> make_png_canvas(int width, int height) {
  cairo_surface_t* surface = make_white_image(width, height);
  Cairo cairo(cairo_create(surface));
  cairo_surface_destroy(surface);
  return std::make_unique<PngCanvas>(std::move(cairo));
}

std::unique_ptr<Canvas> make_pdf_canvas(int width, int height, double width_mm, double height_mm) {
  keep_memory_of_pages();
  auto written = std::make_unique<Written>();
  const double page_width = width_mm * kPointsPerMm;
  const double page_height = height_mm * kPointsPerMm;
  cairo_surface_t* surface =
      cairo_pdf_surface_create_for_stream(append, written.get(), page_width, page_height);
  // The same drawing gives the same bytes: the file tells no time.
  cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATE_DATE, "");
  Cairo cairo(cairo_create(surface));
  cairo_surface_destroy(surface);
  cairo_scale(cairo.get(), page_width / width, page_height / height);
  return std::make_unique<PdfCanvas>(std::move(cairo), std::move(written));
}

std::unique_ptr<Canvas> make_context_canvas(cairo_t* context) {
  Cairo cairo(cairo_reference(context));
  return std::make_unique<CairoCanvas>(std::move(cairo));
}

namespace {

void CairoCanvas::polyline(const std::vector<Point>& points, const Stroke& stroke) {
  cairo_new_path(cairo_);
  for (const Point& point : points) {
    cairo_line_to(cairo_, point.x, point.y);
  }
  stroke_path(stroke);
}

void CairoCanvas::ellipse(const Ellipse& ellipse, const Paint& paint) {
  ellipse_path(ellipse, 2 * std::numbers::pi, 0);
  cairo_close_path(cairo_);
  if (paint.fill) {
    colour(*paint.fill);
    cairo_fill_preserve(cairo_);
  }
  if (paint.stroke) {
    stroke_path(*paint.stroke);
  }
  cairo_new_path(cairo_);
}

void CairoCanvas::arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) {
  ellipse_path(ellipse, from, to);
  stroke_path(stroke);
}

void CairoCanvas::text(const std::string& utf8, Point reference, const TextStyle& style) {
  cairo_save(cairo_);
  cairo_translate(cairo_, reference.x, reference.y);
  cairo_rotate(cairo_, -style.angle * std::numbers::pi / 180);
  const bool width_counts = style.opaque || style.horizontal != Horizontal::kLeft;
  const LineMetrics metrics = width_counts ? measure(utf8, style) : measure_height(style);
  const Point baseline = baseline_offset(metrics, style);
  if (style.opaque) {
    cairo_set_source_rgb(cairo_, 1, 1, 1);
    cairo_rectangle(cairo_, baseline.x, baseline.y - metrics.ascent, metrics.width,
                    metrics.ascent + metrics.descent);
    cairo_fill(cairo_);
  }
  colour(style.colour);
  cairo_move_to(cairo_, baseline.x, baseline.y);
  PangoLayoutLine* const line = shape(cairo_, utf8, style);
  const std::unique_lock turn =
      has_pixels() ? turn_to_put_letters_on_pixels() : std::unique_lock<std::mutex>();
  pango_cairo_show_layout_line(cairo_, line);
  cairo_restore(cairo_);
  cairo_new_path(cairo_);
}

bool CairoCanvas::finish(std::string& /*bytes*/, std::string& reason) {
  const cairo_status_t status = cairo_status(cairo_);
  reason = cairo_status_to_string(status);
  return status == CAIRO_STATUS_SUCCESS;
}

bool PngCanvas::finish(std::string& bytes, std::string& reason) {
  if (!CairoCanvas::finish(bytes, reason)) {
    return false;
  }
  cairo_surface_t* surface = cairo_get_target(cairo());
  cairo_surface_flush(surface);
  const PixelRows pixels = {cairo_image_surface_get_data(surface), cairo_image_surface_get_stride(surface),
                            cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface)};
  const bool done = write_png(pixels, bytes);
  reason = cairo_status_to_string(done ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_NO_MEMORY);
  return done;
}

bool PdfCanvas::finish(std::string& bytes, std::string& reason) {
  cairo_show_page(cairo());
  cairo_surface_t* surface = cairo_get_target(cairo());
  cairo_surface_finish(surface);
  const cairo_status_t status =
      written_->lacks_something ? CAIRO_STATUS_NO_MEMORY : cairo_surface_status(surface);
  reason = cairo_status_to_string(status);
  bytes = std::move(written_->bytes);
  return status == CAIRO_STATUS_SUCCESS;
}

void PdfCanvas::describe(const std::string& title, const std::string& description) {
  cairo_surface_t* surface = cairo_get_target(cairo());
  const auto tell = [surface](cairo_pdf_metadata_t property, const std::string& text) {
    cairo_pdf_surface_set_metadata(surface, property, text.empty() ? nullptr : text.c_str());
  };
  tell(CAIRO_PDF_METADATA_TITLE, title);
  tell(CAIRO_PDF_METADATA_SUBJECT, description);
}

void CairoCanvas::colour(std::uint32_t value) {
  cairo_set_source_rgb(cairo_, (value & 0xFF) / 255.0, (value >> 8 & 0xFF) / 255.0,
                       (value >> 16 & 0xFF) / 255.0);
}

void CairoCanvas::ellipse_path(const Ellipse& ellipse, double from, double to) {
  cairo_new_path(cairo_);
  if (!(ellipse.rx > 0) || !(ellipse.ry > 0)) {
    return;
  }
  cairo_save(cairo_);
  cairo_translate(cairo_, ellipse.centre.x, ellipse.centre.y);
  cairo_scale(cairo_, ellipse.rx, ellipse.ry);
  cairo_arc_negative(cairo_, 0, 0, 1, from, to);
  cairo_restore(cairo_);
}

void CairoCanvas::stroke_path(const Stroke& stroke) {
  colour(stroke.colour);
  cairo_set_line_width(cairo_, stroke.width);
  cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
  std::vector<double> lengths = dashes(stroke.style);
  for (double& length : lengths) {
    length *= stroke.width;
  }
  if (!lengths.empty()) {
    cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_BUTT);
  }
  cairo_set_dash(cairo_, lengths.data(), static_cast<int>(lengths.size()), 0);
  cairo_stroke(cairo_);
}

}  // namespace

}  // namespace tavdcairo
