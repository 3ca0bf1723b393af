/* The attributes of a product record: what each number holds, its layout and
 * its units.
 *
 * A value is an array of items of one layout, or a text; which of the two, and
 * how long an item is, follows from the number. Items are packed, numbers
 * little-endian, floats 32-bit IEEE; an octave band is one byte, whole dB.
 * Where a table falls on a record of tavd/flowdata.h, that record describes the
 * columns. Units are those of tavd/flowdata.h unless a line below says otherwise:
 * flow l/s (air velocity m/s for kinds 11 and 22), pressure Pa, sizes mm.
 */
#ifndef TAVD_ATTRIBUTES_H
#define TAVD_ATTRIBUTES_H

/* What a product can be: `kind` of the headers 1649 and 1650 and of FlowData.
 * The curve is the table from which pressures follow. */
enum {
  TAVD_KIND_RESISTANCE = 10,          /* fixed resistance, one reference point (1651) */
  TAVD_KIND_RESISTANCE_VELOCITY = 11, /* the same by air velocity (1651) */
  TAVD_KIND_RESISTANCE_POINTS = 12,   /* fixed resistance measured at several flows (1657) */
  TAVD_KIND_LIMITS = 13,              /* pressure range without a curve, sound as of a damper */
  TAVD_KIND_DAMPER = 20,              /* adjustable damper, a row per setting (1652) */
  TAVD_KIND_DAMPER_VELOCITY = 22,     /* the same by air velocity (1652) */
  TAVD_KIND_RANGE = 30,               /* works anywhere in a pressure range, without a curve */
  TAVD_KIND_FAN = 40                  /* fan: the pressure that it delivers (1666) */
};

/* Added to the kind in a header whose tables hold total pressures; without it
 * they hold static pressures. */
enum { TAVD_KIND_TOTAL_PRESSURE = 100 };

/* Records that every database, or every product with a model, has. Classes are
 * 3 characters. */
#define TAVD_FILEHEADER_CLASS "000"
#define TAVD_FILEHEADER_ID "FILEHEADER" /* the one record of its class */
#define TAVD_MODEL_CLASS "TVM"          /* model records; object ids as in attribute 1525 */

/* The texts of a database, attribute 1049. */
enum {
  TAVD_TEXTS_DEFAULT = 0,  /* the default code page; also where 1049 is absent */
  TAVD_TEXTS_UTF8 = 1,     /* UTF-8 */
  TAVD_TEXTS_DEFAULT_2 = 2 /* as 0 */
};

/* How a record takes part in a family or in a layered product, attribute 1150. */
enum {
  TAVD_SIZING_SINGLE = 0,      /* the record is its family's one member; so 3 and above */
  TAVD_SIZING_PATTERN = 1,     /* main record; its id is the pattern of its members' */
  TAVD_SIZING_LIST = 2,        /* main record; attribute 1604 names its members */
  TAVD_SIZING_MAIN_LAYER = 10, /* main record of a layered product (tavd/tavdidset.h) */
  TAVD_SIZING_SUB_LAYER = 11   /* sub record of one */
};

/* Attributes of a record, by rising number. */
enum {
  TAVD_ATT_USES_UTF8 = 1049,       /* int16, TAVD_TEXTS_; of the file header alone */
  TAVD_ATT_DIAMETERS = 1102,       /* int16 items: diameters, mm */
  TAVD_ATT_SHAPE_DATA = 1110,      /* int16 items: shape number, then its dimensions, mm */
  TAVD_ATT_SIZING_MODE = 1150,     /* int16, TAVD_SIZING_ */
  TAVD_ATT_LW_SIZE_COEF = 1302,    /* float: size coefficient of the sound level */
  TAVD_ATT_CODE_THIRD = 1501,      /* text: product code, third choice */
  TAVD_ATT_MAKER = 1503,           /* text: maker */
  TAVD_ATT_CODE_SECOND = 1505,     /* text: product code, second choice */
  TAVD_ATT_ID_TEMPLATE = 1511,     /* text: template of the product id (tavd/codes.h) */
  TAVD_ATT_INSTALLATION = 1513,    /* text: installation */
  TAVD_ATT_PAR_NAMES = 1514,       /* text: names of the parameters, parted by a comma */
  TAVD_ATT_MODEL_ID = 1525,        /* text: object id of the model record */
  TAVD_ATT_CODE_DEFAULT = 1562,    /* text, UTF-8: product code of markets without one of their own */
  TAVD_ATT_MEMBER_IDS = 1604,      /* items of 30 characters: object ids of a family's members */
  TAVD_ATT_OLD_HEADER = 1649,      /* 20 bytes: int16 kind, b (mm); float qvmin, qvmax, dpmin,
                                      dpmax (kPa). Pressures of its curve tables are kPa too, but
                                      not those of a fan curve */
  TAVD_ATT_FLOW_HEADER = 1650,     /* 22 bytes: int16 kind, b, h (mm); float qvmin, qvmax, dpmin,
                                      dpmax (Pa) */
  TAVD_ATT_QVDP_REF = 1651,        /* 8 bytes: float qvref, dpref; kinds 10, 11 */
  TAVD_ATT_DAMPER_POINTS = 1652,   /* rows of DamperPoint; kinds 20, 22 */
  TAVD_ATT_LW_POINTS = 1653,       /* rows of LwPoint: sound power */
  TAVD_ATT_DLW = 1654,             /* 8 bands: attenuation, one for the product */
  TAVD_ATT_DLW_POINTS = 1655,      /* rows of DlwPoint: attenuation by position or flow */
  TAVD_ATT_QVDP_POINTS = 1657,     /* rows of QvDpPoint; kind 12 */
  TAVD_ATT_QVDP_LIMITS = 1658,     /* 16 bytes: float qvmin, qvmax, dpmin, dpmax (Pa) of a fan, in
                                      place of its header's */
  TAVD_ATT_QV_L2 = 1659,           /* rows of QvL2Point: throw, m */
  TAVD_ATT_PAR_L2 = 1660,          /* rows of ParL2Point: throw by parameter value, m */
  TAVD_ATT_PAR1_TABLE = 1661,      /* rows of ParEntry: first parameter */
  TAVD_ATT_PAR2_TABLE = 1662,      /* rows of ParEntry: second parameter */
  TAVD_ATT_FAN_CURVE = 1666,       /* rows of FanPoint; kind 40 */
  TAVD_ATT_MODEL_ID_SECOND = 1669, /* text: as 1525, where that is absent */
  TAVD_ATT_INT_PAIR = 1670,        /* two int16, kept for the host */
  TAVD_ATT_FLOAT_PAIR = 1671,      /* two floats, kept for the host */
  TAVD_ATT_TEXT_1674 = 1674        /* text, UTF-8, read by nothing */
};

/* Web links, texts: one attribute for each market area, by its country code. */
enum {
  TAVD_ATT_WEBLINK_FIN = 8500,
  TAVD_ATT_WEBLINK_SWE = 8501,
  TAVD_ATT_WEBLINK_GBR = 8502,
  TAVD_ATT_WEBLINK_DEU = 8503,
  TAVD_ATT_WEBLINK_NOR = 8504,
  TAVD_ATT_WEBLINK_FRA = 8505,
  TAVD_ATT_WEBLINK_ESP = 8506,
  TAVD_ATT_WEBLINK_ITA = 8507,
  TAVD_ATT_WEBLINK_POL = 8508,
  TAVD_ATT_WEBLINK_DNK = 8509,
  TAVD_ATT_WEBLINK_CZE = 8510,
  TAVD_ATT_WEBLINK_PRT = 8511,
  TAVD_ATT_WEBLINK_HUN = 8512,
  TAVD_ATT_WEBLINK_NLD = 8513,
  TAVD_ATT_WEBLINK_ISL = 8514,
  TAVD_ATT_WEBLINK_EST = 8515,
  TAVD_ATT_WEBLINK_LTU = 8516,
  TAVD_ATT_WEBLINK_LVA = 8517,
  TAVD_ATT_WEBLINK_RUS = 8518,
  TAVD_ATT_WEBLINK_SVK = 8520,
  TAVD_ATT_WEBLINK_BGR = 8521,
  TAVD_ATT_WEBLINK_ROU = 8522,
  TAVD_ATT_WEBLINK_BIH = 8523,
  TAVD_ATT_WEBLINK_HRV = 8524,
  TAVD_ATT_WEBLINK_SVN = 8525,
  TAVD_ATT_WEBLINK_CHN = 8526,
  TAVD_ATT_WEBLINK_JPN = 8527,
  TAVD_ATT_WEBLINK_TUR = 8528,
  TAVD_ATT_WEBLINK_DEFAULT = 8529,
  TAVD_ATT_WEBLINK_CHE = 8530,
  TAVD_ATT_WEBLINK_UKR = 8531,
  TAVD_ATT_WEBLINK_AUT = 8532,
  TAVD_ATT_WEBLINK_BEL = 8533
};

/* Product codes, texts: one attribute for each market area. */
enum {
  TAVD_ATT_CODE_FIN = 9500,
  TAVD_ATT_CODE_SWE = 9501,
  TAVD_ATT_CODE_GBR = 9502,
  TAVD_ATT_CODE_DEU = 9503,
  TAVD_ATT_CODE_NOR = 9504,
  TAVD_ATT_CODE_FRA = 9505,
  TAVD_ATT_CODE_ESP = 9506,
  TAVD_ATT_CODE_ITA = 9507,
  TAVD_ATT_CODE_POL = 9508,
  TAVD_ATT_CODE_DNK = 9509,
  TAVD_ATT_CODE_CZE = 9510,
  TAVD_ATT_CODE_PRT = 9511,
  TAVD_ATT_CODE_HUN = 9512,
  TAVD_ATT_CODE_NLD = 9513,
  TAVD_ATT_CODE_ISL = 9514,
  TAVD_ATT_CODE_EST = 9515,
  TAVD_ATT_CODE_LTU = 9516,
  TAVD_ATT_CODE_LVA = 9517,
  TAVD_ATT_CODE_RUS = 9518,
  TAVD_ATT_CODE_SVK = 9520,
  TAVD_ATT_CODE_BGR = 9521,
  TAVD_ATT_CODE_ROU = 9522,
  TAVD_ATT_CODE_BIH = 9523,
  TAVD_ATT_CODE_HRV = 9524,
  TAVD_ATT_CODE_SVN = 9525,
  TAVD_ATT_CODE_CHN = 9526,
  TAVD_ATT_CODE_JPN = 9527,
  TAVD_ATT_CODE_TUR = 9528,
  TAVD_ATT_CODE_CHE = 9530,
  TAVD_ATT_CODE_UKR = 9531,
  TAVD_ATT_CODE_AUT = 9532,
  TAVD_ATT_CODE_BEL = 9533
};

/* Descriptions, texts: one attribute for each language. */
enum {
  TAVD_ATT_DESCRIPTION_FINNISH = 9550,
  TAVD_ATT_DESCRIPTION_SWEDISH = 9551,
  TAVD_ATT_DESCRIPTION_ENGLISH = 9552,
  TAVD_ATT_DESCRIPTION_GERMAN = 9553,
  TAVD_ATT_DESCRIPTION_NORWEGIAN = 9554,
  TAVD_ATT_DESCRIPTION_FRENCH = 9555,
  TAVD_ATT_DESCRIPTION_SPANISH = 9556,
  TAVD_ATT_DESCRIPTION_ITALIAN = 9557,
  TAVD_ATT_DESCRIPTION_POLISH = 9558,
  TAVD_ATT_DESCRIPTION_DANISH = 9559,
  TAVD_ATT_DESCRIPTION_CZECH = 9560,
  TAVD_ATT_DESCRIPTION_PORTUGUESE = 9561,
  TAVD_ATT_DESCRIPTION_HUNGARIAN = 9562,
  TAVD_ATT_DESCRIPTION_DUTCH = 9563,
  TAVD_ATT_DESCRIPTION_ICELANDIC = 9564,
  TAVD_ATT_DESCRIPTION_ESTONIAN = 9565,
  TAVD_ATT_DESCRIPTION_LITHUANIAN = 9566,
  TAVD_ATT_DESCRIPTION_LETTISH = 9567,
  TAVD_ATT_DESCRIPTION_RUSSIAN = 9568,
  TAVD_ATT_DESCRIPTION_FLEMISH = 9569,
  TAVD_ATT_DESCRIPTION_SLOVAK = 9570,
  TAVD_ATT_DESCRIPTION_BULGARIAN = 9571,
  TAVD_ATT_DESCRIPTION_ROMANIAN = 9572,
  TAVD_ATT_DESCRIPTION_BOSNIAN = 9573,
  TAVD_ATT_DESCRIPTION_CROATIAN = 9574,
  TAVD_ATT_DESCRIPTION_SLOVENIAN = 9590,
  TAVD_ATT_DESCRIPTION_ARABIC = 9591,
  TAVD_ATT_DESCRIPTION_JAPANESE = 9592,
  TAVD_ATT_DESCRIPTION_CHINESE = 9593,
  TAVD_ATT_DESCRIPTION_TURKISH = 9594
};

/* The numbers among which those texts lie; not every number between is one. */
enum {
  TAVD_ATT_LOWEST_WEBLINK = 8500,
  TAVD_ATT_HIGHEST_WEBLINK = 8533,
  TAVD_ATT_LOWEST_CODE = 9500,
  TAVD_ATT_HIGHEST_CODE = 9533,
  TAVD_ATT_LOWEST_DESCRIPTION = 9550,
  TAVD_ATT_HIGHEST_DESCRIPTION = 9594
};

/* Shape numbers, item 0 of attribute 1110, that tavdf_check_shapedata completes
 * or converts, and what it makes of them. docs/shapes.md shows all shapes. */
enum {
  TAVD_SHAPE_OLD_BOX = 104, /* box with a grille below; becomes TAVD_SHAPE_BOX */
  TAVD_SHAPE_BOX = 118,
  TAVD_SHAPE_DAMPER = 130,            /* butterfly damper in a round duct */
  TAVD_SHAPE_HEATER = 140,            /* electric heater in a round duct */
  TAVD_SHAPE_FILTER = 150,            /* filter in a box between round ducts */
  TAVD_SHAPE_CASING = 180,            /* rectangular casing, such as a sound attenuator */
  TAVD_SHAPE_CASING_BY_MARGINS = 181, /* the same by margins around the duct */
  TAVD_SHAPE_ROUND_CASING = 182,
  TAVD_SHAPE_ROUND_CASING_BY_MARGIN = 183
};

/* How much of an attribute is read, at most. Further items are not looked at. */
enum {
  TAVD_DIAMETER_ITEMS = 80,     /* 1102 */
  TAVD_SHAPE_ITEMS = 50,        /* 1110, in family lists and pictures */
  TAVD_MAKER_BYTES = 99,        /* 1503 */
  TAVD_ID_TEMPLATE_BYTES = 256, /* 1511; 200 by tavd_build_productId_ds */
  TAVD_PAR_NAMES_BYTES = 80,    /* 1514 */
  TAVD_MODEL_ID_BYTES = 39      /* 1525 and 1669 */
};

#endif
