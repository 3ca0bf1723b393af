// The one throw length diagram of the process, on which the exported functions act. Tests look at it; nothing
// that builds or draws does.
#pragma once

#include "diagram/throwdiagram.h"

namespace tavd {

extern ThrowDiagram L2dg;
extern ThrowChoices L2dg_choices;

}  // namespace tavd
