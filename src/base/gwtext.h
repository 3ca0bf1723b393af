// Text helpers that the whole library shares. Narrow functions have wide twins that do the same on 16-bit
// characters. All touch only their arguments.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

// Length of `s` within its first `n` characters, trailing blanks and NULs not counted; the text ends at the
// first NUL. 0 if `n` is 0 or less.
std::int32_t gwstrtrimlen(const char* s, std::int32_t n);
std::int32_t gwwcstrimlen(const tavd_wchar* s, std::int32_t n);

// Zeroes n + 1 characters of `dest`, then copies gwstrtrimlen(s, n) characters. Returns `dest`.
char* gwstrtrimcpy(char* dest, const char* s, std::int32_t n);
tavd_wchar* gwwcstrimcpy(tavd_wchar* dest, const tavd_wchar* s, std::int32_t n);

// Cuts trailing blanks in place: one terminator at the first of them, nothing behind it is touched.
void gwrtrim(char* s);
void gwrtrimw(tavd_wchar* s);

// Whether `s` is a plain unsigned decimal with an optional point, blanks around it allowed: 1 or 0. A sign or
// an exponent is no number here.
int gwisnumber(const char* s);
int gwisnumberw(const tavd_wchar* s);

// Field `index` (from 0) of a text whose fields are parted by `sep`, into `dest` of `size` bytes. Returns
// where the next field starts, or null with an empty `dest` if there is no such field; an empty last field
// is none.
const char* gwstrfield(char* dest, const char* s, char sep, std::int32_t index, std::int32_t size);
const tavd_wchar* gwwcsfield(tavd_wchar* dest, const tavd_wchar* s, tavd_wchar sep, std::int32_t index,
                             std::int32_t size);

// Upper case of a to z and of the Latin-1 letters 0xE4, 0xF6 and 0xE5; every other byte stays.
char gwtoupper(char c);

// Longest line of `s`; lines end at a carriage return, only characters from 0x20 up count.
std::int32_t gwmaxlinelen(const char* s);

// Compares without regard to the case of ASCII letters, as unsigned bytes: negative, 0 or positive.
int gwstricmp(const char* a, const char* b);

// Copies a terminated text into a field of `size` characters, cut where the field ends, always terminated.
// Null counts as empty.
void gwstrcpyfield(char* field, const char* s, std::int32_t size);
void gwwcscpyfield(tavd_wchar* field, const tavd_wchar* s, std::int32_t size);

}  // namespace tavd
