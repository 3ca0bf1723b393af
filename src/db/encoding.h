// How the texts of a database are encoded.
#pragma once

#include <cstdint>

#include "db/attributes.h"
#include "tavd/tavb.h"

namespace tavd {

// The file header's word on it: 1 is UTF-8, 0 and 2 the default code page; 0 too if the header has none.
inline std::int16_t uses_utf8(std::int16_t db) {
  std::int16_t count = 0;
  std::int16_t usesUTF8 = 0;
  tavbfindatt(db, "000", "FILEHEADER", kAttUsesUtf8, &count, &usesUTF8, sizeof usesUTF8);
  return usesUTF8;
}

}  // namespace tavd
