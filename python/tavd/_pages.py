"""Memory of large results. The system clears what it hands out, which takes a tenth of the time of a calculation."""

from __future__ import annotations

import _thread
import ctypes
import math
import sys
from collections.abc import Callable, Iterable
from functools import lru_cache
from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from numpy.typing import NDArray

_HUGE_PAGE = 2 << 20  # bytes, of the processors that the libraries are built for
_POPULATE_WRITE = 23  # MADV_POPULATE_WRITE of Linux 5.14, which Python's mmap has no name for


def empty(shape: tuple[int, ...], kind: Any) -> NDArray[Any]:
    """An array for a result. A large one begins where a huge page does: NumPy asks for such pages from 4 MiB on, and small ones
    take longer to hand out."""
    size = 4 * math.prod(shape)
    if size < _HUGE_PAGE:
        return np.empty(shape, kind)
    raw = np.empty(max(size + _HUGE_PAGE, 2 * _HUGE_PAGE), np.uint8)
    start = -raw.__array_interface__["data"][0] % _HUGE_PAGE
    array: NDArray[Any] = raw[start : start + size].view(kind).reshape(shape)
    return array


def hand_out(arrays: Iterable[NDArray[Any]]) -> Callable[[], object] | None:
    """Has the memory of large arrays from `empty` handed out by a thread, while whoever calls begins to fill them. Gives what
    waits for that to end; None where it is not possible or needed, and memory is handed out as it is touched."""
    large = [array for array in arrays if array.nbytes >= _HUGE_PAGE]
    if not large or not sys.platform.startswith("linux"):
        return None
    at_work = _thread.allocate_lock()
    at_work.acquire()
    try:
        # Thread.start of threading would wait until the thread has got the GIL.
        _thread.start_new_thread(_hand_out, (large, at_work))
    except RuntimeError:  # the system has no more threads
        return None
    return at_work.acquire


def _hand_out(arrays: list[NDArray[Any]], at_work: _thread.LockType) -> None:
    try:
        advise = _advise()
        for array in arrays:
            if advise(array.__array_interface__["data"][0], array.nbytes, _POPULATE_WRITE) != 0:
                break  # an older Linux, or no memory
    finally:
        at_work.release()


@lru_cache(maxsize=None)
def _advise() -> Any:
    advise = ctypes.CDLL(None).madvise
    advise.argtypes = [ctypes.c_void_p, ctypes.c_size_t, ctypes.c_int]
    return advise
