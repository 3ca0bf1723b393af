/* The product record that every calculation reads.
 *
 * The host owns the storage, fills it once with tavca_load_flowdata
 * (tavd/tavca.h) and hands it to the calculations. The record holds no
 * pointers: it may be copied byte for byte and outlives the database.
 *
 * Units: flow qv in l/s, or air velocity in m/s where `isvelocity` is set;
 * pressure in Pa; sizes in mm; area in m2; sound levels in whole dB, one byte
 * per octave band, bands 63, 125, 250, 500, 1000, 2000, 4000, 8000 Hz.
 *
 * All records of this header are packed, without padding, little-endian, with
 * 32-bit IEEE floats: the rows are byte-exact images of database attributes.
 * In languages that align by themselves ask for packing 1. Take copies of
 * fields rather than pointers to them; a field may stand at any address.
 */
#ifndef TAVD_FLOWDATA_H
#define TAVD_FLOWDATA_H

#include "tavd/attributes.h"
#include "tavd/types.h"

/* Rows that each table of FlowData holds. */
enum {
  TAVD_BANDS = 8,           /* octave bands, 63 Hz to 8 kHz */
  TAVD_DAMPER_ROWS = 20,    /* FlowData.damper */
  TAVD_QVDP_ROWS = 20,      /* FlowData.qvdppoints */
  TAVD_FAN_ROWS = 20,       /* FlowData.fancurve */
  TAVD_LW_ROWS = 60,        /* FlowData.lwpoints */
  TAVD_DLW_ROWS = 200,      /* FlowData.dlwpoints */
  TAVD_QVL2_ROWS = 10,      /* FlowData.qvL2 */
  TAVD_PARL2_ROWS = 30,     /* FlowData.parL2 */
  TAVD_PARAMETER_ROWS = 20, /* ParTable.table */
  TAVD_PARAMETERS = 2,      /* FlowData.par */
  TAVD_PARAMETER_CHARS = 6  /* characters of a parameter value */
};

#pragma pack(push, 1)

/* One setting of an adjustable damper: a measured point. The resistance of
 * the setting is dp/qv^2. Rows run from the most throttled setting to the
 * most open one; `pos` may rise or fall along the table. Attribute 1652. */
typedef struct DamperPoint {
  float pos; /* setting as the maker labels it, no unit */
  float qv;  /* flow, l/s or m/s */
  float dp;  /* total pressure, Pa */
} DamperPoint;

/* One measured point of a fixed resistance; rows by rising qv. Attribute 1657. */
typedef struct QvDpPoint {
  float qv; /* flow, l/s */
  float dp; /* total pressure, Pa */
} QvDpPoint;

/* One point of a fan curve; rows by rising qv. Attribute 1666. */
typedef struct FanPoint {
  float qv;  /* flow, l/s */
  float dp;  /* pressure that the fan delivers, Pa */
  float aux; /* kept for the host, read by no calculation */
} FanPoint;

/* Sound power measured at one operating point. Attribute 1653. */
typedef struct LwPoint {
  float qv;               /* flow, l/s or m/s */
  float dp;               /* total pressure, Pa */
  uint8_t lw[TAVD_BANDS]; /* sound power level per octave band, dB */
} LwPoint;

/* Attenuation at one damper position (at one flow for kinds 30 and 40).
 * Attribute 1655. */
typedef struct DlwPoint {
  float pos;               /* damper position, no unit; or flow, l/s */
  uint8_t dlw[TAVD_BANDS]; /* attenuation per octave band, dB */
} DlwPoint;

/* One measured throw length. Attribute 1659. */
typedef struct QvL2Point {
  float qv; /* flow, l/s */
  float L2; /* throw length, m */
} QvL2Point;

/* One throw length at one parameter value; usually two rows per value, the
 * values rising along the table. Attribute 1660. */
typedef struct ParL2Point {
  char value[TAVD_PARAMETER_CHARS]; /* parameter value, blank-padded, not
                                       necessarily terminated */
  float qv;                         /* flow, l/s */
  float L2;                         /* throw length, m */
} ParL2Point;

/* What one value of a parameter changes against the base data. Attributes
 * 1661 and 1662. */
typedef struct ParEntry {
  char value[TAVD_PARAMETER_CHARS]; /* the value, not necessarily terminated;
                                       a plain unsigned decimal counts as a
                                       number, anything else as a label */
  float dk;                         /* pressure coefficient: adds dk*qv^2 Pa, Pa/(l/s)^2 */
  int16_t dlw;                      /* added to each band of the sound power level, dB */
  int16_t ddlw;                     /* added to each band of the attenuation, dB */
  float factor;                     /* multiplies the throw length, no unit; 0 means 1 */
} ParEntry;

/* One selection parameter of a product. Tables of numbers stand in strictly
 * rising order. */
typedef struct ParTable {
  char name[10];                       /* name of the parameter, terminated; attribute 1514 */
  char value[10];                      /* chosen value, at most 6 characters, terminated; empty:
                                          none is chosen and the parameter adds nothing */
  int16_t idx1;                        /* lower neighbouring row of the chosen value */
  int16_t idx2;                        /* upper neighbouring row */
  float frac;                          /* place of the chosen value between them, 0 to 1 */
  int16_t count;                       /* rows in `table` */
  ParEntry table[TAVD_PARAMETER_ROWS]; /* a row per value */
} ParTable;

/* The product record.
 *
 * kind  curve            what the product is (names: TAVD_KIND_, tavd/attributes.h)
 *   10  qvref, dpref     fixed resistance, dp = dpref*(qv/qvref)^2
 *   11  qvref, dpref     the same by air velocity
 *   12  qvdppoints       fixed resistance measured at several flows
 *   13  limits only      pressure range without a table
 *   20  damper           adjustable damper, a row per setting
 *   22  damper           the same by air velocity
 *   30  limits only      device that works anywhere in a pressure range
 *   40  fancurve         fan: dp is what the product delivers
 */
typedef struct FlowData {
  char szclass[8];                      /* class of the record; its first 3 characters count */
  char szobjID[32];                     /* object id as text */
  char isvelocity;                      /* 1: every qv of the record is an air velocity, m/s */
  int16_t kind;                         /* data kind, below 100 */
  float ductarea;                       /* cross section of the connection, m2; 0 if isvelocity
                                           is set or b is 10 or less */
  float lwsizecoef;                     /* size coefficient of the sound level: dB for each doubling
                                           of the duct's area (10/3 of it a decade) from 1 m2 on;
                                           0.1 and less, either sign, is none; attribute 1302 */
  int16_t kind100;                      /* kind of the header with 100 added; attribute 1650 */
  int16_t b;                            /* diameter or width of the connection, mm */
  int16_t h;                            /* height of the connection, mm; 0 or less: circular */
  float qvmin;                          /* lowest flow, l/s or m/s */
  float qvmax;                          /* highest flow, l/s or m/s */
  float dpmin;                          /* lowest total pressure, Pa */
  float dpmax;                          /* highest total pressure, Pa */
  float qvref;                          /* reference flow, l/s or m/s; attribute 1651 */
  float dpref;                          /* reference pressure, Pa */
  DamperPoint damper[TAVD_DAMPER_ROWS]; /* attribute 1652 */
  QvDpPoint qvdppoints[TAVD_QVDP_ROWS]; /* attribute 1657 */
  FanPoint fancurve[TAVD_FAN_ROWS];     /* attribute 1666 */
  LwPoint lwpoints[TAVD_LW_ROWS];       /* attribute 1653 */
  uint8_t dlw[TAVD_BANDS];              /* attenuation per band, dB; attribute 1654 */
  DlwPoint dlwpoints[TAVD_DLW_ROWS];    /* attribute 1655 */
  QvL2Point qvL2[TAVD_QVL2_ROWS];       /* attribute 1659 */
  ParL2Point parL2[TAVD_PARL2_ROWS];    /* attribute 1660 */
  int16_t nhdd;                         /* items of the header; 0: no usable flow data */
  int16_t nref;                         /* items of attribute 1651 */
  int16_t ndamper;                      /* rows in damper */
  int16_t nqvdp;                        /* rows in qvdppoints */
  int16_t nfan;                         /* rows in fancurve */
  int16_t nlw;                          /* rows in lwpoints */
  int16_t ndlw;                         /* items of attribute 1654; not 0: dlw holds data */
  int16_t ndlwpoints;                   /* rows in dlwpoints */
  int16_t nqvL2;                        /* rows in qvL2 */
  int16_t nparL2;                       /* rows in parL2 */
  ParTable par[TAVD_PARAMETERS];        /* the parameters that can be chosen */
  int16_t npar;                         /* usable parameters: 0, 1 or 2 */
  int16_t intpair[2];                   /* attribute 1670, 0 if absent; kept for the host */
  float floatpair[2];                   /* attribute 1671, 0 if absent; kept for the host */
} FlowData;

#pragma pack(pop)

#endif
