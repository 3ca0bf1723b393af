// The records of an enhanced metafile as drawing operations.
#pragma once

#include <windows.h>

#include <string>

namespace recordings {

// The operations in the order of the records, as docs/recording.md tells. A record that stands for none of
// them is written as "record" and its number.
std::string operations_of(HENHMETAFILE file);

}  // namespace recordings
