/* Product id sets: attributes of one variant of a product that is stored in
 * layers.
 *
 * Such a product has one main record, sub records whose ids are patterns over
 * its code parameters, and perhaps an exact record for one concrete id. A set
 * loads main and sub records once, is then adjusted to one concrete id, and
 * answers from the most specific record that fits this id and holds the
 * attribute: the exact record, the matching sub records from specific to
 * general, the main record. Attribute 1150 tells the layers apart: 10 marks the
 * main record, 11 a sub record; other records take part only as exact ones.
 *
 * An id is parted into fields by separators ("-" and "+" unless set
 * otherwise), and a wildcard ("*") in a pattern stands for one whole field,
 * which may be empty if a separator follows it. All else must be equal, case
 * included.
 *
 * Call tavdidset_init once; set wildcards and separators if others are wanted;
 * tavdidset_read; then, as often as needed, tavdidset_adjust followed by
 * tavdidset_findatt; tavdidset_release at the end. A set remembers no
 * database: hand the same `db` to each call. The storage of a set is the
 * host's; the record handles in it are the set's, open from tavdidset_read to
 * tavdidset_reset. One thread at a time uses a set. A null set is allowed
 * everywhere and does nothing.
 *
 * Arguments, where a function says nothing else:
 *   set    the set
 *   db     database handle
 *   attId  number of the attribute
 */
#ifndef TAVD_TAVDIDSET_H
#define TAVD_TAVDIDSET_H

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* Room of the fields, in characters: a class of 3 without a terminator, an id
 * of 30 and 19 signs with one. */
enum { TAVDIDSET_CLASS_CHARS = 3, TAVDIDSET_ID_CHARS = 31, TAVDIDSET_SIGN_CHARS = 20 };

/* What the functions answer besides 0. */
enum {
  TAVDIDSET_FOUND = 1,        /* tavdidset_findatt: a layer holds the attribute */
  TAVDIDSET_NOT_FOUND = 0,    /* none does */
  TAVDIDSET_NO_PRODUCT = -1,  /* no main record, or nothing that could be read */
  TAVDIDSET_REFUSED = -1,     /* from the setters */
  TAVDIDSET_NOT_ADJUSTED = -3 /* the id does not fit the main record's, or the
                                 set is not adjusted to any */
};

/* One sub record. 40 bytes. */
typedef struct IdSetItem {
  char id[TAVDIDSET_ID_CHARS]; /* its object id, terminated, without trailing
                                  blanks; may hold wildcards */
  char matches;                /* 1 if `id` fits the id that the set is adjusted to,
                                  else 0; means nothing before tavdidset_adjust */
  tavb_rec rec;                /* the record, owned by the set */
} IdSetItem;

/* An id set. 152 bytes. */
typedef struct IdSet {
  char classId[TAVDIDSET_CLASS_CHARS];   /* class of the product, not terminated */
  char mainId[TAVDIDSET_ID_CHARS];       /* object id of the main record,
                                            terminated; empty without one */
  tavb_rec mainRec;                      /* the main record, or null */
  gwarray subs;                          /* items of IdSetItem; after
                                            tavdidset_adjust in the order in which
                                            they are asked */
  char curId[TAVDIDSET_ID_CHARS];        /* the id that the set is adjusted to,
                                            terminated; empty if it fits not */
  tavb_rec curRec;                       /* the exact record of that id, or null */
  char wildchars[TAVDIDSET_SIGN_CHARS];  /* wildcards, terminated */
  char separators[TAVDIDSET_SIGN_CHARS]; /* field separators, terminated */
  int16_t adjusted;                      /* non-zero after a tavdidset_adjust that
                                            returned 0 */
} IdSet;

/* Makes an empty set of storage that holds anything, with the wildcard "*" and
 * the separators "-+". */
TAVD_API void tavdidset_init(IdSet* set);

/* Releases all records and forgets the product. The set stays usable;
 * wildcards and separators stay as they are. */
TAVD_API void tavdidset_reset(IdSet* set);

/* Releases all records and all memory. A new tavdidset_init is needed before
 * the set is used again. */
TAVD_API void tavdidset_release(IdSet* set);

/* Sets the wildcards, or the field separators: each character of `chars`,
 * terminated, is one. At most 19, what stands behind them is left out.
 * Characters from '0' (0x30) to 0x7F, so digits, letters and "?" and "_" among
 * others, are refused; bytes from 0x80 on count as negative and are accepted.
 * Returns 0, or TAVDIDSET_REFUSED with nothing changed if one is refused or
 * `chars` is null.
 * What has been read and adjusted stays as it is until it is read and adjusted
 * anew. */
TAVD_API int32_t tavdidset_set_wildchars(IdSet* set, const char* chars);
TAVD_API int32_t tavdidset_set_separators(IdSet* set, const char* chars);

/* Resets the set and loads a product: all records of the class whose ids begin
 * as `id` does up to its first separator, that one included.
 *   classId  3 characters
 *   id       up to 30 characters, ending early at a NUL: the id of any record or
 *            variant of the product
 * Returns 0, also if no main record was found (tavdidset_adjust then reports
 * it); TAVDIDSET_NO_PRODUCT, with an empty set, if `id` has no separator, if
 * memory ran out, or if there are two main records. The last is reported to the
 * user in a message, and the handle of the second main record is then lost:
 * neither the set nor the host can release it. */
TAVD_API int32_t tavdidset_read(IdSet* set, int16_t db, const char* classId, const char* id);

/* Adjusts the set to one variant: tests its id against the main record's and
 * all patterns, sorts the sub records, and looks for an exact record.
 *   id  up to 30 characters, ending early at a NUL; null counts as empty
 * Sub records that fit come first, and of them those with fewer wildcards; of
 * equally many those whose wildcards stand further back, by the number of
 * separators in front of each; then the one that has a plain character where
 * the other has a wildcard.
 * Returns 0; TAVDIDSET_NO_PRODUCT without a main record; TAVDIDSET_NOT_ADJUSTED
 * if `id` does not fit the main record's id: the set is then adjusted to
 * nothing. */
TAVD_API int32_t tavdidset_adjust(IdSet* set, int16_t db, const char* id);

/* Reads an attribute of the variant, from the first layer that holds it.
 *   count     receives the number of items stored, 0 if there are none; may be
 *             null
 *   buffer    receives at most `capacity` bytes, untouched if the attribute is
 *             absent; a text gets a terminator where there is room behind it.
 *             Null: only `count` is set
 *   capacity  bytes; nothing is copied if it is 0 or less
 * Returns TAVDIDSET_FOUND or TAVDIDSET_NOT_FOUND, TAVDIDSET_NO_PRODUCT without
 * a main record, TAVDIDSET_NOT_ADJUSTED before a successful tavdidset_adjust. */
TAVD_API int32_t tavdidset_findatt(IdSet* set, int16_t db, int16_t attId, int16_t* count, void* buffer,
                                   int16_t capacity);

TAVD_EXTERN_C_END

#endif
