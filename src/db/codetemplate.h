// The template language of product codes and ids; tavd/codes.h describes its fields.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

// Fills the sizes into a terminated template. `dest` is a field of `destLen` bytes, 0 or more: blank-filled,
// not terminated. Returns a TAVD_CODE_ result; after an error `dest` keeps what was written so far.
std::int16_t fill_code_template(char* dest, std::int32_t destLen, const char* code_template,
                                const DuctSize& ds1, const DuctSize& ds2);

}  // namespace tavd
