// Numbers of the attributes that product access reads or writes, and the widths of ids.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavd {

inline constexpr std::int16_t kAttUsesUtf8 = 1049;          // int16, of the file header alone
inline constexpr std::int16_t kAttDiameters = 1102;         // int16 items, mm
inline constexpr std::int16_t kAttShapeData = 1110;         // int16 words
inline constexpr std::int16_t kAttSizingMode = 1150;        // int16
inline constexpr std::int16_t kAttCodeAlternative2 = 1501;  // text
inline constexpr std::int16_t kAttMaker = 1503;             // text
inline constexpr std::int16_t kAttCodeAlternative1 = 1505;  // text
inline constexpr std::int16_t kAttCodeTemplate = 1511;      // text
inline constexpr std::int16_t kAttInstallation = 1513;      // text
inline constexpr std::int16_t kAttModelId = 1525;           // text, object id of class "TVM"
inline constexpr std::int16_t kAttDefaultCode = 1562;       // text
inline constexpr std::int16_t kAttMemberIds = 1604;         // items of 30 characters
inline constexpr std::int16_t kAttOldHeader = 1649;         // 20 bytes: int16 kind, b; limits
inline constexpr std::int16_t kAttFlowHeader = 1650;        // 22 bytes: int16 kind, b, h; limits
inline constexpr std::int16_t kAttModelIdFallback = 1669;   // text, as 1525
inline constexpr std::int16_t kAttDefaultWebLink = 8529;    // text

inline constexpr std::size_t kClassChars = 3;
inline constexpr std::size_t kIdChars = 30;
// Room that the service wants for the ids it writes.
inline constexpr std::size_t kClassRoom = 8;
inline constexpr std::size_t kIdRoom = 32;

}  // namespace tavd
