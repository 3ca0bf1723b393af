#include "base/gwarray.h"

#include <cstddef>
#include <cstring>
#include <limits>

#include "base/gwmem.h"

namespace tavd {
namespace {

gwarrayobserver array_observer = nullptr;

void observed(std::int32_t change) {
  if (array_observer != nullptr) array_observer(change);
}

bool inside(const gwarray* array, std::int32_t index) {
  return index >= 0 && index < array->count;
}

std::size_t bytes(const gwarray* array, std::int32_t items) {
  return static_cast<std::size_t>(items) * static_cast<std::size_t>(array->itemsize);
}

unsigned char* place(gwarray* array, std::int32_t index) {
  return static_cast<unsigned char*>(array->data) + bytes(array, index);
}

// Byte copies that take an array without bytes: items of size 0 have no place to stand.
void copybytes(void* to, const void* from, std::size_t n) {
  if (n > 0) std::memmove(to, from, n);
}

// Makes room for exactly `items` more. A size beyond 32 bits is memory that cannot be had: the allocator gets
// a size that fails, so that this way of running out is reported like any other.
bool grow(gwarray* array, std::int32_t items) {
  const std::int64_t size = (std::int64_t{array->count} + items) * array->itemsize;
  const bool fits = size >= 0 && size <= std::numeric_limits<std::int32_t>::max() &&
                    array->count <= std::numeric_limits<std::int32_t>::max() - items;
  array->data = gwGrealloc(array->data, fits ? static_cast<std::int32_t>(size) : -1, 0);
  if (array->data == nullptr) array->count = 0;
  return array->data != nullptr;
}

}  // namespace

void gwarray_observe(gwarrayobserver observer) {
  array_observer = observer;
}

void gwarray_init(gwarray* array, std::int32_t itemsize) {
  *array = gwarray{};
  array->itemsize = itemsize;
  observed(1);
}

void gwarray_release(gwarray* array) {
  gwGfree(array->data);
  *array = gwarray{};
  observed(-1);
}

void gwarray_reset(gwarray* array) {
  gwGfree(array->data);
  array->data = nullptr;
  array->count = 0;
}

std::int32_t gwarray_append(gwarray* array, const void* item) {
  if (!grow(array, 1)) return gwError(kOutOfMemory, "gwarray_append() out of memory");
  copybytes(place(array, array->count), item, bytes(array, 1));
  ++array->count;
  return 0;
}

std::int32_t gwarray_append_array(gwarray* array, const gwarray* other) {
  // Read once: an array may be appended to itself.
  const std::int32_t added = other->count;
  if (added <= 0) return 0;
  if (array->itemsize != other->itemsize) return kItemSizesDiffer;
  if (!grow(array, added)) return gwError(kOutOfMemory, "gwarray_append_array() out of memory");
  copybytes(place(array, array->count), other->data, bytes(array, added));
  array->count += added;
  return 0;
}

std::int32_t gwarray_insert(gwarray* array, std::int32_t index, const void* item) {
  if (!grow(array, 1)) return gwError(kOutOfMemory, "gwarray_insert() out of memory");
  // A negative index has no meaning; held at 0 it cannot write in front of the block.
  if (index < 0) index = 0;
  if (index < array->count) {
    copybytes(place(array, index + 1), place(array, index), bytes(array, array->count - index));
  } else {
    index = array->count;
  }
  copybytes(place(array, index), item, bytes(array, 1));
  ++array->count;
  return 0;
}

std::int32_t gwarray_set(gwarray* array, std::int32_t index, const void* item) {
  if (!inside(array, index)) return kIndexOutside;
  copybytes(place(array, index), item, bytes(array, 1));
  return 0;
}

std::int32_t gwarray_remove(gwarray* array, std::int32_t index) {
  if (!inside(array, index)) return kIndexOutside;
  copybytes(place(array, index), place(array, index + 1), bytes(array, array->count - 1 - index));
  --array->count;
  return 0;
}

std::int32_t gwarray_get(const gwarray* array, std::int32_t index, void* item) {
  if (!inside(array, index)) {
    if (array->itemsize > 0) std::memset(item, 0, bytes(array, 1));
    return kIndexOutside;
  }
  copybytes(item, static_cast<const unsigned char*>(array->data) + bytes(array, index), bytes(array, 1));
  return 0;
}

}  // namespace tavd
