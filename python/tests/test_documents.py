"""Every example runs: of the modules, of docs/python.md, and the notebook from top to bottom."""

from __future__ import annotations

import doctest
import importlib
import os
import pathlib
import pkgutil
import re
import shutil

import nbformat
import numpy as np
import pytest
from conftest import ROOT
from nbclient import NotebookClient

import tavd

FLAGS = doctest.ELLIPSIS | doctest.NORMALIZE_WHITESPACE
MODULES = ["tavd", *("tavd." + module.name for module in pkgutil.iter_modules(tavd.__path__))]
ATTEMPTED: dict[str, int] = {}


@pytest.fixture
def at_the_catalogue(catalogue: str, tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> dict[str, object]:
    """A folder with catalogue.tavdb and rooms.csv, and the names that examples have."""
    shutil.copy(catalogue, tmp_path / "catalogue.tavdb")
    shutil.copy(ROOT / "examples" / "rooms.csv", tmp_path)
    monkeypatch.chdir(tmp_path)
    return {
        "tavd": tavd,
        "np": np,
        "db": tavd.open("catalogue.tavdb"),
        "p": tavd.open("catalogue.tavdb")["DMP", "QZDA-160"],
    }


@pytest.mark.parametrize("name", MODULES)
def test_examples_of_modules(name: str, at_the_catalogue: dict[str, object]) -> None:
    module = importlib.import_module(name)
    told = doctest.testmod(module, extraglobs=at_the_catalogue, optionflags=FLAGS)
    assert told.failed == 0
    if name in ("tavd", "tavd._product", "tavd._database", "tavd._results", "tavd.c"):
        assert told.attempted > 0


def test_examples_of_the_manual(at_the_catalogue: dict[str, object]) -> None:
    text = (ROOT / "docs" / "python.md").read_text(encoding="utf-8")
    blocks = re.findall(r"^```python\n(.*?)^```", text, re.S | re.M)
    examples = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, "docs/python.md", "docs/python.md", 0)
    assert len(examples.examples) > 25
    assert doctest.DocTestRunner(optionflags=FLAGS).run(examples).failed == 0


def test_the_notebook_runs_from_top_to_bottom(
    catalogue: str, tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setenv("TAVD_DATABASE", catalogue)
    monkeypatch.setenv(
        "PYTHONPATH",
        os.pathsep.join([str(pathlib.Path(tavd.__file__).parent.parent), os.environ.get("PYTHONPATH", "")]),
    )
    monkeypatch.setenv("IPYTHONDIR", str(tmp_path / "ipython"))
    monkeypatch.setenv("MPLCONFIGDIR", str(tmp_path / "matplotlib"))
    notebook = nbformat.read(ROOT / "examples" / "selection.ipynb", as_version=4)
    assert not any(cell.get("outputs") for cell in notebook.cells), "outputs are not kept: they would be a second copy"
    NotebookClient(notebook, timeout=120, kernel_name="python3").execute()
    shown = {
        kind
        for cell in notebook.cells
        if cell.cell_type == "code"
        for output in cell.outputs
        for kind in output.get("data", {})
    }
    assert {"image/svg+xml", "image/png", "text/html"} <= shown
    assert "QZ" in str(notebook.cells[-1])


def test_the_readme_begins_as_it_says(catalogue: str) -> None:
    text = (ROOT / "README.md").read_text(encoding="utf-8")
    (block,) = re.findall(r"^```python\n(.*?)^```", text, re.S | re.M)
    names: dict[str, object] = {}
    exec(block.replace("/usr/share/tavd/catalogue.tavdb", catalogue), names)
    assert names["r"].position.shape == (10_000,)  # type: ignore[attr-defined]
