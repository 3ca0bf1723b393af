// Whole pictures of the flow diagram as files, beside the same lines and texts drawn by PLplot and by
// gnuplot.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "paint.h"
#include "plotters.h"
#include "table.h"
#include "tavdgui/tavdcairo.h"

namespace bench {

namespace {

constexpr double kPngRatio = 3.0;  // wanted beside PLplot: a third of its time
constexpr double kRatio = 1.0;     // wanted of SVG and PDF: no slower than either
constexpr double kMicrosecond = 1000;

// Pictures in a row by one and the same, so that each finds the caches as it left them.
constexpr int kRow = 5;

struct FormatName {
  Format format;
  const char* name;
};
constexpr FormatName kFormats[] = {{Format::kPng, "PNG"}, {Format::kSvg, "SVG"}, {Format::kPdf, "PDF"}};

// One product's diagram, and the files that it is drawn to.
class Picture {
 public:
  Picture(std::int16_t kind, Format format)
      : format_(format),
        file_("build/bench/" + std::to_string(kind) +
              (format == Format::kPng   ? ".png"
               : format == Format::kSvg ? ".svg"
                                        : ".pdf")),
        paint_(kind) {}

  void ours() {
    const std::string path = file_;
    tgui_surface* surface = create(path.c_str());
    paint_.whole(surface);
    if (tgui_cairo_finish(surface, nullptr, 0) != 0) {
      std::fprintf(stderr, "%s was not written\n", path.c_str());
      std::exit(2);
    }
  }
  void plplot() { draw_with_plplot(sketch(), format_, other("plplot")); }
  // All pictures share one process, which is told once what the next ones are of.
  void gnuplot() {
    static Gnuplot process;
    static const Picture* prepared = nullptr;
    if (prepared != this) {
      process.prepare(sketch(), format_);
      prepared = this;
    }
    process.draw(other("gnuplot"));
  }

 private:
  tgui_surface* create(const char* path) const {
    constexpr double kPage = kPictureSide * 25.4 / 72;  // mm
    switch (format_) {
      case Format::kPng:
        return tgui_cairo_png(path, kPictureSide, kPictureSide);
      case Format::kSvg:
        return tgui_cairo_svg(path, kPictureSide, kPictureSide);
      default:
        return tgui_cairo_pdf(path, kPictureSide, kPictureSide, kPage, kPage);
    }
  }
  const Sketch& sketch() {
    if (sketch_.lines.empty()) {
      sketch_ = Sketch::of(
          kPictureSide, kPictureSide,
          [](tgui_surface* surface, void* paint) { static_cast<Paint*>(paint)->whole(surface); }, &paint_);
    }
    return sketch_;
  }
  std::string other(const char* whose) const {
    return "build/bench/" + std::string(whose) + "-" + file_.substr(file_.rfind('/') + 1);
  }

  Format format_;
  std::string file_;
  Paint paint_;
  Sketch sketch_;
};

void add_pictures(std::vector<Job>& jobs) {
  for (const auto& [format, name] : kFormats) {
    for (const std::int16_t kind : kPaintedKinds) {
      const auto picture = std::make_shared<Picture>(kind, format);
      for (const bool by_plplot : {true, false}) {
        const bool png = format == Format::kPng;
        Job job;
        job.name = name;
        job.detail = "kind " + std::to_string(kind) + (by_plplot ? " | PLplot" : " | gnuplot");
        job.calls = kRow;
        job.library = [picture] {
          for (int i = 0; i < kRow; ++i) picture->ours();
        };
        job.yardstick = [picture, by_plplot] {
          for (int i = 0; i < kRow; ++i) by_plplot ? picture->plplot() : picture->gnuplot();
        };
        job.wanted = {.ratio = png ? by_plplot ? kPngRatio : 0 : kRatio, .may_allocate = true};
        job.unit = kMicrosecond;
        job.group =
            "\n## Pictures\n\nThe flow diagram as a file of 700 by 700 pixels, beside the same lines, "
            "circles "
            "and texts as\nPLplot draws them with its cairo drivers (SVG with its own driver, which keeps "
            "texts as texts) "
            "and as a\nrunning gnuplot does that already has them. The library's time has the curves in it, "
            "the others' has not;\nnobody's start is counted.\n\n"
            "| File | Product | Beside | Library, us | Other, us | Times as fast | Allocations | Wanted |\n"
            "|---|---|---|---:|---:|---:|---:|---|\n";
        jobs.push_back(job);
      }
    }
  }
}

}  // namespace

void add_jobs(std::vector<Job>& jobs) {
  std::filesystem::create_directories("build/bench");
  add_pictures(jobs);
}

}  // namespace bench
