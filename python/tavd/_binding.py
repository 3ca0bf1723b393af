"""Functions, records and constants of the C headers as ctypes has them, each made when it is first asked for."""

from __future__ import annotations

import ctypes
from typing import Any

from tavd import _libraries
from tavd._declarations import CALLBACKS, FUNCTIONS, RECORDS

_NUMBERS: dict[str, Any] = {
    "b": ctypes.c_int8,
    "B": ctypes.c_uint8,
    "h": ctypes.c_int16,
    "H": ctypes.c_uint16,
    "i": ctypes.c_int32,
    "I": ctypes.c_uint32,
    "q": ctypes.c_int64,
    "Q": ctypes.c_uint64,
    "f": ctypes.c_float,
    "d": ctypes.c_double,
    "?": ctypes.c_bool,
    "c": ctypes.c_char,
    "u": ctypes.c_uint16,
    "N": ctypes.c_size_t,
    "n": ctypes.c_ssize_t,
    "M": ctypes.c_size_t,
    "v": None,
    "s": ctypes.c_char_p,
}
_ARRAY_TYPES = {
    "f": "<f4",
    "d": "<f8",
    "i": "<i4",
    "I": "<u4",
    "h": "<i2",
    "H": "<u2",
    "u": "<u2",
    "B": "|u1",
    "b": "|i1",
}
_types: dict[str, Any] = dict(_NUMBERS)
_parameters: dict[str, Any] = {}
_functions: dict[str, Any] = {}


def record(name: str) -> Any:
    """A record of the headers, a class of ctypes.Structure."""
    return _type(name)


def callback(name: str) -> Any:
    """What makes a C function of one in Python, for functions that a host supplies."""
    return _type("&" + name)


def function(name: str) -> Any:
    """A function of the headers. The GIL is released while it runs."""
    try:
        return _functions[name]
    except KeyError:
        result, *arguments = FUNCTIONS[name].split()[1:]
        found = untyped(name)
        found.restype = _type(result)
        found.argtypes = [_parameter(word) for word in arguments]
        return _functions.setdefault(name, found)


def untyped(name: str) -> Any:
    """A function of the headers that takes what ctypes has made."""
    return _libraries.load(FUNCTIONS[name].split(" ", 1)[0])[name]


def instant(name: str) -> Any:
    """The same for one that is done in a moment: it keeps the GIL."""
    library = _libraries.load(FUNCTIONS[name].split(" ", 1)[0])
    return ctypes.PyDLL(library._name, handle=library._handle)[name]


def _type(word: str) -> Any:
    try:
        return _types[word]
    except KeyError:
        return _types.setdefault(word, _made(word))


def _made(word: str) -> Any:
    if word[0] == "&":
        result, *arguments = CALLBACKS[word[1:]].split()
        return ctypes.CFUNCTYPE(_type(result), *[_type(argument) for argument in arguments])
    if word[0] == "*":
        to = word[1:]
        known = to in _NUMBERS or to[0] in "*&" or to in RECORDS
        return ctypes.POINTER(_type(to)) if known and to != "v" else ctypes.c_void_p
    if word[0].isdigit():
        length, of = word.split(":", 1)
        return _type(of) * int(length)
    return _structure(word)


def _structure(name: str) -> Any:
    layout, *fields = RECORDS[name].split("|")
    members: dict[str, Any] = {"__module__": "tavd.c"}
    pairs = [field.split(" ") for field in fields]
    if layout.split()[1] == "1":
        members["_pack_"] = 1
    members["_fields_"] = [(field, _type(word)) for field, word in pairs]
    return type(name, (ctypes.Structure,), members)


def _parameter(word: str) -> Any:
    if word[0] != "*":
        return _type(word)
    try:
        return _parameters[word]
    except KeyError:
        return _parameters.setdefault(word, _pointer(word[1:]))


def _pointer(to: str) -> Any:
    """An address as an argument: of an array of numpy too, if its items are as the function wants them."""
    plain = ctypes.c_char_p if to == "c" else _type("*" + to)
    wanted = _ARRAY_TYPES.get(to)

    class Pointer:
        @staticmethod
        def from_param(value: Any) -> Any:
            described = getattr(value, "__array_interface__", None)
            if described is None:
                return plain.from_param(value)
            if described["strides"] is not None or (wanted is not None and described["typestr"] != wanted):
                raise TypeError(
                    f"expected a tight array of {wanted}, found {described['typestr']}"
                    f"{'' if described['strides'] is None else ' with gaps'}"
                )
            return ctypes.c_void_p(described["data"][0])

    return Pointer
