#include "import/csv.h"

#include <utf8.h>

#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace tavdhost {
namespace {

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

class CsvReader {
 public:
  CsvReader(const Source& source, char separator, Faults& faults)
      : source_(source), text_(source.text()), faults_(faults), separator_(separator) {}

  std::vector<CsvRow> rows() {
    std::vector<CsvRow> rows;
    while (at_ < text_.size()) {
      CsvRow read = row();
      if (std::ranges::any_of(read, [](const CsvCell& cell) { return !cell.text.empty(); })) {
        rows.push_back(std::move(read));
      }
    }
    return rows;
  }

 private:
  bool at_end_of_cell() const {
    return at_ >= text_.size() || text_[at_] == separator_ || text_[at_] == '\n';
  }

  CsvRow row() {
    CsvRow cells;
    for (bool more = true; more;) {
      cells.push_back(cell());
      more = at_ < text_.size() && text_[at_] == separator_;
      if (at_ < text_.size()) ++at_;
    }
    return cells;
  }

  CsvCell cell() {
    while (!at_end_of_cell() && is_blank(text_[at_])) ++at_;
    if (!at_end_of_cell() && text_[at_] == '"') return quoted_cell();
    const std::size_t start = at_;
    while (!at_end_of_cell()) ++at_;
    std::size_t end = at_;
    while (end > start && is_blank(text_[end - 1])) --end;
    return {std::string(text_.substr(start, end - start)), start};
  }

  // Two quotes in it stand for one.
  CsvCell quoted_cell() {
    CsvCell cell{"", at_++};
    for (; at_ < text_.size(); ++at_) {
      if (text_[at_] != '"') {
        cell.text += text_[at_];
      } else if (text_.substr(at_).starts_with("\"\"")) {
        cell.text += text_[at_++];
      } else {
        break;
      }
    }
    if (at_ >= text_.size()) add(cell.offset, "a quote that is not closed, expected another one");
    if (at_ < text_.size()) ++at_;
    const std::size_t behind = at_;
    while (!at_end_of_cell() && is_blank(text_[at_])) ++at_;
    if (!at_end_of_cell()) add(behind, "expected nothing between a closing quote and the next cell");
    while (!at_end_of_cell()) ++at_;
    return cell;
  }

  void add(std::size_t offset, const std::string& text) {
    faults_.add(source_, source_.place(static_cast<std::ptrdiff_t>(offset)), text);
  }

  const Source& source_;
  std::string_view text_;
  Faults& faults_;
  char separator_;
  std::size_t at_ = 0;
};

}  // namespace

// The first separator that the first line has outside quotes.
char csv_separator(std::string_view heading) {
  bool quoted = false;
  std::string outside;
  for (const char c : heading) {
    if (c == '"') quoted = !quoted;
    if (c == '\n' && !quoted) break;
    if (!quoted) outside += c;
  }
  for (const char separator : {';', '\t'}) {
    if (outside.find(separator) != std::string::npos) return separator;
  }
  return ',';
}

std::vector<CsvRow> csv_rows(const Source& source, Faults& faults) {
  return csv_rows(source, csv_separator(source.text()), faults);
}

std::vector<CsvRow> csv_rows(const Source& source, char separator, Faults& faults) {
  const std::string& text = source.text();
  const auto bad = utf8::find_invalid(text.begin(), text.end());
  if (bad != text.end()) {
    faults.add(source, source.place(bad - text.begin()),
               "expected UTF-8, found a byte that is none: save the table as CSV in UTF-8");
    return {};
  }
  return CsvReader(source, separator, faults).rows();
}

}  // namespace tavdhost
