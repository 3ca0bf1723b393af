"""Selection answers as the program does."""

from __future__ import annotations

import csv
import io
import pathlib
import subprocess
from typing import Any

import numpy as np
import pandas as pd
import pytest
from conftest import ROOT

import tavd

ROOMS = ROOT / "examples" / "rooms.csv"

# Columns of the program's tables, and ours.
NAMES = {
    "rank": "rank",
    "class": "class",
    "id": "id",
    "code": "code",
    "description": "description",
    "size_mm": "size",
    "dp_Pa": "dp",
    "dp_min_Pa": "dp_min",
    "dp_max_Pa": "dp_max",
    "position_stepless": "position",
    "position_stepped": "setting",
    "fan_dp_total_Pa": "fan_total",
    "room_level_dBA": "lpa",
    "throw_length_m": "throw",
    "fit": "fit",
    "unknown": "unknown",
    **{f"lw_{band}Hz_dB": f"lw_{band}" for band in tavd.BANDS},
}


def asked(program: str, catalogue: str, schedule: str, tmp_path: pathlib.Path, *options: str) -> list[dict[str, str]]:
    """What the program answers to a schedule."""
    (tmp_path / "duties.csv").write_text(schedule)
    answer = tmp_path / "answer.csv"
    subprocess.run(
        [program, "select", catalogue, "--duties", tmp_path / "duties.csv", "-o", answer, *options],
        check=True,
        capture_output=True,
    )
    return list(csv.DictReader(io.StringIO(answer.read_text())))


def is_same(told: str, found: Any) -> bool:
    if isinstance(found, (float, np.floating)):
        return told == "" if np.isnan(found) else np.float32(told) == found
    return told == ("" if found is None else str(found))


def compare(expected: list[dict[str, str]], table: Any) -> None:
    assert len(expected) == len(table)
    for told, (_, found) in zip(expected, table.iterrows()):
        for theirs, ours in NAMES.items():
            if told["rank"] == "" and ours != "why_not":
                continue  # a line without a product
            assert is_same(told[theirs], found[ours]), (theirs, told[theirs], found[ours])
        assert told["fitting"] == str(found["fitting"])


def test_a_schedule_is_answered_as_by_the_program(
    db: tavd.Database, program: str, catalogue: str, tmp_path: pathlib.Path
) -> None:
    expected = asked(program, catalogue, ROOMS.read_text(), tmp_path, "--top", "3", "--explain")
    rooms = pd.read_csv(ROOMS, sep=";", decimal=",")
    table = db.select(rooms, top=3, explain=True)
    compare(expected, table)
    assert table["room"].tolist() == [line["room"] for line in expected]
    assert table["why_not"].tolist() == [line["why_not"] for line in expected]
    assert sum(table["id"].isna()) == sum(line["id"] == "" for line in expected) > 0


def test_any_duty_is_answered_as_by_the_program(
    db: tavd.Database, program: str, catalogue: str, tmp_path: pathlib.Path
) -> None:
    random = np.random.default_rng(7)
    lines = []
    for _ in range(60):
        lines.append(
            {
                "qv": round(float(np.exp(random.uniform(2, 6.5))), 1),
                "dp": round(float(random.uniform(10, 200)), 1),
                "lp max": random.choice(["", "25", "35", "50"]),
                "class": random.choice(["", "DMP", "ASD AEX", "FAN DMP LVR"]),
                "throw max": random.choice(["", "", "4"]),
                "rank": random.choice(["sound", "pressure", "size", "fit"]),
                "allow unknown": random.choice(["", "sound throw", "sound, size"]),
                "size": random.choice(["", "", "160", "100:315"]),
                "room damping": random.choice(["4", "12"]),
                "top": random.choice(["1", "4"]),
            }
        )
    known = set(db.classes())
    for line in lines:
        line["class"] = " ".join(name for name in line["class"].split() if name in known)
    text = io.StringIO()
    writer = csv.DictWriter(text, lines[0], delimiter=";")
    writer.writerow(
        {"qv": "qv [l/s]", "dp": "dp [Pa]", **{name: name for name in lines[0] if name not in ("qv", "dp")}}
    )
    writer.writerows(lines)
    expected = asked(program, catalogue, text.getvalue(), tmp_path)
    compare(expected, db.select(lines))
    frame = pd.DataFrame(lines)
    compare(expected, db.select(frame, threads=1))
    assert len(expected) > 80


def test_arguments_say_what_a_line_says(db: tavd.Database) -> None:
    by_line = db.select([{"qv": 80, "dp": 70, "max_lp": 30, "classes": "DMP", "room_damping": 15}], top=3)
    single = db.select(qv=80, dp=70, max_lp=30, room_damping=15, classes=["DMP"], rank="sound", top=3)
    assert single["id"].tolist() == by_line["id"].tolist()
    assert "duty" not in single and by_line["duty"].tolist() == [0, 0, 0]
    assert (
        db.select(qv=288, flow_unit="m3/h", dp=70, classes="DMP")["lpa"].tolist()
        == db.select(qv=80, dp=70, classes="DMP")["lpa"].tolist()
    )
    assert len(db.select(qv=1e6, dp=1)) == 0


def test_a_level_of_the_answer_is_that_of_the_product(db: tavd.Database) -> None:
    for _, hit in db.select(qv=80, dp=70, top=1000).iterrows():
        product = db[hit["class"], hit["id"]]
        point = product.calc(float(hit["qv"]), float(hit["dp"]))
        assert np.float32(point.lpa) == hit["lpa"]
        assert np.array_equal(point.lw, hit[[f"lw_{band}" for band in tavd.BANDS]].to_numpy(np.float32))


def test_parameters_are_chosen_or_tried(db: tavd.Database) -> None:
    product = db["ASD", "QZSA-160"]
    name, parameter = next(iter(product.parameters.items()))
    for value in parameter.values:
        table = db.select(qv=60, dp=40, classes=["ASD"], parameters={name: value}, allow_unknown=["throw"], top=100)
        row = table[table["id"] == "QZSA-160"]
        if len(row):
            chosen = product.with_parameters({name: value}).calc(60.0, float(row["dp"].iloc[0]))
            assert np.float32(chosen.lpa) == row["lpa"].iloc[0]
    assert len(db.select(qv=60, dp=40, parameters={name: "*"})) > 0
    with pytest.raises(ValueError, match="no product in .* has a parameter 'colour'; there are"):
        db.select(qv=60, dp=40, parameters={"colour": "red"})


@pytest.mark.parametrize(
    ("duty", "words"),
    [
        ({"dp": 70}, "qv is missing, expected a flow above 0"),
        ({"qv": 80}, "dp is missing, expected a pressure above 0"),
        ({"qv": "many", "dp": 70}, "qv is 'many', expected a number above 0"),
        ({"qv": 80, "dp": -1}, "dp is -1, expected a number above 0"),
        ({"qv": 80, "dp": 70, "rank": "price"}, "rank is 'price', expected one of sound, pressure, size, fit"),
        ({"qv": 80, "dp": 70, "top": 0}, "top is 0, expected a whole number from 1"),
        ({"qv": 80, "dp": 70, "size": "big"}, "size is 'big', expected a diameter such as 160"),
        ({"qv": 80, "dp": 70, "max_lw": [1, 2]}, r"max_lw is \[1, 2\], expected 8 levels"),
        ({"qv": 80, "dp": 70, "colour": "red"}, "a duty has no 'colour', expected any of qv, dp, dp_lowest"),
        (
            {"qv": 80, "dp": 70, "allow_unknown": "price"},
            "allow_unknown has 'price', expected any of size, pressure, sound, throw",
        ),
        (
            {"qv": 80, "dp": 70, "dp_lowest": 90},
            "the available pressure is no number above 0, or the lowest is below 0 or above",
        ),
        ({"qv": 80, "dp": 70, "flow_unit": "gallons"}, "flow_unit is 'gallons', expected one of l/s"),
    ],
)
def test_a_duty_that_cannot_be_asked_is_told(db: tavd.Database, duty: dict[str, Any], words: str) -> None:
    with pytest.raises(ValueError, match=words):
        db.select(**duty)
    with pytest.raises(tavd.NotFoundError, match="no class 'XYZ' with flow data in .*; there are .*DMP"):
        db.select(qv=80, dp=70, classes=["XYZ"])


def test_a_line_that_cannot_be_asked_is_told_with_its_number(db: tavd.Database) -> None:
    with pytest.raises(ValueError, match="line 1 of the schedule: dp is missing"):
        db.select([{"qv": 80, "dp": 70}, {"qv": 80}])
    with pytest.raises(ValueError, match=r"a column is 'qv \[gallons\]', expected one of l/s"):
        db.select({"qv [gallons]": [80], "dp": [70]})
    with pytest.raises(ValueError, match="a schedule is int, expected a table of pandas"):
        db.select(5)


def test_products_are_read_again_when_told(catalogue: str, program: str, tmp_path: pathlib.Path) -> None:
    path = tmp_path / "changing.tavdb"
    path.write_bytes(pathlib.Path(catalogue).read_bytes())
    with tavd.open(path) as db:
        before = db.select(qv=80, dp=70, classes="DMP", top=100)["id"].tolist()
        subprocess.run(
            [
                program,
                "delete",
                path,
                "DMP",
                before[0],
                *(
                    ["--yes"]
                    if "--yes" in subprocess.run([program, "delete", "--help"], capture_output=True, text=True).stdout
                    else []
                ),
            ],
            check=True,
            capture_output=True,
        )
        assert db.select(qv=80, dp=70, classes="DMP", top=100)["id"].tolist() == before
        db.refresh()
        assert db.select(qv=80, dp=70, classes="DMP", top=100)["id"].tolist() == before[1:]
