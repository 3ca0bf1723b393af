// Comma-separated values as the commands write them: RFC 4180, but a line ends with the line feed alone.
#pragma once

#include <string>
#include <string_view>

namespace tavdhost {

// One line, written behind what a text already holds; every cell but the first has a comma before it.
class CsvLine {
 public:
  explicit CsvLine(std::string& out) : out_(out) {}

  // In the shortest digits that read back as the same float; empty if it is no finite number.
  void number(float value);
  void whole(int value);
  void text(std::string_view value);  // in quotes where that must be
  void empty() { separate(); }
  void end() { out_ += '\n'; }

 private:
  void separate() {
    if (!first_) out_ += ',';
    first_ = false;
  }
  std::string& out_;
  bool first_ = true;
};

}  // namespace tavdhost
