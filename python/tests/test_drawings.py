"""Drawings are those of the program, to the byte."""

from __future__ import annotations

import pathlib
import re
import subprocess
from typing import Any

import pytest
from conftest import products

import tavd


def drawn(program: str, *arguments: Any) -> bytes:
    """What the program draws as SVG; nothing where it refuses."""
    run = subprocess.run([program, *map(str, arguments), "-o", "-", "--format", "svg"], capture_output=True)
    return run.stdout


def test_flow_diagrams_have_the_bytes_of_the_program(db: tavd.Database, catalogue: str, program: str) -> None:
    kinds = set()
    for number, product in enumerate(products(db)):
        if (number % 3 and product.kind in kinds) or product.layers:
            continue  # the program draws records as they are stored
        qv, dp = (product.qv_min + product.qv_max) / 2, (product.dp_min + product.dp_max) / 2
        expected = drawn(program, "diagram", catalogue, product.class_id, product.id, "--qv", qv, "--dp", dp)
        assert product.flow_diagram(qv=qv, dp=dp).svg.encode() == expected, product
        kinds.add(product.kind)
    assert kinds == {10, 11, 12, 13, 20, 22, 30, 40}


SETTINGS: list[tuple[tuple[str, str], list[Any], dict[str, Any]]] = [
    (("DMP", "QZDA-160"), [], {}),
    (("DMP", "QZDA-160"), ["--qv", 50, "--dp", 60, "--limits", "20,80"], {"qv": 50, "dp": 60, "limits": (20, 80)}),
    (("DMP", "QZDA-160"), ["--qv", 1000], {"qv": 1000}),
    (("DMP", "QZDA-160"), ["--qv", 50, "--dp", 5000], {"qv": 50, "dp": 5000}),
    (("DMP", "QZDA-160"), ["--units", "m3/h,kPa"], {"units": ("m3/h", "kPa")}),
    (("DMP", "QZDA-160"), ["--lp", "25,60,5"], {"levels": (25, 60, 5)}),
    (
        ("DMP", "QZDA-160"),
        ["--a-label", "2=half 50% open, quite", "--a-label", "4=Öppen"],
        {"labels": {2: "half 50% open, quite", 4: "Öppen"}},
    ),
    (("DMP", "QZDA-160"), ["--title", "Küche/Кухня 1"], {"title": "Küche/Кухня 1"}),
    (("DMP", "QZDA-160"), ["--title", "W" * 79, "--size", "300x700"], {"title": "W" * 79, "size": (300, 700)}),
    (("DMP", "QZDA-160"), ["--size", "64x64"], {"size": (64, 64)}),
    (("ASD", "QZSA-160"), ["--static", "--size", "800x600"], {"static": True, "size": (800, 600)}),
]


@pytest.mark.parametrize(("key", "options", "settings"), SETTINGS)
def test_so_they_have_with_any_setting(
    db: tavd.Database, catalogue: str, program: str, key: tuple[str, str], options: list[Any], settings: dict[str, Any]
) -> None:
    expected = drawn(program, "diagram", catalogue, *key, *options)
    assert expected
    assert db[key].flow_diagram(**settings).svg.encode() == expected


def test_so_they_have_with_a_market_a_language_and_a_parameter(catalogue: str, program: str) -> None:
    with tavd.open(catalogue, market="FIN", language="sv") as db:
        product = db["ASD", "QZSA-160"]
        name, parameter = next(iter(product.parameters.items()))
        expected = drawn(
            program,
            "diagram",
            catalogue,
            "ASD",
            "QZSA-160",
            "--market",
            "FIN",
            "--language",
            "sv",
            "--param",
            f"{name}={parameter.values[1]}",
        )
        assert product.with_parameters({name: parameter.values[1]}).flow_diagram().svg.encode() == expected


def test_throw_diagrams_and_sketches_have_the_bytes_of_the_program(
    db: tavd.Database, catalogue: str, program: str
) -> None:
    throws = sketches = 0
    for number, product in enumerate(product for product in (db[key] for key in db) if not product.layers):
        flow = product.flow_data()
        key = (product.class_id, product.id)
        if (flow.nparL2 or flow.nqvL2) and product.has_flow_data:
            qv = (product.qv_min + product.qv_max) / 2
            assert product.throw_diagram(qv=qv).svg.encode() == drawn(
                program, "throw", catalogue, *key, "--qv", qv
            ), product
            throws += 1
        if product.record.has_shape and number % 3 == 0:
            assert product.sketch().svg.encode() == drawn(program, "picture", catalogue, *key), product
            sketches += 1
    assert throws > 5 and sketches > 10
    line = drawn(program, "throw", catalogue, "ASD", "QZSA-160", "--qv", 60, "--value", 45, "--unit", "m3/h")
    assert db["ASD", "QZSA-160"].throw_diagram(qv=60, value=45, unit="m3/h").svg.encode() == line


def test_a_drawing_is_saved_in_three_forms_whole_or_not_at_all(db: tavd.Database, tmp_path: pathlib.Path) -> None:
    drawing = db["DMP", "QZDA-160"].flow_diagram(qv=50, dp=60, size=(400, 300))
    beginnings = {"svg": b"<?xml", "png": b"\x89PNG", "pdf": b"%PDF"}
    for ending, beginning in beginnings.items():
        drawing.save(tmp_path / f"damper.{ending}")
        assert (tmp_path / f"damper.{ending}").read_bytes().startswith(beginning)
    with pytest.raises(ValueError, match="ends in '.gif', expected .svg, .png or .pdf"):
        drawing.save(tmp_path / "damper.gif")
    (tmp_path / "taken.svg").mkdir()
    with pytest.raises(OSError):
        drawing.save(tmp_path / "taken.svg")
    assert sorted(path.name for path in tmp_path.iterdir()) == ["damper.pdf", "damper.png", "damper.svg", "taken.svg"]


def test_a_notebook_shows_it(db: tavd.Database) -> None:
    drawing = db["DMP", "QZDA-160"].flow_diagram(qv=50, dp=60)
    assert drawing._repr_svg_() == drawing.svg
    assert drawing.title == f"{db['DMP', 'QZDA-160'].code}: flow diagram"
    assert re.search(f"<title[^>]*>{drawing.title}</title>", drawing.svg)
    assert "Marked: 50 l/s and 60 Pa." in str(drawing)
    assert drawing.operations().splitlines()[0].startswith("select ")


def test_what_cannot_be_drawn_is_told(db: tavd.Database) -> None:
    damper = db["DMP", "QZDA-160"]
    with pytest.raises(tavd.Error, match="DMP QZDA-160 has no throw data to draw"):
        damper.throw_diagram(qv=50)
    with pytest.raises(ValueError, match=r"units has 'gallons', expected one of l/s, l/h"):
        damper.flow_diagram(units=("gallons", "Pa"))
    with pytest.raises(ValueError, match="levels is .*expected the lowest, the highest and their step"):
        damper.flow_diagram(levels=(50, 20, 5))
    with pytest.raises(ValueError, match="title is 80 characters long, expected at most 79"):
        damper.flow_diagram(title="x" * 80)
    with pytest.raises(ValueError, match="expected sides from 64 to 16384 pixels"):
        damper.flow_diagram(size=(10, 10))
    with pytest.raises(ValueError, match="value is 'red', but the throw lines of ASD QZSA-160 are for"):
        db["ASD", "QZSA-160"].throw_diagram(qv=60, value="red")
    with pytest.raises(TypeError):
        damper.flow_diagram(colour="red")
    empty = next(product for product in (db[key] for key in db) if not product.has_flow_data)
    with pytest.raises(tavd.Error, match="has no flow data to draw"):
        empty.flow_diagram()
