// Whether the fonts of this machine have all letters of a document: those that none has are boxes on its
// pages.
#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "sheet/painter.h"

namespace tavdhost {

class LetterCheck {
 public:
  explicit LetterCheck(std::string language) : language_(std::move(language)) {}

  // The texts that a painter has kept.
  void add(const Painter& painter);
  // Says on standard error which text has letters that no font has; nothing where there is none.
  void tell() const;

 private:
  void add(const std::string& text);

  std::string language_;
  std::set<std::string> known_;  // texts that were looked at
  std::string first_;            // with a letter that is missing
  std::size_t texts_ = 0;
};

}  // namespace tavdhost
