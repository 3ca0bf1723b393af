// Attributes of a product's record that go together.
#pragma once

#include <cstdint>

#include "tavd/attributes.h"

namespace tavdhost {

inline constexpr std::int16_t kModelIds[] = {
    TAVD_ATT_MODEL_ID, TAVD_ATT_MODEL_ID_SECOND};  // the second where the first is absent or empty
inline constexpr std::int16_t kParameterTables[] = {TAVD_ATT_PAR1_TABLE, TAVD_ATT_PAR2_TABLE};

}  // namespace tavdhost
