"""Tables: of pandas if it is there, else lists of records."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from typing import Any

import numpy as np


def table(columns: Mapping[str, Any]) -> Any:
    """A table of columns of one length."""
    try:
        import pandas
    except ImportError:
        return _records(columns)
    return pandas.DataFrame(dict(columns))


def _records(columns: Mapping[str, Any]) -> list[dict[str, Any]]:
    lists = [column.tolist() if isinstance(column, np.ndarray) else list(column) for column in columns.values()]
    return [dict(zip(columns, row)) for row in zip(*lists)]


def columns_of(given: Any) -> dict[str, Sequence[Any]]:
    """The columns of a table: of pandas, a dictionary of columns, or a list of records, which may lack some."""
    if hasattr(given, "columns") and hasattr(given, "to_dict"):
        return {str(name): given[name].tolist() for name in given.columns}
    if isinstance(given, Mapping):
        found: dict[str, Sequence[Any]] = {str(name): list(column) for name, column in given.items()}
        if len({len(column) for column in found.values()}) > 1:
            raise ValueError(
                f"a schedule with columns of {', '.join(str(len(c)) for c in found.values())} lines, expected all of one length"
            )
        return found
    try:
        rows = [dict(row) for row in given]
    except (TypeError, ValueError):
        raise ValueError(
            f"a schedule is {type(given).__name__}, expected a table of pandas, a dictionary of columns or a list of records"
        ) from None
    names = dict.fromkeys(name for row in rows for name in row)
    return {str(name): [row.get(name) for row in rows] for name in names}
