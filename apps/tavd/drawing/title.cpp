#include "drawing/title.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "base/errors.h"
#include "base/text.h"
#include "drawing/picture.h"
#include "drawing/placement.h"
#include "tavd/attributes.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"

namespace tavdhost {
namespace {

constexpr std::size_t kTitleUnits = TAVDG_TITLE_CHARS - 1;  // a longer title would not be drawn at all

bool lies_within(const Extent& text, const Area& room) {
  return text.left >= room.left && text.right <= room.right;
}

// Whether the title lies in the room between its left and right edge, if the drawing does.
bool title_fits(const hosts::LibraryDrawing& drawing, const Area& room) {
  const std::optional<Covered> drawn = covered(drawing, natural_place(drawing, room));
  return !drawn || drawn->texts.empty() || lies_within(drawn->texts.front(), room);
}

}  // namespace

void check_title(const std::string& title) {
  if (utf16_length(title) > kTitleUnits) {
    throw UserError("--title is " + std::to_string(utf16_length(title)) +
                    " characters long, expected at most " + std::to_string(kTitleUnits));
  }
}

void put_title(const Database& database, Record& record, const std::string& title) {
  if (title.empty()) return;
  const std::string code = printable(title);
  tavdcore_set_market_area(nullptr);
  tavbinsertatt(database.handle(), record.address(), TAVD_ATT_CODE_DEFAULT, code.data(),
                static_cast<std::int16_t>(code.size()));
}

std::string title_of(const Database& database, const Record& record) {
  tavd_wchar wide[TAVDG_TITLE_CHARS + 1] = {};
  tavdf_copyproductcodew(database.handle(), record.get(), wide, TAVDG_TITLE_CHARS);
  std::size_t units = 0;
  while (units < TAVDG_TITLE_CHARS && wide[units] != 0) ++units;
  const bool has_blanks = units != 0 && wide[units - 1] == u' ';
  return to_utf8(wide, TAVDG_TITLE_CHARS) + (has_blanks ? " " : "");
}

FittedTitle::FittedTitle(std::string drawn) : title_(trim_end(drawn)), shown_(std::move(drawn)) {}

void FittedTitle::change(const std::string& title, const Show& show) {
  if (title == shown_) return;
  show(title);
  shown_ = title;
}

void FittedTitle::fit(const hosts::LibraryDrawing& drawing, const Area& room, const Show& show) {
  change(title_, show);
  if (title_.empty() || title_fits(drawing, room)) return;
  // The most characters that fit, by halves; at least one, however narrow the room is.
  std::size_t fits = 1;
  std::size_t too_many = utf16_length(title_);
  while (too_many - fits > 1) {
    const std::size_t most = (fits + too_many) / 2;
    change(shortened_inside(title_, most), show);
    (title_fits(drawing, room) ? fits : too_many) = most;
  }
  change(shortened_inside(title_, fits), show);
}

RecordTitle::RecordTitle(const Database& database, const Record& record)
    : database_(database), key_(database.key(record)), title_(title_of(database, record)) {}

// The title stands in the place of the code for all markets: the market is set aside while it is read. The
// record is one of this title's own, since that at hand is drawn in other forms too.
void RecordTitle::show(const std::string& title, const Read& read) const {
  Record record = database_.find(key_.class_id, key_.object_id);
  const std::string market = tavdcore_marketArea();
  put_title(database_, record, title);
  read(record);
  tavdcore_set_market_area(market.c_str());
}

void RecordTitle::fit(const hosts::LibraryDrawing& drawing, const Area& room, const Read& read) {
  title_.fit(drawing, room, [&](const std::string& title) { show(title, read); });
}

}  // namespace tavdhost
