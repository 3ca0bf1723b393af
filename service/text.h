// How texts of the database are encoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "service/record.h"
#include "tavd/types.h"

namespace tavdsrv {

// The charset number under which a text is stored as the database's own encoding says. Numbers that are not
// known count as this one too.
inline constexpr std::int32_t kCharsetOfDatabase = 0;

// Whether `charset` is one whose code page depends on the database.
bool depends_on_database(std::int32_t charset);

// The code page of a charset number; `database_is_utf8` says how charset 0 is stored.
unsigned code_page(std::int32_t charset, bool database_is_utf8);

// Writes a stored text as UTF-16 into `capacity` units, with a terminator where there is room behind it.
void write_wide(Bytes text, unsigned page, tavd_wchar* buffer, std::size_t capacity);

// The stored form of a terminated text. False if a character has no place in the code page.
bool encode(const tavd_wchar* text, unsigned page, std::string& encoded);

}  // namespace tavdsrv
