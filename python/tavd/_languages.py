"""Languages of descriptions, as users name them."""

from __future__ import annotations

from tavd._declarations import CONSTANTS

_PREFIX = "TAVD_LANGUAGE_"

# ISO 639-1 by the name of the constant, and the market area that speaks it: its country, or letters of its own.
_WORDS = {
    "FINNISH": ("fi", "FIN"),
    "SWEDISH": ("sv", "SWE"),
    "ENGLISH": ("en", "GBR"),
    "GERMAN": ("de", "DEU"),
    "NORWEGIAN": ("no", "NOR"),
    "FRENCH": ("fr", "FRA"),
    "SPANISH": ("es", "ESP"),
    "ITALIAN": ("it", "ITA"),
    "POLISH": ("pl", "POL"),
    "DANISH": ("da", "DNK"),
    "CZECH": ("cs", "CZE"),
    "PORTUGUESE": ("pt", "PRT"),
    "HUNGARIAN": ("hu", "HUN"),
    "DUTCH": ("nl", "NLD"),
    "ICELANDIC": ("is", "ISL"),
    "ESTONIAN": ("et", "EST"),
    "LITHUANIAN": ("lt", "LTU"),
    "LETTISH": ("lv", "LVA"),
    "RUSSIAN": ("ru", "RUS"),
    "FLEMISH": ("nl-be", "FL"),
    "SLOVAK": ("sk", "SVK"),
    "BULGARIAN": ("bg", "BGR"),
    "ROMANIAN": ("ro", "ROU"),
    "BOSNIAN": ("bs", "BIH"),
    "CROATIAN": ("hr", "HRV"),
    "SLOVENIAN": ("sl", "SVN"),
    "ARABIC": ("ar", "AR"),
    "JAPANESE": ("ja", "JPN"),
    "TURKISH": ("tr", "TUR"),
    "CHINESE": ("zh", "CHN"),
}


def language_number(name: str | int) -> int:
    """The number of a language by its number (1512), code ("GBR"), two letters ("en") or English name ("English")."""
    asked = str(name).lower()
    for word, (iso, market) in _WORDS.items():
        number = int(CONSTANTS[_PREFIX + word])
        if asked in (iso, market.lower(), word.lower(), str(number)):
            return number
    known = ", ".join(iso for iso, _ in _WORDS.values())
    raise ValueError(f"no language {name!r}; there are {known}")


def language_of_market(market: str) -> int:
    """The language that goes with a market area; English if it has none of its own."""
    for word, (_, code) in _WORDS.items():
        if code == market.upper():
            return int(CONSTANTS[_PREFIX + word])
    return int(CONSTANTS[_PREFIX + "ENGLISH"])
