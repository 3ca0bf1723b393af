// Titles of pictures in place of the product code.
#pragma once

#include <functional>
#include <string>

#include "drawing/area.h"
#include "product/database.h"
#include "shared/drawings.h"

namespace tavdhost {

// Throws UserError if a title is too long to be drawn, 79 UTF-16 units.
void check_title(const std::string& title);

// Puts a title into the code's place in a record at hand, which is never saved. Charts in the wide form show
// the product code whatever title was set, and narrow texts are in the default code page: so every picture
// gets its title through the record. An empty title leaves the code.
void put_title(const Database& database, Record& record, const std::string& title);

// The product code as a drawing has it, UTF-8, with a blank at its end if it has any there.
std::string title_of(const Database& database, const Record& record);

// The title of a drawing, and what of it fits.
class FittedTitle {
 public:
  // `drawn` is what the drawing has as its title, as title_of() tells it.
  explicit FittedTitle(std::string drawn);

  // Has the drawing a title that lies in the room where the drawing is to be painted: without the blanks that
  // an object id has behind it, which would move it from the middle, and with "..." in the place of what is
  // too much. `show` gives the drawing another title.
  using Show = std::function<void(const std::string& title)>;
  void fit(const hosts::LibraryDrawing& drawing, const Area& room, const Show& show);

 private:
  void change(const std::string& title, const Show& show);

  std::string title_;  // without blanks at its end
  std::string shown_;  // that the drawing has now
};

// The same where the drawing takes its title from a record.
class RecordTitle {
 public:
  // Of a record at hand. The database outlives this.
  RecordTitle(const Database& database, const Record& record);

  // `read` has the library take a record with another title, which is never saved.
  using Read = std::function<void(const Record&)>;
  void fit(const hosts::LibraryDrawing& drawing, const Area& room, const Read& read);

 private:
  void show(const std::string& title, const Read& read) const;

  const Database& database_;
  RecordKey key_;
  FittedTitle title_;
};

}  // namespace tavdhost
