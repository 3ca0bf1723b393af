"""How points are calculated: many in arrays, single ones in memory that stands ready."""

from __future__ import annotations

import ctypes
import weakref
from collections.abc import Iterable
from functools import lru_cache
from typing import TYPE_CHECKING, Any

import numpy as np

from tavd import _binding, _pages
from tavd._declarations import CONSTANTS
from tavd._results import ANSWERS, CODE_OF, FIELDS, SIZE, Point, Points, Wanted

if TYPE_CHECKING:
    from numpy.typing import NDArray

ROOM_DAMPING = 4.0
"""Level difference between sound power and room unless another is given, dB."""
DAMPERS = (CONSTANTS["TAVD_KIND_DAMPER"], CONSTANTS["TAVD_KIND_DAMPER_VELOCITY"])
SCALARS = frozenset((float, int, np.float64, np.float32, np.int64, np.int32))

_AT_ONCE = 64  # points that are done in a moment: giving the GIL back and taking it takes longer


class Calculator:
    """A product that is ready to be asked."""

    def __init__(self, flow: Any, duct: bytes) -> None:
        self.prepared = prepare(flow, duct)
        self.everything = _Cells(self.prepared, None)
        self._flow = flow
        self._asked: dict[Wanted, _Cells] = {}
        self._constants: dict[str, Any] | None = None

    def points(self, qv: Any, dp: Any, want: Iterable[str] | None, room_damping: float) -> Points | Point:
        wanted = None if want is None else wanted_of(want)
        flows = floats("qv", qv)
        pressures = None if dp is None else floats("dp", dp)
        try:
            shape = flows.shape if pressures is None else np.broadcast_shapes(flows.shape, pressures.shape)
        except ValueError:
            raise ValueError(
                f"qv has the shape {flows.shape} and dp {np.shape(dp)}, expected shapes that broadcast together"
            ) from None
        if shape == ():
            return self.cells(wanted).ask(float(flows), None if pressures is None else float(pressures), room_damping)
        flows = np.ascontiguousarray(np.broadcast_to(flows, shape))
        if pressures is not None:
            pressures = np.ascontiguousarray(np.broadcast_to(pressures, shape))
        return self._many(flows, pressures, wanted, room_damping)

    def cells(self, wanted: Wanted | None) -> _Cells:
        if wanted is None:
            return self.everything
        cells = self._asked.get(wanted)
        return self._asked.setdefault(wanted, _Cells(self.prepared, wanted)) if cells is None else cells

    def _many(
        self, qv: NDArray[np.float32], dp: NDArray[np.float32] | None, wanted: Wanted | None, room_damping: float
    ) -> Points:
        results = _binding.record("tavdn_results")()
        results.size = ctypes.sizeof(results)
        numbers: dict[str, Any] = {}
        codes: dict[str, Any] = {}
        arrays: list[NDArray[Any]] = []
        constants = self.same_everywhere()
        for field in FIELDS:
            if wanted is not None and (field.name, field.is_code) not in wanted:
                continue
            to = codes if field.is_code else numbers
            shape = qv.shape if field.bands == 1 else (*qv.shape, field.bands)
            constant = constants.get(field.member)
            if constant is not None:
                to[field.name] = np.broadcast_to(constant, shape)
                continue
            array = _pages.empty(shape, np.int32 if field.is_code else np.float32)
            arrays.append(array)
            to[field.name] = array
            place = ctypes.c_void_p.from_buffer(results, getattr(type(results), field.member).offset)
            place.value = array.__array_interface__["data"][0]
        wait_for_memory = _pages.hand_out(arrays)
        calculate = _calculate() if qv.size > _AT_ONCE else _calculate_at_once()
        code = calculate(
            self.prepared.address,
            qv.size,
            qv.__array_interface__["data"][0],
            None if dp is None else dp.__array_interface__["data"][0],
            room_damping,
            ctypes.byref(results),
        )
        if wait_for_memory is not None:
            wait_for_memory()
        if code != 0:
            raise MemoryError(f"{qv.size} points")
        return Points(qv, dp, numbers, codes)

    def same_everywhere(self) -> dict[str, Any]:
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
            data = self.everything.ask(1.0, 1.0, 0.0)._data
            self._constants = {}
            for field in FIELDS:
                if field.member in names:
                    kind = np.int32 if field.is_code else np.float32
                    value: Any = np.frombuffer(data, kind, field.bands, field.offset).copy()
                    self._constants[field.member] = value if field.bands > 1 else value[0]
        return self._constants


class Prepared:
    """What tavdn_prepare has made, given back when nobody holds it any more."""

    def __init__(self, address: int) -> None:
        self.address = address
        weakref.finalize(self, _binding.function("tavdn_release"), address)


def prepare(flow: Any, duct: bytes | None) -> Prepared:
    made = ctypes.c_void_p()
    size = None if duct is None else _binding.record("DuctSize").from_buffer_copy(duct)
    if _binding.function("tavdn_prepare")(flow, size, ctypes.byref(made)) != 0 or made.value is None:
        raise MemoryError("a product could not be made ready")
    return Prepared(made.value)


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


_NUMBERS = ctypes.c_float * (SIZE // 4 + 2)


class _Cell:
    """Memory for one point: two numbers in, the answers out. One thread uses it at a time."""

    __slots__ = ("inputs", "take", "damping", "with_dp", "without_dp", "kept")

    def __init__(self, prepared: Prepared, wanted: Wanted | None) -> None:
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

    def __init__(self, prepared: Prepared, wanted: Wanted | None) -> None:
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


def wanted_of(want: Iterable[str]) -> Wanted:
    return _wanted_names((want,) if isinstance(want, str) else tuple(want))


@lru_cache(maxsize=None)
def _wanted_names(names: tuple[str, ...]) -> Wanted:
    for name in names:
        if name not in CODE_OF:
            raise ValueError(f"want has {name!r}, expected any of {', '.join(ANSWERS)}")
    return frozenset((name, False) for name in names) | {(CODE_OF[name], True) for name in names}


def is_of_dask(value: Any) -> bool:
    return type(value).__module__.startswith("dask.")


def floats(name: str, value: Any) -> NDArray[np.float32]:
    try:
        array: NDArray[np.float32] = np.asarray(value, dtype=np.float32)
    except (TypeError, ValueError):
        raise ValueError(f"{name} is {value!r}, expected a number or an array of numbers") from None
    return array
