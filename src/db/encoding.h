// How the texts of a database are encoded.
#pragma once

#include <cstdint>

#include "tavd/attributes.h"
#include "tavd/tavb.h"

namespace tavd {

// The file header's word on it, one of TAVD_TEXTS_; TAVD_TEXTS_DEFAULT too if the header has none.
inline std::int16_t uses_utf8(std::int16_t db) {
  std::int16_t count = 0;
  std::int16_t usesUTF8 = 0;
  tavbfindatt(db, TAVD_FILEHEADER_CLASS, TAVD_FILEHEADER_ID, TAVD_ATT_USES_UTF8, &count, &usesUTF8,
              sizeof usesUTF8);
  return usesUTF8;
}

inline bool is_default_encoding(std::int16_t usesUTF8) {
  return usesUTF8 == TAVD_TEXTS_DEFAULT || usesUTF8 == TAVD_TEXTS_DEFAULT_2;
}

}  // namespace tavd
