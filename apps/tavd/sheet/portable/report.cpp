// Documents with Cairo and Pango, through libtavdcairo.
#include "sheet/report.h"

#include <cairo.h>

#include <cmath>
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
#include "sheet/portable/cairo_painter.h"
#include "sheet/portable/letter_check.h"
#include "sheet/portable/pdf_document.h"
#include "sheet/portable/sketch.h"
#include "sheet/portable/svg_painter.h"
#include "sheet/recording_painter.h"
#include "sheet/schedule_model.h"
#include "sheet/schedule_page.h"
#include "sheet/sheet_page.h"

namespace tavdhost {
namespace {

constexpr double kPixelsPerInch = 200;
constexpr double kPointsPerInch = 72;
constexpr std::uint32_t kSketchMark =
    0xE0E0E0;  // of its place in a recording: other recordings have the sketch

std::string ending_of(const ReportTarget& target) {
  return picture_ending(target.path, target.format);
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

void draw_on(cairo_t* context, const SheetSubject& subject, const SheetContents& contents,
             const SheetForm& form, PageNumber number, LetterCheck& letters) {
  CairoPainter painter(context, form.texts->language);
  painter.keep_texts();
  draw_sheet(painter, subject, contents, form, number,
             [&](const Box& box) { draw_sketch(context, box, *subject.sketch); });
  letters.add(painter);
}

std::string svg_of(const SheetSubject& subject, const SheetForm& form) {
  const SheetContents contents = sheet_contents(subject, form);
  SvgPainter painter({kSheetWidth, kSheetHeight, form.texts->language, title_of_sheet(contents, form),
                      sheet_summary(contents)});
  draw_sheet(painter, subject, contents, form, {1, 1}, [&](const Box& box) {
    const std::string sketch = sketch_svg(*subject.sketch);
    if (!sketch.empty()) painter.embed(box, sketch);
  });
  return painter.finish();
}

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

struct CairoRelease {
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};

std::string png_of(const SheetSubject& subject, const SheetForm& form, const std::string& path) {
  constexpr double kScale = kPixelsPerInch / kPointsPerInch;
  const auto pixels = [](double mm) { return static_cast<int>(std::lround(mm * kPointsPerMm * kScale)); };
  cairo_surface_t* const surface =
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels(kSheetWidth), pixels(kSheetHeight));
  const std::unique_ptr<cairo_t, CairoRelease> cairo(cairo_create(surface));
  cairo_surface_destroy(surface);
  cairo_set_source_rgb(cairo.get(), 1, 1, 1);
  cairo_paint(cairo.get());
  cairo_scale(cairo.get(), kScale, kScale);
  LetterCheck letters(form.texts->language);
  draw_on(cairo.get(), subject, sheet_contents(subject, form), form, {1, 1}, letters);
  letters.tell();
  std::string bytes;
  cairo_status_t status = cairo_status(cairo.get());
  if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_write_to_png_stream(surface, append, &bytes);
  if (status != CAIRO_STATUS_SUCCESS) throw cannot_write(path, cairo_status_to_string(status));
  return bytes;
}

// The same without a font and without the database's time: what is compared with recordings.
std::string recording_of(const SheetSubject& subject, SheetForm form) {
  form.database_time.clear();
  RecordingPainter painter;
  draw_sheet(painter, subject, sheet_contents(subject, form), form, {1, 1},
             [&](const Box& box) { painter.area(box, kSketchMark); });
  return painter.recording();
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

void add_sheet(PdfDocument& document, const SheetSubject& subject, const SheetContents& contents,
               const SheetForm& form, PageNumber number, LetterCheck& letters) {
  document.begin_part("Sect");
  draw_on(document.context(), subject, contents, form, number, letters);
  document.end_part("Sect");
}

void write_pdf_sheet(const SheetSubject& subject, const SheetForm& form, const ReportTarget& target) {
  const SheetContents contents = sheet_contents(subject, form);
  Output output(target.path);
  PdfDocument document(output.stream(), {title_of_sheet(contents, form), contents.description,
                                         form.texts->language, iso_time(form.database_time)});
  document.add_bookmark(contents.code, 0);
  LetterCheck letters(form.texts->language);
  add_sheet(document, subject, contents, form, {1, 1}, letters);
  document.end_page();
  document.finish();
  output.finish();
  letters.tell();
}

std::string page_name(std::size_t sheet) {
  return "sheet-" + std::to_string(sheet + 1);
}

PdfArea in_points(const Box& box) {
  return {box.left * kPointsPerMm, box.top * kPointsPerMm, box.width * kPointsPerMm,
          box.height * kPointsPerMm};
}

// A schedule and its sheets, page by page.
class ScheduleDocument {
 public:
  ScheduleDocument(const ScheduleModel& model, const SheetForm& form, std::ostream& out)
      : model_(model),
        form_(form),
        first_(schedule_pages(model)),
        all_(first_ + model.sheets().size()),
        document_(out,
                  {form.texts->headings.schedule, "", form.texts->language, iso_time(form.database_time)}) {}

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
  const LetterCheck& letters() const { return letters_; }

 private:
  void add_table(std::size_t index) {
    if (index == 0) bookmark_ = document_.add_bookmark(form_.texts->headings.schedule, 0);
    if (index == 0) document_.name_page(kSchedule);
    std::vector<std::pair<Box, std::size_t>> links;
    document_.begin_part("Sect");
    CairoPainter painter(document_.context(), form_.texts->language);
    painter.keep_texts();
    draw_schedule(painter, model_, index, form_, all_,
                  [&](const Box& box, std::size_t sheet) { links.emplace_back(box, sheet); });
    letters_.add(painter);
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
    add_sheet(document_, subject, contents, form_, {first_ + index + 1, all_}, letters_);
    document_.link(in_points(page_number_box(form_)), kSchedule);
    document_.end_page();
  }

  static constexpr const char* kSchedule = "schedule";
  const ScheduleModel& model_;
  const SheetForm& form_;
  std::size_t first_;  // pages of the table
  std::size_t all_;
  PdfDocument document_;
  LetterCheck letters_{form_.texts->language};
  int bookmark_ = 0;
};

// ".txt" is the list of what is drawn, as for other drawings.
bool is_picture(const std::string& ending) {
  return ending == ".svg" || ending == ".png" || ending == ".txt";
}

}  // namespace

void check_report(const ReportTarget& target, bool is_schedule) {
  const std::string ending = ending_of(target);
  if (ending == ".pdf" || (!is_schedule && is_picture(ending))) return;
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
    write_output(target.path, ending == ".svg"   ? svg_of(subject, form)
                              : ending == ".png" ? png_of(subject, form, target.path)
                                                 : recording_of(subject, form));
  }
}

Json::Value sheet_curves(const SheetSubject& subject, const SheetForm& form) {
  return curves_json(subject, form);
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
  document.letters().tell();
  tell_left_out(counts, reading.schedule);
  if (is_standard_output(target.path)) return;
  const std::size_t pages = schedule_pages(model) + model.sheets().size();
  std::cout << target.path << ": " << counts_text(counts) << ", " << pages
            << (pages == 1 ? " page" : " pages") << '\n';
}

}  // namespace tavdhost
