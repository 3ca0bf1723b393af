/* What libtavdsrv offers beside the 17 functions of tavd/tavb.h, for tools
 * that make, list and maintain databases. The library itself uses none of
 * these, so an implementation of the 17 alone serves it.
 *
 * Arguments, where a function says nothing else:
 *   db        handle of an open database
 *   name      a database's name
 *   rec       record handle
 *   classId   class of the record, 3 characters
 *   objId     object id, up to 30 characters
 *   attId     receives the number of the attribute
 *   data      receives the address of its bytes
 *   length    receives their number
 *   text      UTF-16, terminated
 *   buffer    receives the bytes
 *   capacity  bytes that `buffer` holds
 */
#ifndef TAVD_TAVDSRV_H
#define TAVD_TAVDSRV_H

#include "tavd/tavb.h"

TAVD_EXTERN_C_BEGIN

/* What these functions answer besides 0 and counts. */
enum {
  TAVDSRV_FAILED = -1, /* not done; tavdsrv_lasterror has the reason, where there is more than one */
  TAVDSRV_NO_ROOM = -2 /* the text does not fit the buffer */
};

/* A new record in memory, without attributes, to be filled with tavbinsertatt,
 * stored with tavbsaverec and given back with tavbreleaserec. Null if the
 * object id is empty or blank, or memory ran out. */
TAVD_API tavb_rec tavdsrv_newrec(const char* classId, const char* objId);

/* Number of attributes that the record holds. */
TAVD_API int32_t tavdsrv_attributecount(tavb_rec rec);

/* The attribute at `index` (0 and up, by rising number): its number, and the
 * address and length of its bytes, which stay the record's and are valid
 * until the record is changed or released. Returns 0, or TAVDSRV_FAILED if
 * `index` is outside. */
TAVD_API int32_t tavdsrv_attributeat(tavb_rec rec, int32_t index, int16_t* attId, const void** data,
                                     int32_t* length);

/* Encodes UTF-16 text (terminated) as the service stores it under `charset`
 * in database `db`, without terminator. Returns the number of bytes, or
 * TAVDSRV_FAILED if a character has no place in that charset (or the text is
 * null, or charset 0 is asked of no open database), or TAVDSRV_NO_ROOM if
 * `capacity` is too small. */
TAVD_API int32_t tavdsrv_encodetext(int16_t db, int32_t charset, const tavd_wchar* text, char* buffer,
                                    int32_t capacity);

/* Groups saves and deletions: nothing is durable before tavdsrv_commit, all of
 * it is when that returns 0. tavdsrv_rollback drops what came since
 * tavdsrv_begin. Each returns 0, or -1 (see tavdsrv_lasterror). Once a save or
 * deletion of a group has failed, the rest of it fails too, and so does its
 * commit; tavdsrv_lasterror tells each time why that first one failed. A commit
 * that fails ends the group and drops all of it.
 *
 * While a group is open, others can read, and read what was there before it,
 * however large it is; they cannot save. While a commit writes, readers wait
 * for it, at most a minute. */
TAVD_API int32_t tavdsrv_begin(int16_t db);
TAVD_API int32_t tavdsrv_commit(int16_t db);
TAVD_API int32_t tavdsrv_rollback(int16_t db);

/* Closes a database, and drops a group of changes that is still open. Record
 * handles that came from it stay valid. The handle may be given to the next
 * database that is opened. Returns 0, or -1 if `db` is no open database. */
TAVD_API int32_t tavdsrv_closedatabase(int16_t db);

/* Writes a database's name as messages are to show it: of a server's the
 * passwords are left out, any other name stays as it is. `name` is terminated,
 * in the system's encoding or UTF-8. The result is terminated and has at most 3
 * bytes more than the name. Returns its length, or TAVDSRV_FAILED if the name is
 * null, or TAVDSRV_NO_ROOM if `capacity` is too small. */
TAVD_API int32_t tavdsrv_shownname(const char* name, char* buffer, int32_t capacity);

/* What went wrong in this thread's last call of the service, in one line of
 * UTF-8 with file and reason; empty if nothing did. So it tells a save that
 * failed from one that was done, and a record that could not be read from one
 * that is not there. Valid until this thread's next call; calls that cannot
 * fail (releasing, ids, attribute lists) leave it as it is. */
TAVD_API const char* tavdsrv_lasterror(void);

/* What is uncertain about this thread's last call of the service though it did
 * what it was asked for, in one line of UTF-8; empty if nothing is. There is one
 * such case: a save, a deletion or a commit that is stored, and valid for every
 * process, but whose folder the system failed to synchronize as the very last
 * step. It is reported as done: a commit returns 0, tavdsrv_lasterror is empty.
 * Only a loss of power before the system writes the folder by itself can bring
 * back what was stored before, whole. Valid as long as tavdsrv_lasterror is. */
TAVD_API const char* tavdsrv_lastwarning(void);

TAVD_EXTERN_C_END

#endif
