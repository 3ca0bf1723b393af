"""Shapes, numbers and codes of what a product answers."""

from __future__ import annotations

import json
import pickle
import resource
import subprocess
import sys
from typing import Any

import dask.array as da
import numpy as np
import pytest

import tavd
from tavd import _pages


@pytest.fixture
def damper(db: tavd.Database) -> tavd.Product:
    return db["DMP", "QZDA-160"]


def test_numbers_in_give_numbers_out(damper: tavd.Product) -> None:
    point = damper.calc(50, 60)
    assert type(point) is tavd.Point
    assert type(point.position) is float and round(point.position, 2) == 5.48
    assert point.lw.shape == (8,) and point.lw.dtype == np.float32
    assert point.codes.position == 0 and point.codes.position.message() == "in range"
    assert damper.calc(np.float64(50), np.float32(60)).position == point.position
    assert damper.calc(np.array(50.0), 60).position == point.position


def test_flows_and_pressures_broadcast(damper: tavd.Product) -> None:
    r = damper.calc(np.linspace(20, 150, 7), np.array([[30.0], [60.0], [90.0]]))
    assert isinstance(r, tavd.Points)
    assert r.position.shape == (3, 7) and r.lw.shape == (3, 7, 8) and r.throw.shape == (3, 7)
    assert r.codes.position.shape == (3, 7)
    assert r.position[1, 3] == damper.calc(float(r.qv[1, 3]), 60.0).position
    assert damper.calc([], 60.0).lw.shape == (0, 8)
    assert damper.calc([50], None).dp is None


def test_strided_reversed_and_wide_numbers_are_taken(damper: tavd.Product) -> None:
    qv = np.arange(20, 140, dtype=np.int64)
    straight = damper.calc(qv.astype(np.float32), 60.0).position
    assert np.array_equal(damper.calc(qv[::-1], 60.0).position[::-1], straight)
    assert np.array_equal(damper.calc(qv[::2], 60.0).position, straight[::2])
    assert np.array_equal(damper.calc(qv.reshape(10, 12).T, 60.0).position.T.ravel(), straight)


@pytest.mark.parametrize("system", ["as it is", "without threads", "without advice", "another"])
def test_results_beyond_a_huge_page_are_those_of_small_pieces(
    damper: tavd.Product, monkeypatch: pytest.MonkeyPatch, system: str
) -> None:
    def no_thread(*_: Any) -> None:
        raise RuntimeError("can't start new thread")

    if system == "without threads":
        monkeypatch.setattr("_thread.start_new_thread", no_thread)
    elif system == "without advice":
        monkeypatch.setattr(_pages, "_advise", lambda: lambda *_: -1)
    elif system == "another":
        monkeypatch.setattr("sys.platform", "win32")
    qv = np.linspace(1, 200, 600_000, dtype=np.float32)
    whole = damper.calc(qv, 60)
    for start in range(0, qv.size, 50_000):
        piece = slice(start, start + 50_000)
        small = damper.calc(qv[piece], 60)
        for name in ("dp_min", "position", "setting", "lw", "lpa", "dlw", "throw"):
            assert getattr(whole, name)[piece].tobytes() == getattr(small, name).tobytes()
        assert np.array_equal(whole.codes.position[piece], small.codes.position)


def test_memory_of_large_results_is_handed_out_before_it_is_touched() -> None:
    array = _pages.empty((3_000_001,), np.float32)
    start = array.__array_interface__["data"][0]
    assert start % (2 << 20) == 0
    if _pages._advise()(start, 4096, _pages._POPULATE_WRITE) != 0:
        pytest.skip("the kernel is older than the advice")
    wait = _pages.hand_out([array])
    assert wait is not None
    wait()
    faults = resource.getrusage(resource.RUSAGE_THREAD).ru_minflt
    array.fill(1)
    assert resource.getrusage(resource.RUSAGE_THREAD).ru_minflt - faults < 10
    assert _pages.hand_out([_pages.empty((1000,), np.float32)]) is None


def test_codes_are_arrays_with_words(damper: tavd.Product) -> None:
    r = damper.calc(np.array([50.0, 50.0, 0.0]), np.array([60.0, 1e6, 60.0]))
    assert r.codes.position.dtype == np.int32
    assert r.codes.position.tolist() == [0, 1, -4]
    assert r.codes.position.message().tolist() == [
        "in range",
        "more throttled than the first setting",
        "flow or pressure is too small",
    ]
    assert r.codes.position[1:].message().shape == (2,)
    again = pickle.loads(pickle.dumps(r.codes.position))
    assert again.message().tolist() == r.codes.position.message().tolist()


def test_what_is_not_a_shape_or_a_number_is_told(damper: tavd.Product) -> None:
    with pytest.raises(ValueError, match=r"qv has the shape \(3,\) and dp \(2,\), expected shapes that broadcast"):
        damper.calc([1, 2, 3], [1, 2])
    with pytest.raises(ValueError, match="qv is 'fifty', expected a number"):
        damper.calc("fifty", 60)  # type: ignore[call-overload]
    with pytest.raises(ValueError, match="want has 'noise', expected any of dp_min, dp_max, position"):
        damper.calc(50, 60, want=["noise"])
    with pytest.raises(AttributeError, match="'lw' was not asked for: want had position"):
        damper.calc(50, 60, want="position").lw
    with pytest.raises(AttributeError, match="'lw' was not asked for: want had position"):
        damper.calc([50], 60, want="position").lw


def test_parameters_that_there_are_not_are_told(db: tavd.Database) -> None:
    product = db["ASD", "QZSA-160"]
    assert product.parameters
    name, parameter = next(iter(product.parameters.items()))
    chosen = product.with_parameters({name: parameter.values[-1]})
    assert chosen.parameters[name].chosen == parameter.values[-1]
    assert product.parameters[name].chosen == ""
    with pytest.raises(ValueError, match=f"the product has no parameter 'colour'; it has {name}"):
        product.with_parameters(colour="red")
    with pytest.raises(ValueError, match=f"parameter {name} has no value 'red'; it has {parameter.values[0]}"):
        product.with_parameters({name: "red"})


def test_room_damping_counts(damper: tavd.Product) -> None:
    assert damper.calc(50, 60, room_damping=0.0).lpa == pytest.approx(damper.calc(50, 60).lpa + 4, abs=1e-4)
    assert damper.calc([50.0], 60, room_damping=0.0).lpa[0] == damper.calc(50, 60, room_damping=0.0).lpa


@pytest.mark.parametrize("scheduler", ["threads", "processes", "sync"])
def test_arrays_of_dask_have_the_same_bits(db: tavd.Database, scheduler: str) -> None:
    for product in (db["DMP", "QZDA-160"], db["ASD", "QZSA-160"]):
        qv, dp = np.linspace(5, 200, 600).reshape(20, 30), np.linspace(1, 300, 30)
        lazy = product.calc(da.from_array(qv, chunks=(7, 11)), da.from_array(dp, chunks=9), room_damping=7.0)
        plain = product.calc(qv, dp, room_damping=7.0)
        assert isinstance(lazy.lpa, da.Array) and lazy.lw.shape == (20, 30, 8) and lazy.codes.lw.dtype == np.int32
        found = lazy.compute(scheduler=scheduler)
        for name in tavd._results.ANSWERS:
            if name != "fan_check":
                assert getattr(found, name).tobytes() == np.ascontiguousarray(getattr(plain, name)).tobytes(), name
        for name, codes in plain.codes.__dict__.items():
            assert np.array_equal(getattr(found.codes, name), codes)
        assert found.codes.position.message().shape == (20, 30)


def test_arrays_of_dask_answer_what_is_asked(db: tavd.Database) -> None:
    damper = db["DMP", "QZDA-160"]
    lazy = damper.calc(da.linspace(20, 150, 10, chunks=5), want=["dp_min", "fan_check"])
    assert lazy.dp is None and lazy.dp_min.compute().tolist() == damper.calc(np.linspace(20, 150, 10)).dp_min.tolist()
    assert lazy.codes.fan_check.compute().tolist() == [-200] * 10
    with pytest.raises(AttributeError, match="'lw' was not asked for"):
        lazy.lw
    with pytest.raises(ValueError, match="want has 'noise', expected any of"):
        damper.calc(da.zeros(3), want=["noise"])


def test_frames_have_a_row_a_point(damper: tavd.Product) -> None:
    r = damper.calc(np.linspace(20, 150, 6).reshape(2, 3), 60.0)
    frame = r.to_frame()
    assert len(frame) == 6
    assert frame["lw_1000"].tolist() == r.lw[..., 4].ravel().tolist()
    assert frame["code_position"].tolist() == r.codes.position.ravel().tolist()
    one = damper.calc(50, 60)
    assert one.to_dict()["position"] == one.position
    assert one.to_frame()["lw_63"][0] == one.lw[0]


def test_a_product_goes_to_other_processes(damper: tavd.Product, catalogue: str) -> None:
    chosen = damper.without_end_reflection()
    again = pickle.loads(pickle.dumps(chosen))
    assert bytes(again.flow_data()) == bytes(chosen.flow_data())
    script = "import pickle, sys; p = pickle.load(sys.stdin.buffer); print(p.calc(50, 60).lpa, p.code, len(p.flow_diagram().svg))"
    told = subprocess.run(
        [sys.executable, "-c", script], input=pickle.dumps(chosen), capture_output=True, check=True
    ).stdout.decode()
    assert told.split() == [repr(chosen.calc(50, 60).lpa), chosen.code, str(len(chosen.flow_diagram().svg))]


@pytest.mark.parametrize("object_id", ["QZGA-300x100-S+W", "QZGA-400x200-D+C", "QZGA-200x100-D+N", "QZGA-200x100-*+*"])
def test_a_layered_product_is_put_together_as_by_the_program(
    db: tavd.Database, program: str, catalogue: str, object_id: str
) -> None:
    command = [program, "calc", catalogue, "GRL", object_id, "--qv", "100", "--json"]
    told = json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)
    product = db["GRL", object_id]
    thing = told["product"]
    assert product.layers == tuple(layer["id"] for layer in thing["layers"]) and len(product.layers) > 1
    assert (product.code, product.description) == (thing["code"], thing["description"])
    assert (product.duct.width, product.duct.height) == (thing["size"]["width_mm"], thing["size"]["height_mm"])
    point = product.calc(100.0)
    assert np.float32(point.dp_min) == np.float32(told["pressure_range"]["dp_min_Pa"])
    assert np.array_equal(point.lw, np.array(told["sound"]["lw_dB"], np.float32))
    product.flow_diagram()
    assert ("GRL", "QZGA-300x100-S+W") not in db


def test_a_product_outlives_its_database(catalogue: str) -> None:
    db = tavd.open(catalogue)
    product = db["DMP", "QZDA-160"]
    before = product.flow_diagram(qv=50, dp=60).svg
    db.close()
    assert product.flow_diagram(qv=50, dp=60).svg == before
    assert round(product.calc(50, 60).position, 2) == 5.48
