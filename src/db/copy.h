// Copying of model records.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

// Copies the model record of class "TVM" that `rec` names, with its ahm block. Nothing if it names none, or
// one that `srcdb` does not have.
void copy_model(std::int16_t srcdb, std::int16_t dstdb, tavb_rec rec);

}  // namespace tavd
