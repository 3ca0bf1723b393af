// The catalogue's source files: JSON with comments, and the places of what is wrong in them.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tavdhost {

// One source file in memory, as UTF-8 without a byte order mark.
class Source {
 public:
  struct Place {
    std::size_t line;    // from 1, or the text's first line
    std::size_t column;  // in characters, from 1
  };

  // `first_line` is the number of the text's first line, for a text that is a part of a file.
  Source(std::string name, std::string text, std::size_t first_line = 1);

  // Throws UserError if the file cannot be read.
  static Source read(const std::string& path);

  const std::string& name() const { return name_; }
  const std::string& text() const { return text_; }
  Place place(std::ptrdiff_t offset) const;
  // The offset of a line's byte, both counted from 1.
  std::size_t offset(std::size_t line, std::size_t byte) const;

  // The characters that a value was read from, cut for a message if there are many.
  std::string_view literal(const Json::Value& value) const;
  std::string excerpt(const Json::Value& value) const;

 private:
  std::size_t characters_before(std::size_t at) const;

  std::string name_;
  std::string text_;
  std::size_t first_line_;
  std::vector<std::size_t> line_starts_;
  std::vector<std::size_t> block_characters_;  // characters in front of each block of the text
};

// What is to be told about the sources of one run: everything that is wrong in them, or that is worth a
// warning.
class Faults {
 public:
  // Sources are listed in the order in which they are first named, here or with a fault.
  void name(const Source& source) { order_of(source); }
  void add(const Source& source, Source::Place place, const std::string& text);
  // What has no place in the sources stands behind all that has.
  void add(const std::string& text) { elsewhere_.push_back(text); }

  bool empty() const { return count() == 0; }
  std::size_t count() const { return lines_.size() + elsewhere_.size(); }

  // A line per fault, "file:line:column: text", in the order of the sources and of the places in them. At
  // most 20 lines, and one that counts the rest.
  std::string listing() const;

 private:
  struct Line {
    const Source* source;
    std::size_t order;  // of the source
    Source::Place place;
    std::string text;
  };
  std::size_t order_of(const Source& source);

  std::vector<const Source*> sources_;
  std::vector<Line> lines_;
  std::vector<std::string> elsewhere_;
};

// Reads the JSON of a source; comments are allowed, names that stand twice in one object and anything behind
// the value are not. Returns whether it could be read; if not, `faults` says why.
bool parse(const Source& source, Json::Value& root, Faults& faults);

}  // namespace tavdhost
