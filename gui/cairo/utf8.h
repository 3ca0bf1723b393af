// Texts as pictures hold them.
#pragma once

#include <cstddef>
#include <string>

#include "tavd/types.h"

namespace tavdcairo {

// Terminators within the text become blanks.
std::string to_utf8(const tavd_wchar* text, std::size_t length);

// The host's text, null for none, with a replacement for what is no UTF-8: it would spoil the whole file.
std::string clean_utf8(const char* text);

}  // namespace tavdcairo
