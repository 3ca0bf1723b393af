"""Finds the C libraries, each when it is first needed."""

from __future__ import annotations

import ctypes
import os
import threading

from tavd._errors import Error

PLACE_VARIABLE = "TAVD_LIBRARIES"
"""Variable of the environment: a folder in which the libraries are, before all other places."""

_HERE = os.path.dirname(os.path.abspath(__file__))
_lock = threading.RLock()
_loaded: dict[str, ctypes.CDLL] = {}


def places() -> list[str]:
    """The folders in which the libraries may be, in the order in which they are asked; behind them comes the system."""
    asked = os.environ.get(PLACE_VARIABLE)
    beside = os.path.join(_HERE, "lib")  # a wheel carries them
    build = os.path.join(os.path.dirname(os.path.dirname(_HERE)), "lib")  # build/release/python/tavd, build/release/lib
    return ([asked] if asked else []) + [beside, build]


def load(name: str) -> ctypes.CDLL:
    """A library, by its name such as "libtavdn". Raises Error that tells where it was looked for."""
    try:
        return _loaded[name]
    except KeyError:
        with _lock:
            return _loaded.setdefault(name, _found(name))


def _found(name: str) -> ctypes.CDLL:
    file = name + ".so"
    for place in places():
        path = os.path.join(place, file)
        if os.path.exists(path):
            return _opened(path, path)
    where = ", ".join(places())
    return _opened(
        file,
        f"{file}, which is neither in {where} nor where the system has its libraries ({PLACE_VARIABLE} may name a folder)",
    )


def _opened(path: str, told: str) -> ctypes.CDLL:
    try:
        return ctypes.CDLL(path)
    except OSError as error:
        raise Error(f"cannot load {told}: {error}") from None
