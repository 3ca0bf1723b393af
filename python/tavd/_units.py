"""Units of flows and pressures that schedules may have."""

from __future__ import annotations

_SECONDS_PER_HOUR = 3600.0
_LITRES = 1000.0  # in a cubic metre
# The international foot is 0.3048 m and the inch 0.0254 m, exactly; columns of water have 1000 kg/m3 and the standard
# gravity of 9.80665 m/s2 (ISO 80000-4).
_MILLIMETRE_OF_WATER = 9.80665  # Pa

FLOWS = {
    "l/s": 1.0,
    "l/h": 1 / _SECONDS_PER_HOUR,
    "m3/s": _LITRES,
    "m3/h": _LITRES / _SECONDS_PER_HOUR,
    "cfm": 0.3048 * 0.3048 * 0.3048 * _LITRES / 60,
}
"""One of each in l/s."""
PRESSURES = {
    "Pa": 1.0,
    "kPa": 1000.0,
    "inWC": 25.4 * _MILLIMETRE_OF_WATER,
    "inwg": 25.4 * _MILLIMETRE_OF_WATER,
    "mmwg": _MILLIMETRE_OF_WATER,
}
"""One of each in Pa."""


def in_base(unit: str, known: dict[str, float]) -> float | None:
    """One of a unit in base units; case, points, blanks, quotes and carets do not count, a raised 3 is a 3."""
    asked = _plain(unit)
    return next((factor for name, factor in known.items() if _plain(name) == asked), None)


def _plain(name: str) -> str:
    return name.replace("³", "3").translate({ord(sign): None for sign in '. "^'}).lower()
