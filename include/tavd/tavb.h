/* The product-database service: 17 functions that the library imports from
 * libtavdsrv.so (tavdsrv.dll). Another implementation of these functions, over
 * any storage, may take that file's place.
 *
 * A database is a store of records. A record belongs to a class (exactly 3
 * characters), has an object id that is unique in its class (up to 30
 * characters, stored blank-padded to 30) and holds numbered attributes: arrays
 * of fixed-size items, or texts. It can carry one attached binary block, the
 * ahm block. Records are ordered by class, then by object id in byte order.
 *
 * None of these functions closes a database or tells why it failed: a host that
 * wants either of libtavdsrv calls tavdsrv_closedatabase and tavdsrv_lasterror
 * (tavd/tavdsrv.h). Records and blocks are given back once: a second time is
 * forbidden, as it is with free, and so is any call with what was given back.
 *
 * Class ids are read as 3 characters; no terminator need follow. Object ids
 * are read as at most 30 characters, ending early at a NUL; trailing blanks
 * and NULs do not count.
 *
 * Numeric attributes are packed and little-endian, floats 32-bit IEEE. Texts
 * are in the database's narrow encoding: windows-1252, or UTF-8 where
 * attribute 1049 of its record "000", "FILEHEADER" is 1.
 *
 * A record takes 6 bytes for each attribute and the attributes' values. Of
 * that, and of an ahm block, this service stores at most 67108864 bytes.
 *
 * A handle that is no open database finds and stores nothing. Null records,
 * ids and destinations are allowed everywhere: a null record has no attribute,
 * a null id counts as empty, a null destination is left out. Any number of
 * records may be open. Threads may share a database, but not a record.
 *
 * Arguments, where a function says nothing else:
 *   db        handle of an open database
 *   mode      how to open, or how to look
 *   dbPath    terminated path, in the system's encoding or UTF-16
 *   classId   class of the record, 3 characters
 *   objId     object id, up to 30 characters
 *   rec       record handle
 *   attId     number of the attribute
 *   buffer    receives the value
 *   count     receives the number of items
 *   capacity  bytes that `buffer` holds
 *   data      the bytes to store
 *   length    bytes; where the function answers, receives them
 *   block     what the service handed out, or what is to be stored
 *   classIdx  receives the class id
 *   objIdx    the raw object id
 */
#ifndef TAVD_TAVB_H
#define TAVD_TAVB_H

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* In place of a database handle: there is none. */
enum { TAVB_NO_DATABASE = -1 };

/* How a text is stored, for tavbcopywsz. */
enum {
  TAVB_CHARSET_DEFAULT = 0,          /* windows-1252, or UTF-8 where the database says so */
  TAVB_CHARSET_UTF8 = 1,             /* UTF-8 */
  TAVB_CHARSET_BALTIC = 6,           /* windows-1257 */
  TAVB_CHARSET_CENTRAL_EUROPEAN = 7, /* windows-1250 */
  TAVB_CHARSET_CYRILLIC = 8          /* windows-1251 */
};

/* How tavbfindrec looks. */
enum {
  TAVB_FIND_EXACT = 0, /* this class and object id, or null */
  TAVB_FIND_FROM = 1   /* the first record at or after the key, or null past the end */
};

/* A name that begins with one of these is that of a database on a server of
 * PostgreSQL, in the two forms that its client library takes:
 * "postgresql://user@host/database" and "host=... dbname=...". Every other name
 * is a file's. */
#define TAVB_SERVER_URI "postgresql:"
#define TAVB_SERVER_HOST "host="

/* Opens the database at dbPath. `mode` 0 opens what exists; any other value
 * creates the database if the file is missing; its name may have at most 247
 * bytes (on Windows characters), its path 4095 (on Windows 259). `vlkFile` may
 * be null and is not needed by this service. A file, or a folder, that may not
 * be written is opened for reading; saving then changes nothing. Returns the
 * database handle, 1 or more, or TAVB_NO_DATABASE: no such file, or a file that
 * is no product database, which is left untouched; tavdsrv_lasterror tells
 * which. The database stays open until tavdsrv_closedatabase, or the end of the
 * process.
 *
 * Of a server the database itself must be there; a `mode` other than 0 makes the
 * tables in it. A connection that is lost fails the call that meets it, and the
 * next one connects again. */
TAVD_API int16_t tavbopendatabase(const char* vlkFile, const char* dbPath, int32_t mode);
TAVD_API int16_t tavbopendatabasew(const tavd_wchar* vlkFile, const tavd_wchar* dbPath, int32_t mode);

/* Finds a record, by one of TAVB_FIND_. The first record at or after the key in
 * the record order may lie in a later class. The caller owns the handle until
 * tavbreleaserec. Returns the handle or null. */
TAVD_API tavb_rec tavbfindrec(int16_t db, const char* classId, const char* objId, int16_t mode);

/* The next record after `rec` in the record order, a new handle, or null
 * after the last one. `rec` stays valid and stays the caller's; the record
 * itself need not be stored any more. */
TAVD_API tavb_rec tavbnextrec(int16_t db, tavb_rec rec);

/* Gives a record handle back, once. Null is allowed. */
TAVD_API void tavbreleaserec(tavb_rec rec);

/* Writes the class id (3 characters and a terminator, room for 8) and the raw
 * object id (30 characters, blank-padded, no terminator, room for 32). Either
 * destination may be null. A null record gives an empty class id and a blank
 * object id. */
TAVD_API void tavbgetID(int16_t db, tavb_rec rec, char* classIdx, char* objIdx);

/* Writes the text form of a raw object id: trailing blanks removed,
 * terminated, room for 31. `sz` may be `objIdx` itself. */
TAVD_API void tavbobjIDtosz(int16_t db, const char* objIdx, char* sz);

/* Copies an attribute of the record. `count`, if not null, always receives
 * the number of whole items that are stored, at most 32767, 0 if the attribute
 * is absent. A text is one item, and so is an attribute whose number the
 * service does not know. With a buffer at most `capacity` bytes are copied
 * (none if it is negative), an absent attribute leaves the buffer untouched,
 * and a text gets a terminator where there is room behind it; nothing else
 * does. With a null buffer and capacity 0 the result is a block with the whole
 * value and a terminator behind it, to be given back with tavbreleaseatt; with
 * a null buffer and any other capacity it only shows that the attribute is
 * there. Returns the buffer or the block, without either an address that is not
 * to be read; null if the attribute is absent. */
TAVD_API void* tavbcopyatt(int16_t db, tavb_rec rec, int16_t attId, int16_t* count, void* buffer,
                           int16_t capacity);

/* Copies a text attribute as UTF-16. `capacity` is in bytes. `charset` is one of
 * TAVB_CHARSET_; any other number counts as 0. A terminator follows where there
 * is room behind the text, so a buffer that must end in one is given two bytes
 * short and zeroed before. A surrogate pair that does not fit is left out whole. Returns the
 * buffer, without one an address that is not to be read; null if the attribute
 * is absent, and then leaves the buffer untouched. */
TAVD_API void* tavbcopywsz(int16_t db, tavb_rec rec, int16_t attId, tavd_wchar* buffer, int32_t capacity,
                           int32_t charset);

/* Finds a record and copies an attribute of it as tavbcopyatt does. Returns what
 * that returns; null also if there is no such record. */
TAVD_API void* tavbfindatt(int16_t db, const char* classId, const char* objId, int16_t attId, int16_t* count,
                           void* buffer, int16_t capacity);

/* Frees a block of tavbcopyatt, once. Null is allowed. */
TAVD_API void tavbreleaseatt(void* block);

/* Adds an attribute to the record in memory, replacing one of that number.
 * The store is not touched. `recp` points to the caller's handle, which the
 * call may change. `length` is in bytes, a text's without its terminator; 0
 * makes an attribute that is there and empty. A negative length, or null data
 * with a length, does nothing. */
TAVD_API void tavbinsertatt(int16_t db, tavb_rec* recp, int16_t attId, const void* data, int16_t length);

/* Writes the record into database `db`, which may be another one than the
 * record came from, replacing a record with its class and object id. An ahm
 * block that is stored there under this id stays. Whether this, a deletion
 * or a saving with a block was done, tavdsrv_lasterror tells. */
TAVD_API void tavbsaverec(int16_t db, tavb_rec rec);

/* Removes a record and its ahm block. */
TAVD_API void tavbdeleterec(int16_t db, const char* classId, const char* objId);

/* The ahm block that database `db` holds for the record, and its length in
 * bytes, to be given back with tavbreleaseahm; null and 0 if it has none. */
TAVD_API void* tavbgetahm(int16_t db, tavb_rec rec, int32_t* length);

/* tavbsaverec, and in the same step stores the block of `length` bytes as the
 * record's ahm block. A null block, or a length of 0 or less, removes the one
 * that is stored. */
TAVD_API void tavbsaverecwithahm(int16_t db, tavb_rec rec, void* block, int32_t length);

/* Frees a block of tavbgetahm, once. Null is allowed. */
TAVD_API void tavbreleaseahm(void* block);

TAVD_EXTERN_C_END

#endif
