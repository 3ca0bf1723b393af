"""Databases: what is in them, and what is said of those that cannot be read."""

from __future__ import annotations

import gc
import os
import pathlib
import shutil
import subprocess
import sys

import pytest
from conftest import BUILD

import tavd

# 100 000 take some three quarters of a minute; what leaks shows in fewer as well.
OPENS = int(os.environ.get("TAVD_OPENS", "10000"))


def test_products_are_counted_listed_and_found(db: tavd.Database, program: str, catalogue: str) -> None:
    listed = subprocess.run([program, "list", catalogue], check=True, capture_output=True, text=True).stdout
    assert len(db) == len(list(db)) > 60
    for class_id, object_id in db:
        assert object_id in listed
        assert (class_id, object_id) in db
    assert ("DMP", "QZDA-1") not in db and ("DMP", "") not in db and "DMP" not in db
    table = db.products(classes=["DMP"])
    assert set(table["class"]) == {"DMP"}
    row = table[table["id"] == "QZDA-160"].iloc[0]
    assert (row["size"], row["qv_min"], row["qv_max"], row["kind"]) == ("160", 16, 160, "adjustable damper")
    assert len(db.products()) == len(db)
    assert "DMP" in db.classes() and "000" not in db.classes() and "TVM" not in db.classes()


def test_texts_are_those_of_market_and_language(catalogue: str, program: str) -> None:
    descriptions = set()
    for language in ("en", "FIN", "German", 1511):
        with tavd.open(catalogue, language=language) as db:
            descriptions.add(db["DMP", "QZDA-160"].description)
    assert "Round control damper" in descriptions
    for market in ("", "FIN", "SWE", "GBR", "DEU"):
        told = subprocess.run(
            [program, "list", catalogue, "--json", *(["--market", market] if market else [])],
            check=True,
            capture_output=True,
            text=True,
        ).stdout
        with tavd.open(catalogue, market=market) as db:
            for product in (db[key] for key in list(db)[:20]):
                assert product.code in told and product.description in told
    with pytest.raises(ValueError, match="no market area 'XYZ', expected a code such as FIN"):
        tavd.open(catalogue, market="XYZ")
    with pytest.raises(ValueError, match="no language 'Klingon'; there are fi, sv, en"):
        tavd.open(catalogue, language="Klingon")


def test_languages_are_those_of_the_program(program: str, catalogue: str) -> None:
    from tavd._languages import language_number

    told = subprocess.run([program, "list", catalogue, "--language", "x"], capture_output=True, text=True).stderr
    names = told.split("there are ")[1].strip().split(", ")
    assert len(names) == 30
    assert len({language_number(name) for name in names}) == 30


def test_what_is_not_there_is_told(db: tavd.Database) -> None:
    with pytest.raises(tavd.NotFoundError, match="no product 'QZDA-161' of class 'DMP' in .*; near it: .*QZDA-160"):
        db["DMP", "QZDA-161"]
    with pytest.raises(KeyError):
        db["DMP", "QZDA-161"]
    with pytest.raises(tavd.NotFoundError, match="no class 'XYZ' in .*; it has .*DMP"):
        db["XYZ", "QZDA-160"]
    with pytest.raises(tavd.NotFoundError, match="no class 'XYZ'"):
        db.products(classes=["XYZ"])
    with pytest.raises(TypeError, match="expected its class and its object id"):
        db["QZDA-160"]  # type: ignore[index]


def test_a_missing_database_is_told_in_the_words_of_the_service(tmp_path: pathlib.Path) -> None:
    missing = tmp_path / "none.tavdb"
    with pytest.raises(tavd.Error, match="cannot open '.*none.tavdb' as a product database: .+"):
        tavd.open(missing)
    assert not missing.exists()


@pytest.mark.parametrize("damage", ["text", "short", "holes", "folder", "empty"])
def test_a_damaged_database_is_told_in_the_words_of_the_service(
    catalogue: str, tmp_path: pathlib.Path, damage: str
) -> None:
    path = tmp_path / "damaged.tavdb"
    data = pathlib.Path(catalogue).read_bytes()
    if damage == "folder":
        path.mkdir()
    else:
        holes = data[:4096] + b"\xa5" * (len(data) - 4096)
        path.write_bytes(
            {"text": b"This is no database. " * 99, "short": data[: len(data) // 3], "holes": holes, "empty": b""}[
                damage
            ]
        )
    with pytest.raises(tavd.Error) as told:
        with tavd.open(path) as db:
            for key in db:
                db[key]
    assert "damaged.tavdb" in str(told.value) and len(str(told.value)) > len(str(path)) + 20


def test_a_closed_database_is_told_and_not_taken_for_another(catalogue: str) -> None:
    db = tavd.open(catalogue)
    db.close()
    db.close()
    with tavd.open(catalogue):
        for ask in (
            lambda: db["DMP", "QZDA-160"],
            lambda: len(db),
            db.products,
            lambda: db.select(qv=80, dp=70),
            lambda: db.handle,
        ):
            with pytest.raises(tavd.Error, match="catalogue.tavdb' is closed: -1 is no open database"):
                ask()
    assert "closed" in repr(db)


def resident() -> int:
    """Memory of this process, kB."""
    status = pathlib.Path("/proc/self/status").read_text()
    return int(status.split("VmRSS:")[1].split()[0])


def test_opening_and_closing_leaves_nothing(catalogue: str) -> None:
    def rounds(count: int) -> None:
        for number in range(count):
            db = tavd.open(catalogue)
            if number % 100 == 0:
                db["DMP", "QZDA-160"].calc(50, 60)
            if number % 2:
                db.close()  # the others are closed when nobody holds them any more

    rounds(OPENS // 10)
    gc.collect()
    files, before = len(os.listdir("/proc/self/fd")), resident()
    rounds(OPENS - OPENS // 10)
    gc.collect()
    assert len(os.listdir("/proc/self/fd")) == files
    assert resident() - before < 2000


def test_the_libraries_are_looked_for_where_it_says(tmp_path: pathlib.Path) -> None:
    shutil.copytree(BUILD / "python" / "tavd", tmp_path / "place" / "tavd")
    environment = {**os.environ, "PYTHONPATH": str(tmp_path / "place"), "TAVD_LIBRARIES": str(tmp_path / "none")}

    def told() -> str:
        run = subprocess.run(
            [sys.executable, "-c", "import tavd; print(tavd.c.tavd_version_nmb(190))"],
            env=environment,
            capture_output=True,
            text=True,
        )
        return run.stdout + run.stderr

    if not any(pathlib.Path(place).glob("*/libtavd.so") for place in ("/usr/lib", "/usr/local/lib")):
        words = told()
        assert "cannot load libtavd.so, which is neither in" in words
        for place in (tmp_path / "none", tmp_path / "place" / "tavd" / "lib", tmp_path / "lib"):
            assert str(place) in words
    environment["TAVD_LIBRARIES"] = str(BUILD / "lib")
    assert told() == "190\n"
    del environment["TAVD_LIBRARIES"]
    (tmp_path / "place" / "tavd" / "lib").symlink_to(BUILD / "lib")
    assert told() == "190\n"


def test_without_pandas_tables_are_lists_of_records(catalogue: str) -> None:
    script = """if True:
        import sys
        sys.modules["pandas"] = None
        import tavd
        db = tavd.open(sys.argv[1])
        row = [row for row in db.products(classes=["DMP"]) if row["id"] == "QZDA-160"][0]
        print(row["size"], row["qv_min"], db["DMP", "QZDA-160"].calc([50, 60], 60).to_frame()[0]["qv"])
        best = db.select(qv=80, dp=70, max_lp=30, room_damping=15, classes=["DMP"])
        print(best[0]["id"], type(best[0]["lpa"]).__name__)
        print([row["id"] for row in db.select([{"room": "A", "qv": 80, "dp": 70}, {"room": "B", "qv": 1e5, "dp": 1}], top=1)])
    """
    told = subprocess.run(
        [sys.executable, "-c", script, catalogue], check=True, capture_output=True, text=True
    ).stdout.splitlines()
    assert told[0] == "160 16.0 50.0"
    assert told[1] == "QZDA-315 float"
    assert told[2] == "['QZLA-400x300', None]"


def test_importing_loads_neither_pandas_nor_pictures() -> None:
    script = "import sys, tavd; print([name for name in sys.modules if name.split('.')[0] in ('pandas', 'IPython', 'dask', 'cffi')]);"
    script += "print('cairo' in open('/proc/self/maps').read())"
    told = subprocess.run([sys.executable, "-c", script], check=True, capture_output=True, text=True).stdout
    assert told == "[]\nFalse\n"


def test_password_of_a_server_stands_in_no_message() -> None:
    for name in ("postgresql://me:secret@/products?host=/nonexistent", "host=/nonexistent password=secret"):
        with pytest.raises(tavd.Error, match="cannot open .*\\*\\*\\*") as refused:
            tavd.open(name)
        assert "secret" not in str(refused.value)
