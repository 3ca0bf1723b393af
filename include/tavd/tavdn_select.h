/* Which product, out of all: selection in libtavdn, beside tavd/tavdn.h.
 *
 * A catalogue is opened once (tavdn_catalogue_open): all products with flow data
 * of a database, each made ready for every set of parameter values that is
 * wanted. A duty says what is needed: a flow, the pressure that is available,
 * the level allowed in the room, a throw length, a duct size. tavdn_select and
 * tavdn_select_many answer with the products that fit, ranked, with all their
 * numbers, and with the reason why each of the others does not fit.
 *
 * What fits is told by the functions of tavd/tavca.h and their codes alone, and
 * every number of a hit has the bits that they give. In the order in which the
 * conditions are asked, a product fits if
 *
 *   class     it is of one of the duty's classes
 *   size      its duct size lies within the duty's
 *   values    its tables have the parameter values that are chosen
 *   flow      the flow lies within tavca_qminqmax, both ends included
 *   pressure  by kind, at the available pressure `dp`:
 *             20, 22      tavca_damper_pos answers TAVCA_OK at `dp`
 *             13, 30      tavca_minmaxdptot gives limits that `dp` lies within
 *             10, 11, 12  the pressure it takes, mindp of tavca_minmaxdptot, is
 *                         at most `dp` and at least `dp_lowest`
 *             40          tavca_fan_op_check answers TAVCA_OK at `dp`
 *   sound     tavca_lw at the operating point is at most `lw_max` in each
 *             band, and tavca_LpA of it at most `lp_max`
 *   throw     tavca_L2_isothermal lies within `throw_min` and `throw_max`
 *
 * The operating point has the duty's flow, and the pressure that a product of
 * kind 10, 11 or 12 takes; `dp` for any other.
 *
 * A condition for which a product has no data excludes it, unless the duty allows
 * that answer to be unknown; the hit then says so. Conditions that a duty does
 * not make exclude nobody.
 *
 * Products are all records with flow data but the file header, model records,
 * main records of families (their sizes are products of their own), and main and
 * sub records of layered products; layers are not put together.
 *
 * A program that selects: examples/select.c.
 *
 * Threads: a catalogue never changes, so that any number of threads ask it at
 * once. Nothing of the process is read or written: neither market nor language,
 * room damping nor warnings that were set with other functions.
 *
 * Records of options and duties: clear the whole record and set `size`, so that
 * a member left alone asks for nothing; texts are terminated and stay the
 * caller's. Nothing of a duty is kept.
 *
 * Arguments, where a function says nothing else:
 *   catalogue  of tavdn_catalogue_open, stays the caller's; must not be closed
 *              before the call has returned
 *   duty       what is needed
 *   room       places for hits of each duty in `hits`
 *   hits       receives the best products, the best first
 *   reasons    receives a TAVDN_WHY_ for each product of the catalogue, in its
 *              order; may be null, which is faster
 */
#ifndef TAVD_TAVDN_SELECT_H
#define TAVD_TAVDN_SELECT_H

#include <stddef.h>

#include "tavd/tavdn.h"
#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* What the functions of this header answer besides the codes of tavd/tavdn.h. */
enum {
  TAVDN_CANCELLED = -4,      /* tavdn_catalogue_open: its callback has said so */
  TAVDN_DUTY_RECORD = -10,   /* a null duty, or a record of another size */
  TAVDN_DUTY_FLOW = -11,     /* `qv` is not above 0 or no number, or a unit that is none */
  TAVDN_DUTY_PRESSURE = -12, /* `dp` is not above 0, `dp_lowest` below 0 or above `dp` */
  TAVDN_DUTY_SOUND = -13,    /* a limit below 0, or no number */
  TAVDN_DUTY_THROW = -14,    /* an end below 0 or no number, or the lower end above the upper one */
  TAVDN_DUTY_SIZE = -15,     /* a side below 0, different shapes, or the smaller above the larger */
  TAVDN_DUTY_CLASS = -16,    /* a class of which the catalogue has no product */
  TAVDN_DUTY_VALUES = -17,   /* a set of parameter values that the catalogue was not opened with */
  TAVDN_DUTY_RANK = -18,     /* `rank` is none of TAVDN_RANK_ */
  TAVDN_DUTY_UNKNOWN = -19,  /* `unknown_allowed` has bits that are none of TAVDN_UNKNOWN_ */
  TAVDN_DUTY_WANTED = -20    /* fewer than one hit, or more than there is room for */
};

/* ---- The catalogue ------------------------------------------------------- */

/* Products that are ready to be selected from. Never changes. */
typedef struct tavdn_catalogue tavdn_catalogue;

/* A parameter and the value that is chosen. */
typedef struct tavdn_value {
  const char* name;  /* as in tavca_param_setvalue */
  const char* value; /* as there; empty: none is chosen. Null: the parameter is free, and every value of
                        the product's table is tried */
} tavdn_value;

/* Values of several parameters that hold together. A product without a
 * parameter of that name is not concerned by it; a parameter that is not named
 * has no chosen value. */
typedef struct tavdn_values {
  const tavdn_value* values; /* may be null if `count` is 0 */
  int32_t count;             /* number of them, 0 or more */
} tavdn_values;

/* Told from time to time how many records have been read; anything but 0 as an
 * answer cancels. `context` is that of the options. */
typedef int (*tavdn_progress)(void* context, size_t records);

/* What a catalogue is to hold. */
typedef struct tavdn_catalogue_options {
  size_t size;                /* sizeof(tavdn_catalogue_options) */
  const char* const* classes; /* classes of products, 3 characters each */
  int32_t nclasses;           /* number of them; 0: all */
  int32_t language;           /* of descriptions, TAVD_LANGUAGE_; 0: none */
  const char* market;         /* market area of product codes, as in tavdcore_set_market_area; may be null */
  const tavdn_values* sets;   /* wanted sets of parameter values */
  int32_t nsets;              /* number of them; 0: one set, in which nothing is chosen */
  int32_t without_end_reflection; /* not 0: the end reflection is taken off (tavca_check_end_reflection) */
  tavdn_progress progress;        /* may be null */
  void* context;                  /* handed to `progress` */
} tavdn_catalogue_options;

/* Reads the products of a database and makes them ready. Reading uses the
 * functions of tavd/tavb.h. Records that are changed meanwhile are read as they
 * were or as they are, each of them whole. A service that cannot read on ends
 * the catalogue there; directly after the call tavdsrv_lasterror
 * (tavd/tavdsrv.h) tells whether that was so.
 *
 *   db         handle of an open database, which may be closed afterwards
 *   options    null: all products, with the codes of all markets and without
 *              descriptions, nothing chosen
 *   catalogue  receives the catalogue, which the caller gives back with
 *              tavdn_catalogue_close; null if it could not be made
 *
 * Each product takes some 10 kB for each different choice of its parameters.
 *
 *    0  TAVDN_OK, also if there is no product
 *   -1  TAVDN_BAD_ARGUMENT: null `catalogue`, a record of another size, a null
 *       class, parameter name or array, or a negative number
 *   -2  TAVDN_NO_MEMORY
 *   -4  TAVDN_CANCELLED */
TAVD_API int tavdn_catalogue_open(int16_t db, const tavdn_catalogue_options* options,
                                  tavdn_catalogue** catalogue);

/* Gives a catalogue back, when no call that uses it is under way. Null does
 * nothing. */
TAVD_API void tavdn_catalogue_close(tavdn_catalogue* catalogue);

/* Number of products; 0 for a null catalogue. */
TAVD_API size_t tavdn_catalogue_count(const tavdn_catalogue* catalogue);

/* A product of a catalogue. */
typedef struct tavdn_listed {
  char class_id[4];              /* terminated */
  char object_id[32];            /* without trailing blanks, terminated */
  const tavd_wchar* code;        /* product code, terminated, the catalogue's */
  const tavd_wchar* description; /* likewise; empty if there is none */
  DuctSize duct;                 /* mm; all 0: not known */
  float area;                    /* its cross section, m2; 0: not known */
  int32_t variants;              /* number of different choices that it was made ready for */
} tavdn_listed;

/* The product at `index`, from 0, in the order of class and object id; valid
 * until tavdn_catalogue_close. Null for an index outside, and for a null
 * catalogue. */
TAVD_API const tavdn_listed* tavdn_catalogue_product(const tavdn_catalogue* catalogue, size_t index);

/* The product at `index` with one choice of its parameters, `variant` from 0: what
 * a hit was calculated with, for more answers of it and for its diagrams. Valid
 * until tavdn_catalogue_close, not to be released. Null as above. */
TAVD_API const tavdn_product* tavdn_catalogue_variant(const tavdn_catalogue* catalogue, size_t index,
                                                      int32_t variant);

/* ---- What is needed ------------------------------------------------------ */

/* Units of a duty's flow. */
enum { TAVDN_FLOW_L_S = 0, TAVDN_FLOW_M3_H = 1 };

/* What the best product is. Products without a number to rank by come last; ties
 * are in the order of class and object id. */
enum {
  TAVDN_RANK_SOUND = 0,    /* the lowest level in the room */
  TAVDN_RANK_PRESSURE = 1, /* the lowest pressure that it can do with at this flow: mindp of
                              tavca_minmaxdptot; of a fan the lowest that it gives, tavca_fan_dp */
  TAVDN_RANK_SIZE = 2,     /* the smallest cross section */
  TAVDN_RANK_FIT = 3       /* the flow nearest to the middle of the product's limits */
};

/* Answers that a product may have no data for; bits. */
enum {
  TAVDN_UNKNOWN_SIZE = 1,     /* duct size */
  TAVDN_UNKNOWN_PRESSURE = 2, /* pressure, damper position, what a fan gives */
  TAVDN_UNKNOWN_SOUND = 4,    /* sound power and level in the room */
  TAVDN_UNKNOWN_THROW = 8     /* throw length */
};

/* What is needed. A member of 0 asks for nothing, but for those that say
 * otherwise. */
typedef struct tavdn_duty {
  size_t size;                /* sizeof(tavdn_duty) */
  double qv;                  /* flow, in `flow_unit`, must be above 0. Products by air velocity are asked
                                 with ewads_vms of it and their duct size */
  int32_t flow_unit;          /* TAVDN_FLOW_ */
  float dp;                   /* total pressure that is available, Pa, must be above 0 */
  float dp_lowest;            /* of kinds 10, 11, 12: pressure that must be taken at least, Pa */
  float lp_max;               /* highest level in the room, dB(A) */
  float roomdamp;             /* level difference between sound power and room, dB; 0 is 0: tavca_LpA has
                                 4.0 unless it is set */
  float lw_max[TAVD_BANDS];   /* highest sound power level of each band, dB; 0: any */
  float throw_min;            /* shortest throw length, m */
  float throw_max;            /* longest one, m; 0: any */
  DuctSize duct_min;          /* smallest duct, mm; of rectangular ones both sides count */
  DuctSize duct_max;          /* largest one, of the same shape; all 0 in both: any */
  const char* const* classes; /* classes of products */
  int32_t nclasses;           /* number of them; 0: all of the catalogue */
  int32_t values;             /* which of the catalogue's sets of parameter values, from 0 */
  uint32_t unknown_allowed;   /* TAVDN_UNKNOWN_ that exclude nobody */
  int32_t rank;               /* TAVDN_RANK_ */
  int32_t wanted;             /* number of hits, must be 1 or more */
} tavdn_duty;

/* Whether a duty can be asked.
 *
 *    0  TAVDN_OK
 *   -1  TAVDN_BAD_ARGUMENT: null `catalogue`
 *  -10 to -20  TAVDN_DUTY_RECORD, _FLOW, _PRESSURE, _SOUND, _THROW, _SIZE,
 *              _CLASS, _VALUES, _RANK, _UNKNOWN, _WANTED: the first that is wrong */
TAVD_API int tavdn_check_duty(const tavdn_catalogue* catalogue, const tavdn_duty* duty);

/* ---- What fits ----------------------------------------------------------- */

/* Why a product does not fit, in the order of the conditions; of several choices
 * of its parameters that of the choice that comes farthest. In words:
 * tavdn_message("TAVDN_WHY_", reason). */
enum {
  TAVDN_WHY_FITS = 0,             /* it fits */
  TAVDN_WHY_CLASS = 1,            /* another class */
  TAVDN_WHY_SIZE_UNKNOWN = 2,     /* no duct size */
  TAVDN_WHY_SIZE = 3,             /* a duct size outside those allowed */
  TAVDN_WHY_VALUE = 4,            /* a parameter value that its table does not have */
  TAVDN_WHY_FLOW_UNKNOWN = 5,     /* by air velocity, and without a duct size */
  TAVDN_WHY_FLOW_LOW = 6,         /* the flow is below its limits */
  TAVDN_WHY_FLOW_HIGH = 7,        /* the flow is above its limits */
  TAVDN_WHY_PRESSURE_UNKNOWN = 8, /* no data for its pressure */
  TAVDN_WHY_PRESSURE_HIGH = 9,    /* it takes more pressure than is available, also when open */
  TAVDN_WHY_PRESSURE_LOW = 10,    /* it takes less pressure than it must, also when throttled */
  TAVDN_WHY_FAN_BELOW_CURVE = 11, /* TAVCA_FAN_BELOW_CURVE */
  TAVDN_WHY_FAN_ABOVE_CURVE = 12, /* TAVCA_FAN_ABOVE_CURVE */
  TAVDN_WHY_FAN_OVER_CURVE = 13,  /* TAVCA_FAN_OVER_CURVE */
  TAVDN_WHY_SOUND_UNKNOWN = 14,   /* no data for its sound at this point */
  TAVDN_WHY_BAND = 15,            /* too much sound power in a band */
  TAVDN_WHY_LEVEL = 16,           /* too loud in the room */
  TAVDN_WHY_THROW_UNKNOWN = 17,   /* no throw line */
  TAVDN_WHY_THROW_SHORT = 18,     /* the throw is too short */
  TAVDN_WHY_THROW_LONG = 19,      /* the throw is too long */
  TAVDN_WHY_COUNT = 20            /* number of reasons */
};

/* A product that fits, with all its numbers: those of the functions that the
 * members name, 0 without an answer. A product that fits with several choices of
 * its parameters is one hit, with the best of them, or the first of equals. */
typedef struct tavdn_hit {
  uint32_t product;      /* its index in the catalogue */
  int32_t variant;       /* which choice of its parameters */
  uint32_t unknown;      /* TAVDN_UNKNOWN_: what it has no data for, asked for or not */
  float qv;              /* the flow in its own measure, l/s, or m/s by air velocity */
  float dp;              /* total pressure of the operating point, Pa */
  int32_t range_code;    /* of tavca_minmaxdptot */
  float dp_min;          /* lowest total pressure, Pa */
  float dp_max;          /* highest total pressure, Pa */
  int32_t position_code; /* of tavca_damper_pos at `dp` */
  float position;        /* position that gives `dp`, no unit */
  int32_t setting_code;  /* of tavca_damper_pos_fixed at `dp` */
  float setting;         /* nearest position of the table, no unit */
  int32_t fan_check;     /* of tavca_fan_op_check at `dp`; of fans alone, otherwise 0 */
  int32_t fan_code;      /* of tavca_fan_dp; likewise */
  float fan_total;       /* total pressure of the fan, Pa; likewise */
  float fan_static;      /* static pressure of the fan, Pa; likewise */
  float fan_dynamic;     /* dynamic pressure in its connection, Pa; likewise */
  int32_t lw_code;       /* of tavca_lw at `dp` */
  float lw[TAVD_BANDS];  /* sound power level, dB */
  float lpa;             /* level in the room, dB(A), of tavca_LpA */
  int32_t throw_code;    /* TAVDN_THROW_ */
  float throw_length;    /* isothermal throw length, m */
  float area;            /* cross section of its duct, m2 */
  float fit;             /* distance of the flow from the middle of the product's limits: 0 there, 1 at
                            either end */
} tavdn_hit;

/* How many products fit a duty. */
typedef struct tavdn_fitting {
  size_t products; /* that fit */
  int32_t hits;    /* that were written: those, but at most as many as were wanted */
} tavdn_fitting;

/* Selects for one duty.
 *
 *   fitting  receives how many fit
 *
 *    0  TAVDN_OK, also if nothing fits
 *   -1  TAVDN_BAD_ARGUMENT: null `catalogue`, `hits` or `fitting`
 *   -2  TAVDN_NO_MEMORY
 *  -10 to -20  TAVDN_DUTY_RECORD, _FLOW, _PRESSURE, _SOUND, _THROW, _SIZE,
 *              _CLASS, _VALUES, _RANK, _UNKNOWN, _WANTED, as tavdn_check_duty
 *
 * After any other code than TAVDN_OK no hit has been written, and with one of
 * TAVDN_DUTY_ nothing. Hits behind those that were found stay as they were. */
TAVD_API int tavdn_select(const tavdn_catalogue* catalogue, const tavdn_duty* duty, size_t room,
                          tavdn_hit* hits, tavdn_fitting* fitting, unsigned char* reasons);

/* Selects for many duties; each gets what tavdn_select gives it, whatever the
 * number of threads. The work is shared out by duties.
 *
 *   n        number of duties
 *   duties   n of them
 *   hits     n x room: the hits of duty i begin at i*room
 *   fitting  receives n answers
 *   reasons  n x products of the catalogue, duty by duty; may be null
 *   threads  how many work on it, the caller's own one included; 0 or less: as
 *            many as the machine has processors
 *   bad      receives the index of the duty that a code of TAVDN_DUTY_ is about,
 *            the first such; may be null
 *
 *    0  TAVDN_OK, also with n of 0
 *   -1  TAVDN_BAD_ARGUMENT: null `catalogue`, or with n above 0 null `duties`,
 *       `hits` or `fitting`, or more duties or hits than memory can hold
 *   -2  TAVDN_NO_MEMORY: what has been written has no meaning
 *  -10 to -20  TAVDN_DUTY_RECORD, _FLOW, _PRESSURE, _SOUND, _THROW, _SIZE,
 *              _CLASS, _VALUES, _RANK, _UNKNOWN, _WANTED; nothing has been
 *              written but `bad` */
TAVD_API int tavdn_select_many(const tavdn_catalogue* catalogue, size_t n, const tavdn_duty* duties,
                               size_t room, tavdn_hit* hits, tavdn_fitting* fitting, unsigned char* reasons,
                               int threads, size_t* bad);

TAVD_EXTERN_C_END

#endif
