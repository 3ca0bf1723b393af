"""A product: what it is, and what it answers."""

from __future__ import annotations

import ctypes
import math
import weakref
from collections.abc import Iterable, Mapping
from functools import lru_cache
from typing import TYPE_CHECKING, Any, NamedTuple, overload

import numpy as np

from tavd import _binding
from tavd._declarations import CONSTANTS
from tavd._record import Record, filled_code
from tavd._results import ANSWERS, CODE_OF, FIELDS, SIZE, Point, Points, Wanted
from tavd._wording import narrow_text

if TYPE_CHECKING:
    from numpy.typing import ArrayLike, NDArray

    from tavd._drawing import Drawing

ROOM_DAMPING = 4.0
"""Level difference between sound power and room unless another is given, dB."""

# What the kinds are in words.
KINDS = {
    CONSTANTS["TAVD_KIND_RESISTANCE"]: "fixed resistance",
    CONSTANTS["TAVD_KIND_RESISTANCE_VELOCITY"]: "fixed resistance by air velocity",
    CONSTANTS["TAVD_KIND_RESISTANCE_POINTS"]: "fixed resistance measured at several flows",
    CONSTANTS["TAVD_KIND_LIMITS"]: "pressure range",
    CONSTANTS["TAVD_KIND_DAMPER"]: "adjustable damper",
    CONSTANTS["TAVD_KIND_DAMPER_VELOCITY"]: "adjustable damper by air velocity",
    CONSTANTS["TAVD_KIND_RANGE"]: "device for a pressure range",
    CONSTANTS["TAVD_KIND_FAN"]: "fan",
}
DAMPERS = (CONSTANTS["TAVD_KIND_DAMPER"], CONSTANTS["TAVD_KIND_DAMPER_VELOCITY"])

_SCALARS = frozenset((float, int, np.float64, np.float32, np.int64, np.int32))
_PARAMETER_CHARS = int(CONSTANTS["TAVD_PARAMETER_CHARS"])
_HUGE_PAGE = 2 << 20  # bytes, of the processors that the libraries are built for
_AT_ONCE = 64  # points that are done in a moment: giving the GIL back and taking it takes longer


class Duct(NamedTuple):
    """A duct size, mm. A round one has its diameter as both, one that is not known is all 0."""

    is_round: bool
    width: int
    height: int

    def __str__(self) -> str:
        if self.width == 0:
            return ""
        return f"{self.width}" if self.is_round else f"{self.width}x{self.height}"


class Parameter(NamedTuple):
    """A parameter of a product: the values of its table, and the one that is chosen, empty if none is."""

    values: tuple[str, ...]
    chosen: str


class Product:
    """A product of a database as it was loaded.

    It holds all that it needs and never changes: it outlives its database, any number of threads may ask it at once, and
    it can be sent to other processes (pickle). Flows are l/s, or m/s where `by_velocity` is set; pressures Pa, sizes mm,
    levels dB. with_parameters and without_end_reflection give other products.

    >>> p = db["DMP", "QZDA-160"]
    >>> p.kind_name, str(p.duct), p.qv_min, p.qv_max
    ('adjustable damper', '160', 16.0, 160.0)
    >>> answer = p.calc(qv=50, dp=60)
    >>> round(answer.position, 2), answer.codes.position.message()
    (5.48, 'in range')
    """

    def __init__(self, record: Record, flow: bytes | None = None) -> None:
        self.record = record
        self._flow = _binding.record("FlowData").from_buffer_copy(record.flow if flow is None else flow)
        self._prepared = _prepared(self._flow, record.duct)
        self._everything = _Cells(self._prepared, None)
        self._asked: dict[Wanted, _Cells] = {}
        self._constants: dict[str, tuple[Any, Any]] | None = None

    def __reduce__(self) -> Any:
        return Product, (self.record, bytes(self._flow))

    def __repr__(self) -> str:
        return f"<tavd.Product {self.class_id} {self.id}: {self.kind_name}>"

    # ---- What it is

    @property
    def class_id(self) -> str:
        """Class, 3 characters."""
        return self.record.class_id

    @property
    def id(self) -> str:
        """Object id."""
        return self.record.id

    @property
    def code(self) -> str:
        """Product code of the market area that the database was opened for, with the size in it where it has a place for it."""
        return filled_code(self.record.code, self.record.duct)

    @property
    def description(self) -> str:
        """Description in the language that the database was opened for; empty if there is none."""
        return self.record.description

    @property
    def web_link(self) -> str:
        """Web link of the market area; empty if there is none."""
        return self.record.web_link

    @property
    def layers(self) -> tuple[str, ...]:
        """Ids of the records that a layered product is put together from, those asked first in front; else empty."""
        return self.record.layers

    @property
    def duct(self) -> Duct:
        """Duct size, mm."""
        duct = _binding.record("DuctSize").from_buffer_copy(self.record.duct)
        is_round = duct.shape == CONSTANTS["TAVD_DUCT_ROUND"]
        return Duct(is_round, duct.b, duct.b if is_round else duct.h)

    @property
    def has_flow_data(self) -> bool:
        """Whether there is anything to calculate."""
        return bool(self._flow.nhdd != 0)

    @property
    def kind(self) -> int:
        """Data kind, one of tavd.c.TAVD_KIND_; 0 without flow data."""
        return int(self._flow.kind)

    @property
    def kind_name(self) -> str:
        """The kind in words."""
        return KINDS.get(self.kind, f"kind {self.kind}") if self.has_flow_data else "no flow data"

    @property
    def by_velocity(self) -> bool:
        """Whether flows are air velocities, m/s, in place of l/s."""
        return bool(self._flow.isvelocity != b"\0")

    @property
    def qv_min(self) -> float:
        """Lowest flow, l/s or m/s."""
        return float(self._flow.qvmin)

    @property
    def qv_max(self) -> float:
        """Highest flow, l/s or m/s."""
        return float(self._flow.qvmax)

    @property
    def dp_min(self) -> float:
        """Lowest total pressure, Pa."""
        return float(self._flow.dpmin)

    @property
    def dp_max(self) -> float:
        """Highest total pressure, Pa."""
        return float(self._flow.dpmax)

    @property
    def parameters(self) -> dict[str, Parameter]:
        """The parameters that can be chosen, by name."""
        found = {}
        for table in self._flow.par[: self._flow.npar]:
            values = tuple(narrow_text(row.value) for row in table.table[: table.count])
            found[narrow_text(table.name)] = Parameter(values, narrow_text(table.value))
        return found

    def flow_data(self) -> Any:
        """A copy of the record that is calculated with, a tavd.c.FlowData."""
        return _binding.record("FlowData").from_buffer_copy(self._flow)

    # ---- Others like it

    def with_parameters(self, values: Mapping[str, object] | None = None, **others: object) -> Product:
        """The same product with values of its parameters chosen, by name. An empty value takes a choice back.

        Raises ValueError for a parameter that the product does not have, and for a value that its table does not know; a
        number may lie between those of a table of numbers.

        >>> p = db["ASD", "QZSA-160"]
        >>> p.with_parameters(G=45).parameters["G"].chosen
        '45'
        """
        flow = self.flow_data()
        for name, value in {**(values or {}), **others}.items():
            _choose(flow, name, f"{value:g}" if isinstance(value, float) else str(value))
        return Product(self.record, bytes(flow))

    def without_end_reflection(self) -> Product:
        """The product as it was loaded, its choices kept, with the duct's end reflection taken off its sound levels."""
        flow = _binding.record("FlowData").from_buffer_copy(self.record.flow)
        for name, parameter in self.parameters.items():
            if parameter.chosen:
                _binding.function("tavca_param_setvalue")(flow, name.encode(), parameter.chosen.encode())
        _binding.function("tavca_check_end_reflection")(flow)
        return Product(self.record, bytes(flow))

    # ---- What it answers

    # A float is an ArrayLike too: the first that fits counts.
    @overload
    def calc(  # type: ignore[misc]
        self, qv: float, dp: float | None = ..., *, want: Iterable[str] | None = ..., room_damping: float = ...
    ) -> Point:
        ...

    @overload
    def calc(
        self, qv: ArrayLike, dp: ArrayLike | None = ..., *, want: Iterable[str] | None = ..., room_damping: float = ...
    ) -> Points:
        ...

    def calc(
        self, qv: Any, dp: Any = None, *, want: Iterable[str] | None = None, room_damping: float = ROOM_DAMPING
    ) -> Point | Points:
        """Calculates operating points.

        qv            flow, l/s, or m/s if `by_velocity`: a number or an array of any shape
        dp            total pressure, Pa: the same; flows and pressures broadcast as in NumPy. None: 0 for every point, which
                      suits fixed resistances, whose pressure follows from the flow
        want          what is calculated, any of dp_min, dp_max, position, setting, fan_total, fan_static, fan_dynamic,
                      fan_check, lw, lpa, dlw, throw; None: all
        room_damping  level difference between sound power and room, dB

        Two numbers give a Point with plain numbers, anything else Points with arrays of float32 of the shape that both
        have together; arrays of Dask give arrays of Dask, which are calculated when they are wanted. Numbers go into the
        calculation as float32. The GIL is released but for a few points.

        >>> p = db["DMP", "QZDA-160"]
        >>> r = p.calc(qv=np.linspace(20, 150, 5), dp=60.0)
        >>> r.position.shape, r.lw.shape
        ((5,), (5, 8))
        >>> np.round(r.lpa, 1)
        array([32. , 37.8, 40.3, 42.2, 43.5], dtype=float32)
        >>> p.calc(qv=[20, 40], dp=[[30], [60]], want=["position"]).position.shape
        (2, 2)
        """
        if type(qv) in _SCALARS and (dp is None or type(dp) in _SCALARS):
            if want is not None:
                return self._cells(_wanted(want)).ask(qv, dp, room_damping)
            return self._everything.ask(qv, dp, room_damping)
        if _is_of_dask(qv) or _is_of_dask(dp):
            from tavd import _dask

            return _dask.calc(self, qv, dp, want, room_damping)
        return self._points(qv, dp, want, room_damping)

    def throw_length(self, qv: Any, value: object = "") -> Any:
        """Isothermal throw length, m, of flows, l/s: a number for a number, an array of the same shape for an array.

        value  the parameter value that selects the throw line, for products that have several; empty: that of the first
               parameter's choice, or else the product's first line

        >>> round(db["ASD", "QZSA-160"].throw_length(60, value=45), 2)
        1.71
        """
        flows = _floats("qv", qv)
        text = str(value).encode()
        if len(text) > _PARAMETER_CHARS:
            raise ValueError(f"value is {value!r}, expected at most {_PARAMETER_CHARS} characters")
        if not text:
            found = self.calc(flows, want=["throw"]).throw
        else:
            tight = np.ascontiguousarray(flows)
            found = np.empty(tight.shape, np.float32)
            _binding.function("tavdn_throw")(self._prepared.address, text, tight.size, tight, found)
        return float(found) if flows.ndim == 0 else found

    def _points(self, qv: Any, dp: Any, want: Iterable[str] | None, room_damping: float) -> Points | Point:
        wanted = None if want is None else _wanted(want)
        flows = _floats("qv", qv)
        pressures = None if dp is None else _floats("dp", dp)
        try:
            shape = flows.shape if pressures is None else np.broadcast_shapes(flows.shape, pressures.shape)
        except ValueError:
            raise ValueError(
                f"qv has the shape {flows.shape} and dp {np.shape(dp)}, expected shapes that broadcast together"
            ) from None
        if shape == ():
            return self._cells(wanted).ask(float(flows), None if pressures is None else float(pressures), room_damping)
        flows = np.ascontiguousarray(np.broadcast_to(flows, shape))
        if pressures is not None:
            pressures = np.ascontiguousarray(np.broadcast_to(pressures, shape))
        return self._calculated(flows, pressures, wanted, room_damping)

    def _cells(self, wanted: Wanted | None) -> _Cells:
        if wanted is None:
            return self._everything
        cells = self._asked.get(wanted)
        return self._asked.setdefault(wanted, _Cells(self._prepared, wanted)) if cells is None else cells

    def _calculated(
        self, qv: NDArray[np.float32], dp: NDArray[np.float32] | None, wanted: Wanted | None, room_damping: float
    ) -> Points:
        results = _binding.record("tavdn_results")()
        results.size = ctypes.sizeof(results)
        numbers: dict[str, Any] = {}
        codes: dict[str, Any] = {}
        constants = self._same_everywhere()
        for field in FIELDS:
            if wanted is not None and (field.name, field.is_code) not in wanted:
                continue
            to = codes if field.is_code else numbers
            shape = qv.shape if field.bands == 1 else (*qv.shape, field.bands)
            constant = constants.get(field.member)
            if constant is not None:
                to[field.name] = np.broadcast_to(constant, shape)
                continue
            array = _empty(shape, np.int32 if field.is_code else np.float32)
            to[field.name] = array
            place = ctypes.c_void_p.from_buffer(results, getattr(type(results), field.member).offset)
            place.value = array.__array_interface__["data"][0]
        calculate = _calculate() if qv.size > _AT_ONCE else _calculate_at_once()
        code = calculate(
            self._prepared.address,
            qv.size,
            qv.__array_interface__["data"][0],
            None if dp is None else dp.__array_interface__["data"][0],
            room_damping,
            ctypes.byref(results),
        )
        if code != 0:
            raise MemoryError(f"{qv.size} points")
        return Points(qv, dp, numbers, codes)

    def _same_everywhere(self) -> dict[str, Any]:
        """Answers that do not depend on the point, for want of the tables that they are made of: they need no arrays."""
        if self._constants is None:
            flow = self._flow
            names: list[str] = ["dlw_code"]
            if flow.kind not in DAMPERS:
                names += ["position", "setting"]
            if flow.ndlw == 0 and flow.ndlwpoints == 0 and flow.npar == 0:
                names += ["dlw"]
            if flow.nqvL2 == 0 and flow.nparL2 == 0:
                names += ["throw_code", "throw_length"]
            data = self._everything.ask(1.0, 1.0, 0.0)._data
            self._constants = {}
            for field in FIELDS:
                if field.member in names:
                    kind = np.int32 if field.is_code else np.float32
                    value: Any = np.frombuffer(data, kind, field.bands, field.offset).copy()
                    self._constants[field.member] = value if field.bands > 1 else value[0]
        return self._constants

    # ---- What it looks like

    def flow_diagram(
        self,
        qv: float | None = None,
        dp: float | None = None,
        *,
        limits: tuple[float, float] | None = None,
        levels: tuple[float, float, float] | None = None,
        labels: Mapping[float, str] | None = None,
        units: tuple[str, str] = ("l/s", "Pa"),
        static: bool = False,
        title: str = "",
        size: tuple[int, int] = (1200, 900),
    ) -> Drawing:
        """The flow diagram: pressure over flow. It shows itself in a notebook; .save("x.svg") writes it.

        qv, dp     operating point to mark, l/s (m/s if `by_velocity`) and Pa
        limits     two flows to mark on the lower edge
        levels     lowest and highest level of the sound lines and their step, dB(A)
        labels     texts at the lines of damper positions in place of their numbers, by position
        units      of the axes: a flow (l/s, l/h, m3/s, m3/h, cfm) and a pressure (Pa, kPa, inWC, inwg)
        static     static pressure in place of total pressure
        title      in place of the product code, at most 79 characters
        size       width and height, pixels

        The end reflection of the duct is taken off the sound levels.

        >>> db["DMP", "QZDA-160"].flow_diagram(qv=50, dp=60).svg.startswith("<?xml")
        True
        """
        from tavd import _diagrams

        return _diagrams.flow_diagram(self, qv, dp, limits, levels, labels, units, static, title, size)

    def throw_diagram(
        self,
        qv: float | None = None,
        *,
        value: object = "",
        unit: str = "l/s",
        title: str = "",
        size: tuple[int, int] = (1200, 900),
    ) -> Drawing:
        """The throw length diagram: throw length over flow.

        qv     flow to mark, l/s
        value  the parameter value that selects the throw line; empty: the first line, without a label
        unit   of the flow axis: l/s, l/h, m3/s, m3/h, cfm, m3/h/m or l/s/m
        title  in place of the product code, at most 79 characters
        size   width and height, pixels

        >>> db["ASD", "QZSA-160"].throw_diagram(qv=60, value=45).title
        'QZSA-160: throw length diagram'
        """
        from tavd import _diagrams

        return _diagrams.throw_diagram(self, qv, value, unit, title, size)

    def sketch(self, *, title: str = "", size: tuple[int, int] = (500, 840)) -> Drawing:
        """The dimensioned sketch.

        title  in place of the product code, at most 79 characters
        size   width and height, pixels

        >>> db["DMP", "QZDA-160"].sketch().title
        'QZDA-160: dimensions'
        """
        from tavd import _diagrams

        return _diagrams.sketch(self, title, size)


class _Prepared:
    """What tavdn_prepare has made, given back when nobody holds it any more."""

    def __init__(self, address: int) -> None:
        self.address = address
        weakref.finalize(self, _binding.function("tavdn_release"), address)


def _prepared(flow: Any, duct: bytes | None) -> _Prepared:
    made = ctypes.c_void_p()
    size = None if duct is None else _binding.record("DuctSize").from_buffer_copy(duct)
    if _binding.function("tavdn_prepare")(flow, size, ctypes.byref(made)) != 0 or made.value is None:
        raise MemoryError("a product could not be made ready")
    return _Prepared(made.value)


@lru_cache(maxsize=None)
def _calculate() -> Any:
    return _with_types(_binding.untyped("tavdn_calculate"))


@lru_cache(maxsize=None)
def _calculate_at_once() -> Any:
    return _with_types(_binding.instant("tavdn_calculate"))


def _with_types(calculate: Any) -> Any:
    """For arrays that are known to be right: nothing is looked at again."""
    calculate.argtypes = [
        ctypes.c_void_p,
        ctypes.c_size_t,
        ctypes.c_void_p,
        ctypes.c_void_p,
        ctypes.c_float,
        ctypes.c_void_p,
    ]
    return calculate


def _empty(shape: tuple[int, ...], kind: Any) -> NDArray[Any]:
    """An array for a result. A large one begins where a huge page does: NumPy asks for such pages from 4 MiB on, and with small
    ones the system takes a tenth of the time of a calculation to hand them out."""
    size = 4 * math.prod(shape)
    if size < _HUGE_PAGE:
        return np.empty(shape, kind)
    raw = np.empty(max(size + _HUGE_PAGE, 2 * _HUGE_PAGE), np.uint8)
    start = -raw.__array_interface__["data"][0] % _HUGE_PAGE
    array: NDArray[Any] = raw[start : start + size].view(kind).reshape(shape)
    return array


_NUMBERS = ctypes.c_float * (SIZE // 4 + 2)


class _Cell:
    """Memory for one point: two numbers in, the answers out. One thread uses it at a time."""

    __slots__ = ("inputs", "take", "damping", "with_dp", "without_dp", "kept")

    def __init__(self, prepared: _Prepared, wanted: Wanted | None) -> None:
        numbers = _NUMBERS()
        start = ctypes.addressof(numbers)
        self.take = memoryview(numbers).cast("B")[:SIZE].tobytes
        self.inputs: Any = memoryview(numbers).cast("B")[SIZE:].cast("f")
        results = _binding.record("tavdn_results")()
        results.size = ctypes.sizeof(results)
        for field in FIELDS:
            if wanted is None or (field.name, field.is_code) in wanted:
                place = ctypes.c_void_p.from_buffer(results, getattr(type(results), field.member).offset)
                place.value = start + field.offset
        self.damping = ctypes.c_float(ROOM_DAMPING)
        product, one = ctypes.c_void_p(prepared.address), ctypes.c_size_t(1)
        qv, dp, out = ctypes.c_void_p(start + SIZE), ctypes.c_void_p(start + SIZE + 4), ctypes.byref(results)
        self.with_dp = (product, one, qv, dp, self.damping, out)
        self.without_dp = (product, one, qv, ctypes.c_void_p(), self.damping, out)
        self.kept = (prepared, numbers, results)


class _Cells:
    """Answers single points, with memory that stands ready."""

    __slots__ = ("free", "prepared", "wanted", "calculate")

    def __init__(self, prepared: _Prepared, wanted: Wanted | None) -> None:
        self.free: list[_Cell] = []
        self.prepared = prepared
        self.wanted = wanted
        self.calculate = _single()

    def ask(self, qv: float, dp: float | None, room_damping: float) -> Point:
        free = self.free
        try:
            cell = free.pop()
        except IndexError:
            cell = _Cell(self.prepared, self.wanted)
        cell.damping.value = room_damping
        inputs = cell.inputs
        inputs[0] = qv
        if dp is None:
            self.calculate(*cell.without_dp)
        else:
            inputs[1] = dp
            self.calculate(*cell.with_dp)
        point = Point(qv, dp, cell.take(), self.wanted)
        free.append(cell)
        return point


@lru_cache(maxsize=None)
def _single() -> Any:
    """Without types: what it gets has them already."""
    return _binding.instant("tavdn_calculate")


def _wanted(want: Iterable[str]) -> Wanted:
    return _wanted_of((want,) if isinstance(want, str) else tuple(want))


@lru_cache(maxsize=None)
def _wanted_of(names: tuple[str, ...]) -> Wanted:
    for name in names:
        if name not in CODE_OF:
            raise ValueError(f"want has {name!r}, expected any of {', '.join(ANSWERS)}")
    return frozenset((name, False) for name in names) | {(CODE_OF[name], True) for name in names}


def _is_of_dask(value: Any) -> bool:
    return type(value).__module__.startswith("dask.")


def _floats(name: str, value: Any) -> NDArray[np.float32]:
    try:
        array: NDArray[np.float32] = np.asarray(value, dtype=np.float32)
    except (TypeError, ValueError):
        raise ValueError(f"{name} is {value!r}, expected a number or an array of numbers") from None
    return array


def _choose(flow: Any, name: str, value: str) -> None:
    if _binding.function("tavca_param_setvalue")(flow, name.encode(), value.encode()) != 0:
        known = ", ".join(narrow_text(table.name) for table in flow.par[: flow.npar])
        raise ValueError(f"the product has no parameter {name!r}; it has {known or 'none'}")
    # Of the name that is asked for so many characters count.
    tables = [
        table for table in flow.par[: flow.npar] if narrow_text(table.name).lower() == name.lower()[:_PARAMETER_CHARS]
    ]
    values = [narrow_text(row.value) for row in tables[0].table[: tables[0].count]]
    if value and not _is_known(values, value):
        raise ValueError(f"parameter {name} has no value {value!r}; it has {', '.join(values)}")


def _is_known(values: list[str], value: str) -> bool:
    """A number may lie between the rows of a table of numbers; anything else must be one of the rows: the library itself
    quietly takes the first row for a value that it does not find."""
    number = ctypes.c_float()
    to_real = _binding.function("tavca_param_valuetoreal")
    if all(to_real(text.encode(), ctypes.byref(number)) == 0 for text in [*values, value]):
        return True
    compare = _binding.function("tavca_param_valuecmp")
    return any(compare(text.encode(), value.encode()) == 0 for text in values)
