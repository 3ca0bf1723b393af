#include "service/attributes.h"

#include <algorithm>
#include <array>
#include <limits>

#include "tavd/attributes.h"

namespace tavdsrv {

namespace {

struct ItemSize {
  std::int16_t attribute;
  std::uint8_t bytes;
};

// Attributes that hold numbers or ids, by rising number, with the bytes of one item.
constexpr std::array kItemSizes = std::to_array<ItemSize>({
    {TAVD_ATT_USES_UTF8, 2},       // int16
    {TAVD_ATT_DIAMETERS, 2},       // int16 each
    {TAVD_ATT_SHAPE_DATA, 2},      // int16 each
    {TAVD_ATT_SIZING_MODE, 2},     // int16
    {TAVD_ATT_LW_SIZE_COEF, 4},    // float
    {TAVD_ATT_MEMBER_IDS, 30},     // raw object id
    {TAVD_ATT_OLD_HEADER, 20},     // int16 kind, b; float qvmin, qvmax, dpmin, dpmax
    {TAVD_ATT_FLOW_HEADER, 22},    // int16 kind, b, h; float qvmin, qvmax, dpmin, dpmax
    {TAVD_ATT_QVDP_REF, 8},        // float qvref, dpref
    {TAVD_ATT_DAMPER_POINTS, 12},  // float pos, qv, dp
    {TAVD_ATT_LW_POINTS, 16},      // float qv, dp; uint8 lw[8]
    {TAVD_ATT_DLW, 8},             // uint8 dlw[8]
    {TAVD_ATT_DLW_POINTS, 12},     // float pos; uint8 dlw[8]
    {TAVD_ATT_QVDP_POINTS, 8},     // float qv, dp
    {TAVD_ATT_QVDP_LIMITS, 16},    // float qvmin, qvmax, dpmin, dpmax
    {TAVD_ATT_QV_L2, 8},           // float qv, L2
    {TAVD_ATT_PAR_L2, 14},         // char value[6]; float qv, L2
    {TAVD_ATT_PAR1_TABLE, 18},     // char value[6]; float dk; int16 dlw, ddlw; float factor
    {TAVD_ATT_PAR2_TABLE, 18},     // as par1table
    {TAVD_ATT_FAN_CURVE, 12},      // float qv, dp, aux
    {TAVD_ATT_INT_PAIR, 4},        // two int16
    {TAVD_ATT_FLOAT_PAIR, 8},      // two float
});

struct Range {
  std::int16_t first;
  std::int16_t last;
};

// Attributes that hold text.
constexpr std::array kTexts = std::to_array<Range>({
    {TAVD_ATT_CODE_THIRD, TAVD_ATT_CODE_THIRD},
    {TAVD_ATT_MAKER, TAVD_ATT_MAKER},
    {TAVD_ATT_CODE_SECOND, TAVD_ATT_CODE_SECOND},
    {TAVD_ATT_ID_TEMPLATE, TAVD_ATT_ID_TEMPLATE},
    {TAVD_ATT_INSTALLATION, TAVD_ATT_INSTALLATION},
    {TAVD_ATT_PAR_NAMES, TAVD_ATT_PAR_NAMES},
    {TAVD_ATT_MODEL_ID, TAVD_ATT_MODEL_ID},
    {TAVD_ATT_CODE_DEFAULT, TAVD_ATT_CODE_DEFAULT},
    {TAVD_ATT_MODEL_ID_SECOND, TAVD_ATT_MODEL_ID_SECOND},
    {TAVD_ATT_TEXT_1674, TAVD_ATT_TEXT_1674},
    {TAVD_ATT_LOWEST_WEBLINK, TAVD_ATT_HIGHEST_WEBLINK},          // web links by market
    {TAVD_ATT_LOWEST_CODE, TAVD_ATT_HIGHEST_CODE},                // product codes by market
    {TAVD_ATT_LOWEST_DESCRIPTION, TAVD_ATT_HIGHEST_DESCRIPTION},  // descriptions by language
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
