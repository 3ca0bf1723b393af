/* Product codes and product ids with a duct size filled in.
 *
 * A product that comes in sizes has one record; its order code and its id in
 * one size are made from a template, literal text with fields in braces:
 *
 *   { letter [connection] [:...] [digits] [unit] }      without blanks
 *
 *   letter      D diameter of a round duct, B width and H height of any other;
 *               lower case is accepted
 *   connection  1 to 9: 1, and none, reads `ds1`, every other digit `ds2`
 *   :           any number of them, also none, without a meaning of their own;
 *               but a digit behind the letter is the connection, so one that
 *               is to count digits needs a ':' or a connection before it
 *   digits      0 to 9, at least so many digits, zeros in front; a unit must
 *               follow
 *   unit        mm (if none stands), cm or dm: the size in mm over 1, 10 or
 *               100, truncated towards zero
 *
 * With a round duct of 125 mm, "ABC-{D}" gives "ABC-125", "{D:4cm}" "0012" and
 * "{D1dm}" "1". A value of 0 without a number of digits writes nothing.
 *
 * `ds1` is the size of the product's first connection, `ds2` of the second,
 * both in mm: a `shape` of 0 is round with its diameter in `b`, any other
 * rectangular. A null size counts as all zero, hence round; a null template as
 * empty. A null `dest`, or a `destLen` below 1, writes nothing and gives 0.
 *
 * Arguments, where a function says nothing else:
 *   db       database handle
 *   rec      product record; stays the host's, null gives an empty id
 *   destLen  room in `dest`, with the terminator where there is one
 *   ds1      size of the first connection, mm; may be null
 *   ds2      size of the second connection, mm; may be null
 */
#ifndef TAVD_CODES_H
#define TAVD_CODES_H

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* What the builders of codes answer. */
enum {
  TAVD_CODE_OK = 0,             /* the template was used up, or `dest` is full: what
                                   stands behind that place is not looked at */
  TAVD_CODE_BAD_SIZE = -1,      /* the letter does not suit the duct, D a rectangular
                                   or B and H a round one; or the template ends
                                   behind '{' */
  TAVD_CODE_BAD_LETTER = -2,    /* the letter is none of D, B, H; or behind it
                                   stands none of ':', '}', 1 to 9, the end of
                                   the template included */
  TAVD_CODE_UNCLOSED = -3,      /* the template ends inside a field; or no '}'
                                   follows the unit */
  TAVD_CODE_DIGITS_AT_END = -4, /* the template ends directly behind digits */
  TAVD_CODE_BAD_UNIT = -5       /* neither mm nor cm nor dm where a unit must stand */
};

/* Room that the forms without `destLen` need. */
enum {
  TAVD_CODE_WIDTH = 30,           /* bytes, tavd_build_code_ds: a field, without
                                     a terminator */
  TAVD_PRODUCTID_CHARS = 31,      /* characters, tavd_build_productId_ds: 30 and
                                     the terminator */
  TAVD_CODE_WIDE_CHARS = 256,     /* wide characters with the terminator,
                                     tavd_build_code_dsw */
  TAVD_PRODUCTID_WIDE_CHARS = 256 /* wide characters with the terminator,
                                     tavd_build_productId_dsw */
};

/* Builds a code into a FIELD: `destLen` bytes, filled up with blanks, WITHOUT a
 * terminator. tavd_build_code_ds builds one of 30 bytes. A number that does not
 * fit is cut. After an error `dest` holds what was written so far, and blanks.
 *   dest          room for `destLen` bytes
 *   codeTemplate  terminated; bytes outside of fields are copied as they are
 * Returns one of the codes above. */
TAVD_API int16_t tavd_build_code_ds(char* dest, const char* codeTemplate, const DuctSize* ds1,
                                    const DuctSize* ds2);
TAVD_API int16_t tavd_build_code_ds2(char* dest, int32_t destLen, const char* codeTemplate,
                                     const DuctSize* ds1, const DuctSize* ds2);

/* Builds a code into a terminated wide text without trailing blanks, after an
 * error what was written so far. Widths count in UTF-8: the template is cut to
 * 255 bytes, the code of tavd_build_code_dsw to 30, that of
 * tavd_build_code_dsw2 to 255; a character that a cut would divide is left out.
 *   dest          room for `destLen` characters with the terminator, or for
 *                 TAVD_CODE_WIDE_CHARS. Behind the terminator characters
 *                 inside that room may have been written
 *   codeTemplate  terminated
 * Returns one of the codes above. */
TAVD_API int16_t tavd_build_code_dsw(tavd_wchar* dest, const tavd_wchar* codeTemplate, const DuctSize* ds1,
                                     const DuctSize* ds2);
TAVD_API int16_t tavd_build_code_dsw2(tavd_wchar* dest, int32_t destLen, const tavd_wchar* codeTemplate,
                                      const DuctSize* ds1, const DuctSize* ds2);

/* Builds the product id in a size: from the template in attribute 1511 of
 * `rec`, or, if there is none or it cannot be used, the record's own object id.
 * (Characters that a template wrote behind the 30th before it failed then stand
 * behind the id's 30.)
 *   dest  room for `destLen` characters with the terminator, or for
 *         TAVD_PRODUCTID_CHARS; all of that room is written. Terminated,
 *         without trailing blanks, in the database's own encoding
 * At most 200 bytes of template and 30 of id are used by
 * tavd_build_productId_ds, 256 and 256 by tavd_build_productId_ds2.
 * Returns 0. */
TAVD_API int tavd_build_productId_ds(int16_t db, char* dest, tavb_rec rec, const DuctSize* ds1,
                                     const DuctSize* ds2);
TAVD_API int tavd_build_productId_ds2(int16_t db, char* dest, int32_t destLen, tavb_rec rec,
                                      const DuctSize* ds1, const DuctSize* ds2);

/* The same as wide text, made from the narrow id of at most 30 (dsw) or 255
 * bytes (dsw2). Attribute 1049 of the database's record "000", "FILEHEADER"
 * says its encoding: 0, 2 or absent the system's default code page, 1 UTF-8.
 * With any other value nothing is converted: dsw2 gives an empty text, dsw
 * leaves what stands in `dest`, without its trailing blanks and cut to the
 * room, so clear `dest` before the call.
 *   dest  room for `destLen` characters with the terminator, or for
 *         TAVD_PRODUCTID_WIDE_CHARS
 * Returns 0. */
TAVD_API int tavd_build_productId_dsw(int16_t db, tavd_wchar* dest, tavb_rec rec, const DuctSize* ds1,
                                      const DuctSize* ds2);
TAVD_API int tavd_build_productId_dsw2(int16_t db, tavd_wchar* dest, int32_t destLen, tavb_rec rec,
                                       const DuctSize* ds1, const DuctSize* ds2);

TAVD_EXTERN_C_END

#endif
