"""What a product answers: numbers of many points as arrays, of one point as plain numbers, and their codes in words."""

from __future__ import annotations

import struct
from typing import TYPE_CHECKING, Any, Generic, TypeVar, overload

import numpy as np

if TYPE_CHECKING:
    # What is for type checkers alone is not loaded: it would take as long as all of this package.
    from numpy.typing import NDArray

    _Int32Array = np.ndarray[Any, np.dtype[np.int32]]
    _FloatArray = NDArray[np.float32]
else:
    _Int32Array = _FloatArray = np.ndarray

BANDS = (63, 125, 250, 500, 1000, 2000, 4000, 8000)
"""Octave bands, Hz: the last axis of `lw` and `dlw`."""


class Field:
    """A member of tavdn_results."""

    __slots__ = ("name", "member", "is_code", "bands", "offset")

    def __init__(self, name: str, member: str, is_code: bool = False, bands: int = 1) -> None:
        self.name = name
        self.member = member
        self.is_code = is_code
        self.bands = bands
        self.offset = 0  # bytes, where it stands in the answers to one point

    def columns(self) -> list[str]:
        """Names of its columns in a table."""
        if self.is_code:
            return [code_column(self.name)]
        return [self.name] if self.bands == 1 else [f"{self.name}_{band}" for band in BANDS]


def code_column(name: str) -> str:
    """The column of a code in a table."""
    return f"code_{name}"


# In the order of the record. A code has the name of what it is about, and the function in whose words it is told.
FIELDS = (
    Field("range", "range_code", True),
    Field("dp_min", "dp_min"),
    Field("dp_max", "dp_max"),
    Field("position", "position_code", True),
    Field("position", "position"),
    Field("setting", "setting_code", True),
    Field("setting", "setting"),
    Field("fan", "fan_code", True),
    Field("fan_total", "fan_total"),
    Field("fan_static", "fan_static"),
    Field("fan_dynamic", "fan_dynamic"),
    Field("fan_check", "fan_check", True),
    Field("lw", "lw_code", True),
    Field("lw", "lw", bands=8),
    Field("lpa", "lpa"),
    Field("dlw", "dlw_code", True),
    Field("dlw", "dlw", bands=8),
    Field("throw", "throw_code", True),
    Field("throw", "throw_length"),
)
FUNCTIONS = {
    "range": "tavca_minmaxdptot",
    "position": "tavca_damper_pos",
    "setting": "tavca_damper_pos_fixed",
    "fan": "tavca_fan_dp",
    "fan_check": "tavca_fan_op_check",
    "lw": "tavca_lw",
    "dlw": "tavca_dlw",
    "throw": "tavdn_results.throw_code",
}
# Each number with the code that says why it may be 0.
CODE_OF = {
    "dp_min": "range",
    "dp_max": "range",
    "position": "position",
    "setting": "setting",
    "fan_total": "fan",
    "fan_static": "fan",
    "fan_dynamic": "fan",
    "fan_check": "fan_check",
    "lw": "lw",
    "lpa": "lw",
    "dlw": "dlw",
    "throw": "throw",
}
ANSWERS = tuple(CODE_OF)
"""What can be asked for."""
Wanted = frozenset[tuple[str, bool]]
"""Names of the answers that were asked for, and of codes (True)."""

_at = 0
for _field in FIELDS:
    _field.offset = _at
    _at += 4 * _field.bands
SIZE = _at
"""Bytes of the answers to one point."""
_PLACES = {(field.name, field.is_code): field.offset for field in FIELDS}


def message(function: str, code: int) -> str:
    """What a code of a function means, an English phrase.

    >>> message("tavca_damper_pos", -1)
    'more open than the last setting'
    """
    from tavd import _binding

    text = _binding.function("tavdn_message")(function.encode(), code)
    return "not calculated" if text is None else str(text.decode())


class Code(int):
    """A code of one point; 0 is success."""

    function: str

    def __new__(cls, code: int, function: str) -> Code:
        made = super().__new__(cls, code)
        made.function = function
        return made

    def message(self) -> str:
        """What it means."""
        return message(self.function, int(self))


class Codes(_Int32Array):
    """Codes of many points, int32; 0 is success."""

    function: str

    def __array_finalize__(self, source: Any) -> None:
        self.function = getattr(source, "function", "")

    def __reduce__(self) -> Any:
        return _codes, (np.asarray(self), self.function)

    def message(self) -> NDArray[Any]:
        """What each of them means, an array of texts of the same shape."""
        known, places = np.unique(np.asarray(self), return_inverse=True)
        words = np.array([message(self.function, int(code)) for code in known], dtype=object)
        return words[places].reshape(self.shape)


def _codes(numbers: NDArray[np.int32], function: str) -> Codes:
    made: Codes = numbers.view(Codes)
    made.function = function
    return made


_T = TypeVar("_T")


class _Of(Generic[_T]):
    """A number of one point, taken out of the bytes when it is asked for."""

    is_code = False

    def __init__(self, text: str) -> None:
        self.__doc__ = text

    def __set_name__(self, owner: type, name: str) -> None:
        self._name = name
        self._key = (name, self.is_code)
        self._place = _PLACES[self._key]

    @overload
    def __get__(self, point: None, owner: Any) -> _Of[_T]:
        ...

    @overload
    def __get__(self, point: Any, owner: Any) -> _T:
        ...

    def __get__(self, point: Any, owner: Any) -> Any:
        if point is None:
            return self
        wanted = point._wanted
        if wanted is not None and self._key not in wanted:
            raise AttributeError(not_asked(self._name, {name for name, _ in wanted}))
        return self.take(point._data)

    def take(self, data: bytes) -> Any:
        raise NotImplementedError


_float = struct.Struct("<f").unpack_from
_int = struct.Struct("<i").unpack_from


class _Number(_Of[float]):
    def take(self, data: bytes) -> float:
        value: float = _float(data, self._place)[0]
        return value


class _Bands(_Of[_FloatArray]):
    def take(self, data: bytes) -> NDArray[np.float32]:
        return np.frombuffer(data, np.float32, len(BANDS), self._place).copy()


class _Code(_Of[Code]):
    is_code = True

    def take(self, data: bytes) -> Code:
        return Code(_int(data, self._place)[0], FUNCTIONS[self._name])


def not_asked(name: str, wanted: Any) -> str:
    return f"{name!r} was not asked for: want had {', '.join(sorted(wanted))}"


class PointCodes:
    """Codes of one point; 0 is success. Each is a whole number with a message()."""

    __slots__ = ("_data", "_wanted")

    def __init__(self, data: bytes, wanted: Wanted | None) -> None:
        self._data = data
        self._wanted = wanted

    range = _Code("of dp_min and dp_max (tavca_minmaxdptot)")
    position = _Code("of position (tavca_damper_pos)")
    setting = _Code("of setting (tavca_damper_pos_fixed)")
    fan = _Code("of fan_total, fan_static and fan_dynamic (tavca_fan_dp)")
    fan_check = _Code("whether a fan can serve the point (tavca_fan_op_check)")
    lw = _Code("of lw and lpa (tavca_lw)")
    dlw = _Code("of dlw (tavca_dlw): always 0")
    throw = _Code("of throw: 0, or -1 if the product has no throw line")

    def __repr__(self) -> str:
        return _told("PointCodes", self, FUNCTIONS)


class Point:
    """What a product answers at one operating point: plain numbers. One without an answer is 0, and its code says why."""

    __slots__ = ("qv", "dp", "_data", "_wanted")

    def __init__(self, qv: float, dp: float | None, data: bytes, wanted: Wanted | None) -> None:
        self.qv = qv
        self.dp = dp
        self._data = data
        self._wanted = wanted

    dp_min = _Number("lowest total pressure at this flow, Pa")
    dp_max = _Number("highest total pressure at this flow, Pa")
    position = _Number("damper position that gives `dp`, no unit")
    setting = _Number("nearest position of the damper's table, no unit")
    fan_total = _Number("total pressure of the fan, Pa")
    fan_static = _Number("static pressure of the fan, Pa")
    fan_dynamic = _Number("dynamic pressure in the fan's connection, Pa")
    lw = _Bands("sound power level, dB, 8 octave bands from 63 Hz")
    lpa = _Number("level in the room, dB(A)")
    dlw = _Bands("attenuation, dB, 8 octave bands from 63 Hz")
    throw = _Number("isothermal throw length, m")

    @property
    def codes(self) -> PointCodes:
        """The codes of all answers."""
        return PointCodes(self._data, self._wanted)

    def to_dict(self) -> dict[str, float]:
        """All numbers by name; bands as lw_63 to lw_8000, codes as code_range and so on."""
        return {name: column[0].item() for name, column in _columns(_as_points(self)).items()}

    def to_frame(self) -> Any:
        """The same as a table of one row: of pandas if it is there, else a list of records."""
        return _as_points(self).to_frame()

    def __repr__(self) -> str:
        return _told("Point", self, ("qv", "dp", *ANSWERS))


class AllCodes:
    """Codes of many points, an array for each answer; 0 is success. Each has a message()."""

    range: Codes
    position: Codes
    setting: Codes
    fan: Codes
    fan_check: Codes
    lw: Codes
    dlw: Codes
    throw: Codes

    def __init__(self, arrays: dict[str, Codes]) -> None:
        self.__dict__.update(arrays)

    def __getattr__(self, name: str) -> Codes:
        if name in FUNCTIONS:
            raise AttributeError(not_asked(name, self.__dict__))
        raise AttributeError(name)

    def __repr__(self) -> str:
        return _told("AllCodes", self, FUNCTIONS)


class Points:
    """What a product answers at many operating points: arrays of float32 of the shape that flows and pressures have together.

    A number without an answer is 0, and its code says why. Arrays of what the product has nothing to say about can only
    be read.
    """

    qv: NDArray[np.float32]
    """flow, l/s, or m/s by air velocity"""
    dp: NDArray[np.float32] | None
    """total pressure, Pa"""
    dp_min: NDArray[np.float32]
    """lowest total pressure at this flow, Pa"""
    dp_max: NDArray[np.float32]
    """highest total pressure at this flow, Pa"""
    position: NDArray[np.float32]
    """damper position that gives `dp`, no unit"""
    setting: NDArray[np.float32]
    """nearest position of the damper's table, no unit"""
    fan_total: NDArray[np.float32]
    """total pressure of the fan, Pa"""
    fan_static: NDArray[np.float32]
    """static pressure of the fan, Pa"""
    fan_dynamic: NDArray[np.float32]
    """dynamic pressure in the fan's connection, Pa"""
    lw: NDArray[np.float32]
    """sound power level, dB; a last axis of 8 octave bands from 63 Hz"""
    lpa: NDArray[np.float32]
    """level in the room, dB(A)"""
    dlw: NDArray[np.float32]
    """attenuation, dB; a last axis of 8 octave bands from 63 Hz"""
    throw: NDArray[np.float32]
    """isothermal throw length, m"""
    codes: AllCodes
    """the codes of all answers"""

    def __init__(
        self, qv: NDArray[np.float32], dp: NDArray[np.float32] | None, numbers: dict[str, Any], codes: dict[str, Any]
    ) -> None:
        self.__dict__.update(numbers)
        self.qv = qv
        self.dp = dp
        self.codes = AllCodes({name: _codes(array, FUNCTIONS[name]) for name, array in codes.items()})

    def __getattr__(self, name: str) -> NDArray[np.float32]:
        if name in CODE_OF:
            raise AttributeError(not_asked(name, {*self.__dict__} - {"qv", "dp", "codes"}))
        raise AttributeError(name)

    def to_frame(self) -> Any:
        """A table of one row a point: of pandas if it is there, else a list of records. Bands are columns lw_63 to lw_8000,
        codes are columns code_range and so on."""
        from tavd import _tables

        return _tables.table(_columns(self))

    def __repr__(self) -> str:
        return f"Points({np.asarray(self.qv).shape}: {', '.join(name for name in ANSWERS if name in self.__dict__)})"


def _columns(points: Points) -> dict[str, NDArray[Any]]:
    columns: dict[str, NDArray[Any]] = {"qv": np.ravel(points.qv)}
    if points.dp is not None:
        columns["dp"] = np.ravel(np.broadcast_to(points.dp, points.qv.shape))
    for field in FIELDS:
        if field.is_code:
            continue
        array = points.__dict__.get(field.name)
        if array is None:
            continue
        names = field.columns()
        for name, column in zip(names, np.reshape(array, (-1, len(names))).T):
            columns[name] = np.ascontiguousarray(column)
    for name, codes in points.codes.__dict__.items():
        columns[code_column(name)] = np.ravel(np.asarray(codes))
    return columns


def _as_points(point: Point) -> Points:
    numbers: dict[str, Any] = {}
    codes: dict[str, Any] = {}
    for field in FIELDS:
        wanted = point._wanted
        if wanted is not None and (field.name, field.is_code) not in wanted:
            continue
        kind = np.int32 if field.is_code else np.float32
        array = np.frombuffer(point._data, kind, field.bands, field.offset)
        (codes if field.is_code else numbers)[field.name] = array[np.newaxis] if field.bands > 1 else array
    dp = None if point.dp is None else np.array([point.dp], np.float32)
    return Points(np.array([point.qv], np.float32), dp, numbers, codes)


def _told(name: str, told: Any, names: Any) -> str:
    parts = []
    for part in names:
        value = getattr(told, part, None)
        if value is not None:
            parts.append(f"{part}={value:.6g}" if isinstance(value, float) else f"{part}={value}")
    return f"{name}({', '.join(parts)})"


__all__ = ["Code", "Codes", "Point", "PointCodes", "Points", "AllCodes", "BANDS", "message"]
