/* Settings that choose among a product's texts: market area, user language,
 * and the path of the service's vlk file.
 *
 * A product carries its code and its web link once per market, and its
 * description once per language. The host sets market and language when it
 * starts; every read of a product text (tavd/tavdf.h) asks for the attribute
 * numbers anew, so a change takes effect at the next read and does not reach
 * texts that were copied before.
 *
 * The settings are one block for the whole process, zero at load, without a
 * lock. An unknown market or language is no error: it leads to the defaults.
 *
 * Arguments, where a function says nothing else:
 *   lng         number of the language
 *   marketArea  narrow, terminated
 */
#ifndef TAVD_TAVDCORE_H
#define TAVD_TAVDCORE_H

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

/* Room of the settings, in characters with the terminator. Longer texts are
 * cut. */
enum { TAVDCORE_MARKET_CHARS = 40, TAVDCORE_PATH_CHARS = 300 };

/* Languages of descriptions, for tavdcore_set_user_lng. */
enum {
  TAVD_LANGUAGE_FINNISH = 1510,
  TAVD_LANGUAGE_SWEDISH = 1511,
  TAVD_LANGUAGE_ENGLISH = 1512,
  TAVD_LANGUAGE_GERMAN = 1513,
  TAVD_LANGUAGE_NORWEGIAN = 1514,
  TAVD_LANGUAGE_FRENCH = 1515,
  TAVD_LANGUAGE_SPANISH = 1516,
  TAVD_LANGUAGE_ITALIAN = 1517,
  TAVD_LANGUAGE_POLISH = 1518,
  TAVD_LANGUAGE_DANISH = 1519,
  TAVD_LANGUAGE_CZECH = 1520,
  TAVD_LANGUAGE_PORTUGUESE = 1521,
  TAVD_LANGUAGE_HUNGARIAN = 1522,
  TAVD_LANGUAGE_DUTCH = 1523,
  TAVD_LANGUAGE_ICELANDIC = 1524,
  TAVD_LANGUAGE_ESTONIAN = 1525,
  TAVD_LANGUAGE_LITHUANIAN = 1526,
  TAVD_LANGUAGE_LETTISH = 1527,
  TAVD_LANGUAGE_RUSSIAN = 1528,
  TAVD_LANGUAGE_FLEMISH = 1529,
  TAVD_LANGUAGE_SLOVAK = 1530,
  TAVD_LANGUAGE_BULGARIAN = 1531,
  TAVD_LANGUAGE_ROMANIAN = 1532,
  TAVD_LANGUAGE_BOSNIAN = 1533,
  TAVD_LANGUAGE_CROATIAN = 1534,
  TAVD_LANGUAGE_SLOVENIAN = 1535,
  TAVD_LANGUAGE_ARABIC = 1536,
  TAVD_LANGUAGE_JAPANESE = 1537,
  TAVD_LANGUAGE_TURKISH = 1538,
  TAVD_LANGUAGE_CHINESE = 1539
};

/* Clears all settings and sets language, market area and the path of the vlk
 * file, narrow or wide. Each form leaves the other form's path empty, and
 * tavdf_open_database passes on the narrow path, tavdf_open_databasew the wide
 * one: use one family.
 *   lng          language number as tavdcore_set_user_lng takes it
 *   marketArea   as tavdcore_set_market_area takes it, may be null
 *   vlkFilename  terminated, at most 299 characters; null counts as empty */
TAVD_API void tavdcore_init(int16_t lng, const char* marketArea, const char* vlkFilename);
TAVD_API void tavdcore_initw(int16_t lng, const char* marketArea, const tavd_wchar* vlkFilename);

/* Sets the market area: a country code of three letters, such as "FIN", at
 * most 39 characters, kept in upper case. Those with texts of their own end the
 * names of TAVD_ATT_WEBLINK_ (tavd/attributes.h). Null or empty: no market. */
TAVD_API void tavdcore_set_market_area(const char* marketArea);

/* Sets the language of descriptions, one of TAVD_LANGUAGE_. A number without a
 * language gives no description. */
TAVD_API void tavdcore_set_user_lng(int16_t lng);

/* The settings as they are held: the address of the process's own field, valid
 * for good, never null, not to be written to. */
TAVD_API const char* tavdcore_vlkFilename(void);
TAVD_API const tavd_wchar* tavdcore_vlkFilenamew(void);
TAVD_API const char* tavdcore_marketArea(void);

/* The attribute that holds the product code of the market area, one of
 * TAVD_ATT_CODE_ (tavd/attributes.h); TAVD_ATT_CODE_DEFAULT, the code for
 * markets without an attribute of their own, if the market is unknown, empty,
 * or only a language. */
TAVD_API int16_t tavdcore_pcodeAttId(void);

/* The attribute that holds the description in the user's language, one of
 * TAVD_ATT_DESCRIPTION_; 0 if the language is unknown: there is no default
 * description. */
TAVD_API int16_t tavdcore_pdescAttId(void);

/* The attribute that holds the web link of the market area, one of
 * TAVD_ATT_WEBLINK_; TAVD_ATT_WEBLINK_DEFAULT where tavdcore_pcodeAttId would
 * answer TAVD_ATT_CODE_DEFAULT. */
TAVD_API int16_t tavdcore_weblinkAttId(void);

TAVD_EXTERN_C_END

#endif
