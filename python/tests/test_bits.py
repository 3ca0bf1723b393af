"""Numbers have the bits of the C functions, of all kinds of products, at any point."""

from __future__ import annotations

import ctypes
from typing import Any

import numpy as np
import pytest
from conftest import products
from numpy.typing import NDArray

import tavd
from tavd import c

KINDS = {10, 11, 12, 13, 20, 22, 30, 40}
ODD = [0.0, -1.0, 1e-7, 1e-3, 1e30, np.inf, -np.inf, np.nan]
POINTS = 40


def points(product: tavd.Product, seed: int) -> tuple[NDArray[np.float32], NDArray[np.float32]]:
    """Points inside and outside the product's limits, and odd ones."""
    random = np.random.default_rng(seed)
    qv = random.uniform(0.3, 1.7, POINTS) * random.choice([product.qv_min, product.qv_max, 50.0], POINTS)
    dp = random.uniform(0.3, 1.7, POINTS) * random.choice([product.dp_min, product.dp_max, 60.0], POINTS)
    odd = np.array([(x, y) for x in [*ODD, 50.0] for y in [*ODD, 60.0]])
    return np.concatenate([qv, odd[:, 0]]).astype(np.float32), np.concatenate([dp, odd[:, 1]]).astype(np.float32)


def single(product: tavd.Product, qv: float, dp: float) -> dict[str, Any]:
    """The answers of the single functions."""
    flow = product.flow_data()
    size = c.DuctSize(0 if product.duct.is_round else 1, product.duct.width, product.duct.height)
    a, b, d = ctypes.c_float(), ctypes.c_float(), ctypes.c_float()
    told: dict[str, Any] = {}
    told["code_range"] = c.tavca_minmaxdptot(flow, qv, ctypes.byref(a), ctypes.byref(b))
    told["dp_min"], told["dp_max"] = a.value, b.value
    told["code_position"] = c.tavca_damper_pos(flow, qv, dp, ctypes.byref(a))
    told["position"] = a.value
    told["code_setting"] = c.tavca_damper_pos_fixed(flow, qv, dp, ctypes.byref(a))
    told["setting"] = a.value
    told["code_fan"] = c.tavca_fan_dp(flow, qv, ctypes.byref(a), ctypes.byref(b), ctypes.byref(d))
    told["fan_total"], told["fan_static"], told["fan_dynamic"] = a.value, b.value, d.value
    told["code_fan_check"] = c.tavca_fan_op_check(flow, qv, dp)
    lw = np.empty(8, np.float32)
    told["code_lw"] = c.tavca_lw(flow, qv, dp, lw, size)
    told["lw"] = lw if told["code_lw"] == 0 else np.zeros(8, np.float32)
    told["lpa"] = c.tavca_LpA(lw) if told["code_lw"] == 0 else 0.0
    dlw = np.empty(8, np.float32)
    told["code_dlw"] = c.tavca_dlw(flow, qv, dp, dlw)
    told["dlw"] = dlw
    told["throw"] = c.tavca_L2_isothermal(flow, qv, flow.par[0].value)
    return told


def bits(values: Any) -> bytes:
    """Of float32, those that are not a number included."""
    return np.array(values, np.float32).tobytes()


def compare(product: tavd.Product, seed: int) -> None:
    qv, dp = points(product, seed)
    many = product.calc(qv, dp)
    for i in range(len(qv)):
        told = single(product, qv[i], dp[i])
        one = product.calc(float(qv[i]), float(dp[i]))
        for name, value in told.items():
            where = (product, float(qv[i]), float(dp[i]), name)
            if name.startswith("code_"):
                assert getattr(many.codes, name[5:])[i] == value, where
                assert getattr(one.codes, name[5:]) == value, where
            else:
                assert bits(getattr(many, name)[i]) == bits(value), where
                assert bits(getattr(one, name)) == bits(value), where


def test_all_products_have_the_bits_of_the_single_functions(db: tavd.Database) -> None:
    c.tavca_setroomdamp(tavd.Product.calc.__kwdefaults__["room_damping"])
    kinds = set()
    for seed, product in enumerate(products(db)):
        kinds.add(product.kind)
        compare(product, seed)
    assert kinds == KINDS


def test_so_they_have_with_parameters_and_without_end_reflection(db: tavd.Database) -> None:
    chosen = 0
    for seed, product in enumerate(products(db)):
        other = product.without_end_reflection()
        for name, parameter in product.parameters.items():
            other = other.with_parameters({name: parameter.values[-1]})
            chosen += 1
        if bytes(other.flow_data()) != bytes(product.flow_data()):
            compare(other, seed)
    assert chosen > 3


def test_without_a_pressure_it_is_0(db: tavd.Database) -> None:
    for product in products(db):
        qv = np.array([product.qv_min, product.qv_max], np.float32)
        without, zero = product.calc(qv), product.calc(qv, 0.0)
        assert without.dp is None
        assert bits(without.lw) == bits(zero.lw)
        assert bits(product.calc(float(qv[0])).lw) == bits(zero.lw[0])


@pytest.mark.parametrize("name", tavd._results.ANSWERS)
def test_what_is_asked_for_alone_is_the_same(db: tavd.Database, name: str) -> None:
    for product in products(db)[::5]:
        qv, dp = points(product, 1)
        alone, all_of_it = product.calc(qv, dp, want=[name]), product.calc(qv, dp)
        if name != "fan_check":
            assert bits(getattr(alone, name)) == bits(getattr(all_of_it, name))
            assert bits(getattr(product.calc(50.0, 60.0, want=name), name)) == bits(
                getattr(product.calc(50.0, 60.0), name)
            )
        code = tavd._results.CODE_OF[name]
        assert np.array_equal(getattr(alone.codes, code), getattr(all_of_it.codes, code))


def test_throw_lengths_of_any_line(db: tavd.Database) -> None:
    product = db["ASD", "QZSA-160"]
    qv = np.linspace(5, 120, 50).astype(np.float32)
    flow = product.flow_data()
    for value in ("", "15", "45", "nothing"[:6]):
        assert bits(product.throw_length(qv, value)) == bits(
            [c.tavca_L2_isothermal(flow, x, value.encode()) for x in qv]
        )
