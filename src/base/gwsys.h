// A process-wide block for embedders: module handle, lock, cached pens and brushes of the system colours.
#pragma once

#include <cstdint>

#include "base/gwgdi.h"
#include "tavd/types.h"

namespace tavd {

void gwInit(tavd_hmodule instance);
void gwExit();
void gwLock();  // nothing before gwInit
void gwUnlock();
gwobject gwSysPen(std::int32_t index);  // system colour index; 20 places, then the last one
gwobject gwSysBrush(std::int32_t index);
tavd_hmodule gwmodule();  // what gwInit stored, null before

}  // namespace tavd
