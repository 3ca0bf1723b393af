"""Ventilation products: the same answers as the C library gives, in arrays, tables and notebooks.

>>> import tavd
>>> db = tavd.open("catalogue.tavdb", market="FIN", language="en")
>>> p = db["DMP", "QZDA-160"]
>>> round(p.calc(qv=50, dp=60).position, 2)
5.48

A database (open) has products; a product calculates (Product.calc), and draws itself (flow_diagram, throw_diagram,
sketch); a database selects (Database.select). tavd.c has every function of the C headers by its own name. docs/python.md is
the manual.
"""

from __future__ import annotations

from typing import Any

from tavd._database import Database, open
from tavd._declarations import VERSION as __version__
from tavd._errors import Error, NotFoundError
from tavd._product import Duct, Parameter, Product
from tavd._results import BANDS, Code, Codes, Point, Points, message

__all__ = [
    "BANDS",
    "Code",
    "Codes",
    "Database",
    "Drawing",
    "Duct",
    "Error",
    "NotFoundError",
    "Parameter",
    "Point",
    "Points",
    "Product",
    "c",
    "message",
    "open",
]


def __getattr__(name: str) -> Any:
    # What not everybody needs is loaded when it is asked for.
    if name == "c":
        import tavd.c

        return tavd.c
    if name == "Drawing":
        from tavd._drawing import Drawing

        return Drawing
    raise AttributeError(f"module 'tavd' has no attribute {name!r}")
