// What several files name of a product's record: the lengths of its ids and the numbers of attributes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavdhost {

// Bytes in the database, blank-padded.
inline constexpr std::size_t kClassChars = 3;
inline constexpr std::size_t kIdChars = 30;

inline constexpr std::int16_t kUsesUtf8 = 1049;    // on the file header alone
inline constexpr std::int16_t kSizingMode = 1150;  // what a record is in a family
inline constexpr std::int16_t kMemberIds = 1604;   // of a family by list
inline constexpr std::int16_t kProductIdTemplate = 1511;
inline constexpr std::int16_t kModelIds[] = {1525, 1669};  // the second where the first is absent or empty
inline constexpr std::int16_t kParameterTables[] = {1661, 1662};

}  // namespace tavdhost
