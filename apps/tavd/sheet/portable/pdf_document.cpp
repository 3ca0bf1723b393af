#include "sheet/portable/pdf_document.h"

#include <cairo-pdf.h>

#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "base/numbers.h"

namespace tavdhost {
namespace {

constexpr std::size_t kEntryBytes = 20;  // of a row of the table of objects, ISO 32000-1, 7.5.4

std::runtime_error unexpected() {
  return std::runtime_error("the PDF file ends other than expected");
}

// A text between quotes as the attributes of a tag have it.
std::string quoted(std::string_view text) {
  std::string quoted_text = "'";
  for (const char letter : text) {
    if (letter == '\'' || letter == '\\') quoted_text += '\\';
    quoted_text += letter;
  }
  return quoted_text + "'";
}

// The number behind the last `word` of the bytes.
std::size_t number_behind(std::string_view bytes, std::string_view word) {
  const std::size_t at = bytes.rfind(word);
  if (at == std::string_view::npos) throw unexpected();
  return std::stoull(std::string(bytes.substr(at + word.size(), 24)));
}

}  // namespace

// Passes on what it gets, counts it, and keeps the end of the file.
class PdfDocument::Output {
 public:
  explicit Output(std::ostream& out) : out_(out) {}

  static cairo_status_t write(void* writer, const unsigned char* data, unsigned int length) {
    static_cast<Output*>(writer)->take({reinterpret_cast<const char*>(data), length});
    return CAIRO_STATUS_SUCCESS;
  }
  void take(std::string_view bytes) {
    out_ << bytes;
    count_ += bytes.size();
    if (keeps_) kept_ += bytes;
  }
  void keep() {
    keeps_ = true;
    begin_ = count_;
  }
  // Adds entries to the catalogue of the document, which Cairo has no way to: as an update behind the file,
  // in which the catalogue stands anew (ISO 32000-1, 7.5.6).
  void add_to_catalogue(const std::string& entries);

 private:
  std::string_view behind(std::size_t offset) const {
    if (offset < begin_ || offset - begin_ > kept_.size()) throw unexpected();
    return std::string_view(kept_).substr(offset - begin_);
  }

  std::ostream& out_;
  std::size_t count_ = 0;
  bool keeps_ = false;
  std::size_t begin_ = 0;  // of what is kept
  std::string kept_;
};

void PdfDocument::Output::add_to_catalogue(const std::string& entries) {
  const std::size_t table = number_behind(kept_, "startxref\n");
  const std::size_t root = number_behind(kept_, "/Root ");
  const std::size_t info = number_behind(kept_, "/Info ");
  const std::size_t objects = number_behind(kept_, "/Size ");
  const std::string_view rows = behind(table);
  const std::size_t first = rows.find('\n', rows.find('\n') + 1) + 1;
  const std::string_view row = rows.substr(first + root * kEntryBytes, kEntryBytes);
  const std::string_view object = behind(std::stoull(std::string(row.substr(0, 10))));
  const std::string_view catalogue = object.substr(0, object.find("endobj"));
  const std::size_t end = catalogue.rfind(">>");
  if (end == std::string_view::npos) throw unexpected();
  const std::size_t place = count_;
  std::string update = std::string(catalogue.substr(0, end)) + entries + "\n>>\nendobj\n";
  const std::size_t new_table = place + update.size();
  char offset[24];
  std::snprintf(offset, sizeof offset, "%010zu", place);
  update += "xref\n" + std::to_string(root) + " 1\n" + offset + " 00000 n \ntrailer\n<< /Size " +
            std::to_string(objects) + "\n   /Root " + std::to_string(root) + " 0 R\n   /Info " +
            std::to_string(info) + " 0 R\n   /Prev " + std::to_string(table) + "\n>>\nstartxref\n" +
            std::to_string(new_table) + "\n%%EOF\n";
  take(update);
}

PdfDocument::PdfDocument(std::ostream& out, const PdfProperties& properties)
    : writer_(std::make_unique<Output>(out)), language_(properties.language) {
  cairo_surface_t* const made = cairo_pdf_surface_create_for_stream(
      Output::write, writer_.get(), kPageWidthMm * kPointsPerMm, kPageHeightMm * kPointsPerMm);
  cairo_pdf_surface_set_metadata(made, CAIRO_PDF_METADATA_TITLE, properties.title.c_str());
  cairo_pdf_surface_set_metadata(made, CAIRO_PDF_METADATA_SUBJECT, properties.subject.c_str());
  cairo_pdf_surface_set_metadata(made, CAIRO_PDF_METADATA_CREATE_DATE, properties.created.c_str());
  cairo_.reset(cairo_create(made));
  cairo_surface_destroy(made);
}

PdfDocument::~PdfDocument() {
  cairo_surface_finish(surface());
}

void PdfDocument::end_page() {
  cairo_show_page(cairo_.get());
  ++page_;
}

int PdfDocument::add_bookmark(const std::string& text, int below) {
  const std::string place = "page=" + std::to_string(page_) + " pos=[0.0 0.0]";
  return cairo_pdf_surface_add_outline(surface(), below == 0 ? CAIRO_PDF_OUTLINE_ROOT : below, text.c_str(),
                                       place.c_str(), CAIRO_PDF_OUTLINE_FLAG_OPEN);
}

void PdfDocument::name_page(const std::string& name) {
  const std::string attributes = "name=" + quoted(name);
  cairo_tag_begin(cairo_.get(), CAIRO_TAG_DEST, attributes.c_str());
  cairo_tag_end(cairo_.get(), CAIRO_TAG_DEST);
}

void PdfDocument::link(const PdfArea& area, const std::string& name) {
  std::string attributes = "rect=[";
  for (const double side : {area.x, area.y, area.width, area.height}) {
    attributes += fixed(static_cast<float>(side), 2) + " ";
  }
  attributes += "] dest=" + quoted(name);
  cairo_tag_begin(cairo_.get(), CAIRO_TAG_LINK, attributes.c_str());
  cairo_tag_end(cairo_.get(), CAIRO_TAG_LINK);
}

void PdfDocument::begin_part(const char* kind) {
  cairo_tag_begin(cairo_.get(), kind, nullptr);
}

void PdfDocument::end_part(const char* kind) {
  cairo_tag_end(cairo_.get(), kind);
}

void PdfDocument::finish() {
  writer_->keep();
  cairo_status_t status = cairo_status(cairo_.get());
  cairo_surface_finish(surface());
  if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface());
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
  writer_->add_to_catalogue("   /Lang (" + language_ +
                            ")\n   /ViewerPreferences << /DisplayDocTitle true >>");
}

}  // namespace tavdhost
