// Attributes of a product's record that go together.
#pragma once

#include <cstdint>

#include "tavd/attributes.h"

namespace tavdhost {

inline constexpr std::int16_t kModelIds[] = {
    TAVD_ATT_MODEL_ID, TAVD_ATT_MODEL_ID_SECOND};  // the second where the first is absent or empty
inline constexpr std::int16_t kParameterTables[] = {TAVD_ATT_PAR1_TABLE, TAVD_ATT_PAR2_TABLE};

// What a calculation reads of a record, beside its size.
inline constexpr std::int16_t kFlowDataAttributes[] = {
    TAVD_ATT_LW_SIZE_COEF, TAVD_ATT_PAR_NAMES,     TAVD_ATT_OLD_HEADER,  TAVD_ATT_FLOW_HEADER,
    TAVD_ATT_QVDP_REF,     TAVD_ATT_DAMPER_POINTS, TAVD_ATT_LW_POINTS,   TAVD_ATT_DLW,
    TAVD_ATT_DLW_POINTS,   TAVD_ATT_QVDP_POINTS,   TAVD_ATT_QVDP_LIMITS, TAVD_ATT_QV_L2,
    TAVD_ATT_PAR_L2,       TAVD_ATT_PAR1_TABLE,    TAVD_ATT_PAR2_TABLE,  TAVD_ATT_FAN_CURVE};

}  // namespace tavdhost
