#include "sheet/schedule_page.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/looks.h"

namespace tavdhost {
namespace {

// mm, on a page that is read from the left.
constexpr Box kTitleBox = {15, 13, 180, 17};
constexpr Box kTableBox = {15, 33, 180, 248};
constexpr Box kFootBox = {15, 284, 180, 5};
constexpr double kHeadingRow = 13;
constexpr double kScheduleRow = 7.75;
constexpr double kFirstLine = 4.1;  // of a row's two
constexpr double kGap = 1.5;        // between columns

const std::size_t kRowsOnPage = static_cast<std::size_t>((kTableBox.height - kHeadingRow) / kScheduleRow);

enum class Cell { kOwn, kFlow, kPressure, kProduct, kSize, kTakes, kLevel, kThrow, kPage };

struct Column {
  Cell cell;
  double width;      // mm
  std::string name;  // first line of the heading
  std::string unit;  // the second one
  std::size_t own = 0;
};

constexpr double kNumber = 15;   // mm, of a column of numbers
constexpr double kNarrow = 11;   // of the page's
constexpr double kMostOwn = 26;  // of a column that the schedule has of its own
constexpr double kOwnRoom = 42;  // of all of them

std::string heading_of(const SheetTexts& texts, const std::string& name) {
  struct Known {
    std::string_view name;
    const char* text;
  };
  const Known known[] = {{"room", texts.schedule.room},
                         {"terminal", texts.schedule.terminal},
                         {"name", texts.schedule.name},
                         {"line", texts.schedule.line}};
  const auto* const found = std::ranges::find(known, name, &Known::name);
  return found == std::end(known) ? name : found->text;
}

// The schedule's own texts, or where it has none the number of the line.
std::vector<std::size_t> own_columns(const std::vector<std::string>& names) {
  std::vector<std::size_t> columns;
  for (std::size_t i = 0; i + 1 < names.size(); ++i) columns.push_back(i);
  if (columns.empty() && !names.empty()) columns.push_back(names.size() - 1);
  return columns;
}

std::vector<Column> columns_of(const ScheduleModel& model, const SheetForm& form) {
  const SheetTexts& texts = *form.texts;
  const std::string pressure = unit_sign(texts, *form.units.pressure);
  constexpr std::size_t kOthers = 8;  // that every schedule has
  std::vector<Column> columns;
  columns.reserve(model.own_names().size() + kOthers);
  const std::vector<std::size_t> own = own_columns(model.own_names());
  const double own_width =
      std::min(kMostOwn, kOwnRoom / static_cast<double>(std::max<std::size_t>(own.size(), 1)));
  for (const std::size_t index : own) {
    columns.push_back({Cell::kOwn, own_width, heading_of(texts, model.own_names()[index]), "", index});
  }
  columns.push_back({Cell::kFlow, kNumber, texts.names.flow, unit_sign(texts, *form.units.flow)});
  columns.push_back({Cell::kPressure, kNumber, texts.schedule.available, pressure});
  columns.push_back({Cell::kProduct, 0, texts.schedule.product, ""});
  columns.push_back({Cell::kSize, kNumber, texts.words.size, unit_sign(texts, "mm")});
  columns.push_back({Cell::kTakes, kNumber, texts.schedule.takes, pressure});
  columns.push_back({Cell::kLevel, kNumber, texts.schedule.level, unit_sign(texts, "dB(A)")});
  columns.push_back({Cell::kThrow, kNumber, texts.answers.throw_length, unit_sign(texts, "m")});
  columns.push_back({Cell::kPage, kNarrow, texts.words.page, ""});
  double taken = 0;
  for (const Column& column : columns) taken += column.width;
  std::ranges::find(columns, Cell::kProduct, &Column::cell)->width = kTableBox.width - taken;
  return columns;
}

bool is_number(Cell cell) {
  return cell != Cell::kOwn && cell != Cell::kProduct;
}

// Between columns there is a gap.
double text_width(const std::vector<Column>& columns, const Column& column) {
  return column.width - (&column == &columns.back() ? 0 : kGap);
}

void draw_headings(const PageWriter& writer, const std::vector<Column>& columns) {
  double left = kTableBox.left;
  for (const Column& column : columns) {
    const Align align = is_number(column.cell) ? Align::kEnd : Align::kStart;
    const double width = text_width(columns, column);
    writer.paragraph({left, kTableBox.top, width, 7}, column.name, looks::kSmallBold, align);
    writer.line({left, kTableBox.top + 7.3, width, 4}, column.unit, looks::kSmall, align);
    left += column.width;
  }
  writer.rule({kTableBox.left, kTableBox.top + kHeadingRow - 1.2, kTableBox.width, 0.25}, looks::kBlack);
}

class Row {
 public:
  Row(const PageWriter& writer, double top, const ScheduleRow& row, const SheetForm& form, std::size_t pages)
      : writer_(writer), top_(top), row_(row), form_(form), pages_(pages) {}

  void draw(const std::vector<Column>& columns) const {
    double left = kTableBox.left;
    for (const Column& column : columns) {
      draw_cell(column, {left, top_, text_width(columns, column), kFirstLine});
      left += column.width;
    }
    writer_.rule({kTableBox.left, top_ + kScheduleRow - 0.6, kTableBox.width, 0.12}, looks::kPaleGrey);
  }

 private:
  void draw_cell(const Column& column, const Box& box) const {
    if (column.cell == Cell::kOwn) {
      writer_.line(box, row_.own[column.own], looks::kText);
    } else if (column.cell == Cell::kProduct) {
      draw_product(box);
    } else {
      const bool leads = column.cell == Cell::kPage;
      writer_.number(box, number(column.cell), leads ? looks::kLink : looks::kText);
    }
  }
  void draw_product(const Box& box) const {
    if (!row_.sheet) {
      writer_.line(box, form_.texts->schedule.nothing_fits, looks::kPaleText);
      return;
    }
    writer_.line(box, row_.code, looks::kLink);
    writer_.line({box.left, box.top + kFirstLine - 0.6, box.width, 3.6}, row_.description, looks::kSmall);
  }
  std::string number(Cell cell) const {
    switch (cell) {
      case Cell::kFlow:
        return row_.flow;
      case Cell::kPressure:
        return row_.pressure;
      case Cell::kSize:
        return row_.size;
      case Cell::kTakes:
        return row_.takes;
      case Cell::kLevel:
        return row_.level;
      case Cell::kThrow:
        return row_.throw_length;
      case Cell::kPage:
        return row_.sheet ? std::to_string(pages_ + *row_.sheet + 1) : "";
      default:
        return {};
    }
  }

  const PageWriter& writer_;
  double top_;
  const ScheduleRow& row_;
  const SheetForm& form_;
  std::size_t pages_;  // of the table, in front of the sheets
};

void draw_title(const PageWriter& writer, const ScheduleModel& model, const SheetForm& form) {
  const SheetTexts& texts = *form.texts;
  writer.line({kTitleBox.left, kTitleBox.top, kTitleBox.width, 8.5}, texts.headings.schedule, looks::kTitle);
  std::string counts = filled(texts.schedule.duties, std::to_string(model.rows().size()));
  if (model.without() > 0) counts += "; " + filled(texts.schedule.without, std::to_string(model.without()));
  writer.line({kTitleBox.left, kTitleBox.top + 9, kTitleBox.width, 6}, counts, looks::kDescription);
  writer.rule({kTitleBox.left, kTitleBox.bottom() - 0.5, kTitleBox.width, 0.5}, looks::kBlack);
}

}  // namespace

std::size_t schedule_pages(const ScheduleModel& model) {
  return std::max<std::size_t>(1, (model.rows().size() + kRowsOnPage - 1) / kRowsOnPage);
}

void draw_schedule(Painter& painter, const ScheduleModel& model, std::size_t index, const SheetForm& form,
                   std::size_t pages, const RowLink& link) {
  const PageWriter writer(painter, form.texts->right_to_left);
  draw_title(writer, model, form);
  const std::vector<Column> columns = columns_of(model, form);
  draw_headings(writer, columns);
  const std::size_t end = std::min(model.rows().size(), (index + 1) * kRowsOnPage);
  double top = kTableBox.top + kHeadingRow;
  for (std::size_t i = index * kRowsOnPage; i < end; ++i, top += kScheduleRow) {
    const ScheduleRow& row = model.rows()[i];
    Row(writer, top, row, form, schedule_pages(model)).draw(columns);
    if (row.sheet)
      link(writer.placed({kTableBox.left, top, kTableBox.width, kScheduleRow - 0.6}), *row.sheet);
  }
  draw_foot(writer, kFootBox, form, {index + 1, pages});
}

}  // namespace tavdhost
