/* Product records: opening a database, reading a product's size, shape and
 * texts, copying and deleting whole products.
 *
 * `db` is a database handle of tavdf_open_database; `rec` is a record handle
 * of the service (tavd/tavb.h). The functions that take a `rec` leave it with
 * its owner and keep nothing of it. Nothing here reports a failure: where an
 * attribute is absent the next source is asked, in the order that each function
 * gives.
 *
 * Null arguments are allowed. A null `rec` counts as a record without
 * attributes, and without an id. With a null destination nothing is written,
 * and the answer is that of a record that has nothing: -1 for a size or an
 * installation text, 0 words of a shape. A null path, class or object id names
 * nothing: -1.
 *
 * Arguments, where a function says nothing else:
 *   db            database handle
 *   srcdb, dstdb  database handles of source and destination
 *   rec           product record; stays the host's
 *   dest          receives the text
 *   destLen       room in `dest`, characters with the terminator
 *   classId       class of the record, 3 characters
 *   objId         object id, up to 30 characters
 */
#ifndef TAVD_TAVDF_H
#define TAVD_TAVDF_H

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* Words that tavdf_load_shapedata and tavdf_check_shapedata may write whatever
 * the given length. */
enum { TAVDF_SHAPE_MIN_WORDS = 10 };

/* What these functions answer besides 0, counts and handles. */
enum {
  TAVDF_NO_DATABASE = -1, /* from opening, in place of a handle */
  TAVDF_OTHER_SIZE = -1,  /* tavdf_load_ductsize: the size, if any, is not from 1650 */
  TAVDF_NO_TEXT = -1,     /* tavdf_load_installationdef: no such text */
  TAVDF_NO_RECORD = -1    /* tavdf_copy_recs, tavdf_delete_recs: no such product */
};

/* Opens the product database at `dbPath`, a terminated path in the system's
 * encoding or UTF-16. `mode` 0 opens what exists, any other value creates the
 * file if it is missing. The path of the vlk file goes along as tavdcore_init
 * (tavdcore_initw for the wide form) stored it. Returns the handle, or
 * TAVDF_NO_DATABASE: no path, or with mode 0 no such file, and the service is
 * not asked (it is for names of databases on a server, TAVB_SERVER_ in
 * tavd/tavb.h); or its refusal, which tavdsrv_lasterror (tavd/tavdsrv.h) gives in
 * words. The library closes no database; tavdsrv_closedatabase does. */
TAVD_API int16_t tavdf_open_database(const char* dbPath, int32_t mode);
TAVD_API int16_t tavdf_open_databasew(const tavd_wchar* dbPath, int32_t mode);

/* How the text of attribute `attId` is stored: one of TAVB_CHARSET_
 * (tavd/tavb.h), for tavbcopywsz. TAVB_CHARSET_DEFAULT for every number that is
 * no text of a market or language. */
TAVD_API int16_t tavdf_charsetId(int16_t attId);

/* Reads the duct size of a product, mm, from the first that exists of: the
 * flow header 1650 (round if its height is 0), the older header 1649 (round),
 * the first diameter of 1102 (round). Otherwise all of `ds` is zero. A round
 * size has its diameter in `h` too.
 * Returns 0 if the size came from 1650, otherwise TAVDF_OTHER_SIZE. That does
 * not mean that the size is missing: a size from 1649 or 1102 is valid. */
TAVD_API int32_t tavdf_load_ductsize(int16_t db, tavb_rec rec, DuctSize* ds);

/* Reads the shape description 1110 and repairs it with tavdf_check_shapedata.
 *   ds         duct size against which margins are resolved, may be null
 *   shapedata  room for at least 10 words, whatever `maxwords` says: the repair
 *              looks at words behind those that were read, and writes to them
 *   maxwords   words to read at most; a negative number counts as 0. With 0,
 *              what stands in `shapedata` is repaired if the product has a shape
 * Returns the number of words, at most `maxwords`, 0 without a shape, which
 * leaves `shapedata` untouched. */
TAVD_API int16_t tavdf_load_shapedata(int16_t db, tavb_rec rec, const DuctSize* ds, int16_t* shapedata,
                                      int16_t maxwords);

/* Completes and converts some kinds of shape descriptions in place; all others
 * pass untouched. shapedata[0] is the kind, the words behind it its dimensions.
 *   104       old form, becomes kind 118 with 10 words
 *   130       a missing length (word 2) becomes 500 mm, a missing word 1 50 mm
 *   140, 150  a missing word 1 becomes 200 mm
 *   181       becomes 180: words 2 and 3 are margins around the duct
 *   183       becomes 182: word 2 is a margin around the duct
 * 181 and 183 need `ds`; with a null one they stay as they are.
 *   shapedata  room for at least 10 words
 *   nsh        number of words, in and out
 * Sums are 16-bit numbers and wrap. Returns 0, also for a null `shapedata` or
 * `nsh`, with which nothing happens. */
TAVD_API int32_t tavdf_check_shapedata(int16_t* shapedata, int16_t* nsh, const DuctSize* ds);

/* Reads the installation text 1513, in the database's narrow encoding, into
 * `buffer` of `capacity` bytes (32767 count at most). A text that fills the
 * buffer is cut there and has no terminator. Returns 0, or TAVDF_NO_TEXT with
 * an empty `buffer` if the product has no such text, and for a null `buffer`.
 * With a `capacity` of 0 or less nothing is written. */
TAVD_API int32_t tavdf_load_installationdef(int16_t db, tavb_rec rec, char* buffer, int32_t capacity);

/* Copies the product code: the first that exists of the market's own attribute
 * (tavdcore_pcodeAttId), 1562, 1505, 1501, and last the object id, all 30
 * characters of it with its trailing blanks: 31 with the terminator. Empty for
 * a null `rec`.
 *   dest     always terminated
 *   destLen  room in characters (bytes in the narrow form), with the
 *            terminator; 0 or less writes nothing
 * The narrow form is in the system's default code page, with "?" for what that
 * lacks, at most 255 characters. The wide form counts bytes in 16 bits: from
 * 32768 characters on the room starts again at 0. */
TAVD_API void tavdf_copyproductcode(int16_t db, tavb_rec rec, char* dest, int32_t destLen);
TAVD_API void tavdf_copyproductcodew(int16_t db, tavb_rec rec, tavd_wchar* dest, int32_t destLen);

/* Copies the description in the user's language (tavdcore_pdescAttId); empty
 * if there is none. Arguments as for the product code. The narrow form copies
 * the PRODUCT CODE instead: narrow lists show the code in their description
 * field. Use the wide form for the text itself. */
TAVD_API void tavdf_copyproductdesc(int16_t db, tavb_rec rec, char* dest, int32_t destLen);
TAVD_API void tavdf_copyproductdescw(int16_t db, tavb_rec rec, tavd_wchar* dest, int32_t destLen);

/* Copies the web link of the market (tavdcore_weblinkAttId); empty if there is
 * none. As with the description, the narrow form copies the PRODUCT CODE. */
TAVD_API void tavdf_copyweblink(int16_t db, tavb_rec rec, char* dest, int32_t destLen);
TAVD_API void tavdf_copyweblinkw(int16_t db, tavb_rec rec, tavd_wchar* dest, int32_t destLen);

/* Copies a product from one open database into another, replacing what is
 * there: the record, its model record of class "TVM" with its ahm block, and,
 * if the record is the main record of a family (attribute 1150 is 1 or 2), all
 * members with their model records. The members' copies get the main record's
 * maker text 1503 (at most 99 bytes) and its model id as 1525 (from 1525 or
 * else 1669, at most 30 characters), where it has them. The source is not
 * changed, unless it is the destination.
 *   classId, objId  of the product, 3 characters and up to 30
 * Returns 0, or TAVDF_NO_RECORD. Failures of the service while saving are not
 * detected. */
TAVD_API int32_t tavdf_copy_recs(int16_t srcdb, int16_t dstdb, const char* classId, const char* objId);

/* Deletes a product: the record and, if it is the main record of a family, all
 * members. Model records stay. Returns 0, or TAVDF_NO_RECORD. */
TAVD_API int32_t tavdf_delete_recs(int16_t db, const char* classId, const char* objId);

TAVD_EXTERN_C_END

#endif
