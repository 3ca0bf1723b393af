"""Selection and calculation in parts are those of the whole."""

from __future__ import annotations

import os
import signal
from collections.abc import Iterator

import dask
import dask.dataframe as dd
import numpy as np
import pandas as pd
import pytest
from pandas.testing import assert_frame_equal

import tavd
import tavd.dask

DUTIES = 120


@pytest.fixture(scope="module")
def duties() -> pd.DataFrame:
    """A schedule with columns of its own, in which some lines have limits and some can't be met."""
    random = np.random.default_rng(19)
    return pd.DataFrame(
        {
            "room": [f"room {number}" for number in range(DUTIES)],
            "floor": random.integers(1, 9, DUTIES),
            "qv [m3/h]": random.uniform(20.0, 900.0, DUTIES),
            "dp": np.where(random.random(DUTIES) < 0.1, 0.01, random.uniform(5.0, 150.0, DUTIES)),
            "lp max [dB(A)]": np.where(random.random(DUTIES) < 0.5, np.nan, random.uniform(18.0, 45.0, DUTIES)),
        }
    )


@pytest.fixture(scope="module")
def points(catalogue: str) -> pd.DataFrame:
    """Points of all products with flow data, in no order of products."""
    random = np.random.default_rng(20)
    with tavd.open(catalogue) as db:
        keys = [key for key in db if db[key].has_flow_data]
    chosen = [keys[place] for place in random.integers(0, len(keys), 400)]
    return pd.DataFrame(
        {
            "class": [class_id for class_id, _ in chosen],
            "id": [object_id for _, object_id in chosen],
            "qv": random.uniform(1.0, 200.0, len(chosen)),
            "dp": random.uniform(1.0, 200.0, len(chosen)),
        }
    )


def same(parts: pd.DataFrame, whole: pd.DataFrame) -> None:
    """The same columns, types and bits; the index begins anew in each part."""
    assert_frame_equal(parts.reset_index(drop=True), whole, check_exact=True)
    for name in whole.columns:
        if whole[name].dtype.kind == "f":
            assert parts[name].to_numpy().tobytes() == whole[name].to_numpy().tobytes(), name


@pytest.mark.parametrize("scheduler", ["synchronous", "threads", "processes"])
@pytest.mark.parametrize("parts", [1, 7])
def test_a_schedule_in_parts_is_selected_as_the_whole(
    catalogue: str, duties: pd.DataFrame, parts: int, scheduler: str
) -> None:
    table = tavd.dask.select(
        catalogue, dd.from_pandas(duties, npartitions=parts, sort=False), market="FIN", language="en", top=3, explain=True
    )
    found = table.compute(scheduler=scheduler)
    with tavd.open(catalogue, market="FIN", language="en") as db:
        whole = db.select(duties, top=3, explain=True)
    assert (whole["fitting"] == 0).any() and (whole["rank"] > 1).any()
    same(found, whole)
    assert list(table.columns) == list(whole.columns)
    assert list(table.dtypes) == list(whole.dtypes)


def test_parts_without_lines_add_nothing(catalogue: str, duties: pd.DataFrame, db: tavd.Database) -> None:
    table = dd.from_pandas(duties, npartitions=6, sort=False)
    some = table[table["floor"] == 3]
    found = tavd.dask.select(db, some, top=1).compute(scheduler="synchronous")
    same(found, db.select(duties[duties["floor"] == 3], top=1))


def test_a_line_that_cannot_be_asked_is_told_with_its_partition(db: tavd.Database, duties: pd.DataFrame) -> None:
    bad = duties.assign(dp=duties["dp"].where(duties.index != DUTIES - 1, -1.0))
    table = tavd.dask.select(db, dd.from_pandas(bad, npartitions=4, sort=False))
    with pytest.raises(ValueError, match=r"line \d+ of the schedule: .*first line is 90 of all"):
        table.compute(scheduler="synchronous")


def test_what_no_duty_has_is_refused_before_anything_is_read(duties: pd.DataFrame) -> None:
    with pytest.raises(ValueError, match="loudness"):
        tavd.dask.select("missing.tavdb", duties, loudness=3)
    with pytest.raises(ValueError, match="expected one of dask.dataframe or of pandas"):
        tavd.dask.select("missing.tavdb", [1, 2])
    with pytest.raises(ValueError, match="lacks class, id"):
        tavd.dask.calc("missing.tavdb", pd.DataFrame({"qv": [1.0]}))


@pytest.mark.parametrize("want", [None, ("lpa", "position")])
def test_points_in_parts_are_calculated_as_each_product_does(
    catalogue: str, points: pd.DataFrame, db: tavd.Database, want: tuple[str, ...] | None
) -> None:
    table = tavd.dask.calc(catalogue, dd.from_pandas(points, npartitions=5, sort=False), want=want, room_damping=6.0)
    found = table.compute(scheduler="threads")
    assert list(table.dtypes) == list(found.dtypes)
    assert (found["lpa"] > 0).any()
    for place, row in enumerate(points.itertuples(index=False)):
        alone = db[row[0], row[1]].calc(qv=[row.qv], dp=[row.dp], want=want, room_damping=6.0).to_frame()
        for name in alone.columns.difference(["qv", "dp"]):
            assert found[name].to_numpy()[place].tobytes() == alone[name].to_numpy()[0].tobytes(), (row, name)


@pytest.fixture(scope="module")
def client() -> Iterator[object]:
    """A scheduler with three worker processes of its own."""
    distributed = pytest.importorskip("distributed")
    with dask.config.set({"distributed.comm.timeouts.connect": "30s"}):
        with distributed.LocalCluster(
            n_workers=3, threads_per_worker=1, processes=True, dashboard_address=None, host="127.0.0.1"
        ) as cluster, distributed.Client(cluster) as connected:
            yield connected


def test_a_worker_that_is_killed_changes_no_bit(catalogue: str, duties: pd.DataFrame, client: object) -> None:
    import distributed

    assert isinstance(client, distributed.Client)
    many = pd.concat([duties] * 10, ignore_index=True)
    table = tavd.dask.select(catalogue, dd.from_pandas(many, npartitions=40, sort=False), top=2)
    parts = client.compute(table.to_delayed())
    next(iter(distributed.as_completed(parts)))
    workers = client.run(os.getpid)
    pending = sum(not part.done() for part in parts)
    os.kill(next(iter(workers.values())), signal.SIGKILL)
    found = pd.concat(client.gather(parts))
    assert pending > 0, "all was done before the worker was killed"
    with tavd.open(catalogue) as db:
        same(found, db.select(many, top=2))
