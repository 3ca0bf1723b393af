"""Selection and calculation for tables that Dask parts among worker processes, of one machine or of many.

>>> import dask.dataframe, pandas, tavd.dask
>>> rooms = pandas.DataFrame({"room": ["A1", "A2"], "qv": [80.0, 40.0], "dp": [70.0, 50.0]})
>>> duties = dask.dataframe.from_pandas(rooms, npartitions=2)
>>> answer = tavd.dask.select("catalogue.tavdb", duties, room_damping=15, classes=["DMP"], top=1).compute()
>>> list(answer["id"]) == list(tavd.open("catalogue.tavdb").select(rooms, room_damping=15, classes=["DMP"], top=1)["id"])
True

Every worker opens the database once, by its path, so that each machine needs it there, or by its name on a server, so
that none does. Partitions depend on nothing but
their own lines and on how many lines stand before them: rows, columns and bits are those of Database.select and
Product.calc over the whole table, whatever the number of partitions and workers. Only the index begins anew with each
partition. A partition whose worker is lost is worked on again by another.
"""

from __future__ import annotations

import os
from collections.abc import Iterable
from functools import lru_cache
from typing import Any

import dask
import dask.dataframe as dd
import numpy as np
import pandas as pd

from tavd._database import Database, is_on_server, open
from tavd._duties import check_names, lines_of
from tavd._points import ROOM_DAMPING, wanted_of
from tavd._results import BANDS, FIELDS
from tavd._select import narrowed
from tavd._tables import columns_of

__all__ = ["calc", "select"]

_OF_SELECTOR = ("explain", "threads", "without_end_reflection")  # arguments that no line has
_KEYS = ("class", "id", "qv")
_Place = tuple[str, str, str | int]


def select(
    database: Database | str | os.PathLike[str],
    duties: Any,
    /,
    *,
    market: str = "",
    language: str | int = "",
    **duty: Any,
) -> Any:
    """The products that fit each line of a schedule, as a table of Dask's: what Database.select answers for all of it.

    database  the path of a database, with market and language as in tavd.open, or a database that is open, which is
              opened anew by each worker
    duties    a table of Dask's (dask.dataframe) or of pandas, a line each, with the columns that Database.select knows
    duty      what a line does not say, and explain, threads and without_end_reflection, as in Database.select; one
              thread works on a partition unless threads says otherwise
    """
    place = _place(database, market, language)
    usual = {"threads": 1, **duty}
    check_names({name: value for name, value in usual.items() if name not in _OF_SELECTOR})
    table = _parted(duties)
    meta = _selected_meta(table._meta_nonempty, bool(usual.get("explain", False)))
    first: Any = 0
    answers = []
    for part in table.to_delayed():
        answers.append(dask.delayed(_select_part)(place, part, first, usual, meta))
        first = dask.delayed(_behind)(first, part)
    return dd.from_delayed(answers, meta=meta, verify_meta=False)


def calc(
    database: Database | str | os.PathLike[str],
    points: Any,
    /,
    *,
    market: str = "",
    language: str | int = "",
    want: Iterable[str] | None = None,
    room_damping: float = ROOM_DAMPING,
) -> Any:
    """Points of products, a line each, with the answers as further columns: a table of Dask's.

    database      as for select
    points        a table of Dask's or of pandas with the columns class, id, qv (l/s, or m/s of products by air velocity)
                  and perhaps dp (Pa); others are kept
    want          which answers, as in Product.calc; all
    room_damping  level difference between sound power and room, dB

    The columns are those of Points.to_frame(): dp_min, lw_63, code_position and so on; an answer's name that the table
    has already is replaced.
    """
    place = _place(database, market, language)
    table = _parted(points)
    missing = [name for name in _KEYS if name not in table.columns]
    if missing:
        raise ValueError(f"the table lacks {', '.join(missing)}, expected the columns {', '.join(_KEYS)} and perhaps dp")
    wanted = None if want is None else ((want,) if isinstance(want, str) else tuple(want))
    answers = _answer_columns(wanted)
    meta = table._meta.assign(**{name: np.empty(0, kind) for name, kind in answers.items()})
    return table.map_partitions(_calc_part, place, wanted, room_damping, answers, meta=meta)


def _place(database: Database | str | os.PathLike[str], market: str, language: str | int) -> _Place:
    if isinstance(database, Database):
        if market or language:
            raise ValueError("a market and a language are those of the open database, expected neither beside it")
        return _for_workers(database.path), database.market, database.language
    return _for_workers(os.fspath(database)), market, language


def _for_workers(path: str) -> str:
    """A database's name as it is good in every folder."""
    return path if is_on_server(path) else os.path.abspath(path)


def _parted(table: Any) -> Any:
    if isinstance(table, pd.DataFrame):
        return dd.from_pandas(table, npartitions=os.cpu_count() or 1, sort=False)
    if not hasattr(table, "to_delayed") or not hasattr(table, "columns"):
        raise ValueError(f"a table is {type(table).__name__}, expected one of dask.dataframe or of pandas")
    return table


@lru_cache(maxsize=8)
def _opened(path: str, market: str, language: str | int) -> Database:
    """The database of this process, which any of its threads may ask."""
    return open(path, market=market, language=language)


def _behind(first: int, part: pd.DataFrame) -> int:
    return first + len(part)


def _select_part(place: _Place, part: pd.DataFrame, first: int, usual: dict[str, Any], meta: pd.DataFrame) -> pd.DataFrame:
    if len(part) == 0:
        return meta
    try:
        found = _opened(*place).select(part, **usual)
    except ValueError as error:
        raise ValueError(f"{error} (of the partition whose first line is {first} of all)") from None
    found["duty"] += first
    return found.astype(meta.dtypes.to_dict())


def _calc_part(
    part: pd.DataFrame,
    place: _Place,
    want: tuple[str, ...] | None,
    room_damping: float,
    answers: dict[str, Any],
) -> pd.DataFrame:
    columns = {name: np.zeros(len(part), kind) for name, kind in answers.items()}
    flows = part["qv"].to_numpy()
    pressures = part["dp"].to_numpy() if "dp" in part.columns else None
    for (class_id, object_id), rows in part.groupby(["class", "id"], sort=False).indices.items():
        product = _opened(*place)[class_id, object_id]
        dp = None if pressures is None else pressures[rows]
        found = product.calc(qv=flows[rows], dp=dp, want=want, room_damping=room_damping).to_frame()
        for name, column in columns.items():
            column[rows] = found[name].to_numpy()
    return part.assign(**columns)


def _answer_columns(want: tuple[str, ...] | None) -> dict[str, Any]:
    """Names and types of the columns that a calculation adds, in the order of Points.to_frame()."""
    wanted = None if want is None else wanted_of(want)
    fields = [field for field in FIELDS if wanted is None or (field.name, field.is_code) in wanted]
    numbers = {name: np.float32 for field in fields if not field.is_code for name in field.columns()}
    codes = {name: np.int32 for field in fields if field.is_code for name in field.columns()}
    return {**numbers, **codes}


def _selected_meta(sample: pd.DataFrame, explain: bool) -> pd.DataFrame:
    """An answer to a schedule without lines: the schedule's own columns, and those of a selection."""
    _, own = lines_of({name: [] for name in columns_of(sample)}, {})
    columns: dict[str, Any] = {name: narrowed(np.array(sample[name].tolist(), dtype=object))[:0] for name in own}
    columns.update({"duty": np.empty(0, np.int64), "fitting": np.empty(0, np.int64), "rank": np.empty(0, np.int64)})
    texts = ("class", "id", "code", "description", "size")
    columns.update({name: np.empty(0, object) for name in texts})
    numbers = ["qv", "dp", "dp_min", "dp_max", "fan_total", "position", "setting", "lpa"]
    numbers += [f"lw_{band}" for band in BANDS] + ["throw", "area", "fit"]
    columns.update({name: np.empty(0, np.float32) for name in numbers})
    columns["unknown"] = np.empty(0, object)
    if explain:
        columns["why_not"] = np.empty(0, object)
    return pd.DataFrame(columns)
