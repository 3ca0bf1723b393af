/* Many points in one call, many users at once: libtavdn, a library beside libtavd.
 *
 * A product is made ready once (tavdn_prepare) and then answers arrays of
 * operating points (tavdn_calculate): pressures, damper positions, what a fan
 * delivers, sound, throw. What is answered, and its codes, are those of the
 * functions of tavd/tavca.h, which tell what each of them means: every number
 * has the same bits as the single function gives for that point.
 *
 * A program that prints a table: examples/table.c.
 *
 * Nothing of the process is read or written: room damping is an argument,
 * tavca_setroomdamp and tavca_setwarningmode have no effect here, no message is
 * shown. Beside tavdn_prepare nothing allocates.
 *
 * Threads: a prepared product never changes, so that any number of threads ask
 * it at once, without a lock; each hands over arrays of its own. Large arrays
 * are shared out by the caller: threads that take one range of the points each
 * get the numbers that one thread gets.
 *
 * Arrays are the caller's, tight, without strides, in the order of the points.
 * Eight bands a point stand row by row: band b of point i is at 8*i + b. Floats
 * and integers lie at addresses that are multiples of 4. What is written must
 * overlap neither anything that is read nor anything else that is written;
 * overlapping arrays give numbers without a meaning. Not-a-number and infinity
 * are allowed and give what the formulas make of them.
 *
 * Results: TAVDN_OK, or one of the codes below; after any other code than
 * TAVDN_OK nothing has been written to the arrays. With n of 0 the arrays are
 * not looked at.
 *
 * Arguments, where a function says nothing else:
 *   n         number of points, or of rows; any that fits the memory
 *   product   of tavdn_prepare, stays the caller's; must not be released before
 *             the call has returned
 *   qv        n flows, l/s, or velocities, m/s, as FlowData.isvelocity says
 *   db        database handle (tavd/tavb.h)
 *   rec       record handle
 *   surface   what is drawn on
 *   options   see Pictures
 *   shape     measures of a sketch
 *   roomdamp  level difference between sound power and room, dB, taken off each
 *             band; tavca_LpA has 4.0 unless it is set
 */
#ifndef TAVD_TAVDN_H
#define TAVD_TAVDN_H

#include <stddef.h>

#include "tavd/flowdata.h"
#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* What the functions answer. */
enum {
  TAVDN_OK = 0,            /* done */
  TAVDN_BAD_ARGUMENT = -1, /* null where an array or a product must be, records of
                              another size, or more points than memory can hold */
  TAVDN_NO_MEMORY = -2,    /* tavdn_prepare and pictures: memory ran out */
  TAVDN_NOT_DRAWN = -3     /* pictures: the product makes no such diagram */
};

/* Status of a throw length, in place of a code of tavca_L2_isothermal, which has
 * none. */
enum {
  TAVDN_THROW_GIVEN = 0, /* the product has a throw line */
  TAVDN_THROW_NONE = -1  /* it has none (for the chosen value); all lengths are 0 */
};

/* ---- A product ---------------------------------------------------------- */

/* A product that is ready to be asked. Never changes. */
typedef struct tavdn_product tavdn_product;

/* Makes a product ready: works out what is known from its tables alone.
 *
 *   fd    the record as the calculations shall see it: parameter values are
 *         chosen (tavca_param_setvalue), and the end reflection is taken off
 *         (tavca_check_end_reflection) or not. It is copied. Counts and row
 *         indices that lie are held inside the tables
 *   duct  the duct size for which sound power levels are to hold, copied too;
 *         null: none, as in tavca_lw
 *   product  receives the product, which the caller gives back with
 *            tavdn_release; null if it could not be made
 *
 * The throw line is that of the value of the first parameter,
 * FlowData.par[0].value; the product's first line if none is chosen.
 *
 *    0  TAVDN_OK
 *   -1  TAVDN_BAD_ARGUMENT: null `fd` or `product`
 *   -2  TAVDN_NO_MEMORY */
TAVD_API int tavdn_prepare(const FlowData* fd, const DuctSize* duct, tavdn_product** product);

/* Gives a product back, when no call that uses it is under way. Null does
 * nothing. */
TAVD_API void tavdn_release(tavdn_product* product);

/* The record that the product was made of, valid until tavdn_release; for ids,
 * limits and kind. Null for a null product. */
TAVD_API const FlowData* tavdn_flowdata(const tavdn_product* product);

/* ---- Many points -------------------------------------------------------- */

/* Where tavdn_calculate writes: n numbers each, or n rows of eight bands. Any
 * array may be null; what no array asks for is not calculated. A number of a
 * point that has no answer is 0, and its code says why.
 *
 * Clear the whole record and set `size`; a later library will then know which
 * members it has. */
typedef struct tavdn_results {
  size_t size;            /* sizeof(tavdn_results) */
  int32_t* range_code;    /* of tavca_minmaxdptot */
  float* dp_min;          /* lowest total pressure, Pa */
  float* dp_max;          /* highest total pressure, Pa */
  int32_t* position_code; /* of tavca_damper_pos */
  float* position;        /* position that gives `dp`, no unit */
  int32_t* setting_code;  /* of tavca_damper_pos_fixed */
  float* setting;         /* nearest position of the table, no unit */
  int32_t* fan_code;      /* of tavca_fan_dp */
  float* fan_total;       /* total pressure of the fan, Pa */
  float* fan_static;      /* static pressure of the fan, Pa */
  float* fan_dynamic;     /* dynamic pressure in its connection, Pa */
  int32_t* fan_check;     /* of tavca_fan_op_check */
  int32_t* lw_code;       /* of tavca_lw; holds for `lpa` too */
  float* lw;              /* n x 8: sound power level, dB; all 8 are 0 without an answer */
  float* lpa;             /* level in the room, dB(A), of tavca_LpA; 0 where lw_code is not 0 */
  int32_t* dlw_code;      /* of tavca_dlw: always 0 */
  float* dlw;             /* n x 8: attenuation, dB; 0 where the product has none */
  int32_t* throw_code;    /* TAVDN_THROW_ */
  float* throw_length;    /* isothermal throw length, m */
} tavdn_results;

/* Calculates n points.
 *
 *   dp       n total pressures, Pa; null: 0 for every point. That suits products
 *            of kinds 10, 11 and 12, whose pressure follows from the flow; a
 *            damper then has no position (TAVCA_POS_BAD_POINT)
 *   results  the arrays that are filled
 *
 *    0  TAVDN_OK: every array that is not null is filled, with codes for points
 *       that have no answer
 *   -1  TAVDN_BAD_ARGUMENT: null `product`, `qv` or `results`, a `size` that is
 *       smaller than this record, or larger with members that are not null
 *       and that this library does not know; more points than memory can hold */
TAVD_API int tavdn_calculate(const tavdn_product* product, size_t n, const float* qv, const float* dp,
                             float roomdamp, const tavdn_results* results);

/* ---- Single answers in tables ------------------------------------------- */

/* tavca_LpA of n rows.
 *
 *   lw   n x 8: sound power level, dB
 *   lpa  out: n levels in the room, dB(A)
 *
 *    0  TAVDN_OK
 *   -1  TAVDN_BAD_ARGUMENT: null arrays, or more rows than memory can hold */
TAVD_API int tavdn_lpa(size_t n, const float* lw, float roomdamp, float* lpa);

/* tavca_L2_isothermal at n flows, for any throw line of the product.
 *
 *   value   parameter value that selects the throw line, as in
 *           tavca_L2_isothermal: at most 6 characters, empty or null takes the
 *           first line
 *   length  out: n throw lengths, m; 0 if there is no such line
 *
 *    0  TAVDN_OK, also without a throw line
 *   -1  TAVDN_BAD_ARGUMENT: null product or arrays, or more points than memory
 *       can hold */
TAVD_API int tavdn_throw(const tavdn_product* product, const char* value, size_t n, const float* qv,
                         float* length);

/* tavca_ductarea_m2 of n ducts.
 *
 *   b     n widths or diameters, mm
 *   h     n heights, mm, 0 or less: circular; null: all are circular
 *   area  out: n cross sections, m2
 *
 *    0  TAVDN_OK
 *   -1  TAVDN_BAD_ARGUMENT: null `b` or `area`, or more ducts than memory can
 *       hold */
TAVD_API int tavdn_ductarea(size_t n, const int16_t* b, const int16_t* h, float* area);

/* tavca_endref_A of n openings in all bands.
 *
 *   area        n areas, m2
 *   reflection  out: n x 8: end reflection, dB
 *
 *    0  TAVDN_OK
 *   -1  TAVDN_BAD_ARGUMENT: null arrays, or more openings than memory can hold */
TAVD_API int tavdn_endref(size_t n, const float* area, float* reflection);

/* ---- Pictures ------------------------------------------------------------ */

/* The three drawings of tavd/tavdg.h, tavd/L2dg.h and tavd/tavdshapepic.h, each
 * with a state of its own: any number of threads draw at once, each on a
 * surface of its own. The operations on the surface are those of the exported
 * drawing, from making the tools to destroying them, in the same order. Mapping
 * and background mode are the caller's, as there.
 *
 * Options: clear the whole record and set `size`, so that a member left alone
 * has the value that the exported functions begin with, but for the room
 * damping, which is to be set; null stands for a
 * record of which nothing else is set. Texts are cut where the exported
 * functions cut them; a null text counts as empty. Nothing of them is kept.
 *
 *   surface  surface to draw on, as for the exported drawing; null draws nothing
 *
 * Results of the drawing functions:
 *    0  TAVDN_OK
 *   -1  TAVDN_BAD_ARGUMENT: null product or shape, or a record of another size
 *   -2  TAVDN_NO_MEMORY
 *   -3  TAVDN_NOT_DRAWN: the product makes no such diagram. Nothing is drawn */

/* A rectangle of logical units; all 0: the default of the drawing. */
typedef struct tavdn_rectangle {
  int32_t left;   /* upper left corner, logical units */
  int32_t top;    /* its other coordinate */
  int32_t right;  /* lower right corner */
  int32_t bottom; /* its other coordinate */
} tavdn_rectangle;

/* The text of a damper position, as tavdg_set_a_label adds it. */
typedef struct tavdn_position_label {
  float position;   /* of the damper line, to within 0.001 */
  const char* text; /* what stands in place of its number */
} tavdn_position_label;

/* What tavdn_draw_flow draws beside the product. */
typedef struct tavdn_flow_options {
  size_t size;              /* sizeof(tavdn_flow_options) */
  const char* title;        /* narrow */
  const tavd_wchar* titlew; /* wide, in place of `title`: the chart then has wide texts, as that of a
                               database with UTF-8 has */
  float qv;                 /* flow of the operating point, l/s (m/s); 0: none */
  float dp;                 /* its pressure, Pa */
  float qvlimit1;           /* lower flow limit, as in tavdg_set_qvlimits */
  float qvlimit2;           /* upper one */
  int32_t xunit;            /* TAVDG_FLOW_ */
  int32_t yunit;            /* TAVDG_PRESSURE_ */
  int32_t dptype;           /* TAVDG_DP_ */
  float lpmin;           /* lowest sound level line, dB(A), as in tavdg_set_lpmin_lpmax_lpstep; 0: not set */
  float lpmax;           /* highest one */
  float lpstep;          /* their distance */
  float roomdamp;        /* level difference between sound power and room, dB; 4.0 where the
                            process of the exported drawing has set none */
  int32_t resolution;    /* as in tavdg_setcurveresolution; 0: TAVDG_RESOLUTION */
  const char* LpA_label; /* as in tavdg_set_LpA_label */
  const char* damperpos_label;          /* as in tavdg_set_damperpos_label */
  const tavdn_position_label* a_labels; /* as tavdg_set_a_label adds them; may be null */
  int32_t na_labels;                    /* number of them */
  tavdn_rectangle rectangle;            /* as in tavdg_resize */
} tavdn_flow_options;

/* The flow diagram. TAVDN_NOT_DRAWN where tavdg_initdiagramdata answers
 * TAVDG_NOT_BUILT. The sound levels are those of the prepared record, so its
 * end reflection should be taken off, as tavdg_initdiagramdata does. A null
 * `options` has a room damping of 4.0 dB. */
TAVD_API int tavdn_draw_flow(const tavdn_product* product, const tavdn_flow_options* options,
                             tavd_hdc surface);

/* What tavdn_draw_throw draws beside the product. */
typedef struct tavdn_throw_options {
  size_t size;               /* sizeof(tavdn_throw_options) */
  const char* title;         /* narrow */
  const char* value;         /* parameter value that selects the throw line, as the value of "G" in
                                L2dg_set_parameter; empty or null: the first line */
  float qv;                  /* flow of the operating point, l/s */
  int32_t xunit;             /* L2DG_FLOW_ */
  tavdn_rectangle rectangle; /* as in L2dg_resize */
} tavdn_throw_options;

/* The throw length diagram. TAVDN_NOT_DRAWN where L2dg_initdiagramdata answers
 * L2DG_NOT_BUILT. */
TAVD_API int tavdn_draw_throw(const tavdn_product* product, const tavdn_throw_options* options,
                              tavd_hdc surface);

/* Numbers of values of a shape that are kept. */
enum { TAVDN_SHAPE_VALUES = 30 };

/* A sketch's measures, as attributes TAVD_ATT_SHAPE_DATA and
 * TAVD_ATT_FLOW_HEADER have them. */
typedef struct tavdn_shape {
  int16_t nvalues;                    /* number of `values`: the shape number, then its dimensions, mm */
  int16_t values[TAVDN_SHAPE_VALUES]; /* 0 behind nvalues */
  int16_t nheader;                    /* 0: the product has no flow header, and its connection is not drawn */
  int16_t b;                          /* width or diameter of the connection, mm */
  int16_t h;                          /* its height, mm; 0 if it is round */
} tavdn_shape;

/* Reads the shape of a record; `rec` stays the caller's. A record without a
 * shape, and a null one, leave all of `shape` 0: its drawing is the title. */
TAVD_API void tavdn_read_shape(int16_t db, tavb_rec rec, tavdn_shape* shape);

/* What tavdn_draw_shape draws beside the measures. */
typedef struct tavdn_shape_options {
  size_t size;               /* sizeof(tavdn_shape_options) */
  const char* title;         /* narrow */
  tavdn_rectangle rectangle; /* as in tavdshapepic_resize */
} tavdn_shape_options;

/* Title and sketch. */
TAVD_API int tavdn_draw_shape(const tavdn_shape* shape, const tavdn_shape_options* options, tavd_hdc surface);

/* ---- Codes in words ----------------------------------------------------- */

/* What a code of a function means: an English phrase that a host can show,
 * without a capital at its beginning and a full stop at its end, static.
 *
 *   function  name of a function of libtavd that returns a code, or of this
 *             header, such as "tavca_lw". For a damper pressure that is a code,
 *             "tavca_dptot_damperpos", and for "tavdn_results.throw_code" too
 *   code      what it returned
 *
 * Null if `function` is null or returns no code, and for a number that is none
 * of its codes. */
TAVD_API const char* tavdn_message(const char* function, int code);

TAVD_EXTERN_C_END

#endif
