#include "attributes.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tavdsrv {

namespace {

struct ItemSize {
  std::int16_t attribute;
  std::uint8_t bytes;
};

// Attributes that hold numbers or ids, by rising number, with the bytes of one item.
constexpr std::array kItemSizes = std::to_array<ItemSize>({
    {1049, 2},   // usesUTF8: int16
    {1102, 2},   // d: int16 each
    {1110, 2},   // shapedata: int16 each
    {1150, 2},   // sizingmode: int16
    {1302, 4},   // lwsizecoef: float
    {1604, 30},  // memberids: raw object id
    {1649, 20},  // hdd: int16 kind, b; float qvmin, qvmax, dpmin, dpmax
    {1650, 22},  // flowheader: int16 kind, b, h; float qvmin, qvmax, dpmin, dpmax
    {1651, 8},   // qvdpref: float qvref, dpref
    {1652, 12},  // damperpoints: float pos, qv, dp
    {1653, 16},  // lwpoints: float qv, dp; uint8 lw[8]
    {1654, 8},   // dlw: uint8 dlw[8]
    {1655, 12},  // dlwpoints: float pos; uint8 dlw[8]
    {1657, 8},   // qvdppoints: float qv, dp
    {1658, 16},  // QvDpLimits: float qvmin, qvmax, dpmin, dpmax
    {1659, 8},   // qvL2: float qv, L2
    {1660, 14},  // parL2: char value[6]; float qv, L2
    {1661, 18},  // par1table: char value[6]; float dk; int16 dlw, ddlw; float factor
    {1662, 18},  // par2table: as par1table
    {1666, 12},  // fancurve: float qv, dp, aux
    {1670, 4},   // intpair: two int16
    {1671, 8},   // floatpair: two float
});

struct Range {
  std::int16_t first;
  std::int16_t last;
};

// Attributes that hold text.
constexpr std::array kTexts = std::to_array<Range>({
    {1501, 1501},  // pcode_alt2
    {1503, 1503},  // szManu
    {1505, 1505},  // pcode_alt1
    {1511, 1511},  // szStruct
    {1513, 1513},  // installationdef
    {1514, 1514},  // parnames
    {1525, 1525},  // tvmAtt
    {1562, 1562},  // pcode_default
    {1669, 1669},  // tvmAtt2
    {1674, 1674},  // att1674
    {8500, 8533},  // web links by market
    {9500, 9533},  // product codes by market
    {9550, 9594},  // descriptions by language
});

}  // namespace

std::int16_t item_count(std::int16_t attribute, std::size_t length) {
  const auto* found =
      std::lower_bound(kItemSizes.begin(), kItemSizes.end(), attribute,
                       [](const ItemSize& row, std::int16_t id) { return row.attribute < id; });
  if (found == kItemSizes.end() || found->attribute != attribute) return 1;
  constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::min(length / found->bytes, kMost));
}

bool is_text(std::int16_t attribute) {
  return std::any_of(kTexts.begin(), kTexts.end(), [attribute](Range range) {
    return attribute >= range.first && attribute <= range.last;
  });
}

}  // namespace tavdsrv
