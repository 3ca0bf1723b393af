"""Everything of the C headers is in tavd.c, as the compiler has it."""

from __future__ import annotations

import ctypes
import json
import pathlib
import subprocess

import pytest
from conftest import BUILD, ROOT

from tavd import _declarations, c

LIBRARIES = ("libtavd", "libtavdn", "libtavdsrv", "libtavdgui", "libtavdcairo")


def exported(library: str) -> set[str]:
    told = subprocess.run(
        ["nm", "-D", "--defined-only", BUILD / "lib" / f"{library}.so"], check=True, capture_output=True, text=True
    )
    names = {line.split()[-1].split("@")[0] for line in told.stdout.splitlines()}
    return {name for name in names if not name.startswith("_Z")}  # of the C++ library's own templates


@pytest.mark.parametrize(("library", "file"), [("libtavd", "src/exports.txt"), ("libtavdn", "src/many/exports.txt")])
def test_every_function_of_the_lists_is_found(library: str, file: str) -> None:
    names = (ROOT / file).read_text(encoding="utf-8").split()
    assert len(names) > 20
    for name in names:
        assert callable(getattr(c, name)), name
        assert _declarations.FUNCTIONS[name].split()[0] == library


@pytest.mark.parametrize("library", LIBRARIES)
def test_every_function_that_a_library_exports_is_found_in_it_and_no_other(library: str) -> None:
    declared = {name for name, words in _declarations.FUNCTIONS.items() if words.split()[0] == library}
    assert declared == exported(library)
    for name in declared:
        assert ctypes.cast(getattr(c, name), ctypes.c_void_p).value, name


def test_functions_tell_what_the_headers_tell() -> None:
    assert "Damper" in c.tavca_damper_pos.__doc__ or "damper" in c.tavca_damper_pos.__doc__
    missing = [name for name in _declarations.FUNCTIONS if not getattr(c, name).__doc__]
    assert not missing


def test_records_have_the_sizes_and_places_of_the_compiler() -> None:
    declared = json.loads((BUILD / "declarations.json").read_text(encoding="utf-8"))
    assert len(declared["records"]) > 30
    for record in declared["records"]:
        made = getattr(c, record["name"])
        assert ctypes.sizeof(made) == record["size"], record["name"]
        for field in record["fields"]:
            assert getattr(made, field["name"]).offset == field["offset"], (record["name"], field["name"])


@pytest.mark.parametrize("pointer", [8, 4])
def test_declarations_agree_with_the_compiler(pointer: int, tmp_path: pathlib.Path) -> None:
    file = tmp_path / "declarations.json"
    subprocess.run([ROOT / "scripts" / "declarations", "--pointer", str(pointer), file], check=True)
    declared = json.loads(file.read_text(encoding="utf-8"))
    # The compiler's own headers have what is needed for any width, but for this one.
    (tmp_path / "uchar.h").write_text("typedef __CHAR16_TYPE__ char16_t;\n")
    lines = [
        f'#include "{header.relative_to(ROOT / "include")}"' for header in sorted((ROOT / "include").glob("*/*.h"))
    ]
    for record in declared["records"]:
        name = record["name"]
        lines.append(f'_Static_assert(sizeof({name}) == {record["size"]}, "{name}");')
        for field in record["fields"]:
            lines.append(
                f'_Static_assert(offsetof({name}, {field["name"]}) == {field["offset"]}, "{name}.{field["name"]}");'
            )
    for constant in declared["constants"]:
        if isinstance(constant["value"], int):
            lines.append(f'_Static_assert(({constant["name"]}) == ({constant["value"]}), "{constant["name"]}");')
    for function in declared["functions"]:
        lines.append(
            f'{spelled(function["result"])} {function["name"]}({", ".join(spelled(a["type"]) for a in function["arguments"]) or "void"});'
        )
    # A double lies at a multiple of 8 with WebAssembly, as with all but the oldest of 32 bits.
    told = subprocess.run(
        [
            "gcc",
            f"-m{8 * pointer}",
            *(["-malign-double"] if pointer == 4 else []),
            "-std=c11",
            "-ffreestanding",
            "-fsyntax-only",
            "-Werror",
            f"-I{tmp_path}",
            f"-I{ROOT / 'include'}",
            "-xc",
            "-",
        ],
        input="\n".join(lines) + "\n",
        capture_output=True,
        text=True,
    )
    assert told.returncode == 0, told.stderr[:2000]
    assert len(lines) > 900


def spelled(known: dict[str, object]) -> str:
    """A type as C writes it: a declaration of a function that differs from the header's does not compile."""
    kind = known["kind"]
    if "alias" in known:
        return str(known["alias"])
    if kind == "pointer":
        to = known["to"]
        assert isinstance(to, dict)
        const = " const" if known["const"] else ""
        return f"{spelled(to)}{const}*"
    if kind == "number":
        names = {
            "float": "float",
            "double": "double",
            "bool": "bool",
            "char": "char",
            "size": "size_t",
            "int32": "int",
            "uint32": "unsigned int",
        }
        return names.get(str(known["name"]), f"{known['name']}_t")
    if kind == "opaque":
        return f"struct {known['name']}"
    return "void" if kind == "void" else str(known["name"])


def test_a_function_that_is_in_no_header_is_told() -> None:
    with pytest.raises(AttributeError, match="in none of the C headers"):
        c.tavca_nothing


def test_an_array_of_other_items_is_refused() -> None:
    import numpy as np

    with pytest.raises(ctypes.ArgumentError, match="expected a tight array of <f4, found <f8"):
        c.tavdn_lpa(1, np.zeros((1, 8)), 4.0, np.zeros(1, np.float32))
    with pytest.raises(ctypes.ArgumentError, match="with gaps"):
        c.tavdn_lpa(1, np.zeros((1, 16), np.float32)[:, ::2], 4.0, np.zeros(1, np.float32))
