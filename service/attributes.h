// What the service knows of attribute numbers: how long an item is, and which attributes are texts.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavdsrv {

// Number of whole items in `length` bytes of the attribute, held at 32767. A text is one item however long,
// and so is the value of a number that the catalogue does not know.
std::int16_t item_count(std::int16_t attribute, std::size_t length);

bool is_text(std::int16_t attribute);

}  // namespace tavdsrv
