/* Duct sizes: comparison, derived sizes and text form of a DuctSize.
 *
 * All pointers are to storage of the caller and none may be null. Nothing
 * keeps state; calls on different records may run at the same time.
 *
 * Values of `shape` other than 0 and 1 count as round for
 * ewads_is_circular, ewads_is_rectangular and the two writers of texts, and as
 * rectangular for the derived sizes.
 *
 * Negative measures are not refused. A round size gives its negative diameter
 * as diameter and diagonal, and has the area of the positive one. A rectangle
 * with one negative side has a negative area, hence no velocity and no
 * equivalent diameter; with both sides negative it has the area, the diagonal
 * and the equivalent diameter of the positive one, but no perimeter.
 *
 * Arguments, where a function says nothing else:
 *   ds        the size
 *   ds1, ds2  two sizes
 *   dst       the size to be written
 *   src       the size to be copied
 */
#ifndef TAVD_EWADS_H
#define TAVD_EWADS_H

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* From ewads_sscanf: a number is missing. */
enum { EWADS_NO_SIZE = -1 };

/* Room that the writers of texts need, in characters with the terminator. */
enum { EWADS_TEXT_CHARS = 14 };

/* Whether `shape` is not 1, and whether it is. */
TAVD_API bool ewads_is_circular(const DuctSize* ds);
TAVD_API bool ewads_is_rectangular(const DuctSize* ds);

/* 1 if shape, b and h are all equal, else 0. */
TAVD_API int ewads_equal_size(const DuctSize* ds1, const DuctSize* ds2);

/* 1 if one side of the first size is at least as large as both sides of the
 * second, in either orientation; else 0. Shapes are not read: a round size
 * takes part with the `h` that it holds. */
TAVD_API int ewads_greater_b_or_h(const DuctSize* ds1, const DuctSize* ds2);

/* Equivalent diameter, mm: that of the circle of equal area. 0 for a rectangle
 * without area or with a negative one. */
TAVD_API float ewads_dekv(const DuctSize* ds);

/* Hydraulic diameter, mm: four times the area over the perimeter, negative where
 * one side is negative and the perimeter is not. 0 for a rectangle whose
 * perimeter is 0 or negative. */
TAVD_API float ewads_dhydr(const DuctSize* ds);

/* Diagonal of a rectangle, rounded to whole mm, at most 32767; the diameter of
 * a round duct. */
TAVD_API int16_t ewads_diagonal(const DuctSize* ds);

/* Cross section, m2; negative for a rectangle with one negative side. */
TAVD_API float ewads_m2(const DuctSize* ds);

/* Air velocity, m/s, at the flow `qv`, l/s. 0 where the cross section is 1 mm2
 * or less, negative ones included. */
TAVD_API float ewads_vms(const DuctSize* ds, double qv);

/* Copies all three fields; the two may be the same record or overlap. */
TAVD_API void ewads_copy(DuctSize* dst, const DuctSize* src);

/* Exchanges b and h; the shape stays. */
TAVD_API void ewads_swap(DuctSize* ds);

/* Writes the size as text and returns `buffer`: "400x200" for a rectangle,
 * "160" for any other shape. At most EWADS_TEXT_CHARS characters. */
TAVD_API char* ewads_sprintf(const DuctSize* ds, char* buffer);
TAVD_API tavd_wchar* ewads_swprintf(const DuctSize* ds, tavd_wchar* buffer);

/* Reads a size from text: "160" or "400x200", with "x" or "X". Returns 0, or
 * EWADS_NO_SIZE. Blanks in front of a number are skipped, anything
 * behind it is ignored; a number beyond 16 bits is held at their end.
 *
 * `text` is changed: its first "X" becomes "x", and its first "x" a terminator.
 * A round size gets h = b. After EWADS_NO_SIZE a `b` that was read stays in `ds`, shape
 * and h keep what they were. */
TAVD_API int ewads_sscanf(char* text, DuctSize* ds);
TAVD_API int ewads_swscanf(tavd_wchar* text, DuctSize* ds);

TAVD_EXTERN_C_END

#endif
