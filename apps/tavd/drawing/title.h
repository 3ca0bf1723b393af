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

// The title of a product as the library would draw it, and what of it fits.
class FittedTitle {
 public:
  // Of a record at hand. The database outlives this.
  FittedTitle(const Database& database, const Record& record);

  // Has the drawing a title that lies in the room where the drawing is to be painted: without the blanks that
  // an object id has behind it, which would move it from the middle, and with "..." in the place of what is
  // too much. `read` has the library take a record with another title, which is never saved.
  using Read = std::function<void(const Record&)>;
  void fit(const hosts::LibraryDrawing& drawing, const Area& room, const Read& read);

 private:
  void show(const std::string& title, const Read& read);

  const Database& database_;
  RecordKey key_;
  std::string title_;  // UTF-8, without blanks at its end
  std::string shown_;  // that the drawing has now
};

}  // namespace tavdhost
