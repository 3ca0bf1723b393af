/* Family lists: the sizes in which a product comes.
 *
 * A family has a main record; its sizes are further records of the same class.
 * A list gathers from the main record's id one member record per size. Lists
 * come narrow and wide: the functions with a trailing w work on the wide
 * records and do the same.
 *
 * Attribute 1150 of the main record, its sizing mode (TAVD_SIZING_ of
 * tavd/attributes.h), says how the members are found:
 *   below 0      there are none
 *   0            the record itself is the one member
 *   1            all records of the class whose id fits the main record's id
 *                as a pattern (tavfm_is_member), without the main record
 *   2            the records whose ids stand in attribute 1604
 *   3 and above  as 0
 *
 * The storage of a list is the host's; the items in it are the list's. Call
 * tavfm_init once, tavfm_read as often as needed, tavfm_get by index below the
 * count, tavfm_release at the end. A null list is allowed everywhere and does
 * nothing. An object id in a record of this header is raw: blank-padded to 30
 * characters, not terminated.
 *
 * Arguments, where a function says nothing else:
 *   list  the list
 *   db    database handle
 *   rec   product record; stays the host's
 */
#ifndef TAVD_TAVFM_H
#define TAVD_TAVFM_H

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* Room of the fields, in characters or words. Class and object id fill theirs
 * without a terminator (elsewhere an id as text takes 31 characters, 30 and the
 * terminator); the terminators of the texts are counted. */
enum {
  TAVFM_CLASS_CHARS = 3,
  TAVFM_ID_CHARS = 30,
  TAVFM_PCODE_CHARS = 40,
  TAVFM_DESCR_CHARS = 80,
  TAVFM_INSTALLATION_CHARS = 80,
  TAVFM_SHAPE_WORDS = 50
};

/* What the functions answer besides 0 and counts. */
enum {
  TAVFM_REFUSED = -1,       /* tavfm_add: a null record, or a list that is not initialised */
  TAVFM_NO_MEMORY = -2,     /* tavfm_add: memory ran out */
  TAVFM_NO_SUCH_INDEX = -1, /* tavfm_get */
  TAVFM_MEMBER = 0,         /* tavfm_is_member: a member */
  TAVFM_NO_MEMBER = -1,     /* no member */
  TAVFM_PAST_FAMILY = 1     /* no member, nor is any id that sorts behind it */
};

/* A family list, narrow. 256 bytes. */
typedef struct FamilyList {
  gwarray members;                                /* items of FamilyMember; members.count is
                                                     the number of members */
  char classId[TAVFM_CLASS_CHARS];                /* class of the main record */
  char objId[TAVFM_ID_CHARS];                     /* its id as it was handed to tavfm_read,
                                                     padded with NULs if that was shorter */
  char pcode[TAVFM_PCODE_CHARS];                  /* its product code, terminated */
  char descr[TAVFM_DESCR_CHARS];                  /* the product code again, terminated */
  char installationdef[TAVFM_INSTALLATION_CHARS]; /* its installation text; a
                                      text of 80 characters or more is cut and
                                      not terminated */
  int16_t idLen;                                  /* length of objId without padding */
  int16_t wildPos;                                /* index of the first '*' in objId; idLen if
                                                     there is none */
  int16_t sizingmode;                             /* attribute 1150, 0 if absent */
} FamilyList;

/* A family list, wide. 376 bytes. Ids and the installation text stay narrow. */
typedef struct FamilyListW {
  gwarray members;                                /* items of FamilyMemberW */
  char classId[TAVFM_CLASS_CHARS];                /* as in FamilyList */
  char objId[TAVFM_ID_CHARS];                     /* as in FamilyList */
  tavd_wchar pcode[TAVFM_PCODE_CHARS];            /* product code of the main record,
                                                     terminated */
  tavd_wchar descr[TAVFM_DESCR_CHARS];            /* its description in the user's
                                                     language, terminated */
  char installationdef[TAVFM_INSTALLATION_CHARS]; /* as in FamilyList */
  int16_t idLen;                                  /* as in FamilyList */
  int16_t wildPos;                                /* as in FamilyList */
  int16_t sizingmode;                             /* as in FamilyList */
} FamilyListW;

/* One member, narrow. 338 bytes. Its first field serves as the object id for
 * tavbfindrec. */
typedef struct FamilyMember {
  char objId[TAVFM_ID_CHARS];                     /* raw object id */
  char pcode[TAVFM_PCODE_CHARS];                  /* product code, terminated */
  char descr[TAVFM_DESCR_CHARS];                  /* the product code again, terminated */
  char installationdef[TAVFM_INSTALLATION_CHARS]; /* installation text, the
                                           list's own if the member has none;
                                           cut as in FamilyList */
  DuctSize ds;                                    /* duct size, mm; all zero if unknown */
  int16_t shapedata[TAVFM_SHAPE_WORDS];           /* shape description as it is stored,
                                                     not passed through
                                                     tavdf_check_shapedata */
  int16_t nsh;                                    /* words of it, at most 50 */
} FamilyMember;

/* One member, wide. 458 bytes. */
typedef struct FamilyMemberW {
  char objId[TAVFM_ID_CHARS];                     /* as in FamilyMember */
  tavd_wchar pcode[TAVFM_PCODE_CHARS];            /* product code, terminated */
  tavd_wchar descr[TAVFM_DESCR_CHARS];            /* description, terminated */
  char installationdef[TAVFM_INSTALLATION_CHARS]; /* as in FamilyMember */
  DuctSize ds;                                    /* as in FamilyMember */
  int16_t shapedata[TAVFM_SHAPE_WORDS];           /* as in FamilyMember */
  int16_t nsh;                                    /* as in FamilyMember */
} FamilyMemberW;

/* Makes an empty list of storage that holds anything. */
TAVD_API void tavfm_init(FamilyList* list);
TAVD_API void tavfm_initw(FamilyListW* list);

/* Frees the members and makes the list empty, ready for use. */
TAVD_API void tavfm_reset(FamilyList* list);
TAVD_API void tavfm_resetw(FamilyListW* list);

/* Frees the members and clears the list; a new tavfm_init is needed before it
 * is used again. */
TAVD_API void tavfm_release(FamilyList* list);
TAVD_API void tavfm_releasew(FamilyListW* list);

/* Resets the list and fills it with the family of a main record.
 *   classId  3 characters
 *   objId    up to 30 characters, ending early at a NUL
 * Returns the number of members; 0, with all fields empty, if the main record
 * is not found. Members that are named but not found are left out. */
TAVD_API int32_t tavfm_read(FamilyList* list, int16_t db, const char* classId, const char* objId);
TAVD_API int32_t tavfm_readw(FamilyListW* list, int16_t db, const char* classId, const char* objId);

/* Appends a member made from `rec`, which stays the host's. Returns 0,
 * TAVFM_REFUSED, or TAVFM_NO_MEMORY: the list is then empty. */
TAVD_API int32_t tavfm_add(FamilyList* list, int16_t db, tavb_rec rec);
TAVD_API int32_t tavfm_addw(FamilyListW* list, int16_t db, tavb_rec rec);

/* Copies member `index`, from 0, into `fmb`. Returns 0, or TAVFM_NO_SUCH_INDEX
 * with all of `fmb` zero if there is no such member. */
TAVD_API int32_t tavfm_get(const FamilyList* list, int32_t index, FamilyMember* fmb);
TAVD_API int32_t tavfm_getw(const FamilyListW* list, int32_t index, FamilyMemberW* fmb);

/* Whether `id`, 30 raw characters or fewer and a NUL, belongs to the family by
 * the main record's id. That id is a pattern of fields parted by separators;
 * a field that begins with '*' stands for anything, any other one for what
 * begins with it. Separators must be the same; fields of `id` behind the
 * pattern's last one do not count, and a separator of `id` right at the first
 * '*' is passed over.
 * Returns TAVFM_MEMBER, TAVFM_NO_MEMBER, or TAVFM_PAST_FAMILY if `id` differs
 * in front of the first '*': ids sort by that part, so no member follows. The
 * main record's own id is no member. */
TAVD_API int32_t tavfm_is_member(const FamilyList* list, const char* id);
TAVD_API int32_t tavfm_is_memberw(const FamilyListW* list, const char* id);

/* Whether `c` parts the fields of an object id: 1 for blank, '+', '-', '.' and
 * '/', otherwise 0. */
TAVD_API int tavfm_is_codeparam_separator(char c);

TAVD_EXTERN_C_END

#endif
