"""Selection: which products fit a duty, or each line of a schedule."""

from __future__ import annotations

import ctypes
import re
import threading
import weakref
from collections.abc import Callable, Iterable, Mapping, Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from tavd import _binding, _record, _tables
from tavd._declarations import CONSTANTS
from tavd._errors import Error, NotFoundError
from tavd._product import DAMPERS, ROOM_DAMPING
from tavd._results import BANDS, message
from tavd._units import FLOWS, PRESSURES, in_base
from tavd._wording import narrow_text, printable, shown

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from tavd._database import Database

_USUAL_HITS = 5
_RANKS = {name: CONSTANTS["TAVDN_RANK_" + name.upper()] for name in ("sound", "pressure", "size", "fit")}
_ANSWERS = {name: CONSTANTS["TAVDN_UNKNOWN_" + name.upper()] for name in ("size", "pressure", "sound", "throw")}
_CATALOGUES_KEPT = 4  # each for other values of parameters
_MOST_SIZE = 32767  # mm

Values = tuple[tuple[str, str], ...]
"""Values of parameters by name, sorted: a set that holds together."""


class Selector:
    """The products of a database as they are selected from."""

    def __init__(self, database: Database) -> None:
        self._database = database
        self._catalogues: dict[tuple[tuple[Values, ...], bool], _Catalogue] = {}
        self._lock = threading.Lock()

    def select(self, schedule: Any, given: dict[str, Any]) -> Any:
        usual = dict(given)
        explain = bool(usual.pop("explain", False))
        threads = int(usual.pop("threads", 0))
        without = bool(usual.pop("without_end_reflection", False))
        _check_names(usual)
        if schedule is None:
            lines: list[dict[str, Any]] = [usual]
            own: dict[str, Sequence[Any]] = {}
        else:
            lines, own = _lines(_tables.columns_of(schedule), usual)
        sets = tuple(dict.fromkeys(_values(line.get("parameters")) for line in lines)) or ((),)
        catalogue = self._catalogue(sets, without)
        duties = _Duties(catalogue, lines, sets, schedule is not None)
        answered = catalogue.answer(duties, explain, threads)
        return _tables.table(answered.columns(own if schedule is not None else None))

    def _catalogue(self, sets: tuple[Values, ...], without: bool) -> _Catalogue:
        with self._lock:
            key = (sets, without)
            catalogue = self._catalogues.get(key)
            if catalogue is None:
                catalogue = _Catalogue(self._database, sets, without)
                while len(self._catalogues) >= _CATALOGUES_KEPT:
                    del self._catalogues[next(iter(self._catalogues))]
                self._catalogues[key] = catalogue
            return catalogue


# ---- Lines as they are given

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
        if word.lower() not in _ANSWERS:
            raise ValueError(f"{name} has {word!r}, expected any of {', '.join(_ANSWERS)}")
        duty.unknown_allowed |= int(_ANSWERS[word.lower()])


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


def _check_names(given: Mapping[str, Any]) -> None:
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


def _values(parameters: Any) -> Values:
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


def _lines(
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


class _Duties:
    """Lines as the records that the library is asked with."""

    def __init__(
        self, catalogue: _Catalogue, lines: list[dict[str, Any]], sets: tuple[Values, ...], is_schedule: bool
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

    def _fill(self, catalogue: _Catalogue, duty: Any, line: Mapping[str, Any], sets: tuple[Values, ...]) -> None:
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
        duty.values = sets.index(_values(line.get("parameters")))
        check = _binding.function("tavdn_check_duty")(catalogue.address, duty)
        if check != 0:
            raise ValueError(message("tavdn_check_duty", check))

    def _classes(self, catalogue: _Catalogue, classes: tuple[str, ...]) -> tuple[Any, int]:
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


# ---- What is asked and answered


class _Catalogue:
    """Products made ready, of tavdn_catalogue_open."""

    path: str
    address: int
    classes: set[str]

    def __init__(self, database: Database, sets: tuple[Values, ...], without: bool) -> None:
        self.path = database.path
        options = _binding.record("tavdn_catalogue_options")()
        options.size = ctypes.sizeof(options)
        options.language = database.language
        options.market = database.market.encode()
        pairs = [(_binding.record("tavdn_value") * len(values))(*[_value(*pair) for pair in values]) for values in sets]
        of_sets = (_binding.record("tavdn_values") * len(sets))()
        for place, values in zip(of_sets, pairs):
            place.values, place.count = values, len(values)
        options.sets, options.nsets = of_sets, len(sets)
        options.without_end_reflection = int(without)
        made = ctypes.c_void_p()
        code = _binding.function("tavdn_catalogue_open")(database.handle, options, ctypes.byref(made))
        reason = printable(_record.functions().tavdsrv_lasterror().decode("utf-8", "replace"))
        if code != 0 or made.value is None:
            raise MemoryError(message("tavdn_catalogue_open", code))
        self.address = made.value
        self._end = weakref.finalize(self, _binding.function("tavdn_catalogue_close"), self.address)
        if reason:
            raise Error(reason)
        self.count = int(_binding.function("tavdn_catalogue_count")(self.address))
        self.texts = {
            name: np.empty(self.count, dtype=object) for name in ("class", "id", "code", "description", "size")
        }
        self.is_damper = np.zeros(self.count, np.bool_)
        self.is_fan = np.zeros(self.count, np.bool_)
        self._is_described = np.zeros(self.count, np.bool_)
        listed = _binding.function("tavdn_catalogue_product")
        self.classes = {listed(self.address, index).contents.class_id.decode().ljust(3) for index in range(self.count)}
        if any(sets):
            self._refuse_unknown(sets)

    def describe(self, products: NDArray[np.uint32]) -> None:
        """Makes what a table says of these products ready: of most nobody asks."""
        for index in np.unique(products[~self._is_described[products]]).tolist():
            product = _binding.function("tavdn_catalogue_product")(self.address, index).contents
            kind = self._flow(index).kind
            duct = product.duct
            size = f"{duct.b}" if duct.shape == CONSTANTS["TAVD_DUCT_ROUND"] else f"{duct.b}x{duct.h}"
            row = (
                narrow_text(product.class_id),
                narrow_text(product.object_id),
                _wide(product.code),
                _wide(product.description),
                size if duct.b else "",
            )
            for texts, text in zip(self.texts.values(), row):
                texts[index] = text
            self.is_damper[index] = kind in DAMPERS
            self.is_fan[index] = kind == CONSTANTS["TAVD_KIND_FAN"]
            self._is_described[index] = True

    def _flow(self, index: int) -> Any:
        variant = _binding.function("tavdn_catalogue_variant")(self.address, index, 0)
        return _binding.function("tavdn_flowdata")(variant).contents

    def _refuse_unknown(self, sets: Iterable[Values]) -> None:
        """A name that no product knows is a mistake: it would choose nothing without a word."""
        known: dict[str, str] = {}
        for index in range(self.count):
            flow = self._flow(index)
            for table in flow.par[: flow.npar]:
                name = narrow_text(table.name)
                known[name.lower()] = name
        for values in sets:
            for name, _ in values:
                if name.lower() not in known:
                    told = ", ".join(sorted(known.values())) or "none"
                    raise ValueError(f"no product in {self.path} has a parameter {name!r}; there are {told}")

    def answer(self, duties: _Duties, explain: bool, threads: int) -> _Answer:
        count = len(duties.records)
        room = max((duty.wanted for duty in duties.records), default=1)
        room = min(room, max(self.count, 1))
        for duty in duties.records:
            duty.wanted = min(duty.wanted, room)
        hits = np.empty((count, room), _hit_type())
        fitting = np.empty(count, np.dtype([("products", np.uintp), ("hits", np.int32)], align=True))
        reasons = np.empty((count, self.count), np.uint8) if explain else None
        bad = ctypes.c_size_t()
        code = _binding.function("tavdn_select_many")(
            self.address, count, duties.records, room, hits, fitting, reasons, threads, ctypes.byref(bad)
        )
        if code == CONSTANTS["TAVDN_NO_MEMORY"]:
            raise MemoryError(message("tavdn_select_many", code))
        if code != 0:
            raise ValueError(f"line {bad.value} of the schedule: {message('tavdn_select_many', code)}")
        return _Answer(self, duties, hits, fitting, reasons)


class _Answer:
    """The hits of all lines, and what a table has of them."""

    def __init__(
        self,
        catalogue: _Catalogue,
        duties: _Duties,
        hits: NDArray[Any],
        fitting: NDArray[Any],
        reasons: NDArray[np.uint8] | None,
    ) -> None:
        self._catalogue = catalogue
        self._fitting = fitting
        self._reasons = reasons
        found = fitting["hits"]
        shown_lines = np.maximum(found, 1)
        self._line = np.repeat(np.arange(len(found)), shown_lines)
        self._place = np.arange(len(self._line)) - np.repeat(np.cumsum(shown_lines) - shown_lines, shown_lines)
        self._is_hit = found[self._line] > 0
        self._hits = hits[self._line[self._is_hit], self._place[self._is_hit]]

    def columns(self, own: Mapping[str, Sequence[Any]] | None) -> dict[str, Any]:
        """Of a schedule with columns of its own, or (None) of a single duty."""
        if own is None:
            self._line, self._place = self._line[self._is_hit], self._place[self._is_hit]
            self._is_hit = np.ones(len(self._line), np.bool_)
            return self._of_hits()
        columns: dict[str, Any] = {}
        for name, column in own.items():
            kept = np.empty(len(column), dtype=object)
            kept[:] = column
            columns[name] = _narrowed(kept[self._line])
        columns["duty"] = self._line
        columns["fitting"] = self._fitting["products"][self._line].astype(np.int64)
        columns.update(self._of_hits())
        if self._reasons is not None:
            columns["why_not"] = self._why_not()
        return columns

    def _of_hits(self) -> dict[str, Any]:
        catalogue, hits = self._catalogue, self._hits
        product = hits["product"]
        catalogue.describe(product)
        unknown = hits["unknown"]
        is_damper, is_fan = catalogue.is_damper[product], catalogue.is_fan[product]
        has_range = hits["range_code"] == 0
        has_sound = (unknown & np.uint32(_ANSWERS["sound"])) == 0
        has_throw = (unknown & np.uint32(_ANSWERS["throw"])) == 0
        columns: dict[str, Any] = {"rank": self._spread(self._place[self._is_hit] + 1, 0)}
        for name, texts in catalogue.texts.items():
            columns[name] = self._spread(texts[product], None)
        numbers = {
            "qv": hits["qv"],
            "dp": hits["dp"],
            "dp_min": np.where(has_range, hits["dp_min"], np.nan),
            "dp_max": np.where(has_range, hits["dp_max"], np.nan),
            "fan_total": np.where(is_fan, hits["fan_total"], np.nan),
            "position": np.where(is_damper & _has_position(hits["position_code"]), hits["position"], np.nan),
            "setting": np.where(is_damper & _has_position(hits["setting_code"]), hits["setting"], np.nan),
            "lpa": np.where(has_sound, hits["lpa"], np.nan),
            **{f"lw_{band}": np.where(has_sound, hits["lw"][:, place], np.nan) for place, band in enumerate(BANDS)},
            "throw": np.where(has_throw, hits["throw_length"], np.nan),
            "area": hits["area"],
            "fit": hits["fit"],
        }
        for name, array in numbers.items():
            columns[name] = self._spread(array.astype(np.float32), np.float32(np.nan))
        columns["unknown"] = self._spread(_unknown_words()[unknown], "")
        return columns

    def _spread(self, of_hits: NDArray[Any], otherwise: Any) -> NDArray[Any]:
        """Numbers of hits on all lines, also on those without one."""
        if len(of_hits) == len(self._is_hit):
            return of_hits
        spread = np.full(len(self._is_hit), otherwise, dtype=of_hits.dtype)
        spread[self._is_hit] = of_hits
        return spread

    def _why_not(self) -> NDArray[Any]:
        assert self._reasons is not None
        words = np.full(len(self._line), "", dtype=object)
        for row in np.flatnonzero(~self._is_hit):
            reasons = self._reasons[self._line[row]]
            if len(reasons):
                last = int(reasons.max())
                count = int(np.count_nonzero(reasons == last))
                words[row] = f"{message('TAVDN_WHY_', last)}: {count} product{'s' if count != 1 else ''}"
        return words


def _has_position(code: NDArray[np.int32]) -> NDArray[np.bool_]:
    inside: NDArray[np.bool_] = (code >= int(CONSTANTS["TAVCA_POS_BELOW_TABLE"])) & (
        code <= int(CONSTANTS["TAVCA_POS_ABOVE_TABLE"])
    )
    return inside


def _unknown_words() -> NDArray[Any]:
    """What is unknown in words, by its bits."""
    words = [", ".join(name for name, bit in _ANSWERS.items() if bits & int(bit)) for bits in range(16)]
    return np.array(words, dtype=object)


def _narrowed(column: NDArray[Any]) -> Any:
    """A column of whatever it holds: numbers where all are numbers."""
    return np.array(column.tolist()) if all(type(value) in (int, float, bool) for value in column) else column


def _hit_type() -> np.dtype[Any]:
    """The record of a hit as numpy has it."""
    record = _binding.record("tavdn_hit")
    kinds = {ctypes.c_float: np.float32, ctypes.c_int32: np.int32, ctypes.c_uint32: np.uint32}
    names, formats, offsets = [], [], []
    for name, kind in record._fields_:
        names.append(name)
        formats.append(kinds[kind] if kind in kinds else (kinds[kind._type_], kind._length_))
        offsets.append(getattr(record, name).offset)
    return np.dtype({"names": names, "formats": formats, "offsets": offsets, "itemsize": ctypes.sizeof(record)})


def _value(name: str, value: str) -> tuple[bytes, bytes | None]:
    return name.encode(), None if value == "*" else value.encode()


def _wide(address: Any) -> str:
    """Terminated UTF-16 at an address."""
    units = bytearray()
    at = ctypes.cast(address, ctypes.c_void_p).value
    while at is not None:
        unit = ctypes.string_at(at, 2)
        if unit == b"\0\0":
            break
        units += unit
        at += 2
    return shown(bytes(units))
