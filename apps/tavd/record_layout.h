// What several files name of a product's record: the lengths of its ids and attributes that go together.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tavd/attributes.h"

namespace tavdhost {

// Bytes in the database, blank-padded.
inline constexpr std::size_t kClassChars = 3;
inline constexpr std::size_t kIdChars = 30;

inline constexpr std::int16_t kModelIds[] = {
    TAVD_ATT_MODEL_ID, TAVD_ATT_MODEL_ID_SECOND};  // the second where the first is absent or empty
inline constexpr std::int16_t kParameterTables[] = {TAVD_ATT_PAR1_TABLE, TAVD_ATT_PAR2_TABLE};

}  // namespace tavdhost
