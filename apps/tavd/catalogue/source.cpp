#include "catalogue/source.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <tuple>

#include "base/errors.h"
#include "base/paths.h"
#include "base/text.h"

namespace tavdhost {
namespace {

constexpr std::size_t kLinesShown = 20;
constexpr std::size_t kExcerptCharacters = 40;
constexpr std::size_t kBlockBytes = 1024;  // of text, by which characters are counted beforehand
constexpr std::size_t kReadBytes = std::size_t{1} << 20;
constexpr std::uintmax_t kMostSourceBytes = std::uintmax_t{4}
                                            << 30;  // read and taken apart it needs some ten times that
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool continues_character(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

UserError too_large(const std::string& path, const std::string& bytes) {
  return UserError(path + ": " + bytes + " bytes, expected a source of at most " +
                   std::to_string(kMostSourceBytes));
}

// What is no text at all is refused before the rest of it is read.
void refuse_nul(const std::string& path, std::size_t before, std::string_view text) {
  const std::size_t at = text.find('\0');
  if (at == std::string_view::npos) return;
  throw UserError(path + ": byte " + std::to_string(before + at + 1) + " is NUL, expected UTF-8 text");
}

}  // namespace

Source::Source(std::string name, std::string text, std::size_t first_line)
    : name_(std::move(name)), text_(std::move(text)), first_line_(first_line) {
  if (first_line == 1 && text_.starts_with(kByteOrderMark)) text_.erase(0, kByteOrderMark.size());
  line_starts_.push_back(0);
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text_.size(); ++i) {
    if (i % kBlockBytes == 0) block_characters_.push_back(characters);
    if (!continues_character(text_[i])) ++characters;
    if (text_[i] == '\n') line_starts_.push_back(i + 1);
  }
  block_characters_.push_back(characters);  // for a place at the very end
}

Source Source::read(const std::string& path) {
  std::error_code none;  // a pipe has none
  const std::uintmax_t size = std::filesystem::file_size(to_path(path), none);
  if (!none && size > kMostSourceBytes) throw too_large(path, std::to_string(size));
  std::ifstream file(to_path(path), std::ios::binary);
  if (!file) throw UserError(path + ": cannot be opened");
  std::string text;
  if (!none) text.reserve(size);
  std::vector<char> block(kReadBytes);
  while (file.read(block.data(), kReadBytes), file.gcount() > 0) {
    const std::string_view read(block.data(), static_cast<std::size_t>(file.gcount()));
    refuse_nul(path, text.size(), read);
    if (text.size() + read.size() > kMostSourceBytes) throw too_large(path, "more");
    text += read;
  }
  if (file.bad()) throw UserError(path + ": cannot be read");
  return {path, std::move(text)};
}

Source::Place Source::place(std::ptrdiff_t offset) const {
  const std::size_t at =
      std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0)), text_.size());
  const auto after = std::ranges::upper_bound(line_starts_, at);
  const std::size_t start = *std::prev(after);
  const std::size_t characters = characters_before(at) - characters_before(start);
  return {static_cast<std::size_t>(after - line_starts_.begin()) + first_line_ - 1, characters + 1};
}

std::size_t Source::offset(std::size_t line, std::size_t byte) const {
  const std::size_t start = line_starts_[std::clamp<std::size_t>(line, 1, line_starts_.size()) - 1];
  return std::min(start + std::max<std::size_t>(byte, 1) - 1, text_.size());
}

// Counts within a block only: a place far down a long line costs no more than one at its start.
std::size_t Source::characters_before(std::size_t at) const {
  const std::size_t block = at / kBlockBytes;
  const std::string_view within =
      std::string_view(text_).substr(block * kBlockBytes, at - block * kBlockBytes);
  const auto characters = std::ranges::count_if(within, [](char c) { return !continues_character(c); });
  return block_characters_[block] + static_cast<std::size_t>(characters);
}

std::string_view Source::literal(const Json::Value& value) const {
  const auto start = static_cast<std::size_t>(value.getOffsetStart());
  const auto limit = static_cast<std::size_t>(value.getOffsetLimit());
  if (start > limit || limit > text_.size()) return {};
  return std::string_view(text_).substr(start, limit - start);
}

std::string Source::excerpt(const Json::Value& value) const {
  std::string text;
  for (char c : literal(value)) {
    if (text.size() > kExcerptCharacters) break;  // the rest is not shown
    const bool blank = c == ' ' || c == '\n' || c == '\r' || c == '\t';
    if (!blank) {
      text += c;
    } else if (!text.ends_with(' ')) {
      text += ' ';
    }
  }
  if (text.size() <= kExcerptCharacters) return printable(text);
  std::size_t end = kExcerptCharacters;
  while (end > 0 && continues_character(text[end])) --end;
  return printable(text.substr(0, end)) + "...";
}

std::size_t Faults::order_of(const Source& source) {
  const auto known = std::ranges::find(sources_, &source);
  const auto order = static_cast<std::size_t>(known - sources_.begin());
  if (known == sources_.end()) sources_.push_back(&source);
  return order;
}

void Faults::add(const Source& source, Source::Place place, const std::string& text) {
  lines_.push_back({&source, order_of(source), place, text});
}

std::string Faults::listing() const {
  std::vector<Line> sorted = lines_;
  std::ranges::stable_sort(sorted, {}, [](const Line& line) {
    return std::tuple(line.order, line.place.line, line.place.column);
  });
  std::vector<std::string> told;
  for (std::size_t i = 0; i < std::min(sorted.size(), kLinesShown); ++i) {
    const Line& line = sorted[i];
    told.push_back(printable(line.source->name()) + ':' + std::to_string(line.place.line) + ':' +
                   std::to_string(line.place.column) + ": " + line.text);
  }
  const std::size_t room = std::min(elsewhere_.size(), kLinesShown - told.size());
  told.insert(told.end(), elsewhere_.begin(), elsewhere_.begin() + static_cast<std::ptrdiff_t>(room));
  if (count() > told.size()) told.push_back("and " + std::to_string(count() - told.size()) + " more");
  std::string text;
  for (const std::string& line : told) text += (text.empty() ? "" : "\n") + line;
  return text;
}

}  // namespace tavdhost
