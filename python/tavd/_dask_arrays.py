"""Points that are arrays of Dask: answers are calculated block by block, when they are wanted."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any

import dask
import dask.array as da
import numpy as np

from tavd._results import ANSWERS, BANDS, CODE_OF, FUNCTIONS, AllCodes, Points

if TYPE_CHECKING:
    from tavd._product import Product


class LazyPoints(Points):
    """What a product answers at operating points in arrays of Dask; the same names, arrays of Dask too. The codes have no
    message() before compute()."""

    def __init__(self, qv: Any, dp: Any, numbers: dict[str, Any], codes: dict[str, Any]) -> None:
        self.__dict__.update(numbers)
        self.qv = qv
        self.dp = dp
        self.codes = AllCodes(codes)

    def compute(self, **settings: Any) -> Points:
        """All answers as arrays of NumPy."""
        numbers = {name: self.__dict__[name] for name in ANSWERS if name in self.__dict__}
        points = (self.qv, self.dp, numbers, dict(self.codes.__dict__))
        (found,) = dask.compute(points, **settings)
        return Points(*found)

    def to_frame(self) -> Any:
        """Points.to_frame of compute()."""
        return self.compute().to_frame()


def calc(product: Product, qv: Any, dp: Any, want: Iterable[str] | None, room_damping: float) -> LazyPoints:
    """Product.calc. What one code tells of is calculated together, and nothing else with it."""
    names = list(ANSWERS) if want is None else [want] if isinstance(want, str) else list(want)
    inputs = [da.asarray(qv)] if dp is None else list(da.broadcast_arrays(da.asarray(qv), da.asarray(dp)))
    inputs = [array.astype(np.float32) for array in inputs]
    product.calc(1.0, want=names)  # names that there are not are told here
    numbers: dict[str, Any] = {}
    codes: dict[str, Any] = {}
    for code in FUNCTIONS:
        group = [name for name in ANSWERS if CODE_OF[name] == code and name in names]
        if not group:
            continue
        columns = 1 + sum(_width(name) for name in group)
        packed = da.map_blocks(
            _block,
            *inputs,
            dtype=np.float32,
            chunks=(*inputs[0].chunks, (columns,)),
            new_axis=inputs[0].ndim,
            product=product,
            group=tuple(group),
            code=code,
            columns=columns,
            room_damping=room_damping,
            meta=np.empty((0,) * (inputs[0].ndim + 1), np.float32),
        )
        codes[code] = packed[..., 0].view(np.int32)
        at = 1
        for name in group:
            width = _width(name)
            if width == 1:
                numbers[name] = packed[..., at]
            elif width:
                numbers[name] = packed[..., at : at + width]
            at += width
    return LazyPoints(inputs[0], None if dp is None else inputs[1], numbers, codes)


def _width(name: str) -> int:
    """Columns of an answer; a code that has no number beside it has none."""
    return 0 if name == "fan_check" else len(BANDS) if name in ("lw", "dlw") else 1


def _block(*inputs: Any, product: Product, group: tuple[str, ...], code: str, columns: int, room_damping: float) -> Any:
    """The answers of a block side by side, the code with its bits in front."""
    answers = product.calc(*(np.atleast_1d(array) for array in inputs), want=group, room_damping=room_damping)
    packed = np.empty((*answers.qv.shape, columns), np.float32)
    packed[..., 0] = np.ascontiguousarray(getattr(answers.codes, code)).view(np.ndarray).view(np.float32)
    at = 1
    for name in group:
        width = _width(name)
        if width:
            packed[..., at : at + width] = getattr(answers, name).reshape(*answers.qv.shape, width)
        at += width
    return packed.reshape(*np.shape(inputs[0]), columns)
