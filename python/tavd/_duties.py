"""What is needed: arguments and the lines of schedules as the records that the library is asked with."""

from __future__ import annotations

import ctypes
import re
from collections.abc import Callable, Mapping, Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from tavd import _binding
from tavd._declarations import CONSTANTS
from tavd._errors import NotFoundError
from tavd._points import ROOM_DAMPING
from tavd._results import BANDS, message
from tavd._units import FLOWS, PRESSURES, in_base

if TYPE_CHECKING:
    from tavd._select import Catalogue

_USUAL_HITS = 5
_RANKS = {name: CONSTANTS["TAVDN_RANK_" + name.upper()] for name in ("sound", "pressure", "size", "fit")}
_MOST_SIZE = 32767  # mm

UNKNOWN_ANSWERS = {name: CONSTANTS["TAVDN_UNKNOWN_" + name.upper()] for name in ("size", "pressure", "sound", "throw")}
"""Answers that a product may have no data for, and their bits."""
Values = tuple[tuple[str, str], ...]
"""Values of parameters by name, sorted: a set that holds together."""

_Take = Callable[["Any", "Any", "str"], None]


def _number(name: str, value: Any, expected: str = "a number above 0", above: float | None = 0.0) -> float:
    try:
        number = float(str(value).replace(",", ".")) if isinstance(value, str) else float(value)
    except (TypeError, ValueError):
        raise ValueError(f"{name} is {value!r}, expected {expected}") from None
    if not np.isfinite(number) or (above is not None and not number > above):
        raise ValueError(f"{name} is {value!r}, expected {expected}")
    return number


def _take_level(duty: Any, value: Any, name: str) -> None:
    duty.lp_max = _number(name, value)


def _take_bands(duty: Any, value: Any, name: str) -> None:
    expected = "8 levels in dB from 63 Hz to 8 kHz, 0 or None for any"
    bands = re.split(r"[ ,;]+", value.strip()) if isinstance(value, str) else list(value)
    if len(bands) != len(BANDS):
        raise ValueError(f"{name} is {value!r}, expected {expected}")
    for place, band in enumerate(bands):
        duty.lw_max[place] = 0.0 if band in (None, "-", 0) else _number(name, band, expected)


def _take_damping(duty: Any, value: Any, name: str) -> None:
    duty.roomdamp = _number(name, value, "a number of dB such as 4", None)


def _take_lowest(duty: Any, value: Any, name: str) -> None:
    duty.dp_lowest = _number(name, value, "a pressure of 0 Pa or more", -1e-30)


def _take_shortest(duty: Any, value: Any, name: str) -> None:
    duty.throw_min = _number(name, value, "a length of 0 m or more", -1e-30)


def _take_longest(duty: Any, value: Any, name: str) -> None:
    duty.throw_max = _number(name, value)


def _take_size(duty: Any, value: Any, name: str) -> None:
    is_range = isinstance(value, (tuple, list)) or (isinstance(value, str) and ":" in value)
    ends = (value.split(":") if isinstance(value, str) else list(value)) if is_range else [value, value]
    if len(ends) != 2:
        raise ValueError(f"{name} is {value!r}, expected a size, or the smallest and the largest")
    for duct, end in zip((duty.duct_min, duty.duct_max), ends):
        found = re.fullmatch(r"\s*(\d+)(?:\.0)?\s*(?:[xX]\s*(\d+)\s*)?", str(end))
        sides = [int(side) for side in found.groups() if side] if found else [0]
        if not all(1 <= side <= _MOST_SIZE for side in sides):
            raise ValueError(
                f"{name} is {value!r}, expected a diameter such as 160 or a width and a height such as 400x200, in mm"
            )
        duct.shape = CONSTANTS["TAVD_DUCT_RECTANGULAR" if len(sides) == 2 else "TAVD_DUCT_ROUND"]
        duct.b, duct.h = sides[0], sides[1] if len(sides) == 2 else 0


def _take_rank(duty: Any, value: Any, name: str) -> None:
    rank = _RANKS.get(str(value).lower())
    if rank is None:
        raise ValueError(f"{name} is {value!r}, expected one of {', '.join(_RANKS)}")
    duty.rank = rank


def _take_top(duty: Any, value: Any, name: str) -> None:
    number = _number(name, value, "a whole number from 1", 0.0)
    if number != int(number) or number >= 2**31:
        raise ValueError(f"{name} is {value!r}, expected a whole number from 1")
    duty.wanted = int(number)


def _take_unknown(duty: Any, value: Any, name: str) -> None:
    for word in _words(value):
        if word.lower() not in UNKNOWN_ANSWERS:
            raise ValueError(f"{name} has {word!r}, expected any of {', '.join(UNKNOWN_ANSWERS)}")
        duty.unknown_allowed |= int(UNKNOWN_ANSWERS[word.lower()])


# What a duty is told by, beside flow and pressure, its classes and its parameters.
_TAKEN: dict[str, _Take] = {
    "dp_lowest": _take_lowest,
    "max_lp": _take_level,
    "max_lw": _take_bands,
    "room_damping": _take_damping,
    "throw_min": _take_shortest,
    "throw_max": _take_longest,
    "size": _take_size,
    "allow_unknown": _take_unknown,
    "rank": _take_rank,
    "top": _take_top,
}
_NAMES = ("qv", "dp", *_TAKEN, "classes", "parameters", "flow_unit")
# Other names of columns, as the schedules of the program have them.
_COLUMNS = {
    "flow": "qv",
    "pressure": "dp",
    "dp min": "dp_lowest",
    "lp max": "max_lp",
    "lw max": "max_lw",
    "class": "classes",
    "rank": "rank",
    "top": "top",
    **{name.replace("_", " "): name for name in _NAMES},
}
_UNITS = {
    "max_lp": ("dB(A)", "dBA"),
    "max_lw": ("dB",),
    "room_damping": ("dB",),
    "throw_min": ("m",),
    "throw_max": ("m",),
    "size": ("mm",),
}


def check_names(given: Mapping[str, Any]) -> None:
    for name in given:
        if name not in _NAMES:
            raise ValueError(
                f"a duty has no {name!r}, expected any of {', '.join((*_NAMES, 'explain', 'threads', 'without_end_reflection'))}"
            )


def _words(value: Any) -> list[str]:
    return (
        [word for word in re.split(r"[ ,]+", value) if word]
        if isinstance(value, str)
        else [str(word) for word in value]
    )


def values_of(parameters: Any) -> Values:
    if not parameters:
        return ()
    return tuple(
        sorted(
            (str(name), f"{value:g}" if isinstance(value, float) else str(value))
            for name, value in dict(parameters).items()
        )
    )


def _is_given(value: Any) -> bool:
    """Whether a cell of a table says anything."""
    return (
        value is not None
        and value is not NotImplemented
        and value == value
        and not (isinstance(value, str) and not value.strip())
    )


def lines_of(
    columns: Mapping[str, Sequence[Any]], usual: dict[str, Any]
) -> tuple[list[dict[str, Any]], dict[str, Sequence[Any]]]:
    """The lines of a schedule as duties, and the columns that are its own."""
    own: dict[str, Sequence[Any]] = {}
    count = max((len(column) for column in columns.values()), default=0)
    lines = [dict(usual) for _ in range(count)]
    for heading, column in columns.items():
        found = re.fullmatch(r"\s*(.*?)\s*(?:\[(.*)\])?\s*", heading)
        assert found is not None
        plain, unit = re.sub(r"[\s_]+", " ", found[1]).lower(), found[2] or ""
        name = _COLUMNS.get(plain)
        if plain.startswith("param "):
            _put_parameter(lines, found[1].strip()[len("param ") :].strip(), column)
        elif name is None:
            own[heading] = column
        else:
            factor = _factor(heading, name, unit)
            for line, value in zip(lines, column):
                if _is_given(value):
                    line[name] = value if factor is None else _number(heading, value) * factor
                    if name == "qv":
                        line["flow_unit"] = "l/s" if unit else usual.get("flow_unit", "l/s")
    return lines, own


def _put_parameter(lines: list[dict[str, Any]], name: str, column: Sequence[Any]) -> None:
    for line, value in zip(lines, column):
        if _is_given(value):
            line["parameters"] = {**(line.get("parameters") or {}), name: value}


def _factor(heading: str, name: str, unit: str) -> float | None:
    """What numbers of a column are multiplied by."""
    known = FLOWS if name == "qv" else PRESSURES if name in ("dp", "dp_lowest") else None
    if not unit:
        return None
    if known is None:
        if unit not in _UNITS.get(name, ()):
            raise ValueError(
                f"a column is {heading!r}, expected {' or '.join(_UNITS.get(name, ('none',)))} as its unit"
            )
        return None
    factor = in_base(unit, known)
    if factor is None:
        raise ValueError(f"a column is {heading!r}, expected one of {', '.join(known)} as its unit")
    return factor


class Duties:
    """Lines as the records that the library is asked with."""

    def __init__(
        self, catalogue: Catalogue, lines: list[dict[str, Any]], sets: tuple[Values, ...], is_schedule: bool
    ) -> None:
        record = _binding.record("tavdn_duty")
        self.records = (record * len(lines))()
        self.flows = np.zeros(len(lines), np.float64)
        self._kept: dict[tuple[str, ...], Any] = {}
        for number, (duty, line) in enumerate(zip(self.records, lines)):
            try:
                self._fill(catalogue, duty, line, sets)
            except ValueError as error:
                raise ValueError(f"line {number} of the schedule: {error}" if is_schedule else str(error)) from None
            self.flows[number] = duty.qv

    def _fill(self, catalogue: Catalogue, duty: Any, line: Mapping[str, Any], sets: tuple[Values, ...]) -> None:
        duty.size = ctypes.sizeof(duty)
        duty.roomdamp = ROOM_DAMPING
        duty.wanted = _USUAL_HITS
        for name in ("qv", "dp"):
            if line.get(name) is None:
                raise ValueError(f"{name} is missing, expected a {'flow' if name == 'qv' else 'pressure'} above 0")
        unit = str(line.get("flow_unit", "l/s"))
        factor = in_base(unit, FLOWS)
        if factor is None:
            raise ValueError(f"flow_unit is {unit!r}, expected one of {', '.join(FLOWS)}")
        duty.qv = _number("qv", line["qv"]) * factor
        duty.dp = _number("dp", line["dp"])
        for name, take in _TAKEN.items():
            value = line.get(name)
            if value is not None:
                take(duty, value, name)
        classes = line.get("classes")
        if classes is not None:
            duty.classes, duty.nclasses = self._classes(catalogue, tuple(_words(classes)))
        duty.values = sets.index(values_of(line.get("parameters")))
        check = _binding.function("tavdn_check_duty")(catalogue.address, duty)
        if check != 0:
            raise ValueError(message("tavdn_check_duty", check))

    def _classes(self, catalogue: Catalogue, classes: tuple[str, ...]) -> tuple[Any, int]:
        """The same texts for all lines with the same classes."""
        if classes not in self._kept:
            for class_id in classes:
                if class_id.ljust(3) not in catalogue.classes:
                    known = ", ".join(sorted(catalogue.classes))
                    raise NotFoundError(f"no class {class_id!r} with flow data in {catalogue.path}; there are {known}")
            self._kept[classes] = (ctypes.c_char_p * len(classes))(
                *[class_id.ljust(3).encode() for class_id in classes]
            )
        return self._kept[classes], len(classes)
