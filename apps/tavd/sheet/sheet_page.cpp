#include "sheet/sheet_page.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "sheet/charts.h"
#include "sheet/looks.h"

namespace tavdhost {
namespace {

constexpr double kHeadings = 6.2;        // mm from a heading's top to what is below it
constexpr double kRows = 4.35;           // mm from row to row
constexpr double kSmallerLetters = 0.5;  // mm that smaller letters stand lower in their row
constexpr double kRemarks = 3.4;         // mm more for a remark below a row

// Columns of a table of names and values, parts of its width.
constexpr double kNames = 0.47;
constexpr double kNumbers = 0.16;
constexpr double kUnits = 0.14;
constexpr double kColumnGap = 1.2;  // mm

constexpr double kBandNames = 0.25;  // of the table of bands
constexpr double kBandSum = 0.13;    // its last column

Box below(const Box& box, double height) {
  return {box.left, box.top + height, box.width, box.height - height};
}

// The heading of a part; returns the room below it.
Box draw_heading(const PageWriter& writer, const Box& box, const std::string& text) {
  writer.line({box.left, box.top, box.width, kHeadings}, text, looks::kHeading);
  writer.rule({box.left, box.top + kHeadings - 1.4, box.width, looks::kRule}, looks::kBlack);
  return below(box, kHeadings);
}

class Table {
 public:
  Table(const PageWriter& writer, const Box& box, const SheetTexts& texts)
      : writer_(writer), box_(box), texts_(texts) {}

  // A table of numbers has them under each other, one of words where its values begin.
  void draw(const std::vector<SheetLine>& lines, bool has_numbers) {
    for (const SheetLine& line : lines) draw_line(line, has_numbers);
  }
  Box room() const { return box_; }

 private:
  void draw_line(const SheetLine& line, bool has_numbers) {
    const double names = box_.width * kNames;
    writer_.line({box_.left, box_.top, names - kColumnGap, kRows}, line.name, looks::kPaleText);
    const Box values = {box_.left + names, box_.top, box_.width - names, kRows};
    const bool is_in_column = has_numbers && is_number(line);
    if (is_in_column) {
      draw_number(values, line);
    } else {
      writer_.line(values, line.unit.empty() ? line.value : with_unit(texts_, line.value, line.unit),
                   looks::kText);
    }
    box_ = below(box_, kRows);
    if (!line.remark.empty()) draw_remark(values, line, is_in_column);
  }

  // The number, and to its right the unit, on every page.
  void draw_number(const Box& values, const SheetLine& line) const {
    const double number = box_.width * kNumbers;
    const double unit = box_.width * kUnits;
    const Box first = {values.left, values.top, writer_.right_to_left() ? unit : number, kRows};
    const Box second = {first.right() + kColumnGap, values.top, writer_.right_to_left() ? number : unit,
                        kRows};
    writer_.number(writer_.right_to_left() ? second : first, line.value, looks::kBoldText,
                   writer_.right_to_left() ? Align::kStart : Align::kEnd);
    writer_.number(writer_.right_to_left() ? first : second, line.unit, looks::kText,
                   writer_.right_to_left() ? Align::kEnd : Align::kStart);
  }

  // Beside a number without a unit where there is room, else below.
  void draw_remark(const Box& values, const SheetLine& line, bool is_in_column) {
    const double number = box_.width * kNumbers + kColumnGap;
    const Box beside = {values.left + number, values.top + kSmallerLetters, values.width - number, kRows};
    if (is_in_column && line.unit.empty() && !writer_.right_to_left() &&
        writer_.width_of(line.remark, looks::kSmall) <= beside.width) {
      writer_.line(beside, line.remark, looks::kSmall);
      return;
    }
    writer_.line({values.left, box_.top - kSmallerLetters, values.width, kRemarks}, line.remark,
                 looks::kSmall);
    box_ = below(box_, kRemarks);
  }

  static bool is_number(const SheetLine& line) {
    return !line.value.empty() &&
           (line.value[0] == '-' || (line.value[0] >= '0' && line.value[0] <= '9') || line.value == "–");
  }

  const PageWriter& writer_;
  Box box_;
  const SheetTexts& texts_;
};

void draw_title(const PageWriter& writer, const Box& box, const SheetContents& contents,
                const SheetForm& form) {
  constexpr double kHeadingPart = 0.34;  // of the width, for what kind of page this is
  const double heading = box.width * kHeadingPart;
  writer.line({box.left, box.top, box.width - heading, 8.5}, contents.code, looks::kTitle);
  writer.line({box.right() - heading, box.top + 1.6, heading, 6}, form.texts->headings.sheet,
              looks::kPageKind, Align::kEnd);
  writer.line({box.left, box.top + 9, box.width, 6}, contents.description, looks::kDescription);
  writer.rule({box.left, box.bottom() - 0.5, box.width, 0.5}, looks::kBlack);
}

// What the product is, what is asked of it, and what it answers, below each other.
void draw_facts(const PageWriter& writer, const Box& box, const SheetContents& contents,
                const SheetForm& form) {
  constexpr double kGap = 3;  // mm in front of a heading
  const SheetTexts& texts = *form.texts;
  Table product(writer, box, texts);
  product.draw(contents.product, false);
  Table duty(writer, draw_heading(writer, below(product.room(), kGap), texts.headings.duty), texts);
  duty.draw(contents.duty, false);
  Table answers(writer, draw_heading(writer, below(duty.room(), kGap), texts.headings.answers), texts);
  answers.draw(contents.answers, true);
}

class BandTable {
 public:
  BandTable(const PageWriter& writer, const Box& box, const SheetTexts& texts)
      : writer_(writer), box_(box), texts_(texts) {}

  void draw(const SheetContents& contents) {
    std::vector<std::string> bands;
    bands.reserve(kBandHz.size());
    for (const int hz : kBandHz) bands.push_back(std::to_string(hz));
    row(named(texts_.answers.octave_band, "Hz"), bands, "", looks::kPaleText);
    writer_.rule({box_.left, box_.top - 0.35, box_.width, looks::kPaleRule}, looks::kPaleGrey);
    if (contents.sound_power) {
      row(named(texts_.answers.band_power, "dB"), levels(*contents.sound_power),
          with_unit(texts_, fixed(*contents.sound_power_A, 1), unit_sign(texts_, "dB(A)")), looks::kText);
    }
    if (contents.attenuation) {
      row(named(texts_.answers.attenuation, "dB"), levels(*contents.attenuation), "", looks::kText);
    }
  }

 private:
  std::string named(const char* name, const char* unit) const {
    return std::string(name) + (texts_.right_to_left ? "، " : ", ") + unit_sign(texts_, unit);
  }
  std::vector<std::string> levels(const Bands& bands) const {
    std::vector<std::string> numbers;
    numbers.reserve(bands.size());
    for (const float level : bands) numbers.push_back(localized(texts_, fixed(level, 1)));
    return numbers;
  }
  void row(const std::string& name, const std::vector<std::string>& numbers, const std::string& sum,
           const TextLook& look) {
    const double names = box_.width * kBandNames;
    const double sums = box_.width * kBandSum;
    const double column = (box_.width - names - sums) / static_cast<double>(numbers.size());
    writer_.line({box_.left, box_.top, names - kColumnGap, kRows}, name, looks::kPaleText);
    double left = box_.left + names;
    for (const std::string& number : numbers) {
      writer_.number({left, box_.top, column - kColumnGap, kRows}, number, look);
      left += column;
    }
    if (!sum.empty()) writer_.number({left, box_.top, sums, kRows}, sum, {look.size, true, look.colour});
    box_ = below(box_, kRows);
  }

  const PageWriter& writer_;
  Box box_;
  const SheetTexts& texts_;
};

// Notes below each other in two columns.
class Notes {
 public:
  Notes(const PageWriter& writer, const Box& room, const std::vector<std::string>& notes)
      : writer_(writer), room_(room), notes_(notes) {}

  // In letters that are smaller where there are many.
  void draw() const {
    constexpr double kSmaller = 0.93;
    constexpr double kSmallest = 0.7;
    TextLook look = looks::kSmallBlack;
    while (!fit(look, false) && look.size > looks::kSmallBlack.size * kSmallest) look.size *= kSmaller;
    fit(look, true);
  }

 private:
  bool fit(const TextLook& look, bool draws) const {
    constexpr double kGap = 6;         // mm between the columns
    constexpr double kBetween = 0.25;  // mm between notes
    const double width = (room_.width - kGap) / 2;
    Box column = {room_.left, room_.top, width, room_.height};
    for (const std::string& note : notes_) {
      const double height = writer_.height_of(note, width, look);
      if (height > column.height && column.left == room_.left) {
        column = {room_.left + width + kGap, room_.top, width, room_.height};
      }
      if (height > column.height && !draws) return false;
      if (draws) writer_.paragraph(column, note, look);
      column = below(column, height + kBetween);
    }
    return true;
  }

  const PageWriter& writer_;
  Box room_;
  const std::vector<std::string>& notes_;
};

}  // namespace

void draw_foot(const PageWriter& writer, const Box& box, const SheetForm& form, PageNumber page) {
  const SheetTexts& texts = *form.texts;
  writer.rule({box.left, box.top, box.width, looks::kRule}, looks::kGrey);
  const double half = box.width / 2;
  const Box row = {box.left, box.top + 1.2, half, box.height - 1.2};
  std::string database = std::string(texts.words.database) + ": " + form.database;
  if (!form.database_time.empty()) database += ", " + form.database_time;
  writer.line(row, database, looks::kSmall);
  const std::string number = std::to_string(page.number) + " / " + std::to_string(page.of);
  writer.line({row.left + half, row.top, half, row.height}, std::string(texts.words.page) + " " + number,
              looks::kSmall, Align::kEnd);
}

Box page_number_box(const SheetForm& form) {
  const Box foot = sheet_box(SheetPart::kFoot, {});
  const Box box = {foot.left + foot.width * 0.75, foot.top, foot.width / 4, foot.height};
  return form.texts->right_to_left ? mirrored(box) : box;
}

void draw_sheet(Painter& painter, const SheetSubject& subject, const SheetContents& contents,
                const SheetForm& form, PageNumber page, const DrawSketch& sketch) {
  const PageWriter writer(painter, form.texts->right_to_left);
  const SheetTexts::Headings& headings = form.texts->headings;
  const SheetParts parts = parts_of(subject, contents);
  const auto box = [&](SheetPart part) { return sheet_box(part, parts); };
  draw_title(writer, box(SheetPart::kTitle), contents, form);
  draw_facts(writer, box(SheetPart::kFacts), contents, form);
  if (parts.sketch) {
    const Box room = draw_heading(writer, box(SheetPart::kSketch), headings.sketch);
    sketch(writer.placed(room));
  }
  if (parts.bands) {
    draw_sound_chart(writer, draw_heading(writer, box(SheetPart::kBands), headings.bands), contents, form);
  }
  const Box flow_box = draw_heading(writer, box(SheetPart::kFlowChart), headings.flow_chart);
  draw_pressure_chart(writer, flow_box, subject, form);
  if (parts.throw_chart) {
    const Box throw_box = draw_heading(writer, box(SheetPart::kThrowChart), headings.throw_chart);
    draw_length_chart(writer, throw_box, subject, form);
  }
  if (parts.band_table) BandTable(writer, box(SheetPart::kBandTable), *form.texts).draw(contents);
  Notes(writer, draw_heading(writer, box(SheetPart::kNotes), headings.notes), contents.notes).draw();
  draw_foot(writer, box(SheetPart::kFoot), form, page);
}

}  // namespace tavdhost
