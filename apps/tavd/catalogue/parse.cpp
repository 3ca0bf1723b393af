// The JSON of a source, read by JsonCpp; what it has no words for is told in ours.
#include <json/reader.h>
#include <utf8.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>

#include "base/text.h"
#include "catalogue/source.h"

namespace tavdhost {
namespace {

constexpr std::size_t kFindingCharacters = 120;  // of what the reader words

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Where a comment or a text that begins here ends; `at` itself if none does.
std::size_t behind(std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(at);
  std::size_t end = at;
  if (rest.starts_with("//")) {
    end = text.find('\n', at);
  } else if (rest.starts_with("/*")) {
    end = text.find("*/", at + 2);
  } else if (rest.starts_with('"')) {
    for (end = at + 1; end < text.size() && text[end] != '"'; ++end) end += text[end] == '\\' ? 1 : 0;
  }
  return std::min(end, text.size());
}

// The last character in front of the offset that is no blank and in no comment; 0 if there is none.
char last_before(std::string_view text, std::size_t offset) {
  char last = '\0';
  for (std::size_t at = 0; at < offset; ++at) {
    const bool comment = text.substr(at).starts_with("//") || text.substr(at).starts_with("/*");
    const std::size_t end = behind(text, at);
    if (!comment && !is_blank(text[at])) last = text[at];
    if (end == at) continue;
    at = end + (text.substr(end).starts_with("*/") ? 1 : 0);
  }
  return last;
}

// The letters at the offset, with a sign in front of them.
std::string_view word_at(std::string_view text, std::size_t offset) {
  std::size_t end = offset;
  if (end < text.size() && (text[end] == '-' || text[end] == '+')) ++end;
  while (end < text.size() && is_letter(text[end])) ++end;
  return text.substr(offset, end - offset);
}

bool is_no_finite_number(std::string_view word) {
  if (word.starts_with('-') || word.starts_with('+')) word.remove_prefix(1);
  return same_letters(word, "nan") || same_letters(word, "inf") || same_letters(word, "infinity");
}

// What is wrong at the offset where the reader stopped, for this reason.
std::string reason_at(std::string_view text, std::size_t offset, const std::string& reason) {
  const char found = offset < text.size() ? text[offset] : '\0';
  if ((found == ']' || found == '}') && last_before(text, offset) == ',') {
    return std::string("trailing comma; expected a value behind it, or none in front of \"") + found + '"';
  }
  const std::string_view word = word_at(text, offset);
  if (is_no_finite_number(word)) return "expected a number, found " + std::string(word);
  if (found == '\'') return "expected double quotes around texts and names, found single ones";
  return shortened_inside(reason, kFindingCharacters);
}

// The reader words its findings as "* Line 3, Column 5", a line break, and the reason behind two blanks. Its
// columns are bytes.
void add_reader_errors(const Source& source, const std::string& errors, Faults& faults) {
  std::istringstream lines(errors);
  std::string line;
  std::size_t offset = 0;
  const auto add = [&](const std::string& reason) {
    faults.add(source, source.place(static_cast<std::ptrdiff_t>(offset)),
               reason_at(source.text(), offset, reason));
  };
  bool told = false;
  while (std::getline(lines, line)) {
    unsigned long row = 0;
    unsigned long column = 0;
    if (std::sscanf(line.c_str(), "* Line %lu, Column %lu", &row, &column) == 2) {
      offset = source.offset(row, column);
    } else if (line.starts_with("  ")) {
      add(line.substr(2));
      told = true;
    }
  }
  if (!told) add("cannot be read as JSON");
}

}  // namespace

bool parse(const Source& source, Json::Value& root, Faults& faults) {
  const std::string& text = source.text();
  const auto bad = utf8::find_invalid(text.begin(), text.end());
  if (bad != text.end()) {
    faults.add(source, source.place(bad - text.begin()), "expected UTF-8, found a byte that is none");
    return false;
  }
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  builder["allowComments"] = true;
  builder["collectComments"] = false;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  try {
    if (reader->parse(text.data(), text.data() + text.size(), &root, &errors)) return true;
    add_reader_errors(source, errors, faults);
  } catch (const Json::Exception& error) {  // nested deeper than the reader goes
    faults.add(source, {1, 1}, error.what());
  }
  return false;
}

}  // namespace tavdhost
