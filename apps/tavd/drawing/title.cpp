#include "drawing/title.h"

#include <cstddef>
#include <cstdint>

#include "base/errors.h"
#include "base/text.h"
#include "tavd/attributes.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdg.h"

namespace tavdhost {
namespace {

constexpr std::size_t kTitleUnits = TAVDG_TITLE_CHARS - 1;  // a longer title would not be drawn at all

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

}  // namespace tavdhost
