"""Selection: which products fit a duty, or each line of a schedule."""

from __future__ import annotations

import ctypes
import threading
import weakref
from collections.abc import Iterable, Mapping, Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from tavd import _binding, _record, _tables
from tavd._declarations import CONSTANTS
from tavd._duties import UNKNOWN_ANSWERS, Duties, Values, check_names, lines_of, values_of
from tavd._errors import Error
from tavd._points import DAMPERS
from tavd._results import BANDS, message
from tavd._wording import narrow_text, printable, shown

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from tavd._database import Database

_CATALOGUES_KEPT = 4  # each for other values of parameters


class Selector:
    """The products of a database as they are selected from."""

    def __init__(self, database: Database) -> None:
        self._database = database
        self._catalogues: dict[tuple[tuple[Values, ...], bool], Catalogue] = {}
        self._lock = threading.Lock()

    def select(self, schedule: Any, given: dict[str, Any]) -> Any:
        usual = dict(given)
        explain = bool(usual.pop("explain", False))
        threads = int(usual.pop("threads", 0))
        without = bool(usual.pop("without_end_reflection", False))
        check_names(usual)
        if schedule is None:
            lines: list[dict[str, Any]] = [usual]
            own: dict[str, Sequence[Any]] = {}
        else:
            lines, own = lines_of(_tables.columns_of(schedule), usual)
        sets = tuple(dict.fromkeys(values_of(line.get("parameters")) for line in lines)) or ((),)
        catalogue = self._catalogue(sets, without)
        duties = Duties(catalogue, lines, sets, schedule is not None)
        answered = catalogue.answer(duties, explain, threads)
        return _tables.table(answered.columns(own if schedule is not None else None))

    def _catalogue(self, sets: tuple[Values, ...], without: bool) -> Catalogue:
        with self._lock:
            key = (sets, without)
            catalogue = self._catalogues.get(key)
            if catalogue is None:
                catalogue = Catalogue(self._database, sets, without)
                while len(self._catalogues) >= _CATALOGUES_KEPT:
                    del self._catalogues[next(iter(self._catalogues))]
                self._catalogues[key] = catalogue
            return catalogue


class Catalogue:
    """Products made ready, of tavdn_catalogue_open."""

    path: str
    address: int
    classes: set[str]

    def __init__(self, database: Database, sets: tuple[Values, ...], without: bool) -> None:
        self.path = database.shown
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

    def answer(self, duties: Duties, explain: bool, threads: int) -> _Answer:
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
        catalogue: Catalogue,
        duties: Duties,
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
            columns[name] = narrowed(kept[self._line])
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
        has_sound = (unknown & np.uint32(UNKNOWN_ANSWERS["sound"])) == 0
        has_throw = (unknown & np.uint32(UNKNOWN_ANSWERS["throw"])) == 0
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
    words = [", ".join(name for name, bit in UNKNOWN_ANSWERS.items() if bits & int(bit)) for bits in range(16)]
    return np.array(words, dtype=object)


def narrowed(column: NDArray[Any]) -> Any:
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
