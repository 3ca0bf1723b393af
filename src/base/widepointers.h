// How long addresses are. The sizes that the interface tells of records with handles in them are those where
// addresses take 8 bytes; in WebAssembly, where they take 4, such a record is shorter.
#pragma once

namespace tavd {

inline constexpr bool kWidePointers = sizeof(void*) == 8;

}  // namespace tavd
