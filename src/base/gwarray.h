// The one growable array: items of a fixed size, held by value in one block that grows by exactly one item
// per append. The record `gwarray` is part of the interface (tavd/types.h).
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

inline constexpr std::int32_t kIndexOutside = -1;
inline constexpr std::int32_t kOutOfMemory = -2;
inline constexpr std::int32_t kItemSizesDiffer = -3;

void gwarray_init(gwarray* array, std::int32_t itemsize);
void gwarray_release(gwarray* array);  // zeroes the record; harmless on a zero record
void gwarray_reset(gwarray* array);    // empties, keeps the item size
std::int32_t gwarray_append(gwarray* array, const void* item);
std::int32_t gwarray_append_array(gwarray* array, const gwarray* other);
std::int32_t gwarray_insert(gwarray* array, std::int32_t index, const void* item);
std::int32_t gwarray_set(gwarray* array, std::int32_t index, const void* item);
std::int32_t gwarray_remove(gwarray* array, std::int32_t index);
std::int32_t gwarray_get(const gwarray* array, std::int32_t index, void* item);  // outside: -1, item zeroed

// Tells who wants to know that an array was initialised (1) or released (-1): the debug monitor while it is
// open. Null: nobody.
using gwarrayobserver = void (*)(std::int32_t change);
void gwarray_observe(gwarrayobserver observer);

}  // namespace tavd
