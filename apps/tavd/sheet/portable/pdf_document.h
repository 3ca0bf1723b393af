// A PDF file page by page: bookmarks, links between pages, title and language. Written as it is made, so that
// it takes no more memory with its pages; the same drawing gives the same bytes.
#pragma once

#include <cairo.h>

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>

namespace tavdhost {

struct PdfProperties {
  std::string title, subject;
  std::string language;  // BCP 47
  std::string created;   // ISO 8601, such as "2026-11-22T15:50:00Z"; empty: the file tells no time
};

// A place on a page, points from its upper left corner.
struct PdfArea {
  double x, y, width, height;
};

class PdfDocument {
 public:
  // Pages of A4. The stream outlives the document.
  PdfDocument(std::ostream& out, const PdfProperties& properties);
  ~PdfDocument();
  PdfDocument(const PdfDocument&) = delete;
  PdfDocument& operator=(const PdfDocument&) = delete;

  // What is drawn goes onto the page at hand, in points.
  cairo_t* context() const { return cairo_.get(); }
  void end_page();

  // Names the page at hand for links, and has a bookmark lead to it: below another one, or 0 for none.
  int add_bookmark(const std::string& text, int below);
  void name_page(const std::string& name);
  // An area of the page at hand that leads to a page by its name, which may come later.
  void link(const PdfArea& area, const std::string& name);

  // What is drawn until the end is told to readers as one part: "H1", "P", "Table", "Figure".
  void begin_part(const char* kind);
  void end_part(const char* kind);

  // Completes the file. Throws std::runtime_error if the pages could not be made; whether they could be
  // written the stream tells.
  void finish();

 private:
  class Output;
  struct Release {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
  };

  cairo_surface_t* surface() const { return cairo_get_target(cairo_.get()); }

  std::unique_ptr<Output> writer_;
  std::unique_ptr<cairo_t, Release> cairo_;
  std::string language_;
  int page_ = 1;
};

// A4, ISO 216, points of 1/72 inch.
inline constexpr double kPointsPerMm = 72.0 / 25.4;
inline constexpr double kPageWidthMm = 210;
inline constexpr double kPageHeightMm = 297;

}  // namespace tavdhost
