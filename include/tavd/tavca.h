/* Calculations on one product: pressures, damper positions, sound, throw.
 *
 * Order of calls: tavca_load_flowdata once per product, tavca_param_setvalue
 * for every parameter the user has chosen, tavca_check_end_reflection if the
 * sound levels are to be freed of the duct end reflection, then any
 * calculation. No calculation goes back to the database, and none but the
 * three named here changes the record.
 *
 * Units: flow qv in l/s, or air velocity in m/s where FlowData.isvelocity is
 * set; total pressure in Pa; sizes in mm; areas in m2; levels in dB. An array
 * of eight holds the octave bands 63, 125, 250, 500, 1000, 2000, 4000 and
 * 8000 Hz in this order.
 *
 * Results: a function with one number returns it, and 0 where it has no
 * answer. A function with several results returns a code and writes the
 * results through pointers; these are set to 0 before any test, so that a
 * failed call leaves zeros. TAVCA_OK, 0, is success; one number may mean
 * different things for different functions, so each has names of its own. The
 * pressure term of the chosen parameter values is part of every pressure that
 * goes in or out.
 *
 * A null record counts as one without flow data. Null outputs are allowed and
 * not written. Row counts, parameter counts and row indices of a record are
 * held inside its tables, whatever they say. Not-a-number and infinity give
 * what the formulas make of them.
 *
 * No function starts a thread, takes a lock, blocks or allocates. A record is
 * used by one caller at a time; any number of records may be in use.
 *
 * Arguments, where a function says nothing else:
 *   db            database handle
 *   rec           record handle
 *   fd            the product record
 *   qv            flow, l/s or m/s
 *   dp            total pressure, Pa
 *   pos           damper position as its table has it, no unit
 *   qmin, qmax    receive the lowest and the highest flow, l/s or m/s
 *   mindp, maxdp  receive the lowest and the highest total pressure, Pa
 *   dlw           receives the attenuation, eight bands, dB
 *   x1, y1        first point of the line
 *   x2, y2        second point of the line
 *   x             where the line is asked
 *   real          receives the number
 *   value         parameter value; at most 6 characters count
 *   isvelocity    0: `qv` is a flow; else a velocity
 *   roomdamp      dB
 */
#ifndef TAVD_TAVCA_H
#define TAVD_TAVCA_H

#include "tavd/flowdata.h"
#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* From every function that returns a code: done. */
enum { TAVCA_OK = 0 };

/* ---- The product record ------------------------------------------------- */

/* tavca_load_flowdata and tavca_qminqmax. */
enum {
  TAVCA_LOAD_NO_HEADER = -1, /* the record has no header attribute */
  TAVCA_LIMITS_NO_DATA = -1  /* no flow data */
};

/* Fills `fd` from the attributes of record `rec` of database `db`, replacing
 * all that it held; chosen parameter values are gone. Afterwards the pressures
 * of the tables are total pressures in Pa, whatever the database holds (static
 * or total, kPa or Pa), but a fan curve that comes with the older header
 * (attribute 1649) stays as it was read. `rec` stays the caller's.
 *
 *    0  TAVCA_OK: loaded; tables that the product does not have are empty
 *   -1  TAVCA_LOAD_NO_HEADER: `fd` holds the ids of the record, else zeros (only
 *       zeros for a null `rec`) */
TAVD_API int tavca_load_flowdata(int16_t db, tavb_rec rec, FlowData* fd);

/* Limits of the product's flow, l/s or m/s.
 *
 *    0  TAVCA_OK: given
 *   -1  TAVCA_LIMITS_NO_DATA */
TAVD_API int tavca_qminqmax(const FlowData* fd, float* qmin, float* qmax);

/* ---- Settings of the process -------------------------------------------- */

/* Who owns the message boxes of warnings, and whether there are any: `mode` 0,
 * the initial value, shows none. `wnd` may be null. */
TAVD_API void tavca_setwarningmode(tavd_hwnd wnd, int16_t mode);

/* Level difference between sound power and room sound pressure that tavca_LpA
 * takes off each band, dB, 4.0 initially. Any value is kept as it stands. */
TAVD_API void tavca_setroomdamp(float roomdamp);

/* Shows `text` (narrow, default code page) to the user if warnings are on. */
TAVD_API void tavca_msg(const char* text);

/* ---- Air and interpolation ---------------------------------------------- */

/* Dynamic pressure, Pa, of air of 1.2 kg/m3.
 *
 *   qv          flow, l/s, or velocity, m/s, if `isvelocity` is not 0
 *   area        duct cross section, m2; below 1e-8 gives 0; not looked at if
 *               `isvelocity` is not 0 */
TAVD_API float tavca_pdyn(float qv, float area, int isvelocity);

/* Cross section of a duct, m2: `b` by `h` mm, or circular of diameter `b` mm
 * if `h` is 0 or less. */
TAVD_API float tavca_ductarea_m2(int16_t b, int16_t h);

/* Interpolation between (x1, y1) and (x2, y2), and on the same line beyond
 * them, with a logarithmic y axis (linlog: y1 and y2 above 0) or a logarithmic
 * x axis (loglin: x1, x2 and x above 0). x1 need not be below x2; x1 above 0
 * and equal to x2 gives y1. */
TAVD_API float tavca_linlog_interp(float x1, float x2, float x, float y1, float y2);
TAVD_API float tavca_loglin_interp(float x1, float x2, float x, float y1, float y2);

/* ---- Parameters --------------------------------------------------------- */

/* tavca_param_setvalue and tavca_param_valuetoreal. */
enum {
  TAVCA_PARAM_NO_NAME = -1,  /* no parameter of that name */
  TAVCA_PARAM_NO_NUMBER = -1 /* a label */
};

/* Chooses a value of a parameter, for all later calculations.
 *
 *   name   one of FlowData.par[].name, without regard to case; only its first
 *          6 characters count, so that a longer parameter name is never met
 *   value  at most 6 characters count; empty or null takes the choice back. A
 *          number between two rows lies between them, outside the table it is
 *          held at the first or last row. A text that no row holds counts as
 *          the first row.
 *
 *    0  TAVCA_OK: chosen
 *   -1  TAVCA_PARAM_NO_NAME: the record is unchanged */
TAVD_API int tavca_param_setvalue(FlowData* fd, const char* name, const char* value);

/* The number that a parameter value stands for: a plain unsigned decimal with
 * an optional point, blanks around it allowed, in the first 6 characters.
 *
 *    0  TAVCA_OK: `*real` is the number
 *   -1  TAVCA_PARAM_NO_NUMBER (a sign or an exponent makes it a label); `*real`
 *       is 0 */
TAVD_API int tavca_param_valuetoreal(const char* value, float* real);

/* Compares two parameter values: as numbers if both are, else as texts without
 * regard to case and to enclosing double quotes. 1, 0 or -1 as `a` is greater
 * than, equal to or less than `b`. At most 6 characters count. */
TAVD_API int tavca_param_valuecmp(const char* a, const char* b);

/* ---- Pressure ----------------------------------------------------------- */

/* Pressure of a product of kind 12 at flow `qv`, Pa: between two points on a
 * straight line in log-log co-ordinates, beyond the ends by the square law.
 * 0 if it can't be given, and at exactly the flow of the last point. A point
 * of 0 or less that the search meets raises a warning. */
TAVD_API float tavca_floating_dp(const FlowData* fd, float qv);

/* tavca_fan_dp and tavca_fan_op_check. */
enum {
  TAVCA_FAN_NO_RECORD = -10,    /* null record */
  TAVCA_FAN_BELOW_CURVE = -100, /* left of the system line through the curve's first point */
  TAVCA_FAN_ABOVE_CURVE = -200, /* right of that through its last point, or no curve */
  TAVCA_FAN_OVER_CURVE = -300   /* more pressure than the curve has at this flow */
};

/* What a fan (kind 40) delivers at flow `qv`.
 *
 *   dptot  total pressure, Pa
 *   dpst   static pressure, Pa
 *   pd     dynamic pressure in the connection, Pa
 *
 *     0  TAVCA_OK: on the curve
 *   -10  TAVCA_FAN_NO_RECORD
 *  -100  TAVCA_FAN_BELOW_CURVE: flow below the curve; outputs on the system line
 *        through its first point
 *  -200  TAVCA_FAN_ABOVE_CURVE: flow above the curve, or no curve; outputs 0 */
TAVD_API int tavca_fan_dp(const FlowData* fd, float qv, float* dptot, float* dpst, float* pd);

/* Whether a fan (kind 40) can serve the point (qv, dp).
 *
 *     0  TAVCA_OK: it can
 *   -10  TAVCA_FAN_NO_RECORD
 *  -100  TAVCA_FAN_BELOW_CURVE: pressure above the system line through the
 *        curve's first point
 *  -200  TAVCA_FAN_ABOVE_CURVE: flow above the curve, or pressure below the
 *        system line through its last point, or no curve
 *  -300  TAVCA_FAN_OVER_CURVE: pressure above the curve at this flow */
TAVD_API int tavca_fan_op_check(const FlowData* fd, float qv, float dp);

/* tavca_minmaxdptot; also, as a number, tavca_dptot_damperpos. */
enum {
  TAVCA_DPTOT_NO_DATA = -2,    /* no flow data */
  TAVCA_DPTOT_BAD_POINT = -3,  /* kinds 10, 11: no reference point, or an unusable one */
  TAVCA_DPTOT_BAD_DAMPER = -4, /* kinds 20, 22: no damper table, or an unusable one */
  TAVCA_DPTOT_OTHER_KIND = -6  /* a kind without a pressure law */
};

/* Lowest and highest total pressure of the product at flow `qv`, Pa. A product
 * without setting has one pressure. For kind 12 the pressure term of the
 * chosen parameter values is contained twice.
 *
 *    0  TAVCA_OK: given
 *   -2  TAVCA_DPTOT_NO_DATA
 *   -3  TAVCA_DPTOT_BAD_POINT: no reference point, or one with a flow of 0 or
 *       less
 *   -4  TAVCA_DPTOT_BAD_DAMPER: no damper table, or a first or last row with a
 *       flow of 0 or less
 *   -6  TAVCA_DPTOT_OTHER_KIND */
TAVD_API int tavca_minmaxdptot(const FlowData* fd, float qv, float* mindp, float* maxdp);

/* One of the two results of tavca_minmaxdptot; 0 if it fails. */
TAVD_API float tavca_dptotmin(const FlowData* fd, float qv);
TAVD_API float tavca_dptotmax(const FlowData* fd, float qv);

/* ---- Damper position ---------------------------------------------------- */

/* tavca_damper_pos and tavca_damper_pos_fixed. */
enum {
  TAVCA_POS_NO_DAMPER = 2,    /* the product has no position */
  TAVCA_POS_ABOVE_TABLE = 1,  /* more pressure than the most throttled row takes */
  TAVCA_POS_BELOW_TABLE = -1, /* less pressure than the most open row takes */
  TAVCA_POS_NO_TABLE = -3,    /* no flow data, or no damper table */
  TAVCA_POS_BAD_POINT = -4,   /* an operating point without flow or pressure */
  TAVCA_POS_BAD_ROW = -5      /* a row of the table that can't be used */
};

/* Total pressure, Pa, of a damper at flow `qv` and position `pos`, which is
 * held inside the table. A product without damper gives tavca_dptotmin.
 * TAVCA_DPTOT_NO_DATA, -2.0, if the record has no flow data; 0 if the table
 * can't be used. */
TAVD_API float tavca_dptot_damperpos(const FlowData* fd, float qv, float pos);

/* Position of a damper at which it takes the total pressure `dp` (Pa) at flow
 * `qv`: any position between two rows of the table (tavca_damper_pos), or the
 * row nearest by pressure ratio (tavca_damper_pos_fixed; a table of one or two
 * rows is solved as by tavca_damper_pos).
 *
 *    2  TAVCA_POS_NO_DAMPER: kind is neither 20 nor 22; 0
 *    1  TAVCA_POS_ABOVE_TABLE: the position of the first, most throttled row.
 *       tavca_damper_pos allows 1 % beyond it, tavca_damper_pos_fixed counts
 *       the row's own pressure as outside
 *    0  TAVCA_OK: solved
 *   -1  TAVCA_POS_BELOW_TABLE: the position of the last, most open row; the
 *       margins as above
 *   -3  TAVCA_POS_NO_TABLE; 0
 *   -4  TAVCA_POS_BAD_POINT: `qv` or `dp` below 1e-6; 0
 *   -5  TAVCA_POS_BAD_ROW: a row with a flow, or for tavca_damper_pos_fixed a
 *       pressure, below 1e-6; 0 */
TAVD_API int tavca_damper_pos(const FlowData* fd, float qv, float dp, float* pos);
TAVD_API int tavca_damper_pos_fixed(const FlowData* fd, float qv, float dp, float* pos);

/* ---- Sound -------------------------------------------------------------- */

/* tavca_lw. */
enum {
  TAVCA_LW_NO_FLOW = -1,        /* qv below 0.001 */
  TAVCA_LW_NO_DATA = -2,        /* no flow data (or `lw` is null) */
  TAVCA_LW_FEW_ROWS = -3,       /* fewer than 2 rows in lwpoints */
  TAVCA_LW_OTHER_KIND = -9,     /* a kind without sound data */
  TAVCA_LW_NO_PRESSURE = -11,   /* kinds 10, 11, 12: no pressure at this flow */
  TAVCA_LW_NO_PAIR = -12,       /* no pair of rows */
  TAVCA_LW_MANY_CURVES = -21,   /* kinds 13, 20, 22: a further row after 20 curves */
  TAVCA_LW_BAD_CURVE_ROW = -22, /* a row with a flow or a pressure below 0.001 */
  TAVCA_LW_FEW_CURVES = -23,    /* fewer than 2 curves */
  TAVCA_LW_RISING_CURVES = -24, /* the curves do not fall */
  TAVCA_LW_SHORT_CURVE = -25,   /* a curve that is needed has fewer than 2 rows */
  TAVCA_LW_MANY_FLOWS = -31,    /* kinds 30, 40: a further row after 20 flows */
  TAVCA_LW_BAD_FLOW_ROW = -32,  /* a row with a flow or a pressure below 0.001 */
  TAVCA_LW_FEW_FLOWS = -33,     /* fewer than 2 flows */
  TAVCA_LW_SHORT_FLOW = -34     /* a flow that is needed has fewer than 2 rows */
};

/* Sound power level at the operating point (qv, dp).
 *
 *   dp    total pressure, Pa; kinds 10, 11 and 12 take their own
 *   lw    out: eight bands, dB, not rounded
 *   duct  the duct size that the level is to hold for; read only if
 *         abs(lwsizecoef) is above 0.1
 *
 *    0  TAVCA_OK: given. With a significant lwsizecoef and a duct that is null or
 *       has an area below 1e-7 m2, the size and parameter terms are left out
 *   -1 to -9  TAVCA_LW_NO_FLOW, _NO_DATA, _FEW_ROWS, _OTHER_KIND
 *
 *  kinds 10, 11, 12
 *  -11, -12  TAVCA_LW_NO_PRESSURE, _NO_PAIR
 *
 *  kinds 13, 20, 22: curves of constant resistance, rows within 10 % belong to
 *  one curve, the curves from the highest resistance to the lowest
 *  -21 to -25  TAVCA_LW_MANY_CURVES, _BAD_CURVE_ROW, _FEW_CURVES,
 *              _RISING_CURVES, _SHORT_CURVE
 *
 *  kinds 30, 40: groups of rows at one flow, within 0.1 l/s, by rising flow;
 *  beyond the limits of the product 30 dB per decade of pressure and of flow
 *  -31 to -34  TAVCA_LW_MANY_FLOWS, _BAD_FLOW_ROW, _FEW_FLOWS, _SHORT_FLOW */
TAVD_API int tavca_lw(const FlowData* fd, float qv, float dp, float* lw, const DuctSize* duct);

/* Attenuation of the product, eight bands, dB: the one value that the product
 * has, or by damper position or flow (kinds 30, 40) on the line through the
 * first two rows of dlwpoints. Where there is none the bands are 0. Always
 * returns TAVCA_OK. */
TAVD_API int tavca_dlw(const FlowData* fd, float qv, float dp, float* dlw);

/* A-weighted sound pressure level in the room, dB(A), of the sound power level
 * `lw` (eight bands, dB), less the room damping of tavca_setroomdamp. 0 for a
 * null `lw`. */
TAVD_API float tavca_LpA(const float* lw);

/* End reflection, dB, 0 or more, of an opening of `area` m2 in octave band
 * `band`. 0 for an area of 0 or less or outside the range of the band, and for
 * every other band:
 *
 *   band 0,   63 Hz  up to 2.0 m2, that included
 *   band 1,  125 Hz  below 2.0 m2
 *   band 2,  250 Hz  below 0.6 m2
 *   band 3,  500 Hz  below 0.2 m2
 *   band 4, 1000 Hz  below 0.05 m2 */
TAVD_API float tavca_endref_A(int band, float area);

/* Takes the end reflection, in whole dB, off the sound power table of the
 * record, whose levels stay at 0 or above. Every call takes it off again: call
 * it once after a load. Products of the classes ASD, AEX, AED, AOD and CCB,
 * and those without a duct area, stay as they are. */
TAVD_API void tavca_check_end_reflection(FlowData* fd);

/* ---- Throw -------------------------------------------------------------- */

/* Isothermal throw length, m, at flow `qv` (not limited); 0 if the record
 * gives none.
 *
 *   value  parameter value that selects the throw line, at most 6 characters;
 *          empty or null takes the first line. Read only if parL2 has rows */
TAVD_API float tavca_L2_isothermal(const FlowData* fd, float qv, const char* value);

TAVD_EXTERN_C_END

#endif
