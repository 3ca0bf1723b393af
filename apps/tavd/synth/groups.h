// The records of a synthetic database: which there are, and in which order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "catalogue/entry.h"
#include "product/text_codec.h"

namespace tavdhost {

// Makes exactly this many records, in the order of the database, one at a time: memory does not grow with
// their number. First comes the file header; then, class by class, groups of records, and 1 % models.
//
// A group is a family by the "*" in its id (2 to 40 sizes), a family by a list of ids, a product set (main
// record, sub records and exact records) or a single product. Where there is room the first group of each
// class is a family of 40 sizes with the main record "Q0000000-*"; the last one ends where the class is full.
void synthesize(const TextCodec& codec, std::size_t records, std::uint64_t seed,
                const std::function<void(const Entry&)>& take);

}  // namespace tavdhost
