// Whether a file exists.
#pragma once

#include "tavd/types.h"

namespace tavd {

bool gwfile_exists(const char* path);         // in the system's encoding
bool gwfile_existsw(const tavd_wchar* path);  // UTF-16

}  // namespace tavd
