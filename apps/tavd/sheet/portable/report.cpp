// Documents with Cairo and Pango, through libtavdcairo.
#include "sheet/report.h"

#include <cairo.h>

#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/paths.h"
#include "base/progress.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "drawing/picture.h"
#include "sheet/charts.h"
#include "sheet/page_surface.h"
#include "sheet/portable/pdf_document.h"
#include "sheet/schedule_model.h"
#include "sheet/schedule_page.h"
#include "sheet/sheet_page.h"
#include "sheet/sketch.h"
#include "tavdgui/tavdcairo.h"

namespace tavdhost {
namespace {

constexpr int kPixelsPerInch = 200;
constexpr double kMmPerInch = 25.4;
constexpr int kSvgUnitsPerMm = 10;  // no line is thinner than one of them

int in_units(double mm, double units_per_mm) {
  return static_cast<int>(mm * units_per_mm + 0.5);
}

using Surface = std::unique_ptr<tgui_surface, decltype(&tgui_surface_destroy)>;

std::string ending_of(const ReportTarget& target) {
  return picture_ending(target.path, target.format);
}

void draw_page(tgui_surface* surface, int width, int height, const SheetSubject& subject,
               const SheetContents& contents, const SheetForm& form, PageNumber number) {
  PageSurface page(surface, width, height);
  draw_sheet(page, subject, contents, form, number);
}

std::string title_of_sheet(const SheetContents& contents, const SheetForm& form) {
  return contents.code + ": " + form.texts->headings.sheet;
}

// "2026-11-22 15:50 UTC" as a file has it.
std::string iso_time(const std::string& time) {
  constexpr std::size_t kMinutes = 16;  // characters of day, blank and time
  if (time.size() < kMinutes) return {};
  std::string iso = time.substr(0, kMinutes) + ":00Z";
  iso[10] = 'T';
  return iso;
}

std::int32_t append(void* bytes, const void* data, std::size_t length) {
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(data), length);
  return 0;
}

// A picture of a page for a file: the surface goes with it.
std::string finished(tgui_surface* surface, const std::string& path) {
  std::string bytes;
  char reason[300] = {};
  if (tgui_cairo_finish_into(surface, append, &bytes, reason, sizeof reason) != 0) {
    throw cannot_write(path, reason);
  }
  return bytes;
}

// The page in the measure of paper, whatever a viewer takes for a pixel.
void size_as_paper(std::string& svg, int width, int height) {
  const std::string units = "width=\"" + std::to_string(width) + "\" height=\"" + std::to_string(height) + "\"";
  const std::size_t at = svg.find(units);
  if (at == std::string::npos) throw std::runtime_error("the SVG file begins other than expected");
  svg.replace(at, units.size(), "width=\"210mm\" height=\"297mm\"");
}

void write_picture(const SheetSubject& subject, const SheetForm& form, const ReportTarget& target, bool is_svg) {
  const double scale = is_svg ? kSvgUnitsPerMm : kPixelsPerInch / kMmPerInch;
  const int width = in_units(kSheetWidth, scale);
  const int height = in_units(kSheetHeight, scale);
  tgui_surface* const surface = is_svg ? tgui_cairo_svg(target.path.c_str(), width, height)
                                       : tgui_cairo_png(target.path.c_str(), width, height);
  if (surface == nullptr) throw cannot_write(target.path, "no page of this size can be made");
  const SheetContents contents = sheet_contents(subject, form);
  tgui_cairo_describe(surface, title_of_sheet(contents, form).c_str(), sheet_summary(contents).c_str());
  draw_page(surface, width, height, subject, contents, form, {1, 1});
  std::string bytes = finished(surface, target.path);
  if (is_svg) size_as_paper(bytes, width, height);
  write_output(target.path, bytes);
}

// A file that appears whole, or standard output.
class Output {
 public:
  explicit Output(const std::string& path) {
    if (!is_standard_output(path)) file_.emplace(path);
  }
  std::ostream& stream() { return file_ ? file_->stream() : std::cout; }
  void finish() {
    if (file_) file_->finish();
  }

 private:
  std::optional<OutputFile> file_;
};

// The page at hand of a document as a surface of its own.
template <typename Draw>
void on_page(PdfDocument& document, Draw draw) {
  cairo_t* const cairo = document.context();
  cairo_save(cairo);
  cairo_scale(cairo, kPointsPerMm / kUnitsPerMm, kPointsPerMm / kUnitsPerMm);
  const int width = in_units(kSheetWidth, kUnitsPerMm);
  const int height = in_units(kSheetHeight, kUnitsPerMm);
  {
    const Surface surface(tgui_cairo_context(cairo, width, height), tgui_surface_destroy);
    if (!surface) throw std::bad_alloc();
    draw(surface.get(), width, height);
  }
  cairo_restore(cairo);
}

void add_sheet(PdfDocument& document, const SheetSubject& subject, const SheetContents& contents,
               const SheetForm& form, PageNumber number) {
  document.begin_part("Sect");
  on_page(document, [&](tgui_surface* surface, int width, int height) {
    draw_page(surface, width, height, subject, contents, form, number);
  });
  document.end_part("Sect");
}

void write_pdf_sheet(const SheetSubject& subject, const SheetForm& form, const ReportTarget& target) {
  const SheetContents contents = sheet_contents(subject, form);
  Output output(target.path);
  PdfDocument document(output.stream(), {title_of_sheet(contents, form), contents.description,
                                         form.texts->language, iso_time(form.database_time)});
  document.add_bookmark(contents.code, 0);
  add_sheet(document, subject, contents, form, {1, 1});
  document.end_page();
  document.finish();
  output.finish();
}

std::string page_name(std::size_t sheet) {
  return "sheet-" + std::to_string(sheet + 1);
}

PdfArea in_points(const Box& box) {
  return {box.left * kPointsPerMm, box.top * kPointsPerMm, box.width * kPointsPerMm, box.height * kPointsPerMm};
}

// A schedule and its sheets, page by page.
class ScheduleDocument {
 public:
  ScheduleDocument(const ScheduleModel& model, const SheetForm& form, std::ostream& out)
      : model_(model),
        form_(form),
        first_(schedule_pages(model)),
        all_(first_ + model.sheets().size()),
        document_(out, {form.texts->headings.schedule, "", form.texts->language, iso_time(form.database_time)}) {}

  void write(const Database& database) {
    Progress progress("Making pages", all_);
    for (std::size_t i = 0; i < first_; ++i) {
      add_table(i);
      progress.step();
    }
    ProductChooser chooser(database);
    for (std::size_t i = 0; i < model_.sheets().size(); ++i) {
      add_sheet_of(database, chooser, i);
      progress.step();
    }
    document_.finish();
  }

 private:
  void add_table(std::size_t index) {
    if (index == 0) bookmark_ = document_.add_bookmark(form_.texts->headings.schedule, 0);
    if (index == 0) document_.name_page(kSchedule);
    std::vector<std::pair<Box, std::size_t>> links;
    document_.begin_part("Sect");
    on_page(document_, [&](tgui_surface* surface, int width, int height) {
      PageSurface page(surface, width, height);
      draw_schedule(page, model_, index, form_, all_,
                    [&](const Box& box, std::size_t sheet) { links.emplace_back(box, sheet); });
    });
    document_.end_part("Sect");
    for (const auto& [box, sheet] : links) document_.link(in_points(box), page_name(sheet));
    document_.end_page();
  }

  void add_sheet_of(const Database& database, ProductChooser& chooser, std::size_t index) {
    const ScheduledSheet& sheet = model_.sheets()[index];
    const SheetSubject subject =
        sheet_subject(database, chooser, sheet.key, sheet.parameters, sheet.duty, form_);
    const SheetContents contents = sheet_contents(subject, form_);
    document_.add_bookmark(sheet.code, bookmark_);
    document_.name_page(page_name(index));
    add_sheet(document_, subject, contents, form_, {first_ + index + 1, all_});
    document_.link(in_points(page_number_box(form_)), kSchedule);
    document_.end_page();
  }

  static constexpr const char* kSchedule = "schedule";
  const ScheduleModel& model_;
  const SheetForm& form_;
  std::size_t first_;  // pages of the table
  std::size_t all_;
  PdfDocument document_;
  int bookmark_ = 0;
};

}  // namespace

void check_report(const ReportTarget& target, bool is_schedule) {
  const std::string ending = ending_of(target);
  if (ending == ".pdf" || (!is_schedule && (ending == ".svg" || ending == ".png"))) return;
  const std::string name = target.format.empty() ? target.path : target.format;
  throw UserError("no document can be made as " + in_quotes(name) + ", expected " +
                  (is_schedule ? "a name that ends in .pdf" : "a name that ends in .pdf, .svg or .png") +
                  ", or --format");
}

void write_sheet(const SheetSubject& subject, const SheetForm& form, const ReportTarget& target) {
  const std::string ending = ending_of(target);
  if (ending == ".pdf") {
    write_pdf_sheet(subject, form, target);
  } else {
    write_picture(subject, form, target, ending == ".svg");
  }
}

Json::Value sheet_curves(const SheetSubject& /*subject*/, const SheetForm& /*form*/) {
  return Json::Value(Json::objectValue);
}

void write_schedule(SelectCatalogue& catalogue, const Request& usual, const ScheduleReading& reading,
                    const SheetForm& form, const ReportTarget& target) {
  ScheduleModel model(form);
  const ScheduleListener listener = {
      [&](const std::vector<std::string>& own_names) { model.set_names(own_names); },
      [&](const AnsweredDuty& answered) { model.add(answered); }};
  const ScheduleCounts counts = answer_schedule(catalogue, usual, reading, listener);
  Output output(target.path);
  ScheduleDocument document(model, form, output.stream());
  document.write(catalogue.database());
  output.finish();
  tell_left_out(counts, reading.schedule);
  if (is_standard_output(target.path)) return;
  const std::size_t pages = schedule_pages(model) + model.sheets().size();
  std::cout << target.path << ": " << counts_text(counts) << ", " << pages << (pages == 1 ? " page" : " pages")
            << '\n';
}

}  // namespace tavdhost
