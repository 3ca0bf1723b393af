"""Every function, record and constant of the C headers by its own name.

The headers, include/tavd/ and include/tavdgui/, are the manual; help() shows what they say of a function. Numbers are
taken and given as they are, const char* as bytes, other addresses as ctypes has them: byref, arrays, None, the address of
something that the library made as a plain number; and arrays of numpy with the items that the function wants. Outputs
are written where an address leads.

>>> from tavd import c
>>> c.tavd_version_nmb(c.TAVD_INTERFACE_VERSION)
190
>>> round(c.tavca_pdyn(0.0, 0.0, 1), 3), round(c.tavca_ductarea_m2(160, 0), 6)
(0.0, 0.020106)
>>> size = c.DuctSize(c.TAVD_DUCT_RECTANGULAR, 400, 200)
>>> round(c.ewads_dekv(size), 1)
319.2

Functions of libtavd that set something set it for the whole process. The rest of this package uses the market area and
the language (tavdcore_set_market_area, tavdcore_set_user_lng) and sets them anew each time.
"""

from __future__ import annotations

from typing import Any

from tavd import _binding
from tavd._declarations import CALLBACKS, CONSTANTS, FUNCTIONS, RECORDS

__all__ = [*FUNCTIONS, *RECORDS, *(name for name in CALLBACKS if "." not in name), *CONSTANTS]


def __getattr__(name: str) -> Any:
    found: Any
    if name in FUNCTIONS:
        from tavd._texts import TEXTS

        found = _binding.function(name)
        found.__doc__ = TEXTS[name]
    elif name in RECORDS:
        found = _binding.record(name)
    elif name in CALLBACKS and "." not in name:
        found = _binding.callback(name)
    elif name in CONSTANTS:
        found = CONSTANTS[name]
    else:
        raise AttributeError(f"tavd.c has no {name!r}: it is in none of the C headers")
    globals()[name] = found
    return found


def __dir__() -> list[str]:
    return sorted(__all__)
