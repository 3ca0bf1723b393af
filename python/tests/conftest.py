"""What the tests have in common: the package and the program as they were built, and the sample catalogue as a database."""

from __future__ import annotations

import os
import pathlib
import subprocess
from collections.abc import Iterator

import pytest

import tavd

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("TAVD_BUILD", ROOT / "build" / "release"))


@pytest.fixture(scope="session")
def program() -> str:
    """The program tavd."""
    return str(BUILD / "bin" / "tavd")


@pytest.fixture(scope="session")
def catalogue(program: str, tmp_path_factory: pytest.TempPathFactory) -> str:
    """The sample catalogue as a database."""
    path = tmp_path_factory.mktemp("catalogue") / "catalogue.tavdb"
    subprocess.run([program, "db", "build", ROOT / "catalogue", "-o", path], check=True, stdout=subprocess.DEVNULL)
    return str(path)


@pytest.fixture
def db(catalogue: str) -> Iterator[tavd.Database]:
    with tavd.open(catalogue) as opened:
        yield opened


def products(db: tavd.Database) -> list[tavd.Product]:
    """All products with flow data."""
    return [product for product in (db[key] for key in db) if product.has_flow_data]
