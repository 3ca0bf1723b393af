// The texts of a product record, by the attributes that hold those of a market or a language.
#pragma once

#include <cstdint>

#include "tavd/tavb.h"
#include "tavd/types.h"

namespace tavd {

// As tavdf_copyproductcodew, for a market whose code is in this attribute.
void copy_product_code(std::int16_t db, tavb_rec rec, std::int16_t market, tavd_wchar* dest,
                       std::int32_t destLen);

// A text without fallback, all of the room cleared behind it; an `attribute` of 0 is none.
void copy_plain_text(std::int16_t db, tavb_rec rec, std::int16_t attribute, tavd_wchar* dest,
                     std::int32_t destLen);

}  // namespace tavd
