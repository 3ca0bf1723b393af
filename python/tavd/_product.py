"""A product: what it is, and what it answers."""

from __future__ import annotations

import ctypes
from collections.abc import Iterable, Mapping
from typing import TYPE_CHECKING, Any, NamedTuple, overload

import numpy as np

from tavd import _binding
from tavd._declarations import CONSTANTS
from tavd._points import ROOM_DAMPING, SCALARS, Calculator, floats, is_of_dask, wanted_of
from tavd._record import Record, filled_code
from tavd._results import Point, Points
from tavd._wording import narrow_text

if TYPE_CHECKING:
    from numpy.typing import ArrayLike

    from tavd._drawing import Drawing

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
_PARAMETER_CHARS = int(CONSTANTS["TAVD_PARAMETER_CHARS"])


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
        self._calculator = Calculator(self._flow, record.duct)
        self._everything = self._calculator.everything

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
        if type(qv) in SCALARS and (dp is None or type(dp) in SCALARS):
            if want is not None:
                return self._calculator.cells(wanted_of(want)).ask(qv, dp, room_damping)
            return self._everything.ask(qv, dp, room_damping)
        if is_of_dask(qv) or is_of_dask(dp):
            from tavd import _dask_arrays

            return _dask_arrays.calc(self, qv, dp, want, room_damping)
        return self._calculator.points(qv, dp, want, room_damping)

    def throw_length(self, qv: Any, value: object = "") -> Any:
        """Isothermal throw length, m, of flows, l/s: a number for a number, an array of the same shape for an array.

        value  the parameter value that selects the throw line, for products that have several; empty: that of the first
               parameter's choice, or else the product's first line

        >>> round(db["ASD", "QZSA-160"].throw_length(60, value=45), 2)
        1.71
        """
        flows = floats("qv", qv)
        text = str(value).encode()
        if len(text) > _PARAMETER_CHARS:
            raise ValueError(f"value is {value!r}, expected at most {_PARAMETER_CHARS} characters")
        if not text:
            found = self.calc(flows, want=["throw"]).throw
        else:
            tight = np.ascontiguousarray(flows)
            found = np.empty(tight.shape, np.float32)
            _binding.function("tavdn_throw")(self._calculator.prepared.address, text, tight.size, tight, found)
        return float(found) if flows.ndim == 0 else found

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
