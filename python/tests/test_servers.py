"""Databases on a server of PostgreSQL, which the test starts: the README's commands for more than one machine."""

from __future__ import annotations

import os
import subprocess
import sys

import pandas as pd
import pytest
from conftest import BUILD, ROOT

import tavd

SERVER = ROOT / "tests/service/postgresql/server"
NOT_INSTALLED = 77


def on_server(script: str) -> str:
    """What a shell says that finds a server as if it ran on this machine."""
    command = [str(SERVER), "run", "bash", "-euc", "createdb products; " + script]
    done = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=False)
    if done.returncode == NOT_INSTALLED:
        pytest.skip(done.stderr)
    assert done.returncode == 0, done.stderr
    return done.stdout


def test_workers_select_of_a_database_on_a_server_as_one_process_does_of_a_file(db: tavd.Database) -> None:
    rooms = pd.read_csv(ROOT / "examples/rooms.csv", sep=";", decimal=",")
    expected = db.select(rooms, room_damping=15, top=1)
    said = on_server(
        f"{BUILD}/bin/tavd db build catalogue -o postgresql:///products >/dev/null;"
        f"{sys.executable} examples/workers.py postgresql:///products examples/rooms.csv"
    )
    columns = ["room", "terminal", "fitting", "id", "description"]
    assert said == expected[columns].to_string(index=False) + "\n"
    assert len(expected) == len(rooms)


def test_answers_of_a_database_on_a_server_are_those_of_a_file(db: tavd.Database) -> None:
    ask = "import sys, tavd; db = tavd.open(sys.argv[1]); print(len(db), db, db['DMP', 'QZDA-160'].calc(qv=50, dp=60).lpa)"
    name = "host=$PGHOST dbname=products password=unused"
    said = on_server(
        f"{BUILD}/bin/tavd db build catalogue -o '{name}' >/dev/null;".replace("'", '"')
        + f'{sys.executable} -c "{ask}" "{name}"'
    )
    level = db["DMP", "QZDA-160"].calc(qv=50, dp=60).lpa
    assert said.startswith(f"{len(db)} <tavd.Database 'host={os.sep}")
    assert said.endswith(f"dbname=products password=***'> {level}\n")
