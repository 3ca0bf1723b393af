"""Sixteen threads at once get what one gets."""

from __future__ import annotations

import threading
import time
from collections.abc import Callable
from typing import Any

import numpy as np
import pytest

import tavd

THREADS = 16


def at_once(work: Callable[[int], Any]) -> list[Any]:
    """What sixteen threads answer that begin together."""
    answers: list[Any] = [None] * THREADS
    begin = threading.Barrier(THREADS)

    def run(number: int) -> None:
        begin.wait()
        try:
            answers[number] = work(number)
        except BaseException as error:
            answers[number] = error

    threads = [threading.Thread(target=run, args=(number,)) for number in range(THREADS)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    for answer in answers:
        if isinstance(answer, BaseException):
            raise answer
    return answers


def test_points_of_one_product(db: tavd.Database) -> None:
    product = db["DMP", "QZDA-160"]
    qv = np.linspace(16, 160, 3000).astype(np.float32)
    expected = product.calc(qv, 60.0)
    singles = [float(x) for x in qv[::7]]

    def work(number: int) -> Any:
        many = product.calc(qv, 60.0)
        one = [product.calc(x, 60.0) for x in (singles if number % 2 else singles[::-1])]
        return many, [(point.qv, point.lpa, point.position) for point in one]

    known = {
        float(x): (float(level), float(position)) for x, level, position in zip(qv, expected.lpa, expected.position)
    }
    for many, one in at_once(work):
        assert np.array_equal(many.lw, expected.lw) and np.array_equal(many.setting, expected.setting)
        assert all(known[x] == (level, position) for x, level, position in one)


def test_one_database(db: tavd.Database, catalogue: str) -> None:
    keys = list(db)
    expected = {key: bytes(db[key].flow_data()) for key in keys}
    names = db.select(qv=80, dp=70, top=20)["id"].tolist()

    def work(number: int) -> Any:
        with tavd.open(catalogue, market=["FIN", "SWE"][number % 2], language=["en", "sv"][number % 2]) as own:
            described = own["DMP", "QZDA-160"].description
        shared = {key: bytes(db[key].flow_data()) for key in keys[number::THREADS]}
        return shared, db.select(qv=80, dp=70, top=20)["id"].tolist(), described

    words = set()
    for number, (shared, selected, described) in enumerate(at_once(work)):
        assert all(expected[key] == flow for key, flow in shared.items())
        assert selected == names
        words.add((number % 2, described))
    assert len(words) == 2


def test_pictures(db: tavd.Database) -> None:
    product, diffuser = db["DMP", "QZDA-160"], db["ASD", "QZSA-160"]
    expected = [product.flow_diagram(qv=50, dp=60).svg, diffuser.throw_diagram(qv=60).svg, diffuser.sketch().svg]

    def work(_number: int) -> Any:
        return [product.flow_diagram(qv=50, dp=60).svg, diffuser.throw_diagram(qv=60).svg, diffuser.sketch().svg]

    assert all(answer == expected for answer in at_once(work))


def longest_pause(product: tavd.Product) -> float:
    """While a thread calculates many points: the longest time that another one stood still, as a part of the whole."""
    qv = np.linspace(16, 160, 2_400_000).astype(np.float32)  # much longer than threads keep the GIL, 5 ms
    times: list[float] = []

    def work() -> None:
        times.append(time.perf_counter())
        product.calc(qv, 60.0, want=["lw", "setting"])
        times.append(time.perf_counter())

    thread = threading.Thread(target=work)
    longest, last = 0.0, time.perf_counter()
    thread.start()
    while len(times) < 2:
        now = time.perf_counter()
        longest, last = max(longest, now - last), now
    thread.join()
    return longest / (times[1] - times[0])


def test_the_gil_is_released_while_points_are_calculated(db: tavd.Database, monkeypatch: pytest.MonkeyPatch) -> None:
    product = db["DMP", "QZDA-160"]
    assert longest_pause(product) < 0.5
    monkeypatch.setattr("tavd._points._AT_ONCE", 10**9)
    monkeypatch.setattr("tavd._pages.hand_out", lambda arrays: None)  # whose thread would be waited for
    assert longest_pause(product) > 0.8  # so it would be if it were kept
